#include "render/nearest_rows.h"

#include <algorithm>
#include <array>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::render {
namespace {

constexpr int lanes = 4;
constexpr int group = 16; // rows that become coverage together
constexpr float far_away = 1e12F;
constexpr double cut = 4096; // pixels that an end may lie beyond the rows at hand

#ifdef __SSE2__

// Written out: compilers unroll loops this short instead of using vectors.
class Four {
public:
    Four(float value) : lanes_(_mm_set1_ps(value)) {}
    static Four counted_from(float first) {
        return Four(_mm_add_ps(_mm_set1_ps(first), _mm_setr_ps(0, 1, 2, 3)));
    }
    static Four load(float const* from) { return Four(_mm_loadu_ps(from)); }
    void store(float* to) const { _mm_storeu_ps(to, lanes_); }

    friend Four operator+(Four a, Four b) { return Four(_mm_add_ps(a.lanes_, b.lanes_)); }
    friend Four operator-(Four a, Four b) { return Four(_mm_sub_ps(a.lanes_, b.lanes_)); }
    friend Four operator*(Four a, Four b) { return Four(_mm_mul_ps(a.lanes_, b.lanes_)); }
    friend Four least(Four a, Four b) { return Four(_mm_min_ps(a.lanes_, b.lanes_)); }
    friend Four most(Four a, Four b) { return Four(_mm_max_ps(a.lanes_, b.lanes_)); }
    friend bool is_any_above(Four a, Four b) {
        return _mm_movemask_ps(_mm_cmpgt_ps(a.lanes_, b.lanes_)) != 0;
    }

private:
    explicit Four(__m128 values) : lanes_(values) {}
    __m128 lanes_;
};

void cover_group(std::uint8_t* coverage, float const* squared, float reach) {
    auto const four = [&](int first) {
        const __m128 distance = _mm_sqrt_ps(_mm_loadu_ps(squared + first));
        const __m128 inside = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(reach), distance), _mm_set1_ps(255));
        return _mm_cvtps_epi32(_mm_min_ps(inside, _mm_set1_ps(255)));
    };
    // The two steps to bytes clamp.
    const __m128i low = _mm_packs_epi32(four(0), four(4)), high = _mm_packs_epi32(four(8), four(12));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(coverage), _mm_packus_epi16(low, high));
}

#else

class Four {
public:
    Four(float value) { lanes_.fill(value); }
    static Four counted_from(float first) { return Four(first) + Four(std::array{0.0F, 1.0F, 2.0F, 3.0F}); }
    static Four load(float const* from) { return Four(std::array{from[0], from[1], from[2], from[3]}); }
    void store(float* to) const { std::copy_n(lanes_.data(), lanes, to); }

    friend Four operator+(Four a, Four b) {
        return each(a, b, [](float x, float y) { return x + y; });
    }
    friend Four operator-(Four a, Four b) {
        return each(a, b, [](float x, float y) { return x - y; });
    }
    friend Four operator*(Four a, Four b) {
        return each(a, b, [](float x, float y) { return x * y; });
    }
    friend Four least(Four a, Four b) {
        return each(a, b, [](float x, float y) { return std::min(x, y); });
    }
    friend Four most(Four a, Four b) {
        return each(a, b, [](float x, float y) { return std::max(x, y); });
    }
    friend bool is_any_above(Four a, Four b) {
        return !std::ranges::equal(a.lanes_, b.lanes_, std::less_equal<>());
    }

private:
    explicit Four(std::array<float, lanes> values) : lanes_(values) {}
    template <class Combine>
    static Four each(Four a, Four b, Combine combine) {
        for (std::size_t k = 0; k < lanes; ++k) a.lanes_[k] = combine(a.lanes_[k], b.lanes_[k]);
        return a;
    }
    std::array<float, lanes> lanes_;
};

void cover_group(std::uint8_t* coverage, float const* squared, float reach) {
    for (int k = 0; k < group; ++k)
        coverage[k] = static_cast<std::uint8_t>(
            std::clamp((reach - std::sqrt(squared[k])) * 255.0F, 0.0F, 255.0F) + 0.5F);
}

#endif

// Single precision is not enough for ends far beyond the rows.
void cut_rows(RowPlace& from, RowPlace& to, double low, double high) {
    const RowPlace start = from;
    double const slope = from.y == to.y ? 0 : (to.x - from.x) / (to.y - from.y);
    for (RowPlace* const place : {&from, &to}) {
        double const y = std::clamp(place->y, low, high);
        if (y == place->y) continue;
        place->x = start.x + (y - start.y) * slope;
        place->y = y;
    }
}

} // namespace

void NearestRows::resize(int rows) {
    rows_ = first_ = rows;
    past_ = 0;
    squared_.assign(static_cast<std::size_t>(rows) + group, far_away);
}

bool NearestRows::is_any_farther(int first, int past, float squared) const {
    int row = first;
    for (; row + lanes <= past; row += lanes)
        if (is_any_above(Four::load(squared_.data() + row), Four(squared))) return true;
    for (; row < past; ++row)
        if (squared_[static_cast<std::size_t>(row)] > squared) return true;
    return false;
}

// Rows are computed in groups.
void NearestRows::touch(int first, int past) {
    first_ = std::min(first_, first);
    past_ = std::max(past_, std::min(rows_, first + (past - first + lanes - 1) / lanes * lanes));
}

// Groups may go on behind `past`, where the segment is as near as it is.
void NearestRows::approach(RowPlace from, RowPlace to, double x, int first, int past) {
    if (std::min(from.y, to.y) < first - cut || std::max(from.y, to.y) > past + cut)
        cut_rows(from, to, first - cut, past + cut);
    touch(first, past);
    auto const dx = static_cast<float>(to.x - from.x), dy = static_cast<float>(to.y - from.y);
    float const length = dx * dx + dy * dy, one = length > 0 ? 1 / length : 0;
    auto const away = static_cast<float>(x - from.x);
    float const gain = dy * one, start = away * dx * one;
    Four y = Four::counted_from(static_cast<float>(first - from.y));
    for (int row = first; row < past; row += lanes, y = y + Four(lanes)) {
        const Four part = least(most(y * Four(gain) + Four(start), Four(0)), Four(1));
        const Four across = Four(away) - part * Four(dx), down = y - part * Four(dy);
        float* const rows = squared_.data() + row;
        least(Four::load(rows), across * across + down * down).store(rows);
    }
}

void NearestRows::approach(double away, double top, double bottom, int first, int past) {
    touch(first, past);
    const Four across(static_cast<float>(away * away));
    const Four to_top(static_cast<float>(top - first)), to_bottom(static_cast<float>(bottom - first));
    Four y = Four::counted_from(0);
    for (int row = first; row < past; row += lanes, y = y + Four(lanes)) {
        const Four down = y - least(most(y, to_top), to_bottom);
        float* const rows = squared_.data() + row;
        least(Four::load(rows), across + down * down).store(rows);
    }
}

void NearestRows::take_coverage(double reach, std::vector<std::uint8_t>& coverage) {
    std::size_t const begin = coverage.size();
    auto const count = static_cast<std::size_t>(std::max(0, past_ - first_));
    coverage.resize(begin + (count + group - 1) / group * group);
    float* const squared = squared_.data() + first_;
    for (std::size_t k = 0; k < count; k += group)
        cover_group(coverage.data() + begin + k, squared + k, static_cast<float>(reach));
    coverage.resize(begin + count);
    std::fill_n(squared, count + lanes, far_away);
    first_ = rows_;
    past_ = 0;
}

} // namespace qv::render
