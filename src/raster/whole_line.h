// The walk along a one-pixel line, shared by strokes (into a mask) and device lines (straight to pixels).
#pragma once

#include "raster/segment.h"

#include <utility>

namespace qv::raster {

/// A one-pixel line between two pixels as steps along its longer extent, each drawing one pixel. After s of
/// `length` steps it has gone floor((2 * rise * s + bias) / (2 * length)) pixels across, to the nearest
/// whole.
class WholeLine {
public:
    WholeLine(int x0, int y0, int x1, int y1) : flat_(std::abs(x1 - x0) >= std::abs(y1 - y0)) {
        Pixel from = flat_ ? Pixel{x0, y0} : Pixel{y0, x0};
        Pixel to = flat_ ? Pixel{x1, y1} : Pixel{y1, x1};
        if (from.along > to.along) std::swap(from, to); // the same pixels in either direction
        start_ = from;
        length_ = std::max<std::int64_t>(1, to.along - from.along);
        direction_ = to.across < from.across ? -1 : 1;
        rise_ = direction_ * (to.across - from.across);
        bias_ = direction_ < 0 ? length_ - 1 : length_; // halves go right and down, whatever the direction
        last_ = to.along - from.along;
    }

    /// Calls put(x, y) for the pixels within the clip, which leaves out pixels and moves none.
    template <class Put>
    void walk(PixelBox const& clip, Put put) const {
        if (flat_)
            walk_steps({clip.left, clip.top}, {clip.right - 1, clip.bottom - 1},
                       [&](int along, int across) { put(along, across); });
        else
            walk_steps({clip.top, clip.left}, {clip.bottom - 1, clip.right - 1},
                       [&](int along, int across) { put(across, along); });
    }

private:
    struct Pixel {
        std::int64_t along = 0; // the axis along which every step draws one pixel
        std::int64_t across = 0;
    };

    // The first step that has gone this far across.
    std::int64_t step_at(std::int64_t gone) const {
        if (gone <= 0) return 0;
        if (rise_ == 0) return last_ + 1;
        return (2 * length_ * gone - bias_ + 2 * rise_ - 1) / (2 * rise_);
    }

    template <class Put>
    void walk_steps(Pixel least, Pixel most, Put put) const {
        // How far across the line enters and leaves the clip.
        std::int64_t const entry =
            direction_ > 0 ? least.across - start_.across : start_.across - most.across;
        std::int64_t const exit = direction_ > 0 ? most.across - start_.across : start_.across - least.across;
        if (exit < 0) return;
        std::int64_t const first = std::max(least.along - start_.along, step_at(entry));
        std::int64_t const end = std::min({most.along - start_.along, last_, step_at(exit + 1) - 1}) + 1;
        if (first >= end) return;

        std::int64_t const whole = 2 * length_, part = 2 * rise_ * first + bias_;
        std::int64_t rest = part % whole;
        int across = static_cast<int>(start_.across + direction_ * (part / whole));
        int const stop = static_cast<int>(start_.along + end);
        for (int along = static_cast<int>(start_.along + first); along < stop; ++along) {
            put(along, across);
            rest += 2 * rise_;
            bool const steps_aside = rest >= whole;
            rest -= steps_aside ? whole : 0;
            across += steps_aside ? direction_ : 0;
        }
    }

    bool flat_;
    Pixel start_;
    std::int64_t length_;
    int direction_;
    std::int64_t rise_; // at most the length
    std::int64_t bias_;
    std::int64_t last_;
};

/// Calls put(x, y) for the pixels of a one-pixel line between two pixels, both included, within the clip.
/// Points must be finite.
template <class Put>
void walk_whole_line(PixelBox const& clip, Segment const& segment, Put put) {
    auto const far = static_cast<int>(farthest_pixel);
    auto const near_part = clipped(segment, {-far, -far, far, far});
    if (!near_part || clip.empty()) return;
    WholeLine(whole_pixel(near_part->from.x), whole_pixel(near_part->from.y), whole_pixel(near_part->to.x),
              whole_pixel(near_part->to.y))
        .walk(clip, put);
}

} // namespace qv::raster
