// Pixels that surfaces, and others, have in common until one of them is drawn on: a page that nobody changes
// after it was copied takes no copy.
#pragma once

#include "raster/pixels.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace qv::raster {

class SharedPixels {
public:
    PixelBuffer const& read() const { return sheet_->buffer; }
    /// To be drawn on: no other surface sees it.
    PixelBuffer& write() {
        if (sheet_.use_count() > 1) part(true);
        return sheet_->buffer;
    }
    /// The same where every pixel will be written.
    PixelBuffer& write_all() {
        if (sheet_.use_count() > 1) part(false);
        return sheet_->buffer;
    }
    /// Whoever holds them keeps them as they are.
    std::shared_ptr<std::uint32_t const> hold() const { return {sheet_, sheet_->buffer.pixels.data()}; }
    void replace(PixelBuffer buffer) { sheet_ = std::make_shared<Sheet>(std::move(buffer)); }
    /// Takes the pixels of another surface for its own. The memory of those before waits for the first of the
    /// two that is drawn on.
    void share(SharedPixels const& other) {
        if (sheet_ == other.sheet_) return;
        if (sheet_.use_count() == 1) other.sheet_->spare = std::move(sheet_->buffer.pixels);
        sheet_ = other.sheet_;
    }

private:
    struct Sheet {
        explicit Sheet(PixelBuffer pixels = {}) : buffer(std::move(pixels)) {}
        PixelBuffer buffer;
        std::vector<std::uint32_t> spare;
    };
    void part(bool keeps_picture) {
        PixelBuffer const& common = sheet_->buffer;
        std::vector<std::uint32_t> pixels = std::exchange(sheet_->spare, {});
        pixels.resize(common.pixels.size());
        // std::ranges::copy goes pixel by pixel in g++ 12.
        if (keeps_picture) std::copy(common.pixels.begin(), common.pixels.end(), pixels.begin());
        replace({common.width, common.height, std::move(pixels)});
    }

    std::shared_ptr<Sheet> sheet_ = std::make_shared<Sheet>();
};

} // namespace qv::raster
