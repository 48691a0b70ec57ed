// The ticks of an axis of categories, placed on the page.
#pragma once

#include "render/axes/tick_labels.h"

#include <vector>

namespace qv::render {

/// A tick at each category in sight, as far as ticks keep apart; labels where they do not touch: of all, else
/// of all turned, where margins fit them and the host has set no angle, else of every 2nd, 5th, 10th, ...
/// from the first on. Measured in the surface's current font.
std::vector<PlacedTick> place_category_ticks(document::ControlState& state, DrawSurface& surface,
                                             AxisFrame const& frame, document::Axis const& axis,
                                             LabelChoice& choice);

} // namespace qv::render
