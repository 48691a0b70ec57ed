#include "render/bars/bars.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "qvgraph/system_color.h"
#include "render/color_table.h"
#include "render/pen.h"
#include "scale/mapping.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::ControlState;
using document::current_graph;
using document::DataSet;
using document::Graph;
using document::trapped;

constexpr double half_sample_length_mm = 1.5;
constexpr double shadow_mm = 1;
constexpr double farthest_side = 20; // lengths of the axis
constexpr std::uint8_t opaque = 255;

BarBox sample_box(ControlState const& state, Point centre, double half_width, bool horizontal) {
    double const half_x = horizontal ? half_sample_length_mm * state.UnitsPerMmX : half_width;
    double const half_y = horizontal ? half_width : half_sample_length_mm * state.UnitsPerMmY;
    return {centre.x - half_x, centre.y - half_y, centre.x + half_x, centre.y + half_y};
}

void draw_box(DrawSurface& surface, BarBox const& box, LineShape shape, Color color) {
    surface.Line({box.x1, box.y1}, {box.x2, box.y2}, shape, color);
}

void draw_face(ControlState& state, DrawSurface& surface, BarBox const& box, DataSet const& set) {
    const Color color = surface.state.FillColor;
    if (surface.state.fill_style != FillStyle::Solid) return draw_box(surface, box, LineShape::Box, color);
    if (!set.Bar3D) return draw_box(surface, box, LineShape::FilledBox, color);
    // Shades lie one over the other.
    const document::RestoreScope alpha(surface.state.alpha, opaque);
    Draw3DBar(state, surface, box, {set.BarHoriz, set.DataSymbolFill.EdgeColor, set.DataSymbolFill.Color1});
}

void set_bar_colors(DrawSurface& surface, document::FillSpec const& fill) {
    surface.state.FillColor = fill.Color1;
    surface.state.ForeColor = fill.EdgeThickness < 1 ? fill.Color1 : fill.EdgeColor;
    surface.state.fill_style = FillStyle::Solid;
}

/// With the brush and pen that are set.
void draw_box_of_bar(ControlState& state, DrawSurface& surface, DataSet const& set, BarBox const& box) {
    if (set.BarShadow) {
        double const right = shadow_mm * state.UnitsPerMmX;
        double const down = shadow_mm * state.UnitsPerMmY;
        draw_box(surface, {box.x1 + right, box.y1 + down, box.x2 + right, box.y2 + down},
                 LineShape::FilledBox, set.BarShadowColor);
    }
    draw_face(state, surface, box, set);
    if (set.DataSymbolFill.EdgeThickness == 0) return;
    surface.state.fill_style = FillStyle::Transparent;
    draw_box(surface, box, LineShape::Box, set.DataSymbolFill.EdgeColor);
}

} // namespace

bool has_value_width(DataSet const& set) {
    return set.BarWidth > 0 && std::isfinite(set.BarWidth);
}

Interval values_across_bar(DataSet const& set, double value) {
    double const middle = value + set.BarOffset;
    return {middle - set.BarWidth / 2, middle + set.BarWidth / 2};
}

BarSides::BarSides(Graph const& graph, DataSet const& set) : set_(set) {
    auto const map = set.BarHoriz ? scale::y_map : scale::x_map;
    across_ = map(graph, at(graph.Axes, set.BarHoriz ? set.yAxisIndex : set.xAxisIndex));
    // Of a bar zoomed into, what lies this far outside is never seen.
    double const far = farthest_side * std::abs(across_.length);
    auto const [low, high] = std::minmax({across_.start, across_.start + across_.length});
    within_ = {low - far, high + far};
}

Interval BarSides::operator()(double value) const {
    const Interval values = values_across_bar(set_, value);
    auto const place = [&](double side) { return std::clamp(across_(side), within_.low, within_.high); };
    auto const [low, high] = std::minmax({place(values.low), place(values.high)});
    return {low, high};
}

