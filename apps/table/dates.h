// Calendar dates as numbers.
#pragma once

#include <optional>
#include <string_view>

namespace qv::table {

/// Days since 1899-12-30 of an ISO date ("2010-01-31"), with a time after "T" or a blank if there is one
/// ("2010-01-31T12:30:05"); nothing for any other text.
std::optional<double> iso_date(std::string_view text);

/// The year with the part of it that has passed, such as 1958.5, of a day number of `iso_date`.
double decimal_year(double days);

} // namespace qv::table
