// Bars: flat or shaded like a cylinder, upright or lying, with or without a shadow.
#pragma once

#include "document/ControlState.h"
#include "render/symbols.h"
#include "scale/mapping.h"

#include <optional>
#include <vector>

namespace qv::render {

/// Two opposite corners of a bar, twips.
struct BarBox {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
};

/// Twips, of a symbol of this half size.
constexpr double half_width_of_bars(double half_size) {
    constexpr double share = 0.9;
    return share * half_size;
}

/// Two positions in twips, or two values.
struct Interval {
    double low = 0;
    double high = 0;
};

/// Whether the bars of a data set are as wide as BarWidth says.
bool has_value_width(document::DataSet const& set);
/// Between which values such a bar stands whose point is at `value`.
Interval values_across_bar(document::DataSet const& set, double value);

/// The sides of bars whose width is one of values.
class BarSides {
public:
    BarSides(document::Graph const& graph, document::DataSet const& set);
    /// Twips, of the bar of this value.
    Interval operator()(double value) const;

private:
    document::DataSet const& set_;
    scale::AxisMap across_;
    Interval within_; // as far as sides are told apart
};

/// Where the bars of a data set lie on the page. A bar starts at its base value, on the bar below it, or
/// beyond the plot area's edge, where the clip cuts it.
class BarLayout {
public:
    /// `point` tells data set and half size; its place does not matter.
    BarLayout(document::ControlState& state, DataPointPlace const& point);
    /// `place` is where the bar's end, `value` in data values, lies on the page.
    BarBox box(Point place, Point value, BarBase base) const;

private:
    scale::AxisMap along_;
    std::optional<BarSides> sides_; // of bars as wide as values say
    double half_width_;
    double offset_ = 0;
    double start_ = 0;
    bool horizontal_ = false;
    bool stacked_ = false;
};

/// Draws the bar of a data point, or a sample of it, with the brush and pen that are set.
void Bar(document::ControlState& state, DrawSurface& surface, DataPointPlace const& point);

/// Draws a bar of a data set that covers this box.
void draw_bar(document::ControlState& state, DrawSurface& surface, document::DataSet const& set,
              BarBox const& box);

struct BarShade {
    bool horizontal = false;
    Color edge = 0;
    Color face = 0;
};
/// Shades a bar along its length, from the edge colour at both sides to the face colour in the middle.
void Draw3DBar(document::ControlState& state, DrawSurface& surface, BarBox const& box, BarShade const& shade);

/// `count` colours (at least 2) from one colour to another, evenly by channel.
std::vector<Color> BlendColors(document::ControlState& state, Color from, Color to, int count);

} // namespace qv::render
