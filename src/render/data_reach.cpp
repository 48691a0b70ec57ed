#include "render/data_reach.h"

#include "render/areas.h"
#include "render/bars/bar_places.h"
#include "render/bars/bar_stack.h"
#include "render/bars/bars.h"
#include "render/data_sets.h"
#include "render/error_bars.h"
#include "render/function_curve.h"
#include "render/kinds/series_kind.h"
#include "render/stacked_areas.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;
using document::ControlState;
using document::DataSet;
using document::Extent;
using document::Graph;
using document::PointBlock;

constexpr double air_beside_bars_mm = 1;

void include(Extent& extent, Extent const& other) {
    if (other.empty()) return;
    extent.include(other.low);
    extent.include(other.high);
}

struct Plane {
    DataSet const& set;
    AxisReach x, y;

    void include(Point point, PointErrors const& errors) const {
        if (!x.has_place(point.x) || !y.has_place(point.y)) return;
        x.include(point.x);
        y.include(point.y);
        if (!set.ShowErrorBar || !errors.any()) return;
        x.include(point.x - errors.left);
        x.include(point.x + errors.right);
        y.include(point.y - errors.below);
        y.include(point.y + errors.above);
    }
};

// What a block knows of all its points is as good as each of them, unless some do not count or reach further.
bool tells_all(Plane const& plane, PointBlock const& block) {
    return !block.was_cut() && (!plane.set.ShowErrorBar || !has_errors(block))
           && plane.x.has_place(block.x_extent()) && plane.y.has_place(block.y_extent());
}

void include_points(Plane const& plane, document::PointStore const& points) {
    for (PointBlock const& block : points.blocks()) {
        if (tells_all(plane, block)) {
            include(plane.x.reach.extent, block.x_extent());
            include(plane.y.reach.extent, block.y_extent());
            continue;
        }
        for (std::size_t i = 0; i < block.size(); ++i)
            plane.include({block.x()[i], block.y()[i]}, errors_of(block, i));
    }
}

/// Where an area begins, and the corners that a stacked one has beside its points.
void include_area(Graph const& graph, Plane const& plane) {
    DataSet const& set = plane.set;
    if (is_stacked_area(set)) {
        for (BandPlace const& place : stacked_area(graph, set)) {
            if (std::isnan(place.edge)) continue;
            plane.y.include(place.edge);
            if (place.base == 0) continue;
            plane.y.include(place.base);
        }
        return plane.y.stand_on(0);
    }
    if (DataSet const* const other = begins_at(graph, set)) {
        // One that is shown tells of itself.
        if (other->DataHide && other->xAxisIndex == set.xAxisIndex && other->yAxisIndex == set.yAxisIndex)
            include_points({*other, plane.x, plane.y}, shown_points(graph, *other));
    } else if (set.AreaBase && std::isfinite(set.AreaBaseValue)) {
        plane.y.stand_on(set.AreaBaseValue);
    }
}

/// The bars of a data set upon those of the sets before.
void include_stacked(Plane const& plane, BarStack& stack, bool stands_on_others) {
    DataSet const& set = plane.set;
    AxisReach const& along = set.BarHoriz ? plane.x : plane.y;
    stack.position = 0;
    bool stands_on_zero = false;
    for (PointBlock const& block : set.points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) {
            const StackedBar bar = stacked(stack, set, {block.x()[i], block.y()[i]});
            plane.include(bar.end, errors_of(block, i));
            double const base = set.BarHoriz ? bar.base.x : bar.base.y;
            if (!stands_on_others || !bar.is_finite()) continue;
            along.include(base);
            stands_on_zero |= base == 0;
        }
    if (stands_on_zero) along.stand_on(0);
}

