#include "interact/dragging.h"

#include "base/convert.h"
#include "document/trap.h"
#include "interact/front.h"
#include "interact/hit_test.h"
#include "interact/read_out.h"
#include "render/legend.h"
#include "render/legend_on_page.h"
#include "render/page_marks.h"
#include "render/pipeline.h"
#include "scale/numeric.h"

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>

namespace qv::interact {
namespace {

using document::ControlState;
using document::Corner;
using document::Graph;
using document::Pointing;
using scale::Max;
using scale::Min;
using scale::MinMax;

Corner rounded(Point place) {
    return {to_i32(place.x), to_i32(place.y)};
}

// Legends and frames may lie anywhere a 32-bit number reaches; what would lie beyond stays at its end.
std::int32_t sum(std::initializer_list<std::int64_t> terms) {
    std::int64_t total = 0;
    for (std::int64_t const term : terms) total += term;
    constexpr std::int64_t low = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t high = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(MinMax(total, low, high));
}

std::int32_t difference(std::int64_t a, std::int64_t b) {
    return sum({a, -b});
}

/// A frame's start brought to another place in twips; where it stays, its fraction of the page keeps every
/// digit.
void move_start(std::int32_t& start, float& fraction, std::int32_t place, std::int32_t page) {
    if (start == place) return;
    start = place;
    fraction = static_cast<float>(place) / static_cast<float>(page);
}

void move_body(ControlState& state, Graph& graph, Corner corner) {
    move_start(graph.FrameLeft, graph.GraphLeft, Max(0, corner.left), state.PageWidth);
    move_start(graph.FrameTop, graph.GraphTop, Max(0, corner.top), state.PageHeight);
    if (!graph.LegendShow) return;
    graph.LegendLeft = sum({graph.FrameLeft, state.pointing.LegendGrab.left});
    graph.LegendTop = sum({graph.FrameTop, state.pointing.LegendGrab.top});
}

/// A graph along one direction: place and size as fractions of the page, margins in twips.
struct Extent {
    float& start;
    float& size;
    float& near_margin;
    float& far_margin;
    float page;  // twips
    float mouse; // twips

