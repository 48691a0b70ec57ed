#include "render/data_reach.h"

#include "render/bar_stack.h"
#include "render/bars.h"
#include "render/function_curve.h"
#include "render/series_kind.h"

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

    void include(Point point, double e) const {
        if (!x.has_place(point.x) || !y.has_place(point.y)) return;
        x.include(point.x);
        y.include(point.y);
        if (!set.ShowErrorBar || !(e != 0)) return;
        // The sign of E tells an upright error bar from a lying one.
        AxisReach const& along = e > 0 ? y : x;
        double const middle = e > 0 ? point.y : point.x;
        along.include(middle - e);
        along.include(middle + e);
    }
};

double e_of(PointBlock const& block, std::size_t index) {
    return block.e().empty() ? 0 : block.e()[index];
}

// What a block knows of all its points is as good as each of them, unless some do not count or reach further.
bool tells_all(Plane const& plane, PointBlock const& block) {
    return !block.was_cut() && (!plane.set.ShowErrorBar || block.e().empty())
           && plane.x.has_place(block.x_extent()) && plane.y.has_place(block.y_extent());
}

void include_points(Plane const& plane) {
    for (PointBlock const& block : plane.set.points.blocks()) {
        if (tells_all(plane, block)) {
            include(plane.x.reach.extent, block.x_extent());
            include(plane.y.reach.extent, block.y_extent());
            continue;
        }
        for (std::size_t i = 0; i < block.size(); ++i)
            plane.include({block.x()[i], block.y()[i]}, e_of(block, i));
    }
}

bool are_bars(DataSet const& set) {
    return set.DataSymbol == symbol_bar;
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
            plane.include(bar.end, e_of(block, i));
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
              graph.DataSets, [](DataSet const& set) { return are_bars(set) && set.BarStacked; })) {}

    void add(DataSet const& set, bool is_first) {
        if (set.DataHide) return;
        auto const along = [&](std::int16_t index, std::vector<Reach>& reaches) -> AxisReach {
            return {at(graph_.Axes, index, "axis"), at(reaches, index)};
        };
        const Plane plane{set, along(set.xAxisIndex, found_), along(set.yAxisIndex, found_)};
        if (SeriesKind const* const kind = series_kind(set))
            return kind->include_reach(state_, set, plane.x, plane.y);
        if (set.points.size() == 0) return;
        if (!are_bars(set)) return include_points(plane);
        if (set.DataLineStyle > 0) include_points(plane);
        // Apart from the others, because where these bars begin depends on their own ends.
        std::vector<Reach> own(graph_.Axes.size());
        const Plane bars{set, along(set.xAxisIndex, own), along(set.yAxisIndex, own)};
        bool const stands_on_others = set.BarStacked && !is_first;
        if (!set.BarStacked) stack_.ends.clear();
        if (some_are_stacked_)
            include_stacked(bars, stack_, stands_on_others);
        else
            include_points(bars);
        if (!stands_on_others) include_base(bars, (set.BarHoriz ? bars.x : bars.y).reach.extent);
        leave_room_for_bars(state_, set, set.BarHoriz ? bars.y : bars.x);
        for (std::size_t i = 0; i < own.size(); ++i) found_[i].join(own[i]);
    }

    std::vector<Reach> const& found() const { return found_; }

private:
    ControlState const& state_;
    Graph const& graph_;
    std::vector<Reach> found_;
    bool some_are_stacked_;
    BarStack stack_;
};

} // namespace

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
    bool is_first = true;
    for (DataSet const& set : graph.DataSets) {
        reaches.add(set, is_first);
        is_first = false;
    }
    return reaches.found();
}

void include_functions(ControlState& state, Graph const& graph, std::int16_t index, Reach& reach) {
    Axis const& axis = at(graph.Axes, index, "axis");
    for (DataSet const& set : graph.DataSets) {
        if (!has_curve(set)) continue;
        Extent extent;
        if (set.xAxisIndex == index) include_interval(set, extent);
        if (set.yAxisIndex == index)
            for (double const value : values_over_full_range(state, set, at(graph.Axes, set.xAxisIndex)))
                if (std::isfinite(value) && (!axis.AxisLog || value > 0)) extent.include(value);
        if (!axis.AxisLog || extent.low > 0) include(reach.extent, extent);
    }
}

} // namespace qv::render
