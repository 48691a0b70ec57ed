// Gestures beyond the classic ones: wheel, middle button and keys. Each has its switch in `Gestures`; a true
// answer means that the input is used up.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/Input.h"

namespace qv::interact {

/// Zooms the graph under the pointer about it.
bool turn_wheel(document::ControlState& state, host::WheelInput const& wheel);

/// The same for two fingers.
bool pinch(document::ControlState& state, host::PinchInput const& pinch);

/// Arrows pan, + and - zoom about the middle, Home shows the full range, Tab goes to the next graph and on
/// after the last, Escape takes a drag back, Alt with the arrows undoes and redoes zooming, Ctrl with
/// the arrows reads points.
bool press_key(document::ControlState& state, host::KeyInput const& key);

/// The current graph when it may be zoomed, else nullptr.
document::Graph* zoomable_graph(document::ControlState& state);
/// Every axis of the current graph shows its full range; false when it may not be zoomed.
bool show_full_range(document::ControlState& state);

/// Remembers where a graph is when a button goes down, so that Escape can put it back.
void begin_cancellable(document::ControlState& state, document::Graph const& graph, std::uint8_t button,
                       std::uint8_t shift);
/// The middle button is held: the displayed ranges follow the mouse.
void drag_page(document::ControlState& state, Point mouse);
/// Ends the drag or rubber band in progress and puts back what was before it; false when there is none.
bool cancel_drag(document::ControlState& state);

} // namespace qv::interact
