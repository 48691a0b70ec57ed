#include "raster/column_band.h"

#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::raster {
namespace {

constexpr int lanes = 16;       // rows computed at once
constexpr int steps = 255 * 16; // of distance in a pixel, in 16 bits
using Lanes = std::array<std::int16_t, lanes>;

std::int16_t in_steps(float pixels) {
    // Beyond the reach only "far" matters, and sums with a ramp must not overflow.
    float const distance = pixels * static_cast<float>(steps);
    return static_cast<std::int16_t>(static_cast<int>(std::min(std::max(distance, -17000.0F), 17000.0F)));
}

// What the distance gains from the first of the lanes to each, in 16 bits before the point and 16 after it.
Lanes ramp_of(double gain) {
    int const step = static_cast<int>(gain * steps * 65536);
    Lanes ramp;
    for (int k = 0; k < lanes; ++k) ramp[k] = static_cast<std::int16_t>((k * step) >> 16);
    return ramp;
}

#ifdef __SSE2__
// 255 for the first lanes that count, 0 after them: the table from 16 - count on.
constexpr auto kept_lanes = [] {
    std::array<std::uint8_t, std::size_t{2} * lanes> table{};
    for (std::size_t i = 0; i < lanes; ++i) table[i] = 255;
    return table;
}();

// Written out, as compilers do not find the saturating steps to bytes.
__m128i covered(Lanes const& ramp, int half, __m128i start, __m128i reach) {
    const __m128i distance =
        _mm_add_epi16(_mm_loadu_si128(reinterpret_cast<__m128i const*>(ramp.data()) + half), start);
    const __m128i away = _mm_max_epi16(distance, _mm_sub_epi16(_mm_setzero_si128(), distance));
    return _mm_srai_epi16(_mm_sub_epi16(reach, away), 4);
}

void raise_run(std::uint8_t* rows, Lanes const& ramp, std::int16_t start, std::int16_t reach, int count) {
    const __m128i starts = _mm_set1_epi16(start);
    const __m128i rounded = _mm_set1_epi16(static_cast<std::int16_t>(reach + 8));
    const __m128i coverage =
        _mm_packus_epi16(covered(ramp, 0, starts, rounded), covered(ramp, 1, starts, rounded));
    const __m128i kept = _mm_and_si128(coverage, _mm_loadu_si128(reinterpret_cast<__m128i const*>(
                                                     kept_lanes.data() + lanes - std::min(count, lanes))));
    auto* const target = reinterpret_cast<__m128i*>(rows);
    _mm_storeu_si128(target, _mm_max_epu8(_mm_loadu_si128(target), kept));
}
#else
void raise_run(std::uint8_t* rows, Lanes const& ramp, std::int16_t start, std::int16_t reach, int count) {
    for (int k = 0; k < std::min(count, lanes); ++k) {
        int const coverage = std::clamp((reach - std::abs(ramp[k] + start) + 8) >> 4, 0, 255);
        rows[k] = std::max(rows[k], static_cast<std::uint8_t>(coverage));
    }
}
#endif

// Exchanges rows and columns of a 16 by 16 block. Interleaving both halves turns the eight bits of each
// byte's index by one; after four times the row bits stand where the column bits were.
void transpose(std::array<std::uint8_t, 256>& block) {
    std::array<std::uint8_t, 256> turned;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t k = 0; k < 128; ++k) turned[2 * k] = block[k], turned[2 * k + 1] = block[k + 128];
        for (std::size_t k = 0; k < 128; ++k) block[2 * k] = turned[k], block[2 * k + 1] = turned[k + 128];
    }
}

} // namespace

void ColumnBand::begin(CoverageMask& mask, PixelBox const& clip) {
    mask_ = &mask;
    clip_ = clip;
    height_ = (clip.height() + group - 1) / group * group + lanes;
    bytes_.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(height_));
    first_column_ = clip.left - 2 * columns;
    touched_.fill({height_, 0});
}

