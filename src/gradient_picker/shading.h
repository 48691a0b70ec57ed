// The picker's mathematics: shades of a colour, and the angle of a place seen from the preview's centre.
#pragma once

#include "qvgraph/geometry.h"

#include <cstdint>
#include <optional>

namespace qv::gradient_picker {

/// Lightens towards white (above 0, white at 1) or darkens towards black (below 0, black at -1).
Color ShadeColor(Color color, float shade);

/// Darkens by a positive amount and lightens by a negative one, 1 being all the way. By 0 a colour stays as
/// it is; by any other amount a system colour is taken for its low 24 bits.
Color AdjustColor(Color color, float amount);

/// Degrees, 0 to 360, of a place dx to the right and dy above; none of the centre itself.
std::optional<std::int16_t> ArcTanDeg(double dx, double dy);

} // namespace qv::gradient_picker
