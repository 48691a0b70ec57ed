// GradientChoice: a fill as a person chooses it.
#pragma once

#include "qvgraph/geometry.h"

#include <cstdint>

namespace qv::gradient_picker {

/// Colours are base colours, before shading. The style's magnitude is the shape, 0 solid, negative there and
/// back (`render::clsGradient`).
struct GradientChoice {
    Color Color1 = 0;       ///< where it begins
    Color Color2 = 0;       ///< where it ends, or turns round
    float Shift = 0;        ///< -1 to 1
    float Angle = 0;        ///< degrees, 0 to below 360
    std::int16_t Style = 1; ///< -6 to 6
    bool operator==(GradientChoice const&) const = default;
};

} // namespace qv::gradient_picker
