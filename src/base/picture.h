// Picture: a format pattern with its quotes resolved, and the two ways to show a value through it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qv {

/// One character of a pattern; a literal one was quoted and stands for itself.
struct Symbol {
    char character = 0;
    bool literal = false;

    bool is(char wanted) const { return !literal && character == wanted; }
    bool is_placeholder() const { return is('0') || is('#'); }
};

using Picture = std::vector<Symbol>;

/// A finite value through a number picture, which has at least one placeholder.
std::string number_picture_text(double value, Picture const& picture);

/// A value in days through a time picture.
std::string time_picture_text(double days, Picture const& picture);
/// Whether a symbol begins a date or time code.
bool is_time_code(Symbol symbol);
/// Whether days since 1899-12-30 fall in the years 100 to 9999.
bool is_calendar_value(double days);

} // namespace qv
