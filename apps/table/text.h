// Texts of fields and of the command line: blanks around them, numbers in them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qv::table {

/// The text without blanks at its ends.
std::string_view trimmed(std::string_view text);

/// The finite number that the whole text is; nothing for any other.
std::optional<double> finite_number(std::string_view text);

/// The shortest text that reads back as the number.
std::string shortest(double value);

} // namespace qv::table
