// Lines of many points, thinned to what the columns of a surface can show.
#pragma once

#include "base/geometry.h"
#include "render/DrawSurface.h"

#include <cstdint>
#include <vector>

namespace qv::render {

/// Collapses a run of consecutive points that fall into one narrow column of the page into its first,
/// lowest, highest and last point, which cover the same pixels. Columns are whole pixels; points left and
/// right of the visible box count as one column each.
class ColumnThinner {
public:
    struct Grid {
        double twips_per_pixel = 15;
        double low = 0; // visible range across the columns, twips
        double high = 0;
    };
    ColumnThinner(Grid const& grid, std::vector<Point>& thinned);

    void add(Point point);
    /// Adds a whole run known to lie in one column.
    struct Run {
        Point first, last;
        double lowest_y = 0, highest_y = 0;
        std::size_t count = 0;
    };
    void add_run(Run const& run);
    /// Ends the line; the next point starts a new one.
    void flush();

    /// Column of a page coordinate, clamped to one column beyond the visible range.
    std::int64_t column(double x) const;
    /// Page coordinate at which a column begins.
    double column_start(std::int64_t column) const;

private:
    void start(Point point);

    double columns_per_twip_;
    std::int64_t first_column_;
    std::int64_t last_column_;
    double offset_;
    std::vector<Point>& thinned_;
    std::int64_t current_ = 0;
    Run run_;
    Point second_, third_;
};

/// A polyline in the surface's pen, thinned on its way there.
class ThinnedPolyline {
public:
    /// `visible` is what can be seen of the line, the pen's width included, in twips.
    ThinnedPolyline(DrawSurface& surface, Box const& visible);

    void add(Point point) {
        thinner_.add(point);
        hand_over_when_long();
    }
    /// Ends the line; the next point starts a new one.
    void finish();

    /// For callers that add whole runs; they call `hand_over_when_long` themselves.
    ColumnThinner& thinner() { return thinner_; }
    void hand_over_when_long();

private:
    DrawSurface& surface_;
    std::vector<Point> thinned_;
    ColumnThinner thinner_;
};

} // namespace qv::render
