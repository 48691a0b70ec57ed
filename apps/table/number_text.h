// Numbers as they stand in cells, and the marks for those that are missing.
#pragma once

#include <limits>
#include <string_view>

namespace qv::table {

/// How numbers are written.
struct NumberForm {
    char decimal = '.';
    char thousands = '\0'; // none
    bool operator==(NumberForm const&) const = default;
};

enum class CellKind { Number, Missing, Infinite, Other };

struct NumberCell {
    CellKind kind = CellKind::Missing;
    double value = std::numeric_limits<double>::quiet_NaN(); // of a number
};

/// What a cell says as a number: "1.5", "+2e3", "12 %" (12), "1,5" by a decimal comma. Missing are nothing
/// and NA, N/A, null, none, NaN, "-", "--", ".", "?"; infinite inf, Infinity and what is beyond a double.
NumberCell read_number(std::string_view text, NumberForm const& form = {});

/// Whether a cell's number is grouped by a mark, such as 1,234,567 by ','.
bool is_grouped_by(std::string_view text, char mark);

} // namespace qv::table