// Bars have a width, in millimetres of the page or in values. Positive offsets in millimetres lead rightward
// and downward.
void leave_room_for_bars(ControlState const& state, DataSet const& set, AxisReach const& across) {
    if (across.axis.AxisLength <= 0) return;
    bool const is_x = across.axis.AxisXY == AxisKind::X;
    double const units_per_mm = is_x ? state.UnitsPerMmX : state.UnitsPerMmY;
    double low = air_beside_bars_mm * units_per_mm, high = low;
    if (has_value_width(set)) {
        const Extent points = across.reach.extent;
        if (points.empty()) return;
        across.include(values_across_bar(set, points.low).low);
        across.include(values_across_bar(set, points.high).high);
    } else {
        double const half_width = half_width_of_bars(set.DataSymbolSize);
        double const offset = set.BarOffset * units_per_mm * (is_x == across.axis.AxisReverse ? -1 : 1);
        low += half_width - offset;
        high += half_width + offset;
    }
    double const length = across.axis.AxisLength;
    across.reach.room_low = std::max(across.reach.room_low, low / length);
    across.reach.room_high = std::max(across.reach.room_high, high / length);
}

// Nothing goes beyond all of it.
void stand_on_all(AxisReach const& along, Extent const& ends) {
    constexpr double all = 100, rounding = 1e-9; // percent
    for (double const end : {ends.low, ends.high})
        if (std::abs(std::abs(end) - all) < rounding) along.stand_on(end);
}

// Beyond the ends of bars, about as much as the usual labels need, which are measured only when they are
// drawn.
void leave_room_for_labels(ControlState const& state, DataSet const& set, Extent const& ends,
                           AxisReach const& along) {
    bool const at_end = set.BarLabels == static_cast<std::uint8_t>(document::BarLabelling::AtEnd);
    if (!at_end || along.axis.AxisLength <= 0) return;
    constexpr double line_mm = 5, text_mm = 9;
    double const room =
        (set.BarHoriz ? text_mm * state.UnitsPerMmX : line_mm * state.UnitsPerMmY) / along.axis.AxisLength;
    if (ends.high > 0) along.reach.room_high = std::max(along.reach.room_high, room);
    if (ends.low < 0) along.reach.room_low = std::max(along.reach.room_low, room);
}

// Bars without a base begin beyond the edge of the plot area; that edge is 0 for them where it can be.
void include_base(Plane const& plane, Extent const& ends) {
    AxisReach const& along = plane.set.BarHoriz ? plane.x : plane.y;
    if (plane.set.BarBase && std::isfinite(plane.set.BarBaseValue))
        along.stand_on(plane.set.BarBaseValue);
    else if (!plane.set.BarBase && ends.low >= 0 && !ends.empty())
        along.stand_on(0);
}

/// The reaches of one graph in the making.
class Reaches {
public:
    Reaches(ControlState const& state, Graph const& graph)
        : state_(state), graph_(graph), found_(graph.Axes.size()),
          some_are_stacked_(std::ranges::any_of(
              graph.DataSets, [](DataSet const& set) { return are_bars(set) && set.BarStacked; })),
          plan_(graph) {}

    void add(DataSet const& set, std::int16_t index) {
        if (set.DataHide) return;
        auto const along = [&](std::int16_t axis, std::vector<Reach>& reaches) -> AxisReach {
            return {at(graph_.Axes, axis, "axis"), at(reaches, axis)};
        };
        const Plane plane{set, along(set.xAxisIndex, found_), along(set.yAxisIndex, found_)};
        if (SeriesKind const* const kind = series_kind(set)) {
            kind->include_reach(state_, set, plane.x, plane.y);
            std::int16_t const third = kind->third_axis(graph_, set);
            return third < 0 ? void() : kind->include_third(set, along(third, found_));
        }
        if (set.points.size() == 0) return;
        if (set.DataLineStyle > 0 && is_area(set)) include_area(graph_, plane);
        if (!are_bars(set)) return include_points(plane, shown_points(graph_, set));
        if (set.DataLineStyle > 0) include_points(plane, set.points);
        // Apart from the others, because where these bars begin depends on their own ends.
        std::vector<Reach> own(graph_.Axes.size());
        const Plane bars{set, along(set.xAxisIndex, own), along(set.yAxisIndex, own)};
        if (plan_.holds(index)) {
            include_arranged(bars, index);
            for (std::size_t i = 0; i < own.size(); ++i) found_[i].join(own[i]);
            return;
        }
        bool const stands_on_others = set.BarStacked && index > 0;
        if (!set.BarStacked) stack_.ends.clear();
        if (some_are_stacked_)
            include_stacked(bars, stack_, stands_on_others);
        else
            include_points(bars, set.points);
        if (!stands_on_others) include_base(bars, (set.BarHoriz ? bars.x : bars.y).reach.extent);
        leave_room_for_bars(state_, set, set.BarHoriz ? bars.y : bars.x);
        for (std::size_t i = 0; i < own.size(); ++i) found_[i].join(own[i]);
    }

