#include "render/polar/polar_map.h"

#include "render/plot_geometry.h"

#include <algorithm>

namespace qv::render {
namespace {

using document::Axis;
using scale::AxisMap;

AxisMap along_radius(Axis const& axis, AxisMap const& y, double radius) {
    AxisMap along = y;
    along.start = 0;
    along.length = radius;
    along.off_page = std::numeric_limits<double>::quiet_NaN();
    if (axis.AxisReverse) std::swap(along.first, along.last);
    bool const begins_at_zero = axis.has_mode(document::AxisMode::Automatic) && !along.is_log
                                && along.first > 0 && along.last > along.first;
    if (begins_at_zero) along.first = 0;
    double const span = scale::ScaleFrom{along.first, along.is_log}(along.last);
    along.valid = y.valid && radius > 0 && span != 0 && std::isfinite(span);
    along.factor = along.valid ? radius / span : 0;
    return along;
}

} // namespace

PolarMap polar_map(document::Graph& graph, Axis const& y_axis, AxisMap const& y) {
    const Box plot = plot_box(graph);
    PolarMap map;
    map.centre = {plot.left + plot.width / 2, plot.top + plot.height / 2};
    map.radius = std::max(0.0, std::min(plot.width, plot.height) / 2 - graph.polar_room);
    map.whole_turn = whole_turn_of(graph);
    map.zero = std::isfinite(graph.PolarZero) ? std::fmod(graph.PolarZero, 360) * std::numbers::pi / 180 : 0;
    map.per_unit = 2 * std::numbers::pi / map.whole_turn * (graph.PolarClockwise ? -1 : 1);
    map.along = along_radius(y_axis, y, map.radius);
    return map;
}

PlaceMap place_map(document::Graph& graph, SeriesScope::Maps maps) {
    Axis const& x = selected_x_axis(graph);
    Axis const& y = selected_y_axis(graph);
    bool const shown = maps == SeriesScope::Maps::AsShown;
    PlaceMap map{shown ? scale::shown_map(graph, x) : scale::x_map(graph, x),
                 shown ? scale::shown_map(graph, y) : scale::y_map(graph, y),
                 {}};
    if (graph.GraphPolar) map.polar = polar_map(graph, y, map.y);
    return map;
}

} // namespace qv::render
