#include "raster/FontLibrary.h"

#include "qvgraph/RasterSurface.h"

#include "qvgraph/fault.h"
#include "raster/bounded_cache.h"
#include "raster/glyph_images.h"
#include "raster/text_shaping.h"
#include "raster/unicode.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <new>
#include <unordered_map>

namespace qv::raster {
namespace {

struct LibraryRelease {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
};
using FreeType = std::unique_ptr<FT_LibraryRec_, LibraryRelease>;

FreeType start_freetype() {
    FT_Library library = nullptr;
    const FT_Error error = FT_Init_FreeType(&library);
    if (error == FT_Err_Out_Of_Memory) throw std::bad_alloc();
    if (error != 0) return nullptr;
    return FreeType(library);
}

// Files opened so far; fonts of several names share them.
class OpenTypefaces {
public:
    // Null when the file cannot be used.
    Typeface const* open(FontFile const& file) {
        for (auto const& [known, typeface] : typefaces_)
            if (known == file) return typeface.get();
        typefaces_.emplace_back(file, freetype_ ? Typeface::open(freetype_.get(), file) : nullptr);
        return typefaces_.back().second.get();
    }

private:
    FreeType freetype_ = start_freetype();
    std::vector<std::pair<FontFile, std::unique_ptr<Typeface>>> typefaces_;
};

// The faces that together draw one font, the best match first.
struct FaceFamily {
    FaceName name;
    std::vector<FontFile> candidates;
    Typeface const* first = nullptr; // null without any font
    std::unordered_map<char32_t, Typeface const*> fallbacks;
};

std::string cache_key(Font const& font, std::string_view text) {
    std::string key = font.name;
    key += '\n';
    key += static_cast<char>('0' + (font.bold ? 1 : 0) + (font.italic ? 2 : 0));
    key += text;
    return key;
}

ShapedLine estimated_line(std::u32string const& characters) {
    constexpr double usual_advance = 0.55; // em
    return {{}, usual_advance * static_cast<double>(characters.size())};
}

} // namespace

struct FontLibrary::Contents {
    FontFiles files;
    OpenTypefaces typefaces;
    std::vector<std::unique_ptr<FaceFamily>> families;
    BoundedCache<std::string, ShapedLine> lines{4 << 20}; // bytes
    GlyphImages images;

    FaceFamily& family(Font const& font) {
        const FaceName name{font.name, font.bold, font.italic};
        for (auto const& family : families)
            if (family->name == name) return *family;
        // Kept only once it has its face: a family without one would stay so.
        auto added = std::make_unique<FaceFamily>(FaceFamily{name, files.candidates(name), nullptr, {}});
        for (FontFile const& file : added->candidates) {
            added->first = typefaces.open(file);
            if (added->first != nullptr) break;
        }
        return *families.emplace_back(std::move(added));
    }

    // The first face that has the character; the font's own, which then shows a box, when none has.
    Typeface const* face_for(FaceFamily& family, char32_t character) {
        if (family.first->has(character)) return family.first;
        if (auto const known = family.fallbacks.find(character); known != family.fallbacks.end())
            return known->second;
        Typeface const* chosen = family.first;
        for (FontFile const& file : family.candidates) {
            Typeface const* const typeface = typefaces.open(file);
            if (typeface == nullptr || !typeface->has(character)) continue;
            chosen = typeface;
            break;
        }
        return family.fallbacks[character] = chosen;
    }

    ShapedLine shape(Font const& font, std::string_view text) {
        const std::u32string characters = decode_utf8(text);
        FaceFamily& faces = family(font);
        if (faces.first == nullptr) return estimated_line(characters);
        return shape_line(characters, [&](char32_t character) { return face_for(faces, character); });
    }
};

std::shared_ptr<FontLibrary> make_font_library() {
    return std::make_shared<FontLibrary>();
}

FontLibrary::FontLibrary() = default;
FontLibrary::~FontLibrary() = default;

FontLibrary::Contents& FontLibrary::contents() {
    if (!contents_) contents_ = std::make_unique<Contents>();
    return *contents_;
}

bool FontLibrary::has_fonts() {
    return contents().family({}).first != nullptr;
}

void FontLibrary::report_missing_fonts() {
    if (std::exchange(missing_fonts_reported_, true)) return;
    raise_fault(
        FaultNumber::FileNotFound,
        "No font is installed, so no text can be drawn: install an outline font that fontconfig finds, "
        "for example the package fonts-liberation or fonts-dejavu-core");
}

FontHeights FontLibrary::heights(Font const& font) {
    Typeface const* const first = contents().family(font).first;
    if (first == nullptr) return {};
    return {first->ascent(), first->descent()};
}

ShapedLine const& FontLibrary::shaped(Font const& font, std::string_view text) {
    Contents& all = contents();
    std::string key = cache_key(font, text);
    if (ShapedLine const* const known = all.lines.find(key)) return *known;
    ShapedLine line = all.shape(font, text);
    const std::size_t weight = key.size() + sizeof(ShapedLine) + line.glyphs.size() * sizeof(PlacedGlyph);
    return all.lines.add(std::move(key), std::move(line), weight);
}

GlyphImages& FontLibrary::glyph_images() {
    return contents().images;
}

} // namespace qv::raster
