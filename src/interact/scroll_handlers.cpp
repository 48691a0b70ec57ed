#include "interact/scroll_handlers.h"

#include "document/selection.h"
#include "document/trap.h"
#include "interact/front.h"
#include "interact/hit_test.h"
#include "interact/zoom.h"
#include "scale/mapping.h"

#include <cmath>

namespace qv::interact {
namespace {

using document::Axis;
using document::AxisKind;
using document::ControlState;

/// Moves an axis so that `place` of the room it has lies before its displayed range: 0 is the start of the
/// full range, 1 its end. On the axis's own scale the length stays.
void move_to(Axis& axis, double place) {
    const scale::ScaleFrom from_start{axis.ScaleMin, axis.AxisLog};
    const scale::ScaleFrom from_first{axis.AxisValue1, axis.AxisLog};
    double const whole = from_start(axis.ScaleMax);
    double const length = std::copysign(from_first(axis.AxisValue2), whole);
    double first = from_start.value_at((whole - length) * place);
    double last = from_start.value_at((whole - length) * place + length);
    if (place == 0) first = axis.ScaleMin;
    if (place == 1) last = axis.ScaleMax;
    if (std::isfinite(first) && std::isfinite(last)) show_within_full_range(axis, {first, last});
}

void move_axes(ControlState& state, AxisKind kind, host::ScrollBar const& bar) {
    document::Graph* const graph = graph_at(state, state.BarsGraph);
    if (!graph || state.NoRedraw) return;
    const ZoomStepScope step(state, state.BarsGraph, document::ZoomKind::Scroll);
    double const from_start = static_cast<double>(bar.Value) / bar.Max;
    // The top of a vertical bar stands for the high end.
    double const low_to_high = kind == AxisKind::X ? from_start : 1 - from_start;
    for (Axis& axis : graph->Axes)
        if (axis.AxisXY == kind && has_scale(axis))
            move_to(axis, axis.AxisReverse ? 1 - low_to_high : low_to_high);
    refresh_graph(state, state.BarsGraph);
}

} // namespace

void HScroll1_Change(ControlState& state) {
    trapped(state, "HScroll1_Change", [&] { move_axes(state, AxisKind::X, state.HScroll1); });
}

void VScroll1_Change(ControlState& state) {
    trapped(state, "VScroll1_Change", [&] { move_axes(state, AxisKind::Y, state.VScroll1); });
}

void HScroll1_Scroll(ControlState& state) {
    trapped(state, "HScroll1_Scroll", [&] {
        if (!state.Refreshing) HScroll1_Change(state);
    });
}

void VScroll1_Scroll(ControlState& state) {
    trapped(state, "VScroll1_Scroll", [&] {
        if (!state.Refreshing) VScroll1_Change(state);
    });
}

} // namespace qv::interact
