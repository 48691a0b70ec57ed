#include "interact/mouse.h"

#include "base/convert.h"
#include "graph/model/selection.h"
#include "graph/model/trap.h"
#include "host/Input.h"
#include "interact/dragging.h"
#include "interact/follow.h"
#include "interact/front.h"
#include "interact/hit_test.h"
#include "interact/navigation.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "interact/scroll_bars.h"
#include "interact/zoom.h"
#include "render/pipeline.h"

#include <cmath>
#include <utility>

namespace qv::interact {
namespace {

using graph::Axis;
using graph::AxisKind;
using graph::ControlState;
using graph::Graph;
using graph::Pointing;
using graph::ZoomKind;
using host::alt_key;
using host::ctrl_key;
using host::left_button;
using host::middle_button;
using host::right_button;
using host::shift_key;

constexpr std::uint8_t no_key = 0;
constexpr std::uint8_t last_cross_hair_style = 2;

struct Gesture {
    std::uint8_t button = 0;
    std::uint8_t shift = 0;
    bool is(std::uint8_t of_button, std::uint8_t of_shift) const {
        return button == of_button && shift == of_shift;
    }
};

graph::Corner rounded_offset(Point place, std::int32_t left, std::int32_t top) {
    return {to_i32(place.x - left), to_i32(place.y - top)};
}

void record_press(Graph& graph, Point place) {
    for (Axis& axis : graph.Axes) {
        axis.ZoomFrom = static_cast<float>(axis.AxisXY == AxisKind::X ? place.x : place.y);
        axis.ZoomTo = 0;
    }
}

void begin_graph_drag(ControlState& state, Graph const& graph, Point place) {
    state.pointing.Grab = rounded_offset(place, graph.FrameLeft, graph.FrameTop);
    state.pointing.LegendGrab = {graph.LegendLeft - graph.FrameLeft, graph.LegendTop - graph.FrameTop};
    DragGraph(state, place, true);
}

void begin_legend_drag(ControlState& state, Graph const& graph, Point place) {
    state.pointing.LegendGrab = rounded_offset(place, graph.LegendLeft, graph.LegendTop);
    DragLegendTable(state, place, true);
}

void fetch_legend(ControlState& state, Point place) {
    static_cast<graph::HitFlags&>(state.pointing) = {.OnLegend = true};
    state.pointing.LegendGrab = {};
    DragLegendTable(state, place, true);
}

void toggle_cross_hair(ControlState& state, Point place) {
    state.CrossHairOn = !state.CrossHairOn;
    // Switched off, it is erased only where it still is.
    if (state.CrossHairOn) state.CrossHairValid = true;
    DrawCrossHair(state, place);
}

void next_cross_hair_style(ControlState& state, Point place) {
    DrawCrossHair(state, place);
    state.CrossHairStyle = state.CrossHairStyle >= last_cross_hair_style
                               ? std::uint8_t{0}
                               : static_cast<std::uint8_t>(state.CrossHairStyle + 1);
    DrawCrossHair(state, place);
}

void begin_gesture(ControlState& state, Graph& graph, Gesture gesture, Point place) {
    Pointing const& on = state.pointing;
    if (gesture.is(left_button, no_key)) {
        if (on.OnPlotArea) return; // the rubber band starts from the corner recorded
        if (on.OnLegend) return begin_legend_drag(state, graph, place);
        if (on.OnGraphBody || on.on_edge()) begin_graph_drag(state, graph, place);
    } else if (gesture.is(left_button, shift_key) && on.OnPlotArea) {
        const ZoomStepScope step(state, state.MouseGraph, ZoomKind::Double);
        zoom_in_by_two(state, state.MouseGraph, place);
        redraw_ranges(state, state.MouseGraph);
    } else if (gesture.is(right_button, shift_key) && on.OnPlotArea) {
        const ZoomStepScope step(state, state.MouseGraph, ZoomKind::Double);
        zoom_out_by_two(state, state.MouseGraph);
        redraw_ranges(state, state.MouseGraph);
    } else if (gesture.is(left_button, ctrl_key)) {
        fetch_legend(state, place);
    } else if (gesture.is(right_button, ctrl_key)) {
        graph.LegendShow = !graph.LegendShow;
        render::RefreshGraphs(state, state.MouseGraph, true);
    } else if (gesture.is(left_button, alt_key)) {
        toggle_cross_hair(state, place);
    } else if (gesture.is(right_button, alt_key) && state.CrossHairOn) {
        next_cross_hair_style(state, place);
    }
}

bool has_moved(ControlState const& state, Point place) {
    return static_cast<float>(place.x) != state.pointing.LastMouseX
           || static_cast<float>(place.y) != state.pointing.LastMouseY;
}

void store_position(ControlState& state, Point place) {
    state.pointing.LastMouseX = static_cast<float>(place.x);
    state.pointing.LastMouseY = static_cast<float>(place.y);
}

void hover(ControlState& state, Point place) {
    auto const& pointer = state.pointer;
    bool const was_here = pointer.place && pointer.place->x == place.x && pointer.place->y == place.y;
    if (was_here && pointer.is_read && !has_moved(state, place)) return;
    ShowGraphCoords(state, 0, place);
    name_point_under(state, place);
    if (state.CrossHairOn) {
        DrawCrossHair(state, {state.pointing.LastMouseX, state.pointing.LastMouseY});
        DrawCrossHair(state, place);
    }
    store_position(state, place);
}

/// The pointer's values stay and the read-out is hidden while it moves with a button held.
void note_dragging(ControlState& state, std::uint8_t button, Point place) {
    bool const was_dragging = std::exchange(state.pointer.dragging, button != 0);
    if (button != 0 && !was_dragging) ShowGraphCoords(state, button, place);
}

struct ZoomBox {
    Point from, to;
};
ZoomBox zoom_box(Graph& graph) {
    Axis const& x = selected_x_axis(graph);
    Axis const& y = selected_y_axis(graph);
    return {{x.ZoomFrom, y.ZoomFrom}, {x.ZoomTo, y.ZoomTo}};
}

void stretch_box(ControlState& state, Graph& graph, Point place) {
    erase_box(state);
    selected_x_axis(graph).ZoomTo = static_cast<float>(place.x);
    selected_y_axis(graph).ZoomTo = static_cast<float>(place.y);
    const ZoomBox box = zoom_box(graph);
    invert_on_page(state, box.from, box.to, LineShape::Box);
    state.pointing.box_on_page = true;
    ShowGraphCoords(state, left_button, place);
}

void drag(ControlState& state, Graph& graph, Point place) {
    if (state.pointing.OnLegend) {
        if (!has_moved(state, place)) return;
        DragLegendTable(state, place, false);
        store_position(state, place);
        state.Label1.Caption.clear();
        state.host->child_controls_changed();
    } else if (state.pointing.OnPlotArea) {
        stretch_box(state, graph, place);
    } else if (has_moved(state, place) && DragGraph(state, place, false)) {
        store_position(state, place);
    }
}

void end_box(ControlState& state, Graph& graph, Point place) {
    erase_box(state);
    state.CurrentGraph = state.MouseGraph;
    const Point press = zoom_box(graph).from;
    bool const clicked = static_cast<float>(place.x) == static_cast<float>(press.x)
                         || static_cast<float>(place.y) == static_cast<float>(press.y);
    if (!clicked) {
        const ZoomStepScope step(state, state.MouseGraph, ZoomKind::Box);
        return ZoomToBox(state, place);
    }
    take_values(state, state.MouseGraph, place);
    double x = state.PointerX, y = state.PointerY;
    state.events->Click(x, y);
}

void end_gesture(ControlState& state, Graph& graph, Gesture gesture, Point place) {
    Pointing const& on = state.pointing;
    if (gesture.is(right_button, no_key) && on.OnPlotArea) {
        const ZoomStepScope step(state, state.MouseGraph, ZoomKind::Full);
        UnZoom(state);
        ResizeScrollBars(state);
        ShowGraphCoords(state, 0, place);
        render::RefreshGraphs(state, state.MouseGraph, true);
    } else if (gesture.is(left_button, no_key) && on.OnLegend) {
        render::RefreshGraphs(state, state.MouseGraph, true);
        ShowGraphCoords(state, 0, place);
    } else if (gesture.is(left_button, no_key) && on.OnPlotArea) {
        end_box(state, graph, place);
    }
}

} // namespace

void Picture1_MouseDown(ControlState& state, std::uint8_t button, std::uint8_t shift, Point place) {
    trapped(state, "Picture1_MouseDown", [&] {
        erase_box(state); // of a drag whose end was not seen
        state.pointing.pressed = 0;
        state.MouseGraph = PointingAt(state, button, place, true);
        state.pointer.press = place;
        if (state.MouseGraph >= 0) BringGraphToFront(state, state.MouseGraph);
        point_at(state, place);
        if (state.MouseGraph < 0) return;
        // Looked up after that, because a handler of its event may have emptied the page.
        Graph* const graph = graph_at(state, state.MouseGraph);
        if (!graph) return;
        record_press(*graph, place);
        begin_cancellable(state, *graph, button, shift);
        begin_gesture(state, *graph, {button, shift}, place);
    });
}

void Picture1_MouseMove(ControlState& state, std::uint8_t button, std::uint8_t shift, Point place) {
    trapped(state, "Picture1_MouseMove", [&] {
        Graph* const graph = graph_at(state, state.MouseGraph);
        note_dragging(state, button, place);
        if (button == 0)
            hover(state, place);
        else if (button == middle_button && state.pointing.pressed == middle_button)
            drag_page(state, place);
        else if (button == left_button && shift == no_key && graph && state.pointing.pressed == left_button)
            drag(state, *graph, place);
        double x = state.PointerX, y = state.PointerY;
        state.events->MouseMove(x, y);
    });
}

void Picture1_MouseUp(ControlState& state, std::uint8_t button, std::uint8_t shift, Point place) {
    trapped(state, "Picture1_MouseUp", [&] {
        point_at(state, place);
        Graph* const graph = graph_at(state, state.MouseGraph);
        std::uint8_t const pressed = std::exchange(state.pointing.pressed, std::uint8_t{0});
        if (!graph) return;
        // The second press of a double click comes as the double click alone; its release ends nothing.
        if (button != left_button || pressed == left_button)
            end_gesture(state, *graph, {button, shift}, place);
        erase_box(state); // of a gesture that ended with a key held
    });
}

void erase_box(ControlState& state) {
    Graph* const graph = graph_at(state, state.MouseGraph);
    if (!state.pointing.box_on_page || !graph) return;
    state.pointing.box_on_page = false;
    const ZoomBox box = zoom_box(*graph);
    invert_on_page(state, box.from, box.to, LineShape::Box);
}

} // namespace qv::interact
