// Points, boxes and colours. Page geometry is in twips (1440 an inch), origin top left, y downwards.
#pragma once

#include <cstdint>

namespace qv {

constexpr double twips_per_inch = 1440.0;
constexpr double twips_per_point = 20.0;
constexpr double millimetres_per_inch = 25.4;

/// 0x00BBGGRR; with the top bit set the low byte names a system colour.
using Color = std::int32_t;

constexpr Color rgb(int red, int green, int blue) {
    return static_cast<Color>(red | green << 8 | blue << 16);
}
constexpr Color system_color(int number) {
    return static_cast<Color>(0x80000000U + static_cast<std::uint32_t>(number));
}

/// A place on the page in twips.
struct Point {
    double x = 0; ///< rightwards
    double y = 0; ///< downwards
    bool operator==(Point const&) const = default;
};

/// A rectangle on the page in twips.
struct Box {
    double left = 0;   ///< its smaller x
    double top = 0;    ///< its smaller y
    double width = 0;  ///< rightwards
    double height = 0; ///< downwards

    double right() const { return left + width; }  ///< its larger x
    double bottom() const { return top + height; } ///< its larger y
    bool operator==(Box const&) const = default;
};

/// A place on a surface in pixels; fractions are kept until the surface decides.
struct PixelPoint {
    double x = 0; ///< rightwards
    double y = 0; ///< downwards
    bool operator==(PixelPoint const&) const = default;
};

/// A size in whole pixels.
struct PixelSize {
    std::int32_t width = 0;  ///< rightwards
    std::int32_t height = 0; ///< downwards
    bool operator==(PixelSize const&) const = default;
};

} // namespace qv
