#include "raster/blend.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace qv::raster {
namespace {

constexpr int linear_steps = 4095;

double to_light(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double to_stored(double light) {
    return light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

// Between stored values (sRGB transfer curve) and light in steps of 1/4095.
struct LightTables {
    std::array<std::uint16_t, 256> light;
    std::array<std::uint8_t, linear_steps + 1> stored;

    LightTables() {
        for (std::size_t i = 0; i < light.size(); ++i)
            light[i] = static_cast<std::uint16_t>(
                std::lround(to_light(static_cast<double>(i) / 255) * linear_steps));
        for (std::size_t i = 0; i < stored.size(); ++i)
            stored[i] = static_cast<std::uint8_t>(
                std::lround(to_stored(static_cast<double>(i) / linear_steps) * 255));
    }
};

LightTables const& tables() {
    static const LightTables instance;
    return instance;
}

// Calls visit(i) for each i with coverage above 0 and visit_full(i) for eight in full, passing over empty
// stretches eight at a time.
template <class Visit, class VisitFull>
void for_each_covered(std::uint8_t const* coverage, int count, Visit visit, VisitFull visit_full) {
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, coverage + i, 8);
        if (eight == 0) continue;
        if (eight == ~std::uint64_t{0}) {
            visit_full(i);
            continue;
        }
        for (int k = i; k < i + 8; ++k)
            if (coverage[k] != 0) visit(k);
    }
    for (; i < count; ++i)
        if (coverage[i] != 0) visit(i);
}

} // namespace

LinearMixer::LinearMixer(std::uint32_t color)
    : color_(color), to_light_(tables().light.data()), to_stored_(tables().stored.data()) {
    for (std::size_t channel = 0; channel < 3; ++channel)
        light_[channel] = to_light_[color >> (8 * channel) & 0xFF];
}

std::uint32_t LinearMixer::mixture(std::uint32_t below, std::uint32_t coverage) const {
    std::uint32_t result = 0xFF000000U;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const std::uint32_t from = to_light_[below >> (8 * channel) & 0xFF];
        const std::uint32_t sum = from * (255 - coverage) + light_[channel] * coverage;
        result |= static_cast<std::uint32_t>(to_stored_[(sum + 127) / 255]) << (8 * channel);
    }
    return result;
}

// Where all lie on the background nothing depends on how much of them is covered, which nobody could foresee.
void LinearMixer::mix_eight(std::uint32_t* pixels, std::uint8_t const* coverage) {
    std::uint32_t others = 0;
    for (int k = 0; k < 8; ++k) others |= pixels[k] ^ background_;
    if (others == 0) {
        std::array<std::uint32_t, 8> mixed;
        bool is_known = true;
        for (std::size_t k = 0; k < 8; ++k) is_known &= (mixed[k] = mixed_[coverage[k]]) != 0;
        if (is_known) {
            std::ranges::copy(mixed, pixels);
            return;
        }
    }
    for (int k = 0; k < 8; ++k)
        if (coverage[k] != 0) pixels[k] = mix(pixels[k], coverage[k]);
}

// A value seen a few times may be the edge of something; only what comes often in a row is worth a table.
bool LinearMixer::becomes_background(std::uint32_t below) {
    constexpr int often = 8;
    repeats_ = std::exchange(last_, below) == below ? repeats_ + 1 : 0;
    if (repeats_ < often) return false;
    background_ = below;
    mixed_.fill(0);
    mixed_[0] = below;
    mixed_[255] = color_;
    return true;
}

void paint_shape_row(std::uint32_t* pixels, std::uint8_t const* coverage, int count, LinearMixer& mixer) {
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, coverage + i, 8);
        if (eight == 0) continue;
        if (eight == ~std::uint64_t{0})
            std::fill_n(pixels + i, 8, mixer.color());
        else
            mixer.mix_eight(pixels + i, coverage + i);
    }
    for (; i < count; ++i)
        if (coverage[i] != 0) pixels[i] = mixer.mix(pixels[i], coverage[i]);
}

void paint_translucent_row(std::uint32_t* pixels, std::uint8_t const* coverage, int count,
                           TranslucentPaint paint) {
    constexpr int at_once = 256;
    std::array<std::uint8_t, at_once> lessened;
    for (int begin = 0; begin < count; begin += at_once) {
        int const past = std::min(count, begin + at_once);
        for (int i = begin; i < past; ++i)
            lessened[static_cast<std::size_t>(i - begin)] =
                static_cast<std::uint8_t>((coverage[i] * paint.alpha + 127) / 255);
        paint_shape_row(pixels + begin, lessened.data(), past - begin, paint.mixer);
    }
}

void invert_row(std::uint32_t* pixels, std::uint8_t const* coverage, int count) {
    auto const invert = [&](int i) { pixels[i] ^= 0x00FFFFFF; };
    for_each_covered(coverage, count, invert, [&](int i) {
        for (int k = i; k < i + 8; ++k) invert(k);
    });
}

} // namespace qv::raster
