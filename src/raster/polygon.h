// PolygonFiller: fills polygons of any number of corners by the even-odd rule.
#pragma once

#include "raster/coverage_mask.h"
#include "raster/stroke.h"

#include <span>
#include <vector>

namespace qv::raster {

class PolygonFiller {
public:
    /// Covers the inside of the closed polygon. Smooth edges give a pixel the share of it that lies inside,
    /// whole ones all pixels whose centre does. Corners must be finite; those further away than
    /// `farthest_pixel` are taken to lie there.
    void fill(CoverageMask& mask, PixelBox const& clip, std::span<PixelPoint const> corners, Edge edge);

private:
    struct Slope;
    void add_edge(PixelPoint from, PixelPoint to, Edge edge);
    void add_share(Slope const& slope);
    void add_rows(Slope const& slope);
    static void add_row_share(float* row, double x, double next_x, double height);
    void add_centres(Slope const& slope);
    void raise(CoverageMask& mask) const;

    PixelBox box_;
    std::vector<float> changes_; // of coverage from one pixel to the next, row by row
};

} // namespace qv::raster
