#include "document/RangeSummary.h"

#include <algorithm>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::document {

ValueRange range_of(double const* values, std::size_t count) {
#ifdef __SSE2__
    // Written out, four at a time, because each comparison waits for the one before it.
    if (count >= 4) {
        __m128d low = _mm_loadu_pd(values), high = low;
        __m128d low_too = _mm_loadu_pd(values + 2), high_too = low_too;
        // The last are looked at twice where the count is no multiple.
        for (std::size_t next = 4; next < count; next += 4) {
            double const* const some = values + std::min(next, count - 4);
            const __m128d two = _mm_loadu_pd(some), other_two = _mm_loadu_pd(some + 2);
            low = _mm_min_pd(low, two), high = _mm_max_pd(high, two);
            low_too = _mm_min_pd(low_too, other_two), high_too = _mm_max_pd(high_too, other_two);
        }
        low = _mm_min_pd(low, low_too), high = _mm_max_pd(high, high_too);
        return {_mm_cvtsd_f64(_mm_min_sd(low, _mm_unpackhi_pd(low, low))),
                _mm_cvtsd_f64(_mm_max_sd(high, _mm_unpackhi_pd(high, high)))};
    }
#endif
    ValueRange range{values[0], values[0]};
    for (std::size_t i = 1; i < count; ++i) {
        range.low = std::min(range.low, values[i]);
        range.high = std::max(range.high, values[i]);
    }
    return range;
}

EvenSpacing spacing_of(double const* values, std::size_t count) {
    double const first = values[0];
    double const step = count > 1 ? (values[count - 1] - first) / static_cast<double>(count - 1) : 0;
    constexpr std::size_t lanes = 4;
    double deviation[lanes]{};
    for (std::size_t i = 0; i < count; ++i) {
        double const away = std::abs(values[i] - (first + static_cast<double>(i) * step));
        deviation[i % lanes] = std::max(deviation[i % lanes], away);
    }
    return {first, step, *std::ranges::max_element(deviation)};
}

void RangeSummary::extend(double const* values, std::size_t end) {
    std::vector<ValueRange>& finest = ranges_[0];
    for (std::size_t place = finest.size() * span(0); place + span(0) <= end; place += span(0))
        finest.push_back(range_of(values + place, span(0)));
    for (std::size_t level = 1; level < levels; ++level) {
        std::vector<ValueRange> const& below = ranges_[level - 1];
        std::vector<ValueRange>& here = ranges_[level];
        while ((here.size() + 1) * fan_out <= below.size()) {
            ValueRange range = below[here.size() * fan_out];
            for (std::size_t k = 1; k < fan_out; ++k) {
                range.low = std::min(range.low, below[here.size() * fan_out + k].low);
                range.high = std::max(range.high, below[here.size() * fan_out + k].high);
            }
            here.push_back(range);
        }
    }
}

void RangeSummary::shorten(std::size_t end) {
    for (std::size_t level = 0; level < levels; ++level)
        if (ranges_[level].size() > end / span(level)) ranges_[level].resize(end / span(level));
}

} // namespace qv::document
