// Data sets by handle: their points and axes.
#include "control/category_entry.h"
#include "control/data_entry.h"
#include "control/grid_entry.h"
#include "control/handle_records.h"
#include "control/point_entry.h"
#include "control/point_values.h"
#include "control/settings.h"
#include "render/kinds/series_kind.h"

#include <algorithm>
#include <utility>

namespace qv::control {

std::int16_t axis_index(Graph const& graph, Axis const& axis) {
    auto const is_it = [&](Axis const& other) { return &other == &axis; };
    auto const found = std::find_if(graph.Axes.begin(), graph.Axes.end(), is_it);
    if (found == graph.Axes.end())
        raise_fault(FaultNumber::InvalidProcedureCall, "A data set can only lie on axes of its own graph.");
    return static_cast<std::int16_t>(std::distance(graph.Axes.begin(), found));
}

void lay_on_axes(Graph const& graph, DataSet& set, DataOptions const& options) {
    std::int16_t indexes[]{set.xAxisIndex, set.yAxisIndex, set.ColorAxisIndex};
    for (Handle const* const handle : {&options.axis, &options.other_axis, &options.color_axis}) {
        if (Access::is_empty(*handle)) continue;
        Access::page(*handle);
        Axis const& axis = Access::record<Axis>(*handle);
        indexes[static_cast<std::size_t>(axis.AxisXY)] = axis_index(graph, axis);
    }
    set.xAxisIndex = indexes[0];
    set.yAxisIndex = indexes[1];
    set.ColorAxisIndex = indexes[2];
}

namespace {

bool is_histogram(DataSet const& set) {
    return set.DataKind == static_cast<std::uint8_t>(render::DataKind::Histogram);
}

} // namespace
} // namespace qv::control

namespace qv {

using control::Access;
using document::ControlState;
using document::DataSet;

void DataHandle::add(double x, double y) const {
    ControlState& state = Access::page(*this);
    control::add_point_to(state, Access::graph(*this), Access::record<DataSet>(*this), x, y);
}

void DataHandle::add(double x, double y, double error, std::string_view id) const {
    ControlState& state = Access::page(*this);
    control::add_point_to(state, Access::graph(*this), Access::record<DataSet>(*this), {x, y, error, id});
}

void DataHandle::add(std::span<double const> x, std::span<double const> y,
                     std::span<double const> errors) const {
    ControlState& state = Access::page(*this);
    control::add_points_to(state, Access::graph(*this), Access::record<DataSet>(*this), {x, y, errors});
}

void DataHandle::add_columns(std::span<double const> x, std::span<double const> y,
                             std::span<double const> extra1, std::span<double const> extra2,
                             std::span<double const> extra3, std::span<double const> extra4) const {
    ControlState& state = Access::page(*this);
    control::add_points_to(state, Access::graph(*this), Access::record<DataSet>(*this),
                           {x, y, {}, {extra1, extra2, extra3, extra4}});
}

void DataHandle::add(std::string_view category, double value) const {
    ControlState& state = Access::page(*this);
    control::add_category_point(state, Access::graph(*this), Access::record<DataSet>(*this), category, value);
}

void DataHandle::add(TextList const& categories, std::span<double const> values) const {
    ControlState& state = Access::page(*this);
    control::add_category_points(state, Access::graph(*this), Access::record<DataSet>(*this), categories,
                                 values);
}

void DataHandle::add_at_times(std::span<double const> times, std::span<double const> values) const {
    ControlState& state = Access::page(*this);
    control::add_points_at_times(state, Access::graph(*this), Access::record<DataSet>(*this), times,
                                 {{}, values, {}});
}

void DataHandle::add_candles(std::span<double const> x, std::span<double const> open,
                             std::span<double const> high, std::span<double const> low,
                             std::span<double const> close, std::span<double const> volume) const {
    ControlState& state = Access::page(*this);
    control::add_candles(state, Access::graph(*this), Access::record<DataSet>(*this),
                         {x, open, high, low, close, volume});
}

AxisHandle DataHandle::show_volume(AxisOptions const& options) const {
    AxisHandle const axis = graph().add_y_axis({.far_side = true});
    axis.set(options);
    std::vector<AxisHandle> const axes = graph().axes();
    auto const y_axes = std::ranges::count_if(axes, [](AxisHandle const& each) { return !each.is_x(); });
    candle_volume_axis(y_axes);
    return axis;
}

void DataHandle::add_values(std::span<double const> values, double at) const {
    ControlState& state = Access::page(*this);
    DataSet& set = Access::record<DataSet>(*this);
    const std::vector<double> places(values.size(), at);
    control::PointColumns points{places, values, {}};
    if (set.BarHoriz && !control::is_histogram(set)) std::swap(points.x, points.y);
    control::add_points_to(state, Access::graph(*this), set, points);
}

void DataHandle::histogram_edges(std::span<double const> edges) const {
    Access::page(*this);
    control::set_histogram_edges(Access::record<DataSet>(*this), edges);
}

void DataHandle::add_slice(std::string_view name, double value) const {
    ControlState& state = Access::page(*this);
    DataSet& set = Access::record<DataSet>(*this);
    double const number = set.DataSetPointCount() + 1;
    control::add_point_to(state, Access::graph(*this), set, {number, value, 0, name});
}

void DataHandle::grid(std::span<double const> values, Checked<std::int32_t> columns,
                      Checked<std::int32_t> rows, double x1, double x2, double y1, double y2) const {
    Access::page(*this);
    control::give_grid(Access::record<DataSet>(*this), values, {columns, rows, x1, x2, y1, y2});
}

void DataHandle::grid(std::span<double const> values, std::span<double const> x_edges,
                      std::span<double const> y_edges) const {
    Access::page(*this);
    control::give_grid(Access::record<DataSet>(*this), {values, x_edges, y_edges});
}

void DataHandle::grid(DataHandle const& other) const {
    Access::page(*this);
    Access::page(other);
    Access::record<DataSet>(*this).grid = Access::record<DataSet>(other).grid;
}

void DataHandle::keep_latest(Checked<std::int32_t> count) const {
    ControlState& state = Access::page(*this);
    if (count < 0)
        raise_fault(FaultNumber::InvalidProcedureCall,
                    "keep_latest cannot keep a negative number of points.");
    control::keep_latest(state, Access::graph(*this), Access::record<DataSet>(*this),
                         static_cast<std::size_t>(std::int32_t(count)));
}

void DataHandle::clear() const {
    drop(size());
}

void DataHandle::drop(Checked<std::int32_t> count) const {
    Access::page(*this);
    if (count < 0)
        raise_fault(FaultNumber::InvalidProcedureCall, "drop cannot forget a negative number of points.");
    control::drop_oldest(Access::graph(*this), Access::record<DataSet>(*this),
                         static_cast<std::size_t>(std::int32_t(count)));
}

std::int32_t DataHandle::size() const {
    Access::page(*this);
    return Access::record<DataSet>(*this).DataSetPointCount();
}

PointValues DataHandle::points() const {
    Access::page(*this);
    return control::point_values(Access::record<DataSet>(*this).points);
}

AxisHandle DataHandle::x_axis() const {
    return graph().axes().at(static_cast<std::size_t>(x_axis_index()));
}

AxisHandle DataHandle::y_axis() const {
    return graph().axes().at(static_cast<std::size_t>(y_axis_index()));
}

GraphHandle DataHandle::graph() const {
    return control::graph_of(*this);
}

} // namespace qv
