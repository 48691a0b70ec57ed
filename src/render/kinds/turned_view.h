// A data set that stands upright or lies (BarHoriz): what is the same either way.
#pragma once

#include "render/kinds/series_kind.h"

#include <algorithm>

namespace qv::render {

/// Along `position` its bins or groups follow one another, along `value` they reach: upright x and y, lying y
/// and x.
struct TurnedView {
    scale::AxisMap position, value;
    bool lies = false;
    Box plot;

    explicit TurnedView(SeriesView const& view)
        : position(view.set.BarHoriz ? view.y : view.x), value(view.set.BarHoriz ? view.x : view.y),
          lies(view.set.BarHoriz), plot(view.plot) {}

    bool valid() const { return position.valid && value.valid; }

    /// From places in twips along both.
    Point at(double along_position, double along_value) const {
        static constexpr double farthest = 1e9; // far outside any page, where the clip cuts
        double const one = std::clamp(along_position, -farthest, farthest);
        double const other = std::clamp(along_value, -farthest, farthest);
        return lies ? Point{other, one} : Point{one, other};
    }
    Box box(double from, double to, double from_value, double to_value) const {
        const Point a = at(std::min(from, to), std::min(from_value, to_value));
        const Point b = at(std::max(from, to), std::max(from_value, to_value));
        return {a.x, a.y, b.x - a.x, b.y - a.y};
    }
    double position_of(Point place) const { return lies ? place.y : place.x; }
    double value_of(Point place) const { return lies ? place.x : place.y; }

    /// The positions that the plot area shows, with so many twips more on both sides.
    document::Extent visible_positions(double more) const {
        double const start = lies ? plot.top : plot.left;
        double const end = start + (lies ? plot.height : plot.width);
        auto const [low, high] =
            std::minmax({position.value_at(start - more), position.value_at(end + more)});
        return {low, high};
    }
    double twips_per_pixel(DrawSurface const& surface) const {
        return lies ? surface.TwipsPerPixelY() : surface.TwipsPerPixelX();
    }
};

/// The reaches along both.
struct TurnedReach {
    AxisReach const& position;
    AxisReach const& value;
};
inline TurnedReach turned_reach(document::DataSet const& set, AxisReach const& x, AxisReach const& y) {
    return set.BarHoriz ? TurnedReach{y, x} : TurnedReach{x, y};
}

/// Whose digits the facts about both have.
inline Fact::Of position_axis(document::DataSet const& set) {
    return set.BarHoriz ? Fact::Of::YAxis : Fact::Of::XAxis;
}
inline Fact::Of value_axis(document::DataSet const& set) {
    return set.BarHoriz ? Fact::Of::XAxis : Fact::Of::YAxis;
}

} // namespace qv::render
