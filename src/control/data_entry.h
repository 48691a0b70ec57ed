// Data entry: data sets, their functions and texts. Without a graph, or a data set where one is needed,
// nothing happens.
#pragma once

#include "control/document_names.h"

#include <string_view>

namespace qv::control {

/// How a data set that has this number in its graph looks where nobody has set anything: style and colours as
/// AutoDataStyle gives them.
DataSetSettings automatic_style(ControlState const& state, Graph const& graph, std::int16_t index);

/// The shapes in turn.
std::int16_t cycled_shape(std::int16_t index);

/// Appends a data set with an automatic style to the current graph and selects it.
void NewDataSet(ControlState& state, std::string_view legend, bool in_legend_table);

/// Styles a data set after the one before it: next symbol, next colour, everything else inherited. An index
/// not above 0 means the first data set, which starts the series.
void AutoDataStyle(ControlState& state, std::int16_t graph_index, std::int16_t data_index);

/// The shape that tells symbols from those of the graph's data sets so far.
std::int16_t next_shape(Graph const& graph);
/// Appends a data set with the style of a graph's first, in the next colour, selecting nothing. Fault 6 when
/// there are too many.
DataSet& append_data_set(ControlState& state, Graph& graph);

/// The current graph when it has a data set, else nullptr.
Graph* graph_with_data(ControlState& state);

/// Makes the newest data set a function of x, drawn from `from_x` to `to_x`; both 0 mean the whole x axis.
void AddMathFunc(ControlState& state, std::string_view expression, double from_x, double to_x);

/// Gives the newest data set a text in place of any earlier one; an empty text changes nothing.
void AddText(ControlState& state, GraphText text);

} // namespace qv::control
