#include "control/lifecycle.h"

#include "base/convert.h"
#include "control/looks.h"
#include "control/property_access.h"
#include "document/selection.h"
#include "document/trap.h"
#include "interact/follow.h"
#include "interact/read_out.h"
#include "interact/scroll_bars.h"
#include "render/page_marks.h"
#include "render/pipeline.h"

#include <algorithm>

namespace qv::control {
namespace {

constexpr double label_gap_twips = 5;

void discard_graphs(ControlState& state) {
    state.discarded_graphs.reserve(state.discarded_graphs.size() + state.Graphs.size());
    for (auto& graph : state.Graphs) state.discarded_graphs.push_back(std::move(graph));
    state.Graphs.clear();
    state.GraphTitles.clear();
    state.GraphOrder.clear();
    state.handle_anchor.discard_handles();
    state.point_target = {};
    state.CurrentGraph = 0;
    state.MouseGraph = state.BarsGraph = -1;
    state.pointing = {};
    state.zoom_history = {};
    state.zoom_anchor = {};
    state.PointTooltip.clear();
    state.read_point.reset();
    state.ground.reset();
    state.legend_on_page.reset();
}

void reset_page_fill(ControlState& state) {
    bool const transparent = state.PageFill.Transparent;
    state.PageFill = fresh_page_fill();
    state.PageFill.Transparent = transparent;
}

// What goes back to its default is the look's again.
void forget_given_page(ControlState& state) {
    for (RecordRow const& row : record_rows())
        if ((row.target == "page" && row.row != Row::PageTransparent) || row.row == Row::AxisMarksInFront)
            unmark_given(state.given, row.row);
}

void fit_surfaces(ControlState& state) {
    render::erase_marks(state); // a page of another size need not be drawn anew
    double const width = std::max(0.0, state.inner_width - state.VScroll1.Width);
    double const height = std::max(0.0, state.inner_height - state.HScroll1.Height);
    for (DrawSurface* surface : {state.GraphImage.get(), state.Picture1.get(), state.Picture2.get()})
        surface->Move(width, height);
    state.PageWidth = to_i32(state.GraphImage->Width() - page_inset);
    state.PageHeight = to_i32(state.GraphImage->Height() - page_inset);
}

bool has_been_drawn(ControlState const& state) {
    return state.ground
           || std::ranges::any_of(state.Graphs, [](auto const& graph) { return !graph->GraphNotDrawn; });
}

void lay_out_scroll_bars_silently(ControlState& state) {
    const RestoreScope quiet(state.NoRedraw, true);
    interact::ResizeScrollBars(state);
}

} // namespace

void UserControl_Initialize(ControlState& state) {
    for (auto* surface :
         {&state.Picture1, &state.GraphImage, &state.Picture2, &state.ScratchPic1, &state.ScratchPic2})
        *surface = state.host->make_surface();
    measure_child_controls(state);
    state.page_follower = interact::follow_page;
    Reset(state);
    // So early nobody hears of it.
    if (state.memory_has_ended) raise_fault(FaultNumber::OutOfMemory);
}

void measure_child_controls(ControlState& state) {
    state.HScroll1.Height = state.VScroll1.Width = state.host->scroll_bar_thickness();
    state.Label1.Height = state.host->label_height();
}

void measure_read_out(ControlState& state) {
    state.Label1.Height = state.host->label_height();
    if (state.Label1.Visible)
        interact::show_read_out(state, state.Label1.Caption);
    else
        interact::ResizeScrollBars(state);
}

void UserControl_Resize(ControlState& state, double width_twips, double height_twips) {
    trapped(state, "UserControl_Resize", [&] {
        state.inner_width = width_twips;
        state.inner_height = height_twips;
        fit_surfaces(state);
        state.Label1.Top = height_twips - state.Label1.Height - label_gap_twips;
        state.host->child_controls_changed();
        if (!has_been_drawn(state)) return;
        lay_out_scroll_bars_silently(state);
        render::RefreshGraphs(state, -1, true);
    });
}

void Reset(ControlState& state) {
    trapped(state, "Reset", [&] {
        discard_graphs(state);
        state.MaxZoomFactor = 1e6;
        reset_page_fill(state);
        state.AxisMarksInFront = false;
        forget_given_page(state);
        dress_page(state);
        state.HScroll1.Visible = state.VScroll1.Visible = state.Zoomed = false;
        state.Label1.Border = false;
        state.Label1.Caption.clear();
        state.told_formulas.clear();
        state.host->child_controls_changed();
    });
}

void Picture1_DblClick(ControlState& state) {
    interact::take_pointer_values(state);
    double x = state.PointerX, y = state.PointerY;
    state.events->DblClick(x, y);
}

void Picture1_KeyPress(ControlState& state, std::int16_t& KeyAscii) {
    interact::take_pointer_values(state);
    double x = state.PointerX, y = state.PointerY;
    state.events->KeyPress(KeyAscii, x, y);
}

} // namespace qv::control
