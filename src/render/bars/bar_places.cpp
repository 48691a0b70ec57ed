#include "render/bars/bar_places.h"

#include "document/selection.h"
#include "render/kinds/series_kind.h"
#include "render/plot_geometry.h"
#include "render/symbols.h"
#include "scale/mapping.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

using document::Axis;
using document::BarArranging;
using document::DataSet;
using document::Graph;
using document::PointBlock;

constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();

BarArranging arranging_of(Graph const& graph) {
    return graph.BarArrangement <= static_cast<std::uint8_t>(BarArranging::Percent)
               ? static_cast<BarArranging>(graph.BarArrangement)
               : BarArranging::AsSet;
}

Axis const& axis_across(Graph const& graph, DataSet const& set) {
    return at(graph.Axes, set.BarHoriz ? set.yAxisIndex : set.xAxisIndex, "axis");
}

std::span<double const> values_across(PointBlock const& block, DataSet const& set) {
    return set.BarHoriz ? block.y() : block.x();
}

std::span<double const> values_along(PointBlock const& block, DataSet const& set) {
    return set.BarHoriz ? block.x() : block.y();
}

bool share_room(DataSet const& one, DataSet const& other) {
    return one.BarHoriz == other.BarHoriz && one.xAxisIndex == other.xAxisIndex
           && one.yAxisIndex == other.yAxisIndex;
}

/// Where the bars of data sets stand, ascending, each place once.
std::vector<double> places_of(Graph const& graph, std::vector<std::int16_t> const& members) {
    std::vector<double> places;
    for (std::int16_t const index : members) {
        DataSet const& set = at(graph.DataSets, index);
        std::size_t const before = places.size();
        bool are_known = true; // mostly data sets have the same places in the same order
        std::size_t known = 0;
        for (PointBlock const& block : set.points.blocks())
            for (double const value : values_across(block, set)) {
                if (!std::isfinite(value)) continue;
                are_known = are_known && known < before && places[known++] == value;
                places.push_back(value);
            }
        if (are_known) places.resize(before);
    }
    if (!std::ranges::is_sorted(places)) std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

// The room of a value on the axis's own scale: a category, else the way to the nearest neighbour anywhere.
double room_of_value(Axis const& axis, std::vector<double> const& places) {
    if (axis.AxisCategories) return 1;
    double least = HUGE_VAL;
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (axis.AxisLog && !(places[i - 1] > 0)) continue;
        least = std::min(least, scale::ScaleFrom{places[i - 1], axis.AxisLog}(places[i]));
    }
    return std::isfinite(least) ? least : 1;
}

/// Looks for places that mostly follow each other.
class PlaceFinder {
public:
    explicit PlaceFinder(std::vector<double> const& places) : places_(places) {}
    std::size_t operator()(double place) {
        if (next_ >= places_.size() || places_[next_] != place)
            next_ = static_cast<std::size_t>(std::ranges::lower_bound(places_, place) - places_.begin());
        return next_++;
    }

private:
    std::vector<double> const& places_;
    std::size_t next_ = 0;
};

/// What stands at one place so far.
struct Stack {
    double above = 0, below = 0, total = 0;
};

} // namespace

bool are_bars(DataSet const& set) {
    return set.DataSymbol == symbol_bar && !series_kind(set);
}

BarPlan::BarPlan(Graph const& graph) {
    const BarArranging arranging = arranging_of(graph);
    if (arranging == BarArranging::AsSet) return;
    stacks_ = arranging != BarArranging::Grouped;
    in_percent_ = arranging == BarArranging::Percent;
    entries_.resize(graph.DataSets.size());
    std::vector<std::int16_t> left;
    for (std::int16_t i = 0; i < graph.NumDataSets(); ++i)
        if (DataSet const& set = at(graph.DataSets, i); !set.DataHide && are_bars(set)) left.push_back(i);
    while (!left.empty()) {
        DataSet const& first = at(graph.DataSets, left.front());
        auto const rest = std::stable_partition(left.begin(), left.end(), [&](std::int16_t index) {
            return share_room(first, at(graph.DataSets, index));
        });
        plan_group(graph, {left.begin(), rest});
        left.erase(left.begin(), rest);
    }
}

