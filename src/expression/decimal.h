// Numbers read from text, always with "." as decimal point and E or D as exponent letter.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace qv::expression {

/// Where an unsigned literal that starts at `offset` ends: digits, ".", digits, exponent. The exponent's
/// digits may be missing.
std::size_t literal_end(std::string_view text, std::size_t offset);

/// The value of a literal with an optional sign; nothing when it is too large for a double.
/// An exponent without digits and a missing mantissa count as 0.
std::optional<double> literal_value(std::string_view literal);

/// The number a text begins with once its blanks are taken out; 0 when it begins with none, nothing when
/// the number is too large.
std::optional<double> leading_value(std::string_view text);

/// The value of a text that as a whole reads as a number (blanks around it are allowed), else nothing.
std::optional<double> numeric_text(std::string_view text);

} // namespace qv::expression
