#include "control/point_entry.h"

#include "base/convert.h"
#include "control/data_entry.h"
#include "document/column_extent.h"
#include "document/selection.h"
#include "document/trap.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

// The little functions that run for every point are inlined by force: left alone, the compiler saves and
// restores registers around them that cost as much as their work.
#define QV_EVERY_POINT [[gnu::always_inline]] inline

namespace qv::control {
namespace {

constexpr std::int32_t most_points = std::numeric_limits<std::int32_t>::max();

// The upper end first, because most series rise.
QV_EVERY_POINT bool widen_end(double& first, double& second, double value) {
    bool const upwards = first <= second;
    if (upwards ? value > second : value < second)
        second = value;
    else if (upwards ? value < first : value > first)
        first = value;
    else
        return false;
    return true;
}

/// Moves the range drawn, and with it the full range, so far that it holds `value`. An automatic axis that
/// shows all it has is rescaled at its next drawing, so that its ends are round again.
QV_EVERY_POINT bool widen_range(Axis& axis, double value) {
    bool const zoomed = axis.AxisValue1 != axis.ScaleMin || axis.AxisValue2 != axis.ScaleMax;
    if (!widen_end(axis.AxisValue1, axis.AxisValue2, value)) return false;
    widen_end(axis.ScaleMin, axis.ScaleMax, value);
    if (axis.has_mode(AxisMode::Automatic) && !zoomed) axis.AxisRescale = true;
    return true;
}

/// Takes a finite value into the extent of the data and the range drawn; true when the range has moved.
QV_EVERY_POINT bool take_in(Axis& axis, double value) {
    if (value > axis.DataMax) axis.DataMax = value;
    if (value < axis.DataMin) axis.DataMin = value;
    if (axis.AxisValue1 <= value && value <= axis.AxisValue2) return false;
    return widen_range(axis, value);
}

QV_EVERY_POINT bool is_finite(double x, double y) {
    return (x - x) + (y - y) == 0; // infinite and not-a-number values make it not-a-number
}

void begin_axis(Axis& axis, double value) {
    if (!axis.AxisNoData) return;
    if (axis.has_mode(AxisMode::Automatic)) InitAxisLimits(axis, value);
    axis.AxisNoData = false;
}

/// The axes on which new points lie.
struct PointAxes {
    Axis* x = nullptr;
    Axis* y = nullptr;

