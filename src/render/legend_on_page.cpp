#include "render/legend_on_page.h"

#include "render/legend.h"
#include "render/plot_geometry.h"
#include "surface/whole_pixel.h"

#include <cmath>
#include <optional>

namespace qv::render {
namespace {

using document::ControlState;
using document::Graph;
using document::LegendOnPage;

// The pixels of the table, those of its right and bottom edge included, before anything is drawn over them.
void keep_picture(ControlState& state, Graph const& graph) {
    DrawSurface& kept = *state.ScratchPic1;
    DrawSurface const& page = *state.Picture1;
    const Box box = legend_box(graph);
    const PixelPoint first = pixel_at(page, {box.left, box.top});
    const PixelPoint last = pixel_at(page, {box.right(), box.bottom()});
    kept.Move((last.x - first.x + 1) * page.TwipsPerPixelX(), (last.y - first.y + 1) * page.TwipsPerPixelY());
    kept.SelectClipPath({0, 0, kept.Width(), kept.Height()});
    kept.BitBlt({0, 0}, kept.GetClientRect(), page, first);
}

bool lies_within(Box const& box, DrawSurface const& page) {
    return box.left >= 0 && box.top >= 0 && box.right() < page.Width() && box.bottom() < page.Height();
}

// A table with a ground, moved by whole pixels, looks as it would if it were drawn there.
bool looks_alike(LegendOnPage const& legend, Graph const& graph, DrawSurface const& page) {
    const Box now = legend_box(graph);
    auto const whole = [](double way, double pixel) { return std::remainder(way, pixel) == 0; };
    return lies_within(legend.drawn, page) && !legend.fill.Transparent && legend.fill == graph.LegendFill
           && legend.drawn.width == now.width && legend.drawn.height == now.height
           && whole(now.left - legend.drawn.left, page.TwipsPerPixelX())
           && whole(now.top - legend.drawn.top, page.TwipsPerPixelY());
}

void copy_picture(ControlState& state, LegendOnPage& legend, Graph const& graph) {
    DrawSurface& page = *state.Picture1;
    clip_to_legend(page, graph);
    page.BitBlt(pixel_at(page, {legend_box(graph).left, legend_box(graph).top}),
                state.ScratchPic1->GetClientRect(), *state.ScratchPic1, {0, 0});
    draw_legend_edge(page, graph);
    legend.reach = legend_reach(graph, page);
}

void take_off_page(ControlState& state, LegendOnPage const& legend) {
    DrawSurface& page = *state.Picture1;
    page.SelectClipPath(legend.reach);
    page.BitBlt({0, 0}, page.GetClientRect(), *state.GraphImage, {0, 0});
}

Graph const* graph_at(ControlState const& state, std::int16_t index) {
    return index >= 0 && index < state.NumGraphs() ? at(state.Graphs, index).get() : nullptr;
}

} // namespace

void put_legend_on_page(ControlState& state, std::int16_t index) {
    state.legend_on_page.reset();
    LegendTable(state, *state.Picture1, index);
    Graph const* const graph = graph_at(state, index);
    if (!graph) return; // a handler of ErrorMsg has taken it away
    keep_picture(state, *graph);
    state.legend_on_page = {graph, legend_reach(*graph, *state.Picture1), legend_box(*graph),
                            graph->LegendFill};
}

bool move_legend_on_page(ControlState& state, std::int16_t index) {
    Graph const* const graph = graph_at(state, index);
    if (!graph || !state.legend_on_page) return false;
    LegendOnPage& legend = *state.legend_on_page;
    if (legend.graph != graph || !graph->LegendInFront) return false;
    take_off_page(state, legend);
    if (looks_alike(legend, *graph, *state.Picture1))
        copy_picture(state, legend, *graph);
    else
        put_legend_on_page(state, index);
    return true;
}

} // namespace qv::render
