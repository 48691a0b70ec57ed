#include "render/pipeline.h"

#include "base/convert.h"
#include "graph/model/selection.h"
#include "graph/model/trap.h"
#include "render/axes.h"
#include "render/data_sets.h"
#include "render/gradient.h"
#include "render/legend.h"
#include "render/page_marks.h"
#include "render/plot_geometry.h"
#include "scale/mapping.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::render {
namespace {

using graph::Axis;
using graph::AxisKind;
using graph::ControlState;
using graph::current_graph;
using graph::FillSpec;
using graph::Graph;
using graph::RestoreScope;
using graph::trapped;

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
    fill_box(page, {0, 0, page.Width(), page.Height()}, rgb(255, 255, 255));
    forget_marks(state);
    show(state);
}

// What an edge of the plot area is drawn like.
struct FrameEdge {
    Axis const* axis = nullptr; // nullptr: not drawn
    int thickness = 1;          // pixels
};

// An edge is the line of the first axis that stands on it. Without one it has the colour of the first axis of
// its kind, and that one's thickness where it has its ticks; a far edge without ticks is not drawn.
FrameEdge frame_edge(Graph const& graph, AxisKind kind, bool far_side) {
    auto const thickness = [](Axis const& axis) { return std::max<int>(1, axis.AxisThickness); };
    for (Axis const& axis : graph.Axes)
        if (axis.AxisXY == kind && axis.AxisFarSide == far_side && !axis.AxisHide)
            return {&axis, thickness(axis)};
    Axis const& first = at(graph.Axes, AxisLevelIndex(graph, kind, 1));
    if (first.AxisTicksBothEnds || first.AxisFarSide == far_side) return {&first, thickness(first)};
    return far_side ? FrameEdge{} : FrameEdge{&first, 1};
}

// The plot area's frame over the data.
void draw_plot_frame(ControlState& state, DrawSurface& surface) {
    Graph& graph = current_graph(state);
    const Box plot = plot_box(graph);
    auto const draw = [&](Point from, Point to, AxisKind kind, bool far_side) {
        auto const [axis, thickness] = frame_edge(graph, kind, far_side);
        if (axis == nullptr) return;
        surface.state.DrawWidth = thickness;
        surface.Line(from, to, LineShape::Box, axis->AxisColor);
    };
    const Point left_top{plot.left, plot.top}, right_top{plot.right(), plot.top};
    const Point left_bottom{plot.left, plot.bottom()}, right_bottom{plot.right(), plot.bottom()};
    draw(left_top, right_top, AxisKind::X, true);
    draw(left_bottom, right_bottom, AxisKind::X, false);
    draw(left_top, left_bottom, AxisKind::Y, false);
    draw(right_top, right_bottom, AxisKind::Y, true);
    surface.state.DrawWidth = 1;
}

// Everything but the front graph, kept in Picture2 for quick redraws.
void compose_background(ControlState& state) {
    DrawPageBackground(state);
    for (std::size_t i = 0; i + 1 < state.GraphOrder.size(); ++i)
        DrawGraph(state, *state.GraphImage, state.GraphOrder[i]);
    copy_page(*state.Picture2, *state.GraphImage);
}

// The data once more over a legend that is not in front, and over them what always lies over data.
void plot_over_legend(ControlState& state, DrawSurface& surface) {
    PlotDataSets(state, surface);
    draw_plot_frame(state, surface);
    if (state.AxisMarksInFront) GraphAxes(state, surface, AxesPass::MarksOnly);
}

void add_legend(ControlState& state, DrawSurface& surface, Graph const& graph, std::int16_t index) {
    bool const is_there = index < state.NumGraphs() && at(state.Graphs, index).get() == &graph;
    if (!is_there || !graph.GraphInclude) return;
    const graph::CurrentGraphScope current(state, index);
    LegendTable(state, surface, index);
    bool const lies_below = !graph.LegendInFront && graph.LegendShow && graph.LegendWidth > 0;
    if (lies_below && is_current(state, graph)) plot_over_legend(state, surface);
}

void finish_page(ControlState& state, std::int16_t index, bool legend_on_page) {
    Graph& graph = *at(state.Graphs, index);
    if (!legend_on_page) {
        add_legend(state, *state.GraphImage, graph, index);
        return;
    }
    {
        const RestoreScope legend(graph.LegendShow, false);
        DrawGraph(state, *state.GraphImage, index);
    }
    copy_page(*state.Picture1, *state.GraphImage);
    forget_marks(state);
    add_legend(state, *state.Picture1, graph, index);
}

