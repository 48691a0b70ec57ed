// CoverageMask: how much of each pixel one shape covers, 0 to 255. Pieces of the shape raise a pixel to their
// coverage, never above what the largest piece gives it.
#pragma once

#include "platform/raster/pixels.h"

#include <cstdint>
#include <vector>

namespace qv::raster {

class CoverageMask {
public:
    /// Bytes after the end of each row that may be read, and written with what they hold, so that a block
    /// of pixels can be processed at once.
    static constexpr int row_padding = 16;

    /// An empty mask of this size; what was drawn before is forgotten.
    void resize(int width, int height);
    int width() const { return width_; }
    int height() const { return height_; }

    /// Coverage of row `y`. Whoever writes to it calls `touch` for the pixels he may have changed.
    std::uint8_t* row(int y) { return bytes_.data() + static_cast<std::ptrdiff_t>(y) * stride_; }
    std::uint8_t const* row(int y) const { return bytes_.data() + static_cast<std::ptrdiff_t>(y) * stride_; }
    std::ptrdiff_t stride() const { return stride_; }
    void touch(int y, int left, int right);
    void touch(PixelBox const& box);

    void raise(int x, int y, std::uint8_t coverage);
    /// Covers whole pixels; the box must lie within the mask.
    void fill(PixelBox const& box);

    /// Calls visit(y, left, right) for each touched row.
    template <class Visit>
    void for_each_touched(Visit visit) const {
        for (int y = top_; y < bottom_; ++y)
            if (touched_[y].left < touched_[y].right) visit(y, touched_[y].left, touched_[y].right);
    }
    void clear();

private:
    struct Stretch {
        int left;
        int right;
    };
    Stretch untouched() const { return {width_, 0}; }

    int width_ = 0;
    int height_ = 0;
    std::ptrdiff_t stride_ = 0;
    int top_ = 0; // rows that may be touched
    int bottom_ = 0;
    std::vector<std::uint8_t> bytes_;
    std::vector<Stretch> touched_;
};

inline void CoverageMask::touch(int y, int left, int right) {
    top_ = std::min(top_, y);
    bottom_ = std::max(bottom_, y + 1);
    Stretch& stretch = touched_[y];
    stretch.left = std::min(stretch.left, left);
    stretch.right = std::max(stretch.right, right);
}

inline void CoverageMask::raise(int x, int y, std::uint8_t coverage) {
    std::uint8_t& pixel = row(y)[x];
    pixel = std::max(pixel, coverage);
    touch(y, x, x + 1);
}

} // namespace qv::raster
