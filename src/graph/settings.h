// Small settings beside the properties: axis range, tooltip, cross-hair, coordinate read-out.
#pragma once

#include "graph/model/ControlState.h"

#include <string_view>

namespace qv::graph {

/// The range drawn of the selected axis. Not trapped: fault 9 without one.
void GetAxisRange(ControlState const& state, double& a1, double& a2);
/// The text shown when the pointer rests on the page. Not trapped.
void SetTooltip(ControlState& state, std::string_view tooltip);
/// 0 switches the cross-hair off, n switches it on with style n - 1.
void SetCrossHair(ControlState& state, std::int16_t style);
/// Shows or hides the coordinates under the pointer in the current graph, and the label they stand in.
void SetShowXYcoords(ControlState& state, bool show);

} // namespace qv::graph
