// PNG files as another program would read them.
#pragma once

#include "raster/pixels.h"
#include "temporary_folder.h"

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

#include <png.h>

namespace qv::test {

/// The pixels as 0xFFRRGGBB; transparency is dropped.
inline raster::PixelBuffer read_png(std::filesystem::path const& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    auto const fail = [&] { throw std::runtime_error(file.string() + ": " + image.message); };
    if (png_image_begin_read_from_file(&image, file.c_str()) == 0) fail();
    image.format = PNG_FORMAT_BGRA;
    raster::PixelBuffer read{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    read.pixels.resize(PNG_IMAGE_SIZE(image) / sizeof(std::uint32_t));
    if (png_image_finish_read(&image, nullptr, read.pixels.data(), 0, nullptr) == 0) fail();
    for (std::uint32_t& pixel : read.pixels) pixel |= 0xFF000000;
    return read;
}

/// Pixels per metre across (0) or down (1) that a file tells, 0 where it tells none.
inline std::uint32_t png_density(std::filesystem::path const& file, std::size_t direction) {
    const std::string bytes = content_of(file);
    const std::size_t place = bytes.find("pHYs");
    if (place == std::string::npos) return 0;
    std::uint32_t number = 0;
    for (char const digit : bytes.substr(place + 4 + 4 * direction, 4))
        number = number << 8 | static_cast<std::uint8_t>(digit);
    return number;
}

} // namespace qv::test
