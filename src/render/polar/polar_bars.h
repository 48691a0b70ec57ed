// Bars of polar graphs: wedges as wide as values say, rays as wide as millimetres say, and lying ones, which
// are parts of rings.
#pragma once

#include "render/bars/bar_places.h"
#include "render/polar/polar_map.h"
#include "render/polar/sector.h"

#include <functional>
#include <optional>
#include <vector>

namespace qv::render {

/// A bar where it can be seen. A ray has a width on the page, about a direction.
struct PolarBar {
    std::size_t point = 0;
    double shown = 0;      // the value that its length stands for: its own, or its share in percent
    Sector sector;         // of a ray: from one direction to the same
    double half_width = 0; // of a ray, twips
    double aside = 0;      // of a ray from the direction, twips clockwise
    bool leads_out = true; // an upright one's end is the outer one

    bool is_ray() const { return half_width > 0; }
};

/// The outline of a bar.
std::vector<Point> bar_outline(PolarMap const& map, PolarBar const& bar, double twips_per_pixel);
/// The middle of its end.
Point end_of_bar(PolarMap const& map, PolarBar const& bar, bool horizontal);

/// Calls `take` for the bars of a data set in a polar graph of which something can be seen. Of bars that are
/// arranged as set, `stack` holds those below them and takes theirs.
void for_each_polar_bar(SeriesView const& view, BarPlan const& plan, BarStack& stack,
                        std::function<void(PolarBar const&)> const& take);

/// Fills and edges them. Of very many, those that lie on others are drawn with these.
void draw_polar_bars(SeriesView const& view, DrawSurface& surface, BarPlan const& plan, BarStack& stack);

/// The bar that a place lies on, the last drawn of several, and where the bar of a point is; only of bars
/// that are arranged.
std::optional<std::size_t> polar_bar_at(SeriesView const& view, BarPlan const& plan, Point place);
std::optional<Box> polar_bar_of(SeriesView const& view, BarPlan const& plan, std::size_t point);

/// The map of a view's polar graph.
PolarMap polar_map_of(SeriesView const& view);

} // namespace qv::render
