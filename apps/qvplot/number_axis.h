// Axes of numbers, linear and logarithmic.
#pragma once

#include "qvplot/axis_plan.h"

namespace qv::plot {

enum class RoundTo { Tick, FifthOfTick };

/// Plans a linear axis with ticks 1, 2 or 5 times a power of ten apart; the range is rounded outwards.
AxisPlan plan_number_axis(Extent data, LabelRoom const& room, RoundTo rounding);

/// Plans a logarithmic axis for positive values: ticks at powers of ten, with their double and fivefold
/// where there are few, or evenly spaced ones where the values span less than that. The range is rounded
/// outwards to such a value.
AxisPlan plan_log_axis(Extent data, LabelRoom const& room);

} // namespace qv::plot
