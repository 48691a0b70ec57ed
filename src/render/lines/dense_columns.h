// What a dense line covers: of the many points that fall into one column of pixels, the few segments that lie
// nearest to the pixels, each in the rows where it is the nearest.
#pragma once

#include "document/RangeSummary.h"
#include "qvgraph/DrawSurface.h"
#include "render/lines/column_grid.h"
#include "scale/mapping.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace qv::render {

/// Consecutive points of a line within one column: finite values, and how they reach the page. On the page x
/// never changes its direction. What is pointed to must stay until the line ends.
struct PointRun {
    std::span<double const> x;
    std::span<double const> y;
    scale::AxisMap const* x_map; // of all runs of a line the same
    scale::AxisMap const* y_map;
    document::RangeSummary const* summary = nullptr; // of the y, if there is one
    std::size_t summary_place = 0;                   // of the first of them

    std::size_t size() const { return x.size(); }
    Point place(std::size_t i) const { return {(*x_map)(x[i]), (*y_map)(y[i])}; }
};

/// What of a pen and its surface decides which places of a line show.
struct LinePen {
    double pixel_width = 15; // twips
    double pixel_height = 15;
    double reach = 1;          // pixels; at this distance from the line nothing is covered
    bool has_gaps = false;     // counted across for flat segments, else down
    bool covers_beside = true; // pixels of other columns than the line lies in
};

/// Thins a line without a change to any pixel.
///
/// Seen from a pixel's centre, the nearest place of the line in any row is where the line, followed away from
/// that centre, reaches the row for the first time: what comes later in that row lies further away. So only
/// those segments count at which the line, followed from the middle of its column to either side, rises above
/// or falls below all before, and only beyond those rows; and, for the pixels beside the column, the same,
/// followed inwards from its sides. What a neighbouring column reaches is nearer to the pixels there. Of a
/// line with gaps flat and steep segments are told apart, as their gaps lie elsewhere.
class DenseColumns {
public:
    /// Lines are polylines with a place that is not a number between them.
    DenseColumns(ColumnGrid const& grid, LinePen const& pen, std::vector<Point>& lines,
                 std::vector<LinePart>& parts)
        : grid_(grid), pen_(pen), lines_(lines), parts_(parts) {}

    void add(Point place);
    void add_run(PointRun const& run);
    /// Ends the line; the next point starts a new one.
    void finish();

private:
    /// From the smallest level to the largest: y values, or in a visit of places page coordinates.
    struct Range : document::ValueRange {
        bool holds(document::ValueRange const& other) const { return other.low >= low && other.high <= high; }
        bool touches(ValueRange const& other) const { return other.high >= low && other.low <= high; }
        void include(ValueRange const& other) {
            low = other.low < low ? other.low : low;
            high = other.high > high ? other.high : high;
        }
    };
    /// Levels that were reached by steep and by flat segments; of a line without gaps all are in the first.
    using Reached = std::array<std::optional<Range>, 2>;
    /// A few consecutive points.
    struct Stretch {
        double const* x;
        double const* y;
        std::size_t count;
        document::RangeSummary const* summary;
        std::size_t summary_place;
        std::size_t level; // of the summary that has its range, counted from 1; 0: none
        Range range;

        /// The next of its pieces from a point on, at most `most` levels up.
        Stretch piece(std::size_t first, std::size_t past, std::size_t most) const;
    };
    enum class Order : std::uint8_t { Rising, Falling, None };
    /// Consecutive points in one column.
    struct Visit {
        std::int64_t column = 0;
        std::size_t count = 0;
        Point first, last;
        std::vector<double> x, y;              // on the page, of points added one by one
        scale::AxisMap const* x_map = nullptr; // of the points in stretches; nullptr: they are places
        scale::AxisMap const* y_map = nullptr;
        std::vector<Stretch> stretches;
        Order order = Order::None;
        std::size_t half = 0; // the first stretch at the far side of the middle
        Reached reached;

