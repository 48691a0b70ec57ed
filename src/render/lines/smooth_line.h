// A smooth line without gaps, part by part in the way that suits its points.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/lines/column_cover.h"
#include "render/lines/column_grid.h"
#include "scale/mapping.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace qv::render {

/// Since a pixel gets the largest coverage that any part of the line gives it, parts are drawn each on its
/// own: where many points lie in each column and x runs one way, by `ColumnCover`, elsewhere as a polyline.
class SmoothLine {
public:
    SmoothLine(DrawSurface& surface, ColumnGrid const& grid, SeenRows rows, double reach)
        : surface_(surface), grid_(grid), cover_(surface, grid, rows, reach) {}

    void add(Point place);
    /// Many points, which must stay where they are until the line ends; the maps are always the same.
    void add(PointStretch const& stretch, scale::AxisMap const& x_map, scale::AxisMap const& y_map);
    /// Ends the line; the next point starts a new one.
    void finish();

private:
    void draw_places();
    void draw_stretches();
    void draw_polyline();
    bool is_dense() const;
    void begin_polyline(Point place);

    DrawSurface& surface_;
    ColumnGrid const& grid_;
    ColumnCover cover_;
    std::optional<Point> last_;
    // Places of which x runs one way; the first is the last of what was drawn before.
    std::vector<double> x_, y_;
    std::vector<PointStretch> stretches_;
    scale::AxisMap const* x_map_ = nullptr;
    scale::AxisMap const* y_map_ = nullptr;
    std::vector<Point> polyline_;
};

} // namespace qv::render
