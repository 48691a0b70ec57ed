#include "render/axis_frame.h"

#include "render/plot_geometry.h"

namespace qv::render {

using graph::AxisKind;

std::int32_t& stack_offset(graph::ControlState& state, AxisKind kind, bool far_side) {
    auto& offsets = state.AxisStackOffsets;
    if (kind == AxisKind::X) return far_side ? offsets.far : offsets.near;
    return far_side ? offsets.right : offsets.left;
}

AxisFrame axis_frame(graph::ControlState& state, graph::Axis const& axis) {
    AxisFrame frame;
    frame.kind = axis.AxisXY;
    frame.far_side = axis.AxisFarSide;
    frame.plot = plot_box(graph::current_graph(state));
    bool const is_x = frame.kind == AxisKind::X;
    frame.units_per_mm = is_x ? state.UnitsPerMmY : state.UnitsPerMmX;
    const AxisEdge near = is_x ? AxisEdge{frame.plot.bottom(), 1} : AxisEdge{frame.plot.left, -1};
    const AxisEdge far = is_x ? AxisEdge{frame.plot.top, -1} : AxisEdge{frame.plot.right(), 1};
    frame.own = frame.far_side ? far : near;
    frame.opposite = frame.far_side ? near : far;
    frame.own.line += frame.own.outward * stack_offset(state, frame.kind, frame.far_side);
    return frame;
}

} // namespace qv::render
