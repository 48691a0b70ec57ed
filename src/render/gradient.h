// Fills of whole areas.
#pragma once

#include "graph/model/ControlState.h"
#include "render/pipeline.h"

namespace qv::render {

/// Fills an area of the current graph. A transparent fill leaves what is below. Only the first colour is
/// painted in this version. Afterwards drawing is clipped to the graph's frame.
void DrawGradient(graph::ControlState& state, DrawSurface& surface, Area area, graph::FillSpec const& fill);

} // namespace qv::render
