// The demo page's graphs, axes and data sets, in the look "light".
#pragma once

#include "qvgraph/looks.h"
#include "qvgraph/qvGraph.h"

#include <span>

namespace qv::demo {

inline const Look light = look("light");
inline const Color blue = light.palette[0], orange = light.palette[1], teal = light.palette[2],
                   red = light.palette[3], light_blue = light.palette[5];

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
    bool far_side = false;
    char const* labels = ""; // one text a tick, separated by ",", in place of numbers
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
void add_note(qvGraph& page, char const* text, Point percent);

} // namespace qv::demo