void refresh_once(ControlState& state, std::int16_t which, bool legend_on_page) {
    const RestoreScope refreshing(state.Refreshing, true);
    for (auto const* surface : {&state.Picture1, &state.GraphImage, &state.Picture2})
        (*surface)->state.Smooth = state.Smooth;
    if (which >= state.NumGraphs()) return;
    if (which < 0)
        compose_background(state);
    else
        copy_page(*state.GraphImage, *state.Picture2);
    if (!state.GraphOrder.empty())
        finish_page(state, which < 0 ? state.GraphOrder.back() : which, legend_on_page);
    show(state);
}

void draw_page_edge(ControlState& state) {
    DrawSurface& page = *state.GraphImage;
    int const thickness = state.PageFill.EdgeThickness;
    if (thickness == 0) return;
    auto const half = [](double pixels, double twips_per_pixel) {
        return std::trunc(round_half_even(pixels * twips_per_pixel) / 2);
    };
    page.state.DrawWidth = thickness;
    if (state.PageFill.EdgeColor != -1) page.state.ForeColor = state.PageFill.EdgeColor;
    page.Line({half(thickness, page.TwipsPerPixelX()), half(thickness, page.TwipsPerPixelY())},
              {state.PageWidth - half(thickness + 1, page.TwipsPerPixelX()),
               state.PageHeight - half(thickness + 1, page.TwipsPerPixelY())},
              LineShape::Box, page.state.ForeColor);
    page.state.DrawWidth = 1;
}

void fill_strips(DrawSurface& surface, Box const& frame, Box const& plot, Color color) {
    const std::array strips{
        Box{frame.left, frame.top, frame.width, plot.top - frame.top},
        Box{frame.left, plot.top, plot.left - frame.left, plot.height},
        Box{plot.right(), plot.top, frame.right() - plot.right(), plot.height},
        Box{frame.left, plot.bottom(), frame.width, frame.bottom() - plot.bottom()},
    };
    for (Box const& strip : strips)
        if (strip.width >= 0 && strip.height >= 0) fill_box(surface, strip, color);
}

// A gradient border covers the whole frame; a transparent plot area gets the page below it back.
void fill_border_with_gradient(ControlState& state, DrawSurface& surface, Graph const& graph,
                               Box const& plot) {
    DrawSurface& kept = *state.ScratchPic2;
    const PixelPoint place = in_pixels(surface, {plot.left, plot.top});
    if (graph.PlotAreaFill.Transparent) {
        keep_pixels(kept, *state.Picture2,
                    {plot.left, plot.top, plot.width + state.UnitsPerMmX + 100,
                     plot.height + state.UnitsPerMmY + 100});
    }
    DrawGradient(state, surface, Area::GraphFrame, graph.BorderFill);
    if (!graph.PlotAreaFill.Transparent) return;
    ClipGraphArea(state, surface, Area::PlotArea);
    surface.BitBlt(place, kept.GetClientRect(), kept, {0, 0});
    ClipGraphArea(state, surface, Area::GraphFrame);
}

void fill_border(ControlState& state, DrawSurface& surface, Graph const& graph, Box const& plot) {
    FillSpec const& fill = graph.BorderFill;
    if (fill.Color1 != fill.Color2)
        fill_border_with_gradient(state, surface, graph, plot);
    else if (!fill.Transparent)
        fill_strips(surface, frame_box(graph), plot, fill.Color1);
    if (fill.EdgeThickness == 0) return;
    surface.state.DrawWidth = fill.EdgeThickness;
    outline_box(surface, frame_box(graph), fill.EdgeColor);
    surface.state.DrawWidth = 1;
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

void DrawGraph(ControlState& state, DrawSurface& surface, std::int16_t index) {
    trapped(state, "DrawGraph", [&] {
        if (index < 0 || index >= state.NumGraphs()) return;
        state.CurrentGraph = index;
        Graph& graph = current_graph(state);
        if (state.NoRedraw || !graph.GraphInclude) return;
        scale::CalcBorders(state);
        GraphAxes(state, surface, AxesPass::Full);
        if (!is_current(state, graph)) return; // a handler has taken the graph away
        graph.GraphNotDrawn = false;
        scale::keep_shown_scales(graph);
        if (!graph.LegendInFront) LegendTable(state, surface, state.CurrentGraph);
        if (is_current(state, graph)) PlotDataSets(state, surface);
        if (!is_current(state, graph)) return;
        draw_plot_frame(state, surface);
        if (state.AxisMarksInFront) GraphAxes(state, surface, AxesPass::MarksOnly);
        if (graph.LegendInFront) LegendTable(state, surface, state.CurrentGraph);
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
        } else {
            fill_box(page, page_box(state), fill.Color1);
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
