#include "render/pipeline.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/axes/axes.h"
#include "render/data_sets.h"
#include "render/fit_margins.h"
#include "render/gradient.h"
#include "render/graph_ranges.h"
#include "render/kinds/series_kind.h"
#include "render/legend.h"
#include "render/legend_on_page.h"
#include "render/page_marks.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_grid.h"
#include "scale/mapping.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;
using document::ControlState;
using document::current_graph;
using document::FillSpec;
using document::Graph;
using document::RestoreScope;
using document::trapped;

void copy_page(DrawSurface& target, DrawSurface const& source) {
    target.SelectClipPath({0, 0, target.Width(), target.Height()});
    target.BitBlt({0, 0}, target.GetClientRect(), source, {0, 0});
}

void show(ControlState& state) {
    mark_page(state);
    show_page(state);
    if (state.page_follower) state.page_follower(state);
}

void show_empty_page(ControlState& state) {
    // The whole picture, not only the page area: no strip of an earlier page may stay beside it.
    DrawSurface& page = *state.Picture1;
    page.SelectClipPath({0, 0, page.Width(), page.Height()});
    constexpr Color white = rgb(255, 255, 255);
    fill_box(page, {0, 0, page.Width(), page.Height()}, state.look ? state.PageFill.Color1 : white);
    forget_marks(state);
    show(state);
}

// What an edge of the plot area is drawn like.
struct FrameEdge {
    Axis const* axis = nullptr; // nullptr: not drawn
    int thickness = 1;          // pixels at 96 to the inch, 0 for 1
};

// An edge is the line of the first axis that stands on it. Without one it has the colour of the first axis of
// its kind, and that one's thickness where it has its ticks; a far edge without ticks is not drawn.
FrameEdge frame_edge(Graph const& graph, AxisKind kind, bool far_side) {
    for (Axis const& axis : graph.Axes)
        if (axis.AxisXY == kind && axis.AxisFarSide == far_side && !axis.AxisHide)
            return {&axis, axis.AxisThickness};
    Axis const& first = at(graph.Axes, AxisLevelIndex(graph, kind, 1));
    if (first.AxisTicksBothEnds || first.AxisFarSide == far_side) return {&first, first.AxisThickness};
    return far_side ? FrameEdge{} : FrameEdge{&first, 1};
}

// The plot area's frame over the data.
void draw_plot_frame(ControlState& state, DrawSurface& surface) {
    Graph& graph = current_graph(state);
    const Box plot = plot_box(graph);
    auto const draw = [&](Point from, Point to, AxisKind kind, bool far_side) {
        auto const [axis, thickness] = frame_edge(graph, kind, far_side);
        if (axis == nullptr) return;
        const PenScope pen(surface, thickness);
        surface.Line(from, to, LineShape::Box, axis->AxisColor);
    };
    const Point left_top{plot.left, plot.top}, right_top{plot.right(), plot.top};
    const Point left_bottom{plot.left, plot.bottom()}, right_bottom{plot.right(), plot.bottom()};
    draw(left_top, right_top, AxisKind::X, true);
    draw(left_bottom, right_bottom, AxisKind::X, false);
    draw(left_top, left_bottom, AxisKind::Y, false);
    draw(right_top, right_bottom, AxisKind::Y, true);
}

bool is_there(ControlState const& state, std::int16_t index, Graph const& graph) {
    return index < state.NumGraphs() && at(state.Graphs, index).get() == &graph;
}

document::PageGround ground_now(ControlState const& state) {
    document::PageGround ground{state, {}, state.GraphImage->GetClientRect(), linked_ranges_behind(state)};
    for (std::int16_t const index : state.GraphOrder) ground.graphs.push_back(at(state.Graphs, index).get());
    return ground;
}

// Everything but the front graph, kept in Picture2 for quick redraws.
void compose_ground(ControlState& state) {
    state.ground.reset();
    document::PageGround ground = ground_now(state);
    auto const failures = state.failures;
    DrawPageBackground(state);
    for (std::size_t i = 0; i + 1 < state.GraphOrder.size(); ++i)
        DrawGraph(state, *state.GraphImage, state.GraphOrder[i]);
    copy_page(*state.Picture2, *state.GraphImage);
    // Not kept when a part has failed, or a handler has changed the graphs meanwhile.
    document::PageGround const now = ground_now(state);
    if (state.failures != failures || now.graphs != ground.graphs) return;
    ground.linked = now.linked; // round ranges are found while axes are drawn
    state.ground = std::move(ground);
}

// One graph can be drawn on what lies behind it only while that is what would be drawn there now.
bool has_ground_of(ControlState const& state, std::int16_t index) {
    return state.ground && !state.GraphOrder.empty() && state.GraphOrder.back() == index
           && *state.ground == ground_now(state) && are_links_settled_behind(state);
}

