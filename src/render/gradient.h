// Fills of whole areas.
#pragma once

#include "document/ControlState.h"
#include "render/pipeline.h"

#include <span>

namespace qv::render {

/// Fills an area of the current graph with a gradient, or with the first colour when both are the same. A
/// transparent fill leaves what is below. Afterwards drawing is clipped to the graph's frame. When the
/// painter fails, that is reported and the area gets the first colour. Of parts, if any are given, only those
/// are filled.
void DrawGradient(document::ControlState& state, DrawSurface& surface, Area area,
                  document::FillSpec const& fill, std::span<Box const> parts = {});

} // namespace qv::render
