#include "scale/mapping.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "scale/drawn_range.h"
#include "scale/numeric.h"

#include <algorithm>

namespace qv::scale {
namespace {

using document::Axis;
using document::Graph;

/// The plot area along one axis, in twips.
struct Track {
    std::int32_t frame = 0;
    float border = 0;
    std::int32_t length = 0;
    bool mirrored = false; // AxisValue1 is at the far end
};

Track x_track(Graph const& graph, Axis const& axis) {
    return {graph.FrameLeft, graph.margins().left, axis.AxisLength, axis.AxisReverse};
}

// Page y grows downwards, so an axis that is not reversed starts at the bottom.
Track y_track(Graph const& graph, Axis const& axis) {
    return {graph.FrameTop, graph.margins().top, axis.AxisLength, !axis.AxisReverse};
}

/// The map of a range that begins at one place and ends at another.
AxisMap map_of(document::ShownScale const& scale) {
    AxisMap map;
    map.start = scale.start;
    map.length = scale.length;
    map.first = scale.first;
    map.last = scale.last;
    map.is_log = scale.is_log;
    map.off_page = map.start - map.length;
    if (map.is_log && !(map.first > 0 && map.last > 0)) return map;
    double const span = ScaleFrom{map.first, map.is_log}(map.last);
    if (span == 0 || !std::isfinite(span) || !std::isfinite(map.length / span)) return map;
    map.valid = true;
    map.factor = map.length / span;
    return map;
}

document::ShownScale scale_along(Track const& track, Axis const& axis) {
    double const near_end = static_cast<double>(track.frame) + static_cast<double>(track.border);
    double const length = track.length;
    const DrawnRange range = drawn_range(axis);
    return {.first = range.first,
            .last = range.last,
            .is_log = axis.AxisLog,
            .start = track.mirrored ? near_end + length : near_end,
            .length = track.mirrored ? -length : length};
}

document::ShownScale present_scale(Graph const& graph, Axis const& axis) {
    return scale_along(axis.AxisXY == document::AxisKind::X ? x_track(graph, axis) : y_track(graph, axis),
                       axis);
}

constexpr double largest_x = 1e10; // PosX tells no larger position
constexpr double beyond_largest_x = 10000;

float nearest_float(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -largest, largest));
}

template <class Real>
Real logarithm(Real value) {
    if (!(value > 0)) raise_fault(FaultNumber::InvalidProcedureCall);
    return std::log(value);
}

/// The value at a position, all of it computed in the precision of `Real`.
template <class Real>
double value_along(Track const& track, Axis const& axis, float position) {
    if (track.length == 0) raise_fault(FaultNumber::DivisionByZero);
    const Real along =
        (static_cast<Real>(position) - static_cast<Real>(track.frame) - static_cast<Real>(track.border))
        / static_cast<Real>(track.length);
    const Real t = track.mirrored ? 1 - along : along;
    auto const first = static_cast<Real>(axis.AxisValue1);
    auto const last = static_cast<Real>(axis.AxisValue2);
    const Real value = axis.AxisLog && first != 0 ? std::exp(logarithm(first) + t * logarithm(last / first))
                                                  : first + (last - first) * t;
    if (!std::isfinite(value)) raise_fault(FaultNumber::Overflow);
    return static_cast<double>(value);
}

bool fits_float(double value) {
    double const magnitude = std::abs(value);
    return value == 0
           || (magnitude >= std::numeric_limits<float>::min()
               && magnitude <= std::numeric_limits<float>::max());
}

bool has_float_range(Axis const& axis) {
    return fits_float(axis.AxisValue1) && fits_float(axis.AxisValue2)
           && fits_float(axis.AxisValue2 - axis.AxisValue1);
}

} // namespace

AxisMap x_map(Graph const& graph, Axis const& axis) {
    return map_of(scale_along(x_track(graph, axis), axis));
}

AxisMap y_map(Graph const& graph, Axis const& axis) {
    return map_of(scale_along(y_track(graph, axis), axis));
}

void keep_shown_scales(Graph& graph) {
    for (Axis& axis : graph.Axes) axis.shown = present_scale(graph, axis);
}

AxisMap shown_map(Graph const& graph, Axis const& axis) {
    return map_of(axis.shown ? *axis.shown : present_scale(graph, axis));
}

void PosX(document::ControlState& state, double value, float& position) {
    trapped(state, "PosX", [&] {
        Graph& graph = current_graph(state);
        double const place = x_map(graph, selected_x_axis(graph))(value);
        // What is told, not what is drawn: a line to a point as far away as that goes on beyond the page.
        position = nearest_float(place > largest_x ? beyond_largest_x : place);
    });
}

void PosY(document::ControlState& state, double value, float& position) {
    trapped(state, "PosY", [&] {
        Graph& graph = current_graph(state);
        position = nearest_float(y_map(graph, selected_y_axis(graph))(value));
    });
}

void GetXCoord(document::ControlState& state, std::int16_t index, float position, double& value) {
    trapped(state, "GetXCoord", [&] {
        Graph& graph = *at(state.Graphs, index, "graph");
        Axis const& axis = selected_x_axis(graph);
        value = value_along<double>(x_track(graph, axis), axis, position);
    });
}

void GetYCoord(document::ControlState& state, std::int16_t index, float position, double& value) {
    trapped(state, "GetYCoord", [&] {
        Graph& graph = *at(state.Graphs, index, "graph");
        Axis const& axis = selected_y_axis(graph);
        const Track track = y_track(graph, axis);
        value = has_float_range(axis) ? value_along<float>(track, axis, position)
                                      : value_along<double>(track, axis, position);
    });
}

double step_at(Axis const& axis, double value, double twips) {
    if (axis.AxisLength <= 0) return 0;
    double const share = twips / axis.AxisLength;
    if (!axis.AxisLog) return std::abs(axis.AxisValue2 - axis.AxisValue1) * share;
    if (!(value > 0 && axis.AxisValue1 > 0 && axis.AxisValue2 > 0)) return 0;
    double const decline = -share * std::abs(std::log(axis.AxisValue2) - std::log(axis.AxisValue1));
    return -value * std::expm1(decline);
}

} // namespace qv::scale
