#include "scale/zoomed.h"

#include "document/selection.h"
#include "document/trap.h"

namespace qv::scale {
namespace {

bool shows_full_range(document::Axis const& axis) {
    return axis.AxisValue1 == axis.ScaleMin && axis.AxisValue2 == axis.ScaleMax;
}

} // namespace

void SetScrollBarsVisibility(document::ControlState& state) {
    trapped(state, "SetScrollBarsVisibility", [&] {
        state.Zoomed = false;
        document::Graph& graph = current_graph(state);
        state.Zoomed = !shows_full_range(selected_x_axis(graph)) || !shows_full_range(selected_y_axis(graph));
    });
}

} // namespace qv::scale
