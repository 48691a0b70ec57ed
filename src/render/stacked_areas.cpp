#include "render/stacked_areas.h"

#include "render/data_sets.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::render {
namespace {

using document::DataSet;
using document::Graph;
using document::PointStore;

constexpr std::uint8_t in_sums = 1, in_percent = 2; // AreaStacked

/// What a stacked area depends on of one data set.
using SetState = std::array<std::size_t, 4>;

struct StackedArea final : document::DerivedData {
    std::vector<SetState> made_of;
    std::vector<BandPlace> places;
    Curve sum; // of this area and those below
    PointStore shown;
};

double or_zero(double value) {
    return std::isnan(value) ? 0 : value;
}

bool stand_together(DataSet const& one, DataSet const& other) {
    return is_stacked_area(one) && is_stacked_area(other) && !other.DataHide
           && one.AreaStacked == other.AreaStacked && one.xAxisIndex == other.xAxisIndex
           && one.yAxisIndex == other.yAxisIndex;
}

/// Calls `take(other)` for the stacked areas that share a stack with a data set, itself included.
template <class Take>
void for_each_in_stack(Graph const& graph, DataSet const& set, Take take) {
    for (DataSet const& other : graph.DataSets)
        if (&other == &set || stand_together(set, other)) take(other);
}

std::vector<SetState> state_of_stack(Graph const& graph, DataSet const& set) {
    std::vector<SetState> found;
    for_each_in_stack(graph, set, [&](DataSet const& other) {
        found.push_back({other.points.size(), other.points.dropped(),
                         std::size_t{other.DataSteps} * 4 + set.AreaStacked,
                         reinterpret_cast<std::size_t>(&other)});
    });
    return found;
}

Curve sum_of(Curve const& a, Curve const& b) {
    Curve sum;
    sum.reserve(a.size() + b.size());
    // At its ends a curve jumps to where it counts for nothing.
    walk_together(a, b, [&](double x, double of_a, double of_b) {
        sum.push_back({x, or_zero(of_a) + or_zero(of_b)});
    });
    return sum;
}

/// What all of a stack come to, whichever way each of them points.
Curve total_of(Graph const& graph, DataSet const& set) {
    Curve total;
    for_each_in_stack(graph, set, [&](DataSet const& other) {
        Curve sizes = curve_of_values(other.points, steps_of(other));
        for (Point& place : sizes) place.y = std::abs(place.y);
        total = sum_of(total, sizes);
    });
    return total;
}

detail::Limits limits_at(Curve const& curve, double x) {
    auto const lies_before = [](Point place, double other) { return place.x < other; };
    auto const first = std::lower_bound(curve.begin(), curve.end(), x, lies_before) - curve.begin();
    auto const begin = static_cast<std::size_t>(first);
    return detail::limits(curve, begin, detail::past_group(curve, begin, x), x);
}

/// The points of a data set upon `below`; those of a stack in percent with the curve of its total.
PointStore points_upon(DataSet const& set, Curve const& own, Curve const& below, Curve const* total) {
    bool const ends_step = steps_of(set) == Steps::Before;
    return points_at(set.points, [&](Point value, std::size_t) {
        // Where other curves jump, what counts is the side on which the point's own line runs.
        const detail::Limits line = limits_at(own, value.x);
        bool const takes_before = ends_step ? !std::isnan(line.before) : std::isnan(line.after);
        auto const at_point = [&](Curve const& curve) {
            const detail::Limits found = limits_at(curve, value.x);
            return takes_before ? found.before : found.after;
        };
        double const height = total ? 100 * value.y / at_point(*total) : value.y;
        return Point{value.x, height + or_zero(at_point(below))};
    });
}

StackedArea const& area_of(Graph const& graph, DataSet const& set);

/// The sum of the areas before one in its stack; empty for the lowest.
Curve const& sum_below(Graph const& graph, DataSet const& set) {
    static const Curve nothing;
    DataSet const* below = nullptr;
    for (DataSet const& other : graph.DataSets) {
        if (&other == &set) break;
        if (stand_together(set, other)) below = &other;
    }
    return below ? area_of(graph, *below).sum : nothing;
}

std::unique_ptr<StackedArea> make_area(Graph const& graph, DataSet const& set) {
    auto area = std::make_unique<StackedArea>();
    const Curve values = curve_of_values(set.points, steps_of(set));
    Curve own = values;
    Curve const& below = sum_below(graph, set);
    Curve total;
    if (set.AreaStacked == in_percent) {
        total = total_of(graph, set);
        Curve shares;
        walk_together(own, total, [&](double x, double value, double all) {
            shares.push_back({x, 100 * value / all});
        });
        own = std::move(shares);
    }
    walk_together(own, below, [&](double x, double value, double base) {
        area->places.push_back({x, value + or_zero(base), or_zero(base)});
    });
    area->sum = sum_of(own, below);
    area->shown = points_upon(set, values, below, set.AreaStacked == in_percent ? &total : nullptr);
    return area;
}

StackedArea const& area_of(Graph const& graph, DataSet const& set) {
    auto* known = dynamic_cast<StackedArea*>(set.derived.get());
    std::vector<SetState> made_of = state_of_stack(graph, set);
    if (known && known->made_of == made_of) return *known;
    auto made = make_area(graph, set);
    made->made_of = std::move(made_of);
    known = made.get();
    set.derived = std::move(made);
    return *known;
}

} // namespace

bool is_stacked_area(DataSet const& set) {
    return is_area(set) && set.DataKind == 0 && (set.AreaStacked == in_sums || set.AreaStacked == in_percent);
}

std::vector<BandPlace> const& stacked_area(Graph const& graph, DataSet const& set) {
    return area_of(graph, set).places;
}

PointStore const& shown_points(Graph const& graph, DataSet const& set) {
    return is_stacked_area(set) ? area_of(graph, set).shown : set.points;
}

} // namespace qv::render