        void clear();
        double x_of(Stretch const& stretch, std::size_t i) const {
            return x_map ? (*x_map)(stretch.x[i]) : stretch.x[i];
        }
        double row_of(double level) const { return y_map ? (*y_map)(level) : level; }
        Point place(Stretch const& stretch, std::size_t i) const {
            return {x_of(stretch, i), row_of(stretch.y[i])};
        }
        Point first_of(std::size_t stretch) const { return place(stretches[stretch], 0); }
        Point last_of(std::size_t stretch) const {
            return place(stretches[stretch], stretches[stretch].count - 1);
        }
    };
    /// The pixels that see a segment: columns from `left` to `right` - 1.
    struct Columns {
        std::int32_t left, right;
    };
    /// A part of a stretch, or all of it, as it is passed on a way through the visit.
    struct Piece {
        Visit const& visit;
        std::size_t stretch;
        Stretch part;
        bool forwards;
    };
    /// What is to be drawn where nothing hides it, seen from the row of pixels that it just fails to reach.
    struct Waiting {
        std::optional<Piece> piece;
        Range known; // before it
        double row = 0;
        double near = 0;    // its distance across, pixels
        double missing = 0; // to the row
    };
    /// Pixels that a visit is seen from, and what waits below (first) and above (second).
    struct View {
        Columns columns;
        double centre;  // of the nearest column, twips
        bool is_beside; // so that there are more columns, further away
        std::array<Waiting, 2> waiting;
    };
    class Chain;

    void begin(std::int64_t column);
    void close();
    void prepare(Visit& visit);
    static bool is_dense(Visit const& visit);
    static void keep_places(Visit& visit);
    static Order order_of(Visit const& visit);
    static std::size_t level_for(std::size_t count);
    void split_into_pieces(Visit& visit);
    static void append_pieces(std::vector<Stretch>& pieces, Stretch const& stretch, std::size_t first,
                              std::size_t past, std::size_t level);
    void split_at_middle(Visit& visit);
    void find_reached(Visit& visit) const;
    static Range rows_of(Visit const& visit, Range const& levels);
    bool is_reached(Reached const& reached, Point from, Point to) const;
    void include(Reached& reached, Point from, Point to) const;
    bool is_flat(Point from, Point to) const;

    void draw(Visit const& visit, Visit const* before, Visit const* after);
    void end_at(Visit const& visit, Point place);
    void draw_sparse(Visit const& visit);
    void draw_middle(Visit const& visit);
    void draw_middle_with_gaps(Visit const& visit);
    void draw_beside(Visit const& visit, Visit const* before, Visit const* after);
    void draw_side(Visit const& visit, Columns columns, bool forwards, Visit const* neighbour,
                   bool connected);
    void draw_unordered(Visit const& visit, Columns columns, Visit const* neighbour);
    void consider(Piece const& piece, Range& known, View& view);
    double distance(double x, View const& view) const;
    bool is_hidden(Waiting const& waiting, double far, double missing, View const& view) const;
    void draw_waiting(View& view);
    void consider_pieces(Piece const& piece, Range& known, View& view);
    void consider_points(Piece const& piece, Range& known, View& view);
    void draw_all(Piece const& piece, Range known, Columns columns);
    static Point place_before(Piece const& piece, std::size_t i);
    void follow_with_gaps(Visit const& visit, std::size_t first, std::size_t past, bool forwards,
                          Reached& known, Columns columns);
    void line(Point from, Point to);
    void part(Point from, Point to, Columns columns);
    /// Of a segment what lies beyond these rows of the page, twips.
    void part_outside(Point from, Point to, Columns columns, Range rows);

    ColumnGrid const& grid_;
    LinePen pen_;
    std::vector<Point>& lines_;
    std::vector<LinePart>& parts_;
    // The one being collected, the one that waits for it to be known, and the one before.
    std::array<Visit, 3> visits_;
    std::size_t current_ = 0;
    std::size_t known_visits_ = 0;           // of the line, before the current one
    std::vector<Stretch> collected_, split_; // scratch
};

} // namespace qv::render
