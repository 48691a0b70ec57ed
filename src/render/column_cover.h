// What a smooth line without gaps covers, computed column of pixels by column.
#pragma once

#include "document/RangeSummary.h"
#include "qvgraph/DrawSurface.h"
#include "render/column_grid.h"
#include "render/nearest_rows.h"
#include "scale/mapping.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace qv::render {

/// Consecutive points of a line that lie next to one another in memory, at least one. Values are finite and
/// have places on the page.
struct PointStretch {
    std::span<double const> x;
    std::span<double const> y;
    document::ValueRange y_range;                    // of all y, or wider
    document::RangeSummary const* summary = nullptr; // of the y, if there is one
    std::size_t summary_place = 0;                   // of the first of them
};

/// Points in their order; x never falls, from one stretch to the next either.
struct RisingLine {
    std::span<PointStretch const> stretches;
    scale::AxisMap const& x_map;
    scale::AxisMap const& y_map;
};

/// What of a page can be seen, in rows of pixels.
struct SeenRows {
    int first, count;
};

/// Seen from the centre of a pixel, the nearest place of a line in any row is where the line, followed away
/// from that centre, reaches the row for the first time. So of each column only those points are looked at
/// that leave the levels reached so far, and bring some row nearer than it is; the others are passed over by
/// their ranges. Differences below 1/256 of a pixel are nothing.
class ColumnCover {
public:
    static constexpr double widest_reach = 8; // pixels; beyond, too many columns see each segment

    /// A pen covers nothing any more at `reach` pixels.
    ColumnCover(DrawSurface& surface, ColumnGrid const& grid, SeenRows rows, double reach);
    /// Draws a line of at least one point.
    void draw(RisingLine const& line);

private:
    /// A point; behind the last one the stretch that there is none of.
    struct Place {
        std::size_t stretch = 0, point = 0;
        bool operator==(Place const&) const = default;
    };
    /// The levels that were reached on the way to one side, and their rows.
    struct Way {
        document::ValueRange levels{};
        double low_row = 0, high_row = 0;
        bool is_out_of_reach = false;

        bool holds(document::ValueRange const& range) const {
            return range.low >= levels.low && range.high <= levels.high;
        }
    };
    /// Some points of a stretch.
    struct Piece {
        PointStretch const& stretch;
        std::size_t number, first, past; // of the stretch; of the points
    };
    /// From where rows are reached already to where they are reached next.
    struct Climb {
        double edge, goal;
    };

    void draw_column(std::int64_t column);
    void draw_crossing();
    void hand_over(std::int64_t column);
    void advance(Place& place, double position) const;
    bool is_end(Place place) const { return place.stretch == line_->stretches.size(); }
    Place before(Place place) const;
    double across(double x) const;
    double row_of(double level) const;
    RowPlace row_place(Place place) const;

    Way way_from(Place place) const;
    template <bool forwards>
    void follow(Place first, Place past);
    template <bool forwards>
    void follow(Way& way, Piece const& piece);
    template <bool forwards>
    void look_at(Way& way, Piece const& piece, std::size_t level, document::ValueRange const& range);
    template <bool forwards>
    void look_at_points(Way& way, Piece const& piece);
    template <bool forwards>
    Place place_before(Piece const& piece, std::size_t point) const;
    void reach(Way& way, RowPlace from, Place to);
    void include(Way& way, document::ValueRange const& range) const;
    bool brings_nearer(Way const& way, document::ValueRange const& range, double near) const;
    bool brings_nearer(Climb climb, double near) const;
    void approach(RowPlace from, RowPlace to, Climb climb);
    void approach(RowPlace from, RowPlace to, int first, int past);

    DrawSurface& surface_;
    ColumnGrid const& grid_;
    double columns_per_twip_, rows_per_twip_;
    SeenRows rows_;
    double reach_;
    float covered_squared_; // at this squared distance pixels are covered wholly
    NearestRows nearest_;
    std::vector<PixelColumn> columns_;
    std::vector<std::uint8_t> coverage_;
    // While a line is drawn:
    RisingLine const* line_ = nullptr;
    double middle_ = 0;              // of the column, pixels
    Place from_, middle_point_, to_; // the first points within reach, right of the middle, and beyond
    std::vector<Point> plain_;       // the last segment drawn as it is
};

} // namespace qv::render
