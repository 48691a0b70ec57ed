// The page in words, for those who hear it.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/Outline.h"

#include <optional>
#include <string>

namespace qv::interact {

/// A graph with its axes and data sets; none where there is no graph of this number.
std::optional<GraphOutline> outline(document::ControlState const& state, int graph);

/// The point that a person has gone to by keys, as it was read; empty without one.
std::string point_read(document::ControlState& state);

} // namespace qv::interact
