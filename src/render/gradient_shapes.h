// The shapes of gradients: each is a set of one-pixel lines, the later over the earlier, that together reach
// every pixel of the surface.
#pragma once

#include "qvgraph/clsGradient.h"

namespace qv::render {

/// The shape whose corners its lines leave to the surface's background.
constexpr int rhombi_shape = 3;

/// Paints the shape of a style's magnitude over a surface of at least 2 x 2 pixels.
void paint_shape(int shape, clsGradient const& gradient, DrawSurface& target);

} // namespace qv::render
