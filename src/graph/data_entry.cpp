#include "graph/data_entry.h"

#include "base/convert.h"
#include "graph/model/selection.h"
#include "graph/model/trap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace qv::graph {
namespace {

constexpr std::array<Color, 6> automatic_colors{0xFF0000, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF00FF, 0xFFFF00};
constexpr std::int16_t first_shape = 3;
constexpr int last_shape = 11;
constexpr std::int16_t first_character = 33;
constexpr int last_character = 126;
constexpr double symbol_radius_mm = 0.8;

std::int16_t symbol_after(std::int16_t symbol) {
    int const next = symbol + 1;
    if (next > last_character) return first_character;
    if (next > last_shape && next < first_character) return first_shape;
    return static_cast<std::int16_t>(next);
}

void start_series(ControlState const& state, DataSet& set) {
    set.DataSymbolSize = to_i16(symbol_radius_mm * state.UnitsPerMmX);
    set.DataSymbol = first_shape;
    set.DataLineStyle = 0;
    set.DataLineThickness = 1;
    set.BarShadowColor = rgb(100, 100, 100);
    set.ShowErrorBar = true;
}

void continue_series(DataSet const& previous, DataSet& set) {
    set.DataSymbolSize = previous.DataSymbolSize;
    set.DataSymbol = symbol_after(previous.DataSymbol);
    set.DataLineStyle = previous.DataLineStyle;
    set.DataLineThickness = previous.DataLineThickness;
    set.ShowErrorBar = previous.ShowErrorBar;
    set.BarHoriz = previous.BarHoriz;
    set.Bar3D = previous.Bar3D;
    set.BarStacked = previous.BarStacked;
    set.BarBase = previous.BarBase;
    set.BarBaseValue = previous.BarBaseValue;
    set.BarOffset = previous.BarOffset;
    set.BarShadow = previous.BarShadow;
    set.BarShadowColor = previous.BarShadowColor;
    set.MathFunc.clear();
    set.MathFuncX1 = set.MathFuncX2 = 0;
    GraphText no_text;
    no_text.DataTextColor = previous.DataTextColor;
    static_cast<GraphText&>(set) = no_text;
}

void color_data_set(DataSet& set, std::int16_t index) {
    const Color color = automatic_colors[static_cast<std::size_t>(index) % automatic_colors.size()];
    set.DataHide = false;
    set.DataLineColor = color;
    set.DataSymbolFill.Color1 = color;
    set.DataSymbolFill.EdgeColor = 0;
    set.DataSymbolFill.EdgeThickness = 0;
    set.DataSymbolFill.Transparent = false;
}

/// The current graph when it has a data set, else nullptr.
Graph* graph_with_data(ControlState& state) {
    if (state.NumGraphs() == 0) return nullptr;
    Graph& graph = current_graph(state);
    return graph.DataSets.empty() ? nullptr : &graph;
}

DataSet& numbered_data_set(Graph& graph, std::int16_t number) {
    bool const named = number >= 1 && static_cast<std::size_t>(number) <= graph.DataSets.size();
    return named ? graph.DataSets[static_cast<std::size_t>(number) - 1] : graph.DataSets.back();
}

bool widen_end(double& first, double& second, double value) {
    bool const upwards = first <= second;
    if (upwards ? value < first : value > first)
        first = value;
    else if (upwards ? value > second : value < second)
        second = value;
    else
        return false;
    return true;
}

/// Moves the range drawn, and with it the full range, so far that it holds `value`. An automatic axis that
/// shows all it has is rescaled at its next drawing, so that its ends are round again.
bool widen_range(Axis& axis, double value) {
    bool const zoomed = axis.AxisValue1 != axis.ScaleMin || axis.AxisValue2 != axis.ScaleMax;
    if (!widen_end(axis.AxisValue1, axis.AxisValue2, value)) return false;
    widen_end(axis.ScaleMin, axis.ScaleMax, value);
    if (axis.has_mode(AxisMode::Automatic) && !zoomed) axis.AxisRescale = true;
    return true;
}

void begin_axis(Axis& axis, double value) {
    if (!axis.AxisNoData) return;
    if (axis.has_mode(AxisMode::Automatic)) InitAxisLimits(axis, value);
    axis.AxisNoData = false;
}

bool extend_axis(Axis& axis, double value) {
    if (value < axis.DataMin) axis.DataMin = value;
    if (value > axis.DataMax) axis.DataMax = value;
    return widen_range(axis, value);
}

bool is_finite(double x, double y) {
    return std::isfinite(x) && std::isfinite(y);
}

/// Whether `value` moves nothing on the axis: it lies inside the range drawn and the extent of the data. On
/// an axis that runs from high to low no value is taken as settled.
bool is_settled(Axis const& axis, double value) {
    return axis.AxisValue1 <= value && value <= axis.AxisValue2 && axis.DataMin <= value
           && value <= axis.DataMax;
}

/// The axes on which new points lie.
struct PointAxes {
    Axis* x = nullptr;
    Axis* y = nullptr;

