// PNG files of a surface's picture.
#pragma once

#include <cstdint>
#include <vector>

namespace qv::raster {

class RasterSurface;

/// The picture as the bytes of a PNG file, 8 bits a channel without transparency, with its pixel density.
std::vector<std::uint8_t> encode_png(RasterSurface const& surface);

} // namespace qv::raster
