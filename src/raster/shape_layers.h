// ShapeLayers: the shapes being drawn, one a colour, until they are painted.
#pragma once

#include "raster/coverage_mask.h"
#include "raster/shared_pixels.h"

#include <memory>
#include <optional>
#include <vector>

namespace qv::raster {

/// What is done to the pixels of a shape: painted in a colour, or, without one, inverted.
using Paint = std::optional<std::uint32_t>;

class ShapeLayers {
public:
    /// The mask that collects the shape of this paint. Asking for one more paint than can be kept open at
    /// once paints the open ones first.
    CoverageMask& mask(Paint paint, SharedPixels& target);
    /// Paints the open shapes in the order in which their paints were first asked for.
    void paint(SharedPixels& target);
    /// Forgets the open shapes.
    void drop();
    bool empty() const { return open_ == 0; }

private:
    struct Layer {
        Paint paint;
        CoverageMask mask;
    };
    // Areas need two (fill and edge); each costs a byte a pixel.
    static constexpr std::size_t most_layers = 4;

    std::vector<std::unique_ptr<Layer>> layers_; // the first `open_` are in use
    std::size_t open_ = 0;
};

} // namespace qv::raster
