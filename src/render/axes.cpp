#include "render/axes.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/axis_frame.h"
#include "render/axis_range.h"
#include "render/pipeline.h"
#include "render/plot_geometry.h"
#include "render/text.h"
#include "render/tick_labels.h"
#include "scale/zoomed.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;
using document::ControlState;
using document::current_graph;
using document::Graph;
using document::RestoreScope;
using document::trapped;

constexpr double minor_tick_share = 0.7;
constexpr double smallest_axis_length = 100; // twips

// One axis being drawn.
struct AxisDrawing {
    ControlState& state;
    DrawSurface& surface;
    Axis const& axis;
    AxisFrame frame;
    std::vector<PlacedTick> ticks;
    LabelLayout labels;
    bool paints = true; // else it is only measured
};

void draw_axis_line(AxisDrawing const& drawing) {
    AxisFrame const& frame = drawing.frame;
    const RestoreScope width(drawing.surface.state.DrawWidth, std::max<int>(drawing.axis.AxisThickness, 1));
    drawing.surface.Line(frame.at(frame.along_low(), frame.own.line),
                         frame.at(frame.along_high(), frame.own.line), LineShape::Segment,
                         drawing.axis.AxisColor);
}

void draw_tick(AxisDrawing const& drawing, PlacedTick const& tick, AxisEdge edge) {
    Axis const& axis = drawing.axis;
    double const length = axis.AxisTickLength * (tick.kind == TickKind::Major ? 1.0 : minor_tick_share);
    if (length == 0 || !(axis.AxisTicksInside || axis.AxisTicksOutside)) return;
    // A tick has its length beside the line, however thick that is.
    double const inside = axis.AxisTicksInside ? length + edge.half_line : 0;
    double const outside = axis.AxisTicksOutside ? length + edge.half_line : 0;
    drawing.surface.Line(drawing.frame.at(tick.along, edge.line - edge.outward * inside),
                         drawing.frame.at(tick.along, edge.line + edge.outward * outside), LineShape::Segment,
                         axis.AxisColor);
}

void draw_label(AxisDrawing const& drawing, PlacedTick const& tick) {
    if (tick.label.empty() || !tick.show_label) return;
    AxisFrame const& frame = drawing.frame;
    LabelLayout const& layout = drawing.labels;
    const Point anchor =
        frame.at(tick.along, frame.own.line + frame.own.outward * layout.anchor_distance(tick));
    PrintText(drawing.state, drawing.surface, tick.label,
              {anchor, layout.horizontal, layout.vertical, layout.angle_degrees, true},
              {drawing.axis.AxisLabelFont, drawing.axis.AxisLabelColor});
}

void draw_own_edge(AxisDrawing const& drawing) {
    if (!drawing.paints) return;
    draw_axis_line(drawing);
    for (PlacedTick const& tick : drawing.ticks) {
        GridLine(drawing.state, drawing.surface, tick.along,
                 {drawing.frame.kind, tick.kind == TickKind::Major});
        draw_label(drawing, tick);
        draw_tick(drawing, tick, drawing.frame.own);
    }
}

// Twips from the axis line to the title: past the ticks and the labels.
double distance_to_title(AxisDrawing const& drawing) {
    Axis const& axis = drawing.axis;
    double const ticks = drawing.frame.own.half_line + (axis.AxisTicksOutside ? axis.AxisTickLength : 0);
    double const shift = axis.AxisTitleShift * drawing.frame.units_per_mm;
    double const labels_begin = std::max({drawing.labels.gap, ticks, drawing.frame.taken});
    return round_half_even(labels_begin + drawing.labels.extent - shift);
}

// Upright beside an x axis: the title's top lies at the anchor. Upward beside a y axis: the title is
// centred on its length and, across, on the anchor.
TextPlace title_place(AxisDrawing const& drawing, TextBlock const& title, double distance) {
    AxisFrame const& frame = drawing.frame;
    if (frame.kind == AxisKind::X) {
        double const far_room = frame.far_side ? title.height : 0;
        return {frame.at(frame.along_middle(), frame.own.line + frame.own.outward * (distance + far_room)),
                Align::Centre, Align::Start, 0, true};
    }
    double const start = frame.along_low() + std::trunc(frame.plot.height / 2) + std::trunc(title.width / 2);
    return {frame.at(start, frame.own.line + frame.own.outward * (distance + title.height / 2)), Align::Start,
            Align::Centre, 90, true};
}

// Draws the title and returns the twips the axis has used up on its side.
double draw_title(AxisDrawing const& drawing) {
    double const distance = distance_to_title(drawing);
    Axis const& axis = drawing.axis;
    if (!axis.AxisShowTitle) return distance + drawing.surface.TextHeight("A");
    SetGraphFont(drawing.state, drawing.surface, axis.AxisTitleFont);
    const TextBlock title = text_block(drawing.surface, axis.AxisTitle);
    if (drawing.paints)
        PrintText(drawing.state, drawing.surface, axis.AxisTitle, title_place(drawing, title, distance),
                  {axis.AxisTitleFont, axis.AxisTitleColor});
    return distance + title.height + drawing.surface.TextHeight("A");
}

