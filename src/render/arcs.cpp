#include "render/arcs.h"

#include "document/selection.h"
#include "surface/whole_pixel.h"

#include <vector>

namespace qv::render {

void fill_polygon(DrawSurface& surface, std::span<PixelPoint const> corners, Color color) {
    const document::RestoreScope drawing(surface.state);
    surface.state.FillColor = surface.state.ForeColor = color;
    surface.state.fill_style = FillStyle::Solid;
    surface.state.draw_style = DrawStyle::None;
    surface.Polygon(corners);
}

void fill_outline(DrawSurface& surface, std::span<Point const> outline, Color color) {
    std::vector<PixelPoint> corners;
    corners.reserve(outline.size());
    for (const Point point : outline) corners.push_back(in_pixels(surface, point));
    fill_polygon(surface, corners, color);
}

} // namespace qv::render
