#include "raster/stroke.h"

#include "raster/capsule.h"
#include "raster/whole_line.h"

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

// Draws within a box, which leaves out pixels and changes none.
class CapsuleStroke {
public:
    CapsuleStroke(CoverageMask& mask, PixelBox const& box, Segment const& segment, Pen const& pen, bool flat)
        : mask_(mask), box_(box), pen_(pen), flat_(flat), dashed_(is_dashed(pen.style)),
          capsule_(decided(segment, pen), pen.width) {
        double const reach = pen.width / 2 + 0.5;
        top_ = floor_int(std::min(segment.from.y, segment.to.y) - reach) + 1;
        bottom_ = floor_int(std::max(segment.from.y, segment.to.y) + reach) + 1;
    }

    void draw() const { draw_rows(top_, bottom_); }

    // The same with the rows far from both ends drawn in the band, if there are enough of them.
    void draw_with(ColumnBand& band) const {
        Rows const middle = rows_of_middle();
        if (middle.top >= middle.bottom || !band.cover(steep_line(middle), box_)) return draw();
        draw_rows(top_, middle.top);
        draw_rows(middle.bottom, bottom_);
    }

    // The same with all rows in the band: for boxes of a few columns.
    void draw_in(ColumnBand& band, bool steep) const {
        Rows const middle = steep ? rows_of_middle() : Rows{};
        if (middle.top >= middle.bottom || !band.cover(steep_line(middle), box_))
            return band.cover(capsule_, with_rows(top_, bottom_));
        band.cover(capsule_, with_rows(top_, middle.top));
        band.cover(capsule_, with_rows(middle.bottom, bottom_));
    }

private:
    struct Rows {
        int top = 0;
        int bottom = 0;
    };

    // Where the ends do not show; empty when that is not worth a treatment of its own. The box has no say,
    // so that a part of the line has the pixels of the whole.
    Rows rows_of_middle() const {
        constexpr int worth_it = 16;
        float const end_y = capsule_.from_y + capsule_.length * capsule_.along_y;
        float const margin = capsule_.reach * std::abs(capsule_.along_x) + 0.01F;
        float const from = std::min(capsule_.from_y, end_y) + margin,
                    to = std::max(capsule_.from_y, end_y) - margin;
        int const top = std::max(top_, capsule_.base_y + floor_int(from) + 1);
        int const bottom = std::min(bottom_, capsule_.base_y + floor_int(to) + 1);
        return bottom - top < worth_it ? Rows{} : Rows{top, bottom};
    }

    SteepLine steep_line(Rows rows) const {
        return {capsule_.base_x + static_cast<double>(capsule_.from_x),
                capsule_.base_y + static_cast<double>(capsule_.from_y),
                capsule_.along_x,
                capsule_.along_y,
                capsule_.reach,
                rows.top,
                rows.bottom};
    }

    PixelBox with_rows(int top, int bottom) const {
        return intersection(box_, {box_.left, top, box_.right, bottom});
    }

    void draw_rows(int top, int bottom) const {
        top = std::max(top, box_.top);
        bottom = std::min(bottom, box_.bottom);
        if (top >= bottom) return;
        float const across = capsule_.length * capsule_.along_x;
        int const left =
            capsule_.base_x + floor_int(capsule_.from_x + std::min(0.0F, across) - capsule_.reach) + 1;
        bool const narrow = std::abs(across) + 2 * capsule_.reach <= quad_size;
        if (narrow && left >= box_.left && left + quad_size <= box_.right && !dashed_
            && pen_.edge == Edge::Smooth)
            return draw_block(PixelBox{left, top, left + quad_size, bottom});
        const RowReach reach(capsule_);
        for (int y = top; y < bottom; ++y)
            if (flat_ || !dashed_ || dash_shows(pen_.style, pen_.width, y)) draw_row(y, reach);
    }

    // A line that is nowhere wider than one block needs no search for its first pixel in each row.
    void draw_block(PixelBox const& box) const {
        for (int y = box.top; y < box.bottom; ++y) {
            Quad coverage;
            capsule_.cover_across(coverage, box.left, y);
            raise(mask_.row(y) + box.left, coverage);
        }
        mask_.touch(box);
    }

