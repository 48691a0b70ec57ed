// Colours as people see them: lightness and two opponent hues, in which equal distances look equally far.
// Formulas: Björn Ottosson, A perceptual color space for image processing (2020); the transfer function of
// sRGB is that of IEC 61966-2-1.
#pragma once

#include "qvgraph/geometry.h"

namespace qv::render {

struct Oklab {
    double lightness = 0; // 0 black, 1 white
    double a = 0;         // green to red
    double b = 0;         // blue to yellow
};

/// The light that a stored channel of a colour stands for, and back, both 0 to 1.
double light_of_stored(double stored);
double stored_of_light(double light);

Oklab oklab(Color color);
/// The nearest colour that can be shown, channel by channel.
Color color_of(Oklab const& seen);
/// Whether it can be shown as it is.
bool can_be_shown(Oklab const& seen);
/// How different two colours look.
double distance(Oklab const& one, Oklab const& other);
/// The place on the straight way between two colours.
Oklab between(Oklab const& one, Oklab const& other, double share);
/// A colour of this hue, in degrees, and chroma.
Oklab of_hue(double lightness, double chroma, double hue_degrees);

} // namespace qv::render
