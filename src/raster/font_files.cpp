#include "raster/font_files.h"

#include <fontconfig/fontconfig.h>

namespace qv::raster {
namespace {

struct Release {
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};
template <class T>
using Owned = std::unique_ptr<T, Release>;

int integer(FcPattern const* pattern, char const* object, int otherwise) {
    int value = 0;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : otherwise;
}

bool is_outline_font(FcPattern const* pattern) {
    FcBool scalable = FcFalse, color = FcFalse;
    FcPatternGetBool(pattern, FC_SCALABLE, 0, &scalable);
    FcPatternGetBool(pattern, FC_COLOR, 0, &color);
    return scalable == FcTrue && color != FcTrue;
}

Owned<FcPattern> wish(FcConfig* config, FaceName const& name) {
    Owned<FcPattern> pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<FcChar8 const*>(name.family.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, name.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, name.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

} // namespace

struct FontFiles::Configuration {
    Owned<FcConfig> config{FcInitLoadConfigAndFonts()};
};

FontFiles::FontFiles() : configuration_(std::make_unique<Configuration>()) {}
FontFiles::~FontFiles() = default;

std::vector<FontFile> FontFiles::candidates(FaceName const& name) const {
    std::vector<FontFile> files;
    FcConfig* const config = configuration_->config.get();
    if (config == nullptr) return files;
    Owned<FcPattern> const pattern = wish(config, name);
    FcResult result = FcResultNoMatch;
    Owned<FcFontSet> const fonts(FcFontSort(config, pattern.get(), FcTrue, nullptr, &result));
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcPattern const* const font = fonts->fonts[i];
        FcChar8* path = nullptr;
        if (!is_outline_font(font) || FcPatternGetString(font, FC_FILE, 0, &path) != FcResultMatch) continue;
        files.push_back({reinterpret_cast<char const*>(path), integer(font, FC_INDEX, 0),
                         name.bold && integer(font, FC_WEIGHT, FC_WEIGHT_BOLD) < FC_WEIGHT_DEMIBOLD,
                         name.italic && integer(font, FC_SLANT, FC_SLANT_ITALIC) == FC_SLANT_ROMAN});
    }
    return files;
}

} // namespace qv::raster
