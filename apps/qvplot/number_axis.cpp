#include "qvplot/number_axis.h"

#include "scale/number_format.h"

#include <algorithm>
#include <cmath>

namespace qv::plot {
namespace {

// A step of `digit` times ten to the `exponent`; its multiples are as exact as doubles can be.
struct DecimalStep {
    int digit = 1;
    int exponent = 0;

    double times(double count) const {
        return exponent >= 0 ? count * digit * std::pow(10, exponent)
                             : count * digit / std::pow(10, -exponent);
    }
    double size() const { return times(1); }
    DecimalStep minor() const {
        // Halves of 1 and 2 and fifths of 5 are 5 and 1 again.
        if (digit == 1) return {5, exponent - 1};
        return {1, exponent};
    }
    DecimalStep fifth() const {
        return digit == 5 ? DecimalStep{1, exponent} : DecimalStep{2 * digit, exponent - 1};
    }
};

DecimalStep next_step(DecimalStep step) {
    if (step.digit == 5) return {1, step.exponent + 1};
    return {step.digit == 1 ? 2 : 5, step.exponent};
}

// The smallest step of at least `size`.
DecimalStep step_from(double size) {
    DecimalStep step{1, static_cast<int>(std::floor(std::log10(size)))};
    while (step.size() < size * (1 - 1e-9)) step = next_step(step);
    return step;
}

// A value this close to a whole number of steps lies on it.
constexpr double tolerance = 1e-9;

Extent rounded_counts(Extent data, DecimalStep const& step) {
    return {std::floor(data.low / step.size() + tolerance), std::ceil(data.high / step.size() - tolerance)};
}

std::vector<double> multiples(Extent range, DecimalStep const& step) {
    std::vector<double> values;
    double const first = std::ceil(range.low / step.size() - tolerance);
    double const last = std::floor(range.high / step.size() + tolerance);
    for (double i = first; i <= last; ++i) values.push_back(step.times(i));
    return values;
}

// All digits the step needs; scientific where that would be too long.
std::string format_for(Extent range, DecimalStep const& step) {
    double const largest = std::max(std::abs(range.low), std::abs(range.high));
    int const decimals = std::max(0, -step.exponent);
    bool const short_in_own_format = largest / step.size() < 1e5;
    if (short_in_own_format && (largest >= 1e7 || decimals > 5)) return {};
    if (largest < 1e15 && decimals <= 12)
        return (largest >= 1e4 ? "#,##0" : "0") + (decimals > 0 ? "." + std::string(decimals, '0') : "");
    int const significant = static_cast<int>(std::ceil(std::log10(largest / step.size())));
    return "0." + std::string(static_cast<std::size_t>(std::clamp(significant, 1, 16)), '0') + "e+0";
}

std::size_t widest(AxisPlan const& plan) {
    std::size_t most = 0;
    for (double const value : plan.major)
        most = std::max(most, scale::EasyFormat(value, 6, plan.format).size());
    return most;
}

Extent with_some_span(Extent data) {
    double const largest = std::max(std::abs(data.low), std::abs(data.high));
    if (data.span() > largest * 1e-12) return data;
    double const pad = largest == 0 ? 1 : largest * 0.05;
    return {data.low - pad, data.high + pad};
}

AxisPlan plan_with(Extent data, DecimalStep const& step, RoundTo rounding) {
    const DecimalStep unit = rounding == RoundTo::Tick ? step : step.fifth();
    const Extent counts = rounded_counts(data, unit);
    AxisPlan plan;
    plan.range = {unit.times(counts.low), unit.times(counts.high)};
    plan.major = multiples(plan.range, step);
    for (double const value : multiples(plan.range, step.minor()))
        if (!std::ranges::binary_search(plan.major, value)) plan.minor.push_back(value);
    plan.format = format_for(plan.range, step);
    return plan;
}

int exponent_of(double value) {
    return static_cast<int>(std::floor(std::log10(value) + tolerance));
}

// Outwards to 1, 2 or 5 times a power of ten, where doubles reach as far.
Extent rounded_to_digits(Extent data) {
    Extent range = data;
    for (int const digit : {1, 2, 5}) {
        double const value = DecimalStep{digit, exponent_of(data.low)}.size();
        if (value > 0 && value <= data.low * (1 + tolerance)) range.low = value;
    }
    for (int const digit : {10, 5, 2, 1}) {
        double const value = DecimalStep{digit, exponent_of(data.high)}.size();
        if (std::isfinite(value) && value >= data.high * (1 - tolerance)) range.high = value;
    }
    return range;
}

// Multiples of every `stride`-th power of ten that lie in the range.
std::vector<double> decade_values(Extent range, std::vector<int> const& multipliers, int stride) {
    std::vector<double> values;
    for (int exponent = exponent_of(range.low); exponent <= exponent_of(range.high); ++exponent) {
        if (exponent % stride != 0) continue;
        for (int const multiplier : multipliers) {
            double const value = DecimalStep{multiplier, exponent}.size();
            if (value >= range.low * (1 - tolerance) && value <= range.high * (1 + tolerance))
                values.push_back(value);
        }
    }
    return values;
}

// Evenly spaced ticks, for values that span less than a few units of their decade.
AxisPlan plan_narrow_log_axis(Extent data, LabelRoom const& room) {
    AxisPlan plan = plan_number_axis(data, room, RoundTo::FifthOfTick);
    plan.is_log = true;
    if (plan.range.low > 0) return plan;
    // A logarithmic axis has no zero.
    plan.range.low = data.low;
    for (auto* ticks : {&plan.major, &plan.minor})
        std::erase_if(*ticks, [&](double value) { return value < data.low; });
    return plan;
}

} // namespace

AxisPlan plan_number_axis(Extent data, LabelRoom const& room, RoundTo rounding) {
    data = with_some_span(data);
    // Nothing round can be found where the arithmetic ends.
    if (!std::isfinite(data.span()) || data.span() < 1e-280) return {data, {data.low, data.high}, {}, {}, {}};
    DecimalStep step = step_from(data.span() / std::max(room.labels, 2));
    AxisPlan plan = plan_with(data, step, rounding);
    while (!room.holds(plan.major.size(), widest(plan)) && plan.major.size() > 2) {
        step = next_step(step);
        AxisPlan coarser = plan_with(data, step, rounding);
        if (coarser.major.size() < 2) break;
        plan = std::move(coarser);
    }
    return plan;
}

AxisPlan plan_log_axis(Extent data, LabelRoom const& room) {
    if (!(data.high > data.low)) data = {data.low / 2, data.high * 2};
    if (data.high / data.low < 4) return plan_narrow_log_axis(data, room);
    const std::vector<int> powers{1}, few{1, 2, 5}, all{1, 2, 3, 4, 5, 6, 7, 8, 9};
    constexpr double most_with_minors = 1e12; // highest over lowest value
    AxisPlan plan;
    plan.is_log = true;
    plan.range = rounded_to_digits(data);
    plan.major = decade_values(plan.range, few, 1);
    for (int stride = 1; !room.holds(plan.major.size(), widest(plan)); ++stride) {
        std::vector<double> fewer = decade_values(plan.range, powers, stride);
        if (fewer.size() < 2) break;
        plan.major = std::move(fewer);
    }
    bool const dense = plan.range.high / plan.range.low > most_with_minors;
    for (double const value : decade_values(plan.range, dense ? powers : all, 1))
        if (!std::ranges::binary_search(plan.major, value)) plan.minor.push_back(value);
    return plan;
}

} // namespace qv::plot
