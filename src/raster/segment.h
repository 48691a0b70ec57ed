// Segments in pixels, and cutting them at a box before anything is drawn, whatever their length.
#pragma once

#include "raster/pixels.h"

#include <optional>

namespace qv::raster {

/// A straight line in pixels; a whole number is the centre of a pixel.
struct Segment {
    PixelPoint from;
    PixelPoint to;

    /// Whether it runs at least as far across as down, beyond what doubles can subtract too.
    bool is_flat() const { return std::abs(to.x / 4 - from.x / 4) >= std::abs(to.y / 4 - from.y / 4); }
};

/// The part of the segment within the box from the centres of its first to its last pixels, or nothing.
/// End points must be finite; enormous ones lose precision, never more.
std::optional<Segment> clipped(Segment const& segment, PixelBox const& box);

/// The same with a margin around the box that hides how the ends of a line of this width are cut.
std::optional<Segment> clipped_for_pen(Segment const& segment, PixelBox const& box, double width);

} // namespace qv::raster
