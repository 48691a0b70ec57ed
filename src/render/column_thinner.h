// Lines of many points, thinned to what the columns of a surface can show.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/dense_columns.h"

#include <cstdint>
#include <vector>

namespace qv::render {

/// What is kept of the points in one column: so many that their polyline has the extremes of all, or so many
/// pieces of the line that no pixel shows a difference.
enum class Detail : std::uint8_t { Extremes, Pieces };

/// Collapses runs of consecutive points that fall into one column of the page. Columns are whole pixels;
/// points left and right of the visible box count as one column each.
class ColumnThinner {
public:
    struct Grid {
        double twips_per_pixel = 15;
        double low = 0; // visible range across the columns, twips
        double high = 0;
        Detail detail = Detail::Extremes;
    };
    /// Pieces have a place that is not a number between them.
    ColumnThinner(Grid const& grid, std::vector<Point>& thinned);

    void add(Point point);
    /// Adds a whole run known to lie in one column, x never falling.
    void add_run(PointRun const& run);
    /// Ends the line; the next point starts a new one.
    void flush();

    /// Column of a page coordinate, clamped to one column beyond the visible range.
    std::int64_t column(double x) const;
    /// Page coordinate at which a column begins.
    double column_start(std::int64_t column) const;

private:
    /// The points of a column of which the extremes are kept.
    struct Run {
        Point first, last;
        double lowest_y = 0, highest_y = 0;
        bool climbs = false, falls = false; // somewhere
        std::size_t count = 0;
        void add(Point point, double lowest, double highest);
    };

    void keep(Point point);
    void end_column();
    void hand_over_extremes();
    void hand_over_pieces();
    bool is_visible(std::int64_t column) const { return column > first_column_ && column < last_column_; }

    Detail detail_;
    double twips_per_pixel_;
    std::int64_t first_column_;
    std::int64_t last_column_;
    std::vector<Point>& thinned_;
    std::int64_t current_ = 0;
    // Of the points of the current column: the extremes, or all.
    Run run_;
    Point second_, third_;
    std::vector<double> x_, y_;
    DenseColumns dense_;
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
