// The point that a person reads by keys, and the frame around it on the visible page.
#pragma once

#include "graph/model/ControlState.h"

#include <cstddef>
#include <optional>

namespace qv::render {

struct PointBeingRead {
    graph::Graph& graph;
    graph::DataSet const& set;
    std::size_t index; // among the points that the data set has now
};

/// Nothing when no point is read, or when it has gone or is hidden since.
std::optional<PointBeingRead> point_being_read(graph::ControlState& state);

/// Inverts the pixels of a square frame of two millimetres around the point, cut at its plot area; the
/// picture is not shown yet.
void draw_read_mark(graph::ControlState& state);
/// Takes the frame away where it still is.
void erase_read_mark(graph::ControlState& state);

} // namespace qv::render
