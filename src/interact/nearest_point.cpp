#include "interact/nearest_point.h"

#include "base/text.h"
#include "document/selection.h"
#include "document/trap.h"
#include "interact/hit_test.h"
#include "interact/point_steps.h"
#include "interact/read_out.h"
#include "render/areas.h"
#include "render/bars/bar_places.h"
#include "render/bars/bars.h"
#include "render/data_sets.h"
#include "render/error_bars.h"
#include "render/kinds/series_kind.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_bars.h"
#include "render/polar/polar_map.h"
#include "render/stacked_areas.h"
#include "render/text.h"
#include "scale/mapping.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <string>
#include <utility>
#include <vector>

namespace qv::interact {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;
using document::PointBlock;

constexpr double reach_mm = 3;

/// Values on an axis.
struct Range {
    double low = 0;
    double high = 0;
    bool holds(double value) const { return value >= low && value <= high; }
    bool misses(document::Extent const& extent) const { return extent.high < low || extent.low > high; }
};

/// Looks for a data set's nearest point, first by value, then by place.
class Search {
public:
    Search(Graph& graph, Point place, double radius)
        : x_map_(scale::shown_map(graph, selected_x_axis(graph))),
          y_map_(scale::shown_map(graph, selected_y_axis(graph))), place_(place), nearest_(radius) {
        const Box plot = render::plot_box(graph);
        x_ = values(x_map_, std::max(place.x - radius, plot.left), std::min(place.x + radius, plot.right()));
        y_ = values(y_map_, std::max(place.y - radius, plot.top), std::min(place.y + radius, plot.bottom()));
    }

    void look_at(DataSet const& set, document::PointStore const& points, std::int16_t index) {
        if (!x_map_.valid || !y_map_.valid) return;
        take_width_of_bars(set);
        std::size_t first = 0;
        for (PointBlock const& block : points.blocks()) {
            if (block.size() > 0 && !x_.misses(block.x_extent()) && !y_.misses(block.y_extent()))
                look_at(block, {index, first, 0});
            first += block.size();
        }
    }

    std::optional<FoundPoint> found() const { return found_; }

private:
    // Bars as wide as values say are met all along their ends.
    void take_width_of_bars(DataSet const& set) {
        if (set.DataSymbol != render::symbol_bar || !render::has_value_width(set)) return;
        auto const [low, high] = render::values_across_bar(set, 0);
        Range& across = set.BarHoriz ? y_ : x_;
        across.low -= high;
        across.high -= low;
        wide_ = &set;
    }

    double distance(double x, double y) const {
        if (!wide_) return std::hypot(x_map_(x) - place_.x, y_map_(y) - place_.y);
        scale::AxisMap const& across = wide_->BarHoriz ? y_map_ : x_map_;
        auto const [low, high] = render::values_across_bar(*wide_, wide_->BarHoriz ? y : x);
        auto const [first, last] = std::minmax({across(low), across(high)});
        double const here = wide_->BarHoriz ? place_.y : place_.x;
        double const end = wide_->BarHoriz ? x_map_(x) - place_.x : y_map_(y) - place_.y;
        return std::hypot(here - std::clamp(here, first, last), end);
    }

    // A position on the very edge of the plot area stands for the axis's own end.
    static Range values(scale::AxisMap const& map, double from, double to) {
        auto const [low, high] = std::minmax({map.value_at(from), map.value_at(to)});
        double const slack = 1e-9 * (high - low);
        return {low - slack, high + slack};
    }

    void look_at(PointBlock const& block, FoundPoint first) {
        auto const x = block.x(), y = block.y();
        std::size_t begin = 0, end = x.size();
        if (block.x_rising()) {
            begin = static_cast<std::size_t>(std::ranges::lower_bound(x, x_.low) - x.begin());
            end = static_cast<std::size_t>(std::ranges::upper_bound(x, x_.high) - x.begin());
        }
        for (std::size_t i = begin; i < end; ++i) {
            if (!x_.holds(x[i]) || !y_.holds(y[i])) continue;
            double const away = distance(x[i], y[i]);
            if (away > nearest_) continue;
            nearest_ = away;
            found_ = {first.data_set, first.point + i, away};
        }
    }

