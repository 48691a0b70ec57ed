// What a smooth line without gaps covers, computed column of pixels by column.
#pragma once

#include "document/RangeSummary.h"
#include "qvgraph/DrawSurface.h"
#include "render/column_grid.h"
#include "render/nearest_rows.h"
#include "scale/mapping.h"

#include <cstddef>
#include <cstdint>
#include <optional>
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
    std::optional<document::EvenSpacing> spacing;    // of the x, if it is known
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
/// their ranges. Points within 1/110 of a pixel across are one upright line, differences below 1/400 of a
/// pixel are nothing.
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
    /// Upwards or downwards on the way to one side: the row reached, and what would come near to the next
    /// one.
    struct Edge {
        double row = 0;
        int step = 1; // to the next row
        RowPlace waiting{};
        double squared = -1; // of the distance from there to the next row, if something waits
    };
    /// The levels that were reached on the way to one side.
    struct Way {
        document::ValueRange levels{};
        Edge low, high;
        bool is_out_of_reach = false;

        bool holds(document::ValueRange const& range) const {
            return range.low >= levels.low && range.high <= levels.high;
        }
    };
    /// A stretch, and how it lies on the page if its points are evenly spaced there.
    struct Stretch : PointStretch {
        double start = 0, step = 0; // pixels
        bool is_even = false;
    };
    /// Some points of a stretch.
    struct Piece {
        Stretch const& stretch;
        std::size_t number, first, past; // of the stretch; of the points
    };
    /// From values on an axis to pixels.
    struct PixelMap {
        scale::AxisMap const* map = nullptr;
        double start = 0, factor = 0, pixels_per_twip = 1, origin = 0;
        bool is_linear = false;

        PixelMap() = default;
        PixelMap(scale::AxisMap const& axis, double pixels_per_twip, double origin);
        double operator()(double value) const {
            return is_linear ? start + factor * (value - map->first) : (*map)(value)*pixels_per_twip - origin;
        }
    };

    void draw_column(std::int64_t column);
    void draw_crossing();
    void draw_ways(Place first, Place past);
    void hand_over(std::int64_t column);
    void advance(Place& place, double position) const;
    Stretch lay_out(PointStretch const& stretch) const;
    bool is_end(Place place) const { return place.stretch == stretches_.size(); }
    Place before(Place place) const;
    static double across(PixelMap const& map, Stretch const& stretch, std::size_t point) {
        return stretch.is_even ? stretch.start + static_cast<double>(point) * stretch.step
                               : map(stretch.x[point]);
    }
    double across(Stretch const& stretch, std::size_t point) const {
        return across(column_of_, stretch, point) - middle_;
    }
    RowPlace row_place(Place place) const;

    Way way_from(Place place) const;
    void follow_both_ways(Place first, Place past);
    void extend(Way& way, double level, double near);
    template <bool forwards>
    void follow(Way way, Place first, Place past);
    template <bool forwards>
    void follow(Way& way, Piece const& piece);
    template <bool forwards>
    void look_at(Way& way, Piece const& piece, std::size_t level, document::ValueRange const& range);
    template <bool forwards>
    void look_at_points(Way& way, Piece const& piece);
    template <bool forwards>
    void reach_points(Way& way, Piece const& piece);
    template <bool forwards>
    void climb(Way& way, Piece const& piece, document::ValueRange const& range);
    template <bool forwards>
    Place place_before(Piece const& piece, std::size_t point) const;
    void reach(Way& way, RowPlace from, Place to);
    void climb(Edge& edge, RowPlace from, RowPlace to);
    void draw_climb(Edge& edge, RowPlace from, RowPlace to);
    void wait(Edge& edge, RowPlace place, int row);
    void pass(Edge& edge, double row, double near);
    void pass_waiting(Edge& edge, double near);
    void draw_waiting(Edge& edge);
    static bool is_narrow(Stretch const& stretch);
    bool brings_nearer(Edge const& edge, double goal, double near) const;
    void approach_upright(Edge const& edge, double x, double from, double to);
    void approach(Edge const& edge, RowPlace from, RowPlace to);
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
    std::vector<Stretch> stretches_;
    scale::AxisMap const* x_map_ = nullptr;
    PixelMap column_of_, row_of_;
    double ahead_ = 0;               // how far on the way x rises points are within reach, pixels
    double middle_ = 0;              // of the column, pixels
    Place from_, middle_point_, to_; // the first points within reach, right of the middle, and beyond
    std::vector<Point> plain_;       // the last segment drawn as it is
};

} // namespace qv::render
