// The frame in which an axis is drawn: one direction along it, one across it. Everything that differs
// between x and y axes, near and far sides, is a value here.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// A side of the plot area seen by an axis: `line` is the page coordinate across the axis, `outward` the
/// sign of the way out of the plot area.
struct AxisEdge {
    double line = 0;
    double outward = 1;
    double half_line = 0; // twips from the middle of the line drawn there to its outer edge, at most
};

struct AxisFrame {
    document::AxisKind kind = document::AxisKind::X;
    bool far_side = false;
    Box plot;
    AxisEdge own;            // where the axis line lies, moved out by the axes before it
    AxisEdge opposite;       // the plot area's other edge
    double units_per_mm = 0; // across the axis
    double bar = 0; // twips from the edge of the plot area, or the axis before, to the line of a colour bar
    double bar_width = 0; // twips of that which are filled with colours, next to the line
    double taken = 0;     // twips out of the plot area that ticks of axes on the other side take here

    double along_low() const { return kind == document::AxisKind::X ? plot.left : plot.top; }
    double along_high() const { return kind == document::AxisKind::X ? plot.right() : plot.bottom(); }
    double along_middle() const { return (along_low() + along_high()) / 2; }
    /// The page point at a coordinate along the axis and one across it.
    Point at(double along, double across) const {
        return kind == document::AxisKind::X ? Point{along, across} : Point{across, along};
    }
};

AxisFrame axis_frame(document::ControlState& state, DrawSurface const& surface, document::Axis const& axis);

/// How far axes that stand on the other side, and have ticks on both ends, reach out of this edge of the
/// current graph's plot area, twips.
double reach_of_opposite_axes(document::ControlState& state, DrawSurface const& surface,
                              document::AxisKind kind, bool far_side);

/// The running offset of the side an axis stands on.
std::int32_t& stack_offset(document::ControlState& state, document::AxisKind kind, bool far_side);

} // namespace qv::render
