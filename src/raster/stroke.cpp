#include "raster/stroke.h"

#include "raster/whole_line.h"

#include <array>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::raster {
namespace {

// Lengths of shown and hidden stretches in turn, in pen widths.
struct DashPattern {
    std::array<int, 6> lengths;
    int total() const {
        int sum = 0;
        for (int const length : lengths) sum += length;
        return sum;
    }
};

DashPattern const* dash_pattern(DrawStyle style) {
    static constexpr std::array patterns{
        DashPattern{{6, 3, 0, 0, 0, 0}}, // Dash
        DashPattern{{2, 2, 0, 0, 0, 0}}, // Dot
        DashPattern{{6, 2, 2, 2, 0, 0}}, // DashDot
        DashPattern{{6, 2, 2, 2, 2, 2}}, // DashDotDot
    };
    int const row = static_cast<int>(style) - static_cast<int>(DrawStyle::Dash);
    return row >= 0 && row < static_cast<int>(patterns.size()) ? &patterns[static_cast<std::size_t>(row)]
                                                               : nullptr;
}

constexpr int block = 4; // pixels computed at once: as many as a thin line crosses in a row
using Block = std::array<std::uint8_t, block>;

// Raises a block of neighbouring pixels.
void raise(std::uint8_t* pixels, Block const& coverage) {
#ifdef __SSE2__
    int below, above;
    std::memcpy(&below, pixels, block);
    std::memcpy(&above, coverage.data(), block);
    below = _mm_cvtsi128_si32(_mm_max_epu8(_mm_cvtsi32_si128(below), _mm_cvtsi32_si128(above)));
    std::memcpy(pixels, &below, block);
#else
    for (int k = 0; k < block; ++k) pixels[k] = std::max(pixels[k], coverage[k]);
#endif
}

// A line with round ends, and a pixel near its start from which positions are counted, so that single
// precision is enough.
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

    // Coverage of a block of pixels from (x, y), relative to the line's start.
    void cover(Block& coverage, float x, float y) const {
#ifdef __SSE2__
        // Written out: compilers unroll a loop this short instead of using vectors.
        const __m128 px = _mm_add_ps(_mm_set1_ps(x), _mm_setr_ps(0, 1, 2, 3));
        const __m128 ux = _mm_set1_ps(along_x), uy = _mm_set1_ps(along_y), py = _mm_set1_ps(y);
        const __m128 behind = _mm_add_ps(_mm_mul_ps(px, ux), _mm_mul_ps(py, uy));
        const __m128 t = _mm_min_ps(_mm_max_ps(behind, _mm_setzero_ps()), _mm_set1_ps(length));
        const __m128 dx = _mm_sub_ps(px, _mm_mul_ps(t, ux)), dy = _mm_sub_ps(py, _mm_mul_ps(t, uy));
        const __m128 distance = _mm_sqrt_ps(_mm_add_ps(_mm_mul_ps(dx, dx), _mm_mul_ps(dy, dy)));
        const __m128 inside = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(reach), distance), _mm_set1_ps(255));
        // Rounds; the two steps to bytes clamp.
        const __m128i words =
            _mm_packs_epi32(_mm_cvtps_epi32(_mm_min_ps(inside, _mm_set1_ps(255))), _mm_setzero_si128());
        int const bytes = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
        std::memcpy(coverage.data(), &bytes, block);
#else
        for (int k = 0; k < block; ++k) {
            float const px = x + static_cast<float>(k);
            float const t = std::clamp(px * along_x + y * along_y, 0.0F, length);
            float const dx = px - t * along_x, dy = y - t * along_y;
            float const part = std::clamp(reach - std::sqrt(dx * dx + dy * dy), 0.0F, 1.0F);
            coverage[k] = static_cast<std::uint8_t>(part * 255.0F + 0.5F);
        }
#endif
    }
};

// Of two pixels exactly half a width away on either side a line without a smooth edge takes one, the same
// that the sides of a box do: the left or upper for an even width, the right or lower for an odd one. So a
// level line has no row too many.
Segment decided(Segment const& segment, Pen const& pen) {
    if (pen.edge == Edge::Smooth) return segment;
    double const aside = (whole_pen(pen.width) % 2 == 0 ? -1 : 1) / 512.0;
    return {{segment.from.x + aside, segment.from.y + aside}, {segment.to.x + aside, segment.to.y + aside}};
}

