// Parameters that take any number and hold it as their own type; one that does not fit is fault 6 at the
// call.
#pragma once

#include "qvgraph/export.h"
#include "qvgraph/fault.h"
#include "qvgraph/geometry.h"

#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

namespace qv {

template <class T>
concept Number = std::is_arithmetic_v<T>;

/// The same as `round_half_even`, for any number.
QV_EXPORT double round_half_even_of_any(double value);

/// The nearest whole number, halves to even, independent of the floating-point environment.
inline double round_half_even(double value) {
    // From 2^52 on doubles are whole, so adding and taking away 1.5 * 2^52 leaves the sum's own rounding.
    constexpr double whole_only = 0x1.8p52;
    double const magnitude = value < 0 ? -value : value;
    return magnitude < 0x1p51 ? (value + whole_only) - whole_only : round_half_even_of_any(value);
}

/// `value` as a `To`. Fractions round halves to even; a value outside the range of an integer type, a
/// not-a-number included, is fault 6 (overflow), as is a finite value beyond a 32-bit float.
template <Number To, Number From>
constexpr To checked(From value) {
    if constexpr (std::is_same_v<To, From>) {
        return value;
    } else if constexpr (std::is_same_v<To, bool>) {
        return value != 0;
    } else if constexpr (std::integral<To> && std::floating_point<From>) {
        double const whole = round_half_even(static_cast<double>(value));
        // The upper bound is exclusive because 2^63 - 1 has no exact double.
        double const low = static_cast<double>(std::numeric_limits<To>::min());
        double const high =
            2 * static_cast<double>(std::uint64_t{1} << (std::numeric_limits<To>::digits - 1));
        if (!(whole >= low && whole < high)) raise_fault(FaultNumber::Overflow);
        return static_cast<To>(whole);
    } else if constexpr (std::integral<To>) {
        // in_range takes no booleans and characters, so every value is widened first.
        using Wide = std::conditional_t<std::is_signed_v<From>, long long, unsigned long long>;
        if (!std::in_range<To>(static_cast<Wide>(value))) raise_fault(FaultNumber::Overflow);
        return static_cast<To>(value);
    } else if constexpr (std::is_same_v<To, float> && std::floating_point<From>) {
        From const size = value < 0 ? -value : value;
        if (size > std::numeric_limits<float>::max() && size <= std::numeric_limits<From>::max())
            raise_fault(FaultNumber::Overflow);
        return static_cast<float>(value);
    } else {
        return static_cast<To>(value);
    }
}

/// A parameter that takes any number and holds it as a `T`; one that does not fit is fault 6 at the call.
template <Number T>
class Checked {
public:
    template <Number From>
    /// Fault 6 where it does not fit.
    constexpr Checked(From value) : value_(checked<T>(value)) {}
    constexpr operator T() const { return value_; } ///< the number as a `T`

private:
    T value_;
};

/// A colour as a host may write it: 0x00BBGGRR, or 0x80000000 + n for system colour n, signed or unsigned.
/// Any other number beyond 32 bits is fault 6.
class ColorValue {
public:
    template <Number From>
    /// Fault 6 beyond 32 bits.
    constexpr ColorValue(From value) : value_(from_wide(checked<std::int64_t>(value))) {}
    constexpr operator Color() const { return value_; } ///< the colour

private:
    static constexpr Color from_wide(std::int64_t value) {
        if (std::in_range<std::uint32_t>(value)) return static_cast<Color>(static_cast<std::uint32_t>(value));
        return checked<Color>(value);
    }
    Color value_;
};

} // namespace qv
