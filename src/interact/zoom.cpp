#include "interact/zoom.h"

#include "document/selection.h"
#include "document/trap.h"
#include "interact/front.h"
#include "interact/hit_test.h"
#include "interact/scroll_bars.h"
#include "scale/mapping.h"
#include "scale/numeric.h"
#include "scale/zoomed.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::interact {
namespace {

using document::Axis;
using document::AxisKind;
using document::ControlState;
using document::Graph;
using document::Shown;
using document::ZoomStep;
using scale::AxisMap;
using scale::Max;
using scale::Min;
using scale::MinMax;
using scale::ScaleFrom;
using scale::shown_map;

/// Calls `change(Axis&)` for every axis that has a scale.
template <class Change>
void for_each_axis(Graph& graph, Change change) {
    for (Axis& axis : graph.Axes)
        if (has_scale(axis)) change(axis);
}

/// A range on the axis's own scale, from its first to its last end.
struct Span {
    double first = 0;
    double last = 0;
    double length() const { return last - first; }
};

Span displayed(Axis const& axis, ScaleFrom const& scale) {
    return {scale(axis.AxisValue1), scale(axis.AxisValue2)};
}

Span full(Axis const& axis, ScaleFrom const& scale) {
    return {scale(axis.ScaleMin), scale(axis.ScaleMax)};
}

/// Whether neighbouring pixels of an axis would have different values: below that no value could be kept
/// under the pointer.
bool tells_pixels_apart(ControlState const& state, Axis const& axis, double first, double last) {
    DrawSurface const& page = *state.Picture1;
    bool const is_x = axis.AxisXY == AxisKind::X;
    double const pixels = axis.AxisLength / (is_x ? page.TwipsPerPixelX() : page.TwipsPerPixelY());
    if (axis.AxisLog)
        return std::abs(ScaleFrom{first, true}(last)) >= pixels * std::numeric_limits<double>::epsilon();
    double const larger = Max(std::abs(first), std::abs(last));
    return std::abs(last - first) >= pixels * (std::nextafter(larger, HUGE_VAL) - larger);
}

bool is_wide_enough(ControlState const& state, Axis const& axis, ScaleFrom const& scale, Span const& span) {
    return std::isfinite(span.first) && std::isfinite(span.last) && span.first != span.last
           && std::abs(span.length()) >= std::abs(full(axis, scale).length()) / state.MaxZoomFactor
           && tells_pixels_apart(state, axis, scale.value_at(span.first), scale.value_at(span.last));
}

/// An end that stands where the full range's does takes its very value, which the way over the scale would
/// miss.
double value_of(Axis const& axis, ScaleFrom const& scale, double scaled) {
    const Span whole = full(axis, scale);
    if (scaled == whole.first) return axis.ScaleMin;
    if (scaled == whole.last) return axis.ScaleMax;
    return scale.value_at(scaled);
}

void show(Axis& axis, ScaleFrom const& scale, Span const& span) {
    double const first = value_of(axis, scale, span.first), last = value_of(axis, scale, span.last);
    if (std::isfinite(first) && std::isfinite(last)) show_within_full_range(axis, {first, last});
}

/// The span moved, and cut if need be, so that it lies in the full range.
Span inside_full_range(Axis const& axis, ScaleFrom const& scale, Span span) {
    const Span whole = full(axis, scale);
    auto const [low, high] = std::minmax({whole.first, whole.last});
    auto const [span_low, span_high] = std::minmax({span.first, span.last});
    double const length = Min(span_high - span_low, high - low);
    double const start = MinMax(span_low, low, high - length);
    double const end = start == high - length ? high : start + length;
    return span.first <= span.last ? Span{start, end} : Span{end, start};
}

/// What the box leaves of an axis's range, from its smaller to its larger value.
void zoom_axis_to(ControlState& state, Axis& axis, double corner, double opposite) {
    auto const [low, high] = std::minmax({axis.AxisValue1, axis.AxisValue2});
    auto const [full_low, full_high] = std::minmax({axis.ScaleMin, axis.ScaleMax});
    auto [from, to] = std::minmax({MinMax(corner, low, high), MinMax(opposite, low, high)});
    from = Max(from, full_low);
    to = Min(to, full_high);
    // Also false where a corner has no value.
    if (to - from >= std::abs((axis.ScaleMax - axis.ScaleMin) / state.MaxZoomFactor))
        show_within_full_range(axis, {from, to});
}

double along(AxisKind kind, Point place) {
    return kind == AxisKind::X ? place.x : place.y;
}

/// The value under a place; not a finite number where the axis has none there.
double value_under(Axis const& axis, AxisMap const& map, double position) {
    double const value = map.value_at(position);
    return axis.AxisLog && !(value > 0) ? std::numeric_limits<double>::quiet_NaN() : value;
}

/// The values of a graph's axes under a place, in order. Those of the last zooming about the same place are
/// taken again as long as they lie there: each step rounds, and a hundred steps would carry them away.
std::vector<double> values_under(ControlState& state, std::int16_t index, Point place) {
    constexpr double reach_pixels = 0.5;
    Graph const& graph = *at(state.Graphs, index);
    document::ZoomAnchor& anchor = state.zoom_anchor;
    bool const same = anchor.graph == index && anchor.place.x == place.x && anchor.place.y == place.y
                      && anchor.values.size() == graph.Axes.size();
    double const reach_twips = reach_pixels * state.Picture1->TwipsPerPixelX();
    std::vector<double> values;
    for (std::size_t i = 0; i < graph.Axes.size(); ++i) {
        Axis const& axis = graph.Axes[i];
        const AxisMap map = shown_map(graph, axis);
        double const position = along(axis.AxisXY, place);
        bool const lies_there = same && std::abs(map(anchor.values[i]) - position) <= reach_twips;
        values.push_back(lies_there ? anchor.values[i] : value_under(axis, map, position));
    }
    anchor = {index, place, values};
    return values;
}

} // namespace

