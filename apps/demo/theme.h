// The look of the demo page: colours, and graphs and axes in one style.
#pragma once

#include "qvgraph/qvGraph.h"

#include <span>

namespace qv::demo {

constexpr Color ink = rgb(45, 52, 64);
constexpr Color faint_ink = rgb(110, 118, 132);
constexpr Color grid = rgb(228, 231, 236);
constexpr Color white = rgb(255, 255, 255);
constexpr Color blue = rgb(46, 110, 178);
constexpr Color light_blue = rgb(126, 172, 220);
constexpr Color red = rgb(196, 62, 44);
constexpr Color orange = rgb(226, 132, 44);
constexpr Color teal = rgb(36, 138, 132);

struct Panel {
    char const* title;
    float left, top, width, height; // percent of the page
    float right_margin = 10;        // millimetres
};
void start_panel(qvGraph& page, Panel const& panel);

struct AxisPlan {
    char const* title;
    double low, high;
    std::int16_t divisions;
    Color color = ink;
    bool far_side = false;
    std::int32_t label_shift = -1; // millimetres; negative is away from the axis
    char const* labels = "";       // one text a tick, separated by ",", in place of numbers
};
/// Styles the selected axis.
void plan_axis(qvGraph& page, AxisPlan const& plan);

/// Values with the name they have in the legend.
struct Values {
    char const* name;
    std::span<double const> x;
    std::span<double const> y;
};
void add_line(qvGraph& page, Values const& values, Color color, std::int16_t thickness);
/// Bars from zero, `width` millimetres wide.
void add_bars(qvGraph& page, Values const& values, Color color, float width);
void add_dots(qvGraph& page, Values const& values, Color color, float size);

/// Shows the graph's legend, its left top corner at a place of the graph in percent, y from the top.
void show_legend(qvGraph& page, Point percent);

/// A text at a place of the plot area in percent, y from the bottom, that starts there, centred in height.
void add_note(qvGraph& page, char const* text, Point percent, Color color);

} // namespace qv::demo
