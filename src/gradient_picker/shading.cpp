#include "gradient_picker/shading.h"

#include "base/convert.h"

#include <algorithm>
#include <cmath>

namespace qv::gradient_picker {
namespace {

// The classic interface's degrees in a radian; whole degrees hardly ever show the difference.
constexpr double degrees_in_radian = 57.296;

float adjusted_channel(float channel, float amount) {
    if (amount < 0) return (255 - channel) * std::min(-amount, 1.0F) + channel;
    return channel * std::max(1 - amount, 0.0F);
}

} // namespace

Color ShadeColor(Color color, float shade) {
    return AdjustColor(color, -shade);
}

Color AdjustColor(Color color, float amount) {
    if (amount == 0) return color;
    auto const adjusted = [&](int shift) -> int {
        return to_u8(adjusted_channel(static_cast<float>(color >> shift & 0xFF), amount));
    };
    return rgb(adjusted(0), adjusted(8), adjusted(16));
}

std::optional<std::int16_t> ArcTanDeg(double dx, double dy) {
    if (dx == 0 && dy == 0) return std::nullopt;
    if (dx == 0) return std::int16_t{dy > 0 ? std::int16_t{90} : std::int16_t{270}};
    int degrees = to_i16(std::atan(dy / dx) * degrees_in_radian);
    if (dx < 0) degrees -= 180;
    if (degrees < 0) degrees += 360;
    return to_i16(degrees);
}

} // namespace qv::gradient_picker
