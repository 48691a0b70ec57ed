// Data entry: data sets, points, functions and texts of the current graph. Without a graph, or a data set
// where one is needed, nothing happens.
#pragma once

#include "graph/model/ControlState.h"

#include <span>
#include <string_view>

namespace qv::graph {

/// Appends a data set with an automatic style to the current graph and selects it.
void NewDataSet(ControlState& state, std::string_view legend, bool in_legend_table);

/// Styles a data set after the one before it: next symbol, next colour, everything else inherited. An index
/// not above 0 means the first data set, which starts the series.
void AutoDataStyle(ControlState& state, std::int16_t graph_index, std::int16_t data_index);

/// Appends a point to a data set, counted from 1; a number outside 1..NumDataSets means the newest one. The
/// graph's selected axes widen to hold the point; one GraphScaleChanged tells when a range drawn did. A point
/// with a coordinate that is not finite is kept but moves no axis.
/// Failures up to the axes are reported through ErrorMsg, later ones thrown.
void AddDataPoint(ControlState& state, PointEntry const& point, std::int16_t data_set);

/// Columns of equal length; E may be empty.
struct PointColumns {
    std::span<double const> x;
    std::span<double const> y;
    std::span<double const> e;
};
/// The same for many points, with at most one GraphScaleChanged. Unequal lengths are fault 5 and add nothing.
void AddDataPoints(ControlState& state, PointColumns const& points, std::int16_t data_set);

/// Forgets the `count` oldest points of a data set (all when there are fewer). No axis changes. A negative
/// count is fault 5.
void DropDataPoints(ControlState& state, std::int32_t count, std::int16_t data_set);

/// Makes the newest data set a function of x, drawn from `from_x` to `to_x`; both 0 mean the whole x axis.
void AddMathFunc(ControlState& state, std::string_view expression, double from_x, double to_x);

/// Gives the newest data set a text in place of any earlier one; an empty text changes nothing.
void AddText(ControlState& state, GraphText text);

} // namespace qv::graph
