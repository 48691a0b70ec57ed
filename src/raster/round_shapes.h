// Circles and ellipses in a coverage mask.
#pragma once

#include "raster/stroke.h"

namespace qv::raster {

/// An ellipse along the axes, in pixels.
struct Oval {
    PixelPoint centre;
    double radius_x = 0;
    double radius_y = 0;
};

/// Covers the inside. Position and radii must be finite, the radii not negative.
void fill_oval(CoverageMask& mask, PixelBox const& clip, Oval const& oval, Edge edge);
/// Covers a ring of the pen's width along the outline.
void stroke_oval(CoverageMask& mask, PixelBox const& clip, Oval const& oval, Pen const& pen);

} // namespace qv::raster
