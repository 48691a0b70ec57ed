// Surfaces for tests, and what can be read off their pictures.
#pragma once

#include "qvgraph/RasterSurface.h"
#include "raster/FontLibrary.h"
#include "raster/pixels.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

namespace qv::raster::test {

using Picture = std::vector<std::uint32_t>;

constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t black = 0xFF000000;

inline std::shared_ptr<FontLibrary> shared_fonts() {
    static auto const fonts = std::make_shared<FontLibrary>();
    return fonts;
}

/// A white surface of this many pixels.
inline RasterSurface surface_of(int width, int height, double twips_x = 15, double twips_y = 15) {
    RasterSurface surface(twips_x, twips_y, shared_fonts());
    surface.Move(width * twips_x, height * twips_y);
    surface.Cls();
    return surface;
}

inline Picture picture_of(RasterSurface const& surface) {
    return {surface.pixels().begin(), surface.pixels().end()};
}

inline std::uint32_t pixel(RasterSurface const& surface, int x, int y) {
    return surface.pixels()[static_cast<std::size_t>(y * surface.stride() + x)];
}

/// The smallest box around all pixels that are not white; empty for a white picture.
inline PixelBox ink_box(RasterSurface const& surface) {
    PixelBox box{surface.width(), surface.height(), 0, 0};
    for (int y = 0; y < surface.height(); ++y)
        for (int x = 0; x < surface.width(); ++x) {
            if (pixel(surface, x, y) == white) continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    return box;
}

inline int ink_count(RasterSurface const& surface) {
    int count = 0;
    for (const std::uint32_t value : surface.pixels()) count += value != white;
    return count;
}

/// Light missing from a grey picture on white, in whole black pixels (sRGB transfer curve).
inline double darkness(RasterSurface const& surface) {
    double sum = 0;
    for (const std::uint32_t value : surface.pixels()) {
        double const stored = (value & 0xFF) / 255.0;
        sum += 1 - (stored <= 0.04045 ? stored / 12.92 : std::pow((stored + 0.055) / 1.055, 2.4));
    }
    return sum;
}

/// The largest difference of any channel of any pixel.
inline int largest_difference(Picture const& a, Picture const& b) {
    int largest = a.size() == b.size() ? 0 : 256;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        for (int shift = 0; shift < 24; shift += 8)
            largest = std::max(largest, std::abs(static_cast<int>(a[i] >> shift & 0xFF)
                                                 - static_cast<int>(b[i] >> shift & 0xFF)));
    return largest;
}

inline Point at(double x, double y) {
    return {x * 15, y * 15};
}

} // namespace qv::raster::test
