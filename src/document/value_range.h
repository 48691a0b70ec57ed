// The smallest and largest of some values.
#pragma once

#include <algorithm>
#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::document {

struct ValueRange {
    double low, high;
};

/// Smallest and largest of at least one value. In the header because it runs for every few points of a line.
inline ValueRange range_of(double const* values, std::size_t count) {
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

} // namespace qv::document
