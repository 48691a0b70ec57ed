#include "interact/page_output.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <optional>

using namespace qv;
using namespace qv::interact;
using host::PageOrientation;

namespace {

constexpr host::PaperSize letter{8.5 * twips_per_inch, 11 * twips_per_inch};

/// What a printer was told, and the step at which it fails.
struct PrinterLog {
    enum class Step { None, Paper, Orientation, Picture, End } fails_at = Step::None;
    std::vector<std::string> steps;
    Box place;
    double picture_width = 0;
};

class LoggedPrinter : public host::Printer {
public:
    explicit LoggedPrinter(PrinterLog& log) : log_(log) {}
    host::PaperSize paper() override {
        step(PrinterLog::Step::Paper, "paper");
        return letter;
    }
    void set_orientation(PageOrientation orientation) override {
        step(PrinterLog::Step::Orientation,
             orientation == PageOrientation::Landscape ? "landscape" : "portrait");
    }
    void draw_picture(DrawSurface const& picture, Box const& place) override {
        step(PrinterLog::Step::Picture, "picture");
        log_.place = place;
        log_.picture_width = picture.Width();
    }
    void end_document() override { step(PrinterLog::Step::End, "end"); }

private:
    void step(PrinterLog::Step step, char const* name) {
        if (log_.fails_at == step) raise_fault(FaultNumber::PrinterError, std::string("no ") + name);
        log_.steps.emplace_back(name);
    }
    PrinterLog& log_;
};

class BusyClipboard : public host::Clipboard {
public:
    void clear() override { raise_fault(FaultNumber::CannotOpenClipboard, "busy"); }
    void set_picture(host::PagePicture const&) override { FAIL("set after clear failed"); }
};

class OutputHost : public testing::RecordingHost {
public:
    PrinterLog log;
    bool has_printer = true;
    bool has_clipboard = false;

    std::unique_ptr<host::Printer> default_printer() override {
        if (!has_printer) return nullptr;
        return std::make_unique<LoggedPrinter>(log);
    }
    std::unique_ptr<host::Clipboard> open_clipboard() override {
        if (!has_clipboard) return nullptr;
        return std::make_unique<BusyClipboard>();
    }
};

struct OutputControl : testing::TestControl {
    OutputHost output_host;
    OutputControl() { state.host = &output_host; }
};

} // namespace

TEST_CASE("the page is fitted inside margins of an inch with its proportions kept") {
    struct Row {
        double paper_width, paper_height, ratio;
        bool landscape;
        Box place;
    };
    for (Row const& row : {
             Row{8.5, 11, 0.5, false, {1, 1.9375, 6.5, 3.25}}, Row{8.5, 11, 3, false, {2.75, 1, 3, 9}},
             Row{8.5, 11, 0.5, true, {1, 1, 9, 4.5}}, Row{8.5, 11, 1, true, {1 + (9 - 6.5) / 2, 1, 6.5, 6.5}},
             Row{8.5, 11, 9 / 6.5, false, {1, 1, 6.5, 9}},
             Row{2, 2.5, 1, false, {1, 1, 1, 1}}, // larger than the paper less its margins
         }) {
        CAPTURE(row.ratio);
        CAPTURE(row.landscape);
        const Box place = place_on_paper(
            {row.paper_width * twips_per_inch, row.paper_height * twips_per_inch}, row.ratio, row.landscape);
        CHECK(place.left == doctest::Approx(row.place.left));
        CHECK(place.top == doctest::Approx(row.place.top));
        CHECK(place.width == doctest::Approx(row.place.width));
        CHECK(place.height == doctest::Approx(row.place.height));
    }
}

TEST_CASE("the paper is asked for before it is turned, and the whole page goes onto it") {
    OutputControl page;
    PrintImage(page.state, true);
    CHECK(page.output_host.log.steps == std::vector<std::string>{"paper", "landscape", "picture", "end"});
    double const ratio = page.shown().Height() / page.shown().Width();
    CHECK(page.output_host.log.place.height == doctest::Approx(page.output_host.log.place.width * ratio));
    CHECK(page.output_host.log.place.left >= twips_per_inch);
    CHECK(page.output_host.log.picture_width == page.shown().Width());
    CHECK(page.events.errors.empty());
}

TEST_CASE("a printer or clipboard that fails is reported by the method's name, and the call returns") {
    using Step = PrinterLog::Step;
    for (Step const step : {Step::Paper, Step::Orientation, Step::Picture, Step::End}) {
        OutputControl page;
        page.output_host.log.fails_at = step;
        PrintImage(page.state, false);
        REQUIRE(page.events.errors.size() == 1);
        CHECK(page.events.errors[0].starts_with("Error 482 has occured in qvGraph.ocx, PrintImage: no "));
        CHECK(page.output_host.log.steps.size() == static_cast<std::size_t>(step) - 1);
    }
    OutputControl page;
    page.output_host.has_printer = false;
    PrintImage(page.state, false);
    CopyToClipboard(page.state);
    page.output_host.has_clipboard = true;
    CopyToClipboard(page.state);
    SaveImage(page.state, "page.bmp"); // this host cannot write
    REQUIRE(page.events.errors.size() == 4);
    CHECK(page.events.errors[0].starts_with("Error 482 has occured in qvGraph.ocx, PrintImage: There is no"));
    for (std::size_t const i : {1, 2})
        CHECK(page.events.errors[i].starts_with("Error 521 has occured in qvGraph.ocx, CopyToClipboard: "));
    CHECK(page.events.errors[3].starts_with("Error 57 has occured in qvGraph.ocx, SaveImage: "));
}