void BarPlan::plan_group(Graph const& graph, std::vector<std::int16_t> const& members) {
    Axis const& axis = axis_across(graph, at(graph.DataSets, members.front()));
    const std::vector<double> places =
        stacks_ || !axis.AxisCategories ? places_of(graph, members) : std::vector<double>();
    double const share = std::isfinite(graph.BarWidthShare) ? std::clamp(graph.BarWidthShare, 0.0, 1.0) : 1;
    double const width =
        share * room_of_value(axis, places) / (stacks_ ? 1 : static_cast<double>(members.size()));
    double offset = stacks_ ? 0 : -width * (static_cast<double>(members.size()) - 1) / 2;
    for (std::int16_t const index : members) {
        at(entries_, index).share = Share{offset, width / 2};
        if (!stacks_) offset += width;
    }
    if (stacks_) return stack_group(graph, members, places);
    for (std::int16_t const index : members)
        if (DataSet const& set = at(graph.DataSets, index); set.BarBase)
            at(entries_, index).base = set.BarBaseValue;
        else
            at(entries_, index).base = nowhere;
}

void BarPlan::stack_group(Graph const& graph, std::vector<std::int16_t> const& members,
                          std::vector<double> const& places) {
    std::vector<Stack> stacks(places.size());
    auto const for_each = [&](std::int16_t index, auto take) {
        DataSet const& set = at(graph.DataSets, index);
        PlaceFinder find(places);
        for (PointBlock const& block : set.points.blocks())
            for (std::size_t i = 0; i < block.size(); ++i) {
                double const place = values_across(block, set)[i], value = values_along(block, set)[i];
                bool const counts = std::isfinite(place) && std::isfinite(value);
                take(counts ? &stacks[find(place)] : nullptr, value);
            }
    };
    if (in_percent_)
        for (std::int16_t const index : members)
            for_each(index, [](Stack* stack, double value) {
                if (stack) stack->total += std::abs(value);
            });
    for (std::int16_t const index : members)
        for_each(index, [&](Stack* stack, double value) {
            BarEnds& ends = at(entries_, index).ends.emplace_back(BarEnds{nowhere, nowhere});
            if (!stack) return; // a bar that is not drawn leaves the one below it to stand on
            double const height = !in_percent_ ? value : stack->total > 0 ? 100 * (value / stack->total) : 0;
            double& end = height < 0 ? stack->below : stack->above;
            ends = {end, end + height};
            end = ends.to;
        });
}

std::optional<BarPlan::Share> BarPlan::share_of(std::int16_t set) const {
    return static_cast<std::size_t>(set) < entries_.size() ? at(entries_, set).share : std::nullopt;
}

BarEnds BarPlan::ends(std::int16_t set, std::size_t point, double value) const {
    Entry const& entry = at(entries_, set);
    if (!stacks_) return {entry.base, value};
    return point < entry.ends.size() ? entry.ends[point] : BarEnds{nowhere, nowhere};
}

namespace {

/// One way of the page.
struct Range {
    double low, high;
    bool touches(double from, double to) const {
        return std::max(from, to) >= low && std::min(from, to) <= high;
    }
    double near(double place) const { // as good as any place far outside
        double const far = high - low + 1;
        return std::clamp(place, low - far, high + far);
    }
};

/// The two ways of a plot area as bars lie in it.
struct BarRoom {
    Range across, along;
    double edge; // where bars without a base begin

