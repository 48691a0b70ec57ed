#include "render/ticks.h"

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
    int const stride = static_cast<int>(std::clamp(smallest_share(scale) / minor_step, 1.0, 65536.0));
    std::vector<Tick> ticks;
    for (int i = 0; i <= scale.major_divs + 1; ++i) {
        double const major = scale.low + span * (i / majors);
        ticks.push_back({settle_zero(major, span), TickKind::Major});
        if (i > scale.major_divs) break;
        for (int j = 2; j <= scale.minor_divs; j += stride)
            ticks.push_back({settle_zero(major + span * ((j - 1) * minor_step), span), TickKind::Minor});
    }
    return ticks;
}

std::vector<Tick> log_ticks(TickScale const& scale) {
    auto const [low, high] = std::minmax(scale.low, scale.high);
    // Positions on the axis go with the logarithm, so a pixel is a factor.
    double const pixel_factor = std::expm1(smallest_share(scale) * std::log(high / low));
    double const first_power = std::floor(std::log10(low));
    std::vector<Tick> ticks;
    for (int i = 0; i <= scale.major_divs + 1; ++i) {
        double const major = std::pow(10, first_power + i);
        ticks.push_back({major, TickKind::Major});
        if (!(major <= high)) break;
        for (double j = 2; j <= scale.minor_divs && j * major <= high;
             j += std::max(1.0, std::floor(j * pixel_factor)))
            ticks.push_back({j * major, TickKind::Minor});
    }
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
