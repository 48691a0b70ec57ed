// The page drawn anew on surfaces of another make, such as those that keep shapes and text instead of pixels.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// Draws a copy of the document, with pages as large as the control's, and returns the finished page. The
/// document, its pictures and its events know nothing of it.
std::unique_ptr<DrawSurface> redraw_page(document::ControlState& state,
                                         host::SurfaceMaker const& make_surface);

} // namespace qv::render
