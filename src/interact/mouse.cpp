#include "interact/mouse.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "interact/dragging.h"
#include "interact/follow.h"
#include "interact/front.h"
#include "interact/hit_test.h"
#include "interact/mark_dragging.h"
#include "interact/navigation.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "interact/scroll_bars.h"
#include "interact/zoom.h"
#include "qvgraph/Input.h"
#include "render/page_marks.h"

#include <cmath>
#include <utility>

namespace qv::interact {
namespace {

using document::Axis;
using document::AxisKind;
using document::ControlState;
using document::Graph;
using document::Pointing;
using document::ZoomBox;
using document::ZoomKind;
using host::alt_key;
using host::ctrl_key;
using host::left_button;
using host::middle_button;
using host::right_button;
using host::shift_key;

constexpr std::uint8_t no_key = 0;
constexpr std::uint8_t last_cross_hair_style = 2;
// Less both ways is a hand that shook: three pixels at 96 dots per inch.
constexpr double least_box = 3 * twips_per_inch / 96;

struct Gesture {
    std::uint8_t button = 0;
    std::uint8_t shift = 0;
    bool is(std::uint8_t of_button, std::uint8_t of_shift) const {
        return button == of_button && shift == of_shift;
    }
};

document::Corner rounded_offset(Point place, std::int32_t left, std::int32_t top) {
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
    static_cast<document::HitFlags&>(state.pointing) = {.OnLegend = true};
    state.pointing.LegendGrab = {};
    DragLegendTable(state, place, true);
}

// The lines take the place of the pointer's own shape.
void draw_cross_hair(ControlState& state) {
    render::update_cross_hair(state);
    if (render::is_marked(state, document::Mark::CrossHair)) set_pointer(state, host::PointerShape::Default);
}

void toggle_cross_hair(ControlState& state) {
    state.CrossHairOn = !state.CrossHairOn;
    draw_cross_hair(state);
}

void next_cross_hair_style(ControlState& state) {
    state.CrossHairStyle = state.CrossHairStyle >= last_cross_hair_style
                               ? std::uint8_t{0}
                               : static_cast<std::uint8_t>(state.CrossHairStyle + 1);
    draw_cross_hair(state);
}

void begin_gesture(ControlState& state, Graph& graph, Gesture gesture, Point place) {
    Pointing const& on = state.pointing;
    if (gesture.is(left_button, no_key)) {
        if (on.mark) return begin_mark_drag(state, graph);
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
        refresh_graph(state, state.MouseGraph);
    } else if (gesture.is(left_button, alt_key)) {
        toggle_cross_hair(state);
    } else if (gesture.is(right_button, alt_key) && state.CrossHairOn) {
        next_cross_hair_style(state);
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
    draw_cross_hair(state);
    store_position(state, place);
}

/// While the pointer moves with a button held its values stay, and read-out and cross-hair are hidden.
void note_dragging(ControlState& state, std::uint8_t button, Point place) {
    bool const was_dragging = std::exchange(state.pointer.dragging, button != 0);
    if (button == 0 || was_dragging) return;
    render::update_cross_hair(state);
    ShowGraphCoords(state, button, place);
}

bool is_mark_held(ControlState const& state) {
    return state.pointing.mark && state.pointing.mark->held;
}

void stretch_box(ControlState& state, Graph& graph, Point place) {
    selected_x_axis(graph).ZoomTo = static_cast<float>(place.x);
    selected_y_axis(graph).ZoomTo = static_cast<float>(place.y);
    state.pointing.zoom_box = ZoomBox{state.pointer.press, place};
    render::update_zoom_box(state);
    ShowGraphCoords(state, left_button, place);
}

void erase_box(ControlState& state) {
    state.pointing.zoom_box.reset();
    render::update_zoom_box(state);
}

void drag(ControlState& state, Graph& graph, Point place) {
    if (is_mark_held(state)) {
        if (!has_moved(state, place)) return;
        store_position(state, place);
        drag_mark(state, place);
    } else if (state.pointing.OnLegend) {
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

void click(ControlState& state, Point place) {
    take_values(state, state.MouseGraph, place);
    double x = state.PointerX, y = state.PointerY;
    state.events->Click(x, y);
}

void end_box(ControlState& state, Point place) {
    erase_box(state);
    state.CurrentGraph = state.MouseGraph;
    const Point press = state.pointer.press;
    double const width = std::round(std::abs(place.x - press.x));
    double const height = std::round(std::abs(place.y - press.y));
    bool const is_small = width < least_box && height < least_box;
    if (width > 0 && height > 0 && !is_small) {
        const ZoomStepScope step(state, state.MouseGraph, ZoomKind::Box);
        return ZoomToBox(state, place);
    }
    click(state, place);
}

// A mark that was not moved is clicked as what lies behind it.
void end_mark(ControlState& state, Point place) {
    state.CurrentGraph = state.MouseGraph;
    bool const has_moved = end_mark_drag(state), on_plot_area = state.pointing.OnPlotArea;
    ShowGraphCoords(state, 0, place);
    if (!has_moved && on_plot_area) click(state, place);
}

void end_gesture(ControlState& state, Gesture gesture, Point place) {
    Pointing const& on = state.pointing;
    if (gesture.button == left_button && is_mark_held(state)) {
        end_mark(state, place);
    } else if (gesture.is(right_button, no_key) && on.OnPlotArea) {
        const ZoomStepScope step(state, state.MouseGraph, ZoomKind::Full);
        UnZoom(state);
        ResizeScrollBars(state);
        ShowGraphCoords(state, 0, place);
        refresh_graph(state, state.MouseGraph);
    } else if (gesture.is(left_button, no_key) && on.OnLegend) {
        refresh_graph(state, state.MouseGraph);
        ShowGraphCoords(state, 0, place);
    } else if (gesture.is(left_button, no_key) && on.OnPlotArea) {
        end_box(state, place);
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
        draw_cross_hair(state);
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
        // The second press of a double click comes as the double click alone; its release ends nothing.
        if (graph && (button != left_button || pressed == left_button))
            end_gesture(state, {button, shift}, place);
        erase_box(state); // of a gesture that ended with a key held
        draw_cross_hair(state);
    });
}

} // namespace qv::interact
