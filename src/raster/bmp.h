// Bitmap files of a surface's picture.
#pragma once

#include <cstdint>
#include <vector>

namespace qv::raster {

class RasterSurface;

/// The picture as the bytes of an uncompressed 24-bit bitmap file with its pixel density. A picture whose
/// file would have more than 2^31 bytes is fault 7.
std::vector<std::uint8_t> encode_bmp(RasterSurface const& surface);

} // namespace qv::raster