    explicit operator bool() const { return x != nullptr; }
    /// Takes in a point; true when a range has moved. A point that is not finite moves nothing.
    bool extend(double x_value, double y_value) const {
        bool const x_settled = is_settled(*x, x_value);
        bool const y_settled = is_settled(*y, y_value);
        if ((x_settled && y_settled) || !is_finite(x_value, y_value)) return false;
        bool const x_changed = !x_settled && extend_axis(*x, x_value);
        bool const y_changed = !y_settled && extend_axis(*y, y_value);
        return x_changed || y_changed;
    }
};

/// Element `index`, or nullptr; a negative index becomes too large.
template <class Sequence>
auto* find_element(Sequence& sequence, std::int16_t index) {
    auto const place = static_cast<std::size_t>(index);
    return place < sequence.size() ? &sequence[place] : nullptr;
}

/// The axes of a graph's new points when both have points already, so that no step of adding one can fail.
PointAxes axes_in_use(Graph& graph) {
    Axis* const x = find_element(graph.Axes, graph.SelectedXAxis);
    Axis* const y = find_element(graph.Axes, graph.SelectedYAxis);
    bool const in_use = x && y && !x->AxisNoData && !y->AxisNoData;
    return in_use ? PointAxes{x, y} : PointAxes{};
}

PointAxes begun_axes(Graph& graph, double x, double y) {
    PointAxes axes{&selected_x_axis(graph), nullptr};
    begin_axis(*axes.x, x);
    axes.y = &selected_y_axis(graph);
    begin_axis(*axes.y, y);
    return axes;
}

void check_room(Graph const& graph, std::size_t added) {
    constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    if (added > most - static_cast<std::size_t>(graph.NumPoints)) raise_fault(FaultNumber::Overflow);
}

[[gnu::always_inline]] inline void store_point(Graph& graph, PointEntry const& point, std::int16_t data_set) {
    check_room(graph, 1);
    numbered_data_set(graph, data_set).points.append(point);
    ++graph.NumPoints;
}

// Kept out of AddDataPoint, whose quick way would otherwise save and restore registers for this one.
[[gnu::noinline]] void add_first_point(ControlState& state, PointEntry const& point, std::int16_t data_set) {
    Graph* graph = nullptr;
    PointAxes moved;
    trapped(state, "AddDataPoint", [&] {
        Graph* const found = graph_with_data(state);
        if (found && is_finite(point.X, point.Y)) moved = begun_axes(*found, point.X, point.Y);
        graph = found;
    });
    if (!graph) return;
    store_point(*graph, point, data_set);
    if (moved && moved.extend(point.X, point.Y)) raise_scale_changed(state);
}

std::size_t first_finite(PointColumns const& points) {
    std::size_t i = 0;
    while (i < points.x.size() && !is_finite(points.x[i], points.y[i])) ++i;
    return i;
}

/// One after the other: whether a point finds its axis zoomed depends on those before it.
bool extend_all(PointAxes const& axes, PointColumns const& points, std::size_t first) {
    bool changed = false;
    for (std::size_t i = first; i < points.x.size(); ++i) changed |= axes.extend(points.x[i], points.y[i]);
    return changed;
}

void check_lengths(PointColumns const& points) {
    if (points.y.size() == points.x.size() && (points.e.empty() || points.e.size() == points.x.size()))
        return;
    raise_fault(FaultNumber::InvalidProcedureCall,
                "AddDataPoints needs columns of one length, but x has " + std::to_string(points.x.size())
                    + ", y " + std::to_string(points.y.size()) + " and e " + std::to_string(points.e.size())
                    + " values. Nothing was added.");
}

} // namespace

