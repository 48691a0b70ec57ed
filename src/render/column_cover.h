// What a smooth line without gaps covers of one column of pixels and those beside it, computed row by row.
#pragma once

#include "document/RangeSummary.h"
#include "qvgraph/DrawSurface.h"
#include "render/column_grid.h"
#include "render/nearest_rows.h"
#include "scale/mapping.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace qv::render {

/// Consecutive points that lie next to one another in memory.
struct PointStretch {
    double const* x;
    double const* y;
    std::size_t count;
    document::RangeSummary const* summary; // of the y, if there is one
    std::size_t summary_place;             // of the first of them
};

/// Points of one column in their order; on the page x only rises or only falls.
struct ColumnPoints {
    std::int64_t column;
    std::span<PointStretch const> stretches;
    scale::AxisMap const* x_map; // nullptr: the points are places on the page
    scale::AxisMap const* y_map;
    bool rises;
    /// Levels of y that nearer parts of the line reach in the columns left and right.
    std::array<std::optional<document::ValueRange>, 2> known_beside;
};

/// Columns of pixels, each with the coverage of its rows.
struct CoveredColumns {
    std::vector<PixelColumn> columns;
    std::vector<std::uint8_t> coverage;
    bool is_large() const { return coverage.size() >= std::size_t{1} << 14; }
    void clear() {
        columns.clear();
        coverage.clear();
    }
};

/// Seen from the centre of a pixel, the nearest place of a line in any row is where the line, followed away
/// from that centre, reaches the row for the first time. So only those segments are looked at that leave the
/// levels reached so far, and only in the rows beyond; most points are passed over by their ranges.
class ColumnCover {
public:
    static constexpr double widest_reach = 8; // pixels; beyond, too many columns see each segment

    /// Sizes of a pixel in twips; the rows that can be seen; where a pen covers nothing any more, in pixels.
    ColumnCover(ColumnGrid const& grid, double pixel_width, double pixel_height, int first_row, int rows,
                double reach);
    void draw(ColumnPoints const& points, CoveredColumns& covered);

private:
    /// The levels reached on the way from some place, and the rows they lie at.
    struct Way {
        document::ValueRange levels;
        double row_of_low, row_of_high;
        int first, past;   // the columns that look on
        double from, ends; // where, and how far from there the line is out of reach, pixels across
    };
    /// A point: its stretch, and its place there.
    struct Place {
        std::size_t stretch, point;
    };

    double x_of(PointStretch const& stretch, std::size_t i) const;
    double row_of(double level) const;
    RowPlace place(PointStretch const& stretch, std::size_t i) const;
    Place find_middle() const;
    void draw_middle();
    void draw_side(bool right);
    Way begin_way(Place start, int first, int past, double from) const;
    void approach(RowPlace from, RowPlace to, int first_column, int past_column, double above, double below);
    void reach(Way& way, RowPlace from, RowPlace to, double level);
    /// Follows the points from one on to the visit's end; false once they are out of reach.
    template <bool forwards>
    void follow(Way& way, Place start);
    template <bool forwards>
    bool follow_stretch(Way& way, PointStretch const& stretch, std::size_t first, std::size_t past,
                        RowPlace const* before);
    template <bool forwards>
    std::size_t pass_over(Way& way, PointStretch const& stretch, std::size_t first, std::size_t past);

    ColumnGrid const& grid_;
    double columns_per_twip_, rows_per_twip_;
    int first_row_, rows_;
    double reach_;
    int beside_; // columns to each side that see the points
    std::vector<NearestRows> nearest_;
    ColumnPoints const* points_ = nullptr; // being drawn
    double middle_ = 0;                    // of their column, twips
    std::size_t points_that_meet_ = 0;     // at most so many may lie within a hairbreadth
};

} // namespace qv::render
