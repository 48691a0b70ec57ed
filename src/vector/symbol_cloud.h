// Many symbols of one kind, as few shapes: those on the same pixel are one, and neighbours in a row run
// together.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "raster/pixels.h"

#include <vector>

namespace qv::vector {

/// One symbol, or the stretch that it covers when moved `length` pixels to the right.
struct SymbolRun {
    PixelPoint centre; // a whole number is the centre of a pixel
    double length = 0;
};

/// How far runs may stand for the symbols of a cloud.
struct RunLimits {
    double gap = 1;              // neighbours in a row that lie no further apart run together, pixels
    int coarsest = 1;            // so many rows and columns may at most be drawn as one
    std::size_t welcome = 25000; // with more runs than this, rows are drawn as one where that is allowed
};

class SymbolCloud {
public:
    /// Centres beyond the box are left out.
    explicit SymbolCloud(raster::PixelBox const& visible) : visible_(visible) {}

    void add(PixelPoint centre);
    /// A few symbols keep their exact places; many come to lie on whole pixels.
    std::vector<SymbolRun> runs(RunLimits const& limits) const;

private:
    void count_by_pixel();
    void mark(PixelPoint centre);
    std::vector<SymbolRun> rows(int step, double gap) const;

    raster::PixelBox visible_;
    std::vector<PixelPoint> centres_; // while they are few
    std::vector<bool> pixels_;        // afterwards
};

} // namespace qv::vector
