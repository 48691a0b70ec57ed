// Axes of dates and times: ticks on whole years, months, days, hours, minutes or seconds.
#pragma once

#include "qvplot/axis_plan.h"

namespace qv::plot {

/// Plans an axis for days since 1899-12-30 in the years 100 to 9999. The range is rounded outwards to whole
/// units, unless to nothing. Ticks follow the calendar, leap years included, and are a second apart at least.
AxisPlan plan_date_axis(Extent data, LabelRoom const& room, RoundTo rounding = RoundTo::Tick);

} // namespace qv::plot
