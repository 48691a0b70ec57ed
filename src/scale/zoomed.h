// Whether a graph shows less than its full range.
#pragma once

#include "document/ControlState.h"

namespace qv::scale {

/// Sets `Zoomed`: false when the current graph's selected x and y axes show exactly their full range.
void SetScrollBarsVisibility(document::ControlState& state);

} // namespace qv::scale
