// Strokes: segments drawn with a pen into a coverage mask.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "raster/column_band.h"
#include "raster/coverage_mask.h"
#include "raster/segment.h"

#include <span>

namespace qv::raster {

enum class Edge { Smooth, Whole }; // antialiased, or whole pixels only

struct Pen {
    double width = 1; // pixels
    DrawStyle style = DrawStyle::Solid;
    Edge edge = Edge::Smooth;
    bool operator==(Pen const&) const = default;
};

/// Lengths of the shown and hidden stretches of a dashed line in turn, in pen widths; a last 0, 0 means
/// nothing. Empty for a line without gaps.
std::span<int const> dash_lengths(DrawStyle style);

/// Whether a line of this style has gaps.
bool is_dashed(DrawStyle style);

/// Whether a dashed line shows at this pixel coordinate along its major axis. Counted from the page's
/// origin, so that the pieces of a split line show the dashes of the whole.
bool dash_shows(DrawStyle style, double width, int coordinate);

/// A segment as a capsule: coverage = clamp(width / 2 + 0.5 - distance, 0, 1). With whole edges a one-pixel
/// line has exactly one pixel for each step along its major axis. Points must be finite.
void stroke_segment(CoverageMask& mask, PixelBox const& clip, Segment const& segment, Pen const& pen);

/// Connected segments; points that are not finite break the line. The band is scratch space.
void stroke_polyline(CoverageMask& mask, PixelBox const& clip, std::span<PixelPoint const> points,
                     Pen const& pen, ColumnBand& band);

/// A segment of which only the pixels of a box are drawn.
struct SegmentPart {
    Segment segment;
    PixelBox box;
};

/// Parts of segments; each pixel in a part's box gets what `stroke_polyline` gives it for the whole segment.
void stroke_parts(CoverageMask& mask, PixelBox const& clip, std::span<SegmentPart const> parts,
                  Pen const& pen, ColumnBand& band);

/// Columns of pixels whose coverage is known, in turn.
void cover_columns(CoverageMask& mask, PixelBox const& clip, std::span<PixelColumn const> columns,
                   std::span<std::uint8_t const> coverage, ColumnBand& band);

/// An axis-parallel line between two pixels, both included, or a dot of the pen: whole pixels, square ends,
/// as boxes that `fill` covers or paints.
template <class Fill>
void stroke_snapped(Fill fill, PixelBox const& clip, PixelBox const& ends, Pen const& pen) {
    if (pen.style == DrawStyle::None) return;
    int const width = whole_pen(pen.width);
    const PixelBox wide{ends.left - width / 2, ends.top - width / 2, ends.right - width / 2 + width - 1,
                        ends.bottom - width / 2 + width - 1};
    const PixelBox box = intersection(wide, clip);
    if (!is_dashed(pen.style)) return fill(box);
    bool const flat = ends.width() >= ends.height();
    for (int along = flat ? box.left : box.top; along < (flat ? box.right : box.bottom); ++along)
        if (dash_shows(pen.style, pen.width, along))
            fill(intersection(box, flat ? PixelBox{along, box.top, along + 1, box.bottom}
                                        : PixelBox{box.left, along, box.right, along + 1}));
}

} // namespace qv::raster
