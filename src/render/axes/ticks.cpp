#include "render/axes/ticks.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

// A value this close to zero, measured in spans, is the zero that rounding has missed.
constexpr double zero_tolerance = 1e-12;

// However long the axis, there are not more minor ticks than this; a share that is no number counts as none.
constexpr double most_minor_ticks = 65536;

double smallest_share(TickScale const& scale) {
    return scale.pixel_share > 1 / most_minor_ticks ? scale.pixel_share : 1 / most_minor_ticks;
}

double settle_zero(double value, double span) {
    return std::abs(value) <= zero_tolerance * std::abs(span) ? 0 : value;
}

std::vector<Tick> linear_ticks(TickScale const& scale) {
    double const span = scale.high - scale.low;
    double const majors = std::max(scale.major_divs, 1);
    double const minor_step = 1 / std::max(majors * scale.minor_divs, 1.0);
    int const minor_divs = scale.major_divs == 0 ? 0 : scale.minor_divs; // nothing is divided
    int const stride = static_cast<int>(std::clamp(smallest_share(scale) / minor_step, 1.0, 65536.0));
    std::vector<Tick> ticks;
    for (int i = 0; i <= scale.major_divs + 1; ++i) {
        double const major = scale.low + span * (i / majors);
        ticks.push_back({settle_zero(major, span), TickKind::Major});
        if (i > scale.major_divs) break;
        for (int j = 2; j <= minor_divs; j += stride)
            ticks.push_back({settle_zero(major + span * ((j - 1) * minor_step), span), TickKind::Minor});
    }
    return ticks;
}

// The powers of ten from 10^first to 10^last are what is seen of a logarithmic axis.
struct Powers {
    int first = 0;
    int last = 0;
    int count() const { return last - first + 1; }
    int decades() const { return last - first; }
};

// A power that rounding has put just beyond an end counts as standing on it.
Powers powers_within(double low, double high) {
    return {static_cast<int>(std::ceil(std::log10(low) - zero_tolerance)),
            static_cast<int>(std::floor(std::log10(high) + zero_tolerance))};
}

// One tick for several powers, because there are more of them than divisions: so that both ends have one,
// where the powers can be divided like that, else at the multiples of the stride.
std::vector<Tick> every_nth_power(Powers const& powers, int divisions, bool with_minors) {
    int const least = (powers.decades() + divisions - 1) / divisions;
    int stride = least;
    while (stride < 2 * least && powers.decades() % stride != 0) ++stride;
    bool const ends_fit = stride < 2 * least;
    if (!ends_fit) stride = least;
    int const origin = ends_fit ? powers.first : 0;
    with_minors = with_minors && stride <= 10;
    std::vector<Tick> ticks;
    for (int power = powers.first; power <= powers.last; ++power) {
        bool const is_major = (power - origin) % stride == 0;
        if (is_major || with_minors)
            ticks.push_back({std::pow(10, power), is_major ? TickKind::Major : TickKind::Minor});
    }
    return ticks;
}

std::vector<Tick> each_power(TickScale const& scale, double low, double high) {
    // Positions on the axis go with the logarithm, so a pixel is a factor.
    double const pixel_factor = std::expm1(smallest_share(scale) * (std::log(high) - std::log(low)));
    int const minor_divs = scale.major_divs == 0 ? 0 : scale.minor_divs;
    double const first_power = std::floor(std::log10(low));
    std::vector<Tick> ticks;
    for (int i = 0;; ++i) {
        double const major = std::pow(10, first_power + i);
        ticks.push_back({major, TickKind::Major});
        if (!(major <= high)) return ticks;
        for (double j = 2; j <= minor_divs && j * major <= high;
             j += std::max(1.0, std::floor(j * pixel_factor)))
            ticks.push_back({j * major, TickKind::Minor});
    }
}

// 1, 2 and 5 times each power of ten, the other multiples between them.
std::vector<Tick> round_multiples(double low, double high, int minor_divs) {
    std::vector<Tick> ticks;
    int const last = static_cast<int>(std::floor(std::log10(high)));
    for (int power = static_cast<int>(std::floor(std::log10(low))); power <= last; ++power)
        for (int multiple = 1; multiple <= 9; ++multiple) {
            bool const is_major = multiple == 1 || multiple == 2 || multiple == 5;
            if (is_major || multiple <= minor_divs)
                ticks.push_back(
                    {multiple * std::pow(10, power), is_major ? TickKind::Major : TickKind::Minor});
        }
    return ticks;
}

// Ticks at multiples of a step of 1, 2 or 5 times a power of ten, three to six of them within the range.
std::vector<Tick> round_steps(double low, double high, bool with_minors) {
    double const rough = (high - low) / 5;
    if (!std::isnormal(rough)) return {};
    int const power = static_cast<int>(std::floor(std::log10(rough)));
    double const leading = rough / std::pow(10, power);
    int const digit = leading <= 1 ? 1 : leading <= 2 ? 2 : leading <= 5 ? 5 : 10;
    int const parts = !with_minors ? 1 : digit == 2 ? 4 : 5;
    // Dividing by a positive power is exact where multiplying by a negative one is not.
    auto const in_steps = [&](double count) {
        return power < 0 ? count * digit / std::pow(10, -power) : count * digit * std::pow(10, power);
    };
    double const first = std::floor(low / in_steps(1));
    std::vector<Tick> ticks;
    constexpr int most = 8; // also where the steps are too narrow for the numbers to change
    for (int i = 0; i < most; ++i)
        for (int part = 0; part < parts; ++part)
            ticks.push_back({in_steps(first + i + static_cast<double>(part) / parts),
                             part == 0 ? TickKind::Major : TickKind::Minor});
    return ticks;
}

std::ptrdiff_t majors_within(std::vector<Tick> const& ticks, double low, double high) {
    return std::ranges::count_if(ticks, [&](Tick const& tick) {
        return tick.kind == TickKind::Major && tick.value >= low && tick.value <= high;
    });
}

std::vector<Tick> log_ticks(TickScale const& scale) {
    auto const [low, high] = std::minmax(scale.low, scale.high);
    const Powers powers = powers_within(low, high);
    int const divisions = std::max(scale.major_divs, 1);
    if (scale.majors_are_powers || (powers.count() >= 2 && powers.decades() <= divisions + 1))
        return each_power(scale, low, high);
    int const minor_divs = scale.major_divs == 0 ? 1 : scale.minor_divs;
    if (powers.count() >= 2) return every_nth_power(powers, divisions, minor_divs > 1);
    std::vector<Tick> ticks = round_multiples(low, high, minor_divs);
    if (majors_within(ticks, low, high) < 2) ticks = round_steps(low, high, minor_divs > 1);
    // Too narrow for any number between the ends.
    if (majors_within(ticks, low, high) < 2) ticks = {{low}, {high}};
    return ticks;
}

std::vector<Tick> given_ticks(TickScale const& scale) {
    std::vector<Tick> ticks;
    ticks.reserve(scale.given_majors.size() + scale.given_minors.size());
    for (double const value : scale.given_majors) ticks.push_back({value, TickKind::Major});
    for (double const value : scale.given_minors) ticks.push_back({value, TickKind::Minor});
    return ticks;
}

} // namespace

std::vector<Tick> axis_ticks(TickScale const& scale) {
    if (!scale.given_majors.empty()) return given_ticks(scale);
    if (!std::isfinite(scale.low) || !std::isfinite(scale.high)) return {};
    if (scale.is_log && !(scale.low > 0 && scale.high > 0)) return {};
    return scale.is_log ? log_ticks(scale) : linear_ticks(scale);
}

} // namespace qv::render
