#include "raster/coverage_mask.h"

#include <cstring>

namespace qv::raster {

void CoverageMask::resize(int width, int height) {
    // Without a size until there is memory for it.
    width_ = height_ = top_ = bottom_ = 0;
    auto const padded = static_cast<std::size_t>(width) + row_padding;
    bytes_.assign(padded * static_cast<std::size_t>(height), 0);
    touched_.assign(static_cast<std::size_t>(height), 0);
    width_ = width;
    height_ = height;
    for (block_shift_ = 5; (width - 1) >> block_shift_ > 63;) ++block_shift_;
    stride_ = width + row_padding;
    top_ = height;
    bottom_ = 0;
    ++generation_;
}

void CoverageMask::fill(PixelBox const& box) {
    if (box.empty()) return;
    for (int y = box.top; y < box.bottom; ++y)
        std::memset(row(y) + box.left, 255, static_cast<std::size_t>(box.width()));
    touch(box);
}

void CoverageMask::clear() {
    for_each_touched([this](int y, int left, int right) {
        std::memset(row(y) + left, 0, static_cast<std::size_t>(right - left));
    });
    if (top_ < bottom_) std::fill(touched_.begin() + top_, touched_.begin() + bottom_, 0);
    top_ = height_;
    bottom_ = 0;
    ++generation_;
}

} // namespace qv::raster
