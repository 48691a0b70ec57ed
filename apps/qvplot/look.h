// The look of a page: colours, fonts and lengths.
#pragma once

#include "qvgraph/geometry.h"

#include <array>
#include <cstddef>

namespace qv::plot {

constexpr Color white = rgb(255, 255, 255);
constexpr Color ink = rgb(45, 52, 64);
constexpr Color axis_gray = rgb(128, 135, 147);
constexpr Color grid_gray = rgb(232, 234, 238);

/// Colours of columns, of like weight on white; neighbours differ for colour-blind eyes too.
constexpr std::array palette{
    rgb(42, 105, 176),  // blue
    rgb(222, 118, 24),  // orange
    rgb(38, 140, 92),   // green
    rgb(192, 57, 52),   // red
    rgb(122, 88, 168),  // purple
    rgb(30, 156, 168),  // teal
    rgb(214, 98, 152),  // pink
    rgb(138, 94, 60),   // brown
    rgb(112, 120, 132), // grey
    rgb(148, 146, 34),  // olive
};

inline Color column_color(std::size_t column) {
    return palette[column % palette.size()];
}

/// A font as the control names it, and its size for measuring.
struct PageFont {
    char const* specification;
    double size_points;
};
constexpr PageFont title_font{"Font=Arial|16|Bold", 16};
constexpr PageFont axis_title_font{"Font=Arial|11", 11};
constexpr PageFont label_font{"Font=Arial|10", 10};

// Millimetres.
constexpr double tick_length = 1;
constexpr double label_gap = 2; // from the axis line to the labels
constexpr double title_gap = 2; // from the labels to the axis title, and from the plot area to the page title
constexpr double legend_gap = 2.5; // from the legend to the plot area's edges
constexpr double page_margin = 4;  // around everything
constexpr double free_margin = 7;  // where nothing stands

} // namespace qv::plot
