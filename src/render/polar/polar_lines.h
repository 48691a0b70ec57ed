// Lines and areas of polar graphs: straight from point to point, cut at the outermost circle.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "render/polar/polar_map.h"

namespace qv::render {

/// Takes points in turn, in angle and distance, and draws the line through them in the surface's pen. One
/// without a place breaks it.
class PolarLine {
public:
    PolarLine(DrawSurface& surface, PolarMap const& map) : surface_(surface), map_(map) {}
    void add(double x, double y);
    void finish(); ///< draws what is left

private:
    void add_piece(Point from, Point to);
    void hand_over();

    DrawSurface& surface_;
    PolarMap map_;
    std::optional<Point> last_;
    std::vector<Point> piece_;
};

/// Draws the line through a data set's points, as an area also what lies between it and the centre.
void draw_polar_line(DrawSurface& surface, document::DataSet const& set, PolarMap const& map);

} // namespace qv::render
