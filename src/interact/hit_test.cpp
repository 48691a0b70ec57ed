#include "interact/hit_test.h"

#include "document/trap.h"
#include "interact/mark_dragging.h"
#include "qvgraph/Input.h"
#include "render/kinds/series_kind.h"
#include "render/plot_geometry.h"

#include <optional>

namespace qv::interact {
namespace {

using document::ControlState;
using document::Graph;
using document::HitFlags;
using host::PointerShape;

// How far inside an edge it is still grabbed: left and top, right and bottom.
constexpr double near_band_mm = 1;
constexpr double far_band_mm = 0.5;

struct Hit {
    bool HitFlags::*flag;
    PointerShape pointer;
};

/// The four edges of a box in the order in which they win.
struct Edges {
    bool HitFlags::*left, HitFlags::*right, HitFlags::*top, HitFlags::*bottom;
};
constexpr Edges plot_edges{&HitFlags::OnPlotLeft, &HitFlags::OnPlotRight, &HitFlags::OnPlotTop,
                           &HitFlags::OnPlotBottom};
constexpr Edges frame_edges{&HitFlags::OnFrameLeft, &HitFlags::OnFrameRight, &HitFlags::OnFrameTop,
                            &HitFlags::OnFrameBottom};

Hit hit_in(ControlState const& state, Box const& box, Edges const& edges, Point place, Hit inside) {
    double const x_unit = state.UnitsPerMmX, y_unit = state.UnitsPerMmY;
    if (place.x - box.left < near_band_mm * x_unit) return {edges.left, PointerShape::WestEast};
    if (box.right() - place.x < far_band_mm * x_unit) return {edges.right, PointerShape::WestEast};
    if (place.y - box.top < near_band_mm * y_unit) return {edges.top, PointerShape::NorthSouth};
    if (box.bottom() - place.y < far_band_mm * y_unit) return {edges.bottom, PointerShape::NorthSouth};
    return inside;
}

bool is_on_legend(ControlState const& state, Graph const& graph, std::uint8_t button, Point place) {
    bool const zooming =
        button == host::left_button && state.pointing.OnPlotArea && render::may_be_zoomed(graph);
    return graph.LegendShow && graph.LegendDragging && !zooming && holds(render::legend_box(graph), place);
}

/// What a place hits of a graph that is drawn.
std::optional<Hit> hit_of(ControlState const& state, Graph& graph, std::uint8_t button, Point place) {
    constexpr Hit legend{&HitFlags::OnLegend, PointerShape::UpArrow};
    constexpr Hit body{&HitFlags::OnGraphBody, PointerShape::FourWay};
    constexpr Hit zoom_area{&HitFlags::OnPlotArea, PointerShape::Cross};
    if (is_on_legend(state, graph, button, place)) return legend;
    if (const Box plot = render::plot_box(graph); holds(plot, place))
        return hit_in(state, plot, plot_edges, place, render::may_be_zoomed(graph) ? zoom_area : body);
    if (const Box frame = render::frame_box(graph); holds(frame, place))
        return hit_in(state, frame, frame_edges, place, body);
    return std::nullopt;
}

void set_hit(ControlState& state, Graph const& graph, Hit hit) {
    HitFlags& flags = state.pointing;
    flags.*hit.flag = true;
    bool const is_drag_of_graph = hit.flag != &HitFlags::OnPlotArea && hit.flag != &HitFlags::OnLegend;
    bool const shown = !is_drag_of_graph || graph.GraphAllowDragging;
    set_pointer(state, shown ? hit.pointer : PointerShape::Default);
}

/// Inside the plot area's edges, and not on a legend.
bool lies_in_plot(Graph& graph, Hit const& hit, Point place) {
    return hit.flag == &HitFlags::OnPlotArea
           || (hit.flag == &HitFlags::OnGraphBody && holds(render::plot_box(graph), place));
}

struct GraphHit {
    std::int16_t graph = -1;
    Hit hit;
};

/// The front-most graph that a place hits.
std::optional<GraphHit> front_hit(ControlState& state, std::uint8_t button, Point place) {
    std::optional<Hit> hit;
    std::int16_t const index = render::front_graph(state, [&](Graph& graph) {
        hit = hit_of(state, graph, button, place);
        return hit.has_value();
    });
    return index >= 0 ? std::optional<GraphHit>({index, *hit}) : std::nullopt;
}

} // namespace

std::int16_t PointingAt(ControlState& state, std::uint8_t button, Point place, bool reset) {
    std::int16_t hit = -1;
    trapped(state, "PointingAt", [&] {
        HitFlags& flags = state.pointing;
        if (reset) flags = {};
        state.pointing.mark.reset();
        auto const found = front_hit(state, button, place);
        if (!found) return set_pointer(state, PointerShape::Default);
        hit = found->graph;
        Graph& graph = *graph_at(state, hit);
        set_hit(state, graph, found->hit);
        if (!lies_in_plot(graph, found->hit, place)) return;
        state.pointing.mark = mark_under(state, graph, place);
        if (state.pointing.mark) set_pointer(state, pointer_of(*state.pointing.mark));
    });
    return hit;
}

bool takes_right_click(ControlState& state, Point place) {
    auto const found = front_hit(state, host::right_button, place);
    return found && found->hit.flag == &HitFlags::OnPlotArea;
}

bool has_selected_axes(Graph const& graph) {
    auto const is_there = [&](std::int16_t axis) { return axis >= 0 && axis < graph.NumAxes(); };
    return is_there(graph.SelectedXAxis) && is_there(graph.SelectedYAxis);
}

std::int16_t graph_under(ControlState& state, Point place) {
    return render::front_graph(state, [&](Graph& graph) {
        return has_selected_axes(graph)
               && (is_on_legend(state, graph, 0, place) || holds(render::plot_box(graph), place)
                   || holds(render::frame_box(graph), place));
    });
}

void set_pointer(ControlState& state, PointerShape shape) {
    if (state.MousePointer == shape) return;
    state.MousePointer = shape;
    state.host->child_controls_changed();
}

Graph* graph_at(ControlState& state, std::int16_t index) {
    return index >= 0 && index < state.NumGraphs() ? state.Graphs[static_cast<std::size_t>(index)].get()
                                                   : nullptr;
}

} // namespace qv::interact
