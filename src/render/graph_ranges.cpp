#include "render/graph_ranges.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/axes/axes.h"
#include "render/axes/axis_range.h"
#include "render/data_reach.h"
#include "render/equal_units.h"
#include "render/grids/color_scale.h"
#include "render/kinds/series_kind.h"
#include "scale/category_text.h"
#include "scale/fitted_range.h"
#include "scale/mapping.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;
using document::AxisMode;
using document::AxisRanges;
using document::ControlState;
using document::FittedBy;
using document::Graph;

/// An axis and what is known of it while ranges are settled.
struct Member {
    std::int16_t graph = 0;
    std::int16_t index = 0;
    Axis* axis = nullptr;
    Reach reach;
    AxisRanges before;
    bool was_unsettled = false;
    bool has_moved = false; // since it shared its range last

    bool shows_all() const { return axis->ranges().shows_all(); }
};

/// Axes that share one range.
using Group = std::vector<Member*>;

bool has_range_that_fits_itself(ControlState const& state, Graph const& graph) {
    return state.AutoFit || std::ranges::any_of(graph.DataSets, [](document::DataSet const& set) {
               return !set.DataHide && fits_at_each_drawing(set);
           });
}

/// What is asked for besides what the page's and the axes' properties say.
struct Fit {
    std::vector<std::int16_t> graphs; // whose ranges are settled
    std::int16_t graph = -1;          // whose axes are fitted now
    double margin = 0;
};

bool is_linked(Axis const& axis) {
    return !axis.AxisLink.empty();
}

bool has_links(Graph const& graph) {
    return graph.GraphInclude && std::ranges::any_of(graph.Axes, is_linked);
}

bool is_automatic(Axis const& axis) {
    return axis.has_mode(AxisMode::Automatic);
}

/// Axes of different scales have no range in common.
bool share_range(Axis const& one, Axis const& other) {
    return &one == &other
           || (is_linked(one) && one.AxisLink == other.AxisLink && one.AxisLog == other.AxisLog);
}

std::vector<Member> members_of(ControlState const& state, std::vector<std::int16_t> const& graphs) {
    std::vector<Member> members;
    for (std::int16_t const graph : graphs)
        for (std::int16_t i = 0; i < at(state.Graphs, graph)->NumAxes(); ++i) {
            Axis& axis = at(at(state.Graphs, graph)->Axes, i);
            members.push_back({graph,
                               i,
                               &axis,
                               {},
                               axis.ranges(),
                               axis.AxisRescale,
                               axis.linked && *axis.linked != axis.ranges()});
        }
    return members;
}

std::vector<Group> groups_of_kind(std::vector<Member>& members, AxisKind kind) {
    std::vector<Group> groups;
    for (Member& member : members) {
        if (member.axis->AxisXY != kind) continue;
        auto const found = std::ranges::find_if(
            groups, [&](Group const& group) { return share_range(*group.front()->axis, *member.axis); });
        if (found != groups.end())
            found->push_back(&member);
        else
            groups.push_back({&member});
    }
    return groups;
}

/// The one whose range the others take: the one that was moved, of the current graph if there is one.
Member* leader_of(ControlState const& state, Group const& group) {
    Member* leader = nullptr;
    for (Member* const member : group)
        if (member->has_moved
            && (!leader || (member->graph == state.CurrentGraph && leader->graph != state.CurrentGraph)))
            leader = member;
    return leader;
}

/// The one that moved, else one that has shared the range already, before those that have just joined.
Member& leading_member(ControlState const& state, Group const& group) {
    if (Member* const leader = leader_of(state, group)) return *leader;
    auto const found =
        std::ranges::find_if(group, [](Member const* member) { return member->axis->linked.has_value(); });
    return found == group.end() ? *group.front() : **found;
}

void give_ranges(Group const& group, AxisRanges const& ranges) {
    for (Member* const member : group) member->axis->take_ranges(ranges);
}

/// What of the range shown lies in a full one that may be another now; all where nothing does. Where units
/// are kept equal, what is shown may reach beyond it.
AxisRanges within(document::Extent const& full, AxisRanges const& shown, bool may_reach_beyond) {
    auto const [low, high] = std::minmax(shown.AxisValue1, shown.AxisValue2);
    double const from = std::max(low, full.low), to = std::min(high, full.high);
    if (!(from < to)) return {full.low, full.high, full.low, full.high};
    return may_reach_beyond ? AxisRanges{low, high, full.low, full.high}
                            : AxisRanges{from, to, full.low, full.high};
}