// The front graph on the ground, and the page shown. A legend in front of the data is left out on GraphImage,
// so that a drag can take it off the page again.
void finish_page(ControlState& state, std::int16_t index) {
    Graph const& graph = *at(state.Graphs, index);
    bool const legend_in_front = graph.LegendInFront;
    DrawGraph(state, *state.GraphImage, index, FrontLegend::LeftOut);
    copy_page(*state.Picture1, *state.GraphImage);
    forget_marks(state);
    if (legend_in_front && is_there(state, index, graph) && graph.GraphInclude)
        put_legend_on_page(state, index);
    show(state);
}

// What the page will be drawn over if the front graph changes; the page shown stays as it is.
void finish_ground(ControlState& state, std::int16_t index) {
    Graph const& graph = *at(state.Graphs, index);
    if (graph.GraphInclude) {
        const document::CurrentGraphScope current(state, index);
        LegendTable(state, *state.GraphImage, index);
        if (!graph.LegendInFront && is_current(state, graph)) PlotDataSets(state, *state.GraphImage);
    }
    show(state);
}

// A page in shapes has the margins of the page that is shown.
void fit_graphs(ControlState& state, std::int16_t which) {
    if (state.keeps_drawn_ranges || !has_margins_to_fit(state)) return;
    if (fit_margins(state, *state.GraphImage, which)) state.ground.reset();
    settle_linked_graphs(state); // whose axes have other lengths now
}

void refresh_once(ControlState& state, std::int16_t which, bool legend_on_page) {
    const RestoreScope refreshing(state.Refreshing, true);
    for (auto const* surface : {&state.Picture1, &state.GraphImage, &state.Picture2})
        (*surface)->state.Smooth = state.Smooth;
    settle_linked_graphs(state);
    if (state.Graphs.empty()) { // a handler has emptied the page
        state.refresh_asked_meanwhile = true;
        return;
    }
    if (which >= state.NumGraphs()) return;
    Graph const* const asked = which < 0 ? nullptr : at(state.Graphs, which).get();
    state.legend_on_page.reset();
    fit_graphs(state, which);
    if (which >= state.NumGraphs()) return;
    if (asked && is_there(state, which, *asked) && has_ground_of(state, which))
        copy_page(*state.GraphImage, *state.Picture2);
    else
        compose_ground(state);
    if (state.GraphOrder.empty()) return show(state);
    (legend_on_page ? finish_page : finish_ground)(state, state.GraphOrder.back());
    if (asked && is_there(state, which, *asked)) state.CurrentGraph = which;
}

void draw_page_edge(ControlState& state) {
    DrawSurface& page = *state.GraphImage;
    int const thickness = state.PageFill.EdgeThickness;
    if (thickness == 0) return;
    auto const half = [](double pixels, double twips_per_pixel) {
        return std::trunc(round_half_even(pixels * twips_per_pixel) / 2);
    };
    const PenScope pen(page, thickness);
    if (state.PageFill.EdgeColor != -1) page.state.ForeColor = state.PageFill.EdgeColor;
    int const width = whole_pen(page.pen_pixels(thickness));
    page.Line({half(width, page.TwipsPerPixelX()), half(width, page.TwipsPerPixelY())},
              {state.PageWidth - half(width + 1, page.TwipsPerPixelX()),
               state.PageHeight - half(width + 1, page.TwipsPerPixelY())},
              LineShape::Box, page.state.ForeColor);
}

// What a frame has on each side of a hole in it. The strips overlap at the corners, so that no seam is seen
// where they meet.
std::vector<Box> strips_around(Box const& hole, Box const& frame) {
    std::vector<Box> strips{
        {frame.left, frame.top, frame.width, hole.top - frame.top},
        {frame.left, frame.top, hole.left - frame.left, frame.height},
        {hole.right(), frame.top, frame.right() - hole.right(), frame.height},
        {frame.left, hole.bottom(), frame.width, frame.bottom() - hole.bottom()},
    };
    std::erase_if(strips, [](Box const& strip) { return strip.width < 0 || strip.height < 0; });
    return strips;
}

// A gradient covers the whole frame, but for the pixels of a plot area through which the page is seen.
void fill_border_with_gradient(ControlState& state, DrawSurface& surface, Graph const& graph,
                               Box const& plot) {
    if (!graph.PlotAreaFill.Transparent)
        return DrawGradient(state, surface, Area::GraphFrame, graph.BorderFill);
    double const dx = surface.TwipsPerPixelX(), dy = surface.TwipsPerPixelY();
    const Box hole{plot.left - dx, plot.top - dy, plot.width + 2 * dx, plot.height + 2 * dy};
    auto const strips = strips_around(hole, frame_box(graph));
    if (!strips.empty()) DrawGradient(state, surface, Area::GraphFrame, graph.BorderFill, strips);
}

