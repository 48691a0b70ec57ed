// Lines of many points, thinned to what the columns of a surface can show.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/lines/column_grid.h"
#include "render/lines/dense_columns.h"
#include "render/lines/smooth_line.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qv::render {

/// Collapses runs of consecutive points that fall into one column of the page to its extremes, so that their
/// polyline spans what that of all spans.
class ColumnThinner {
public:
    ColumnThinner(ColumnGrid const& grid, std::vector<Point>& thinned) : grid_(grid), thinned_(thinned) {}

    void add(Point point);
    /// Adds a whole run known to lie in one column, x never falling.
    void add_run(PointRun const& run);
    /// Ends the line; the next point starts a new one.
    void flush();

private:
    /// The points of a column of which the extremes are kept.
    struct Run {
        Point first, last;
        double lowest_y = 0, highest_y = 0;
        bool climbs = false, falls = false; // somewhere
        std::size_t count = 0;
        void add(Point point, double lowest, double highest);
    };

    ColumnGrid const& grid_;
    std::vector<Point>& thinned_;
    std::int64_t current_ = 0;
    Run run_; // of the current column
    Point second_, third_;
};

/// A polyline in the surface's pen, thinned on its way there.
class ThinnedPolyline {
public:
    /// `visible` is what can be seen of the line, the pen's width included, in twips.
    ThinnedPolyline(DrawSurface& surface, Box const& visible);

    void add(Point point) {
        smooth_ ? smooth_->add(point) : in_parts_ ? columns_.add(point) : thinner_.add(point);
        hand_over_when_long();
    }
    /// Whether whole stretches may be added, of several columns, rather than runs.
    bool takes_stretches() const { return smooth_.has_value(); }
    /// The points must stay where they are until the line ends.
    void add_stretch(PointStretch const& stretch, scale::AxisMap const& x_map, scale::AxisMap const& y_map) {
        smooth_->add(stretch, x_map, y_map);
    }
    /// A whole run known to lie in one column, x never falling.
    void add_run(PointRun const& run) { in_parts_ ? columns_.add_run(run) : thinner_.add_run(run); }
    /// Ends the line; the next point starts a new one.
    void finish();
    void hand_over_when_long();

    ColumnGrid const& grid() const { return grid_; }

private:
    void hand_over_parts();

    DrawSurface& surface_;
    ColumnGrid grid_;
    bool in_parts_;
    std::vector<Point> thinned_;
    std::vector<LinePart> parts_;
    // One of them draws the line.
    ColumnThinner thinner_;
    DenseColumns columns_;
    std::optional<SmoothLine> smooth_;
};

} // namespace qv::render
