#include "raster/column_band.h"

#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::raster {
namespace {

constexpr int lanes = 16;       // rows computed at once
constexpr int steps = 255 * 16; // of distance in a pixel, in 16 bits
constexpr int fine = 12;        // further bits that a distance has while it changes from row to row

std::int64_t in_fine_steps(double pixels) {
    // Beyond the reach only "far" matters.
    return static_cast<std::int64_t>(std::clamp(pixels, -1e5, 1e5) * (steps << fine));
}

// What a row gets must not depend on the row a run begins at, so distances are exact sums of whole numbers.
struct Run {
    std::int32_t start; // distance in the first row, in fine steps
    std::int32_t gain;  // from row to row
    std::int16_t reach; // in steps
};

#ifdef __SSE2__
// 255 for the first lanes that count, 0 after them: the table from 16 - count on.
constexpr auto kept_lanes = [] {
    std::array<std::uint8_t, std::size_t{2} * lanes> table{};
    for (std::size_t i = 0; i < lanes; ++i) table[i] = 255;
    return table;
}();

// Written out, as compilers do not find the saturating steps to bytes.
void raise_run(std::uint8_t* rows, Run const& run, int count) {
    const __m128i gain = _mm_set1_epi32(run.gain), gains = _mm_slli_epi32(gain, 2);
    const __m128i twice = _mm_add_epi32(gain, gain);
    __m128i distance = _mm_add_epi32(_mm_set1_epi32(run.start),
                                     _mm_add_epi32(_mm_and_si128(gain, _mm_setr_epi32(0, -1, 0, -1)),
                                                   _mm_and_si128(twice, _mm_setr_epi32(0, 0, -1, -1))));
    auto const next = [&] {
        const __m128i four = _mm_srai_epi32(distance, fine);
        distance = _mm_add_epi32(distance, gains);
        return four;
    };
    const __m128i reach = _mm_set1_epi16(static_cast<std::int16_t>(run.reach + 8));
    auto const eight = [&] {
        const __m128i low = next(), high = next();
        const __m128i away = _mm_packs_epi32(low, high);
        const __m128i positive = _mm_max_epi16(away, _mm_subs_epi16(_mm_setzero_si128(), away));
        return _mm_srai_epi16(_mm_subs_epi16(reach, positive), 4);
    };
    const __m128i low = eight(), high = eight();
    const __m128i kept =
        _mm_and_si128(_mm_packus_epi16(low, high), _mm_loadu_si128(reinterpret_cast<__m128i const*>(
                                                       kept_lanes.data() + lanes - std::min(count, lanes))));
    auto* const target = reinterpret_cast<__m128i*>(rows);
    _mm_storeu_si128(target, _mm_max_epu8(_mm_loadu_si128(target), kept));
}
#else
void raise_run(std::uint8_t* rows, Run const& run, int count) {
    for (int k = 0; k < std::min(count, lanes); ++k) {
        int const distance = std::abs((run.start + k * run.gain) >> fine);
        int const coverage = std::clamp((run.reach - distance + 8) >> 4, 0, 255);
        rows[k] = std::max(rows[k], static_cast<std::uint8_t>(coverage));
    }
}
#endif

// Exchanges rows and columns of a 16 by 16 block. Interleaving both halves turns the eight bits of each
// byte's index by one; after four times the row bits stand where the column bits were.
void transpose(std::array<std::uint8_t, 256>& block) {
#ifdef __SSE2__
    __m128i rows[16], turned[16];
    std::memcpy(rows, block.data(), block.size());
    for (int round = 0; round < 2; ++round) {
        for (std::size_t k = 0; k < 8; ++k) {
            turned[2 * k] = _mm_unpacklo_epi8(rows[k], rows[k + 8]);
            turned[2 * k + 1] = _mm_unpackhi_epi8(rows[k], rows[k + 8]);
        }
        for (std::size_t k = 0; k < 8; ++k) {
            rows[2 * k] = _mm_unpacklo_epi8(turned[k], turned[k + 8]);
            rows[2 * k + 1] = _mm_unpackhi_epi8(turned[k], turned[k + 8]);
        }
    }
    std::memcpy(block.data(), rows, block.size());
#else
    std::array<std::uint8_t, 256> turned;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t k = 0; k < 128; ++k) turned[2 * k] = block[k], turned[2 * k + 1] = block[k + 128];
        for (std::size_t k = 0; k < 128; ++k) block[2 * k] = turned[k], block[2 * k + 1] = turned[k + 128];
    }
#endif
}

