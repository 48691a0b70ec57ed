// Small settings beside the properties: axis range, tooltip, cross-hair, coordinate read-out.
#pragma once

#include "control/document_names.h"

#include <span>
#include <string_view>

namespace qv::control {

/// The range drawn of the selected axis. Not trapped: fault 9 without one.
void GetAxisRange(ControlState const& state, double& a1, double& a2);
/// Where an axis has its ticks, in the order of their labels; without major ones it is divided evenly again.
/// Labels follow the axis's format or, on an axis with text labels, come one a major tick. Values that are
/// not finite are fault 5 and change nothing.
void set_ticks(Axis& axis, std::span<double const> major, std::span<double const> minor);
/// The same for the selected axis.
/// Edges between a histogram's bins, at least two in rising order, or none.
void set_histogram_edges(DataSet& set, std::span<double const> edges);
/// The same of the selected data set.
void SetHistogramEdges(ControlState& state, std::span<double const> edges);
void SetAxisTicks(ControlState& state, std::span<double const> major, std::span<double const> minor);
/// The text shown when the pointer rests on the page. Not trapped.
void SetTooltip(ControlState& state, std::string_view tooltip);
/// 0 switches the cross-hair off, n switches it on with style n - 1.
void SetCrossHair(ControlState& state, std::int16_t style);
/// Shows or hides the coordinates under the pointer in the current graph, and the label they stand in.
void SetShowXYcoords(ControlState& state, bool show);

} // namespace qv::control
