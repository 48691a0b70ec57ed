#include "scale/axis_range.h"

namespace qv::scale {

using document::Axis;
using document::AxisMode;

void SetAxisScale(Axis& axis) {
    if (axis.has_mode(AxisMode::Automatic)) {
        axis.ScaleMin = axis.DataMin;
        axis.ScaleMax = axis.DataMax;
    } else if (axis.has_mode(AxisMode::Fixed) || axis.has_mode(AxisMode::TextLabels)) {
        axis.ScaleMin = axis.AxisValue1;
        axis.ScaleMax = axis.AxisValue2;
    }
}

} // namespace qv::scale
