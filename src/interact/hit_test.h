// What lies under the mouse.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/geometry.h"
#include "render/plot_geometry.h"

#include <cstdint>

namespace qv::interact {

using render::holds;

/// Hit flags and the index of the front-most graph at a place on the page, -1 for none; sets the hit flags
/// and the mouse pointer. `button` is the one that is held, 0 for none; `reset` clears all flags first.
std::int16_t PointingAt(document::ControlState& state, std::uint8_t button, Point place, bool reset);

/// Whether a click of the right button alone, at a place, shows everything again: in the plot area of a graph
/// that may be zoomed. Nothing is changed by asking.
bool takes_right_click(document::ControlState& state, Point place);

/// Gives the page another mouse pointer and tells the host when it is one.
void set_pointer(document::ControlState& state, host::PointerShape shape);

/// The front-most graph at a place, -1 for none; nothing is changed by asking.
std::int16_t graph_under(document::ControlState& state, Point place);

/// Whether a graph's selected axes are there; ClearGraphData leaves it without.
bool has_selected_axes(document::Graph const& graph);

/// The graph at an index, nullptr outside the list.
document::Graph* graph_at(document::ControlState& state, std::int16_t index);

} // namespace qv::interact