    static BarRoom of(Box const& plot, bool horizontal, double beyond) {
        const Range x{plot.left, plot.right()}, y{plot.top, plot.bottom()};
        return horizontal ? BarRoom{y, x, plot.left - beyond} : BarRoom{x, y, plot.bottom() + beyond};
    }
};

BarBox box_of(bool horizontal, double low, double high, double from, double to) {
    return horizontal ? BarBox{from, low, to, high} : BarBox{low, from, high, to};
}

void for_each_arranged(SeriesView const& view, BarPlan const& plan, auto const& take) {
    constexpr double beyond = 1000; // twips
    DataSet const& set = view.set;
    scale::AxisMap const& across = set.BarHoriz ? view.y : view.x;
    scale::AxisMap const& along = set.BarHoriz ? view.x : view.y;
    if (!across.valid || !along.valid) return;
    const BarPlan::Share share = *plan.share_of(view.index);
    const BarRoom room = BarRoom::of(view.plot, set.BarHoriz, beyond);
    double const half = std::abs(across.factor) * share.half_width, offset = across.factor * share.offset;
    std::size_t start = 0;
    for (PointBlock const& block : set.points.blocks()) {
        auto const values = values_across(block, set), heights = values_along(block, set);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const BarEnds end = plan.ends(view.index, start + i, heights[i]);
            bool const has_place =
                std::isfinite(values[i]) && (!across.is_log || values[i] > 0) && std::isfinite(end.to);
            double const middle = across(values[i]) + offset;
            if (!has_place || !room.across.touches(middle - half, middle + half)) continue;
            double const from = std::isnan(end.from) ? room.edge : along(end.from);
            take(PlacedBar{start + i, plan.stacks() ? end.to - end.from : end.to,
                           box_of(set.BarHoriz, room.across.near(middle - half),
                                  room.across.near(middle + half), room.along.near(from),
                                  room.along.near(along(end.to)))});
        }
        start += values.size();
    }
}

void for_each_as_set(SeriesView const& view, BarStack& stack, auto const& take) {
    DataSet const& set = view.set;
    const BarLayout layout(view.state, {view.index, symbol_bar, {}, {}, set.DataSymbolSize, false, {}, {}});
    Box const& plot = view.plot;
    if (!set.BarStacked) stack.ends.clear();
    stack.position = 0;
    std::size_t point = 0;
    for (PointBlock const& block : set.points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i, ++point) {
            const StackedBar bar = stacked(stack, set, {block.x()[i], block.y()[i]});
            if (!bar.is_finite()) continue;
            const BarBox box =
                layout.box(whole_twips({view.x(bar.end.x), view.y(bar.end.y)}), bar.end, bar.base);
            const Box extent = extent_of(box);
            if (extent.right() >= plot.left && extent.left <= plot.right() && extent.bottom() >= plot.top
                && extent.top <= plot.bottom())
                take(PlacedBar{point, values_along(block, set)[i], box});
        }
}

} // namespace

void for_each_bar(SeriesView const& view, BarPlan const& plan, BarStack& stack,
                  std::function<void(PlacedBar const&)> const& take) {
    if (plan.holds(view.index))
        for_each_arranged(view, plan, take);
    else
        for_each_as_set(view, stack, take);
}

std::optional<std::size_t> arranged_bar_at(SeriesView const& view, BarPlan const& plan, Point place) {
    constexpr double reach = 30; // twips, so that a bar of no length can be pointed at
    std::optional<std::size_t> found;
    if (!plan.holds(view.index) || !holds(view.plot, place)) return found;
    for_each_arranged(view, plan, [&](PlacedBar const& bar) {
        const Box box = extent_of(bar.box);
        if (holds({box.left - reach, box.top - reach, box.width + 2 * reach, box.height + 2 * reach}, place))
            found = bar.point;
    });
    return found;
}

std::optional<Box> arranged_bar_of(SeriesView const& view, BarPlan const& plan, std::size_t point) {
    std::optional<Box> found;
    if (plan.holds(view.index))
        for_each_arranged(view, plan, [&](PlacedBar const& bar) {
            if (bar.point == point) found = extent_of(bar.box);
        });
    return found;
}

Box extent_of(BarBox const& box) {
    return {std::min(box.x1, box.x2), std::min(box.y1, box.y2), std::abs(box.x2 - box.x1),
            std::abs(box.y2 - box.y1)};
}

} // namespace qv::render
