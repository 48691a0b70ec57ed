// What moving a scroll bar does: the displayed ranges move, their lengths stay.
#pragma once

#include "document/ControlState.h"

namespace qv::interact {

/// The bar's value has changed: every x (y) axis of the graph that the bars show moves there. Nothing happens
/// while `NoRedraw` is set, because then the control itself has set the bars.
void HScroll1_Change(document::ControlState& state);
void VScroll1_Change(document::ControlState& state);

/// The thumb is being dragged: the same, unless the page is just being drawn.
void HScroll1_Scroll(document::ControlState& state);
void VScroll1_Scroll(document::ControlState& state);

} // namespace qv::interact
