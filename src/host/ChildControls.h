// The child controls beside the page as plain data; a host shows them with whatever widgets it has.
#pragma once

#include <cstdint>
#include <string>

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

/// Position and size in twips within the control.
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

} // namespace qv::host
