// Ticks and labels of time axes: on the calendar's boundaries, as close as their labels have room for.
#pragma once

#include "scale/calendar.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qv::scale {

/// How a label holds its two levels, hours and their day for example: in two lines, of which that of the
/// hours is nearer to the axis, or in one.
enum class TimeLabelLines { CoarseBelow, CoarseAbove, One };

/// A time axis as it is shown. Lengths are in any unit.
struct TimeScale {
    double low = 0; // seconds since 1970
    double high = 0;
    TimeZone zone;
    std::string_view pattern; // of the labels; empty: as the ticks need
    TimeLabelLines lines = TimeLabelLines::CoarseBelow;
    double length = 0;
    double room_before = 0; // for labels that reach beyond the low end, and the high one
    double room_after = 0;
    double gap = 0;       // between labels, at least
    double minor_gap = 0; // between ticks, at least; minor ones that are closer are left out
    std::function<double(std::string_view)> size_along; // of a line of text
};

struct TimeTick {
    double value = 0;
    bool is_major = true;
    std::string label; // of a major tick; empty where it has no room
};

/// The ticks of an axis, ascending, majors and minors together: 1, 2 or 5 times a power of ten of a second up
/// to a second; 1, 2, 5, 10, 15, 30 seconds and minutes; 1, 2, 3, 6, 12 hours; 1 and 2 days; 1 and 2 weeks;
/// 1, 2, 3, 6 months; 1, 2, 5, 10, ... years. The step depends on span and length alone, so ticks stay put
/// while panning. It is the finest whose labels keep their gap, with 12 labels at most; if it has fewer than
/// two, a finer one some of whose labels are left out. No label reaches beyond the room.
///
/// Nothing where the range is empty, reaches beyond the years -9999 to 9999 or is shorter than two
/// microseconds.
std::optional<std::vector<TimeTick>> time_ticks(TimeScale const& scale);

/// The same where it is not time that passes evenly: the moments stand at 0, 1, 2, ..., none before the one
/// that comes earlier, and `low` and `high` are such numbers, as the values of the ticks are. A step is
/// labelled at its first moment. Nothing where a moment shown lies beyond the calendar.
std::optional<std::vector<TimeTick>> category_time_ticks(TimeScale const& scale,
                                                         std::span<double const> times);

struct TimeRange {
    double low = 0;
    double high = 0;
};
/// An automatic range: the data's, rounded outwards to units of the calendar that are a twentieth of it at
/// most; twelve hours to either side of a single moment. Nothing beyond the years -9999 to 9999.
std::optional<TimeRange> automatic_time_range(double low, double high, TimeZone const& zone);

} // namespace qv::scale
