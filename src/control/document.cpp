#include "control/document.h"

#include "base/convert.h"
#include "control/looks.h"
#include "control/property_access.h"
#include "document/selection.h"
#include "document/trap.h"
#include "interact/follow.h"
#include "interact/front.h"

#include <algorithm>
#include <utility>

namespace qv::control {
namespace {

/// Index of the element that is about to be appended; fault 6 when 16-bit counters would not reach it.
std::int16_t next_index(auto const& sequence) {
    auto const count = to_i16(sequence.size() + 1);
    return static_cast<std::int16_t>(count - 1);
}

std::int16_t select_axis(ControlState& state, std::int16_t index) {
    Graph& graph = current_graph(state);
    if (index < 0 || index >= graph.NumAxes()) return -1;
    const AxisKind kind = at(graph.Axes, index).AxisXY;
    graph.SelectedAxis = index;
    if (std::exchange(selected_index(graph, kind), index) != index) interact::follow_selection(state);
    return static_cast<std::int16_t>(kind);
}

std::int16_t select_level(ControlState& state, std::string_view procedure, AxisKind kind,
                          std::int16_t level) {
    std::int16_t selected = 0;
    trapped(state, procedure, [&] {
        selected = AxisLevelIndex(current_graph(state), kind, level);
        SetSelectedAxis(state, selected);
    });
    return selected;
}

/// The names of the elements and one empty entry.
template <class Element, class Settings>
void list_names(StableList<Element> const& elements, std::string Settings::*name, TextList& names) {
    TextList list;
    list.reserve(elements.size() + 1);
    for (Element const& element : elements) list.push_back(element.*name);
    list.emplace_back();
    names = std::move(list);
}

void select_new_axis(ControlState& state, AxisKind kind, std::string_view name, double a1, double a2) {
    Graph& graph = current_graph(state);
    Axis axis = fresh_axis(state, name, kind, a1, a2);
    if (!name.empty()) mark_given(axis.given, Row::AxisTitle);
    append_axis(state, graph, std::move(axis));
    selected_index(graph, kind) = static_cast<std::int16_t>(graph.NumAxes() - 1);
    raise_scale_changed(state);
}

/// Makes sure that appending one element cannot fail.
template <class Element>
void make_room(std::vector<Element>& list) {
    if (list.size() == list.capacity()) list.reserve(std::max<std::size_t>(8, 2 * list.size()));
}

} // namespace

std::unique_ptr<Graph> graph_with_axes(ControlState& state, StartRanges const& ranges) {
    auto graph = std::make_unique<Graph>(fresh_graph(state.UnitsPerMmX, state.UnitsPerMmY));
    graph->Axes.push_back(fresh_axis(state, "x-axis", AxisKind::X, ranges.x1, ranges.x2));
    graph->Axes.push_back(fresh_axis(state, "y-axis", AxisKind::Y, ranges.y1, ranges.y2));
    graph->SelectedYAxis = 1;
    dress(state, *graph);
    return graph;
}

std::int16_t append_graph(ControlState& state, std::unique_ptr<Graph> graph, std::string_view name) {
    const std::int16_t index = next_index(state.Graphs);
    std::string title(name);
    make_room(state.Graphs);
    make_room(state.GraphTitles);
    make_room(state.GraphOrder);
    state.Graphs.push_back(std::move(graph));
    state.GraphTitles.push_back(std::move(title));
    state.GraphOrder.push_back(index);
    return index;
}

void tell_of_first_axes(ControlState& state) {
    for (char const* const procedure : {"NewXAxis", "NewYAxis"})
        trapped(state, procedure, [&] { raise_scale_changed(state); });
}

Axis& append_axis(ControlState& state, Graph& graph, Axis axis) {
    next_index(graph.Axes);
    dress(state, graph, axis);
    return graph.Axes.emplace_back(std::move(axis));
}

void NewGraph(ControlState& state, std::string_view name, StartRanges const& ranges) {
    trapped(state, "NewGraph", [&] {
        state.CurrentGraph = append_graph(state, graph_with_axes(state, ranges), name);
        tell_of_first_axes(state);
    });
}

void NewXAxis(ControlState& state, std::string_view name, double a1, double a2) {
    trapped(state, "NewXAxis", [&] { select_new_axis(state, AxisKind::X, name, a1, a2); });
}

void NewYAxis(ControlState& state, std::string_view name, double a1, double a2) {
    trapped(state, "NewYAxis", [&] { select_new_axis(state, AxisKind::Y, name, a1, a2); });
}

void NewColorAxis(ControlState& state, std::string_view name, double a1, double a2) {
    trapped(state, "NewColorAxis", [&] { select_new_axis(state, AxisKind::Color, name, a1, a2); });
}

void ClearGraphData(ControlState& state) {
    trapped(state, "ClearGraphData", [&] {
        if (state.NumGraphs() == 0) return;
        Graph& graph = current_graph(state);
        state.point_target = {};
        state.handle_anchor.discard_handles();
        graph.DataSets.clear();
        graph.SelectedDataSet = 0;
        graph.NumPoints = 0;
        graph.Axes.clear();
        graph.SelectedAxis = 0;
        graph.SelectedColorAxis = 0;
    });
}

void SetSelectedGraph(ControlState& state, std::int16_t index) {
    trapped(state, "SetSelectedGraph", [&] {
        if (index >= 0 && index < state.NumGraphs()) interact::BringGraphToFront(state, index);
    });
}

std::int16_t SelectXaxis(ControlState& state, std::int16_t index) {
    return select_level(state, "SelectXaxis", AxisKind::X, index);
}

std::int16_t SelectYaxis(ControlState& state, std::int16_t index) {
    return select_level(state, "SelectYaxis", AxisKind::Y, index);
}

std::int16_t SelectColorAxis(ControlState& state, std::int16_t index) {
    return select_level(state, "SelectColorAxis", AxisKind::Color, index);
}

std::int16_t SetSelectedAxis(ControlState& state, std::int16_t index) {
    std::int16_t kind = -1;
    trapped(state, "SetSelectedAxis", [&] { kind = select_axis(state, index); });
    return kind;
}

std::int16_t GetSelectedAxisIndex(ControlState& state, std::int16_t kind) {
    std::int16_t index = -1;
    trapped(state, "GetSelectedAxisIndex", [&] {
        if (kind == 0 || kind == 1) index = selected_index(current_graph(state), static_cast<AxisKind>(kind));
    });
    return index;
}

void SetSelectedData(ControlState& state, std::int16_t index) {
    trapped(state, "SetSelectedData", [&] {
        Graph& graph = current_graph(state);
        if (index >= 0 && index < graph.NumDataSets()) graph.SelectedDataSet = index;
    });
}

void GetSelectedData(ControlState& state, std::int16_t& index) {
    trapped(state, "GetSelectedData", [&] { index = current_graph(state).SelectedDataSet; });
}

void GetGraphNames(ControlState& state, TextList& names, std::int16_t& count) {
    trapped(state, "GetGraphNames", [&] {
        TextList list(1);
        list.insert(list.end(), state.GraphTitles.begin(), state.GraphTitles.end());
        names = std::move(list);
        count = state.NumGraphs();
    });
}

void GetAxisNames(ControlState& state, TextList& names, std::int16_t& count) {
    trapped(state, "GetAxisNames", [&] {
        Graph const& graph = current_graph(state);
        list_names(graph.Axes, &Axis::AxisTitle, names);
        count = graph.NumAxes();
    });
}

void GetDataSetNames(ControlState& state, TextList& names, std::int16_t& count) {
    trapped(state, "GetDataSetNames", [&] {
        Graph const& graph = current_graph(state);
        list_names(graph.DataSets, &DataSet::DataLegend, names);
        count = graph.NumDataSets();
    });
}

std::string GraphTitle(ControlState& state) {
    std::string title;
    trapped(state, "GraphTitle", [&] { title = at(state.GraphTitles, state.CurrentGraph, "graph"); });
    return title;
}

} // namespace qv::control
