#include "raster/glyph_images.h"

namespace qv::raster {

std::size_t GlyphImages::Hash::operator()(Key const& key) const {
    return combined_hash(key.typeface, key.glyph, key.style.em_width, key.style.em_height,
                         key.style.angle_degrees, key.style.smooth, key.phase_x, key.phase_y);
}

GlyphImage const& GlyphImages::image(Key const& key) {
    if (GlyphImage const* const known = images_.find(key)) return *known;
    const GlyphPhase phase{static_cast<float>(key.phase_x) / phases,
                           static_cast<float>(key.phase_y) / phases};
    GlyphImage image = key.typeface->image(key.glyph, key.style, phase);
    const std::size_t weight = sizeof(GlyphImage) + sizeof(Key) + image.coverage.size();
    return images_.add(key, std::move(image), weight);
}

} // namespace qv::raster