bool ColumnBand::cover(SteepLine const& line) {
    double const slope = line.along_x / line.along_y;
    double const half = line.reach / std::abs(line.along_y);
    double const x0 = line.x + (line.top - line.y) * slope;
    double const x1 = line.x + (line.bottom - 1 - line.y) * slope;
    int const left = std::max(clip_.left, floor_int(std::min(x0, x1) - half) + 1);
    int const right = std::min(clip_.right, floor_int(std::max(x0, x1) + half) + 1);
    if (right - left > columns) return false;
    if (left >= right) return true;
    move_to(left, right);

    const Lanes ramp = ramp_of(-line.along_x);
    const std::int16_t reach = in_steps(static_cast<float>(line.reach));
    int const rows = line.bottom - line.top;
    // Where a column enters and leaves the line; of one almost upright every row counts.
    bool const leans = std::abs(line.along_x) * rows > 0.1;
    double const rows_a_pixel = leans ? 1 / line.along_x : 0;
    double const rows_around = std::abs(line.reach * rows_a_pixel);
    for (int x = left; x < right; ++x) {
        // Distance at the first row; it falls by along_x a row.
        double const distance = (x - line.x) * line.along_y - (line.top - line.y) * line.along_x;
        int first = 0, past = rows;
        if (leans) {
            double const middle = distance * rows_a_pixel;
            first = std::max(0, floor_int(middle - rows_around));
            past = std::min(rows, floor_int(middle + rows_around) + 1);
        }
        std::uint8_t* const bytes = column(x) + (line.top - clip_.top);
        for (int k = first; k < past; k += lanes)
            raise_run(bytes + k, ramp, in_steps(static_cast<float>(distance - k * line.along_x)), reach,
                      past - k);
    }
    touch(left, right, {line.top - clip_.top, line.bottom - clip_.top});
    return true;
}

void ColumnBand::cover(UprightLine const& line) {
    int const left = std::max(clip_.left, floor_int(line.x - line.reach) + 1);
    int const right = std::min(clip_.right, floor_int(line.x + line.reach) + 1);
    // Rows of which any is covered, and those in between that lie beside the line.
    int const top = std::max(clip_.top, floor_int(line.top - line.reach) + 1);
    int const bottom = std::min(clip_.bottom, floor_int(line.bottom + line.reach) + 1);
    if (left >= right || top >= bottom) return;
    int const first = std::clamp(floor_int(line.top) + 1, top, bottom);
    int const past = std::clamp(floor_int(line.bottom) + 1, first, bottom);
    move_to(left, right);
    auto const coverage = [&](double distance) {
        return static_cast<std::uint8_t>(
            static_cast<int>(std::clamp(line.reach - distance, 0.0, 1.0) * 255 + 0.5));
    };
    for (int x = left; x < right; ++x) {
        double const aside = std::abs(x - line.x);
        std::uint8_t* const bytes = column(x) - clip_.top;
        auto const raise_end = [&](int y, double away) {
            bytes[y] = std::max(bytes[y], coverage(std::sqrt(aside * aside + away * away)));
        };
        for (int y = top; y < first; ++y) raise_end(y, line.top - y);
        for (int y = past; y < bottom; ++y) raise_end(y, y - line.bottom);
        std::uint8_t const beside = coverage(aside);
        for (int y = first; y < past; ++y) bytes[y] = std::max(bytes[y], beside);
    }
    touch(left, right, {top - clip_.top, bottom - clip_.top});
}

void ColumnBand::touch(int left, int right, Rows rows) {
    for (int g = (left - first_column_) / group; g <= (right - 1 - first_column_) / group; ++g) {
        Rows& touched = touched_[static_cast<std::size_t>(g)];
        touched.top = std::min(touched.top, rows.top);
        touched.bottom = std::max(touched.bottom, rows.bottom);
    }
}

void ColumnBand::move_to(int left, int right) {
    if (left >= first_column_ && right <= first_column_ + columns) return;
    flush();
    // Curves mostly run to the right: three quarters of what is free lie there.
    first_column_ = left - (columns - (right - left)) / 4;
}

void ColumnBand::flush() {
    for (std::size_t g = 0; g < touched_.size(); ++g) {
        if (touched_[g].top < touched_[g].bottom) flush_group(static_cast<int>(g) * group, touched_[g]);
        touched_[g] = {height_, 0};
    }
}

void ColumnBand::flush_group(int group_column, Rows rows) {
    int const x = first_column_ + group_column;
    Block block;
    for (int top = rows.top / group * group; top < rows.bottom; top += group) {
        for (int i = 0; i < group; ++i) {
            std::uint8_t* const from = column(x + i) + top;
            std::memcpy(block.data() + std::ptrdiff_t{group} * i, from, group);
            std::memset(from, 0, group);
        }
        transpose(block);
        raise_block(x, clip_.top + top, block);
    }
}

void ColumnBand::raise_block(int x, int top, Block const& block) {
    const PixelBox box = intersection({x, top, x + group, top + group}, clip_);
    if (box.empty()) return;
    bool const whole = box.width() == group;
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint8_t const* const from = block.data() + std::ptrdiff_t{group} * (y - top);
        std::uint8_t* const to = mask_->row(y);
        if (whole)
            for (int i = 0; i < group; ++i) to[x + i] = std::max(to[x + i], from[i]);
        else
            for (int i = box.left - x; i < box.right - x; ++i) to[x + i] = std::max(to[x + i], from[i]);
    }
    mask_->touch(box);
}

} // namespace qv::raster
