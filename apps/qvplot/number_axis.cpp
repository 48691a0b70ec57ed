#include "qvplot/number_axis.h"

#include "scale/number_format.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

DecimalStep finer_step(DecimalStep step) {
    if (step.digit == 1) return {5, step.exponent - 1};
    return {step.digit == 5 ? 2 : 1, step.exponent};
}

// The smallest step of at least `size`, which is positive and finite.
DecimalStep step_from(double size) {
    DecimalStep step{1, static_cast<int>(std::floor(std::log10(size)))};
    while (step.size() < size * (1 - 1e-9)) step = next_step(step);
    return step;
}

// A value this close to a whole number of steps lies on it.
constexpr double tolerance = 1e-9;

// Outwards to multiples of the step, where doubles reach as far.
Extent rounded_outwards(Extent data, DecimalStep const& step) {
    double const low = step.times(std::floor(data.low / step.size() + tolerance));
    double const high = step.times(std::ceil(data.high / step.size() - tolerance));
    const Extent range{std::isfinite(low) ? low : data.low, std::isfinite(high) ? high : data.high};
    return std::isfinite(range.span()) ? range : data;
}

std::vector<double> multiples(Extent range, DecimalStep const& step) {
    constexpr double most = 10000; // more would be no ticks
    double const first = std::ceil(range.low / step.size() - tolerance);
    double const last = std::floor(range.high / step.size() + tolerance);
    std::vector<double> values;
    if (!(last - first < most)) return values;
    for (int i = 0; first + i <= last; ++i) {
        double const value = step.times(first + i);
        bool const rises = values.empty() || value > values.back();
        if (std::isfinite(value) && rises) values.push_back(value);
    }
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

constexpr double largest_value = std::numeric_limits<double>::max();

double largest_of(Extent data) {
    return std::max(std::abs(data.low), std::abs(data.high));
}

Extent with_some_span(Extent data) {
    double const largest = largest_of(data);
    if (data.span() > largest * 1e-12) return data;
    double const pad = largest == 0 ? 1 : largest * 0.05;
    return {std::max(data.low - pad, -largest_value), std::min(data.high + pad, largest_value)};
}

// Where the arithmetic ends nothing round can be found.
bool has_round_values(Extent data) {
    return std::isfinite(data.span()) && data.span() > std::max(1e-280, largest_of(data) * 1e-14);
}

AxisPlan plan_of_ends(Extent data) {
    bool const near = data.span() < largest_of(data) * 1e-5;
    return {data, {data.low, data.high}, {}, near ? "0.0000000000000000e+0" : "", {}};
}

constexpr double most_stretch = 1.6; // a range over its data, for rounding to whole ticks

// Whole ticks at the ends would leave the data too small a part.
bool stretches(Extent data, DecimalStep const& step) {
    return !(rounded_outwards(data, step).span() <= most_stretch * data.span());
}

Extent range_with(Extent data, DecimalStep const& step, RoundTo rounding) {
    if (rounding == RoundTo::Nothing) return data;
    bool const whole_ticks = rounding == RoundTo::Tick && !stretches(data, step);
    return rounded_outwards(data, whole_ticks ? step : step.fifth());
}

AxisPlan plan_with(Extent data, DecimalStep const& step, RoundTo rounding) {
    AxisPlan plan;
    plan.range = range_with(data, step, rounding);
    plan.major = multiples(plan.range, step);
    for (double const value : multiples(plan.range, step.minor()))
        if (!std::ranges::binary_search(plan.major, value)) plan.minor.push_back(value);
    plan.format = format_for(plan.range, step);
    return plan;
}

// The finest step whose labels have room; where none has, the coarsest that keeps two labels and the range,
// and the drawing leaves out labels.
AxisPlan plan_linear(Extent data, LabelRoom const& room, RoundTo rounding) {
    constexpr int fewest_steps = 4, most_refinements = 3;
    DecimalStep step = step_from(data.span() / std::max(room.labels, fewest_steps));
    AxisPlan plan = plan_with(data, step, rounding);
    for (int i = 0; i < most_refinements && plan.major.size() < 2; ++i) {
        step = finer_step(step);
        plan = plan_with(data, step, rounding);
    }
    while (!room.holds(plan.major.size(), widest(plan)) && step.size() < data.span()) {
        step = next_step(step);
        AxisPlan coarser = plan_with(data, step, rounding);
        if (coarser.major.size() < 2 || (rounding == RoundTo::Tick && stretches(data, step))) break;
        plan = std::move(coarser);
    }
    return plan.major.size() < 2 ? plan_of_ends(data) : plan;
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
AxisPlan plan_narrow_log_axis(Extent data, LabelRoom const& room, RoundTo rounding) {
    AxisPlan plan = plan_number_axis(data, room, std::min(rounding, RoundTo::FifthOfTick));
    plan.is_log = true;
    if (plan.range.low > 0) return plan;
    // A logarithmic axis has no zero.
    plan.range.low = data.low;
    for (auto* ticks : {&plan.major, &plan.minor})
        std::erase_if(*ticks, [&](double value) { return value < data.low; });
    return plan;
}

// One value stands in the middle of a range of its own.
Extent with_some_ratio(Extent data) {
    if (data.high > data.low) return data;
    return {std::max(data.low / 2, std::numeric_limits<double>::denorm_min()),
            std::min(data.high, largest_value / 2) * 2};
}

} // namespace

AxisPlan plan_number_axis(Extent data, LabelRoom const& room, RoundTo rounding) {
    if (rounding != RoundTo::Nothing) data = with_some_span(data);
    return has_round_values(data) ? plan_linear(data, room, rounding) : plan_of_ends(data);
}

AxisPlan plan_log_axis(Extent data, LabelRoom const& room, RoundTo rounding) {
    data = with_some_ratio(data);
    if (data.high / data.low < 4) return plan_narrow_log_axis(data, room, rounding);
    const std::vector<int> powers{1}, few{1, 2, 5}, all{1, 2, 3, 4, 5, 6, 7, 8, 9};
    constexpr double most_with_minors = 1e12; // highest over lowest value, for those between powers
    constexpr int most_minors = 60;           // of powers
    AxisPlan plan;
    plan.is_log = true;
    plan.range = rounding == RoundTo::Nothing ? data : rounded_to_digits(data);
    plan.major = decade_values(plan.range, few, 1);
    if (plan.major.size() < 2) return plan_narrow_log_axis(data, room, rounding);
    for (int stride = 1; !room.holds(plan.major.size(), widest(plan)); ++stride) {
        std::vector<double> fewer = decade_values(plan.range, powers, stride);
        if (fewer.size() < 2) break;
        plan.major = std::move(fewer);
    }
    bool const dense = plan.range.high / plan.range.low > most_with_minors;
    int const powers_a_minor = 1 + (exponent_of(plan.range.high) - exponent_of(plan.range.low)) / most_minors;
    for (double const value : decade_values(plan.range, dense ? powers : all, powers_a_minor))
        if (!std::ranges::binary_search(plan.major, value)) plan.minor.push_back(value);
    return plan;
}

} // namespace qv::plot
