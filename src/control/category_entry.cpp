#include "control/category_entry.h"

#include "control/data_entry.h"
#include "document/selection.h"
#include "document/trap.h"
#include "scale/category_text.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace qv::control {
namespace {

/// The axis of a data set on which its categories are: the one that has some, else that across its bars.
Axis& category_axis(Graph& graph, DataSet const& set) {
    Axis& x = at(graph.Axes, set.xAxisIndex, "axis");
    Axis& y = at(graph.Axes, set.yAxisIndex, "axis");
    if (x.AxisCategories != y.AxisCategories) return x.AxisCategories ? x : y;
    return set.BarHoriz ? y : x;
}

void make_category_axis(Axis& axis) {
    if (axis.AxisCategories) return;
    axis.AxisCategories = true;
    if (axis.has_mode(AxisMode::Automatic)) axis.AxisRescale = true;
}

double number_of_text(Axis& axis, std::string_view category) {
    if (!axis.categories.are_times()) return static_cast<double>(axis.categories.number_of(category));
    auto const time = scale::time_of_text(category, axis.AxisTimeZone);
    if (!time)
        raise_fault(FaultNumber::InvalidProcedureCall,
                    "\"" + std::string(category)
                        + "\" is no date. The categories of this axis are times; write 2026-03-14 or "
                          "2026-03-14 09:30.");
    return static_cast<double>(axis.categories.number_of(*time));
}

void check_length(std::string_view procedure, std::size_t categories, std::size_t values) {
    if (categories == values) return;
    raise_fault(FaultNumber::InvalidProcedureCall,
                std::string(procedure) + " needs as many values as categories, but there are "
                    + std::to_string(categories) + " categories and " + std::to_string(values)
                    + " values. Nothing was added.");
}

void check_finite(std::span<double const> times) {
    if (!std::ranges::all_of(times, [](double time) { return std::isfinite(time); }))
        raise_fault(FaultNumber::InvalidProcedureCall, "The time of a category must be finite");
}

/// Adds columns whose x are the numbers of categories to a data set.
void add_at(ControlState& state, Graph& graph, DataSet& set, Axis const& axis,
            std::span<double const> numbers, PointColumns points) {
    points.x = numbers;
    if (axis.AxisXY == document::AxisKind::Y) std::swap(points.x, points.y);
    add_points_to(state, graph, set, points);
}

} // namespace

void take_categories(Axis& axis, document::CategoryList categories) {
    axis.categories = std::move(categories);
    axis.AxisCategories = true;
    if (axis.has_mode(AxisMode::Automatic)) axis.AxisRescale = true;
}

void take_category_times(Axis& axis, std::span<double const> times) {
    check_finite(times);
    take_categories(axis, document::CategoryList(times));
    axis.AxisTime = true;
}

void SetAxisCategoryTimes(ControlState& state, std::span<double const> times) {
    trapped(state, "SetAxisCategoryTimes", [&] { take_category_times(selected_axis(state), times); });
}

void AddCategoryPoint(ControlState& state, std::string_view category, double y, std::int16_t data_set) {
    trapped(state, "AddCategoryPoint", [&] {
        if (Graph* const graph = graph_with_data(state))
            add_category_point(state, *graph, numbered_data_set(*graph, data_set), category, y);
    });
}

void add_category_point(ControlState& state, Graph& graph, DataSet& set, std::string_view category,
                        double value) {
    Axis& axis = category_axis(graph, set);
    double const number = number_of_text(axis, category);
    make_category_axis(axis);
    if (axis.AxisXY == document::AxisKind::X)
        add_point_to(state, graph, set, number, value);
    else
        add_point_to(state, graph, set, value, number);
}

void add_category_points(ControlState& state, Graph& graph, DataSet& set, TextList const& categories,
                         std::span<double const> values) {
    check_length("add", categories.size(), values.size());
    Axis& axis = category_axis(graph, set);
    std::vector<double> numbers;
    numbers.reserve(categories.size());
    for (std::string const& category : categories) numbers.push_back(number_of_text(axis, category));
    make_category_axis(axis);
    add_at(state, graph, set, axis, numbers, {{}, values, {}});
}

void add_points_at_times(ControlState& state, Graph& graph, DataSet& set, std::span<double const> times,
                         PointColumns const& points) {
    check_length("add_at_times", times.size(), points.y.size());
    check_finite(times);
    Axis& axis = category_axis(graph, set);
    std::vector<double> numbers;
    numbers.reserve(times.size());
    for (double const time : times) numbers.push_back(static_cast<double>(axis.categories.number_of(time)));
    make_category_axis(axis);
    axis.AxisTime = true;
    add_at(state, graph, set, axis, numbers, points);
}

void add_candles(ControlState& state, Graph& graph, DataSet& set, CandleColumns const& candles) {
    Axis const& axis = at(graph.Axes, set.xAxisIndex, "axis");
    const PointColumns points{
        candles.x, candles.close, {}, {candles.open, candles.high, candles.low, candles.volume}};
    if (axis.AxisCategories && axis.AxisTime)
        add_points_at_times(state, graph, set, candles.x, points);
    else
        add_points_to(state, graph, set, points);
}

} // namespace qv::control
