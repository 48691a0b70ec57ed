// Small numeric functions that scaling, drawing and interaction share.
#pragma once

#include "document/ControlState.h"

#include <cstdint>

namespace qv::scale {

/// The smaller (larger) of two numbers; b when neither is.
template <class Number>
constexpr Number Min(Number a, Number b) {
    return a < b ? a : b;
}
template <class Number>
constexpr Number Max(Number a, Number b) {
    return a > b ? a : b;
}
/// `value` limited to low..high; `low` wins when the limits cross.
template <class Number>
constexpr Number MinMax(Number value, Number low, Number high) {
    return Max(Min(value, high), low);
}
constexpr std::int16_t MaxInt(std::int16_t a, std::int16_t b) {
    return a >= b ? a : b;
}

/// The fraction of the magnitude, 0 <= result < 1; 0 for an infinite value.
float Frac(float value);

/// Logarithm to base 10; 0 for a value that has none.
double Log10(double value);

/// From a value to its axis's own scale (ln on a logarithmic axis) and back. A value without a logarithm is
/// fault 5, a power beyond the largest number fault 6.
double xxLog(double value, bool is_log);
double xxExp(double value, bool is_log);

/// The same as procedures of a control: a failure is reported under their own name and yields 0.
double xxLog(document::ControlState& state, double value, bool is_log);
double xxExp(document::ControlState& state, double value, bool is_log);

} // namespace qv::scale
