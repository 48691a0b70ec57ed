// The child controls of the page and of dialogs as plain data; a host shows them with whatever widgets it
// has.
#pragma once

#include "qvgraph/DrawSurface.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace qv::host {

/// The mouse pointer over the page, by the numbers it is known under.
enum class PointerShape : std::uint8_t {
    Default = 0,
    Cross = 2,
    FourWay = 5,
    NorthSouth = 7,
    WestEast = 9,
    UpArrow = 10
};

/// Position and size in twips within the control or dialog.
struct Placement {
    double Left = 0;   ///< twips
    double Top = 0;    ///< twips
    double Width = 0;  ///< twips
    double Height = 0; ///< twips
    bool operator==(Placement const&) const = default;
};

/// A scroll bar that runs from 0 to Max.
struct ScrollBar : Placement {
    std::int32_t Value = 0;       ///< where the thumb stands, 0 to Max
    std::int32_t Max = 1000;      ///< its last value
    std::int32_t LargeChange = 1; ///< of a click beside the thumb; also its length
    std::int32_t SmallChange = 1; ///< of a click on an arrow
    bool Visible = false;         ///< whether it is shown
    bool operator==(ScrollBar const&) const = default;
};

/// A line of text.
struct Label : Placement {
    std::string Caption;  ///< its text
    bool Visible = false; ///< whether it is shown
    bool Border = false;  ///< whether it has a frame
    bool operator==(Label const&) const = default;
};

/// What stands beside the page of a control and over it.
struct ChildControls {
    ScrollBar HScroll1;                                ///< below the page
    ScrollBar VScroll1;                                ///< to the right of the page
    Label Label1;                                      ///< the coordinate read-out
    PointerShape MousePointer = PointerShape::Default; ///< over the page
    std::string ToolTipText;                           ///< of the page; empty for none
};

/// \name Controls of dialogs
/// \{

/// A button with a text.
struct PushButton : Placement {
    std::string Caption; ///< its text
    bool Visible = true; ///< whether it is shown
};

/// A box that is on or off.
struct CheckBox : Placement {
    std::string Caption;     ///< the text beside it
    std::string ToolTipText; ///< empty for none
    bool Value = false;      ///< whether it is on
    bool Visible = true;     ///< whether it is shown
};

/// A line that a person writes in.
struct TextBox : Placement {
    std::string Text;        ///< what stands in it
    std::string ToolTipText; ///< empty for none
    bool Visible = true;     ///< whether it is shown
};

/// A line of a list, and the colour that is shown beside it.
struct ColorItem {
    std::string_view name; ///< its text
    Color color = 0;       ///< its swatch
};

/// A list of named colours, of which one is selected.
struct ColorList : Placement {
    std::span<ColorItem const> items; ///< its lines, kept elsewhere for ever
    std::int16_t ListIndex = 0;       ///< the selected line, from 0
    bool Visible = true;              ///< whether it is shown
};

/// A picture that is drawn.
struct PictureBox : Placement {
    std::unique_ptr<DrawSurface> picture; ///< nullptr while nobody shows it
    bool Visible = true;                  ///< whether it is shown
};
/// \}

} // namespace qv::host
