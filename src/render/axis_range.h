// The range an axis is drawn with, settled when it is drawn.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

struct AxisSpan {
    double low = 0;
    double high = 0;
};

/// Decides the range from the axis's mode, rounds automatic ones, stores a rescaled range and raises
/// GraphScaleChanged, and clears AxisLog where the range is not wholly positive and on axes of time.
AxisSpan settle_axis_range(document::ControlState& state, document::Axis& axis);

/// The range that an axis was settled to, which its data were drawn by.
AxisSpan settled_axis_range(document::Axis const& axis);

} // namespace qv::render
