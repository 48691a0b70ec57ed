#include "expression/decimal.h"

#include "base/text.h"
#include "expression/characters.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace qv::expression {
namespace {

constexpr std::string_view exponent_letters = "EeDd";

bool is_sign(char c) {
    return c == '+' || c == '-';
}

std::size_t skip_digits(std::string_view text, std::size_t offset) {
    while (offset < text.size() && is_digit(text[offset])) ++offset;
    return offset;
}

std::size_t skip_sign(std::string_view text, std::size_t offset) {
    return offset < text.size() && is_sign(text[offset]) ? offset + 1 : offset;
}

std::size_t skip_exponent(std::string_view text, std::size_t offset) {
    if (offset >= text.size() || exponent_letters.find(text[offset]) == std::string_view::npos) return offset;
    return skip_digits(text, skip_sign(text, offset + 1));
}

// Large enough to outweigh any mantissa that fits into memory, small enough to add up without overflow.
constexpr long long exponent_limit = 1000000000000000;

long long exponent_number(std::string_view text) {
    bool const negative = text.starts_with('-');
    long long value = 0;
    for (char const c : text.substr(skip_sign(text, 0)))
        value = std::min(exponent_limit, value * 10 + (c - '0'));
    return negative ? -value : value;
}

// Power of ten of the first significant digit, 0 for 1 to 9.
long long decimal_order(std::string_view mantissa, long long exponent) {
    auto const point = std::min(mantissa.find('.'), mantissa.size());
    auto const first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) return -exponent_limit;
    auto const distance = static_cast<long long>(point) - static_cast<long long>(first);
    return exponent + (distance > 0 ? distance - 1 : distance);
}

struct Literal {
    std::string_view mantissa, exponent;
    bool negative = false;
};

Literal parts_of(std::string_view text) {
    Literal parts;
    parts.negative = text.starts_with('-');
    text.remove_prefix(skip_sign(text, 0));
    auto const mark = std::min(text.find_first_of(exponent_letters), text.size());
    parts.mantissa = text.substr(0, mark);
    if (mark < text.size()) parts.exponent = text.substr(mark + 1);
    return parts;
}

bool has_digit(std::string_view text) {
    return std::ranges::any_of(text, is_digit);
}

// Magnitude of a literal with an exponent, or infinity.
double scaled_value(Literal const& parts) {
    long long const exponent = exponent_number(parts.exponent);
    long long const order = decimal_order(parts.mantissa, exponent);
    if (order > 400) return HUGE_VAL;
    if (order < -400) return 0;
    std::string text(parts.mantissa);
    text += 'e';
    text += std::to_string(exponent);
    double value = order > 0 ? HUGE_VAL : 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

double plain_value(std::string_view mantissa) {
    double value = 0;
    auto const result = std::from_chars(mantissa.data(), mantissa.data() + mantissa.size(), value);
    if (result.ec == std::errc::result_out_of_range && decimal_order(mantissa, 0) > 0) return HUGE_VAL;
    return value;
}

} // namespace

std::size_t literal_end(std::string_view text, std::size_t offset) {
    offset = skip_digits(text, offset);
    if (offset < text.size() && text[offset] == '.') offset = skip_digits(text, offset + 1);
    return skip_exponent(text, offset);
}

std::optional<double> literal_value(std::string_view literal) {
    const Literal parts = parts_of(literal);
    if (!has_digit(parts.mantissa)) return 0.0;
    double const magnitude = has_digit(parts.exponent) ? scaled_value(parts) : plain_value(parts.mantissa);
    if (!std::isfinite(magnitude)) return std::nullopt;
    return parts.negative ? -magnitude : magnitude;
}

std::optional<double> leading_value(std::string_view text) {
    const std::string dense = replace_all(text, " ", "");
    auto const end = literal_end(dense, skip_sign(dense, 0));
    return literal_value(std::string_view(dense).substr(0, end));
}

std::optional<double> numeric_text(std::string_view text) {
    text = trim(text);
    if (literal_end(text, skip_sign(text, 0)) != text.size()) return std::nullopt;
    const Literal parts = parts_of(text);
    bool const bare_exponent = text.size() > 0 && !is_digit(text.back()) && text.back() != '.';
    if (!has_digit(parts.mantissa) || bare_exponent) return std::nullopt;
    return literal_value(text);
}

} // namespace qv::expression
