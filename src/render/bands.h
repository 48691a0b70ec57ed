// What lies between two curves: areas, bands of errors.
#pragma once

#include "document/PointStore.h"
#include "qvgraph/DrawSurface.h"
#include "render/lines/data_line.h"
#include "render/steps.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace qv::render {

/// A curve as its corners, x never falling. Two of one x are a jump; a y that is not a number is a gap.
using Curve = std::vector<Point>;

/// Where on the page a band begins and ends, twips. Not-a-number anywhere is a gap.
struct BandPlace {
    double x = 0;
    double edge = 0; // of the line that the band belongs to
    double base = 0; // at the other side
};

/// The line through a store's points in page coordinates, in order of arrival, as far as it can be seen:
/// where x rises, what lies beside the visible box costs next to nothing.
std::vector<Point> line_on_page(document::PointStore const& points, Steps steps, LineMapping const& mapping);
/// The same as a curve. Of a line that runs back and forth the points are joined from left to right.
Curve curve_on_page(document::PointStore const& points, Steps steps, LineMapping const& mapping);
/// The curve in values, all of it.
Curve curve_of_values(document::PointStore const& points, Steps steps);

/// Calls `take(x, a, b)` with the values of two curves wherever one of them has a corner, on both sides of a
/// jump. Between corners both are straight; beyond its ends a curve is not a number.
template <class Take>
void walk_together(Curve const& a, Curve const& b, Take const& take);

/// Fills bands, what lies above the base and what below it apart, cut where edge and base cross. Added place
/// by place; of those in one column of the page the extremes count.
class BandFill {
public:
    BandFill(DrawSurface& surface, LineMapping const& mapping);

    void add(BandPlace const& place);
    /// Paints all that was added.
    void draw(Color above, Color below);
    /// After that: a line from the base to the edge at each place, and along the base, in the surface's pen.
    void draw_outline() const;

private:
    /// Pieces of which x runs one way.
    struct Stretch {
        std::vector<Point> edge, base;
        bool rightward = true;
    };
    class Side {
    public:
        void add(Box const& visible, BandPlace const& from, BandPlace const& to);
        void end() { is_open_ = false; }
        void fill(DrawSurface& surface) const;
        void outline(DrawSurface& surface) const;
        bool empty() const { return stretches_.empty(); }

    private:
        std::vector<Stretch> stretches_; // the last may be open
        bool is_open_ = false;
    };
    /// A place of the column at hand, and when it came.
    struct Kept {
        BandPlace place;
        std::size_t arrival = 0;
    };
    double height(BandPlace const& place) const;
    void keep(BandPlace const& place);
    void end_column();
    void go_to(BandPlace const& place);
    void break_off();

    DrawSurface& surface_;
    Box visible_;
    double upward_; // the sign of larger values on the page
    double column_ = 0;
    std::size_t arrivals_ = 0;   // in the column
    std::array<Kept, 6> kept_{}; // the first, those of the extremes of edge and base, and the last
    std::optional<BandPlace> last_;
    Side above_, below_;
};

namespace detail {

struct Limits {
    double before, after;
};
/// The group of a curve's corners at x begins at `first` and ends before `past`; it may be empty.
Limits limits(Curve const& curve, std::size_t first, std::size_t past, double x);
inline std::size_t past_group(Curve const& curve, std::size_t first, double x) {
    while (first < curve.size() && curve[first].x == x) ++first;
    return first;
}

} // namespace detail

template <class Take>
void walk_together(Curve const& a, Curve const& b, Take const& take) {
    for (std::size_t i = 0, j = 0; i < a.size() || j < b.size();) {
        double const x = j >= b.size() || (i < a.size() && a[i].x <= b[j].x) ? a[i].x : b[j].x;
        std::size_t const past_i = detail::past_group(a, i, x), past_j = detail::past_group(b, j, x);
        const detail::Limits of_a = detail::limits(a, i, past_i, x), of_b = detail::limits(b, j, past_j, x);
        take(x, of_a.before, of_b.before);
        if (of_a.before != of_a.after || of_b.before != of_b.after) take(x, of_a.after, of_b.after);
        i = past_i;
        j = past_j;
    }
}

} // namespace qv::render