// Raises bytes, sixteen at a time where there are so many.
void raise_bytes(std::uint8_t* to, std::uint8_t const* from, int count) {
    int k = 0;
#ifdef __SSE2__
    for (; k + lanes <= count; k += lanes) {
        auto* const target = reinterpret_cast<__m128i*>(to + k);
        const __m128i some = _mm_loadu_si128(reinterpret_cast<__m128i const*>(from + k));
        _mm_storeu_si128(target, _mm_max_epu8(_mm_loadu_si128(target), some));
    }
#endif
    for (; k < count; ++k) to[k] = std::max(to[k], from[k]);
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

bool ColumnBand::cover(SteepLine const& line, PixelBox const& box) {
    // Of a steep line with few rows it is certain that it has few columns, too.
    constexpr int few_rows = 200;
    static_assert(few_rows / SteepLine::flattest + 3 * SteepLine::largest_reach < columns);
    int left = box.left, right = box.right;
    bool const is_short = line.bottom - line.top <= few_rows;
    if (!is_short || right - left > 1) {
        double const slope = line.along_x / line.along_y;
        double const half = line.reach / std::abs(line.along_y);
        double const x0 = line.x + (line.top - line.y) * slope;
        double const x1 = line.x + (line.bottom - 1 - line.y) * slope;
        double const from = std::min(x0, x1) - half, to = std::max(x0, x1) + half;
        if (to - from > columns - 1) return false;
        left = std::max(left, floor_int(from) + 1);
        right = std::min(right, floor_int(to) + 1);
    }
    int const top = std::max(box.top, line.top), bottom = std::min(box.bottom, line.bottom);
    if (left >= right || top >= bottom) return true;
    move_to(left, right);

    Run run{0, static_cast<std::int32_t>(in_fine_steps(-line.along_x)),
            static_cast<std::int16_t>(line.reach * steps)};
    // Where a column enters and leaves the line; of one almost upright every row counts.
    bool const leans = bottom - top > lanes && std::abs(line.along_x) * (line.bottom - line.top) > 0.1;
    double const rows_a_pixel = leans ? 1 / line.along_x : 0;
    double const rows_around = std::abs(line.reach * rows_a_pixel);
    for (int x = left; x < right; ++x) {
        // Distance at the line's first row.
        double const distance = (x - line.x) * line.along_y - (line.top - line.y) * line.along_x;
        int first = top, past = bottom;
        if (leans) {
            double const middle = line.top + distance * rows_a_pixel;
            first = std::max(top, floor_int(middle - rows_around));
            past = std::min(bottom, floor_int(middle + rows_around) + 1);
        }
        const std::int64_t at_top = in_fine_steps(distance);
        std::uint8_t* const bytes = column(x) - clip_.top;
        for (int y = first; y < past; y += lanes) {
            const std::int64_t start = at_top + static_cast<std::int64_t>(y - line.top) * run.gain;
            run.start = static_cast<std::int32_t>(std::clamp<std::int64_t>(start, -(1 << 30), 1 << 30));
            raise_run(bytes + y, run, past - y);
        }
    }
    touch(left, right, {top - clip_.top, bottom - clip_.top});
    return true;
}

void ColumnBand::cover(UprightLine const& line, PixelBox const& box) {
    int const left = std::max(box.left, floor_int(line.x - line.reach) + 1);
    int const right = std::min(box.right, floor_int(line.x + line.reach) + 1);
    // Rows of which any is covered, and those in between that lie beside the line.
    int const top = std::max(box.top, floor_int(line.top - line.reach) + 1);
    int const bottom = std::min(box.bottom, floor_int(line.bottom + line.reach) + 1);
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

void ColumnBand::cover(Capsule const& line, PixelBox const& box) {
    float const end = line.from_x + line.length * line.along_x;
    int const left = std::max(box.left, line.base_x + floor_int(std::min(line.from_x, end) - line.reach) + 1);
    int const right =
        std::min(box.right, line.base_x + floor_int(std::max(line.from_x, end) + line.reach) + 1);
    if (left >= right || box.top >= box.bottom) return;
    if (right - left > columns)
        return cover(line, {left, box.top, left + columns, box.bottom}),
               cover(line, {left + columns, box.top, right, box.bottom});
    move_to(left, right);
    for (int x = left; x < right; ++x) {
        std::uint8_t* const bytes = column(x) - clip_.top;
        for (int y = box.top; y < box.bottom; y += quad_size) {
            Quad coverage;
            line.cover_down(coverage, x, y);
            for (int k = box.bottom - y; k < quad_size; ++k) coverage[k] = 0;
            raise(bytes + y, coverage);
        }
    }
    touch(left, right, {box.top - clip_.top, box.bottom - clip_.top});
}

void ColumnBand::cover(int x, int top, std::span<std::uint8_t const> coverage) {
    int const first = std::max(top, clip_.top);
    int const past = std::min(top + static_cast<int>(coverage.size()), clip_.bottom);
    if (x < clip_.left || x >= clip_.right || first >= past) return;
    move_to(x, x + 1);
    raise_bytes(column(x) + (first - clip_.top), coverage.data() + (first - top), past - first);
    touch(x, x + 1, {first - clip_.top, past - clip_.top});
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
    for (int y = box.top; y < box.bottom; ++y)
        raise_bytes(mask_->row(y) + box.left,
                    block.data() + std::ptrdiff_t{group} * (y - top) + (box.left - x), box.width());
    mask_->touch(box);
}

} // namespace qv::raster
