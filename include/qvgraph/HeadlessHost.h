// HeadlessHost: a control without a window, for servers, tests and the command line.
#pragma once

#include "qvgraph/EventSink.h"
#include "qvgraph/Host.h"
#include "qvgraph/Input.h"
#include "qvgraph/RasterSurface.h"
#include "qvgraph/export.h"
#include "qvgraph/qvGraph.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qv::headless {

/// Holds one control whose page is a picture in memory.
class QV_EXPORT HeadlessHost : public host::Host {
public:
    /// A control around a page picture of this size in pixels; the scroll bars lie outside it. Dots per inch
    /// must be positive and set how many pixels a point or a millimetre takes.
    explicit HeadlessHost(PixelSize picture, double dots_per_inch = 96);
    ~HeadlessHost() override;

    qvGraph& control() { return *control_; } ///< the control with all its members

    /// Gives the page picture another size and draws the page anew, as a window's resize does.
    void resize_picture(PixelSize picture);

    /// What a person would do to the page; true when the control has used it up.
    bool input(host::Input const& input);

    /// The page as it was last shown.
    raster::RasterSurface const& picture() const;
    /// Writes the page in the format that the name's ending tells, as SaveImage does; but a file that cannot
    /// be written is thrown as a Fault.
    void save(std::filesystem::path const& file);
    /// From now on the printer is a PDF file of one sheet, A4 unless said otherwise; before, there is none.
    void print_to(std::filesystem::path const& file,
                  host::PaperSize const& upright = {210 / millimetres_per_inch * twips_per_inch,
                                                    297 / millimetres_per_inch* twips_per_inch});
    /// What the control has copied, by media type: "image/bmp", "image/png", "image/svg+xml".
    std::map<std::string, std::vector<std::uint8_t>> const& clipboard() const { return clipboard_; }
    /// How often the page has been shown.
    int times_shown() const { return times_shown_; }

    /// \name Answers in place of a person
    /// Each answers one request; without one a request is cancelled at once. What an answer throws is what
    /// the request fails with.
    /// \{

    /// Does to the gradient dialog what a person would.
    using FormAnswer = std::function<void(gradient_picker::qvGradientForm2& form)>;
    /// The colour chosen, or none.
    using ColorAnswer = std::function<std::optional<Color>(Color opened_at)>;
    /// For the next GetGradient or GetColor that has no answer yet.
    void answer_next_form(FormAnswer answer) { form_answers_.push_back(std::move(answer)); }
    /// For the next colour chooser that has no answer yet.
    void answer_next_color(ColorAnswer answer) { color_answers_.push_back(std::move(answer)); }
    /// The messages shown so far.
    std::vector<std::string> const& messages() const { return messages_; }
    /// \}

    std::unique_ptr<DrawSurface> make_surface() override;
    double scroll_bar_thickness() const override;
    double label_height() const override;
    void page_shown() override { ++times_shown_; }
    std::unique_ptr<host::Printer> default_printer() override;
    std::unique_ptr<host::Clipboard> open_clipboard() override;
    void save_picture(std::string const& file, host::PagePicture const& picture) override;
    void show_modal(gradient_picker::qvGradientForm2& form) override;
    std::optional<Color> choose_color(Color opened_at) override;
    void show_message(std::string const& text) override { messages_.push_back(text); }

private:
    double twips_per_pixel_;
    std::shared_ptr<raster::FontLibrary> fonts_;
    int times_shown_ = 0;
    std::filesystem::path sheet_file_; // empty: no printer
    host::PaperSize sheet_;
    std::map<std::string, std::vector<std::uint8_t>> clipboard_;
    std::deque<FormAnswer> form_answers_;
    std::deque<ColorAnswer> color_answers_;
    std::vector<std::string> messages_;
    std::unique_ptr<qvGraph> control_;
};

} // namespace qv::headless
