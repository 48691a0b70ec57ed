// clsGradient: paints a gradient of two colours over the whole of a surface.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/export.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace qv::render {

/// Two colours, a shape and a direction, painted over any surface.
class QV_EXPORT clsGradient {
public:
    /// The name under which callers report a fault of `Draw` or `BlendColors`.
    static constexpr std::string_view error_source = "GradientRect";

    Color Color1() const { return color1_; }      ///< where it begins
    Color Color2() const { return color2_; }      ///< where it ends, or turns round
    float Angle() const { return angle_; }        ///< degrees, 0 to below 360
    float Shift() const { return shift_; }        ///< as it was set
    std::int16_t Style() const { return style_; } ///< as it was set

    /// A system colour becomes the colour it stands for.
    void Color1(Color color);
    void Color2(Color color); ///< the same
    /// Degrees, counter-clockwise from left to right; kept from 0 to below 360.
    void Angle(float degrees);
    /// -1 to 1, what lies beyond acts as the nearest of these: above 0 the colours stay near the first
    /// longer.
    void Shift(float shift) { shift_ = shift; }
    /// Its magnitude is the shape: 1 lines across the angle, 2 rectangles about the centre, 3 rhombi, 4 a fan
    /// from the centre, 5 rectangles about a corner, 6 a fan from a corner, any other as 1. Below 1 the
    /// colours run to the second and back.
    void Style(std::int16_t style) { style_ = style; }

    /// Paints the whole client area, within the surface's clip. False, and nothing is painted, when a side is
    /// a pixel or less. An angle or a shift that is not a finite number is fault 6.
    bool Draw(DrawSurface& target) const;

    /// `n` colours, at least 2, bent by `Shift` and going back when `Style` is below 1; the last is always
    /// `c2`.
    std::vector<Color> BlendColors(Color c1, Color c2, int n) const;

private:
    Color color1_ = 0xFFFFD0;
    Color color2_ = 0x400000;
    float angle_ = 315;
    float shift_ = 0;
    std::int16_t style_ = 1;
};

} // namespace qv::render