void AutoDataStyle(ControlState& state, std::int16_t graph_index, std::int16_t data_index) {
    trapped(state, "AutoDataStyle", [&] {
        Graph& graph = *at(state.Graphs, graph_index);
        const std::int16_t index = std::max<std::int16_t>(data_index, 0);
        DataSet& set = at(graph.DataSets, index);
        if (index == 0)
            start_series(state, set);
        else
            continue_series(at(graph.DataSets, index - 1), set);
        color_data_set(set, index);
    });
}

void NewDataSet(ControlState& state, std::string_view legend, bool in_legend_table) {
    trapped(state, "NewDataSet", [&] {
        if (state.NumGraphs() == 0) return;
        Graph& graph = current_graph(state);
        const auto index = static_cast<std::int16_t>(to_i16(graph.DataSets.size() + 1) - 1);
        DataSet& set = graph.DataSets.emplace_back();
        graph.SelectedDataSet = index;
        set.DataInLegendTable = in_legend_table;
        AutoDataStyle(state, state.CurrentGraph, index);
        set.DataLegend = legend;
        set.xAxisIndex = graph.SelectedXAxis;
        set.yAxisIndex = graph.SelectedYAxis;
    });
}

void AddDataPoint(ControlState& state, PointEntry const& point, std::int16_t data_set) {
    auto* const current = find_element(state.Graphs, state.CurrentGraph);
    Graph* const graph = current && !(*current)->DataSets.empty() ? current->get() : nullptr;
    const PointAxes axes = graph ? axes_in_use(*graph) : PointAxes{};
    if (!axes) return add_first_point(state, point, data_set);
    store_point(*graph, point, data_set);
    if (axes.extend(point.X, point.Y)) raise_scale_changed(state);
}

void AddDataPoints(ControlState& state, PointColumns const& points, std::int16_t data_set) {
    check_lengths(points);
    Graph* const graph = graph_with_data(state);
    if (!graph) return;
    const std::size_t first = first_finite(points);
    const PointAxes axes =
        first < points.x.size() ? begun_axes(*graph, points.x[first], points.y[first]) : PointAxes();
    check_room(*graph, points.x.size());
    numbered_data_set(*graph, data_set).points.append(points.x, points.y, points.e);
    graph->NumPoints += static_cast<std::int32_t>(points.x.size());
    if (axes && extend_all(axes, points, first)) raise_scale_changed(state);
}

void DropDataPoints(ControlState& state, std::int32_t count, std::int16_t data_set) {
    trapped(state, "DropDataPoints", [&] {
        if (count < 0)
            raise_fault(FaultNumber::InvalidProcedureCall,
                        "DropDataPoints cannot drop a negative number of points.");
        Graph* const graph = graph_with_data(state);
        if (!graph) return;
        PointStore& points = numbered_data_set(*graph, data_set).points;
        const std::size_t before = points.size();
        points.drop_oldest(static_cast<std::size_t>(count));
        graph->NumPoints -= static_cast<std::int32_t>(before - points.size());
    });
}

void AddMathFunc(ControlState& state, std::string_view expression, double from_x, double to_x) {
    trapped(state, "AddMathFunc", [&] {
        Graph* const graph = graph_with_data(state);
        if (!graph) return;
        DataSet& set = graph->DataSets.back();
        set.MathFunc = expression;
        set.MathFuncX1 = from_x;
        set.MathFuncX2 = to_x;
        set.DataSymbol = 0;
        set.ShowErrorBar = false;
        if (set.DataLineStyle == 0 || set.DataLineStyle == 2) set.DataLineStyle = 1;
    });
}

void AddText(ControlState& state, GraphText text) {
    trapped(state, "AddText", [&] {
        if (text.DataText.empty()) return;
        if (Graph* const graph = graph_with_data(state)) {
            GraphText& stored = graph->DataSets.back();
            stored = std::move(text);
        }
    });
}

} // namespace qv::graph