    std::vector<Reach> const& found() const { return found_; }

private:
    // In values, so no more room is needed than the outermost bars have.
    void include_arranged(Plane const& plane, std::int16_t index) const {
        DataSet const& set = plane.set;
        AxisReach const& across = set.BarHoriz ? plane.y : plane.x;
        AxisReach const& along = set.BarHoriz ? plane.x : plane.y;
        const BarPlan::Share share = *plan_.share_of(index);
        // Of categories the axis shows half of one more anyway.
        double const reach = across.axis.AxisCategories ? 0 : std::abs(share.offset) + share.half_width;
        std::size_t point = 0;
        bool stands_on_zero = false;
        Extent ends;
        for (PointBlock const& block : set.points.blocks())
            for (std::size_t i = 0; i < block.size(); ++i) {
                double const x = block.x()[i], y = block.y()[i], value = set.BarHoriz ? y : x;
                const BarEnds bar = plan_.ends(index, point++, set.BarHoriz ? x : y);
                if (!across.has_place(value) || !along.has_place(bar.to)) continue;
                const scale::ScaleFrom from{value, across.axis.AxisLog};
                across.include(from.value_at(-reach));
                across.include(from.value_at(reach));
                if (plan_.in_percent())
                    along.include(bar.to); // errors are of values, not of their shares
                else
                    plane.include(set.BarHoriz ? Point{bar.to, value} : Point{value, bar.to},
                                  errors_of(block, i));
                ends.include(bar.to);
                stands_on_zero |= bar.from == 0;
            }
        if (stands_on_zero) along.stand_on(0);
        if (plan_.in_percent()) return stand_on_all(along, ends);
        if (plan_.stacks()) return;
        include_base(plane, ends);
        leave_room_for_labels(state_, set, ends, along);
    }

    ControlState const& state_;
    Graph const& graph_;
    std::vector<Reach> found_;
    bool some_are_stacked_;
    BarPlan plan_;
    BarStack stack_;
};

} // namespace

bool fits_at_each_drawing(DataSet const& set) {
    bool const begins_elsewhere = is_area(set) && (set.AreaBase || is_stacked_area(set));
    if (SeriesKind const* const kind = series_kind(set)) return kind->widens_axes();
    return begins_elsewhere || draws_errors_together(set);
}

bool Reach::has_base_at(double value) const {
    return std::ranges::find(bases, value) != bases.end();
}

void Reach::join(Reach const& other) {
    include(extent, other.extent);
    bases.insert(bases.end(), other.bases.begin(), other.bases.end());
    room_low = std::max(room_low, other.room_low);
    room_high = std::max(room_high, other.room_high);
}

std::vector<Reach> reaches_of_points(ControlState const& state, Graph const& graph) {
    Reaches reaches(state, graph);
    std::int16_t index = 0;
    for (DataSet const& set : graph.DataSets) reaches.add(set, index++);
    return reaches.found();
}

void include_functions(ControlState& state, Graph const& graph, std::int16_t index, Reach& reach) {
    Axis const& axis = at(graph.Axes, index, "axis");
    for (DataSet const& set : graph.DataSets) {
        if (!has_curve(set)) continue;
        Extent extent;
        if (set.xAxisIndex == index) include_interval(set, extent);
        if (set.yAxisIndex == index)
            for (double const value :
                 values_over_full_range(state, graph, set, at(graph.Axes, set.xAxisIndex)))
                if (std::isfinite(value) && (!axis.AxisLog || value > 0)) extent.include(value);
        if (!axis.AxisLog || extent.low > 0) include(reach.extent, extent);
    }
    // In the centre of a polar graph lies 0 where nothing is less.
    bool const has_centre = graph.GraphPolar && axis.AxisXY == AxisKind::Y && !axis.AxisLog;
    if (has_centre && !reach.extent.empty() && reach.extent.low >= 0) AxisReach{axis, reach}.stand_on(0);
}

} // namespace qv::render
