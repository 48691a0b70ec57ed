#include "interact/mark_dragging.h"

#include "document/trap.h"
#include "interact/front.h"
#include "interact/hit_test.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "render/marks/marks.h"

#include <algorithm>
#include <utility>

namespace qv::interact {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;
using document::MarkGrip;
using render::SeriesScope;
namespace MarkPart = render::MarkPart;

bool may_be_dragged(DataSet const& set) {
    return render::is_mark(set) && set.MarkDragging && !set.DataHide;
}

Point inside(Box const& box, Point place) {
    return {std::clamp(place.x, box.left, std::max(box.left, box.right())),
            std::clamp(place.y, box.top, std::max(box.top, box.bottom()))};
}

/// The mark that is held; nullptr where a handler has taken it away.
DataSet* held_mark(Graph& graph, MarkGrip const& grip) {
    if (grip.data_set >= graph.NumDataSets()) return nullptr;
    DataSet& set = at(graph.DataSets, grip.data_set);
    return render::is_mark(set) ? &set : nullptr;
}

/// Which values of a mark a way of the mouse leads to.
render::MarkValues dragged_to(ControlState& state, Graph& graph, MarkGrip const& grip, Point mouse) {
    const SeriesScope scope(state, graph, grip.data_set, SeriesScope::Maps::AsShown);
    // A mark that was pulled out of the plot area could not be fetched back.
    const Point to = inside(scope.view().plot, mouse);
    const Point press = state.pointer.press;
    return render::moved_mark(scope.view(), grip.before, grip.moves, {to.x - press.x, to.y - press.y});
}

} // namespace

std::optional<MarkGrip> mark_under(ControlState& state, Graph& graph, Point place) {
    if (graph.GraphNotDrawn || graph.GraphPolar) return std::nullopt;
    for (auto index = static_cast<std::int16_t>(graph.NumDataSets() - 1); index >= 0; --index) {
        if (!may_be_dragged(at(graph.DataSets, index))) continue;
        const SeriesScope scope(state, graph, index, SeriesScope::Maps::AsShown);
        std::uint8_t const moves = render::mark_part_at(scope.view(), place);
        if (moves != MarkPart::none) return MarkGrip{index, moves, false, {}};
    }
    return std::nullopt;
}

host::PointerShape pointer_of(MarkGrip const& grip) {
    bool const across = (grip.moves & MarkPart::along_x) != 0, down = (grip.moves & MarkPart::along_y) != 0;
    if (across && down) return host::PointerShape::FourWay;
    return across ? host::PointerShape::WestEast : host::PointerShape::NorthSouth;
}

void begin_mark_drag(ControlState& state, Graph const& graph) {
    MarkGrip& grip = *state.pointing.mark;
    grip.before = render::mark_values(at(graph.DataSets, grip.data_set));
    grip.held = true;
}

void drag_mark(ControlState& state, Point mouse) {
    trapped(state, "drag_mark", [&] {
        Graph* const graph = graph_at(state, state.MouseGraph);
        if (state.Refreshing || !graph || !state.pointing.mark) return;
        const MarkGrip grip = *state.pointing.mark;
        DataSet* const set = held_mark(*graph, grip);
        if (!set) return;
        const render::MarkValues values = dragged_to(state, *graph, grip, mouse);
        if (values == render::mark_values(*set)) return;
        render::set_mark_values(*set, values);
        std::int16_t const index = state.MouseGraph;
        refresh_graph(state, index);
        if (graph_at(state, index) != graph || !held_mark(*graph, grip)) return;
        show_read_out(state, point_name(state, index, {grip.data_set, 0, 0}));
        raise_mark_moved(state, index, grip.data_set);
    });
}

bool end_mark_drag(ControlState& state) {
    Graph* const graph = graph_at(state, state.MouseGraph);
    const std::optional<MarkGrip> grip = std::exchange(state.pointing.mark, std::nullopt);
    DataSet const* const set = graph && grip ? held_mark(*graph, *grip) : nullptr;
    return set && render::mark_values(*set) != grip->before;
}

bool put_mark_back(Graph& graph, MarkGrip const& grip) {
    DataSet* const set = held_mark(graph, grip);
    if (!grip.held || !set || render::mark_values(*set) == grip.before) return false;
    render::set_mark_values(*set, grip.before);
    return true;
}

void raise_mark_moved(ControlState& state, std::int16_t graph, std::int16_t data_set) {
    Graph const* const moved = graph_at(state, graph);
    if (state.SuppressRaisingEvents || !moved || data_set >= moved->NumDataSets()) return;
    auto [x1, y1, x2, y2] = render::mark_values(at(moved->DataSets, data_set));
    state.events->MarkMoved(graph, data_set, x1, y1, x2, y2);
}

} // namespace qv::interact
