// Dragging reference lines, bands, arrows and rectangles that the host lets a person move.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/Host.h"
#include "qvgraph/geometry.h"

#include <optional>

namespace qv::interact {

/// What of the marks of a graph a person would take hold of at a place: of several the one drawn last.
std::optional<document::MarkGrip> mark_under(document::ControlState& state, document::Graph& graph,
                                             Point place);

/// The pointer's shape over it: along the way that it goes.
host::PointerShape pointer_of(document::MarkGrip const& grip);

/// Takes hold of what lies under the mouse.
void begin_mark_drag(document::ControlState& state, document::Graph const& graph);
/// Moves what is held of `MouseGraph` by the way of the mouse since the press; only this graph is drawn anew.
/// MarkMoved tells the new values.
void drag_mark(document::ControlState& state, Point mouse);
/// Lets go; false when nothing has been moved.
bool end_mark_drag(document::ControlState& state);

/// Puts what is held back to where it was, without drawing; true where it had been moved.
bool put_mark_back(document::Graph& graph, document::MarkGrip const& grip);
void raise_mark_moved(document::ControlState& state, std::int16_t graph, std::int16_t data_set);

} // namespace qv::interact
