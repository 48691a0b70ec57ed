// The pixels of a surface as an image.
#pragma once

#include "qvgraph/DrawSurface.h"

#include <QtCore/QRect>
#include <QtGui/QImage>

class QPainter;

namespace qv::qt {

/// The pixels of a RasterSurface as they are now, without a copy.
QImage image_of(DrawSurface const& surface);

/// Paints a surface's image at the left top corner of a widget, pixel for pixel at any density. Where the
/// widget reaches beyond, it continues the last pixel.
void paint_pixels(QPainter& painter, QRect const& widget, QImage image);

} // namespace qv::qt
