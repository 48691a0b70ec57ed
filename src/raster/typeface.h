// Typeface: one face of a font file, open for shaping (HarfBuzz) and for drawing glyphs (FreeType).
#pragma once

#include "raster/font_files.h"

#include <cstdint>
#include <memory>
#include <vector>

struct FT_FaceRec_;
struct FT_LibraryRec_;
struct hb_font_t;

namespace qv::raster {

/// Coverage of a glyph, top row first. `left` and `top` lead from its origin on the baseline to the first
/// pixel; y grows downwards.
struct GlyphImage {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;
};

/// How glyphs are drawn: em size in pixels, the turn, and whether in whole pixels.
struct GlyphStyle {
    float em_width = 12;
    float em_height = 12;
    float angle_degrees = 0; // counter-clockwise
    bool smooth = true;
    bool operator==(GlyphStyle const&) const = default;
};

/// Where within its pixel the glyph's origin lies, to the right and down, below 1.
struct GlyphPhase {
    float x = 0;
    float y = 0;
};

class Typeface {
public:
    /// Glyph 0 stands for every character that no font has.
    static constexpr std::uint32_t missing_glyph = 0;

    /// Nothing when the file cannot be opened or is not an outline font with character and width tables.
    static std::unique_ptr<Typeface> open(FT_LibraryRec_* library, FontFile const& file);
    ~Typeface();
    Typeface(Typeface const&) = delete;
    Typeface& operator=(Typeface const&) = delete;

    FontFile const& file() const;
    bool has(char32_t character) const;
    /// For shaping in font units.
    hb_font_t* shaper() const;
    double units_per_em() const;
    /// Distances from the baseline, in em, both positive.
    double ascent() const;
    double descent() const;
    /// What artificial boldness adds to each advance, in em.
    double extra_advance() const;

    GlyphImage image(std::uint32_t glyph, GlyphStyle const& style, GlyphPhase phase) const;

private:
    struct Parts;
    explicit Typeface(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

} // namespace qv::raster
