// Whole pixels: boxes of them and the buffer that holds them.
#pragma once

#include "qvgraph/geometry.h"
#include "qvgraph/system_color.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qv::raster {

/// Pixels `left` to `right - 1` and `top` to `bottom - 1`.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool empty() const { return right <= left || bottom <= top; }
    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
    bool contains(PixelBox const& other) const {
        return other.left >= left && other.top >= top && other.right <= right && other.bottom <= bottom;
    }
    bool operator==(PixelBox const&) const = default;
};

/// What two boxes share; boxes that lie apart share an empty one, never one of negative size.
inline PixelBox intersection(PixelBox const& a, PixelBox const& b) {
    int const left = std::max(a.left, b.left), top = std::max(a.top, b.top);
    return {left, top, std::max(left, std::min(a.right, b.right)),
            std::max(top, std::min(a.bottom, b.bottom))};
}

/// The pixels of two corners, both included, whichever lies left or above.
inline PixelBox spanned(PixelPoint a, PixelPoint b) {
    int const x0 = whole_pixel(a.x), y0 = whole_pixel(a.y), x1 = whole_pixel(b.x), y1 = whole_pixel(b.y);
    return {std::min(x0, x1), std::min(y0, y1), std::max(x0, x1) + 1, std::max(y0, y1) + 1};
}

inline PixelBox moved(PixelBox const& box, int dx, int dy) {
    return {box.left + dx, box.top + dy, box.right + dx, box.bottom + dy};
}

inline PixelBox grown(PixelBox const& box, int margin) {
    return {box.left - margin, box.top - margin, box.right + margin, box.bottom + margin};
}

inline bool is_finite(PixelPoint point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// A colour as it stands in the buffer: 0xFFRRGGBB.
constexpr std::uint32_t pixel_value(Color color) {
    auto const bgr = static_cast<std::uint32_t>(plain_color(color));
    return 0xFF000000U | (bgr & 0xFF) << 16 | (bgr & 0xFF00) | bgr >> 16;
}

constexpr std::uint8_t opaque = 255;

/// A stored colour with an alpha in the place of its 0xFF: a paint, never a pixel.
constexpr std::uint32_t translucent(std::uint32_t color, std::uint8_t alpha) {
    return (color & 0xFFFFFF) | std::uint32_t{alpha} << 24;
}
constexpr std::uint8_t alpha_of(std::uint32_t color) {
    return static_cast<std::uint8_t>(color >> 24);
}

/// Rows of 32-bit pixels, top row first, without gaps between the rows.
struct PixelBuffer {
    int width = 1;
    int height = 1;
    std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(1);

    std::uint32_t* row(int y) { return pixels.data() + static_cast<std::ptrdiff_t>(y) * width; }
    std::uint32_t const* row(int y) const { return pixels.data() + static_cast<std::ptrdiff_t>(y) * width; }
    PixelBox bounds() const { return {0, 0, width, height}; }
};

} // namespace qv::raster