// A logarithmic axis whose values are not positive, none of them, becomes linear.
std::vector<Reach> reaches_of(ControlState const& state, Graph& graph) {
    std::vector<Reach> reaches = reaches_of_points(state, graph);
    std::vector<std::size_t> tried;
    for (std::size_t i = 0; i < reaches.size(); ++i)
        if (graph.Axes[i].AxisLog && is_automatic(graph.Axes[i]) && reaches[i].extent.empty())
            tried.push_back(i);
    if (tried.empty() || graph.NumPoints == 0) return reaches;
    for (std::size_t const i : tried) graph.Axes[i].AxisLog = false;
    reaches = reaches_of_points(state, graph);
    for (std::size_t const i : tried) graph.Axes[i].AxisLog = reaches[i].extent.empty();
    return reaches;
}

void find_reaches(ControlState& state, Fit const& fit, std::vector<Member>& members) {
    for (std::int16_t const index : fit.graphs) {
        const std::vector<Reach> reaches = reaches_of(state, *at(state.Graphs, index));
        for (Member& member : members)
            if (member.graph == index) member.reach = reaches[static_cast<std::size_t>(member.index)];
    }
}

Reach joined_reach(ControlState& state, Group const& group) {
    Reach all;
    for (Member* const member : group) {
        include_functions(state, *at(state.Graphs, member->graph), member->index, member->reach);
        all.join(member->reach);
    }
    return all;
}

std::optional<document::Extent> range_of(Reach const& reach, Axis const& axis, double margin) {
    constexpr double half_a_day = 12 * 3600.0; // about a single moment
    if (axis.AxisCategories) {
        const document::Extent range = scale::category_range(axis, reach.extent);
        return std::isfinite(range.high - range.low) ? std::optional(range) : std::nullopt;
    }
    auto const [low, high] = reach.extent;
    return scale::fitted_range({.low = low,
                                .high = high,
                                .is_log = axis.AxisLog,
                                .margin = margin,
                                .stands_low = reach.has_base_at(low),
                                .stands_high = reach.has_base_at(high),
                                .room_low = reach.room_low,
                                .room_high = reach.room_high,
                                .single_pad = axis.AxisTime ? half_a_day : 0});
}

void fit_group(ControlState& state, Group const& group, Fit const& fit) {
    const Reach reach = joined_reach(state, group);
    bool const has_categories = leading_member(state, group).axis->AxisCategories;
    if (reach.extent.empty() && !has_categories) return;
    auto const any = [&](auto const& holds) { return std::ranges::any_of(group, holds); };
    bool const is_asked = any([&](Member const* member) { return member->graph == fit.graph; });
    bool const is_new = any([](Member const* member) { return member->axis->AxisRescale; });
    bool const is_evened =
        any([&](Member const* member) { return at(state.Graphs, member->graph)->KeepEqualUnits; });
    Axis const& leading = *leading_member(state, group).axis;
    double const margin = is_asked ? fit.margin : leading.fit_margin;
    auto const range = range_of(reach, leading, margin);
    if (!range && is_asked)
        raise_fault(FaultNumber::Overflow,
                    "The data of an axis lie too far apart to be shown together; its range stays.");
    if (!range) return;
    bool const shows_all = is_asked || is_new || leading.ranges().shows_all();
    give_ranges(group, shows_all ? AxisRanges{range->low, range->high, range->low, range->high}
                                 : within(*range, leading.ranges(), is_evened));
    for (Member* const member : group) {
        Axis& axis = *member->axis;
        axis.AxisRescale = false;
        axis.fit_margin = margin;
        axis.fitted_by = is_asked ? FittedBy::FitAxes : FittedBy::AutoFit;
        if (!is_asked || reach.extent.empty()) continue; // AutoFit may be switched off again
        axis.DataMin = reach.extent.low;
        axis.DataMax = reach.extent.high;
    }
}

