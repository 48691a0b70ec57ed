// Layout and state of the two scroll bars.
#pragma once

#include "document/ControlState.h"

namespace qv::interact {

/// Lays the bars and the read-out out along the control's inner edges, then sets their state.
void ResizeScrollBars(document::ControlState& state);

/// Shows the visible span of the current graph's selected axes within their full range; hides both bars
/// while nothing is zoomed. No axis moves: the host hears of the change while NoRedraw is set, during which
/// a bar's answer must be passed over. The thumb stands where moving it takes the axis from: on a reversed
/// axis small values are at the right or at the top.
void SetScrollBars(document::ControlState& state);

} // namespace qv::interact
