#include "qvgraph/HeadlessHost.h"

#include "hosts/output/pdf_sheet.h"
#include "qvgraph/Input.h"
#include "qvgraph/fault.h"
#include "qvgraph/page_file.h"
#include "qvgraph/qvGraph.h"

namespace qv::headless {
namespace {

// What a desktop's scroll bars and one line of text take at 96 dots per inch.
constexpr double bar_thickness_pixels = 16;
constexpr double label_height_pixels = 17;

class MemoryClipboard final : public host::Clipboard {
public:
    MemoryClipboard(std::map<std::string, output::Bytes>& content,
                    std::shared_ptr<raster::FontLibrary> const& fonts)
        : content_(content), fonts_(fonts) {}
    void clear() override { content_.clear(); }
    void set_picture(host::PagePicture const& picture) override {
        std::map<std::string, output::Bytes> offered;
        for (std::string_view const type : output::clipboard_types)
            offered[std::string(type)] = output::encode_page(type, picture, fonts_);
        content_ = std::move(offered);
    }

private:
    std::map<std::string, output::Bytes>& content_;
    std::shared_ptr<raster::FontLibrary> const& fonts_;
};

template <class Answer>
std::optional<Answer> next(std::deque<Answer>& answers) {
    if (answers.empty()) return std::nullopt;
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

} // namespace

HeadlessHost::~HeadlessHost() = default;

HeadlessHost::HeadlessHost(PixelSize picture, double dots_per_inch)
    : twips_per_pixel_(twips_per_inch / (dots_per_inch > 0 ? dots_per_inch : 96)),
      fonts_(raster::make_font_library()), control_(std::make_unique<qvGraph>(*this)) {
    resize_picture(picture);
    // So early nobody hears of it.
    if (control_->memory_has_ended()) raise_fault(FaultNumber::OutOfMemory);
}

void HeadlessHost::resize_picture(PixelSize picture) {
    control_->UserControl_Resize(picture.width * twips_per_pixel_ + scroll_bar_thickness(),
                                 picture.height * twips_per_pixel_ + scroll_bar_thickness());
}

bool HeadlessHost::input(host::Input const& input) {
    return control_->take_input(input);
}

raster::RasterSurface const& HeadlessHost::picture() const {
    return static_cast<raster::RasterSurface const&>(control_->picture());
}

void HeadlessHost::save(std::filesystem::path const& file) {
    save_picture(file.string(), *control_->page_picture());
}

void HeadlessHost::print_to(std::filesystem::path const& file, host::PaperSize const& upright) {
    sheet_file_ = file;
    sheet_ = upright;
}

std::unique_ptr<host::Printer> HeadlessHost::default_printer() {
    if (sheet_file_.empty()) return nullptr;
    return std::make_unique<output::PdfSheet>(sheet_file_.string(), sheet_);
}

std::unique_ptr<host::Clipboard> HeadlessHost::open_clipboard() {
    return std::make_unique<MemoryClipboard>(clipboard_, fonts_);
}

void HeadlessHost::save_picture(std::string const& file, host::PagePicture const& picture) {
    output::save_page(file, picture, fonts_);
}

std::unique_ptr<DrawSurface> HeadlessHost::make_surface() {
    return std::make_unique<raster::RasterSurface>(twips_per_pixel_, twips_per_pixel_, fonts_);
}

void HeadlessHost::show_modal(gradient_picker::qvGradientForm2& form) {
    if (auto const answer = next(form_answers_)) (*answer)(form);
}

std::optional<Color> HeadlessHost::choose_color(Color opened_at) {
    auto const answer = next(color_answers_);
    return answer ? (*answer)(opened_at) : std::nullopt;
}

double HeadlessHost::scroll_bar_thickness() const {
    return bar_thickness_pixels * twips_per_inch / 96;
}

double HeadlessHost::label_height() const {
    return label_height_pixels * twips_per_inch / 96;
}

} // namespace qv::headless