bool has_scale(Axis const& axis) {
    if (axis.AxisXY == AxisKind::Color) return false; // which no place in the plot area stands for
    if (!axis.AxisLog) return true;
    return std::min({axis.AxisValue1, axis.AxisValue2, axis.ScaleMin, axis.ScaleMax}) > 0;
}

Shown full_range(Axis const& axis) {
    bool const is_turned = (axis.AxisValue1 < axis.AxisValue2 && axis.ScaleMin > axis.ScaleMax)
                           || (axis.AxisValue1 > axis.AxisValue2 && axis.ScaleMin < axis.ScaleMax);
    return is_turned ? Shown{axis.ScaleMax, axis.ScaleMin} : Shown{axis.ScaleMin, axis.ScaleMax};
}

void show_within_full_range(Axis& axis, Shown range) {
    const Shown whole = full_range(axis);
    auto const [full_low, full_high] = std::minmax({whole.first, whole.last});
    auto const [low, high] = std::minmax({range.first, range.last});
    double const from = MinMax(low, full_low, full_high), to = MinMax(high, full_low, full_high);
    if (!(from < to)) return;
    bool const upwards = whole.first < whole.last;
    axis.AxisValue1 = upwards ? from : to;
    axis.AxisValue2 = upwards ? to : from;
}

std::vector<Shown> shown_ranges(Graph const& graph) {
    std::vector<Shown> ranges;
    for (Axis const& axis : graph.Axes) ranges.push_back({axis.AxisValue1, axis.AxisValue2});
    return ranges;
}

void show_ranges(Graph& graph, std::vector<Shown> const& ranges) {
    for (std::size_t i = 0; i < std::min(ranges.size(), graph.Axes.size()); ++i) {
        graph.Axes[i].AxisValue1 = ranges[i].first;
        graph.Axes[i].AxisValue2 = ranges[i].last;
    }
}

void ZoomToBox(ControlState& state, Point release) {
    Graph& graph = *at(state.Graphs, state.MouseGraph);
    for_each_axis(graph, [&](Axis& axis) {
        const AxisMap map = shown_map(graph, axis);
        double const corner = map.value_at(along(axis.AxisXY, state.pointer.press));
        double const opposite = map.value_at(along(axis.AxisXY, release));
        if (!std::isnan(corner) && !std::isnan(opposite)) zoom_axis_to(state, axis, corner, opposite);
    });
    state.Zoomed = true;
    ResizeScrollBars(state);
    refresh_graph(state, state.MouseGraph);
    // Drawing may have found the range whole, or changed it.
    if (!state.Graphs.empty()) ResizeScrollBars(state);
}

void redraw_ranges(ControlState& state, std::int16_t index) {
    refresh_graph(state, index);
    if (!state.Graphs.empty()) ResizeScrollBars(state);
}

void UnZoom(ControlState& state) {
    trapped(state, "UnZoom", [&] {
        for (Axis& axis : at(state.Graphs, state.MouseGraph)->Axes) {
            const Shown whole = full_range(axis);
            axis.AxisValue1 = whole.first;
            axis.AxisValue2 = whole.last;
        }
        scale::SetScrollBarsVisibility(state);
    });
}

void zoom_in_by_two(ControlState& state, std::int16_t index, Point place) {
    Graph& graph = *at(state.Graphs, index);
    for_each_axis(graph, [&](Axis& axis) {
        double const value = value_under(axis, shown_map(graph, axis), along(axis.AxisXY, place));
        if (!std::isfinite(value)) return;
        const ScaleFrom scale{value, axis.AxisLog};
        double const quarter = displayed(axis, scale).length() / 4;
        const Span half = inside_full_range(axis, scale, {-quarter, quarter});
        if (is_wide_enough(state, axis, scale, half)) show(axis, scale, half);
    });
}

