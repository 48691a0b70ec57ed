// System colours: what a colour with its top bit set stands for.
#pragma once

#include "qvgraph/geometry.h"

#include <array>
#include <cstddef>

namespace qv {

/// Colours of a plain light desktop, by system colour number.
constexpr std::array system_color_values{
    rgb(200, 200, 200), // 0 scroll bar
    rgb(0, 0, 0),       // 1 desktop
    rgb(153, 180, 209), // 2 active caption
    rgb(191, 205, 219), // 3 inactive caption
    rgb(240, 240, 240), // 4 menu
    rgb(255, 255, 255), // 5 window
    rgb(100, 100, 100), // 6 window frame
    rgb(0, 0, 0),       // 7 menu text
    rgb(0, 0, 0),       // 8 window text
    rgb(0, 0, 0),       // 9 caption text
    rgb(180, 180, 180), // 10 active border
    rgb(244, 247, 252), // 11 inactive border
    rgb(171, 171, 171), // 12 application workspace
    rgb(0, 120, 215),   // 13 highlight
    rgb(255, 255, 255), // 14 highlight text
    rgb(240, 240, 240), // 15 button face
    rgb(160, 160, 160), // 16 button shadow
    rgb(109, 109, 109), // 17 grey text
    rgb(0, 0, 0),       // 18 button text
    rgb(0, 0, 0),       // 19 inactive caption text
    rgb(255, 255, 255), // 20 button highlight
    rgb(105, 105, 105), // 21 dark three-dimensional shadow
    rgb(227, 227, 227), // 22 light three-dimensional face
    rgb(0, 0, 0),       // 23 tooltip text
    rgb(255, 255, 225), // 24 tooltip background
};

/// The colour as plain 0x00BBGGRR: a value with its top bit set is looked up by its low byte, and a number
/// without a system colour is black. Bits 24 to 30 mean nothing.
constexpr Color plain_color(Color color) {
    if (color >= 0) return color & 0x00FFFFFF;
    auto const number = static_cast<std::size_t>(color & 0xFF);
    return number < system_color_values.size() ? system_color_values[number] : rgb(0, 0, 0);
}

} // namespace qv
