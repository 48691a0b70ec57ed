// Calendar dates as numbers.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace qv::table {

/// The day from which day numbers count.
constexpr std::chrono::sys_days day_zero{std::chrono::year{1899} / std::chrono::December / 30};

/// Days since 1899-12-30 of an ISO date ("2010-01-31", or "2010-01" for the month's first day), with a time
/// after "T" or a blank if there is one ("2010-01-31T12:30:05"); nothing for any other text. The years 0000
/// to 9999 are read.
std::optional<double> iso_date(std::string_view text);

/// The same moment in seconds since 1970 in UTC, to the microsecond.
std::optional<double> utc_seconds(std::string_view text);

/// The year with the part of it that has passed, such as 1958.5, of a day number of `iso_date`.
double decimal_year(double days);

} // namespace qv::table
