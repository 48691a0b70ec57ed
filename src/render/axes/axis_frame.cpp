#include "render/axes/axis_frame.h"

#include "render/kinds/series_kind.h"
#include "render/plot_geometry.h"

#include <algorithm>

namespace qv::render {

using document::AxisKind;

namespace {

// Of an odd number of pixels as many lie on either side of the middle one; an even number has one more inside
// or outside, which counts on both.
double half_line(DrawSurface const& surface, document::Axis const& axis) {
    double const pixel = axis.AxisXY == AxisKind::X ? surface.TwipsPerPixelY() : surface.TwipsPerPixelX();
    int const on_each_side = whole_pen(surface.pen_pixels(axis.AxisThickness)) / 2;
    return on_each_side * pixel;
}

// The same of the line on the edge opposite to an axis that has ticks there: of the axis that stands there,
// else its own.
double opposite_half_line(document::ControlState& state, DrawSurface const& surface,
                          document::Axis const& axis) {
    for (document::Axis const& other : document::current_graph(state).Axes)
        if (other.AxisXY == axis.AxisXY && other.AxisFarSide != axis.AxisFarSide && !other.AxisHide)
            return half_line(surface, other);
    return half_line(surface, axis);
}

// The line of a colour bar is its outer edge. It keeps clear of what ticks of the y axes take beside the plot
// area.
void lead_past_bar(AxisFrame& frame, document::ControlState& state, DrawSurface const& surface,
                   document::Axis const& axis, bool is_first) {
    constexpr double gap_mm = 3;
    double const taken = is_first ? reach_of_opposite_axes(state, surface, AxisKind::Y, frame.far_side) : 0;
    frame.bar_width = std::max<double>(axis.AxisBarWidth, surface.TwipsPerPixelX());
    frame.bar = taken + (is_first ? gap_mm * state.UnitsPerMmX : 0) + frame.bar_width;
    frame.own.line += frame.own.outward * frame.bar;
    frame.opposite = frame.own;
}

} // namespace

std::int32_t& stack_offset(document::ControlState& state, AxisKind kind, bool far_side) {
    auto& offsets = state.AxisStackOffsets;
    if (kind == AxisKind::X) return far_side ? offsets.far : offsets.near;
    return far_side ? offsets.right : offsets.left;
}

double reach_of_opposite_axes(document::ControlState& state, DrawSurface const& surface, AxisKind kind,
                              bool far_side) {
    double reach = 0;
    if (!shows_axes(document::current_graph(state))) return reach;
    for (document::Axis const& axis : document::current_graph(state).Axes) {
        bool const is_here = axis.AxisXY == kind && axis.AxisFarSide != far_side && axis.AxisTicksBothEnds;
        if (!is_here || axis.AxisHide) continue;
        double const outside = axis.AxisTicksOutside ? axis.AxisTickLength : 0;
        reach = std::max(reach, opposite_half_line(state, surface, axis) + outside);
    }
    return reach;
}

AxisFrame axis_frame(document::ControlState& state, DrawSurface const& surface, document::Axis const& axis) {
    AxisFrame frame;
    frame.kind = axis.AxisXY;
    frame.far_side = axis.AxisFarSide;
    frame.plot = plot_box(document::current_graph(state));
    bool const is_x = frame.kind == AxisKind::X;
    frame.units_per_mm = is_x ? state.UnitsPerMmY : state.UnitsPerMmX;
    const AxisEdge near = is_x ? AxisEdge{frame.plot.bottom(), 1, 0} : AxisEdge{frame.plot.left, -1, 0};
    const AxisEdge far = is_x ? AxisEdge{frame.plot.top, -1, 0} : AxisEdge{frame.plot.right(), 1, 0};
    frame.own = frame.far_side ? far : near;
    frame.opposite = frame.far_side ? near : far;
    frame.own.half_line = half_line(surface, axis);
    frame.opposite.half_line = opposite_half_line(state, surface, axis);
    std::int32_t const offset = stack_offset(state, frame.kind, frame.far_side);
    frame.own.line += frame.own.outward * offset;
    if (frame.kind == AxisKind::Color) {
        lead_past_bar(frame, state, surface, axis, offset == 0);
        return frame;
    }
    if (offset == 0) frame.taken = reach_of_opposite_axes(state, surface, frame.kind, frame.far_side);
    return frame;
}

} // namespace qv::render
