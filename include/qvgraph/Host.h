// Host: what a control asks of the program or widget that holds it.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/Services.h"
#include "qvgraph/export.h"
#include "qvgraph/fault.h"

#include <memory>
#include <optional>
#include <string>

namespace qv::gradient_picker {
class qvGradientForm2;
}

namespace qv::host {

/// What a program derives from to hold a control. It lives longer than its control.
class QV_EXPORT Host {
public:
    virtual ~Host() = default;

    /// A new surface of one pixel, to be resized by the control. The control owns it.
    virtual std::unique_ptr<DrawSurface> make_surface() = 0;
    /// Thickness of the scroll bars in twips.
    virtual double scroll_bar_thickness() const { return 255; }
    /// Height of the coordinate read-out in twips.
    virtual double label_height() const { return 255; }
    /// Width in twips of a text in the font that the read-out is shown in; none: the read-out has the font
    /// that texts on the page have by default.
    virtual std::optional<double> read_out_width(std::string const& /*text*/) { return std::nullopt; }
    /// The visible page shows a new picture.
    virtual void page_shown() {}
    /// A person has gone to a data point by keys; for those who hear the page instead of seeing it.
    virtual void point_read(std::string const& /*text*/) {}
    /// Position, state or text of the scroll bars, the label or the tooltip, or the pointer's shape, may have
    /// changed.
    virtual void child_controls_changed() {}

    /// \name Out of the page
    /// \{

    /// The default printer with one sheet, or nullptr where there is none.
    virtual std::unique_ptr<Printer> default_printer() { return nullptr; }
    /// The clipboard, or nullptr when it cannot be opened.
    virtual std::unique_ptr<Clipboard> open_clipboard() { return nullptr; }
    /// Writes the picture to a file, whose name tells the format: .png, .svg, .pdf, else a bitmap. A failure
    /// is a fault that names file and reason; an earlier file of that name is then as it was.
    virtual void save_picture(std::string const& /*file*/, PagePicture const& /*picture*/) {
        raise_fault(FaultNumber::DeviceError, "This host cannot write files");
    }
    /// \}

    /// \name Asking a person
    /// By default nobody is there.
    /// \{

    /// Shows the dialog until one of its buttons has hidden it; returning earlier means Cancel.
    virtual void show_modal(gradient_picker::qvGradientForm2& /*form*/) {}
    /// The platform's colour chooser, opened at a colour: the colour chosen, or none when it was cancelled.
    virtual std::optional<Color> choose_color(Color /*opened_at*/) { return std::nullopt; }
    /// A message with the buttons Abort, Retry and Ignore, which all do nothing but close it.
    virtual void show_message(std::string const& /*text*/) {}
    /// \}
};

} // namespace qv::host
