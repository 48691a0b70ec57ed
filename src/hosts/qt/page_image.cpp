#include "hosts/qt/page_image.h"

#include "hosts/qt/translate_input.h"
#include "qvgraph/RasterSurface.h"

#include <QtGui/QPainter>

#include <memory>

namespace qv::qt {

QImage image_of(DrawSurface const& surface) {
    auto const& picture = static_cast<raster::RasterSurface const&>(surface);
    using Pixels = std::shared_ptr<std::uint32_t const>;
    auto held = std::make_unique<Pixels>(picture.snapshot());
    auto const* const pixels = reinterpret_cast<uchar const*>(held->get());
    QImage image(
        pixels, picture.width(), picture.height(),
        picture.stride() * static_cast<qsizetype>(sizeof(std::uint32_t)), QImage::Format_RGB32,
        [](void* pointer) { delete static_cast<Pixels*>(pointer); }, held.get());
    held.release(); // the image's now
    image.setDevicePixelRatio(twips_per_unit / picture.TwipsPerPixelX());
    return image;
}

void paint_pixels(QPainter& painter, QRect const& widget, QImage image) {
    double const density = image.devicePixelRatio();
    // At a broken scale the widget may reach part of a pixel beyond the picture.
    if (QSizeF(image.size()) != QSizeF(widget.size()) * density)
        painter.fillRect(widget, image.pixelColor(image.width() - 1, image.height() - 1));
    // Scaled back to the screen's pixels, so that they are copied and not resampled.
    painter.save();
    painter.scale(1 / density, 1 / density);
    image.setDevicePixelRatio(1);
    painter.drawImage(0, 0, image);
    painter.restore();
}

} // namespace qv::qt
