// Blending: how a colour with a coverage of 0 to 255 is laid over pixels.
#pragma once

#include <cstdint>

namespace qv::raster {

/// Paints pixels with `color` where `coverage` is above 0. Mixes in linear light, so that a line spread over
/// two pixels is as dark as one that fills a single pixel.
void paint_shape_row(std::uint32_t* pixels, std::uint8_t const* coverage, int count, std::uint32_t color);

/// Inverts the pixels where `coverage` is above 0.
void invert_row(std::uint32_t* pixels, std::uint8_t const* coverage, int count);

/// One pixel of text. Mixes the stored values: in linear light the thin stems of dark text fade.
inline std::uint32_t blended_text(std::uint32_t below, std::uint32_t color, std::uint32_t coverage) {
    // Two channels at a time; 256 instead of 255 steps make the division a shift.
    const std::uint32_t weight = coverage + (coverage >> 7);
    auto const mix = [weight](std::uint32_t from, std::uint32_t to) {
        return (from * (256 - weight) + to * weight) >> 8;
    };
    const std::uint32_t red_blue = mix(below & 0x00FF00FF, color & 0x00FF00FF) & 0x00FF00FF;
    const std::uint32_t green = mix(below >> 8 & 0xFF, color >> 8 & 0xFF) << 8;
    return 0xFF000000U | red_blue | green;
}

} // namespace qv::raster
