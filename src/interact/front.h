// Bringing a graph to the front.
#pragma once

#include "document/ControlState.h"

namespace qv::interact {

/// Makes a graph the front and current one, redraws the page and raises NewGraphInFront. A graph already in
/// front, or an index outside the list, changes nothing.
void BringGraphToFront(document::ControlState& state, std::int16_t graph);

/// Draws the page with one graph changed: that graph alone where it is in front, else the whole page.
void refresh_graph(document::ControlState& state, std::int16_t graph);

} // namespace qv::interact
