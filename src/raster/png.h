// PNG files of a surface's picture.
#pragma once

#include "raster/pixels.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qv::raster {

class RasterSurface;

/// The picture as the bytes of a PNG file, 8 bits a channel without transparency, with its pixel density.
std::vector<std::uint8_t> encode_png(RasterSurface const& surface);

/// Writes the picture to a file, which is replaced only when all of it is written. Failures are faults:
/// 61 disk full, 70 permission denied, 75 path/file access, 76 path not found, 57 anything else.
void write_png(std::string const& path, RasterSurface const& surface);

/// A picture read back. Pixels are 0xFFRRGGBB; densities in pixels per metre, 0 when unknown.
struct PngPicture {
    PixelBuffer buffer;
    std::uint32_t pixels_per_metre_x = 0;
    std::uint32_t pixels_per_metre_y = 0;
};

/// Reads a PNG file; transparency is dropped. No file is fault 53, one that is no PNG fault 57.
PngPicture read_png(std::string const& path);

} // namespace qv::raster
