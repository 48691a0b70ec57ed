// Axis ranges: rounded automatic ranges and the full range that goes with a range mode.
#pragma once

#include "graph/model/ControlState.h"

namespace qv::scale {

/// A range and its divisions, as AutoScale takes and rewrites them.
struct AxisRange {
    double low = 0;
    double high = 0;
    std::int16_t major_divs = 0;
    std::int16_t minor_divs = 0;
    std::int16_t decimal_places = 0; // passed along, unchanged
    bool is_log = false;
};

/// Rounds a range outwards to round numbers and chooses its divisions. A failure is reported and leaves
/// what was already rewritten.
void AutoScale(graph::ControlState& state, AxisRange& range);

/// Sets the full range of the current graph's selected axis from its range mode.
void SetAxisScale(graph::ControlState& state);

} // namespace qv::scale
