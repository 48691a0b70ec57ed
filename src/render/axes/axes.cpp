#include "render/axes/axes.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/axes/axis_frame.h"
#include "render/axes/axis_range.h"
#include "render/axes/tick_labels.h"
#include "render/grids/color_bar.h"
#include "render/kinds/series_kind.h"
#include "render/pen.h"
#include "render/pipeline.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_grid.h"
#include "render/rich_text.h"
#include "render/text.h"
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
using document::LeftOut;
using document::trapped;

constexpr double minor_tick_share = 0.7;
constexpr double smallest_axis_length = 100; // twips
constexpr double title_air_mm = 1.5;         // between the ends of a title and the frame

// One axis being drawn.
struct AxisDrawing {
    ControlState& state;
    DrawSurface& surface;
    Axis const& axis;
    AxisFrame frame;
    std::vector<PlacedTick> ticks;
    LabelChoice choice;
    LabelLayout labels;
    bool paints = true; // else it is only measured
};

void draw_axis_line(AxisDrawing const& drawing) {
    AxisFrame const& frame = drawing.frame;
    const PenScope pen(drawing.surface, drawing.axis.AxisThickness);
    drawing.surface.Line(frame.at(frame.along_low(), frame.own.line),
                         frame.at(frame.along_high(), frame.own.line), LineShape::Segment,
                         drawing.axis.AxisColor);
}

void draw_tick(AxisDrawing const& drawing, PlacedTick const& tick, AxisEdge edge) {
    Axis const& axis = drawing.axis;
    double const length = axis.AxisTickLength * (tick.kind == TickKind::Major ? 1.0 : minor_tick_share);
    if (length == 0 || !(axis.AxisTicksInside || axis.AxisTicksOutside)) return;
    const PenScope pen(drawing.surface, axis.AxisTickThickness);
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
              {drawing.axis.AxisLabelFont, drawing.axis.AxisLabelColor, tick.label_is_ours});
}

