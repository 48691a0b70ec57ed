// Going from point to point by key, and reading each.
#pragma once

#include "document/ControlState.h"

namespace qv::interact {

/// Moves the reading on to the next (forward) or the previous point of the current graph that can be drawn,
/// and shows it in the read-out. From nothing it starts at the first point, or the last. False at the end.
bool step_point(document::ControlState& state, bool forward);

/// Moves the reading to the next or previous data set with points, to its point nearest in x.
bool step_data_set(document::ControlState& state, bool forward);

/// The number of the point that lies nearest to an x value, the first of several; 0 where none does.
std::size_t nearest_in_x(document::PointStore const& points, double x);

/// Ends the reading and takes its mark away; False when nothing was read.
bool stop_reading(document::ControlState& state);

} // namespace qv::interact
