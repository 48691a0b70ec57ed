#include "interact/point_steps.h"

#include "graph/model/selection.h"
#include "graph/model/trap.h"
#include "interact/hit_test.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "interact/scroll_bars.h"
#include "scale/mapping.h"

#include <cmath>
#include <optional>

namespace qv::interact {
namespace {

using graph::ControlState;
using graph::DataSet;
using graph::Graph;
using graph::PointStore;
using graph::ReadPoint;

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

/// Where the reading stands, if that is still a point of the current graph.
std::optional<ReadPoint> present(ControlState const& state, Graph const& graph) {
    auto const& read = state.read_point;
    if (!read || read->graph != state.CurrentGraph || read->data_set >= graph.NumDataSets())
        return std::nullopt;
    DataSet const& set = at(graph.DataSets, read->data_set);
    // Not a point that has been dropped since.
    std::size_t const first = set.points.dropped();
    return is_read(set) && read->arrival >= first && read->arrival - first < set.points.size() ? read
                                                                                               : std::nullopt;
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

void mark(ControlState& state, Graph& graph, DataSet const& set, std::size_t i) {
    const graph::SelectedAxesScope selection(graph);
    graph.SelectedXAxis = set.xAxisIndex;
    graph.SelectedYAxis = set.yAxisIndex;
    const graph::PointEntry point = set.points.at(i);
    const Point place{scale::x_map(graph, selected_x_axis(graph))(point.X),
                      scale::y_map(graph, selected_y_axis(graph))(point.Y)};
    double const reach = state.UnitsPerMmX;
    state.pointing.mark = {place.x - reach, place.y - reach, 2 * reach, 2 * reach};
    invert_on_page(state, {place.x - reach, place.y - reach}, {place.x + reach, place.y + reach},
                   LineShape::Box);
    state.pointing.mark_on_page = true;
}

void erase_mark(ControlState& state) {
    if (!state.pointing.mark_on_page) return;
    state.pointing.mark_on_page = false;
    const Box box = state.pointing.mark;
    invert_on_page(state, {box.left, box.top}, {box.right(), box.bottom()}, LineShape::Box);
}

bool read(ControlState& state, Graph& graph, std::int16_t data_set, std::optional<std::size_t> point) {
    if (!point) return false;
    erase_mark(state);
    state.read_point =
        ReadPoint{state.CurrentGraph, data_set, *point + at(graph.DataSets, data_set).points.dropped()};
    std::string const text = point_name(state, state.CurrentGraph, {data_set, *point, 0});
    show_read_out(state, text);
    mark(state, graph, at(graph.DataSets, data_set), *point);
    state.host->point_read(text);
    return true;
}

} // namespace

bool step_point(ControlState& state, bool forward) {
    Graph* const graph = graph_at(state, state.CurrentGraph);
    if (!graph) return false;
    if (auto const now = present(state, *graph)) {
        PointStore const& points = at(graph->DataSets, now->data_set).points;
        std::size_t const here = now->arrival - points.dropped();
        return read(state, *graph, now->data_set,
                    drawable_from(points, forward ? here + 1 : here - 1, forward));
    }
    auto const set = next_data_set(*graph, -1, true);
    if (!set) return false;
    PointStore const& points = at(graph->DataSets, *set).points;
    return read(state, *graph, *set, drawable_from(points, forward ? 0 : points.size() - 1, forward));
}

bool step_data_set(ControlState& state, bool forward) {
    Graph* const graph = graph_at(state, state.CurrentGraph);
    if (!graph) return false;
    auto const now = present(state, *graph);
    if (!now) return step_point(state, true);
    PointStore const& points = at(graph->DataSets, now->data_set).points;
    double const x = points.at(now->arrival - points.dropped()).X;
    for (auto set = next_data_set(*graph, now->data_set, forward); set;
         set = next_data_set(*graph, *set, forward)) {
        PointStore const& others = at(graph->DataSets, *set).points;
        if (read(state, *graph, *set, drawable_from(others, nearest_in_x(others, x), true))) return true;
    }
    return false;
}

} // namespace qv::interact
