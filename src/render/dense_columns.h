// What a dense line covers: of the many points that fall into one column of pixels, the few pieces of the
// line that lie nearest to the pixels.
#pragma once

#include "qvgraph/geometry.h"
#include "scale/mapping.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace qv::render {

/// Consecutive points of a line: values, and how they reach the page. On the page x never changes its
/// direction.
struct PointRun {
    std::span<double const> x;
    std::span<double const> y;
    scale::AxisMap x_map;
    scale::AxisMap y_map;

    std::size_t size() const { return x.size(); }
    double x_at(std::size_t i) const { return x_map(x[i]); }
    Point place(std::size_t i) const { return {x_map(x[i]), y_map(y[i])}; }
    PointRun part(std::size_t first, std::size_t past) const {
        return {x.subspan(first, past - first), y.subspan(first, past - first), x_map, y_map};
    }
};

/// The column of pixels that a run lies in, twips.
struct PixelColumn {
    std::int64_t number = 0;
    double centre = 0;
};

/// Thins runs without a change to any pixel.
///
/// Seen from a pixel's centre, the nearest place of the line in any row is where the line, followed away from
/// that centre, reaches the row for the first time: what comes later in that row lies further away. So only
/// those pieces count at which the line, followed from the middle of its column to either side, rises above
/// or falls below all before; and, for the pixels beside the column, the same, followed inwards from its
/// sides. What a neighbouring column reaches is nearer to the pixels there.
class DenseColumns {
public:
    /// The pieces are polylines with a place that is not a number between them.
    explicit DenseColumns(std::vector<Point>& pieces) : pieces_(pieces) {}

    void add(PointRun const& run, PixelColumn const& column);
    /// Ends the line.
    void finish();

private:
    /// y values, from the smallest to the largest.
    struct Range {
        double low, high;
    };
    /// A stretch of the line; x is on the page, y a value.
    struct Piece {
        Point from, to;
    };
    /// The pieces that rise above, and those that fall below, all before.
    struct Records {
        std::vector<Piece> rising, falling;
    };
    class Walk;
    /// Where the run before ended.
    struct End {
        Point place; // on the page
        scale::AxisMap y_map;
        std::int64_t column;
        std::int64_t next_column; // on the side at which the line left it
        Range range;
        bool is_dense;
    };

    Range add_sparse(PointRun const& run);
    Range add_dense(PointRun const& run, PixelColumn const& column);
    Range measure(PointRun const& run, std::size_t first, std::size_t past);
    void draw(Records& records, scale::AxisMap const& y_map, std::optional<Range> hidden);
    void draw(std::vector<Piece> const& pieces, scale::AxisMap const& y_map);
    void line(Point from, Point to);

    std::vector<Point>& pieces_;
    std::vector<Range> units_; // the ranges of a few points each
    Records middle_, near_side_, far_side_;

    std::optional<End> last_;
    Records waiting_; // on the side where the run before ended, until it is known what hides them
};

} // namespace qv::render
