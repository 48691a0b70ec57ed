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
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;
    bool operator==(Placement const&) const = default;
};

/// A scroll bar that runs from 0 to Max.
struct ScrollBar : Placement {
    std::int32_t Value = 0;
    std::int32_t Max = 1000;
    std::int32_t LargeChange = 1;
    std::int32_t SmallChange = 1;
    bool Visible = false;
    bool operator==(ScrollBar const&) const = default;
};

struct Label : Placement {
    std::string Caption;
    bool Visible = false;
    bool Border = false;
    bool operator==(Label const&) const = default;
};

/// What stands beside the page of a control and over it.
struct ChildControls {
    ScrollBar HScroll1;
    ScrollBar VScroll1;
    Label Label1; // the coordinate read-out
    PointerShape MousePointer = PointerShape::Default;
    std::string ToolTipText;
};

/// \name Controls of dialogs
/// \{
struct PushButton : Placement {
    std::string Caption;
    bool Visible = true;
};

struct CheckBox : Placement {
    std::string Caption;
    std::string ToolTipText;
    bool Value = false;
    bool Visible = true;
};

struct TextBox : Placement {
    std::string Text;
    std::string ToolTipText;
    bool Visible = true;
};

/// A line of a list, and the colour that is shown beside it.
struct ColorItem {
    std::string_view name;
    Color color = 0;
};

struct ColorList : Placement {
    std::span<ColorItem const> items;
    std::int16_t ListIndex = 0; // the selected line
    bool Visible = true;
};

struct PictureBox : Placement {
    std::unique_ptr<DrawSurface> picture; // nullptr while nobody shows it
    bool Visible = true;
};
/// \}

} // namespace qv::host
