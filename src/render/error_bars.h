// Error bars: a line with a cap at either end.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// The place of an error bar: the coordinate it stands on and its two ends, twips.
struct ErrorBarPlace {
    double across = 0;
    double low = 0;
    double high = 0;
};

/// An upright error bar in the data set's ErrorBarColor, snapped to whole pixels.
void ErrorBar(document::ControlState& state, DrawSurface& surface, std::int16_t data_set,
              ErrorBarPlace place);
/// A lying error bar in the symbol's edge colour.
void HorizErrorBar(document::ControlState& state, DrawSurface& surface, std::int16_t data_set,
                   ErrorBarPlace place);

} // namespace qv::render
