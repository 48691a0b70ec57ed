// Dates and times as text: tick labels in two levels, the read-out, and the host's patterns.
#pragma once

#include "scale/calendar.h"

#include <optional>
#include <string>
#include <string_view>

namespace qv::scale {

/// The finest part of a label, and with it what stands beside or below: minutes of an hour over days, days
/// over months, months over years, fractions of a second over minutes.
enum class TimeDetail { Year, Month, Day, Minute, Second, Fraction };

struct TimeLabelStyle {
    TimeDetail detail = TimeDetail::Day;
    int decimals = 0; // of a second
};
/// For ticks on steps of this length.
TimeLabelStyle label_style(CalendarStep step);

/// The part of a label that changes from tick to tick.
std::string fine_text(LocalTime time, TimeLabelStyle style);
/// What it belongs to, as far as that is another than at the label `before`, all of it without one.
std::string coarse_text(LocalTime time, std::optional<LocalTime> before, TimeDetail detail);
/// Both in one line; a coarse text may be missing.
std::string joined_text(std::string_view fine, std::string_view coarse, TimeDetail detail);

/// A time through a date or time pattern of the host (base/picture_format.h). Seconds are cut off, not
/// rounded. None without a pattern and outside the years 100 to 9999.
std::optional<std::string> pattern_text(LocalTime time, std::string_view pattern);

/// A value of a time axis, read off a page on which neighbouring pixels are so many seconds apart: down to
/// the unit that tells them apart, to the microsecond at most. An hour that clocks show twice is told apart
/// by the zone's abbreviation. A step of 0 asks for seconds and what there is beyond. A pattern of the host
/// rules over that. None outside the calendar.
std::optional<std::string> time_at_pixel(double value, double pixel_step, TimeZone const& zone,
                                         std::string_view pattern);

} // namespace qv::scale
