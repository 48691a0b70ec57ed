#include "platform/qt/page_image.h"

#include "platform/qt/translate_input.h"
#include "platform/raster/RasterSurface.h"

namespace qv::qt {

QImage image_of(DrawSurface const& surface) {
    auto const& picture = static_cast<raster::RasterSurface const&>(surface);
    QImage image(reinterpret_cast<uchar const*>(picture.pixels().data()), picture.width(), picture.height(),
                 picture.stride() * static_cast<qsizetype>(sizeof(std::uint32_t)), QImage::Format_RGB32);
    image.setDevicePixelRatio(twips_per_unit / picture.TwipsPerPixelX());
    return image;
}

} // namespace qv::qt
