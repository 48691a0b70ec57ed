// Graphs and axes: creating, naming, clearing and selecting them. Failures are reported through ErrorMsg
// under the procedure's name; what a procedure returns is then unchanged, or the value stated here.
#pragma once

#include "control/document_names.h"
#include "qvgraph/variant.h"

#include <memory>
#include <string>
#include <string_view>

namespace qv::control {

/// The ranges a new graph's axes start with; an empty range makes the axis automatic.
struct StartRanges {
    double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
};

/// A graph as NewGraph makes it.
std::unique_ptr<Graph> graph_with_axes(ControlState& state, StartRanges const& ranges);
/// Lays a graph over the others and returns its number; where that fails, nothing is done.
std::int16_t append_graph(ControlState& state, std::unique_ptr<Graph> graph, std::string_view name);
/// Raises what a new graph's two axes raise.
void tell_of_first_axes(ControlState& state);
/// Appends an axis, selecting nothing.
Axis& append_axis(ControlState& state, Graph& graph, Axis axis);

/// Appends a graph with an x axis and a y axis; it becomes the current one and stands in front.
void NewGraph(ControlState& state, std::string_view name, StartRanges const& ranges);
/// Appends an axis to the current graph, which becomes its selected x (y) axis.
void NewXAxis(ControlState& state, std::string_view name, double a1, double a2);
void NewYAxis(ControlState& state, std::string_view name, double a1, double a2);
/// Appends a colour bar, for data sets to come.
void NewColorAxis(ControlState& state, std::string_view name, double a1, double a2);
/// Empties the current graph of axes and data.
void ClearGraphData(ControlState& state);

void SetSelectedGraph(ControlState& state, std::int16_t index);
/// Selects the index-th x (y) axis, counting from 1, and returns its index; 0 when there is none.
std::int16_t SelectXaxis(ControlState& state, std::int16_t index);
std::int16_t SelectYaxis(ControlState& state, std::int16_t index);
std::int16_t SelectColorAxis(ControlState& state, std::int16_t index);
/// Returns 0 for an x axis, 1 for a y axis, 2 for a colour bar, -1 (and selects nothing) for an index outside
/// the list.
std::int16_t SetSelectedAxis(ControlState& state, std::int16_t index);
/// `kind` is 0 for x and 1 for y; -1 for any other.
std::int16_t GetSelectedAxisIndex(ControlState& state, std::int16_t kind);
void SetSelectedData(ControlState& state, std::int16_t index);
void GetSelectedData(ControlState& state, std::int16_t& index);

/// Entry 0 stays empty; the names follow.
void GetGraphNames(ControlState& state, TextList& names, std::int16_t& count);
/// The names; one empty entry follows.
void GetAxisNames(ControlState& state, TextList& names, std::int16_t& count);
void GetDataSetNames(ControlState& state, TextList& names, std::int16_t& count);
/// Name of the current graph.
std::string GraphTitle(ControlState& state);

} // namespace qv::control
