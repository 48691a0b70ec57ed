// Symbol sprites: the coverage of a symbol at each of a few places within a pixel, stamped for each centre.
#pragma once

#include "platform/raster/coverage_mask.h"
#include "platform/raster/polygon.h"
#include "platform/raster/stroke.h"

#include <optional>
#include <span>

namespace qv::raster {

/// A symbol in pixels. Its outline is drawn with the pen in the colour of its inside.
struct Symbol {
    SymbolShape shape = SymbolShape::Circle;
    double half_width = 0;
    double half_height = 0;
    Pen pen;
};

/// Covers one symbol around a finite centre.
void draw_symbol(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol, PixelPoint centre,
                 PolygonFiller& filler);

/// Covers a symbol around each centre, up to an eighth of a pixel off its place (with whole edges on the
/// nearest pixel). Centres that are not finite are left out.
void stamp_symbols(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol,
                   std::span<PixelPoint const> centres, PolygonFiller& filler);

} // namespace qv::raster
