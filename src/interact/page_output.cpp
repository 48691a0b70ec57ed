#include "interact/page_output.h"

#include "document/trap.h"
#include "render/page_marks.h"
#include "render/page_redraw.h"

#include <algorithm>

namespace qv::interact {
namespace {

using document::ControlState;
using document::trapped;

constexpr double margin_inches = 1;

class ShownPage : public host::PagePicture {
public:
    explicit ShownPage(ControlState& state) : state_(state), lifted_(state) {}
    DrawSurface const& pixels() const override { return *state_.Picture1; }
    std::unique_ptr<DrawSurface> redrawn(host::SurfaceMaker const& make_surface) const override {
        return render::redraw_page(state_, make_surface);
    }

private:
    ControlState& state_;
    render::MarksLifted lifted_;
};

// The printer gets a copy: printing may take its time, and the page may change meanwhile.
DrawSurface const& kept_page(ControlState& state) {
    const render::MarksLifted lifted(state);
    DrawSurface& kept = *state.ScratchPic2;
    DrawSurface const& page = *state.Picture1;
    kept.Move(page.Width(), page.Height());
    kept.SelectClipPath({0, 0, kept.Width(), kept.Height()});
    kept.BitBlt({0, 0}, page.GetClientRect(), page, {0, 0});
    return kept;
}

Box in_twips(Box const& inches) {
    return {inches.left * twips_per_inch, inches.top * twips_per_inch, inches.width * twips_per_inch,
            inches.height * twips_per_inch};
}

} // namespace

Box place_on_paper(host::PaperSize const& paper, double height_to_width, bool landscape) {
    double paper_width = paper.width / twips_per_inch;
    double paper_height = paper.height / twips_per_inch;
    if (landscape) std::swap(paper_width, paper_height);
    double const width = std::max(paper_width - 2 * margin_inches, 1.0);
    double const height = std::max(paper_height - 2 * margin_inches, 1.0);
    if (height / width > height_to_width) {
        double const fitted = height_to_width * width;
        return {margin_inches, std::max(margin_inches, (paper_height - fitted) / 4), width, fitted};
    }
    double const fitted = height / height_to_width;
    return {margin_inches + (width - fitted) / 2, margin_inches, fitted, height};
}

std::unique_ptr<host::PagePicture> shown_page(ControlState& state) {
    return std::make_unique<ShownPage>(state);
}

void PrintImage(ControlState& state, bool landscape) {
    trapped(state, "PrintImage", [&] {
        auto const printer = state.host->default_printer();
        if (!printer)
            raise_fault(FaultNumber::PrinterError,
                        "There is no default printer to print the page on; set one up and print again");
        DrawSurface const& page = kept_page(state);
        host::PaperSize const paper = printer->paper();
        printer->set_orientation(landscape ? host::PageOrientation::Landscape
                                           : host::PageOrientation::Portrait);
        printer->draw_picture(page, in_twips(place_on_paper(paper, page.Height() / page.Width(), landscape)));
        printer->end_document();
    });
}

void SaveImage(ControlState& state, std::string const& file) {
    trapped(state, "SaveImage", [&] { state.host->save_picture(file, ShownPage(state)); });
}

void CopyToClipboard(ControlState& state) {
    trapped(state, "CopyToClipboard", [&] {
        auto const clipboard = state.host->open_clipboard();
        if (!clipboard)
            raise_fault(FaultNumber::CannotOpenClipboard,
                        "The clipboard cannot be opened; another program may hold it, try again");
        clipboard->clear();
        clipboard->set_picture(ShownPage(state));
    });
}

} // namespace qv::interact
