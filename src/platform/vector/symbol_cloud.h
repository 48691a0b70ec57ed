// Many symbols of one kind, as few shapes: those on the same pixel are one, and neighbours in a row run
// together.
#pragma once

#include "platform/raster/pixels.h"
#include "render/DrawSurface.h"

#include <vector>

namespace qv::vector {

/// One symbol, or the stretch that it covers when moved `length` pixels to the right.
struct SymbolRun {
    PixelPoint centre; // a whole number is the centre of a pixel
    double length = 0;
};

class SymbolCloud {
public:
    /// Centres beyond the box are left out.
    explicit SymbolCloud(raster::PixelBox const& visible) : visible_(visible) {}

    void add(PixelPoint centre);
    /// A few symbols keep their exact places. Of many, neighbours closer than `gap` pixels run together.
    std::vector<SymbolRun> runs(double gap) const;

private:
    void count_by_pixel();
    void mark(PixelPoint centre);
    std::vector<SymbolRun> rows(int step, double gap) const;

    raster::PixelBox visible_;
    std::vector<PixelPoint> centres_; // while they are few
    std::vector<bool> pixels_;        // afterwards
};

} // namespace qv::vector
