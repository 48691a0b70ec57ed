// A line with round ends, and how much of the pixels around it covers.
#pragma once

#include "raster/segment.h"

#include <array>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::raster {

constexpr int quad_size = 4; // pixels computed at once: as many as a thin line crosses in a row
using Quad = std::array<std::uint8_t, quad_size>;

/// Raises four neighbouring pixels.
inline void raise(std::uint8_t* pixels, Quad const& coverage) {
#ifdef __SSE2__
    int below, above;
    std::memcpy(&below, pixels, quad_size);
    std::memcpy(&above, coverage.data(), quad_size);
    below = _mm_cvtsi128_si32(_mm_max_epu8(_mm_cvtsi32_si128(below), _mm_cvtsi32_si128(above)));
    std::memcpy(pixels, &below, quad_size);
#else
    for (int k = 0; k < quad_size; ++k) pixels[k] = std::max(pixels[k], coverage[k]);
#endif
}

/// Positions are counted from a pixel near its start, so that single precision is enough. What a pixel gets
/// does not depend on which others are computed.
struct Capsule {
    int base_x, base_y;
    float from_x, from_y;   // from the base, pixels
    float along_x, along_y; // unit vector
    float length;
    float reach; // half the width and half a pixel: here coverage ends

    Capsule(Segment const& segment, double width)
        : base_x(whole_pixel(segment.from.x)), base_y(whole_pixel(segment.from.y)),
          from_x(static_cast<float>(segment.from.x - base_x)),
          from_y(static_cast<float>(segment.from.y - base_y)), reach(static_cast<float>(width / 2 + 0.5)) {
        double const dx = segment.to.x - segment.from.x, dy = segment.to.y - segment.from.y;
        double const distance = std::sqrt(dx * dx + dy * dy);
        length = static_cast<float>(distance);
        along_x = distance > 0 ? static_cast<float>(dx / distance) : 1;
        along_y = distance > 0 ? static_cast<float>(dy / distance) : 0;
    }

    /// Coverage of four pixels from (x, y), side by side or one below the other.
    void cover_across(Quad& coverage, int x, int y) const { cover<1, 0>(coverage, x, y); }
    void cover_down(Quad& coverage, int x, int y) const { cover<0, 1>(coverage, x, y); }

private:
    template <int step_x, int step_y>
    void cover(Quad& coverage, int x, int y) const {
        float const first_x = static_cast<float>(x - base_x), first_y = static_cast<float>(y - base_y);
#ifdef __SSE2__
        // Written out: compilers unroll a loop this short instead of using vectors.
        auto const places = [](float first, float step, float start) {
            const __m128 lanes = _mm_setr_ps(0, step, 2 * step, 3 * step);
            return _mm_sub_ps(_mm_add_ps(_mm_set1_ps(first), lanes), _mm_set1_ps(start));
        };
        const __m128 px = places(first_x, step_x, from_x), py = places(first_y, step_y, from_y);
        const __m128 ux = _mm_set1_ps(along_x), uy = _mm_set1_ps(along_y);
        const __m128 behind = _mm_add_ps(_mm_mul_ps(px, ux), _mm_mul_ps(py, uy));
        const __m128 t = _mm_min_ps(_mm_max_ps(behind, _mm_setzero_ps()), _mm_set1_ps(length));
        const __m128 dx = _mm_sub_ps(px, _mm_mul_ps(t, ux)), dy = _mm_sub_ps(py, _mm_mul_ps(t, uy));
        const __m128 distance = _mm_sqrt_ps(_mm_add_ps(_mm_mul_ps(dx, dx), _mm_mul_ps(dy, dy)));
        const __m128 inside = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(reach), distance), _mm_set1_ps(255));
        // Rounds; the two steps to bytes clamp.
        const __m128i words =
            _mm_packs_epi32(_mm_cvtps_epi32(_mm_min_ps(inside, _mm_set1_ps(255))), _mm_setzero_si128());
        int const bytes = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
        std::memcpy(coverage.data(), &bytes, quad_size);
#else
        for (int k = 0; k < quad_size; ++k) {
            float const px = first_x + static_cast<float>(k * step_x) - from_x;
            float const py = first_y + static_cast<float>(k * step_y) - from_y;
            float const t = std::clamp(px * along_x + py * along_y, 0.0F, length);
            float const dx = px - t * along_x, dy = py - t * along_y;
            float const part = std::clamp(reach - std::sqrt(dx * dx + dy * dy), 0.0F, 1.0F);
            coverage[k] = static_cast<std::uint8_t>(part * 255.0F + 0.5F);
        }
#endif
    }
};

} // namespace qv::raster
