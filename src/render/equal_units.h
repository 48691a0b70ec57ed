// Units equally long both ways: the axis with room to spare shows more than it was to.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// An axis gets the ranges back that it had before it was widened; what was changed since stays.
void take_back_evening(document::Axis& axis);

/// Widens, about their middle, the ranges of the graph's first x or first y axis so that a unit of both is
/// equally long on the page. Axes that are logarithmic, labelled with texts or without a range stay as they
/// are.
void make_units_even(document::ControlState& state, document::Graph& graph);

} // namespace qv::render