    float least_size() const { return (near_margin + far_margin) / page; }
    void drag_frame_start() {
        float const end = start + size;
        start = Min(end - least_size(), mouse / page);
        size = end - start;
    }
    void drag_frame_end() { size = Max(least_size(), mouse / page - start); }
    void drag_plot_start() { near_margin = MinMax(mouse - start * page, 0.0F, size * page - far_margin); }
    void drag_plot_end() { far_margin = Max(0.0F, (start + size) * page - mouse); }
};

void move_hit_part(ControlState& state, Graph& graph, Point mouse, Corner corner) {
    Pointing const& on = state.pointing;
    if (!graph.margins_by_hand && on.on_plot_edge()) {
        // From now on they are as wide as a person wants them.
        graph.set_margins(graph.margins());
        graph.margins_by_hand = true;
    }
    Extent across{graph.GraphLeft,
                  graph.GraphWidth,
                  graph.BorderLeft,
                  graph.BorderRight,
                  static_cast<float>(state.PageWidth),
                  static_cast<float>(mouse.x)};
    Extent down{graph.GraphTop,
                graph.GraphHeight,
                graph.BorderTop,
                graph.BorderBottom,
                static_cast<float>(state.PageHeight),
                static_cast<float>(mouse.y)};
    if (graph.GraphWholePage && (on.OnGraphBody || on.on_frame_edge())) return; // its frame is the page's
    if (on.OnGraphBody) return move_body(state, graph, corner);
    if (on.OnFrameLeft) return across.drag_frame_start();
    if (on.OnFrameRight) return across.drag_frame_end();
    if (on.OnFrameTop) return down.drag_frame_start();
    if (on.OnFrameBottom) return down.drag_frame_end();
    if (on.OnPlotLeft) return across.drag_plot_start();
    if (on.OnPlotRight) return across.drag_plot_end();
    if (on.OnPlotTop) return down.drag_plot_start();
    if (on.OnPlotBottom) down.drag_plot_end();
}

/// The nearest place of the legend's corner that keeps the legend in the frame.
Corner inside_frame(Graph const& graph, Corner corner) {
    return {
        MinMax(corner.left, graph.FrameLeft, sum({graph.FrameLeft, graph.FrameWidth, -graph.LegendWidth})),
        MinMax(corner.top, graph.FrameTop, sum({graph.FrameTop, graph.FrameHeight, -graph.LegendHeight}))};
}

/// Puts the legend's corner somewhere and tells its place in percent of the frame.
void place_legend(ControlState& state, Graph& graph, Corner corner) {
    render::LegendPosition(state, state.MouseGraph, corner.left, corner.top);
    graph.legend_by_hand = true;
    graph.LegendPlace = 0;
    auto const percent = [](std::int32_t part, std::int32_t whole) {
        return whole == 0 ? 0.0F : static_cast<float>(part) * 100 / static_cast<float>(whole);
    };
    graph.LegendTableLeft = percent(difference(graph.LegendLeft, graph.FrameLeft), graph.FrameWidth);
    graph.LegendTableTop = percent(difference(graph.LegendTop, graph.FrameTop), graph.FrameHeight);
}

bool move_legend(ControlState& state) {
    const render::MarksLifted lifted(state);
    return render::move_legend_on_page(state, state.MouseGraph);
}

} // namespace

PlaceOnPage place_on_page(ControlState const& state, Graph const& graph) {
    double const width = state.PageWidth, height = state.PageHeight;
    const document::Margins margins = graph.margins();
    PlaceOnPage place{graph.GraphLeft * width,
                      graph.GraphTop * height,
                      graph.GraphWidth * width,
                      graph.GraphHeight * height,
                      margins.left,
                      margins.top,
                      margins.right,
                      margins.bottom};
    for (double& twips : place) twips = std::round(twips);
    return place;
}

bool DragGraph(ControlState& state, Point mouse, bool first) {
    bool moved = false;
    trapped(state, "DragGraph", [&] {
        Graph* const graph = graph_at(state, state.MouseGraph);
        if (state.Refreshing || !graph || !graph->GraphAllowDragging) return;
        Pointing& pointing = state.pointing;
        const Corner corner = rounded({mouse.x - pointing.Grab.left, mouse.y - pointing.Grab.top});
        if (!first && corner == pointing.last_graph_corner) return;
        moved = true;
        const PlaceOnPage before = place_on_page(state, *graph);
        move_hit_part(state, *graph, mouse, corner);
        pointing.last_graph_corner = corner;
        bool const is_elsewhere = place_on_page(state, *graph) != before;
        if (!first && !is_elsewhere) return;
        if (first)
            render::RefreshGraphs(state, -1, true);
        else
            refresh_graph(state, state.MouseGraph);
        if (is_elsewhere && !state.SuppressRaisingEvents) state.events->GraphPositionChanged();
    });
    return moved;
}

void DragLegendTable(ControlState& state, Point mouse, bool first) {
    trapped(state, "DragLegendTable", [&] {
        Graph* const graph = graph_at(state, state.MouseGraph);
        if (state.Refreshing || !graph || !graph->LegendShow) return;
        Pointing& pointing = state.pointing;
        const Corner at = rounded(mouse);
        const Corner corner{Max(0, difference(Max(at.left, graph->FrameLeft), pointing.LegendGrab.left)),
                            Max(0, difference(Max(at.top, graph->FrameTop), pointing.LegendGrab.top))};
        if (!first && corner == pointing.last_legend_corner) return;
        pointing.last_legend_corner = corner;
        const Corner target = inside_frame(*graph, corner);
        if (target == Corner{graph->LegendLeft, graph->LegendTop}) return;
        place_legend(state, *graph, target);
        if (move_legend(state))
            render::show_page(state);
        else
            render::RefreshGraphs(state, state.MouseGraph, true);
        if (!state.SuppressRaisingEvents) state.events->LegendPositionChanged();
    });
}

} // namespace qv::interact