void draw_own_edge(AxisDrawing const& drawing) {
    if (!drawing.paints) return;
    bool const is_bar = drawing.frame.kind == AxisKind::Color;
    if (is_bar) draw_color_bar(current_graph(drawing.state), drawing.surface, drawing.axis, drawing.frame);
    draw_axis_line(drawing);
    for (PlacedTick const& tick : drawing.ticks) {
        if (!is_bar)
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

// The title, with what its labels leave out behind it; that alone where no title is shown.
struct AxisTitle {
    std::string text;
    bool is_ours = false;
};

bool leaves_out_titles(AxisDrawing const& drawing) {
    return current_graph(drawing.state).leaves_out(LeftOut::AxisTitles);
}

AxisTitle axis_title(AxisDrawing const& drawing) {
    std::string const& own = drawing.axis.AxisTitle;
    bool const shows_own = drawing.axis.AxisShowTitle && !leaves_out_titles(drawing) && !own.empty();
    if (drawing.choice.offset.empty()) return {shows_own ? own : ""};
    if (!shows_own) return {drawing.choice.offset, true};
    return {(drawing.state.RichText ? own : escaped(own)) + "  (" + drawing.choice.offset + ")", true};
}

// Under FitMargins a title that is longer than the frame takes several lines.
std::string fitted_title(ControlState const& state, DrawSurface& surface, std::string_view title, double room,
                         Markup markup) {
    if (!state.FitMargins || !(room > 0)) return std::string(title);
    return broken_text(surface, title, room, markup);
}

// The length that a text about a middle may take between two ends, less a little air.
double room_about(double middle, double from, double to, double air) {
    return 2 * (std::min(middle - from, to - middle) - air);
}

double room_for_title(AxisDrawing const& drawing) {
    const Box frame = frame_box(current_graph(drawing.state));
    bool const is_x = drawing.frame.kind == AxisKind::X;
    double const from = is_x ? frame.left : frame.top;
    return room_about(drawing.frame.along_middle(), from, from + (is_x ? frame.width : frame.height),
                      title_air_mm * drawing.frame.units_per_mm);
}

// Draws the title and returns how many twips the axis reaches out of where it stands.
double draw_title(AxisDrawing const& drawing) {
    double const distance = distance_to_title(drawing);
    Axis const& axis = drawing.axis;
    AxisTitle title = axis_title(drawing);
    if (title.text.empty() && (!axis.AxisShowTitle || leaves_out_titles(drawing))) return distance;
    SetGraphFont(drawing.state, drawing.surface, axis.AxisTitleFont);
    const Markup markup = title.is_ours ? Markup::Read : markup_of_host_texts(drawing.state);
    title.text = fitted_title(drawing.state, drawing.surface, title.text, room_for_title(drawing), markup);
    const TextBlock size = text_block(drawing.surface, title.text, markup);
    if (drawing.paints)
        PrintText(drawing.state, drawing.surface, title.text, title_place(drawing, size, distance),
                  {axis.AxisTitleFont, axis.AxisTitleColor, title.is_ours});
    return distance + size.height;
}

void reach_out(float& side, double twips) {
    side = std::max(side, static_cast<float>(twips));
}

// Labels at the ends of an axis stand over them: by half of a label that runs along the axis or is level with
// its tick, by all of one that is turned.
void reach_past_ends(AxisDrawing const& drawing) {
    AxisFrame const& frame = drawing.frame;
    bool const is_x = frame.kind == AxisKind::X;
    document::Margins& reach = drawing.state.axes_reach;
    for (PlacedTick const& tick : drawing.ticks) {
        if (tick.label.empty() || !tick.show_label) continue;
        double const over = label_reach_along(frame, drawing.labels, tick);
        reach_out(is_x ? reach.left : reach.top, frame.along_low() - tick.along + over);
        reach_out(is_x ? reach.right : reach.bottom, tick.along + over - frame.along_high());
    }
}

float& reach_beside(document::Margins& reach, AxisFrame const& frame) {
    if (frame.kind == AxisKind::X) return frame.far_side ? reach.top : reach.bottom;
    return frame.far_side ? reach.right : reach.left;
}

bool paints_axes(AxesPass pass) {
    return pass == AxesPass::Full || pass == AxesPass::MarksOnly;
}

void draw_visible_axis(ControlState& state, DrawSurface& surface, Axis const& axis, AxisSpan range,
                       AxesPass pass) {
    AxisDrawing drawing{state, surface, axis, axis_frame(state, surface, axis),
                        {},    {},      {},   paints_axes(pass)};
    SetGraphFont(state, surface, axis.AxisLabelFont);
    drawing.ticks = place_ticks(state, surface, drawing.frame, axis, range, drawing.choice);
    drawing.labels = label_layout(surface, drawing.frame, axis, drawing.ticks, drawing.choice);
    if (state.ThinTickLabels) thin_labels(surface, drawing.frame, axis, drawing.ticks);
    draw_own_edge(drawing);
    double const reach = drawing.frame.bar + draw_title(drawing);
    if (axis.AxisTicksBothEnds && drawing.paints && axis.AxisXY != AxisKind::Color)
        for (PlacedTick const& tick : drawing.ticks) draw_tick(drawing, tick, drawing.frame.opposite);
    std::int32_t& offset = stack_offset(state, drawing.frame.kind, drawing.frame.far_side);
    reach_out(reach_beside(state.axes_reach, drawing.frame), offset + reach);
    reach_past_ends(drawing);
    offset = to_i32(offset + (reach + surface.TextHeight("A")));
}

void draw_axis(ControlState& state, DrawSurface& surface, std::int16_t index, AxisKind kind, bool first,
               AxesPass pass) {
    Graph& graph = current_graph(state);
    const document::SelectedAxesScope selection(graph);
    if (kind != AxisKind::Color) selected_index(graph, kind) = index;
    if (first) stack_offset(state, kind, false) = stack_offset(state, kind, true) = 0;
    Axis& axis = at(graph.Axes, index);
    const AxisSpan range =
        pass == AxesPass::MarksOnly ? settled_axis_range(axis) : settle_axis_range(state, axis);
    if (!is_current(state, graph)) return; // a handler of GraphScaleChanged has taken it away
    if (!axis.AxisHide && shows_axes(graph)) draw_visible_axis(state, surface, axis, range, pass);
    if (kind == AxisKind::X)
        graph.TopAxesHeight = static_cast<float>(std::max<double>(
            state.AxisStackOffsets.far, reach_of_opposite_axes(state, surface, AxisKind::X, true)));
    surface.state.ForeColor = 0;
}

void draw_graph_title(ControlState& state, DrawSurface& surface, AxesPass pass) {
    Graph const& graph = current_graph(state);
    if (!graph.GraphShowTitle || graph.leaves_out(LeftOut::Title)) return;
    const Box plot = plot_box(current_graph(state));
    double const above = graph.TopAxesHeight + (graph.GraphTitleVShift + 1) * state.UnitsPerMmY;
    double const x = plot.left + plot.width / 2 + (graph.GraphTitleHShift + 1) * state.UnitsPerMmX;
    const Markup markup = markup_of_host_texts(state);
    SetGraphFont(state, surface, std::string(graph.GraphTitleFont));
    const std::string title = fitted_title(
        state, surface, at(state.GraphTitles, state.CurrentGraph),
        room_about(x, graph.FrameLeft, graph.FrameLeft + graph.FrameWidth, title_air_mm * state.UnitsPerMmX),
        markup);
    if (pass == AxesPass::Measured)
        return reach_out(state.axes_reach.top, above + text_block(surface, title, markup).height);
    PrintText(state, surface, title,
              {{std::max(0.0, x), std::max(0.0, plot.top - above)}, Align::Centre, Align::End, 0, true},
              {graph.GraphTitleFont, graph.GraphTitleColor});
}

void draw_axes_of_kind(ControlState& state, DrawSurface& surface, AxisKind kind, AxesPass pass) {
    Graph& graph = current_graph(state);
    bool first = true;
    for (std::int16_t i = 0; i < graph.NumAxes() && is_current(state, graph); ++i) {
        Axis& axis = at(graph.Axes, i);
        if (axis.AxisXY != kind) continue;
        if (kind == AxisKind::Color)
            trapped(state, "DrawColorAxis",
                    [&] { draw_axis(state, surface, i, kind, false, pass); }); // beside the y axes
        else
            (kind == AxisKind::X ? DrawXAxis : DrawYAxis)(state, surface, i, first, pass);
        first = false;
    }
}

} // namespace

void set_axis_lengths(Graph& graph) {
    auto const length = [](double size) { return to_i32(std::max(smallest_axis_length, size)); };
    const document::Margins margins = graph.margins();
    std::int32_t const across = length(frame_box(graph).width - margins.left - margins.right);
    std::int32_t const down = length(frame_box(graph).height - margins.top - margins.bottom);
    for (Axis& axis : graph.Axes) axis.AxisLength = axis.AxisXY == AxisKind::X ? across : down;
}

void GraphAxes(ControlState& state, DrawSurface& surface, AxesPass pass) {
    trapped(state, "GraphAxes", [&] {
        Graph& graph = current_graph(state);
        state.axes_reach = {};
        if (pass != AxesPass::MarksOnly) set_axis_lengths(graph);
        if (pass == AxesPass::Full || pass == AxesPass::WithoutMarks) DrawPlotArea(state, surface);
        draw_axes_of_kind(state, surface, AxisKind::X, pass);
        if (!is_current(state, graph)) return;
        // After the x axes, because those on the far side push the title up.
        if (pass != AxesPass::MarksOnly) draw_graph_title(state, surface, pass);
        draw_axes_of_kind(state, surface, AxisKind::Y, pass);
        if (is_current(state, graph) && graph.GraphPolar) draw_polar_grid(state, surface, pass);
        if (is_current(state, graph)) draw_axes_of_kind(state, surface, AxisKind::Color, pass);
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
        const PenScope pen(surface, 1);
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
