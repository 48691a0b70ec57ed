// Checked numeric conversions and checked indexing: what would be undefined or silent in C++ is a fault here.
#pragma once

#include "qvgraph/fault.h"

#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

namespace qv {

template <class T>
concept Number = std::is_arithmetic_v<T>;

/// The nearest whole number, halves to even, independent of the floating-point environment.
inline double round_half_even(double value) {
    // From 2^52 on doubles are whole, so adding and taking away 1.5 * 2^52 leaves the sum's own rounding.
    constexpr double whole_only = 0x1.8p52;
    return std::abs(value) < 0x1p51 ? (value + whole_only) - whole_only : std::nearbyint(value);
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
        double const high = std::ldexp(1.0, std::numeric_limits<To>::digits);
        if (!(whole >= low && whole < high)) raise_fault(FaultNumber::Overflow);
        return static_cast<To>(whole);
    } else if constexpr (std::integral<To>) {
        // in_range takes no booleans and characters, so every value is widened first.
        using Wide = std::conditional_t<std::is_signed_v<From>, long long, unsigned long long>;
        if (!std::in_range<To>(static_cast<Wide>(value))) raise_fault(FaultNumber::Overflow);
        return static_cast<To>(value);
    } else if constexpr (std::is_same_v<To, float> && std::floating_point<From>) {
        if (std::isfinite(value) && std::abs(value) > std::numeric_limits<float>::max())
            raise_fault(FaultNumber::Overflow);
        return static_cast<float>(value);
    } else {
        return static_cast<To>(value);
    }
}

template <Number From>
constexpr std::uint8_t to_u8(From value) {
    return checked<std::uint8_t>(value);
}
template <Number From>
constexpr std::int16_t to_i16(From value) {
    return checked<std::int16_t>(value);
}
template <Number From>
constexpr std::int32_t to_i32(From value) {
    return checked<std::int32_t>(value);
}
template <Number From>
constexpr float to_f32(From value) {
    return checked<float>(value);
}

/// Quotient of two numbers; a zero divisor is fault 11.
inline double divide(double dividend, double divisor) {
    if (divisor == 0) raise_fault(FaultNumber::DivisionByZero);
    return dividend / divisor;
}

/// Element `index` of a sequence; an index outside it is fault 9, whose text calls the elements `what`.
template <class Sequence, std::integral Index>
constexpr auto& at(Sequence& sequence, Index index, char const* what = "entry") {
    if (index < 0 || static_cast<std::size_t>(index) >= sequence.size())
        raise_subscript_fault(what, static_cast<std::int64_t>(index), 0,
                              static_cast<std::int64_t>(sequence.size()) - 1);
    return sequence[static_cast<std::size_t>(index)];
}

/// A parameter that takes any number and holds it as a `T`; one that does not fit is fault 6 at the call.
template <Number T>
class Checked {
public:
    template <Number From>
    constexpr Checked(From value) : value_(checked<T>(value)) {}
    constexpr operator T() const { return value_; }

private:
    T value_;
};

} // namespace qv
