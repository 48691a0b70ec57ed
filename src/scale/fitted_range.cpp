#include "scale/fitted_range.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace qv::scale {
namespace {

constexpr double least_share_of_data = 0.1; // of the axis
constexpr double same_value = 1e-14;        // two values no further apart, relatively, are one

/// What is added to data at one end, on the axis's own scale.
struct End {
    double margin = 0;
    double share = 0; // of the whole axis; the larger of both counts
    double added(double whole) const { return std::max(margin, share * whole); }
};

// The length of the whole axis: where a share of it counts it lies on both sides of the equation, and which
// one counts depends on the length; each round can only lengthen it.
double whole_length(double span, End const& low, End const& high) {
    double whole = span + low.margin + high.margin;
    for (int round = 0; round < 3; ++round) {
        double taken = 0, added = 0;
        for (End const& end : {low, high}) {
            bool const by_share = end.share * whole > end.margin;
            taken += by_share ? end.share : 0;
            added += by_share ? 0 : end.margin;
        }
        whole = (span + added) / (1 - taken);
    }
    return whole;
}

// One value alone gets a range about it, or beside it where bars stand on it.
void widen_single_value(FitWish& wish) {
    double const largest = std::max(std::abs(wish.low), std::abs(wish.high));
    bool const is_single = wish.is_log ? std::log(wish.high / wish.low) <= same_value
                                       : wish.high - wish.low <= largest * same_value;
    if (!is_single) return;
    if (wish.stands_low) wish.stands_high = false;
    double const usual_pad = largest == 0 ? 1 : std::max(largest / 20, std::numeric_limits<double>::min());
    double const pad = wish.single_pad > 0 ? wish.single_pad : usual_pad;
    double const factor = std::sqrt(10.0);
    if (!wish.stands_low) wish.low = wish.is_log ? wish.low / factor : wish.low - pad;
    if (!wish.stands_high) wish.high = wish.is_log ? wish.high * factor : wish.high + pad;
}

bool is_range(document::Extent const& range, bool is_log) {
    return std::isfinite(range.high - range.low) && range.low < range.high && (!is_log || range.low > 0);
}

} // namespace

std::optional<document::Extent> fitted_range(FitWish const& asked) {
    FitWish wish = asked;
    if (wish.is_log && !(wish.low > 0)) return std::nullopt;
    widen_single_value(wish);
    if (!is_range({wish.low, wish.high}, wish.is_log)) return std::nullopt;
    bool const has_room = wish.room_low + wish.room_high <= 1 - least_share_of_data;
    double const span = wish.is_log ? std::log(wish.high) - std::log(wish.low) : wish.high - wish.low;
    const End low{wish.stands_low ? 0 : wish.margin * span, has_room ? std::max(wish.room_low, 0.0) : 0};
    const End high{wish.stands_high ? 0 : wish.margin * span, has_room ? std::max(wish.room_high, 0.0) : 0};
    double const whole = whole_length(span, low, high);
    auto const moved = [&](double value, double way) {
        if (way == 0) return value; // exactly
        return wish.is_log ? value * std::exp(way) : value + way;
    };
    const document::Extent range{moved(wish.low, -low.added(whole)), moved(wish.high, high.added(whole))};
    // Beyond the largest number there is no room.
    return is_range(range, wish.is_log) ? range : document::Extent{wish.low, wish.high};
}

} // namespace qv::scale
