// Margins that fit what stands in them.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// Works out, under FitMargins, AlignPlots and for legends beside their plot areas, the margins of all
/// graphs, and settles their automatic ranges as drawing does. True when a graph other than `alone` has other
/// margins than it was drawn with. Texts are measured on the surface.
bool fit_margins(document::ControlState& state, DrawSurface& surface, std::int16_t alone);

} // namespace qv::render
