// What moving a scroll bar does: the displayed ranges move, their lengths stay.
#pragma once

#include "graph/model/ControlState.h"

namespace qv::interact {

/// The bar's value has changed: every x (y) axis of the graph that the bars show moves there. Nothing happens
/// while `NoRedraw` is set, because then the control itself has set the bars.
void HScroll1_Change(graph::ControlState& state);
void VScroll1_Change(graph::ControlState& state);

/// The thumb is being dragged: the same, unless the page is just being drawn.
void HScroll1_Scroll(graph::ControlState& state);
void VScroll1_Scroll(graph::ControlState& state);

} // namespace qv::interact