BarLayout::BarLayout(ControlState& state, DataPointPlace const& point)
    : half_width_(half_width_of_bars(point.half_size)) {
    Graph& graph = current_graph(state);
    DataSet const& set = at(graph.DataSets, point.data_set);
    horizontal_ = set.BarHoriz;
    offset_ = (horizontal_ ? state.UnitsPerMmY : state.UnitsPerMmX) * set.BarOffset;
    along_ = horizontal_ ? scale::x_map(graph, selected_x_axis(graph))
                         : scale::y_map(graph, selected_y_axis(graph));
    stacked_ = set.BarStacked && point.data_set > 0;
    if (has_value_width(set)) sides_.emplace(graph, set);
    if (set.BarBase)
        start_ = along_(set.BarBaseValue);
    else
        start_ =
            horizontal_ ? graph.FrameLeft - half_width_ : graph.FrameTop + graph.FrameHeight + half_width_;
}

BarBox BarLayout::box(Point place, Point value, BarBase base) const {
    double const middle = horizontal_ ? place.y : place.x;
    const Interval across = sides_ ? (*sides_)(horizontal_ ? value.y : value.x)
                                   : Interval{middle - half_width_ + offset_, middle + half_width_ + offset_};
    double const start = !stacked_ ? start_ : along_(horizontal_ ? base.x : base.y);
    return horizontal_ ? BarBox{start, across.low, place.x, across.high}
                       : BarBox{across.low, start, across.high, place.y};
}

void Bar(ControlState& state, DrawSurface& surface, DataPointPlace const& point) {
    trapped(state, "Bar", [&] {
        DataSet const& set = at(current_graph(state).DataSets, point.data_set);
        const double half_width = half_width_of_bars(point.half_size);
        const BarBox box = point.legend_sample
                               ? sample_box(state, point.place, half_width, set.BarHoriz)
                               : BarLayout(state, point).box(point.place, point.value, point.base);
        draw_box_of_bar(state, surface, set, box);
    });
}

void draw_bar(ControlState& state, DrawSurface& surface, DataSet const& set, BarBox const& box) {
    trapped(state, "Bar", [&] {
        set_bar_colors(surface, set.DataSymbolFill);
        const PenScope pen(surface, set.DataSymbolFill.EdgeThickness);
        draw_box_of_bar(state, surface, set, box);
        surface.state.fill_style = FillStyle::Transparent;
    });
}

void Draw3DBar(ControlState& state, DrawSurface& surface, BarBox const& box, BarShade const& shade) {
    trapped(state, "Draw3DBar", [&] {
        const double across = shade.horizontal ? box.y2 - box.y1 : box.x2 - box.x1;
        const std::int32_t count = to_i32(to_i32(std::abs(across)) / 2.0);
        if (count <= 0) return draw_box(surface, box, LineShape::FilledBox, shade.face);
        const std::vector<Color> colors = BlendColors(state, shade.edge, shade.face, count);
        // Neighbouring twips fall into one pixel; only the last of them would be seen.
        const double pixel = shade.horizontal ? surface.TwipsPerPixelY() : surface.TwipsPerPixelX();
        const auto stride = static_cast<std::int32_t>(std::max(1.0, std::floor(pixel / 2)));
        for (std::int32_t i = 0; i < count; i += stride) {
            const Color color = colors[static_cast<std::size_t>(i)];
            const BarBox inner = shade.horizontal ? BarBox{box.x1, box.y1 + i, box.x2, box.y2 - i}
                                                  : BarBox{box.x1 + i, box.y1, box.x2 - i, box.y2};
            draw_box(surface, inner, LineShape::FilledBox, color);
        }
    });
}

std::vector<Color> BlendColors(ControlState& state, Color from_color, Color to_color, int count) {
    std::vector<Color> colors;
    trapped(state, "BlendColors", [&] {
        colors = color_table({.from = plain_color(from_color), .to = plain_color(to_color)}, count);
    });
    return colors;
}

} // namespace qv::render
