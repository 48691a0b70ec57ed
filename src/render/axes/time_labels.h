// The ticks of an axis of time, placed on the page.
#pragma once

#include "render/axes/tick_labels.h"

#include <optional>
#include <vector>

namespace qv::render {

/// Whether an axis chooses ticks on the calendar: one of time without ticks or labels given by the host.
bool has_time_ticks(document::Axis const& axis);

/// Its ticks with their labels, measured in the surface's current font; nothing where what it shows is no
/// stretch of the calendar. `along_text` is how far one step along a label's text leads away from the plot
/// area.
std::optional<std::vector<PlacedTick>> place_time_ticks(document::Graph const& graph, DrawSurface& surface,
                                                        AxisFrame const& frame, document::Axis const& axis,
                                                        double along_text);

} // namespace qv::render
