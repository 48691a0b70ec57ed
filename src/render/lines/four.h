// Four numbers that are computed at once.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::render {

#ifdef __SSE2__

// Written out: compilers unroll loops this short instead of using vectors.
class Four {
public:
    static constexpr int lanes = 4;

    Four(float value) : values_(_mm_set1_ps(value)) {}
    static Four counted_from(float first) {
        return Four(_mm_add_ps(_mm_set1_ps(first), _mm_setr_ps(0, 1, 2, 3)));
    }
    static Four load(float const* from) { return Four(_mm_loadu_ps(from)); }
    Four reversed() const { return Four(_mm_shuffle_ps(values_, values_, _MM_SHUFFLE(0, 1, 2, 3))); }
    void store(float* to) const { _mm_storeu_ps(to, values_); }

    friend Four operator+(Four a, Four b) { return Four(_mm_add_ps(a.values_, b.values_)); }
    friend Four operator-(Four a, Four b) { return Four(_mm_sub_ps(a.values_, b.values_)); }
    friend Four operator*(Four a, Four b) { return Four(_mm_mul_ps(a.values_, b.values_)); }
    friend Four least(Four a, Four b) { return Four(_mm_min_ps(a.values_, b.values_)); }
    friend Four most(Four a, Four b) { return Four(_mm_max_ps(a.values_, b.values_)); }
    friend bool is_any_above(Four a, Four b) {
        return _mm_movemask_ps(_mm_cmpgt_ps(a.values_, b.values_)) != 0;
    }

private:
    explicit Four(__m128 values) : values_(values) {}
    __m128 values_;
};

#else

class Four {
public:
    static constexpr int lanes = 4;

    Four(float value) { values_.fill(value); }
    static Four counted_from(float first) { return Four(first) + Four(std::array{0.0F, 1.0F, 2.0F, 3.0F}); }
    static Four load(float const* from) { return Four(std::array{from[0], from[1], from[2], from[3]}); }
    Four reversed() const { return Four(std::array{values_[3], values_[2], values_[1], values_[0]}); }
    void store(float* to) const { std::copy_n(values_.data(), lanes, to); }

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
        return !std::ranges::equal(a.values_, b.values_, std::less_equal<>());
    }

private:
    explicit Four(std::array<float, lanes> values) : values_(values) {}
    template <class Combine>
    static Four each(Four a, Four b, Combine combine) {
        for (std::size_t k = 0; k < lanes; ++k) a.values_[k] = combine(a.values_[k], b.values_[k]);
        return a;
    }
    std::array<float, lanes> values_;
};

#endif

} // namespace qv::render