    scale::AxisMap x_map_, y_map_;
    Point place_;
    Range x_, y_;
    DataSet const* wide_ = nullptr; // the set looked at, where its points are bars of a width
    double nearest_;
    std::optional<FoundPoint> found_;
};

/// The same in a polar graph, where neighbours in x may be anywhere.
std::optional<FoundPoint> nearest_polar_point(Graph& graph, std::int16_t index, Point place, double radius) {
    const render::PolarMap map = *render::place_map(graph, render::SeriesScope::Maps::AsShown).polar;
    std::optional<FoundPoint> found;
    std::size_t number = 0;
    for (PointBlock const& block : at(graph.DataSets, index).points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i, ++number) {
            const Point there = map(block.x()[i], block.y()[i]);
            double const distance = std::hypot(there.x - place.x, there.y - place.y);
            if (!(distance <= radius) || !map.holds(there)) continue;
            radius = distance;
            found = FoundPoint{index, number, distance};
        }
    return found;
}

// Items have an extent: those that a place lies on are at no distance from it.
std::optional<std::size_t> item_under(render::SeriesView const& view, Point place) {
    render::SeriesKind const* const kind = render::series_kind(view.set);
    if (!kind || !holds(view.plot, place) || !can_be_drawn(view.graph, *kind)) return std::nullopt;
    if (kind->lies_on_axes() && !(view.x.valid && view.y.valid)) return std::nullopt;
    return kind->item_at(view, place);
}

/// The data set whose area a place lies in, the last drawn of several, and its point nearest in x.
std::optional<FoundPoint> area_under(ControlState& state, std::int16_t index, Point place) {
    Graph& graph = *at(state.Graphs, index);
    for (std::int16_t i = graph.NumDataSets(); i-- > 0;) {
        DataSet const& set = at(graph.DataSets, i);
        if (set.DataHide || render::series_kind(set) || !render::is_area(set) || set.points.size() == 0)
            continue;
        using Maps = render::SeriesScope::Maps;
        const render::SeriesScope scope(state, graph, i, Maps::AsShown);
        const render::LineMapping mapping{scope.view().x, scope.view().y, scope.view().plot};
        if (!mapping.x.valid || !mapping.y.valid) continue;
        if (render::area_holds({graph, set, mapping, Maps::AsShown}, place))
            return FoundPoint{i, nearest_in_x(set.points, mapping.x.value_at(place.x)), 0};
    }
    return std::nullopt;
}

/// " ± 2" or " +2 -1", each as far as it is there.
std::string error_text(double less, double more) {
    if (less == 0 && more == 0) return {};
    if (less == more) return " \u00B1 " + number_text(less);
    std::string text;
    if (more > 0) text += " +" + number_text(more);
    if (less > 0) text += " -" + number_text(less);
    return text;
}

std::string fact_text(Graph const& graph, DataSet const& set, render::Fact const& fact) {
    using Of = render::Fact::Of;
    std::string const name = fact.name.empty() ? "" : fact.name + " ";
    switch (fact.of) {
    case Of::XAxis: return name + coordinate_text(at(graph.Axes, set.xAxisIndex), fact.value);
    case Of::YAxis: return name + coordinate_text(at(graph.Axes, set.yAxisIndex), fact.value);
    case Of::Text: return name + fact.text;
    default: return name + number_text(fact.value);
    }
}

std::string facts_text(Graph const& graph, DataSet const& set, std::vector<render::Fact> const& facts) {
    std::string text;
    for (render::Fact const& fact : facts) text += (text.empty() ? ": " : ", ") + fact_text(graph, set, fact);
    return text;
}

void show_name(ControlState& state, std::string name) {
    if (name == state.PointTooltip) return;
    state.PointTooltip = std::move(name);
    state.host->child_controls_changed();
}

} // namespace

std::optional<FoundPoint> nearest_point(ControlState& state, std::int16_t index, Point place, double radius) {
    Graph& graph = *at(state.Graphs, index);
    std::optional<FoundPoint> nearest, item; // of items the one drawn last lies above
    const render::BarPlan plan(graph);
    for (std::int16_t i = 0; i < graph.NumDataSets(); ++i) {
        DataSet const& set = at(graph.DataSets, i);
        if (set.DataHide) continue;
        const render::SeriesScope scope(state, graph, i, render::SeriesScope::Maps::AsShown);
        if (render::series_kind(set)) {
            if (auto const found = item_under(scope.view(), place)) item = FoundPoint{i, *found, 0};
            continue;
        }
        if (plan.holds(i)) {
            auto const bar_at = graph.GraphPolar ? render::polar_bar_at : render::arranged_bar_at;
            if (auto const found = bar_at(scope.view(), plan, place)) item = FoundPoint{i, *found, 0};
            continue;
        }
        double const least = nearest ? nearest->distance : radius;
        if (graph.GraphPolar) {
            if (auto const found = nearest_polar_point(graph, i, place, least)) nearest = found;
            continue;
        }
        Search search(graph, place, least);
        search.look_at(set, render::shown_points(graph, set), i);
        if (search.found()) nearest = search.found();
    }
    return nearest ? nearest : item; // points are small, and drawn where they can be seen
}

std::string point_name(ControlState& state, std::int16_t index, FoundPoint const& found) {
    Graph& graph = *at(state.Graphs, index);
    DataSet const& set = at(graph.DataSets, found.data_set);
    std::string name = set.DataLegend.empty() ? "Data set " + std::to_string(found.data_set + 1)
                                              : render::as_read(state, set.DataLegend);
    if (render::SeriesKind const* const kind = render::series_kind(set))
        return name + facts_text(graph, set, kind->item_facts(set, found.point));
    const document::PointEntry point = set.points.at(found.point);
    if (!point.DataID.empty()) name += ", " + render::as_read(state, point.DataID);
    render::PointErrors errors;
    if (set.ShowErrorBar) errors = render::errors_of(set.points, found.point);
    return name + ": " + coordinate_text(at(graph.Axes, set.xAxisIndex), point.X)
           + error_text(errors.left, errors.right) + ", "
           + coordinate_text(at(graph.Axes, set.yAxisIndex), point.Y)
           + error_text(errors.below, errors.above);
}

void name_point_under(ControlState& state, Point place) {
    trapped(state, "name_point_under", [&] {
        std::string name;
        std::int16_t const index = state.gestures.point_tooltip && state.Tooltip.empty()
                                       ? graph_under(state, place)
                                       : std::int16_t{-1};
        if (index >= 0) {
            auto found = nearest_point(state, index, place, reach_mm * state.UnitsPerMmX);
            if (!found) found = area_under(state, index, place);
            if (found) name = point_name(state, index, *found);
        }
        show_name(state, std::move(name));
    });
}

void forget_point_name(ControlState& state) {
    show_name(state, {});
}

} // namespace qv::interact