void zoom_out_by_two(ControlState& state, std::int16_t index) {
    for_each_axis(*at(state.Graphs, index), [&](Axis& axis) {
        const ScaleFrom scale{axis.AxisValue1, axis.AxisLog};
        const Span span = displayed(axis, scale);
        const Span whole = full(axis, scale);
        double const half = span.length() / 2;
        auto const [low, high] = std::minmax({whole.first, whole.last});
        show(axis, scale, {MinMax(span.first - half, low, high), MinMax(span.last + half, low, high)});
    });
}

void zoom_about(ControlState& state, std::int16_t index, Point place, double factor, AxisChoice axes) {
    Graph& graph = *at(state.Graphs, index);
    const std::vector<double> values = values_under(state, index, place);
    for (std::size_t i = 0; i < graph.Axes.size(); ++i) {
        Axis& axis = graph.Axes[i];
        bool const chosen = axis.AxisXY == AxisKind::X ? axes.x : axes.y;
        if (!chosen || !has_scale(axis) || !std::isfinite(values[i])) continue;
        // The place divides the range as before, so that its value is rounded by no step.
        const ScaleFrom scale{values[i], axis.AxisLog};
        double const share = shown_map(graph, axis).share_at(along(axis.AxisXY, place));
        double const length = displayed(axis, scale).length() * factor;
        const Span span = inside_full_range(axis, scale, {-share * length, (1 - share) * length});
        if (factor >= 1 || is_wide_enough(state, axis, scale, span)) show(axis, scale, span);
    }
}

void pan_by(ControlState& state, std::int16_t index, double right, double down) {
    Graph& graph = *at(state.Graphs, index);
    for_each_axis(graph, [&](Axis& axis) {
        bool const is_x = axis.AxisXY == AxisKind::X;
        const AxisMap map = is_x ? scale::x_map(graph, axis) : scale::y_map(graph, axis);
        if (!map.valid || map.factor == 0) return;
        double const way = -(is_x ? right : down) / map.factor;
        const ScaleFrom scale{axis.AxisValue1, axis.AxisLog};
        const Span span = displayed(axis, scale);
        show(axis, scale, inside_full_range(axis, scale, {span.first + way, span.last + way}));
    });
}

namespace {

constexpr std::size_t most_steps = 100;

bool shows(Graph const& graph, std::vector<Shown> const& ranges) {
    auto const is_shown = [](Axis const& axis, Shown const& range) {
        return axis.AxisValue1 == range.first && axis.AxisValue2 == range.last;
    };
    return std::equal(graph.Axes.begin(), graph.Axes.end(), ranges.begin(), ranges.end(), is_shown);
}

} // namespace

ZoomStepScope::ZoomStepScope(ControlState& state, std::int16_t graph, document::ZoomKind kind)
    : state_(state), graph_(graph_at(state, graph)), step_{graph, kind, {}} {
    if (!graph_) return;
    step_.ranges = shown_ranges(*graph_);
    state_.zoom_history.undo.reserve(most_steps); // so that keeping the step cannot fail
}

ZoomStepScope::~ZoomStepScope() {
    // A handler may have emptied the page, and filled it anew.
    if (!graph_ || graph_at(state_, step_.graph) != graph_ || shows(*graph_, step_.ranges)) return;
    auto& [undo, redo] = state_.zoom_history;
    bool const goes_on = step_.kind >= document::ZoomKind::Wheel && redo.empty() && !undo.empty()
                         && undo.back().kind == step_.kind && undo.back().graph == step_.graph;
    redo.clear();
    if (goes_on) return;
    if (undo.size() == most_steps) undo.erase(undo.begin());
    if (undo.size() < undo.capacity()) undo.push_back(std::move(step_));
}

namespace {

/// Shows what of the ranges lies within the full ones; those may have changed since.
void show_possible_ranges(Graph& graph, std::vector<Shown> const& ranges) {
    for (std::size_t i = 0; i < std::min(ranges.size(), graph.Axes.size()); ++i) {
        Axis& axis = graph.Axes[i];
        if (axis.AxisXY == AxisKind::Color) continue; // which nobody zooms
        if (!axis.AxisLog || std::min(ranges[i].first, ranges[i].last) > 0)
            show_within_full_range(axis, ranges[i]);
    }
}

/// Shows the ranges of the last step of one list and puts those of before into the other.
bool step_over(ControlState& state, std::vector<ZoomStep>& from, std::vector<ZoomStep>& to) {
    if (from.empty()) return false;
    Graph* const graph = graph_at(state, from.back().graph);
    if (graph) to.push_back({from.back().graph, from.back().kind, shown_ranges(*graph)});
    const ZoomStep step = std::move(from.back());
    from.pop_back();
    if (!graph) return false;
    show_possible_ranges(*graph, step.ranges);
    redraw_ranges(state, step.graph);
    return true;
}

} // namespace

bool undo_zoom(ControlState& state) {
    return step_over(state, state.zoom_history.undo, state.zoom_history.redo);
}

bool redo_zoom(ControlState& state) {
    return step_over(state, state.zoom_history.redo, state.zoom_history.undo);
}

} // namespace qv::interact
