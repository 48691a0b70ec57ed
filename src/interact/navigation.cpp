#include "interact/navigation.h"

#include "document/selection.h"
#include "document/trap.h"
#include "interact/dragging.h"
#include "interact/follow.h"
#include "interact/front.h"
#include "interact/hit_test.h"
#include "interact/mark_dragging.h"
#include "interact/point_steps.h"
#include "interact/zoom.h"
#include "render/kinds/series_kind.h"
#include "render/page_marks.h"
#include "render/plot_geometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qv::interact {
namespace {

using document::ControlState;
using document::Graph;
using document::GraphPlace;
using document::ZoomKind;
using host::Key;

constexpr double wheel_factor = 1.2; // of the displayed range, a notch
constexpr double key_factor = 1.25;  // of the displayed range, a press of + or -
constexpr double arrow_share = 0.1;  // of the plot area, a press of an arrow

/// The front-most graph whose plot area holds a place and may be zoomed, -1 for none.
std::int16_t zoomable_at(ControlState& state, Point place) {
    std::int16_t const index = render::front_graph_at(state, place);
    Graph* const graph = graph_at(state, index);
    bool const is_zoomable = graph && render::may_be_zoomed(*graph) && holds(render::plot_box(*graph), place);
    return is_zoomable ? index : std::int16_t{-1};
}

bool shows_all(document::Axis const& axis) {
    return document::Shown{axis.AxisValue1, axis.AxisValue2} == full_range(axis);
}

GraphPlace place_of(Graph const& graph) {
    std::vector<bool> whole;
    for (document::Axis const& axis : graph.Axes) whole.push_back(shows_all(axis));
    return {graph.GraphLeft,     graph.GraphTop,    graph.GraphWidth,      graph.GraphHeight,
            graph.margins(),     graph.LegendPlace, graph.LegendTableLeft, graph.LegendTableTop,
            shown_ranges(graph), std::move(whole)};
}

/// What of a graph a drag had moved.
struct Dragged {
    bool graph = false;
    bool legend = false;
};

/// The ranges from which a pan sets out. An axis that showed everything does so still, also when data have
/// come meanwhile.
void show_as_before_press(Graph& graph, GraphPlace const& place) {
    show_ranges(graph, place.ranges);
    for (std::size_t i = 0; i < std::min(place.shows_all.size(), graph.Axes.size()); ++i) {
        if (!place.shows_all[i]) continue;
        const document::Shown whole = full_range(graph.Axes[i]);
        graph.Axes[i].AxisValue1 = whole.first;
        graph.Axes[i].AxisValue2 = whole.last;
    }
}

/// Everything where it was when the button was pressed.
Dragged put_back(ControlState const& state, Graph& graph) {
    GraphPlace const& place = state.pointing.before_press;
    const PlaceOnPage dragged_to = place_on_page(state, graph);
    bool const legend =
        graph.LegendTableLeft != place.legend_left || graph.LegendTableTop != place.legend_top;
    graph.GraphLeft = place.left;
    graph.GraphTop = place.top;
    graph.GraphWidth = place.width;
    graph.GraphHeight = place.height;
    if (graph.margins_by_hand) graph.set_margins(place.margins);
    graph.LegendPlace = place.legend_place;
    graph.LegendTableLeft = place.legend_left;
    graph.LegendTableTop = place.legend_top;
    // No other drag has moved them.
    if (state.pointing.pressed == host::middle_button) show_as_before_press(graph, place);
    return {place_on_page(state, graph) != dragged_to, legend};
}

bool pan_with_key(ControlState& state, double right, double down) {
    Graph* const graph = zoomable_graph(state);
    if (!graph) return false;
    std::int16_t const index = state.CurrentGraph;
    const Box plot = render::plot_box(*graph);
    const ZoomStepScope step(state, index, ZoomKind::Key);
    pan_by(state, index, right * arrow_share * plot.width, down * arrow_share * plot.height);
    redraw_ranges(state, index);
    return true;
}

bool zoom_with_key(ControlState& state, double factor) {
    Graph* const graph = zoomable_graph(state);
    if (!graph) return false;
    std::int16_t const index = state.CurrentGraph;
    const Box plot = render::plot_box(*graph);
    const ZoomStepScope step(state, index, ZoomKind::Key);
    zoom_about(state, index, {plot.left + plot.width / 2, plot.top + plot.height / 2}, factor, {});
    redraw_ranges(state, index);
    return true;
}

/// Zooms the graph under a place about it; false when there is none that may be zoomed.
bool zoom_under(ControlState& state, Point place, double factor, AxisChoice axes) {
    bool taken = false;
    trapped(state, "zoom_under", [&] {
        std::int16_t const index = state.pointing.pressed == 0 ? zoomable_at(state, place) : std::int16_t{-1};
        if (index < 0) return;
        taken = true;
        BringGraphToFront(state, index);
        point_at(state, place);
        if (!graph_at(state, index)) return;
        const ZoomStepScope step(state, index, ZoomKind::Wheel);
        zoom_about(state, index, place, factor, axes);
        redraw_ranges(state, index);
    });
    return taken;
}

bool read_points(ControlState& state, Key key) {
    switch (key) {
    case Key::Left: return step_point(state, false);
    case Key::Right: return step_point(state, true);
    case Key::Up: return step_data_set(state, false);
    case Key::Down: return step_data_set(state, true);
    default: return false;
    }
}

// Past the last graph, and before the first, the key is left to the host.
bool go_to_graph(ControlState& state, int step) {
    for (int index = state.CurrentGraph + step; index >= 0 && index < state.NumGraphs(); index += step) {
        Graph const* const graph = graph_at(state, static_cast<std::int16_t>(index));
        if (!graph->GraphInclude) continue;
        BringGraphToFront(state, static_cast<std::int16_t>(index));
        return true;
    }
    return false;
}

bool move_about(ControlState& state, Key key) {
    switch (key) {
    case Key::Left: return pan_with_key(state, 1, 0);
    case Key::Right: return pan_with_key(state, -1, 0);
    case Key::Up: return pan_with_key(state, 0, 1);
    case Key::Down: return pan_with_key(state, 0, -1);
    case Key::Plus: return zoom_with_key(state, 1 / key_factor);
    case Key::Minus: return zoom_with_key(state, key_factor);
    case Key::Home: return show_full_range(state);
    default: return false;
    }
}

bool answer_key(ControlState& state, host::KeyInput const& input) {
    document::Gestures const& on = state.gestures;
    auto const [character, shift, key] = input;
    if (key == Key::Escape) return on.escape && shift == 0 && (cancel_drag(state) || stop_reading(state));
    if (key == Key::Tab && (shift & ~host::shift_key) == 0)
        return on.tab_through && go_to_graph(state, shift == 0 ? 1 : -1);
    if (shift == host::alt_key && key == Key::Left) return on.undo_zoom && undo_zoom(state);
    if (shift == host::alt_key && key == Key::Right) return on.undo_zoom && redo_zoom(state);
    if (shift == host::ctrl_key) return on.read_points && read_points(state, key);
    // + is typed with Shift on many keyboards.
    bool const plain = shift == 0 || (key == Key::Plus && shift == host::shift_key);
    return on.keyboard && plain && state.pointing.pressed == 0 && move_about(state, key);
}

} // namespace

