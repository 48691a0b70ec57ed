#include "base/convert.h"
#include "document/trap.h"
#include "scale/axis_range.h"
#include "scale/number_format.h"
#include "scale/numeric.h"

#include <charconv>
#include <cmath>
#include <string>
#include <utility>

namespace qv::scale {
namespace {

double finite(double value) {
    if (!std::isfinite(value)) raise_fault(FaultNumber::Overflow);
    return value;
}

double number_in(std::string const& text) {
    double value = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc()) raise_fault(FaultNumber::Overflow);
    return value;
}

void put_in_order(AxisRange& range) {
    finite(range.low);
    finite(range.high);
    if (range.high < range.low) std::swap(range.low, range.high);
    if (range.high > range.low) return;
    range.high = finite(range.low + std::abs(range.low / 100));
    // At zero, and where a hundredth of a tiny value is zero.
    if (range.high == range.low) range.high = range.low + 1e-12;
}

// A lower end that has no logarithm is replaced; an upper end cannot be, so the axis turns linear.
void settle_log(AxisRange& range) {
    if (!range.is_log) return;
    double const two_decades_below = range.high / 100;
    range.is_log = two_decades_below > 0;
    if (range.is_log && range.low <= 0) range.low = two_decades_below;
    if (range.is_log && !range.keeps_log && range.high / range.low < 2) range.is_log = false;
}

double decades_between(double low, double high) {
    if (low == 0) return 1;
    double const ratio = high / low;
    return std::isfinite(ratio) ? std::log10(ratio) : std::log10(high) - std::log10(low);
}

void scale_log(AxisRange& range) {
    constexpr std::int16_t places = 3;
    double const high = finite(range.high * 1.2);
    double const low = number_in(EasyFormat(range.low * 0.8, places, ""));
    range.high = number_in(EasyFormat(high, places, ""));
    range.low = low;
    range.major_divs = to_i16(std::trunc(decades_between(range.low, range.high)) + 1);
    range.minor_divs = 9;
}

// value * 10^exponent. Negative powers divide, because only the positive ones are exact, and large ones go
// in two steps, because 10^309 is no number any more.
double shifted(double value, int exponent) {
    constexpr int largest = 300;
    if (exponent > largest) return shifted(value * 1e300, exponent - largest);
    if (exponent < -largest) return shifted(value / 1e300, exponent + largest);
    return exponent < 0 ? value / std::pow(10.0, -exponent) : value * std::pow(10.0, exponent);
}

// The power of ten that makes a span into 1 to 10 units.
int unit_exponent(double span) {
    if (span == 0) return 1;
    int const exponent = to_i32(-std::log10(span)) + 1;
    return shifted(span, exponent) > 10 ? exponent - 1 : exponent;
}

// In 32-bit precision a value a few millionths beside a whole number counts as whole. Where that precision
// is coarser than a unit, as for 1000000.4, the fraction it lost counts all the same.
bool has_fraction(double units) {
    constexpr double negligible = 1e-6;
    double const lost = std::abs(units) - std::trunc(std::abs(units));
    return Frac(to_f32(units)) > 0 || lost > negligible;
}

/// A range in whole units of a power of ten.
struct WholeRange {
    double low = 0;
    double high = 0;
};

WholeRange rounded_outwards(double low, double high) {
    return {std::trunc(low) - (low < 0 && has_fraction(low) ? 1 : 0),
            std::trunc(high) + (high >= 0 && has_fraction(high) ? 1 : 0)};
}

// Few units are halved, many are taken in pairs, for which an odd count is widened by a unit at the end that
// makes the lower end even.
std::int16_t divisions(WholeRange& range) {
    const std::int16_t count = to_i16(range.high - range.low);
    if (count < 4) return static_cast<std::int16_t>(Max<int>(2 * count, 1));
    if (count < 10) return count;
    if (count % 2 == 0) return static_cast<std::int16_t>(count / 2);
    if (std::fmod(range.low, 2) == 0)
        range.high += 1;
    else
        range.low -= 1;
    return static_cast<std::int16_t>((count + 1) / 2);
}

// As many as the leading digits of the step say, so that a minor step is a round number too.
std::int16_t minor_divisions(double major_step) {
    if (!(major_step > 0)) return 1;
    float const fraction = Frac(static_cast<float>(std::log10(major_step)));
    const std::int16_t count = to_i16(std::pow(10.0, static_cast<double>(fraction)));
    return count == 10 ? std::int16_t{5} : MaxInt(count, 2);
}

void scale_linear(AxisRange& range) {
    // Data exactly on a round number do not push the range one step further.
    double const slack = finite(range.high - range.low) / 1000;
    double const low = range.low + slack;
    double const high = range.high - slack;
    int const exponent = unit_exponent(high - low);
    WholeRange whole = rounded_outwards(shifted(low, exponent), shifted(high, exponent));
    const std::int16_t major_divs = divisions(whole);
    double const rounded_low = finite(shifted(whole.low, -exponent));
    double const rounded_high = finite(shifted(whole.high, -exponent));
    range.minor_divs = minor_divisions(finite(rounded_high - rounded_low) / major_divs);
    range.major_divs = major_divs;
    range.low = rounded_low;
    range.high = rounded_high;
}

} // namespace

void auto_scale(AxisRange& range) {
    put_in_order(range);
    settle_log(range);
    if (range.is_log)
        scale_log(range);
    else
        scale_linear(range);
}

void AutoScale(document::ControlState& state, AxisRange& range) {
    trapped(state, "AutoScale", [&] { auto_scale(range); });
}

} // namespace qv::scale
