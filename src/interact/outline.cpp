#include "interact/outline.h"

#include "base/convert.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "render/kinds/series_kind.h"
#include "render/plot_geometry.h"
#include "render/text.h"

#include <cmath>

namespace qv::interact {
namespace {

using document::Axis;
using document::AxisKind;
using document::DataSet;
using document::Extent;
using document::Graph;

std::string from_to(Axis const& axis, double first, double last) {
    return coordinate_text(axis, first) + " to " + coordinate_text(axis, last);
}

std::string range_text(Axis const& axis) {
    return from_to(axis, axis.AxisValue1, axis.AxisValue2) + (axis.AxisTime ? ", " + axis.AxisTimeZone : "")
           + (axis.AxisLog ? ", logarithmic" : "") + (axis.AxisReverse ? ", reversed" : "");
}

/// Extents of the points that can be drawn. Where points were dropped, the first block knows too much.
struct Extents {
    Extent x, y;
};
Extents extents_of(document::PointStore const& points) {
    Extents extents;
    bool first = true;
    for (document::PointBlock const& block : points.blocks()) {
        for (std::size_t i = 0; first && i < block.size(); ++i) {
            if (!std::isfinite(block.x()[i]) || !std::isfinite(block.y()[i])) continue;
            extents.x.include(block.x()[i]);
            extents.y.include(block.y()[i]);
        }
        if (!first && !block.x_extent().empty()) {
            extents.x.include(block.x_extent().low), extents.x.include(block.x_extent().high);
            extents.y.include(block.y_extent().low), extents.y.include(block.y_extent().high);
        }
        first = false;
    }
    return extents;
}

std::string data_text(Graph const& graph, DataSet const& set) {
    std::string text = set.DataHide ? "hidden; " : "";
    if (!set.MathFunc.empty()) text += "function " + set.MathFunc + "; ";
    if (render::SeriesKind const* const kind = render::series_kind(set))
        return text + std::to_string(kind->item_count(set))
               + (kind->item_count(set) == 1 ? " item" : " items");
    text += std::to_string(set.points.size()) + (set.points.size() == 1 ? " point" : " points");
    auto const [x, y] = extents_of(set.points);
    if (x.empty()) return text;
    return text + "; x " + from_to(at(graph.Axes, set.xAxisIndex), x.low, x.high) + "; y "
           + from_to(at(graph.Axes, set.yAxisIndex), y.low, y.high);
}

std::string name_of(AxisKind kind) {
    if (kind == AxisKind::Color) return "colour bar ";
    return kind == AxisKind::X ? "x axis " : "y axis ";
}

std::string or_number(std::string const& name, char const* what, std::size_t number) {
    return name.empty() ? what + std::to_string(number) : name;
}

} // namespace

std::optional<GraphOutline> outline(document::ControlState const& state, int graph) {
    if (graph < 0 || graph >= state.NumGraphs()) return std::nullopt;
    auto const index = static_cast<std::size_t>(graph);
    Graph const& found = *state.Graphs[index];
    GraphOutline outline;
    outline.name = or_number(render::as_read(state, state.GraphTitles[index]), "Graph ", index + 1);
    outline.description =
        std::to_string(found.Axes.size()) + " axes, " + std::to_string(found.DataSets.size()) + " data sets";
    outline.frame = render::frame_box(found);
    for (Axis const& axis : found.Axes)
        outline.parts.push_back(
            {name_of(axis.AxisXY) + render::as_read(state, axis.AxisTitle), range_text(axis)});
    std::size_t number = 0;
    for (DataSet const& set : found.DataSets)
        outline.parts.push_back({or_number(render::as_read(state, set.DataLegend), "Data set ", ++number),
                                 data_text(found, set)});
    return outline;
}

std::string point_read(document::ControlState& state) {
    auto const& read = state.read_point;
    if (!read || read->graph >= state.NumGraphs()) return {};
    Graph const& graph = *state.Graphs[static_cast<std::size_t>(read->graph)];
    if (read->data_set >= graph.NumDataSets()) return {};
    DataSet const& set = at(graph.DataSets, read->data_set);
    render::SeriesKind const* const kind = render::series_kind(set);
    std::size_t const point = read->arrival - (kind ? 0 : set.points.dropped()); // too large of a dropped one
    return point < (kind ? kind->item_count(set) : set.points.size())
               ? point_name(state, read->graph, {read->data_set, point, 0})
               : std::string();
}

} // namespace qv::interact
