// The calendar of a time axis: values and moments, steps of calendar units and the places where they begin.
#pragma once

#include "scale/time_zone.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qv::scale {

/// The moment of a value in seconds since 1970, to the microsecond; none outside the years -9999 to 9999.
std::optional<Instant> instant_of(double seconds);
double seconds_of(Instant time);

enum class CalendarUnit { Microsecond, Day, Week, Month };

/// Steps of so many units. Those within a day are counted from midnight and divide it; those of two days
/// begin on the 1st, 3rd, 5th, ..., the last one of a month may have a third day; weeks on Mondays; months in
/// January, years in those that the count divides.
struct CalendarStep {
    CalendarUnit unit = CalendarUnit::Day;
    std::int64_t count = 1;

    /// Number of the step that holds a time, and where a step begins.
    std::int64_t index(LocalTime time) const;
    LocalTime begin(std::int64_t index) const;
    /// Its usual length in seconds.
    double seconds() const;

    bool operator==(CalendarStep const&) const = default;
};

/// The moments from `low` to `high` at which steps begin in a zone, ascending. A day whose midnight is
/// skipped begins when clocks show it first. Where clocks are put back, the hours shown twice have a place
/// each time, unless that is nearer to the one before than a step.
std::vector<Instant> step_places(CalendarStep step, Instant low, Instant high, TimeZone const& zone);

/// The last beginning of a step up to a moment, and the first from it on.
Instant round_down(CalendarStep step, Instant time, TimeZone const& zone);
Instant round_up(CalendarStep step, Instant time, TimeZone const& zone);

} // namespace qv::scale