// The part of each row that a capsule can cover, from its start; y counts from there as well.
struct RowReach {
    float left, right; // of the whole capsule
    float slope = 0;   // of its middle line, across for a row
    float half = 1e9F; // around the middle line

    explicit RowReach(Capsule const& capsule) {
        float const end = capsule.length * capsule.along_x;
        left = std::min(0.0F, end) - capsule.reach;
        right = std::max(0.0F, end) + capsule.reach;
        if (std::abs(capsule.along_y) < 1e-4F) return;
        slope = capsule.along_x / capsule.along_y;
        half = std::abs(capsule.reach / capsule.along_y);
    }
    float first(float y) const { return std::max(left, y * slope - half); }
    float last(float y) const { return std::min(right, y * slope + half); }
};

class CapsuleStroke {
public:
    CapsuleStroke(CoverageMask& mask, PixelBox const& clip, Segment const& segment, Pen const& pen, bool flat)
        : mask_(mask), clip_(clip), pen_(pen), flat_(flat), dashed_(is_dashed(pen.style)),
          capsule_(decided(segment, pen), pen.width) {
        double const reach = pen.width / 2 + 0.5;
        top_ = std::max(clip.top, floor_int(std::min(segment.from.y, segment.to.y) - reach) + 1);
        bottom_ = std::min(clip.bottom, floor_int(std::max(segment.from.y, segment.to.y) + reach) + 1);
    }

    void draw() const { draw_rows(top_, bottom_); }

    // The same with the rows far from both ends drawn in the band, if there are enough of them.
    void draw_with(ColumnBand& band) const {
        constexpr int worth_it = 16;
        float const end_y = capsule_.from_y + capsule_.length * capsule_.along_y;
        float const margin = capsule_.reach * std::abs(capsule_.along_x) + 0.01F;
        float const from = std::min(capsule_.from_y, end_y) + margin,
                    to = std::max(capsule_.from_y, end_y) - margin;
        int const top = std::max(top_, capsule_.base_y + floor_int(from) + 1);
        int const bottom = std::min(bottom_, capsule_.base_y + floor_int(to) + 1);
        if (bottom - top < worth_it || !band.cover(middle(top, bottom))) return draw();
        draw_rows(top_, top);
        draw_rows(bottom, bottom_);
    }

private:
    SteepLine middle(int top, int bottom) const {
        return {capsule_.base_x + static_cast<double>(capsule_.from_x),
                capsule_.base_y + static_cast<double>(capsule_.from_y),
                capsule_.along_x,
                capsule_.along_y,
                capsule_.reach,
                top,
                bottom};
    }

    void draw_rows(int top, int bottom) const {
        if (top >= bottom) return;
        float const across = capsule_.length * capsule_.along_x;
        int const left =
            capsule_.base_x + floor_int(capsule_.from_x + std::min(0.0F, across) - capsule_.reach) + 1;
        bool const narrow = std::abs(across) + 2 * capsule_.reach <= block;
        if (narrow && left >= clip_.left && left + block <= clip_.right && !dashed_
            && pen_.edge == Edge::Smooth)
            return draw_block(PixelBox{left, top, left + block, bottom});
        const RowReach reach(capsule_);
        for (int y = top; y < bottom; ++y)
            if (flat_ || !dashed_ || dash_shows(pen_.style, pen_.width, y)) draw_row(y, reach);
    }

    // A line that is nowhere wider than one block needs no search for its first pixel in each row.
    void draw_block(PixelBox const& box) const {
        float const x = static_cast<float>(box.left - capsule_.base_x) - capsule_.from_x;
        for (int y = box.top; y < box.bottom; ++y) {
            Block coverage;
            capsule_.cover(coverage, x, static_cast<float>(y - capsule_.base_y) - capsule_.from_y);
            raise(mask_.row(y) + box.left, coverage);
        }
        mask_.touch(box);
    }

    void draw_row(int y, RowReach const& reach) const {
        float const row_y = static_cast<float>(y - capsule_.base_y) - capsule_.from_y;
        int const left =
            std::max(clip_.left, capsule_.base_x + floor_int(capsule_.from_x + reach.first(row_y)) + 1);
        int const right =
            std::min(clip_.right, capsule_.base_x + floor_int(capsule_.from_x + reach.last(row_y)) + 1);
        if (left >= right) return;
        std::uint8_t* const row = mask_.row(y);
        Block coverage;
        for (int x = left; x < right; x += block) {
            capsule_.cover(coverage, static_cast<float>(x - capsule_.base_x) - capsule_.from_x, row_y);
            if (dashed_ || pen_.edge == Edge::Whole) finish(coverage, x);
            if (x + block <= clip_.right)
                raise(row + x, coverage);
            else
                for (int k = 0; k < clip_.right - x; ++k) row[x + k] = std::max(row[x + k], coverage[k]);
        }
        mask_.touch(y, left, std::min(clip_.right, left + (right - left + block - 1) / block * block));
    }

