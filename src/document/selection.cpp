#include "document/selection.h"

#include "base/convert.h"

namespace qv::document {

Axis& selected_axis(ControlState& state) {
    Graph& graph = current_graph(state);
    return at(graph.Axes, graph.SelectedAxis, "axis");
}

Axis const& selected_axis(ControlState const& state) {
    Graph const& graph = current_graph(state);
    return at(graph.Axes, graph.SelectedAxis, "axis");
}

DataSet& selected_data_set(ControlState& state) {
    Graph& graph = current_graph(state);
    return at(graph.DataSets, graph.SelectedDataSet, "data set");
}

DataSet const& selected_data_set(ControlState const& state) {
    Graph const& graph = current_graph(state);
    return at(graph.DataSets, graph.SelectedDataSet, "data set");
}

std::int16_t& selected_index(Graph& graph, AxisKind kind) {
    if (kind == AxisKind::Color) return graph.SelectedColorAxis;
    return kind == AxisKind::X ? graph.SelectedXAxis : graph.SelectedYAxis;
}

bool is_current(ControlState const& state, Graph const& graph) {
    return state.CurrentGraph >= 0 && state.CurrentGraph < state.NumGraphs()
           && state.Graphs[static_cast<std::size_t>(state.CurrentGraph)].get() == &graph;
}

std::int16_t AxisLevelIndex(Graph const& graph, AxisKind kind, std::int16_t level) {
    if (level < 0) return 0;
    int count = 0;
    for (std::int16_t i = 0; i < graph.NumAxes(); ++i) {
        if (graph.Axes[static_cast<std::size_t>(i)].AxisXY == kind) ++count;
        if (count == level) return i;
    }
    return 0;
}

Axis fresh_axis(ControlState const& state, std::string_view name, AxisKind kind, double a1, double a2) {
    Axis axis;
    axis.AxisXY = kind;
    axis.AxisTitle = name;
    axis.AxisValue1 = axis.ScaleMin = axis.DataMin = a1;
    axis.AxisValue2 = axis.ScaleMax = axis.DataMax = a2;
    axis.AxisScale = a1 != a2 ? 1 : 0;
    axis.AxisLabelsHoriz = kind == AxisKind::Y ? 90 : 0;
    axis.AxisTickLength = to_i16(2 * state.UnitsPerMmX);
    if (kind != AxisKind::Color) return axis;
    constexpr double usual_bar_mm = 4;
    axis.AxisBarWidth = to_i16(usual_bar_mm * state.UnitsPerMmX);
    axis.AxisTickLength = to_i16(state.UnitsPerMmX);
    axis.AxisFarSide = axis.AxisTicksOutside = true;
    axis.AxisTicksInside = axis.AxisTicksBothEnds = false;
    return axis;
}

void ResetAxis(ControlState& state, Axis& axis, std::string_view name, AxisKind kind, double a1, double a2) {
    axis = fresh_axis(state, name, kind, a1, a2);
    raise_scale_changed(state);
}

void InitAxisLimits(Axis& axis, double value) {
    axis.AxisValue1 = axis.AxisValue2 = value;
    axis.ScaleMin = axis.ScaleMax = value;
    axis.DataMin = axis.DataMax = value;
    axis.AxisRescale = true;
    axis.AxisNoData = false;
}

} // namespace qv::document
