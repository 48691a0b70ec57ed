#include "qvgraph/fault.h"
#include "scale/decimal_step.h"
#include "scale/round_ticks.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::scale {
namespace {

constexpr double tolerance = 1e-9;
constexpr double largest_value = std::numeric_limits<double>::max();
constexpr double usual_steps = 5; // from one end of an axis to the other

RoundRange with_some_span(RoundRange data) {
    double const largest = std::max(std::abs(data.low), std::abs(data.high));
    if (data.high - data.low > largest * 1e-12) return data;
    double const pad = largest == 0 ? 1 : std::max(largest * 0.05, 1e-300);
    return {std::max(data.low - pad, -largest_value), std::min(data.high + pad, largest_value), data.is_log};
}

// Outwards to multiples of what minor ticks divide a usual step into.
RoundRange widened(RoundRange data) {
    double const span = data.high - data.low;
    if (!(span > 1e-300)) return data;
    const DecimalStep part = DecimalStep::at_least(span / usual_steps).minor();
    // Positions are told apart by the thousandth part of a span, which is no reason for a part of a step
    // more.
    double const low = std::floor(data.low / part.size() + tolerance);
    double const high = std::ceil(data.high / part.size() - tolerance);
    constexpr double most_counted = 9e15;
    if (!(std::abs(low) < most_counted && std::abs(high) < most_counted)) return data;
    const RoundRange range{part.times(static_cast<std::int64_t>(low)).value(),
                           part.times(static_cast<std::int64_t>(high)).value(), data.is_log};
    return std::isfinite(range.high - range.low) ? range : data;
}

// Outwards to 1, 2 or 5 times a power of ten, where doubles reach as far.
RoundRange widened_to_digits(RoundRange data) {
    RoundRange range = data;
    for (int const digit : {1, 2, 5}) {
        double const value = Decimal{digit, decimal_exponent(data.low)}.value();
        if (value > 0 && value <= data.low * (1 + tolerance)) range.low = value;
    }
    for (int const digit : {10, 5, 2, 1}) {
        double const value = Decimal{digit, decimal_exponent(data.high)}.value();
        if (std::isfinite(value) && value >= data.high * (1 - tolerance)) range.high = value;
    }
    return range;
}

RoundRange widened_log(RoundRange data) {
    constexpr double least_ratio = 4; // of what is widened to powers and their multiples
    if (data.high / data.low >= least_ratio) return widened_to_digits(data);
    const RoundRange range = widened(with_some_span(data));
    return {range.low > 0 ? range.low : data.low, range.high, true};
}

} // namespace

RoundRange round_range(RoundRange data) {
    if (!std::isfinite(data.low) || !std::isfinite(data.high)) raise_fault(FaultNumber::Overflow);
    if (data.high < data.low) std::swap(data.low, data.high);
    double const two_powers_below = data.high / 100;
    data.is_log = data.is_log && two_powers_below > 0;
    if (data.is_log && data.low <= 0) data.low = two_powers_below;
    if (data.is_log) return widened_log(data);
    if (!std::isfinite(data.high - data.low)) raise_fault(FaultNumber::Overflow);
    return widened(with_some_span(data));
}

} // namespace qv::scale
