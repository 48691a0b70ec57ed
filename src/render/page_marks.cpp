#include "render/page_marks.h"

#include "document/selection.h"
#include "render/bars/bar_places.h"
#include "render/kinds/series_kind.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_bars.h"
#include "render/polar/polar_map.h"
#include "render/stacked_areas.h"
#include "scale/mapping.h"

#include <cmath>
#include <utility>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;
using document::InvertedShape;
using document::Mark;
using Shapes = std::vector<InvertedShape>;

Shapes& shapes_of(ControlState& state, Mark mark) {
    return state.marks.shapes[static_cast<std::size_t>(mark)];
}

void invert(DrawSurface& page, InvertedShape const& shape) {
    const document::RestoreScope drawing(page.state);
    page.state.draw_mode = DrawMode::Invert;
    page.state.draw_style = DrawStyle::Solid;
    page.state.DrawWidth = 1;
    page.SelectClipPath(shape.clip);
    page.Line(shape.from, shape.to, shape.form, 0);
}

// Shape by shape, so that what is remembered is on the page even when drawing fails half way.
void erase(ControlState& state, Shapes& drawn) {
    for (; !drawn.empty(); drawn.pop_back())
        if (!state.marks.lifted) invert(*state.Picture1, drawn.back());
}

/// Draws a mark in place of the one of its kind; false when it is there already.
bool put(ControlState& state, Mark mark, Shapes const& shapes) {
    Shapes& drawn = shapes_of(state, mark);
    if (drawn == shapes) return false;
    erase(state, drawn);
    drawn.reserve(shapes.size());
    for (InvertedShape const& shape : shapes) {
        if (!state.marks.lifted) invert(*state.Picture1, shape);
        drawn.push_back(shape);
    }
    return true;
}

Box whole_picture(ControlState const& state) {
    return {0, 0, state.Picture1->Width(), state.Picture1->Height()};
}

// The plot area as far as the frame's borders tell, whatever the axes' lengths.
Box box_inside_borders(Graph const& graph) {
    const Box frame = frame_box(graph);
    const document::Margins margins = graph.margins();
    return {frame.left + margins.left, frame.top + margins.top, frame.width - margins.left - margins.right,
            frame.height - margins.top - margins.bottom};
}

Shapes cross_hair(ControlState const& state) {
    auto const& place = state.pointer.place;
    bool const is_shown = state.CrossHairOn && place && !state.pointer.dragging;
    std::int16_t const index = is_shown ? front_graph_at(state, *place) : std::int16_t{-1};
    if (index < 0) return {};
    const Box box = box_inside_borders(*at(state.Graphs, index));
    if (!holds(box, *place)) return {};
    const Box clip = whole_picture(state);
    const InvertedShape upright{{place->x, box.top}, {place->x, box.bottom()}, LineShape::Segment, clip};
    const InvertedShape level{{box.left, place->y}, {box.right(), place->y}, LineShape::Segment, clip};
    switch (state.CrossHairStyle) {
    case 0: return {upright, level};
    case 1: return {upright};
    case 2: return {level};
    default: return {};
    }
}

Shapes zoom_box(ControlState const& state) {
    auto const& box = state.pointing.zoom_box;
    if (!box) return {};
    return {{box->from, box->to, LineShape::Box, whole_picture(state)}};
}

Shapes read_mark(ControlState& state) {
    auto const read = point_being_read(state);
    if (!read || read->graph.GraphNotDrawn) return {};
    auto& [graph, set, index] = *read;
    const SeriesScope scope(state, graph, state.read_point->data_set, SeriesScope::Maps::BeingDrawn);
    SeriesView const& view = scope.view();
    if (SeriesKind const* const kind = series_kind(set)) {
        const Box box = kind->item_box(view, index);
        if (!is_finite(box)) return {};
        return {{{box.left, box.top}, {box.right(), box.bottom()}, LineShape::Box, view.plot}};
    }
    if (auto const bar = (graph.GraphPolar ? polar_bar_of : arranged_bar_of)(view, BarPlan(graph), index))
        return {{{bar->left, bar->top}, {bar->right(), bar->bottom()}, LineShape::Box, view.plot}};
    const document::PointEntry point = shown_points(graph, set).at(index);
    const Point place = place_map(graph, SeriesScope::Maps::BeingDrawn)(point.X, point.Y);
    if (!std::isfinite(place.x) || !std::isfinite(place.y)) return {};
    double const reach = state.UnitsPerMmX;
    return {
        {{place.x - reach, place.y - reach}, {place.x + reach, place.y + reach}, LineShape::Box, view.plot}};
}

void update(ControlState& state, Mark mark, Shapes const& shapes) {
    if (put(state, mark, shapes)) show_page(state);
}

} // namespace

std::optional<PointBeingRead> point_being_read(ControlState& state) {
    auto const& read = state.read_point;
    if (!read || read->graph < 0 || read->graph >= state.NumGraphs()) return std::nullopt;
    Graph& graph = *at(state.Graphs, read->graph);
    if (!graph.GraphInclude || read->data_set >= graph.NumDataSets()) return std::nullopt;
    DataSet const& set = at(graph.DataSets, read->data_set);
    SeriesKind const* const kind = series_kind(set);
    std::size_t const dropped = kind ? 0 : set.points.dropped();
    std::size_t const count = kind ? kind->item_count(set) : set.points.size();
    bool const is_there = read->arrival >= dropped && read->arrival - dropped < count;
    if (set.DataHide || !is_there) return std::nullopt;
    return PointBeingRead{graph, set, read->arrival - dropped};
}

void update_cross_hair(ControlState& state) {
    if (!state.Refreshing) update(state, Mark::CrossHair, cross_hair(state));
}

void update_zoom_box(ControlState& state) {
    if (!state.Refreshing) update(state, Mark::ZoomBox, zoom_box(state));
}

void update_read_mark(ControlState& state) {
    if (!state.Refreshing) update(state, Mark::ReadPoint, read_mark(state));
}

bool is_marked(ControlState const& state, Mark mark) {
    return !state.marks.shapes[static_cast<std::size_t>(mark)].empty();
}

void forget_marks(ControlState& state) {
    for (Shapes& drawn : state.marks.shapes) drawn.clear();
}

void mark_page(ControlState& state) {
    put(state, Mark::CrossHair, cross_hair(state));
    put(state, Mark::ZoomBox, zoom_box(state));
    put(state, Mark::ReadPoint, read_mark(state));
}

void erase_marks(ControlState& state) {
    for (Shapes& drawn : state.marks.shapes) erase(state, drawn);
}

void show_page(ControlState& state) {
    state.Picture1->Refresh();
    state.host->page_shown();
}

MarksLifted::MarksLifted(ControlState& state) : state_(state), lifts_(!state.marks.lifted) {
    if (!lifts_) return;
    for (Shapes const& drawn : state.marks.shapes)
        for (InvertedShape const& shape : drawn) invert(*state.Picture1, shape);
    state.marks.lifted = true;
}

MarksLifted::~MarksLifted() {
    if (!lifts_) return;
    state_.marks.lifted = false;
    try {
        for (Shapes const& drawn : state_.marks.shapes)
            for (InvertedShape const& shape : drawn) invert(*state_.Picture1, shape);
    } catch (...) {
        forget_marks(state_); // without memory to draw in, the page stays without them
    }
}

} // namespace qv::render