void fill_border(ControlState& state, DrawSurface& surface, Graph const& graph, Box const& plot) {
    FillSpec const& fill = graph.BorderFill;
    if (fill.Color1 != fill.Color2)
        fill_border_with_gradient(state, surface, graph, plot);
    else if (!fill.Transparent)
        for (Box const& strip : strips_around(plot, frame_box(graph))) fill_box(surface, strip, fill.Color1);
    if (fill.EdgeThickness == 0) return;
    const PenScope pen(surface, fill.EdgeThickness);
    outline_box(surface, frame_box(graph), fill.EdgeColor, fill.EdgeThickness);
}

} // namespace

void RefreshGraphs(ControlState& state, std::int16_t which, bool legend_on_page) {
    trapped(state, "RefreshGraphs", [&] {
        if (state.NoRedraw) return;
        if (state.Refreshing) {
            state.refresh_asked_meanwhile = true;
            return;
        }
        if (state.Graphs.empty()) return show_empty_page(state);
        state.refresh_asked_meanwhile = false;
        refresh_once(state, which, legend_on_page);
        // Once only: a handler that asks on every refresh would never let go.
        if (state.refresh_asked_meanwhile) {
            if (state.Graphs.empty())
                show_empty_page(state);
            else
                refresh_once(state, -1, true);
        }
        state.refresh_asked_meanwhile = false;
    });
}

void Refresh(ControlState& state) {
    trapped(state, "Refresh", [&] { RefreshGraphs(state, -1, true); });
}

void RefreshCurrentGraph(ControlState& state) {
    trapped(state, "RefreshCurrentGraph", [&] { RefreshGraphs(state, state.CurrentGraph, true); });
}

void DrawGraph(ControlState& state, DrawSurface& surface, std::int16_t index, FrontLegend front_legend) {
    trapped(state, "DrawGraph", [&] {
        if (index < 0 || index >= state.NumGraphs()) return;
        state.CurrentGraph = index;
        Graph& graph = current_graph(state);
        if (state.NoRedraw || !graph.GraphInclude) return;
        // Decided once: a handler that changes its mind meanwhile would have a part drawn twice, or never.
        bool const legend_in_front = graph.LegendInFront, marks_in_front = state.AxisMarksInFront;
        scale::CalcBorders(state);
        settle_graph(state);
        if (!is_current(state, graph)) return;
        GraphAxes(state, surface, marks_in_front ? AxesPass::WithoutMarks : AxesPass::Full);
        if (!is_current(state, graph)) return; // a handler has taken the graph away
        graph.GraphNotDrawn = false;
        scale::keep_shown_scales(graph);
        if (!legend_in_front) LegendTable(state, surface, state.CurrentGraph);
        if (is_current(state, graph)) PlotDataSets(state, surface);
        if (!is_current(state, graph)) return;
        if (shows_axes(graph)) draw_plot_frame(state, surface);
        if (marks_in_front) GraphAxes(state, surface, AxesPass::MarksOnly);
        if (graph.GraphPolar && is_current(state, graph)) draw_polar_labels(state, surface);
        if (legend_in_front && front_legend == FrontLegend::Drawn)
            LegendTable(state, surface, state.CurrentGraph);
        surface.Refresh();
    });
}

void DrawPageBackground(ControlState& state) {
    trapped(state, "DrawPageBackground", [&] {
        DrawSurface& page = *state.GraphImage;
        FillSpec const& fill = state.PageFill;
        // The strip beside the page area has the page's own colour.
        page.state.BackColor = fill.Color1;
        page.SelectClipPath({0, 0, page.Width(), page.Height()});
        page.Cls();
        ClipGraphArea(state, page, Area::Page);
        if (fill.Color1 != fill.Color2) {
            DrawGradient(state, page, Area::Page, fill);
            ClipGraphArea(state, page, Area::Page);
        }
        draw_page_edge(state);
    });
}

void DrawPlotArea(ControlState& state, DrawSurface& surface) {
    trapped(state, "DrawPlotArea", [&] {
        Graph& graph = current_graph(state);
        const Box plot = plot_box(graph);
        ClipGraphArea(state, surface, Area::GraphFrame);
        surface.state.ForeColor = 0;
        fill_border(state, surface, graph, plot);
        FillSpec const& fill = graph.PlotAreaFill;
        if (!fill.Transparent) {
            if (fill.Color1 == fill.Color2)
                fill_box(surface, plot, fill.Color1);
            else
                DrawGradient(state, surface, Area::PlotArea, fill);
        }
        surface.state.ForeColor = 0;
    });
}

void ClipGraphArea(ControlState& state, DrawSurface& surface, Area area) {
    // A clip includes the pixels of its right and bottom edge, so the frame's own outline lies inside.
    trapped(state, "ClipGraphArea", [&] {
        if (area != Area::LegendTable) surface.SelectClipPath(area_box(state, area));
    });
}

} // namespace qv::render
