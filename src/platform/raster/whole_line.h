// The walk along a one-pixel line, shared by strokes (into a mask) and device lines (straight to pixels).
#pragma once

#include "platform/raster/segment.h"

#include <utility>

namespace qv::raster {

/// Calls put(x, y) for the pixels of a one-pixel line between two pixels, both included, within the clip.
/// A clip leaves out pixels and moves none. Points must be finite.
template <class Put>
void walk_whole_line(PixelBox const& clip, Segment const& segment, Put put) {
    struct Whole {
        std::int64_t along; // the axis along which every step draws one pixel
        std::int64_t across;
    };
    auto const far = static_cast<int>(farthest_pixel);
    auto const near_part = clipped(segment, {-far, -far, far, far});
    if (!near_part || clip.empty()) return;
    int const x0 = whole_pixel(near_part->from.x), y0 = whole_pixel(near_part->from.y);
    int const x1 = whole_pixel(near_part->to.x), y1 = whole_pixel(near_part->to.y);
    bool const flat = std::abs(x1 - x0) >= std::abs(y1 - y0);
    Whole from = flat ? Whole{x0, y0} : Whole{y0, x0};
    Whole to = flat ? Whole{x1, y1} : Whole{y1, x1};
    if (from.along > to.along) std::swap(from, to); // the same pixels in either direction

    const std::int64_t length = std::max<std::int64_t>(1, to.along - from.along);
    const std::int64_t rise = to.across - from.across;
    const std::int64_t first = std::max<std::int64_t>(from.along, flat ? clip.left : clip.top);
    const std::int64_t last = std::min<std::int64_t>(to.along, (flat ? clip.right : clip.bottom) - 1);
    if (first > last) return;
    // across = from.across + floor(rise * steps / length + 1/2), kept as quotient and remainder.
    const std::int64_t whole = 2 * length;
    const std::int64_t start = 2 * rise * (first - from.along) + length;
    std::int64_t rest = ((start % whole) + whole) % whole;
    std::int64_t across = from.across + (start - rest) / whole;
    for (std::int64_t along = first; along <= last; ++along) {
        int const x = static_cast<int>(flat ? along : across);
        int const y = static_cast<int>(flat ? across : along);
        if (clip.contains(x, y)) put(x, y);
        rest += 2 * rise;
        if (rest >= whole)
            rest -= whole, ++across;
        else if (rest < 0)
            rest += whole, --across;
    }
}

} // namespace qv::raster
