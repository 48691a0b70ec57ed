#include "table/text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace qv::table {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    auto const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<double> finite_number(std::string_view text) {
    double value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    bool const whole = error == std::errc() && end == text.data() + text.size();
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::string shortest(double value) {
    std::array<char, 32> text{};
    auto const [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end};
}

} // namespace qv::table
