// CoverageMask: how much of each pixel one shape covers, 0 to 255. Pieces of the shape raise a pixel to their
// coverage, never above what the largest piece gives it.
#pragma once

#include "raster/pixels.h"

#include <bit>
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

    /// Coverage of row `y`. Whoever writes to it calls `touch` for the pixels he may have changed;
    /// the box must not be empty.
    std::uint8_t* row(int y) { return bytes_.data() + static_cast<std::ptrdiff_t>(y) * stride_; }
    std::uint8_t const* row(int y) const { return bytes_.data() + static_cast<std::ptrdiff_t>(y) * stride_; }
    std::ptrdiff_t stride() const { return stride_; }
    void touch(int y, int left, int right);
    void touch(PixelBox const& box);

    void raise(int x, int y, std::uint8_t coverage);
    /// Covers whole pixels; the box must lie within the mask.
    void fill(PixelBox const& box);

    /// Calls visit(y, left, right) for stretches of touched rows that contain all that was touched.
    template <class Visit>
    void for_each_touched(Visit visit) const;
    void clear();
    /// Counts how often it was emptied: while it stays the same, what was covered still is.
    std::uint64_t generation() const { return generation_; }

private:
    // A row is divided into at most 64 blocks, each a bit of the row's word.
    std::uint64_t blocks(int left, int right) const {
        return (~std::uint64_t{0} << (left >> block_shift_))
               & (~std::uint64_t{0} >> (63 - ((right - 1) >> block_shift_)));
    }

    int width_ = 0;
    int height_ = 0;
    int block_shift_ = 5; // pixels to a block, as a power of two
    std::ptrdiff_t stride_ = 0;
    int top_ = 0; // rows that may be touched
    int bottom_ = 0;
    std::uint64_t generation_ = 0;
    std::vector<std::uint8_t> bytes_;
    std::vector<std::uint64_t> touched_;
};

inline void CoverageMask::touch(int y, int left, int right) {
    touch(PixelBox{left, y, right, y + 1});
}

inline void CoverageMask::touch(PixelBox const& box) {
    top_ = std::min(top_, box.top);
    bottom_ = std::max(bottom_, box.bottom);
    const std::uint64_t touched = blocks(box.left, box.right);
    for (int y = box.top; y < box.bottom; ++y) touched_[y] |= touched;
}

inline void CoverageMask::raise(int x, int y, std::uint8_t coverage) {
    std::uint8_t& pixel = row(y)[x];
    pixel = std::max(pixel, coverage);
    touch(y, x, x + 1);
}

template <class Visit>
void CoverageMask::for_each_touched(Visit visit) const {
    for (int y = top_; y < bottom_; ++y) {
        for (std::uint64_t rest = touched_[y]; rest != 0;) {
            int const first = std::countr_zero(rest);
            int const past = first + std::countr_one(rest >> first);
            visit(y, first << block_shift_, std::min(past << block_shift_, width_));
            rest = past < 64 ? rest & (~std::uint64_t{0} << past) : 0;
        }
    }
}

} // namespace qv::raster
