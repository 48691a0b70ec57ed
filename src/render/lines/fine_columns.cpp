#include "render/lines/fine_columns.h"

#include "render/lines/four.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

constexpr double farthest = 1e9; // rows; of what lies beyond only the direction counts
constexpr float nothing = std::numeric_limits<float>::infinity();
constexpr float hair = 1.0F / 2048; // pixels; levels that little further are not

float level(double y) {
    return static_cast<float>(!(y > -farthest) ? -farthest : y < farthest ? y : farthest);
}

} // namespace

void FineColumns::start(double left, int columns) {
    left_ = left;
    count_ = columns * bars_per_pixel;
    low_.assign(static_cast<std::size_t>(count_), nothing);
    high_.assign(static_cast<std::size_t>(count_), -nothing);
    current_ = -1;
    end_line();
}

void FineColumns::end_line() {
    last_low_ = -HUGE_VAL;
    last_high_ = HUGE_VAL;
}

void FineColumns::put_current() {
    if (current_ < 0) return;
    auto const k = static_cast<std::size_t>(current_);
    low_[k] = std::min(low_[k], level(current_low_));
    high_[k] = std::max(high_[k], level(current_high_));
    current_ = -1;
}

void FineColumns::add_segment(RowPlace from, RowPlace to) {
    last_low_ = last_high_ = to.y;
    double const first = (from.x - left_) * bars_per_pixel, last = (to.x - left_) * bars_per_pixel;
    if (!(last >= 0 && first < count_)) return;
    int const begin = first < 0 ? 0 : static_cast<int>(first);
    int const end = last < count_ ? static_cast<int>(last) : count_ - 1;
    auto const join = [&](int bar, double a, double b) { extend(bar, std::min(a, b), std::max(a, b)); };
    if (first >= 0 && begin == end && last < count_) return join(begin, from.y, to.y);
    double const slope = first < last ? (to.y - from.y) / (last - first) : 0;
    // Reckoned from an end at hand.
    auto const at = [&](int edge) {
        return first < 0 ? to.y - (last - edge) * slope : from.y + (edge - first) * slope;
    };
    double y = first < 0 ? at(0) : from.y;
    for (int bar = begin; bar < end; ++bar) {
        double const next = at(bar + 1);
        join(bar, y, next);
        y = next;
    }
    join(end, y, last < count_ ? to.y : at(count_));
}

/// From the middle to both sides: only bars that leave the levels reached come nearer to any row.
void FineColumns::approach(NearestRows& rows, double middle, double reach) const {
    auto const at = static_cast<std::ptrdiff_t>((middle - left_) * bars_per_pixel);
    int const bars = static_cast<int>(std::ceil(reach * bars_per_pixel));
    float low = nothing, high = -nothing;
    for (int j = 0; j < bars; j += Four::lanes) {
        float const* const left_high = high_.data() + at - j - Four::lanes;
        float const* const left_low = low_.data() + at - j - Four::lanes;
        const Four highs = most(Four::load(high_.data() + at + j), Four::load(left_high).reversed());
        const Four lows = least(Four::load(low_.data() + at + j), Four::load(left_low).reversed());
        if (!is_any_above(highs, Four(high)) && !is_any_above(Four(low), lows)) continue;
        std::array<float, Four::lanes> new_highs, new_lows;
        highs.store(new_highs.data());
        lows.store(new_lows.data());
        for (std::size_t k = 0; k < Four::lanes; ++k) {
            float const from = new_lows[k], to = new_highs[k];
            double const away = (j + static_cast<double>(k) + 0.5) / bars_per_pixel;
            if (low > high) {
                if (from > to) continue;
                rows.approach_bar(away, from, to);
                low = from;
                high = to;
            }
            if (to > high + hair) {
                rows.approach_bar_below(high, away, to);
                high = to;
            }
            if (from < low - hair) {
                rows.approach_bar_above(low, away, from);
                low = from;
            }
        }
    }
}

} // namespace qv::render
