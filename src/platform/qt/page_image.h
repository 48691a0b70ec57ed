// The pixels of a surface as an image.
#pragma once

#include "render/DrawSurface.h"

#include <QtGui/QImage>

namespace qv::qt {

/// An image on the pixels of a RasterSurface, without a copy: it must not outlive them.
QImage image_of(DrawSurface const& surface);

} // namespace qv::qt
