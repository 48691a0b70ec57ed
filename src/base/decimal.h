// Decimal: the digits of a number as a person would write it, and rounding of those digits.
#pragma once

#include <cstddef>
#include <string>

namespace qv {

/// A magnitude d1.d2d3... times 10^exponent, without leading zeros; zero has no digits.
struct Decimal {
    std::string digits;
    std::ptrdiff_t exponent = 0;

    bool is_zero() const { return digits.empty(); }
    /// The digit that stands for 10^power: power 0 is the units digit, -1 the first decimal.
    char digit_at(std::ptrdiff_t power) const;
    /// Count of digits before the decimal point; 0 below one.
    std::ptrdiff_t whole_count() const { return is_zero() || exponent < 0 ? 0 : exponent + 1; }
};

/// The shortest digits that read back as `magnitude`, which is finite and not negative.
Decimal shortest_decimal(double magnitude);

/// The number rounded to a multiple of 10^last_power, halves away from zero. Rounding what a person reads,
/// not the binary value, makes 2.675 at two decimals 2.68.
Decimal rounded(Decimal number, std::ptrdiff_t last_power);

} // namespace qv
