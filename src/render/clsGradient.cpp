#include "qvgraph/clsGradient.h"

#include "qvgraph/system_color.h"
#include "render/color_table.h"
#include "render/gradient_shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace qv::render {
namespace {

// Unlike a surface, which looks up any colour with its top bit set, only what names a known system colour.
Color without_system_color(Color color) {
    bool const known = color < 0 && (color & 0x7FFFFFFF) < static_cast<Color>(system_color_values.size());
    return known ? plain_color(color) : color;
}

} // namespace

void clsGradient::Color1(Color color) {
    color1_ = without_system_color(color);
}

void clsGradient::Color2(Color color) {
    color2_ = without_system_color(color);
}

void clsGradient::Angle(float degrees) {
    float const turned = std::fmod(degrees, 360.0F); // exact, however many turns
    float const positive = turned < 0 ? turned + 360 : turned;
    angle_ = positive == 360 ? 0 : positive; // what is a hair below 0 is rounded up to a full turn
}

bool clsGradient::Draw(DrawSurface& target) const {
    const PixelSize size = target.GetClientRect();
    int const shape = std::abs(static_cast<int>(style_));
    if (shape == rhombi_shape) {
        target.state.BackColor = color1_;
        target.Cls();
    }
    if (size.width <= 1 || size.height <= 1) return false;
    paint_shape(shape, *this, target);
    return true;
}

std::vector<Color> clsGradient::BlendColors(Color c1, Color c2, int n) const {
    double const exponent = std::pow(10.0, std::clamp(static_cast<double>(shift_), -1.0, 1.0));
    return color_table({c1, c2, exponent, style_ < 1}, n);
}

} // namespace qv::render
