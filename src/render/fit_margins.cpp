#include "render/fit_margins.h"

#include "document/selection.h"
#include "render/axes/axes.h"
#include "render/graph_ranges.h"
#include "render/legend.h"
#include "render/legend_place.h"
#include "render/plot_geometry.h"
#include "scale/mapping.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace qv::render {
namespace {

using document::Axis;
using document::ControlState;
using document::Fitting;
using document::Graph;
using document::LeftOut;
using document::LegendPlacing;
using document::Margins;

constexpr double edge_room_mm = 1.5;       // between the texts and the frame's edge
constexpr double least_plot_share = 0.4;   // of the frame, either way, before something is left out
constexpr double most_margin_share = 0.45; // of the frame that one margin may take
constexpr double most_legend_share = 0.3;  // of the frame that a legend may take so that it hides nothing
constexpr double little_hidden = 0.01;     // of the data, for which a legend stays in the plot area
constexpr std::int8_t no_corner = Fitting{}.legend_corner;
constexpr int most_rounds = 3; // ticks depend on the room, and the room on their labels

bool is_zoomed(Graph const& graph) {
    return std::ranges::any_of(graph.Axes, [](Axis const& axis) {
        return axis.AxisValue1 != axis.ScaleMin || axis.AxisValue2 != axis.ScaleMax;
    });
}

Margins largest(Margins const& one, Margins const& other) {
    return {std::max(one.left, other.left), std::max(one.top, other.top), std::max(one.right, other.right),
            std::max(one.bottom, other.bottom)};
}

// What axes, labels and titles need of the current graph, with its margins as they are.
Margins needed_now(ControlState& state, DrawSurface& surface) {
    Graph const& graph = current_graph(state);
    scale::CalcBorders(state);
    settle_graph(state);
    if (!is_current(state, graph)) return graph.fitting.needed;
    GraphAxes(state, surface, AxesPass::Measured);
    auto const room = [&](float reach, double units_per_mm, std::int32_t frame) {
        double const wanted = std::max<double>(reach, 0) + edge_room_mm * units_per_mm;
        return static_cast<float>(std::min(std::ceil(wanted), most_margin_share * frame));
    };
    Margins const& reach = state.axes_reach;
    return {room(reach.left, state.UnitsPerMmX, graph.FrameWidth),
            room(reach.top, state.UnitsPerMmY, graph.FrameHeight),
            room(reach.right, state.UnitsPerMmX, graph.FrameWidth),
            room(reach.bottom, state.UnitsPerMmY, graph.FrameHeight)};
}

bool plot_is_large_enough(Graph const& graph) {
    const Margins margins = graph.margins();
    double const width = graph.FrameWidth, height = graph.FrameHeight;
    return width - margins.left - margins.right >= least_plot_share * width
           && height - margins.top - margins.bottom >= least_plot_share * height;
}

void fit_axes_and_titles(ControlState& state, DrawSurface& surface, Graph& graph, Margins const& at_least) {
    // From the same margins each time, so that what comes out does not depend on what was there before.
    graph.fitting.needed = at_least;
    for (int round = 0; round < most_rounds; ++round) {
        const Margins needed = largest(at_least, needed_now(state, surface));
        if (!is_current(state, graph) || needed == graph.fitting.needed) return;
        graph.fitting.needed = needed;
    }
}

void fit_whole(ControlState& state, DrawSurface& surface, Graph& graph) {
    constexpr LeftOut barest = LeftOut::Labels;
    // While a person zooms, the plot area does not move for shorter labels.
    Margins at_least;
    if (is_zoomed(graph)) {
        at_least = graph.fitting.needed;
        at_least.right -= graph.fitting.legend_room;
    }
    graph.fitting.left_out = LeftOut::Nothing;
    fit_axes_and_titles(state, surface, graph, at_least);
    while (is_current(state, graph) && !plot_is_large_enough(graph) && graph.fitting.left_out != barest) {
        graph.fitting.left_out = static_cast<LeftOut>(static_cast<int>(graph.fitting.left_out) + 1);
        fit_axes_and_titles(state, surface, graph, {});
    }
}

/// Whether the legend of a graph is better placed beside the plot area than in it.
bool belongs_beside(ControlState& state, Graph& graph, LegendSize size, double room, bool was_beside) {
    if (graph.has_placing(LegendPlacing::BesideThePlot)) return true;
    if (!fits_in_plot(size, plot_box(graph))) return true;
    if (was_beside) graph.fitting.legend_corner = no_corner; // nobody has seen it there
    double const hidden = settle_legend_corner(state, graph, size);
    if (is_zoomed(graph)) return was_beside; // the plot area stays while a person zooms
    return hidden > (was_beside ? 0 : little_hidden) && room <= most_legend_share * graph.FrameWidth;
}

// A legend beside the plot area adds to the margin on the right. One that has room neither there nor in the
// plot area is left out.
void make_room_for_legend(ControlState& state, DrawSurface& surface, Graph& graph) {
    bool const was_beside = graph.fitting.legend_beside;
    graph.fitting.legend_beside = graph.fitting.legend_left_out = false;
    graph.fitting.legend_room = 0;
    if (!graph.LegendShow || !graph.finds_legend_place()) return;
    const LegendSize size = legend_size(state, surface, graph);
    if (size.width <= 0) return;
    double const room = size.width + legend_gap_mm * state.UnitsPerMmX;
    if (!belongs_beside(state, graph, size, room, was_beside)) return;
    bool const has_room = room <= most_margin_share * graph.FrameWidth;
    graph.fitting.legend_beside = has_room;
    graph.fitting.legend_left_out = !has_room && !fits_in_plot(size, plot_box(graph));
    if (!has_room) return;
    graph.fitting.legend_room = static_cast<float>(room);
    graph.fitting.needed.right = static_cast<float>(graph.margins().right + room);
}

void fit(ControlState& state, DrawSurface& surface, std::int16_t index) {
    const document::CurrentGraphScope current(state, index);
    Graph& graph = current_graph(state);
    if (!graph.GraphInclude) return;
    if (state.FitMargins) {
        fit_whole(state, surface, graph);
    } else {
        Fitting const before = graph.fitting;
        graph.fitting = {};
        if (graph.finds_legend_place()) {
            graph.fitting.legend_corner = before.legend_corner;
            graph.fitting.legend_beside = before.legend_beside;
            needed_now(state, surface); // where data lie tells only a range that is settled
        } else {
            scale::CalcBorders(state);
        }
    }
    if (is_current(state, graph)) make_room_for_legend(state, surface, graph);
}

// Graphs one above the other have one place and width, graphs side by side one place and height.
void align(ControlState& state) {
    auto const& graphs = state.Graphs;
    std::vector<Margins> drawn;
    drawn.reserve(graphs.size());
    for (auto const& graph : graphs) drawn.push_back(graph->margins());
    for (auto const& one : graphs) {
        Margins& needed = one->fitting.needed;
        for (std::size_t i = 0; i < graphs.size(); ++i) {
            Graph const& other = *graphs[i];
            if (!one->GraphInclude || !other.GraphInclude) continue;
            if (one->FrameLeft == other.FrameLeft && one->FrameWidth == other.FrameWidth) {
                needed.left = std::max(needed.left, drawn[i].left);
                needed.right = std::max(needed.right, drawn[i].right);
            }
            if (one->FrameTop == other.FrameTop && one->FrameHeight == other.FrameHeight) {
                needed.top = std::max(needed.top, drawn[i].top);
                needed.bottom = std::max(needed.bottom, drawn[i].bottom);
            }
        }
    }
}

} // namespace

bool has_margins_to_fit(ControlState const& state) {
    return state.FitMargins || state.AlignPlots || std::ranges::any_of(state.Graphs, [](auto const& graph) {
               return graph->finds_legend_place() || graph->fitting != Fitting{};
           });
}

bool fit_margins(ControlState& state, DrawSurface& surface, std::int16_t alone) {
    if (!has_margins_to_fit(state)) return false;
    std::vector<std::pair<Graph const*, Margins>> before;
    for (auto const& graph : state.Graphs) before.emplace_back(graph.get(), graph->margins());
    for (std::int16_t index = 0; index < state.NumGraphs(); ++index) fit(state, surface, index);
    if (state.AlignPlots) align(state);
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (i >= state.Graphs.size() || state.Graphs[i].get() != before[i].first) return true;
        if (static_cast<std::int16_t>(i) != alone && before[i].first->margins() != before[i].second)
            return true;
    }
    return false;
}

} // namespace qv::render