    void finish(Block& coverage, int x) const {
        for (int k = 0; k < block; ++k) {
            if (pen_.edge == Edge::Whole) coverage[k] = coverage[k] >= 128 ? 255 : 0;
            if (flat_ && !dash_shows(pen_.style, pen_.width, x + k)) coverage[k] = 0;
        }
    }

    CoverageMask& mask_;
    PixelBox const& clip_;
    Pen const& pen_;
    bool flat_;
    bool dashed_;
    Capsule capsule_;
    int top_;
    int bottom_;
};

bool is_within(PixelPoint point, PixelBox const& box) {
    return point.x >= box.left && point.x < box.right && point.y >= box.top && point.y < box.bottom;
}

bool is_steep(Segment const& segment) {
    return std::abs(segment.to.y - segment.from.y)
           >= SteepLine::flattest * std::abs(segment.to.x - segment.from.x);
}

} // namespace

std::span<int const> dash_lengths(DrawStyle style) {
    DashPattern const* const pattern = dash_pattern(style);
    return pattern == nullptr ? std::span<int const>() : pattern->lengths;
}

bool is_dashed(DrawStyle style) {
    return dash_pattern(style) != nullptr;
}

bool dash_shows(DrawStyle style, double width, int coordinate) {
    DashPattern const* const pattern = dash_pattern(style);
    if (pattern == nullptr) return style != DrawStyle::None;
    int const unit = whole_pen(width);
    int const period = pattern->total() * unit;
    int rest = ((coordinate % period) + period) % period;
    for (std::size_t i = 0; i < pattern->lengths.size(); ++i) {
        rest -= pattern->lengths[i] * unit;
        if (rest < 0) return i % 2 == 0;
    }
    return false;
}

void stroke_segment(CoverageMask& mask, PixelBox const& clip, Segment const& segment, Pen const& pen) {
    if (pen.style == DrawStyle::None) return;
    bool const flat = segment.is_flat();
    if (pen.edge == Edge::Whole && pen.width <= 1) {
        walk_whole_line(clip, segment, [&](int x, int y) {
            if (dash_shows(pen.style, pen.width, flat ? x : y)) mask.raise(x, y, 255);
        });
        return;
    }
    if (auto const visible = clipped_for_pen(segment, clip, pen.width))
        CapsuleStroke(mask, clip, *visible, pen, flat).draw();
}

void stroke_polyline(CoverageMask& mask, PixelBox const& clip, std::span<PixelPoint const> points,
                     Pen const& pen, ColumnBand& band) {
    bool const plain = pen.edge == Edge::Smooth && !is_dashed(pen.style) && pen.style != DrawStyle::None
                       && pen.width / 2 + 0.5 <= SteepLine::largest_reach;
    band.begin(mask, clip);
    auto const draw_plain = [&](Segment const& segment) {
        // Of dense lines most pieces are upright.
        if (segment.from.x == segment.to.x) {
            auto const [top, bottom] = std::minmax(segment.from.y, segment.to.y);
            return band.cover(UprightLine{segment.from.x, top, bottom, pen.width / 2 + 0.5});
        }
        bool const steep = is_steep(segment);
        const CapsuleStroke stroke(mask, clip, segment, pen, !steep);
        steep ? stroke.draw_with(band) : stroke.draw();
    };
    // Most points of a curve lie within the clip, so that nothing needs cutting.
    bool was_inside = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        bool const inside = plain && is_within(points[i], clip);
        if (inside && was_inside)
            draw_plain({points[i - 1], points[i]});
        else if (i > 0 && is_finite(points[i - 1]) && is_finite(points[i])) {
            const Segment segment{points[i - 1], points[i]};
            if (!plain)
                stroke_segment(mask, clip, segment, pen);
            else if (auto const visible = clipped_for_pen(segment, clip, pen.width))
                draw_plain(*visible);
        }
        was_inside = inside;
    }
    band.flush();
}

} // namespace qv::raster
