#include "render/color_table.h"

#include "base/convert.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

Color color_at(ColorBlend const& blend, double fraction) {
    double const part = std::pow(fraction, blend.exponent);
    auto const channel = [&](int shift) {
        double const low = blend.from >> shift & 0xFF;
        double const high = blend.to >> shift & 0xFF;
        return to_i32(low + part * (high - low)) << shift;
    };
    return channel(0) | channel(8) | channel(16);
}

} // namespace

std::vector<Color> color_table(ColorBlend const& blend, int count) {
    int const n = std::max(count, 2);
    double const way = blend.symmetric ? n / 2.0 : n;
    std::vector<Color> colors(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        int const step = blend.symmetric ? std::min(i, n - 1 - i) : i;
        colors[static_cast<std::size_t>(i)] = color_at(blend, step / way);
    }
    colors.back() = color_at(blend, 1);
    return colors;
}

} // namespace qv::render
