#include "interact/point_steps.h"

#include "graph/model/selection.h"
#include "graph/model/trap.h"
#include "interact/hit_test.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "interact/scroll_bars.h"
#include "render/read_mark.h"

#include <cmath>
#include <optional>

namespace qv::interact {
namespace {

using graph::ControlState;
using graph::DataSet;
using graph::Graph;
using graph::PointStore;
using graph::ReadPoint;
using render::PointBeingRead;

bool can_be_drawn(PointStore const& points, std::size_t i) {
    const graph::PointEntry point = points.at(i);
    return std::isfinite(point.X) && std::isfinite(point.Y);
}

/// The next point from `from` on that can be drawn, `from` included.
std::optional<std::size_t> drawable_from(PointStore const& points, std::size_t from, bool forward) {
    for (std::size_t i = from; i < points.size(); forward ? ++i : --i)
        if (can_be_drawn(points, i)) return i;
    return std::nullopt; // going back below the first wraps round to beyond the last
}

bool is_read(DataSet const& set) {
    return !set.DataHide && set.points.size() > 0;
}

std::optional<std::int16_t> next_data_set(Graph const& graph, int from, bool forward) {
    int const step = forward ? 1 : -1;
    for (int i = from + step; i >= 0 && i < graph.NumDataSets(); i += step)
        if (is_read(at(graph.DataSets, static_cast<std::int16_t>(i)))) return static_cast<std::int16_t>(i);
    return std::nullopt;
}

/// The point that is read, if it is one of the current graph.
std::optional<PointBeingRead> present(ControlState& state) {
    auto read = render::point_being_read(state);
    return read && state.read_point->graph == state.CurrentGraph ? read : std::nullopt;
}

std::size_t nearest_in_x(PointStore const& points, double x) {
    std::size_t nearest = 0, i = 0;
    double least = HUGE_VAL;
    for (graph::PointBlock const& block : points.blocks()) {
        // A block out of reach is passed over.
        double const beside = std::max(block.x_extent().low - x, x - block.x_extent().high);
        if (beside < least)
            for (std::size_t j = 0; j < block.size(); ++j) {
                double const distance = std::abs(block.x()[j] - x);
                if (!(distance < least) || !std::isfinite(block.y()[j])) continue;
                least = distance;
                nearest = i + j;
            }
        i += block.size();
    }
    return nearest;
}

bool read(ControlState& state, Graph& graph, std::int16_t data_set, std::optional<std::size_t> point) {
    if (!point) return false;
    render::erase_read_mark(state);
    state.read_point =
        ReadPoint{state.CurrentGraph, data_set, *point + at(graph.DataSets, data_set).points.dropped()};
    std::string const text = point_name(state, state.CurrentGraph, {data_set, *point, 0});
    show_read_out(state, text);
    render::draw_read_mark(state);
    show_page(state);
    state.host->point_read(text);
    return true;
}

} // namespace

bool step_point(ControlState& state, bool forward) {
    Graph* const graph = graph_at(state, state.CurrentGraph);
    if (!graph) return false;
    if (auto const now = present(state)) {
        PointStore const& points = now->set.points;
        if (!forward && now->index == 0) return false;
        return read(state, *graph, state.read_point->data_set,
                    drawable_from(points, forward ? now->index + 1 : now->index - 1, forward));
    }
    auto const set = next_data_set(*graph, -1, true);
    if (!set) return false;
    PointStore const& points = at(graph->DataSets, *set).points;
    return read(state, *graph, *set, drawable_from(points, forward ? 0 : points.size() - 1, forward));
}

bool step_data_set(ControlState& state, bool forward) {
    Graph* const graph = graph_at(state, state.CurrentGraph);
    if (!graph) return false;
    auto const now = present(state);
    if (!now) return step_point(state, true);
    double const x = now->set.points.at(now->index).X;
    for (auto set = next_data_set(*graph, state.read_point->data_set, forward); set;
         set = next_data_set(*graph, *set, forward)) {
        PointStore const& others = at(graph->DataSets, *set).points;
        if (read(state, *graph, *set, drawable_from(others, nearest_in_x(others, x), true))) return true;
    }
    return false;
}

bool stop_reading(ControlState& state) {
    if (!state.read_point) return false;
    render::erase_read_mark(state);
    state.read_point.reset();
    show_read_out(state, "");
    show_page(state);
    return true;
}

} // namespace qv::interact
