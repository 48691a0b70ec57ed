// Texts of cells and of the command line: blanks around them, numbers in them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qv::table {

inline bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// The text without blanks at its ends.
std::string_view trimmed(std::string_view text);

/// The finite number that the whole text is; nothing for any other.
std::optional<double> finite_number(std::string_view text);

/// The shortest text that reads back as the number.
std::string shortest(double value);

/// Letters of ASCII as small ones.
std::string lowered(std::string_view text);
/// Whether the texts are the same but for the case of letters of ASCII.
bool equal_letters(std::string_view first, std::string_view second);

/// As it can stand in a message of one line, in quotes: not too long, without control characters.
std::string one_line(std::string_view text);
/// A list of names for a message: "a", "b", "c".
std::string quoted_list(std::vector<std::string> const& names);
/// "1 row", "2 rows".
std::string counted(std::size_t count, std::string const& things);

} // namespace qv::table
