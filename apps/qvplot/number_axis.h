// Axes of numbers, linear and logarithmic.
#pragma once

#include "qvplot/axis_plan.h"

namespace qv::plot {

/// Plans a linear axis with ticks 1, 2 or 5 times a power of ten apart. The data take at least half of the
/// range, however little room there is for labels.
AxisPlan plan_number_axis(Extent data, LabelRoom const& room, RoundTo rounding);

/// Plans a logarithmic axis for positive values: ticks at powers of ten, with their double and fivefold
/// where there are few, or evenly spaced ones where the values span less than that. The range is rounded
/// outwards to such a value, unless to nothing.
AxisPlan plan_log_axis(Extent data, LabelRoom const& room, RoundTo rounding = RoundTo::Tick);

} // namespace qv::plot