    void draw_row(int y, RowReach const& reach) const {
        float const row_y = static_cast<float>(y - capsule_.base_y) - capsule_.from_y;
        int const left =
            std::max(box_.left, capsule_.base_x + floor_int(capsule_.from_x + reach.first(row_y)) + 1);
        int const right =
            std::min(box_.right, capsule_.base_x + floor_int(capsule_.from_x + reach.last(row_y)) + 1);
        if (left >= right) return;
        std::uint8_t* const row = mask_.row(y);
        Quad coverage;
        for (int x = left; x < right; x += quad_size) {
            capsule_.cover_across(coverage, x, y);
            if (dashed_ || pen_.edge == Edge::Whole) finish(coverage, x);
            if (x + quad_size <= box_.right)
                raise(row + x, coverage);
            else
                for (int k = 0; k < box_.right - x; ++k) row[x + k] = std::max(row[x + k], coverage[k]);
        }
        mask_.touch(y, left,
                    std::min(box_.right, left + (right - left + quad_size - 1) / quad_size * quad_size));
    }

    void finish(Quad& coverage, int x) const {
        for (int k = 0; k < quad_size; ++k) {
            if (pen_.edge == Edge::Whole) coverage[k] = coverage[k] >= 128 ? 255 : 0;
            if (flat_ && !dash_shows(pen_.style, pen_.width, x + k)) coverage[k] = 0;
        }
    }

    CoverageMask& mask_;
    PixelBox const& box_;
    Pen const& pen_;
    bool flat_;
    bool dashed_;
    Capsule capsule_;
    int top_; // rows that it can cover
    int bottom_;
};

bool is_within(PixelPoint point, PixelBox const& box) {
    return point.x >= box.left && point.x < box.right && point.y >= box.top && point.y < box.bottom;
}

bool is_steep(Segment const& segment) {
    return std::abs(segment.to.y - segment.from.y)
           >= SteepLine::flattest * std::abs(segment.to.x - segment.from.x);
}

// Whether the band can draw a pen's lines.
bool is_plain(Pen const& pen) {
    return pen.edge == Edge::Smooth && !is_dashed(pen.style) && pen.style != DrawStyle::None
           && pen.width / 2 + 0.5 <= SteepLine::largest_reach;
}

bool is_upright(Segment const& segment) {
    return segment.from.x == segment.to.x;
}

UprightLine upright_line(Segment const& segment, Pen const& pen) {
    auto const [top, bottom] = std::minmax(segment.from.y, segment.to.y);
    return {segment.from.x, top, bottom, pen.width / 2 + 0.5};
}

void draw_part(CoverageMask& mask, PixelBox const& clip, Segment const& segment, PixelBox const& part,
               Pen const& pen, ColumnBand& band) {
    const PixelBox box = intersection(clip, part);
    if (box.empty() || pen.style == DrawStyle::None) return;
    bool const flat = segment.is_flat();
    if (pen.edge == Edge::Whole && pen.width <= 1) return stroke_segment(mask, box, segment, pen);
    // Cut at the clip like the whole line, as that may move pixels by what is lost in rounding.
    bool const is_inside = is_within(segment.from, clip) && is_within(segment.to, clip);
    auto const visible = is_inside ? segment : clipped_for_pen(segment, clip, pen.width);
    if (!visible) return;
    if (!is_plain(pen)) return CapsuleStroke(mask, box, *visible, pen, flat).draw();
    if (is_upright(*visible)) return band.cover(upright_line(*visible, pen), box);
    CapsuleStroke(mask, box, *visible, pen, flat).draw_in(band, is_steep(*visible));
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
    bool const plain = is_plain(pen);
    band.begin(mask, clip);
    auto const draw_plain = [&](Segment const& segment) {
        if (is_upright(segment)) return band.cover(upright_line(segment, pen), clip);
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

void stroke_parts(CoverageMask& mask, PixelBox const& clip, std::span<SegmentPart const> parts,
                  Pen const& pen, ColumnBand& band) {
    band.begin(mask, clip);
    for (SegmentPart const& part : parts) draw_part(mask, clip, part.segment, part.box, pen, band);
    band.flush();
}

void cover_columns(CoverageMask& mask, PixelBox const& clip, std::span<PixelColumn const> columns,
                   std::span<std::uint8_t const> coverage, ColumnBand& band) {
    band.begin(mask, clip);
    std::size_t begin = 0;
    for (PixelColumn const& column : columns) {
        auto const count = static_cast<std::size_t>(column.count);
        band.cover(column.x, column.top, coverage.subspan(begin, count));
        begin += count;
    }
    band.flush();
}

} // namespace qv::raster
