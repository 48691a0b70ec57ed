// FontLibrary: the installed fonts, and all that is kept about them. Shared by surfaces of one thread.
#pragma once

#include "qvgraph/DrawSurface.h"

#include <memory>
#include <string_view>

namespace qv::raster {

class GlyphImages;
struct FaceName;
struct ShapedLine;

/// What printing needs to know of a font: distances from the baseline in em, both positive.
struct FontHeights {
    double ascent = 0.9;
    double descent = 0.25;
};

class FontLibrary {
public:
    /// Fonts are looked for on first use, through fontconfig and the environment of that moment.
    FontLibrary();
    ~FontLibrary();
    FontLibrary(FontLibrary const&) = delete;
    FontLibrary& operator=(FontLibrary const&) = delete;

    /// Whether any usable font is installed. Without one, lines have an estimated width and no glyphs.
    bool has_fonts();
    /// Fault 53 on the first call, saying what to install; later calls do nothing.
    void report_missing_fonts();

    FontHeights heights(Font const& font);
    /// The shaped line stays in place until the next call.
    ShapedLine const& shaped(Font const& font, std::string_view text);
    GlyphImages& glyph_images();

private:
    struct Contents;
    Contents& contents();
    std::unique_ptr<Contents> contents_;
    bool missing_fonts_reported_ = false;
};

} // namespace qv::raster
