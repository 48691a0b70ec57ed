// What a RasterSurface is made of: its pixels, its clip and the shapes being drawn.
#pragma once

#include "qvgraph/RasterSurface.h"
#include "raster/polygon.h"
#include "raster/shape_layers.h"
#include "raster/shared_pixels.h"
#include "raster/symbol_sprites.h"

namespace qv::raster {

struct RasterSurface::Canvas {
    SharedPixels pixels;
    PixelBox clip = pixels.read().bounds(); // always within the pixels
    ShapeLayers layers;
    int open_shapes = 0;
    PolygonFiller filler;
    SymbolStamper stamper;
    ColumnBand band;
    std::vector<PixelPoint> points; // of the polyline or batch at hand, in pixels
    std::vector<SegmentPart> parts;

    /// The mask of the shape in this colour, or of the pixels to invert.
    CoverageMask& mask(DrawState const& state, Color color) {
        return mask(state, translucent(pixel_value(color), state.alpha));
    }
    /// The same for text, which is always opaque.
    CoverageMask& text_mask(DrawState const& state) { return mask(state, pixel_value(state.ForeColor)); }
    /// Whether whole pixels in a colour may be written without a mask.
    bool paints_at_once(DrawState const& state) const {
        return state.alpha == opaque && paints_text_at_once(state);
    }
    bool paints_text_at_once(DrawState const& state) const {
        return open_shapes == 0 && state.draw_mode != DrawMode::Invert;
    }
    /// Ends one operation: paints what it covered, unless a shape is open.
    void finish() {
        if (open_shapes == 0) layers.paint(pixels);
    }
    /// Before pixels are written past the masks: what was drawn earlier must lie below.
    void paint_open_shapes() {
        drop_what_failed();
        layers.paint(pixels);
    }
    /// Outside of shapes only an operation that has failed leaves a mask.
    void drop_what_failed() {
        if (open_shapes == 0) layers.drop();
    }

private:
    CoverageMask& mask(DrawState const& state, std::uint32_t paint) {
        return layers.mask(state.draw_mode == DrawMode::Invert ? Paint{} : Paint{paint}, pixels);
    }
};

/// Whether edges are smooth: inverting is exact only with whole pixels.
inline Edge edge_of(DrawState const& state) {
    return state.Smooth && state.draw_mode != DrawMode::Invert ? Edge::Smooth : Edge::Whole;
}

/// Whole pixels know no half ones: there a pen has a whole width too.
inline Pen pen_of(DrawSurface const& surface) {
    double const width = surface.pen_pixels(surface.state.DrawWidth);
    const Edge edge = edge_of(surface.state);
    return {edge == Edge::Whole ? whole_pen(width) : width, surface.state.draw_style, edge};
}

} // namespace qv::raster
