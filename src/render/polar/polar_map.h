// From angles and distances to the page and back, for graphs with GraphPolar; and the way from values to
// places whichever a graph has.
#pragma once

#include "render/kinds/series_kind.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace qv::render {

/// The value of x that is a whole turn.
inline double whole_turn_of(document::Graph const& graph) {
    return graph.PolarRadians ? 2 * std::numbers::pi : 360;
}

struct PolarMap {
    Point centre;          // twips
    double radius = 0;     // of the outermost circle, twips
    double zero = 0;       // radians counter-clockwise from rightwards, where x is 0
    double per_unit = 0;   // radians counter-clockwise a unit of x
    double whole_turn = 0; // units of x
    scale::AxisMap along;  // from y to twips from the centre

    static constexpr double farthest = 1e9; // twips; lines lead there all the same

    /// A direction on the page, radians counter-clockwise from rightwards.
    double direction(double x) const { return zero + per_unit * x; }
    Point at(double direction, double distance) const {
        return {centre.x + distance * std::cos(direction), centre.y - distance * std::sin(direction)};
    }
    /// From the centre to a point. Not-a-number where it has no place, because y is less than what lies in
    /// the centre; it may lie beyond the outermost circle.
    double distance(double x, double y) const {
        bool const can_be = along.valid && std::isfinite(x) && std::isfinite(y) && !(along.is_log && y <= 0);
        double const distance = can_be ? along(y) : -1;
        return distance >= 0 ? std::min(distance, farthest) : std::numeric_limits<double>::quiet_NaN();
    }
    /// Not-a-number where a point has no place.
    Point operator()(double x, double y) const {
        double const away = distance(x, y);
        return std::isnan(away) ? Point{away, away} : at(direction(x), away);
    }
    /// The direction of a place.
    double direction_of(Point place) const { return std::atan2(centre.y - place.y, place.x - centre.x); }
    double distance_of(Point place) const { return std::hypot(place.x - centre.x, place.y - centre.y); }
    /// How far from the centre y lies, as far as that can be seen; not-a-number of what is none.
    double clamped_distance(double y) const {
        if (!along.valid || std::isnan(y)) return std::numeric_limits<double>::quiet_NaN();
        if (along.is_log && y <= 0) return along.factor > 0 ? 0 : radius;
        return std::clamp(along(y), 0.0, radius);
    }
    /// Whether a place lies in the outermost circle, its line included.
    bool holds(Point place) const { return distance_of(place) <= radius * (1 + 1e-9); }

    /// What a place stands for: x from 0 to a whole turn; not-a-number beyond the outermost circle.
    Point values_at(Point place) const {
        constexpr double no_value = std::numeric_limits<double>::quiet_NaN();
        if (!along.valid || !holds(place)) return {no_value, no_value};
        double const way = (direction_of(place) - zero) / per_unit;
        double const x = way - whole_turn * std::floor(way / whole_turn);
        return {x < whole_turn ? x : 0, along.value_at(std::min(distance_of(place), radius))};
    }
};

/// The map of a graph with the range of a y axis from the centre to the outermost circle; an automatic linear
/// axis of values above 0 has 0 in the centre.
PolarMap polar_map(document::Graph& graph, document::Axis const& y_axis, scale::AxisMap const& y);

/// From values to places on the page and back, straight or polar.
struct PlaceMap {
    scale::AxisMap x, y;
    std::optional<PolarMap> polar;

    Point operator()(double x_value, double y_value) const {
        return polar ? (*polar)(x_value, y_value) : Point{x(x_value), y(y_value)};
    }
    Point values_at(Point place) const {
        return polar ? polar->values_at(place) : Point{x.value_at(place.x), y.value_at(place.y)};
    }
};

/// Of the selected axes, as they are drawn now or as the page shows them.
PlaceMap place_map(document::Graph& graph, SeriesScope::Maps maps);

} // namespace qv::render