/// Round ranges are found by each axis when it is drawn; of the same data, so that they are the same.
void unite_group(ControlState& state, Group const& group) {
    document::Extent data, functions;
    bool is_new = false;
    for (Member* const member : group) {
        Axis const& axis = *member->axis;
        is_new |=
            axis.AxisRescale || !axis.linked || (axis.fitted_by == FittedBy::AutoFit && member->shows_all());
        if (!axis.AxisNoData) {
            data.include(axis.DataMin);
            data.include(axis.DataMax);
        }
        if (axis.AxisCategories && !axis.categories.empty()) {
            data.include(0);
            data.include(static_cast<double>(axis.categories.size()) - 1);
        }
        if (!axis.AxisNoData || axis.AxisCategories) {
            continue;
        }
        Reach reach;
        include_functions(state, *at(state.Graphs, member->graph), member->index, reach);
        if (!reach.extent.empty()) {
            functions.include(reach.extent.low);
            functions.include(reach.extent.high);
        }
    }
    if (!is_new) {
        if (Member const* const leader = leader_of(state, group)) give_ranges(group, leader->axis->ranges());
        return;
    }
    if (data.empty()) data = functions.empty() ? document::Extent{0, 1} : functions;
    for (Member* const member : group) {
        Axis& axis = *member->axis;
        axis.DataMin = data.low;
        axis.DataMax = data.high;
        axis.AxisRescale = true;
    }
}

/// The range that the host has given one of the axes, or what has become of it since, is that of all.
void follow_fixed(ControlState const& state, Group const& group) {
    auto const is_fixed = [](Member const* member) { return !is_automatic(*member->axis); };
    Member const* leader = &leading_member(state, group);
    if (!leader->has_moved && !is_fixed(leader)) leader = *std::ranges::find_if(group, is_fixed);
    give_ranges(group, leader->axis->ranges());
    for (Member* const member : group)
        if (is_automatic(*member->axis)) member->axis->AxisRescale = false;
}

void settle_group(ControlState& state, Group const& group, Fit const& fit) {
    bool const fits = std::ranges::any_of(group, [&](Member const* member) {
        return member->graph == fit.graph
               || fits_itself(state, *at(state.Graphs, member->graph), *member->axis);
    });
    bool const all_automatic =
        std::ranges::all_of(group, [](Member const* member) { return is_automatic(*member->axis); });
    if (!all_automatic) {
        if (group.size() > 1) follow_fixed(state, group);
        return;
    }
    if (fits)
        fit_group(state, group, fit);
    else if (is_linked(*group.front()->axis))
        unite_group(state, group);
}

/// Widened axes hand on what they were widened to, and from what.
void share_evening(Group const& group) {
    auto const found =
        std::ranges::find_if(group, [](Member const* member) { return member->axis->evened.has_value(); });
    if (found == group.end()) return;
    Axis const& source = *(*found)->axis;
    for (Member* const member : group) {
        member->axis->take_ranges(source.ranges());
        member->axis->AxisRescale = source.AxisRescale;
        member->axis->evened = source.evened;
    }
}

bool has_new_range(Member const& member) {
    Axis const& axis = *member.axis;
    return (member.was_unsettled && !axis.AxisRescale) || axis.ScaleMin != member.before.ScaleMin
           || axis.ScaleMax != member.before.ScaleMax;
}

/// Settles the ranges of graphs that are laid out; true where a full range has become another.
bool settle(ControlState& state, Fit const& fit) {
    std::vector<Member> members = members_of(state, fit.graphs);
    for (Member& member : members) {
        take_back_evening(*member.axis);
        if (member.axis->AxisTime || member.axis->AxisCategories)
            member.axis->AxisLog = false; // as it is drawn
    }
    bool const some_fit = std::ranges::any_of(fit.graphs, [&](std::int16_t index) {
        return has_range_that_fits_itself(state, *at(state.Graphs, index));
    });
    if (some_fit || fit.graph >= 0) find_reaches(state, fit, members);
    // x first, because values of functions depend on it.
    for (AxisKind const kind : {AxisKind::X, AxisKind::Y, AxisKind::Color})
        for (Group const& group : groups_of_kind(members, kind)) settle_group(state, group, fit);
    for (std::int16_t const index : fit.graphs) {
        Graph& graph = *at(state.Graphs, index);
        if (!graph.KeepEqualUnits) continue;
        const document::CurrentGraphScope current(state, index);
        make_units_even(state, graph);
        for (AxisKind const kind : {AxisKind::X, AxisKind::Y})
            for (Group const& group : groups_of_kind(members, kind)) share_evening(group);
    }
    for (Member& member : members) {
        member.axis->linked.reset();
        if (is_linked(*member.axis)) member.axis->linked = member.axis->ranges();
    }
    return std::ranges::any_of(members, has_new_range);
}