    explicit operator bool() const { return x != nullptr; }
    /// Before the first point that an axis takes in.
    void begin(double x_value, double y_value) const {
        begin_axis(*x, x_value);
        begin_axis(*y, y_value);
    }
    /// Takes in a point; true when a range has moved. A point that is not finite moves nothing.
    QV_EVERY_POINT bool extend(double x_value, double y_value) const {
        if (!is_finite(x_value, y_value)) return false;
        bool const x_changed = take_in(*x, x_value);
        bool const y_changed = take_in(*y, y_value);
        return x_changed || y_changed;
    }
};

[[gnu::cold, gnu::noinline]] void find_axes(Graph& graph, DataSet& set) {
    set.found_axes = {&at(graph.Axes, set.xAxisIndex, "axis"), &at(graph.Axes, set.yAxisIndex, "axis"),
                      set.xAxisIndex, set.yAxisIndex};
}

/// The axes that a data set lies on.
QV_EVERY_POINT PointAxes own_axes(Graph& graph, DataSet& set) {
    auto const& found = set.found_axes;
    if (!found.x || found.x_index != set.xAxisIndex || found.y_index != set.yAxisIndex) find_axes(graph, set);
    return {found.x, found.y};
}

DataSet& numbered_data_set(Graph& graph, std::int16_t number) {
    bool const named = number >= 1 && static_cast<std::size_t>(number) <= graph.DataSets.size();
    return named ? graph.DataSets[static_cast<std::size_t>(number) - 1] : graph.DataSets.back();
}

QV_EVERY_POINT void hold_latest(Graph& graph, DataSet& set) {
    if (set.points_kept != 0 && set.points.size() > set.points_kept)
        drop_oldest(graph, set, set.points.size() - set.points_kept);
}

PointAxes axes_to_widen(ControlState const& state, Graph& graph, std::int16_t data_set) {
    if (!state.DataOwnAxes) return {&selected_x_axis(graph), &selected_y_axis(graph)};
    return own_axes(graph, numbered_data_set(graph, data_set));
}

void check_room(Graph const& graph, std::size_t added) {
    if (added > static_cast<std::size_t>(most_points - graph.NumPoints)) raise_fault(FaultNumber::Overflow);
}

/// Keeps the way to where a point went, for the next one.
void remember(ControlState& state, Graph& graph, PointAxes const& axes, PointStore& points,
              std::int16_t data_set) {
    state.point_target = {.graph = &graph,
                          .x = axes.x,
                          .y = axes.y,
                          .points = &points,
                          .selected_x = graph.SelectedXAxis,
                          .selected_y = graph.SelectedYAxis,
                          .current_graph = state.CurrentGraph,
                          .data_set = data_set,
                          .data_sets = graph.DataSets.size()};
}

/// Adds any point, wherever it has to go.
[[gnu::noinline]] void add_point(ControlState& state, PointEntry const& point, std::int16_t data_set) {
    Graph* graph = nullptr;
    PointAxes axes;
    trapped(state, "AddDataPoint", [&] {
        Graph* const found = graph_with_data(state);
        if (found && is_finite(point.X, point.Y)) axes = axes_to_widen(state, *found, data_set);
        graph = found;
    });
    if (!graph) return;
    check_room(*graph, 1);
    DataSet& set = numbered_data_set(*graph, data_set);
    set.points.append(point);
    ++graph->NumPoints;
    hold_latest(*graph, set);
    if (!axes) return;
    axes.begin(point.X, point.Y);
    if (set.points_kept == 0) remember(state, *graph, axes, set.points, data_set);
    if (axes.extend(point.X, point.Y)) raise_scale_changed(state);
}

std::size_t first_finite(PointColumns const& points) {
    std::size_t i = 0;
    while (i < points.x.size() && !is_finite(points.x[i], points.y[i])) ++i;
    return i;
}

/// Whether the smallest and the largest value do to an axis what all values do one after the other: one that
/// shows all it has goes on doing so, but what a zoomed one does with a value depends on those before.
bool ends_suffice(Axis const& axis, document::Extent const& extent) {
    return axis.ranges().shows_all() || (axis.AxisValue1 <= extent.low && extent.high <= axis.AxisValue2);
}

bool take_in(Axis& axis, document::Extent const& extent) {
    bool const moved = take_in(axis, extent.low);
    return take_in(axis, extent.high) || moved;
}

/// A few at a time, so that they are still at hand.
bool extend_all(PointAxes const& axes, PointColumns const& points, std::size_t first) {
    constexpr std::size_t stretch = 1024;
    bool changed = false;
    for (std::size_t start = first; start < points.x.size(); start += stretch) {
        std::size_t const count = std::min(stretch, points.x.size() - start);
        auto const xs = points.x.subspan(start, count), ys = points.y.subspan(start, count);
        auto const x = document::column_extent(xs), y = document::column_extent(ys);
        if (x.all_finite && y.all_finite && ends_suffice(*axes.x, x.extent)
            && ends_suffice(*axes.y, y.extent)) {
            changed |= take_in(*axes.x, x.extent);
            changed |= take_in(*axes.y, y.extent);
            continue;
        }
        for (std::size_t i = 0; i < count; ++i) changed |= axes.extend(xs[i], ys[i]);
    }
    return changed;
}

void check_lengths(std::string_view procedure, PointColumns const& points) {
    std::size_t const length = points.x.size();
    auto const fits = [length](std::span<double const> column) {
        return column.empty() || column.size() == length;
    };
    if (points.y.size() == length && fits(points.e) && std::ranges::all_of(points.extra, fits)) return;
    std::string lengths = "x has " + std::to_string(length) + ", y " + std::to_string(points.y.size())
                          + " and e " + std::to_string(points.e.size());
    for (std::size_t i = 0; i < points.extra.size(); ++i)
        if (!fits(points.extra[i]))
            lengths +=
                ", extra column " + std::to_string(i + 1) + " " + std::to_string(points.extra[i].size());
    raise_fault(FaultNumber::InvalidProcedureCall, std::string(procedure)
                                                       + " needs columns of one length, but " + lengths
                                                       + " values. Nothing was added.");
}

/// What follows when a point is stored.
QV_EVERY_POINT void settle_point(ControlState& state, Graph& graph, DataSet& set, PointAxes const& axes,
                                 double x, double y) {
    ++graph.NumPoints;
    hold_latest(graph, set);
    if (!is_finite(x, y)) return;
    axes.begin(x, y);
    if (axes.extend(x, y)) raise_scale_changed(state);
}

/// `axes_of` gives the graph's axes to be widened.
void add_columns(ControlState& state, Graph& graph, DataSet& set, PointColumns const& points, auto axes_of) {
    const std::size_t first = first_finite(points);
    const PointAxes axes = first < points.x.size() ? axes_of(graph) : PointAxes();
    check_room(graph, points.x.size());
    set.points.append(points.x, points.y, points.e, points.extra);
    graph.NumPoints += static_cast<std::int32_t>(points.x.size());
    hold_latest(graph, set);
    if (!axes) return;
    axes.begin(points.x[first], points.y[first]);
    if (extend_all(axes, points, first)) raise_scale_changed(state);
}

} // namespace

void AddDataPoint(ControlState& state, double x, double y, double e, std::int16_t data_set,
                  std::string_view data_id) {
    PointTarget const& target = state.point_target;
    bool const plain = e == 0 && data_id.empty();
    if (!plain || !target.leads_on(state.CurrentGraph, data_set) || target.graph->NumPoints == most_points
        || !target.points->append_plain(x, y))
        return add_point(state, {x, y, e, data_id}, data_set);
    ++target.graph->NumPoints;
    if (PointAxes{target.x, target.y}.extend(x, y)) raise_scale_changed(state);
}

void AddDataPoints(ControlState& state, PointColumns const& points, std::int16_t data_set) {
    check_lengths("AddDataPoints", points);
    if (Graph* const graph = graph_with_data(state))
        add_columns(state, *graph, numbered_data_set(*graph, data_set), points,
                    [&](Graph& its) { return axes_to_widen(state, its, data_set); });
}

void add_points_to(ControlState& state, Graph& graph, DataSet& set, PointColumns const& points) {
    check_lengths("add", points);
    add_columns(state, graph, set, points, [&set](Graph& its) { return own_axes(its, set); });
}

void add_point_to(ControlState& state, Graph& graph, DataSet& set, PointEntry const& point) {
    check_room(graph, 1);
    const PointAxes axes = own_axes(graph, set);
    set.points.append(point);
    settle_point(state, graph, set, axes, point.X, point.Y);
}

void add_point_to(ControlState& state, Graph& graph, DataSet& set, double x, double y) {
    const PointAxes axes = own_axes(graph, set);
    if (graph.NumPoints == most_points || !set.points.append_plain(x, y))
        return add_point_to(state, graph, set, {x, y, 0, {}});
    settle_point(state, graph, set, axes, x, y);
}

void drop_oldest(Graph& graph, DataSet& set, std::size_t count) {
    const std::size_t before = set.points.size();
    set.points.drop_oldest(count);
    graph.NumPoints -= static_cast<std::int32_t>(before - set.points.size());
}

void keep_latest(ControlState& state, Graph& graph, DataSet& set, std::size_t count) {
    state.point_target = {}; // whose short way holds nothing
    set.points_kept = count;
    hold_latest(graph, set);
}

void DropDataPoints(ControlState& state, std::int32_t count, std::int16_t data_set) {
    trapped(state, "DropDataPoints", [&] {
        if (count < 0)
            raise_fault(FaultNumber::InvalidProcedureCall,
                        "DropDataPoints cannot drop a negative number of points.");
        Graph* const graph = graph_with_data(state);
        if (!graph) return;
        drop_oldest(*graph, numbered_data_set(*graph, data_set), static_cast<std::size_t>(count));
    });
}

} // namespace qv::control
