#include "interact/follow.h"

#include "document/trap.h"
#include "interact/hit_test.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "interact/scroll_bars.h"
#include "render/page_marks.h"
#include "scale/zoomed.h"

namespace qv::interact {
namespace {

using document::ControlState;
using document::Graph;

/// The graph whose span the scroll bars show; nullptr when there is none with axes.
Graph const* graph_of_bars(ControlState& state) {
    Graph const* const graph = graph_at(state, state.CurrentGraph);
    return graph && has_selected_axes(*graph) ? graph : nullptr;
}

void follow_pointer(ControlState& state) {
    auto const& [place, press, dragging, is_read] = state.pointer;
    if (!place || dragging) return;
    take_pointer_values(state);
    if (!is_read) return;
    std::int16_t const graph = graph_under(state, *place);
    show_read_out(state, graph >= 0 ? coordinates_at(state, graph, *place) : std::string());
    name_point_under(state, *place);
}

} // namespace

void follow_page(ControlState& state) {
    trapped(state, "follow_page", [&] {
        if (!graph_of_bars(state)) return;
        scale::SetScrollBarsVisibility(state);
        SetScrollBars(state);
        follow_pointer(state);
    });
}

void point_at(ControlState& state, Point place) {
    trapped(state, "point_at", [&] {
        state.pointer.place = place;
        state.pointer.dragging = false;
        follow_pointer(state);
    });
}

void leave_page(ControlState& state) {
    trapped(state, "leave_page", [&] {
        state.pointer.place.reset();
        if (state.pointer.is_read) hide_coordinates(state);
        forget_point_name(state);
        render::update_cross_hair(state);
    });
}

void take_pointer_values(ControlState& state) {
    auto const& pointer = state.pointer;
    if (!pointer.place || pointer.dragging) return;
    std::int16_t const graph = graph_under(state, *pointer.place);
    if (graph >= 0) take_values(state, graph, *pointer.place);
}

void follow_selection(ControlState& state) {
    Graph const* const graph = graph_of_bars(state);
    if (!graph || graph->GraphNotDrawn) return;
    bool const was_zoomed = state.Zoomed;
    scale::SetScrollBarsVisibility(state);
    if (was_zoomed || state.Zoomed) SetScrollBars(state);
}

} // namespace qv::interact
