// Glyph images, drawn once and kept.
#pragma once

#include "raster/bounded_cache.h"
#include "raster/typeface.h"

namespace qv::raster {

class GlyphImages {
public:
    /// Glyphs stand on quarters of a pixel: along the line when upright, both ways when turned.
    static constexpr int phases = 4;

    struct Key {
        Typeface const* typeface = nullptr;
        std::uint32_t glyph = 0;
        GlyphStyle style;
        int phase_x = 0; // quarters of a pixel, below `phases`
        int phase_y = 0;
        bool operator==(Key const&) const = default;
    };

    /// Stays in place until the next call.
    GlyphImage const& image(Key const& key);

private:
    struct Hash {
        std::size_t operator()(Key const& key) const;
    };
    BoundedCache<Key, GlyphImage, Hash> images_{16 << 20}; // bytes
};

} // namespace qv::raster
