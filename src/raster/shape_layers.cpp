#include "raster/shape_layers.h"

#include "raster/blend.h"

namespace qv::raster {
namespace {

void paint_mask(CoverageMask& mask, Paint paint, PixelBuffer& target) {
    LinearMixer mixer(paint.value_or(0));
    mask.for_each_touched([&](int y, int left, int right) {
        std::uint32_t* const pixels = target.row(y) + left;
        std::uint8_t const* const coverage = mask.row(y) + left;
        if (paint)
            paint_shape_row(pixels, coverage, right - left, mixer);
        else
            invert_row(pixels, coverage, right - left);
    });
    mask.clear();
}

} // namespace

CoverageMask& ShapeLayers::mask(Paint paint, SharedPixels& target) {
    for (std::size_t i = 0; i < open_; ++i)
        if (layers_[i]->paint == paint) return layers_[i]->mask;
    if (open_ == most_layers) this->paint(target);
    if (open_ == layers_.size()) layers_.push_back(std::make_unique<Layer>());
    Layer& layer = *layers_[open_];
    layer.paint = paint;
    PixelBuffer const& pixels = target.read();
    if (layer.mask.width() != pixels.width || layer.mask.height() != pixels.height)
        layer.mask.resize(pixels.width, pixels.height);
    ++open_;
    return layer.mask;
}

void ShapeLayers::paint(SharedPixels& target) {
    if (open_ == 0) return;
    PixelBuffer& pixels = target.write();
    for (std::size_t i = 0; i < open_; ++i) paint_mask(layers_[i]->mask, layers_[i]->paint, pixels);
    open_ = 0;
}

void ShapeLayers::drop() {
    for (std::size_t i = 0; i < open_; ++i) layers_[i]->mask.clear();
    open_ = 0;
}

} // namespace qv::raster