void draw_visible_axis(ControlState& state, DrawSurface& surface, Axis const& axis, AxisSpan range,
                       AxesPass pass) {
    AxisDrawing drawing{
        state, surface, axis, axis_frame(state, surface, axis), {}, {}, pass != AxesPass::WithoutMarks};
    SetGraphFont(state, surface, axis.AxisLabelFont);
    drawing.ticks = place_ticks(state, surface, drawing.frame, axis, range);
    drawing.labels = label_layout(surface, drawing.frame, axis, drawing.ticks);
    if (state.ThinTickLabels) thin_labels(surface, drawing.frame, axis, drawing.ticks);
    const RestoreScope width(surface.state.DrawWidth, std::max<int>(axis.AxisTickThickness, 1));
    draw_own_edge(drawing);
    double const used = draw_title(drawing);
    if (axis.AxisTicksBothEnds && drawing.paints)
        for (PlacedTick const& tick : drawing.ticks) draw_tick(drawing, tick, drawing.frame.opposite);
    std::int32_t& offset = stack_offset(state, drawing.frame.kind, drawing.frame.far_side);
    offset = to_i32(offset + used);
}

void draw_axis(ControlState& state, DrawSurface& surface, std::int16_t index, AxisKind kind, bool first,
               AxesPass pass) {
    Graph& graph = current_graph(state);
    const document::SelectedAxesScope selection(graph);
    selected_index(graph, kind) = index;
    if (first) stack_offset(state, kind, false) = stack_offset(state, kind, true) = 0;
    Axis& axis = at(graph.Axes, index);
    const AxisSpan range =
        pass == AxesPass::MarksOnly ? settled_axis_range(axis) : settle_axis_range(state, axis);
    if (!is_current(state, graph)) return; // a handler of GraphScaleChanged has taken it away
    if (!axis.AxisHide) draw_visible_axis(state, surface, axis, range, pass);
    if (kind == AxisKind::X)
        graph.TopAxesHeight = static_cast<float>(std::max<double>(
            state.AxisStackOffsets.far, reach_of_opposite_axes(state, surface, AxisKind::X, true)));
    surface.state.ForeColor = 0;
}

void draw_graph_title(ControlState& state, DrawSurface& surface) {
    Graph const& graph = current_graph(state);
    const Box plot = plot_box(current_graph(state));
    double const x = plot.left + plot.width / 2 + (graph.GraphTitleHShift + 1) * state.UnitsPerMmX;
    double const y = plot.top - graph.TopAxesHeight - (graph.GraphTitleVShift + 1) * state.UnitsPerMmY;
    PrintText(state, surface, at(state.GraphTitles, state.CurrentGraph),
              {{std::max(0.0, x), std::max(0.0, y)}, Align::Centre, Align::End, 0, true},
              {graph.GraphTitleFont, graph.GraphTitleColor});
}

void draw_axes_of_kind(ControlState& state, DrawSurface& surface, AxisKind kind, AxesPass pass) {
    Graph& graph = current_graph(state);
    bool first = true;
    for (std::int16_t i = 0; i < graph.NumAxes() && is_current(state, graph); ++i) {
        Axis& axis = at(graph.Axes, i);
        if (axis.AxisXY != kind) continue;
        (kind == AxisKind::X ? DrawXAxis : DrawYAxis)(state, surface, i, first, pass);
        first = false;
    }
}

} // namespace

void set_axis_lengths(Graph& graph) {
    auto const length = [](double size) { return to_i32(std::max(smallest_axis_length, size)); };
    std::int32_t const across = length(frame_box(graph).width - graph.BorderLeft - graph.BorderRight);
    std::int32_t const down = length(frame_box(graph).height - graph.BorderTop - graph.BorderBottom);
    for (Axis& axis : graph.Axes) axis.AxisLength = axis.AxisXY == AxisKind::X ? across : down;
}

void GraphAxes(ControlState& state, DrawSurface& surface, AxesPass pass) {
    trapped(state, "GraphAxes", [&] {
        Graph& graph = current_graph(state);
        if (pass != AxesPass::MarksOnly) {
            set_axis_lengths(graph);
            DrawPlotArea(state, surface);
        }
        draw_axes_of_kind(state, surface, AxisKind::X, pass);
        if (!is_current(state, graph)) return;
        // After the x axes, because those on the far side push the title up.
        if (pass != AxesPass::MarksOnly && graph.GraphShowTitle) draw_graph_title(state, surface);
        draw_axes_of_kind(state, surface, AxisKind::Y, pass);
        // Only now, because while it is drawn each axis is the selected one.
        if (is_current(state, graph)) scale::SetScrollBarsVisibility(state);
    });
}

void DrawXAxis(ControlState& state, DrawSurface& surface, std::int16_t axis, bool first, AxesPass pass) {
    trapped(state, "DrawXAxis", [&] { draw_axis(state, surface, axis, AxisKind::X, first, pass); });
}

void DrawYAxis(ControlState& state, DrawSurface& surface, std::int16_t axis, bool first, AxesPass pass) {
    trapped(state, "DrawYAxis", [&] { draw_axis(state, surface, axis, AxisKind::Y, first, pass); });
}

void GridLine(ControlState& state, DrawSurface& surface, double position, GridLineStyle style) {
    trapped(state, "GridLine", [&] {
        Graph& graph = current_graph(state);
        Axis const& axis = at(graph.Axes, selected_index(graph, style.kind));
        if (!(style.major ? axis.AxisGridMajor : axis.AxisGridMinor)) return;
        const RestoreScope width(surface.state.DrawWidth, 1);
        const Box plot = plot_box(graph);
        const bool is_x = style.kind == AxisKind::X;
        surface.Line(is_x ? Point{position, plot.top} : Point{plot.left, position},
                     is_x ? Point{position, plot.bottom()} : Point{plot.right(), position},
                     LineShape::Segment, style.major ? axis.AxisMajGridColor : axis.AxisMinGridColor);
    });
}

std::string_view NextToken(std::string_view& text) {
    auto const comma = text.find(',');
    const std::string_view token = text.substr(0, comma);
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    return token;
}

} // namespace qv::render