bool needs_settling(ControlState const& state, Graph const& graph) {
    return has_range_that_fits_itself(state, graph) || graph.KeepEqualUnits
           || std::ranges::any_of(graph.Axes, [](Axis const& axis) { return axis.evened || axis.linked; });
}

std::vector<std::int16_t> linked_graphs(ControlState const& state) {
    std::vector<std::int16_t> graphs;
    for (std::int16_t i = 0; i < state.NumGraphs(); ++i)
        if (has_links(*at(state.Graphs, i))) graphs.push_back(i);
    return graphs;
}

void lay_out(ControlState& state, std::vector<std::int16_t> const& graphs) {
    for (std::int16_t const index : graphs) {
        const document::CurrentGraphScope current(state, index);
        scale::CalcBorders(state);
        set_axis_lengths(*at(state.Graphs, index));
    }
}

/// Calls `take(Axis const&)` for the linked axes of all graphs but the front one, back to front.
template <class Take>
void for_each_link_behind(ControlState const& state, Take take) {
    for (std::size_t i = 0; i + 1 < state.GraphOrder.size(); ++i)
        for (Axis const& axis : at(state.Graphs, state.GraphOrder[i])->Axes)
            if (is_linked(axis)) take(axis);
}

} // namespace

bool fits_itself(ControlState const& state, Graph const& graph, Axis const& axis) {
    auto const lies_on = [&](std::int16_t index) { return &at(graph.Axes, index, "axis") == &axis; };
    return state.AutoFit || std::ranges::any_of(graph.DataSets, [&](document::DataSet const& set) {
               if (set.DataHide || !fits_at_each_drawing(set)) return false;
               SeriesKind const* const kind = series_kind(set);
               std::int16_t const third = kind ? kind->third_axis(graph, set) : std::int16_t{-1};
               return lies_on(set.xAxisIndex) || lies_on(set.yAxisIndex) || (third >= 0 && lies_on(third));
           });
}

void settle_linked_graphs(ControlState& state) {
    bool is_new = false;
    document::trapped(state, "AxisLink", [&] {
        const std::vector<std::int16_t> graphs = linked_graphs(state);
        if (graphs.empty()) return;
        lay_out(state, graphs);
        is_new = settle(state, {graphs});
    });
    if (is_new) document::raise_scale_changed(state);
}

void settle_graph(ControlState& state) {
    Graph& graph = document::current_graph(state);
    if (has_links(graph) || !needs_settling(state, graph)) return;
    bool is_new = false;
    document::trapped(state, "AutoFit", [&] {
        set_axis_lengths(graph);
        is_new = settle(state, {{state.CurrentGraph}});
    });
    if (is_new && document::is_current(state, graph)) announce_range(state);
}

bool fit_axes(ControlState& state, double margin) {
    if (!(margin >= 0) || !std::isfinite(margin))
        raise_fault(FaultNumber::InvalidProcedureCall,
                    "FitAxes needs a margin of 0 or more, as a share of the range");
    Graph const& graph = document::current_graph(state);
    std::vector<std::int16_t> graphs{state.CurrentGraph};
    if (has_links(graph)) graphs = linked_graphs(state);
    lay_out(state, graphs);
    return settle(state, {graphs, state.CurrentGraph, margin});
}

void FitAxes(ControlState& state, double margin) {
    document::trapped(state, "FitAxes", [&] {
        if (fit_axes(state, margin)) document::raise_scale_changed(state);
    });
}

std::vector<AxisRanges> linked_ranges_behind(ControlState const& state) {
    std::vector<AxisRanges> ranges;
    for_each_link_behind(state, [&](Axis const& axis) { ranges.push_back(axis.ranges()); });
    return ranges;
}

bool are_links_settled_behind(ControlState const& state) {
    bool are_settled = true;
    for_each_link_behind(state, [&](Axis const& axis) { are_settled &= !axis.AxisRescale; });
    return are_settled;
}

} // namespace qv::render
