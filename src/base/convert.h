// Checked numeric conversions and checked indexing: what would be undefined or silent in C++ is a fault here.
#pragma once

#include "qvgraph/checked.h"

#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>

namespace qv {

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

} // namespace qv
