// Point entry: adding points to data sets and dropping them again. Without a graph or a data set nothing
// happens.
#pragma once

#include "control/document_names.h"

#include <span>
#include <string_view>

namespace qv::control {

/// Appends a point to a data set, counted from 1; a number outside 1..NumDataSets means the newest one. The
/// graph's selected axes, with `DataOwnAxes` those of the data set, widen to hold the point; one
/// GraphScaleChanged tells when a range drawn did. A point with a coordinate that is not finite is kept but
/// moves no axis. Failures up to the axes are reported through ErrorMsg, later ones thrown.
void AddDataPoint(ControlState& state, double x, double y, double e, std::int16_t data_set,
                  std::string_view data_id);

/// Columns of equal length; all but x and y may be empty.
struct PointColumns {
    std::span<double const> x;
    std::span<double const> y;
    std::span<double const> e;
    document::ExtraColumns extra{};
};
/// The same for many points, with at most one GraphScaleChanged. Unequal lengths are fault 5 and add nothing.
void AddDataPoints(ControlState& state, PointColumns const& points, std::int16_t data_set);

/// The same on a data set of any graph: its own axes widen, whatever is selected, and failures are thrown.
/// Nothing of the document is touched any more once GraphScaleChanged is raised.
void add_point_to(ControlState& state, Graph& graph, DataSet& set, PointEntry const& point);
void add_point_to(ControlState& state, Graph& graph, DataSet& set, double x, double y);
void add_points_to(ControlState& state, Graph& graph, DataSet& set, PointColumns const& points);
/// Forgets the oldest points of a data set of this graph.
void drop_oldest(Graph& graph, DataSet& set, std::size_t count);
/// From now on the data set forgets all but this many points after each addition; 0: none.
void keep_latest(ControlState& state, Graph& graph, DataSet& set, std::size_t count);

/// Forgets the `count` oldest points of a data set (all when there are fewer). No axis changes. A negative
/// count is fault 5.
void DropDataPoints(ControlState& state, std::int32_t count, std::int16_t data_set);

} // namespace qv::control
