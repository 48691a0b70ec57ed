#include "render/grids/color_bar.h"

#include "render/grids/color_map.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "scale/mapping.h"

#include <algorithm>

namespace qv::render {

void draw_color_bar(document::Graph const& graph, DrawSurface& surface, document::Axis const& axis,
                    AxisFrame const& frame) {
    const ColorMap map = color_map(axis.AxisColors);
    const scale::AxisMap places = scale::y_map(graph, axis);
    double const inner = frame.own.line - frame.own.outward * frame.bar_width;
    double const left = std::min(inner, frame.own.line), right = std::max(inner, frame.own.line);
    auto const place = [&](std::size_t level) {
        return places.start + places.length * static_cast<double>(level) / ColorMap::size;
    };
    // A box includes the pixels of both its ends; the next colour takes back the one that they share.
    for (std::size_t i = 0; i < ColorMap::size; ++i) {
        auto const [top, bottom] = std::minmax({place(i), place(i + 1)});
        fill_box(surface, {left, top, right - left, bottom - top}, map.colors[i]);
    }
    const PenScope pen(surface, 1);
    surface.Line({left, frame.along_low()}, {right, frame.along_high()}, LineShape::Box, axis.AxisColor);
}

} // namespace qv::render
