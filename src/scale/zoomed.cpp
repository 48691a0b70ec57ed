#include "scale/zoomed.h"

#include "graph/model/selection.h"
#include "graph/model/trap.h"

namespace qv::scale {
namespace {

bool shows_full_range(graph::Axis const& axis) {
    return axis.AxisValue1 == axis.ScaleMin && axis.AxisValue2 == axis.ScaleMax;
}

} // namespace

void SetScrollBarsVisibility(graph::ControlState& state) {
    trapped(state, "SetScrollBarsVisibility", [&] {
        state.Zoomed = false;
        graph::Graph& graph = current_graph(state);
        state.Zoomed = !shows_full_range(selected_x_axis(graph)) || !shows_full_range(selected_y_axis(graph));
    });
}

} // namespace qv::scale
