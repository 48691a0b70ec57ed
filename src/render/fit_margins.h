// Margins that fit what stands in them.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// Whether any graph's margins are to be worked out, or were and are to be forgotten.
bool has_margins_to_fit(document::ControlState const& state);

/// Works out, under FitMargins, AlignPlots and for legends beside their plot areas, the margins of all
/// graphs, and settles their automatic ranges as drawing does. True when a graph other than `alone` has other
/// margins than it was drawn with. Texts are measured on the surface.
bool fit_margins(document::ControlState& state, DrawSurface& surface, std::int16_t alone);

} // namespace qv::render
