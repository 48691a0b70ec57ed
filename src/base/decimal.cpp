#include "base/decimal.h"

#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace qv {

char Decimal::digit_at(std::ptrdiff_t power) const {
    const std::ptrdiff_t index = exponent - power;
    return index >= 0 && index < std::ssize(digits) ? digits[static_cast<std::size_t>(index)] : '0';
}

Decimal shortest_decimal(double magnitude) {
    Decimal result;
    if (magnitude == 0) return result;
    std::array<char, 32> buffer;
    auto const end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, std::chars_format::scientific)
            .ptr;
    const std::string_view text(buffer.data(), end);
    auto const mark = text.find('e');
    result.digits = text[0];
    if (mark > 1) result.digits += text.substr(2, mark - 2);
    auto const power = text.substr(text[mark + 1] == '+' ? mark + 2 : mark + 1);
    std::from_chars(power.data(), power.data() + power.size(), result.exponent);
    return result;
}

Decimal rounded(Decimal number, std::ptrdiff_t last_power) {
    const std::ptrdiff_t kept = number.exponent - last_power + 1;
    if (number.is_zero() || kept >= std::ssize(number.digits)) return number;
    if (kept < 0) return {};
    bool const upwards = number.digits[static_cast<std::size_t>(kept)] >= '5';
    number.digits.resize(static_cast<std::size_t>(kept));
    if (!upwards) return number;
    while (!number.digits.empty() && number.digits.back() == '9') number.digits.pop_back();
    if (!number.digits.empty()) {
        ++number.digits.back();
        return number;
    }
    return {.digits = "1", .exponent = number.exponent + 1};
}

} // namespace qv
