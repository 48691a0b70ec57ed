#include "render/series_kind.h"

#include "render/plot_geometry.h"

#include <cmath>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;

SeriesView view_of(ControlState& state, Graph& graph, std::int16_t index, SeriesScope::Maps maps) {
    DataSet const& set = at(graph.DataSets, index);
    graph.SelectedXAxis = set.xAxisIndex;
    graph.SelectedYAxis = set.yAxisIndex;
    document::Axis const& x = selected_x_axis(graph);
    document::Axis const& y = selected_y_axis(graph);
    bool const as_shown = maps == SeriesScope::Maps::AsShown;
    return {state,
            graph,
            set,
            index,
            as_shown ? scale::shown_map(graph, x) : scale::x_map(graph, x),
            as_shown ? scale::shown_map(graph, y) : scale::y_map(graph, y),
            plot_box(graph)};
}

} // namespace

bool is_finite(Box const& box) {
    return std::isfinite(box.left + box.top + box.width + box.height);
}

std::optional<std::size_t> SeriesKind::item_at(SeriesView const& view, Point place) const {
    for (std::size_t item = item_count(view.set); item-- > 0;)
        if (const Box box = item_box(view, item); is_finite(box) && holds(box, place)) return item;
    return std::nullopt;
}

SeriesScope::SeriesScope(ControlState& state, Graph& graph, std::int16_t index, Maps maps)
    : selection_(graph), view_(view_of(state, graph, index, maps)) {}

} // namespace qv::render
