// Parts of rings about the centre of a polar graph: what stands between two angles and two distances.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "render/polar/polar_map.h"

#include <optional>
#include <vector>

namespace qv::render {

/// Between two directions, at most a whole turn apart, and two circles.
struct Sector {
    double from = 0, to = 0;     // radians counter-clockwise from rightwards
    double inner = 0, outer = 0; // twips
};

/// Values that a sector stands for.
struct SectorValues {
    double x1, x2, y1, y2;
};

/// What can be seen between two angles and two values of y, in any order; values of y without an end lead to
/// the centre or to the outermost circle. None where nothing can be seen, or a value is not a number.
std::optional<Sector> sector_between(PolarMap const& map, SectorValues const& values);

/// Its outline; a ring's goes round, along a seam, and back.
std::vector<Point> sector_outline(PolarMap const& map, Sector const& sector, double twips_per_pixel);

/// Whether a place lies in it, or no further than `reach` twips from it.
bool sector_holds(PolarMap const& map, Sector const& sector, Point place, double reach = 0);

/// The smallest box about it.
Box sector_box(PolarMap const& map, Sector const& sector);

/// The points of an arc.
std::vector<Point> arc_points(PolarMap const& map, double from, double to, double distance,
                              double twips_per_pixel);

} // namespace qv::render
