// Whether a graph shows less than its full range.
#pragma once

#include "graph/model/ControlState.h"

namespace qv::scale {

/// Sets `Zoomed`: false when the current graph's selected x and y axes show exactly their full range.
void SetScrollBarsVisibility(graph::ControlState& state);

} // namespace qv::scale
