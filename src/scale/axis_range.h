// Axis ranges: rounded automatic ranges and the full range that goes with a range mode.
#pragma once

#include "document/ControlState.h"

namespace qv::scale {

/// A range and its divisions, as AutoScale takes and rewrites them.
struct AxisRange {
    double low = 0;
    double high = 0;
    std::int16_t major_divs = 0;
    std::int16_t minor_divs = 0;
    std::int16_t decimal_places = 0; // passed along, unchanged
    bool is_log = false;
    bool keeps_log = false; // a narrow range does not become linear
};

/// Rounds a range outwards to round numbers and chooses its divisions: 1 to 10 major ones on a linear axis,
/// the decades touched on a logarithmic one. A logarithmic range that is not positive at its upper end, or
/// narrower than a factor of two unless it `keeps_log`, becomes linear. Data may overlap the rounded ends by
/// a thousandth of the range. Ends that are not finite, or a span or a rounded end beyond the largest number,
/// are fault 6 and leave the range in ascending order but not rounded.
void auto_scale(AxisRange& range);

/// The same as a procedure of a control: a failure is reported and leaves what was already rewritten.
void AutoScale(document::ControlState& state, AxisRange& range);

/// Sets an axis's full range from its range mode.
void SetAxisScale(document::Axis& axis);

} // namespace qv::scale
