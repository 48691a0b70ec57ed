// Dates and times as people write them, as moments.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qv::table {

/// Which number of 05/01/24 is what. A year of four digits at the front, and names of months, leave no
/// question; dots have the day first.
enum class DateOrder { DayFirst, MonthFirst, YearFirst };

/// A clock's zone: for times that say none.
class TimeZone;
/// The zone of that name of the system's zone data, "UTC" or "local"; a TableError for another.
std::shared_ptr<TimeZone const> time_zone(std::string const& name);

struct DateForm {
    DateOrder order = DateOrder::DayFirst;
    std::shared_ptr<TimeZone const> zone = {}; // none: UTC
};

/// What was read from a text.
struct Moment {
    double seconds = 0; // since 1970 in UTC; of a time alone, since midnight
    bool is_time_alone = false;
};

/// Reads ISO 8601 (2024-05-01, 2024-05, 2024-122, 2024-W18-3, 20240501T1230, any offset or zone), 2024/05/01,
/// 01.05.2024, 05/01/24, 1 May 2024, May 1, 2024 (weekdays before them are passed over), each with a time
/// behind "T", a blank or a comma (12:30, 12:30:05.25, 1:30 PM), and such times alone. Offsets are "Z", UTC,
/// GMT, +02:00, +0200, +02, or a zone's name. Nothing for any other text. Years 0000 to 9999.
std::optional<Moment> read_moment(std::string_view text, DateForm const& form = {});

/// The same by a pattern of one's own: %Y %y %m %d %j %H %I %M %S %f %p %b %a %z %s %%; a blank in it stands
/// for any number of blanks.
std::optional<Moment> read_moment_by(std::string_view text, std::string_view pattern, DateForm const& form);
/// What is wrong with a pattern; empty for nothing.
std::string fault_of_pattern(std::string_view pattern);

/// Seconds since 1970 of a date that leaves no question, for the command line; nothing for any other text.
std::optional<double> utc_seconds(std::string_view text);

/// The year with the part of it that has passed, such as 1958.5, of seconds since 1970.
double decimal_year(double seconds);

/// The units in which computers count from 1970.
enum class UnixUnit { Seconds, Milliseconds, Microseconds, Nanoseconds };
double seconds_in(UnixUnit unit);
/// The unit in which a number of our time is of such size: "now" is 1.7e9 in seconds, 1.7e12 in milliseconds.
UnixUnit unix_unit_of(double number);
std::optional<UnixUnit> unix_unit_named(std::string_view name);

} // namespace qv::table
