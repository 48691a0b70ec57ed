#include "scale/axis_range.h"

#include "graph/model/selection.h"
#include "graph/model/trap.h"

namespace qv::scale {

using graph::Axis;
using graph::AxisMode;

void SetAxisScale(graph::ControlState& state) {
    trapped(state, "SetAxisScale", [&] {
        Axis& axis = selected_axis(state);
        if (axis.has_mode(AxisMode::Automatic)) {
            axis.ScaleMin = axis.DataMin;
            axis.ScaleMax = axis.DataMax;
        } else if (axis.has_mode(AxisMode::Fixed) || axis.has_mode(AxisMode::TextLabels)) {
            axis.ScaleMin = axis.AxisValue1;
            axis.ScaleMax = axis.AxisValue2;
        }
    });
}

} // namespace qv::scale
