#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace qv {
namespace {

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Significant digits and the decimal exponent of the first one, from a text such as "1.25e+02".
struct Decimal {
    std::string digits;
    int exponent = 0;
};

Decimal decimal_of(double magnitude) {
    std::array<char, 40> buffer;
    auto const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                   std::chars_format::scientific, 14)
                         .ptr;
    const std::string_view text(buffer.data(), end);
    auto const mark = text.find('e');
    Decimal result;
    for (char const c : text.substr(0, mark))
        if (is_digit(c)) result.digits += c;
    while (result.digits.size() > 1 && result.digits.back() == '0') result.digits.pop_back();
    result.exponent = std::atoi(std::string(text.substr(mark + 1)).c_str());
    return result;
}

std::string fixed_text(Decimal const& value) {
    int const count = static_cast<int>(value.digits.size());
    if (value.exponent < 0)
        return "0." + std::string(static_cast<std::size_t>(-value.exponent - 1), '0') + value.digits;
    if (count <= value.exponent + 1)
        return value.digits + std::string(static_cast<std::size_t>(value.exponent + 1 - count), '0');
    auto const whole = static_cast<std::size_t>(value.exponent) + 1;
    return value.digits.substr(0, whole) + "." + value.digits.substr(whole);
}

std::string exponent_text(Decimal const& value) {
    std::string text = value.digits.substr(0, 1);
    if (value.digits.size() > 1) text += "." + value.digits.substr(1);
    const std::string power = std::to_string(std::abs(value.exponent));
    return text + (value.exponent < 0 ? "E-" : "E+") + (power.size() < 2 ? "0" : "") + power;
}

} // namespace

std::string_view trim(std::string_view text) {
    auto const first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string to_upper(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), upper);
    return result;
}

bool equals_ignoring_case(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, upper, upper);
}

bool starts_with_ignoring_case(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equals_ignoring_case(text.substr(0, prefix.size()), prefix);
}

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> parts;
    for (std::size_t start = 0;;) {
        auto const end = text.find(separator, start);
        parts.push_back(text.substr(start, end - start));
        if (end == std::string_view::npos) return parts;
        start = end + separator.size();
    }
}

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines = split(text, "\n");
    for (std::size_t i = 0; i + 1 < lines.size(); ++i)
        if (lines[i].ends_with('\r')) lines[i].remove_suffix(1);
    return lines;
}

std::string replace_all(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    for (bool first = true; auto const part : split(text, from)) {
        if (!first) result += to;
        result += part;
        first = false;
    }
    return result;
}

double leading_number(std::string_view text) {
    std::size_t end = 0;
    if (end < text.size() && (text[end] == '+' || text[end] == '-')) ++end;
    bool point_seen = false;
    while (end < text.size() && (is_digit(text[end]) || (text[end] == '.' && !point_seen)))
        point_seen = text[end++] == '.' || point_seen;
    std::string_view number = text.substr(0, end);
    if (number.starts_with('+')) number.remove_prefix(1);
    double value = 0;
    auto const result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) return number.starts_with('-') ? -HUGE_VAL : HUGE_VAL;
    return value;
}

std::string number_text(double value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
    if (value == 0) return "0";
    const Decimal decimal = decimal_of(std::abs(value));
    int const decimals = static_cast<int>(decimal.digits.size()) - 1 - decimal.exponent;
    bool const fixed = decimals <= 15 && decimal.exponent < 15;
    return (value < 0 ? "-" : "") + (fixed ? fixed_text(decimal) : exponent_text(decimal));
}

} // namespace qv
