// The data point under the pointer.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/geometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace qv::interact {

struct FoundPoint {
    std::int16_t data_set = 0;
    std::size_t point = 0; // in order of arrival; of other kinds than points the item
    double distance = 0;   // from the place asked for, twips
};

/// The point of the graph's visible data sets nearest to a place, no further than `radius` (twips) and inside
/// the plot area. Where x rises, a block is searched by halves; blocks out of reach are passed over.
std::optional<FoundPoint> nearest_point(document::ControlState& state, std::int16_t graph, Point place,
                                        double radius);

/// What a point is called: its data set, its DataID, and x and y as in the read-out.
std::string point_name(document::ControlState& state, std::int16_t graph, FoundPoint const& found);

/// Names the point within 3 mm of the pointer in `PointTooltip`, which is empty where there is none.
void name_point_under(document::ControlState& state, Point place);
/// There is no pointer that could be near one.
void forget_point_name(document::ControlState& state);

} // namespace qv::interact
