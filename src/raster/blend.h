// Blending: how a colour with a coverage of 0 to 255 is laid over pixels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace qv::raster {

/// Mixes one colour into pixels, in linear light, so that a line spread over two pixels is as dark as one
/// that fills a single pixel. Neighbouring pixels mostly lie on one background, whose mixtures are kept.
class LinearMixer {
public:
    explicit LinearMixer(std::uint32_t color);
    std::uint32_t color() const { return color_; }

    std::uint32_t mix(std::uint32_t below, std::uint32_t coverage) {
        if (coverage == 255) return color_;
        if (below != background_ && !becomes_background(below)) return mixture(below, coverage);
        std::uint32_t& mixed = mixed_[coverage];
        if (mixed == 0) mixed = mixture(below, coverage);
        return mixed;
    }

    /// The same for eight neighbours, of which any may have coverage 0.
    void mix_eight(std::uint32_t* pixels, std::uint8_t const* coverage);

private:
    bool becomes_background(std::uint32_t below);
    std::uint32_t mixture(std::uint32_t below, std::uint32_t coverage) const;

    std::uint32_t color_;
    std::uint16_t const* to_light_;
    std::uint8_t const* to_stored_;
    std::array<std::uint32_t, 3> light_{};
    std::uint32_t background_ = 0; // no pixel has this value
    std::uint32_t last_ = 0;
    int repeats_ = 0;
    std::array<std::uint32_t, 256> mixed_{}; // of colour and background by coverage; 0 when not yet needed
};

/// Paints pixels with the mixer's colour where `coverage` is above 0.
void paint_shape_row(std::uint32_t* pixels, std::uint8_t const* coverage, int count, LinearMixer& mixer);

/// A colour and how much of it there is where it covers a pixel in full, 0 to 255.
struct TranslucentPaint {
    LinearMixer& mixer;
    std::uint32_t alpha;
};
/// The same with a coverage that is less by the paint's alpha.
void paint_translucent_row(std::uint32_t* pixels, std::uint8_t const* coverage, int count,
                           TranslucentPaint paint);

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