Graph* zoomable_graph(ControlState& state) {
    Graph* const graph = graph_at(state, state.CurrentGraph);
    return graph && graph->GraphInclude && render::may_be_zoomed(*graph) ? graph : nullptr;
}

bool show_full_range(ControlState& state) {
    if (!zoomable_graph(state)) return false;
    std::int16_t const index = state.CurrentGraph;
    const ZoomStepScope step(state, index, ZoomKind::Full);
    state.MouseGraph = index;
    UnZoom(state);
    redraw_ranges(state, index);
    return true;
}

bool turn_wheel(ControlState& state, host::WheelInput const& wheel) {
    if (!state.gestures.wheel_zoom || wheel.steps == 0) return false;
    return zoom_under(state, wheel.place, std::pow(wheel_factor, -wheel.steps),
                      {.x = wheel.shift != host::ctrl_key, .y = wheel.shift != host::shift_key});
}

bool pinch(ControlState& state, host::PinchInput const& pinch) {
    if (!state.gestures.pinch_zoom || !(pinch.scale > 0) || !std::isfinite(pinch.scale)) return false;
    cancel_drag(state); // the first finger looked like a press
    return zoom_under(state, pinch.place, 1 / pinch.scale, {});
}

bool press_key(ControlState& state, host::KeyInput const& key) {
    bool taken = false;
    trapped(state, "press_key", [&] { taken = key.key != Key::None && answer_key(state, key); });
    return taken;
}

void begin_cancellable(ControlState& state, Graph const& graph, std::uint8_t button, std::uint8_t shift) {
    bool const classic = button == host::left_button;
    bool const pans =
        button == host::middle_button && shift == 0 && state.gestures.middle_pan && state.pointing.OnPlotArea;
    if (!classic && !pans) return;
    state.pointing.pressed = button;
    state.pointing.before_press = place_of(graph);
}

void drag_page(ControlState& state, Point mouse) {
    Graph* const graph = graph_at(state, state.MouseGraph);
    if (!graph || state.Refreshing) return;
    const ZoomStepScope step(state, state.MouseGraph, ZoomKind::Pan);
    // From the press on, so that the page comes back to the pointer after it was beyond the full range.
    show_as_before_press(*graph, state.pointing.before_press);
    pan_by(state, state.MouseGraph, mouse.x - state.pointer.press.x, mouse.y - state.pointer.press.y);
    redraw_ranges(state, state.MouseGraph);
}

bool cancel_drag(ControlState& state) {
    Graph* const graph = graph_at(state, state.MouseGraph);
    if (!graph || state.pointing.pressed == 0) return false;
    std::int16_t const index = state.MouseGraph;
    const std::optional<document::MarkGrip> grip = state.pointing.mark;
    bool const moved_mark = grip && put_mark_back(*graph, *grip);
    const Dragged dragged = put_back(state, *graph);
    // What is left of the gesture does nothing.
    state.pointing = {};
    state.MouseGraph = -1;
    render::update_zoom_box(state);
    render::RefreshGraphs(state, -1, true);
    if (graph_at(state, index)) redraw_ranges(state, index);
    if (state.SuppressRaisingEvents) return true;
    if (dragged.graph) state.events->GraphPositionChanged();
    if (dragged.legend) state.events->LegendPositionChanged();
    if (moved_mark) raise_mark_moved(state, index, grip->data_set);
    return true;
}

} // namespace qv::interact
