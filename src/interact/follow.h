// What stands beside the page follows it and the pointer over it: scroll bars, pointer values, read-out and
// the name of the point under the pointer.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/geometry.h"

namespace qv::interact {

/// The page shows another picture.
void follow_page(document::ControlState& state);

/// The pointer is at a place of the page.
void point_at(document::ControlState& state, Point place);

/// The pointer is nowhere on the page: cross-hair, its values in the read-out and the name of the point under
/// it go. `PointerX` and `PointerY` stay.
void leave_page(document::ControlState& state);

/// `PointerX` and `PointerY` become the values under the pointer, on the page as it is shown. They stay while
/// the pointer moves with a button held, and where there is no graph.
void take_pointer_values(document::ControlState& state);

/// Other axes of a graph are selected: `Zoomed` and the scroll bars become theirs.
void follow_selection(document::ControlState& state);

} // namespace qv::interact
