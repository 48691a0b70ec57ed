#include "render/lines/nearest_rows.h"

#include "render/lines/four.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::render {
namespace {

constexpr int lanes = Four::lanes;
constexpr int group = 16; // rows that become coverage together
constexpr float far_away = 1e12F;
constexpr double cut = 4096; // pixels that an end may lie beyond the rows at hand

#ifdef __SSE2__

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

void cover_group(std::uint8_t* coverage, float const* squared, float reach) {
    for (int k = 0; k < group; ++k)
        coverage[k] = static_cast<std::uint8_t>(
            std::clamp((reach - std::sqrt(squared[k])) * 255.0F, 0.0F, 255.0F) + 0.5F);
}

#endif

// The part of a segment up to a distance across; the slope holds from either end.
void cut_columns(RowPlace& from, RowPlace& to, double reach) {
    double const slope = from.x == to.x ? 0 : (to.y - from.y) / (to.x - from.x);
    RowPlace const& near = std::abs(from.x) < std::abs(to.x) ? from : to;
    const RowPlace start = near;
    for (RowPlace* const place : {&from, &to}) {
        double const x = std::clamp(place->x, -reach, reach);
        if (x == place->x) continue;
        place->y = start.y + (x - start.x) * slope;
        place->x = x;
    }
}

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

// Rows as whole numbers, however far away.
int row_below(double row) {
    return floor_int(std::clamp(row, -farthest_pixel, farthest_pixel));
}

int row_above(double row) {
    return -row_below(-row);
}

} // namespace

NearestRows::NearestRows(int rows, double reach)
    : rows_(rows), reach_(reach), first_(rows), squared_(static_cast<std::size_t>(rows) + group, far_away) {}

NearestRows::Rows NearestRows::seen(Rows rows) const {
    return {std::max(rows.first, 0), std::min(rows.past, rows_)};
}

void NearestRows::approach(RowPlace from, RowPlace to) {
    approach_below(-HUGE_VAL, from, to);
}

void NearestRows::approach_below(double level, RowPlace from, RowPlace to) {
    if (std::abs(from.x) > reach_ || std::abs(to.x) > reach_) cut_columns(from, to, reach_);
    auto const [top, bottom] = std::minmax(from.y, to.y);
    approach({std::max(row_below(level) + 1, row_above(top - reach_)), row_below(bottom + reach_) + 1}, from,
             to);
}

void NearestRows::approach_above(double level, RowPlace from, RowPlace to) {
    if (std::abs(from.x) > reach_ || std::abs(to.x) > reach_) cut_columns(from, to, reach_);
    auto const [top, bottom] = std::minmax(from.y, to.y);
    approach({row_above(top - reach_), std::min(row_above(level), row_below(bottom + reach_) + 1)}, from, to);
}

void NearestRows::approach_bar(double away, double top, double bottom) {
    approach_bar({row_above(top - reach_), row_below(bottom + reach_) + 1}, away, top, bottom);
}

void NearestRows::approach_bar_below(double level, double away, double bottom) {
    approach_bar({row_below(level) + 1, row_below(bottom + reach_) + 1}, away, level, bottom);
}

void NearestRows::approach_bar_above(double level, double away, double top) {
    approach_bar({row_above(top - reach_), row_above(level)}, away, top, level);
}

// Rows are computed in groups.
void NearestRows::touch(Rows rows) {
    first_ = std::min(first_, rows.first);
    past_ =
        std::max(past_, std::min(rows_, rows.first + (rows.past - rows.first + lanes - 1) / lanes * lanes));
}

// Groups may go on behind the rows asked for, where the segment is as near as it is.
void NearestRows::approach(Rows rows, RowPlace from, RowPlace to) {
    rows = seen(rows);
    if (rows.empty()) return;
    if (std::min(from.y, to.y) < rows.first - cut || std::max(from.y, to.y) > rows.past + cut)
        cut_rows(from, to, rows.first - cut, rows.past + cut);
    touch(rows);
    auto const dx = static_cast<float>(to.x - from.x), dy = static_cast<float>(to.y - from.y);
    float const length = dx * dx + dy * dy, one = length > 0 ? 1 / length : 0;
    auto const away = static_cast<float>(-from.x);
    float const gain = dy * one, start = away * dx * one;
    Four y = Four::counted_from(static_cast<float>(rows.first - from.y));
    for (int row = rows.first; row < rows.past; row += lanes, y = y + Four(lanes)) {
        const Four part = least(most(y * Four(gain) + Four(start), Four(0)), Four(1));
        const Four across = Four(away) - part * Four(dx), down = y - part * Four(dy);
        float* const squared = squared_.data() + row;
        least(Four::load(squared), across * across + down * down).store(squared);
    }
}

void NearestRows::approach_bar(Rows rows, double away, double top, double bottom) {
    rows = seen(rows);
    if (rows.empty()) return;
    touch(rows);
    const Four across(static_cast<float>(away * away));
    const Four to_top(static_cast<float>(top - rows.first)),
        to_bottom(static_cast<float>(bottom - rows.first));
    Four y = Four::counted_from(0);
    for (int row = rows.first; row < rows.past; row += lanes, y = y + Four(lanes)) {
        const Four down = y - least(most(y, to_top), to_bottom);
        float* const squared = squared_.data() + row;
        least(Four::load(squared), across + down * down).store(squared);
    }
}

void NearestRows::take_coverage(std::vector<std::uint8_t>& coverage) {
    std::size_t const begin = coverage.size();
    auto const count = static_cast<std::size_t>(std::max(0, past_ - first_));
    coverage.resize(begin + (count + group - 1) / group * group);
    float* const squared = squared_.data() + first_;
    for (std::size_t k = 0; k < count; k += group)
        cover_group(coverage.data() + begin + k, squared + k, static_cast<float>(reach_));
    coverage.resize(begin + count);
    std::fill_n(squared, count + lanes, far_away);
    first_ = rows_;
    past_ = 0;
}

} // namespace qv::render
