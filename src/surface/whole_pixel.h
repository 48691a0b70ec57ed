// The one rounding that leads from places to pixels.
#pragma once

#include "qvgraph/DrawSurface.h"

#include <algorithm>
#include <cmath>

namespace qv {

/// Beyond this distance from the origin nothing can be seen, and sums of two positions still fit an int.
constexpr double farthest_pixel = 1 << 28;

/// floor() of what surely fits an int.
template <class Real>
int floor_int(Real value) {
    int const whole = static_cast<int>(value);
    return whole - (value < static_cast<Real>(whole) ? 1 : 0);
}

/// The pixel that a position in pixels falls into, halves into the one to the right or below. Far away
/// positions stop at `farthest_pixel`; not-a-number is that far to the left, where nothing shows.
inline int whole_pixel(double position) {
    if (std::isnan(position)) return static_cast<int>(-farthest_pixel);
    return floor_int(std::clamp(position, -farthest_pixel, farthest_pixel) + 0.5);
}

/// A place on the page in pixels, with its fraction.
inline PixelPoint in_pixels(DrawSurface const& surface, Point place) {
    return {place.x / surface.TwipsPerPixelX(), place.y / surface.TwipsPerPixelY()};
}

/// The pixel that a place on the page falls into.
inline PixelPoint pixel_at(DrawSurface const& surface, Point place) {
    const PixelPoint position = in_pixels(surface, place);
    return {static_cast<double>(whole_pixel(position.x)), static_cast<double>(whole_pixel(position.y))};
}

} // namespace qv
