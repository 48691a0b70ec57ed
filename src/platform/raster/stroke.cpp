#include "platform/raster/stroke.h"

#include "platform/raster/whole_line.h"

#include <array>

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

constexpr int block = 8; // pixels computed at once

// A line with round ends. Positions are relative to its start, so that single precision is enough.
struct Capsule {
    float along_x, along_y; // unit vector
    float length;
    float reach; // half the width and half a pixel: here coverage ends
    Edge edge;

    void cover(std::array<std::uint8_t, block>& coverage, float x, float y) const {
        for (int k = 0; k < block; ++k) {
            float const px = x + static_cast<float>(k);
            float const t = std::min(std::max(px * along_x + y * along_y, 0.0F), length);
            float const dx = px - t * along_x;
            float const dy = y - t * along_y;
            float const inside = reach - std::sqrt(dx * dx + dy * dy);
            float const part = std::min(std::max(inside, 0.0F), 1.0F);
            coverage[k] = static_cast<std::uint8_t>(static_cast<int>(part * 255.0F + 0.5F));
        }
        if (edge == Edge::Whole)
            for (std::uint8_t& c : coverage) c = c >= 128 ? 255 : 0;
    }
};

// Where in one row a capsule can cover anything, relative to its start.
struct Reach {
    float left;
    float right;
};

Reach reach_in_row(Capsule const& capsule, float y) {
    float const end = capsule.length * capsule.along_x;
    const Reach whole{std::min(0.0F, end) - capsule.reach, std::max(0.0F, end) + capsule.reach};
    if (std::abs(capsule.along_y) < 1e-4F) return whole;
    float const middle = y * capsule.along_x / capsule.along_y;
    float const half = std::abs(capsule.reach / capsule.along_y);
    return {std::max(whole.left, middle - half), std::min(whole.right, middle + half)};
}

struct CapsuleStroke {
    CoverageMask& mask;
    PixelBox clip;
    Segment segment;
    Pen pen;
    bool flat;

    void draw() const {
        double const dx = segment.to.x - segment.from.x;
        double const dy = segment.to.y - segment.from.y;
        double const length = std::hypot(dx, dy);
        const Capsule capsule{static_cast<float>(length > 0 ? dx / length : 1),
                              static_cast<float>(length > 0 ? dy / length : 0), static_cast<float>(length),
                              static_cast<float>(pen.width / 2 + 0.5), pen.edge};
        double const reach = pen.width / 2 + 0.5;
        int const top = std::max(clip.top, whole_pixel(std::min(segment.from.y, segment.to.y) - reach));
        int const bottom =
            std::min(clip.bottom, whole_pixel(std::max(segment.from.y, segment.to.y) + reach) + 1);
        for (int y = top; y < bottom; ++y)
            if (flat || dash_shows(pen.style, pen.width, y)) draw_row(capsule, y);
    }

private:
    void draw_row(Capsule const& capsule, int y) const {
        auto const row_y = static_cast<float>(y - segment.from.y);
        const Reach reach = reach_in_row(capsule, row_y);
        int const left = std::max(clip.left, whole_pixel(segment.from.x + reach.left));
        int const right = std::min(clip.right, whole_pixel(segment.from.x + reach.right) + 1);
        if (left >= right) return;
        std::uint8_t* const row = mask.row(y);
        std::array<std::uint8_t, block> coverage;
        for (int x = left; x < right; x += block) {
            capsule.cover(coverage, static_cast<float>(x - segment.from.x), row_y);
            hide_gaps(coverage, x);
            for (int k = 0; k < std::min(block, right - x); ++k)
                row[x + k] = std::max(row[x + k], coverage[k]);
        }
        mask.touch(y, left, right);
    }

    void hide_gaps(std::array<std::uint8_t, block>& coverage, int x) const {
        if (!flat || dash_pattern(pen.style) == nullptr) return;
        for (int k = 0; k < block; ++k)
            if (!dash_shows(pen.style, pen.width, x + k)) coverage[k] = 0;
    }
};

} // namespace

bool dash_shows(DrawStyle style, double width, int coordinate) {
    DashPattern const* const pattern = dash_pattern(style);
    if (pattern == nullptr) return style != DrawStyle::None;
    int const unit = std::max(1, static_cast<int>(std::lround(width)));
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
        CapsuleStroke{mask, clip, *visible, pen, flat}.draw();
}

void stroke_polyline(CoverageMask& mask, PixelBox const& clip, std::span<PixelPoint const> points,
                     Pen const& pen) {
    for (std::size_t i = 1; i < points.size(); ++i)
        if (is_finite(points[i - 1]) && is_finite(points[i]))
            stroke_segment(mask, clip, {points[i - 1], points[i]}, pen);
}

void stroke_snapped(CoverageMask& mask, PixelBox const& clip, PixelBox const& ends, Pen const& pen) {
    if (pen.style == DrawStyle::None) return;
    int const width = static_cast<int>(std::lround(pen.width));
    const PixelBox wide{ends.left - width / 2, ends.top - width / 2, ends.right - width / 2 + width - 1,
                        ends.bottom - width / 2 + width - 1};
    const PixelBox box = intersection(wide, clip);
    if (dash_pattern(pen.style) == nullptr) return mask.fill(box);
    bool const flat = ends.width() >= ends.height();
    for (int along = flat ? box.left : box.top; along < (flat ? box.right : box.bottom); ++along)
        if (dash_shows(pen.style, pen.width, along))
            mask.fill(intersection(box, flat ? PixelBox{along, box.top, along + 1, box.bottom}
                                             : PixelBox{box.left, along, box.right, along + 1}));
}

} // namespace qv::raster
