#include "render/grids/oklab.h"

#include "qvgraph/system_color.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace qv::render {
namespace {

using Light = std::array<double, 3>; // linear red, green and blue, 0 to 1

Light light_of(Oklab const& seen) {
    auto const cubed = [](double root) { return root * root * root; };
    double const l = cubed(seen.lightness + 0.3963377774 * seen.a + 0.2158037573 * seen.b);
    double const m = cubed(seen.lightness - 0.1055613458 * seen.a - 0.0638541728 * seen.b);
    double const s = cubed(seen.lightness - 0.0894841775 * seen.a - 1.2914855480 * seen.b);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

} // namespace

double light_of_stored(double stored) {
    return stored <= 0.04045 ? stored / 12.92 : std::pow((stored + 0.055) / 1.055, 2.4);
}

double stored_of_light(double light) {
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

Oklab oklab(Color color) {
    Color const plain = plain_color(color);
    auto const channel = [plain](int shift) { return light_of_stored((plain >> shift & 0xFF) / 255.0); };
    double const red = channel(0), green = channel(8), blue = channel(16);
    double const l = std::cbrt(0.4122214708 * red + 0.5363325363 * green + 0.0514459929 * blue);
    double const m = std::cbrt(0.2119034982 * red + 0.6806995451 * green + 0.1073969566 * blue);
    double const s = std::cbrt(0.0883024619 * red + 0.2817188376 * green + 0.6299787005 * blue);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

Color color_of(Oklab const& seen) {
    auto const byte = [](double light) {
        return static_cast<int>(std::lround(255 * stored_of_light(std::clamp(light, 0.0, 1.0))));
    };
    const Light light = light_of(seen);
    return rgb(byte(light[0]), byte(light[1]), byte(light[2]));
}

bool can_be_shown(Oklab const& seen) {
    constexpr double rounding = 1e-4;
    return std::ranges::all_of(light_of(seen),
                               [](double light) { return light > -rounding && light < 1 + rounding; });
}

double distance(Oklab const& one, Oklab const& other) {
    return std::hypot(one.lightness - other.lightness, one.a - other.a, one.b - other.b);
}

Oklab between(Oklab const& one, Oklab const& other, double share) {
    return {std::lerp(one.lightness, other.lightness, share), std::lerp(one.a, other.a, share),
            std::lerp(one.b, other.b, share)};
}

Oklab of_hue(double lightness, double chroma, double hue_degrees) {
    double const angle = hue_degrees * std::numbers::pi / 180;
    return {lightness, chroma * std::cos(angle), chroma * std::sin(angle)};
}

} // namespace qv::render
