// Small text operations: trimming, case-blind comparison, numbers read from and written as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qv {

std::string_view trim(std::string_view text);
std::string to_upper(std::string_view text);
bool equals_ignoring_case(std::string_view a, std::string_view b);
bool starts_with_ignoring_case(std::string_view text, std::string_view prefix);
std::vector<std::string_view> split(std::string_view text, std::string_view separator);
/// The lines of a text, which "\n" or "\r\n" separates; at least one.
std::vector<std::string_view> lines_of(std::string_view text);
/// A copy of `text` in which every `from` has become `to`, scanning once from the left.
std::string replace_all(std::string_view text, std::string_view from, std::string_view to);

/// The number a text begins with: optional sign, digits, at most one decimal point. 0 when it begins
/// otherwise; neither blanks nor an exponent are read. Huge digit strings give infinity.
double leading_number(std::string_view text);

/// Shortest text that reads back as `value`, at most 15 significant digits, "." as decimal point. Fixed
/// form while at most 15 decimals are needed and the magnitude is below 1E15, else exponent form
/// ("1E+20", "1E-16").
std::string number_text(double value);

} // namespace qv
