#include "raster/typeface.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <hb-ot.h>
#include <hb.h>

#include <array>
#include <cmath>
#include <new>
#include <numbers>

namespace qv::raster {
namespace {

struct Release {
    void operator()(FT_Face face) const { FT_Done_Face(face); }
    void operator()(hb_font_t* font) const { hb_font_destroy(font); }
};

constexpr double bold_strength = 1.0 / 24; // em
constexpr double slant_tangent = 0.2;      // about 11 degrees

FT_Pos in_64ths(double pixels) {
    return static_cast<FT_Pos>(std::lround(pixels * 64));
}

FT_Fixed in_16_16(double value) {
    return static_cast<FT_Fixed>(std::lround(value * 65536));
}

std::unique_ptr<hb_font_t, Release> open_shaper(FontFile const& file) {
    hb_blob_t* const blob = hb_blob_create_from_file(file.path.c_str());
    hb_face_t* const face = hb_face_create(blob, static_cast<unsigned>(file.index));
    std::unique_ptr<hb_font_t, Release> font(hb_font_create(face));
    hb_ot_font_set_funcs(font.get());
    bool const usable = hb_face_get_glyph_count(face) > 0;
    hb_face_destroy(face);
    hb_blob_destroy(blob);
    return usable ? std::move(font) : nullptr;
}

// Turns in page space, where pixels may not be square: scaled to squares, turned, scaled back. FreeType's y
// grows upwards.
FT_Matrix turned(GlyphStyle const& style) {
    double const angle = style.angle_degrees * std::numbers::pi / 180;
    double const ratio = style.em_height / style.em_width;
    return {in_16_16(std::cos(angle)), in_16_16(-std::sin(angle) / ratio), in_16_16(std::sin(angle) * ratio),
            in_16_16(std::cos(angle))};
}

// An upright frame as large as a capital letter, a sixteenth of an em thick.
struct MissingGlyphFrame {
    std::array<FT_Vector, 8> points;
    std::array<char, 8> tags;
    std::array<short, 2> contours{3, 7};

    MissingGlyphFrame(double em_width, double em_height, double advance) {
        tags.fill(FT_CURVE_TAG_ON);
        double const left = advance * 0.12, right = advance * 0.88;
        double const top = em_height * 0.7;
        double const thick_x = std::max(1.0, em_width / 16), thick_y = std::max(1.0, em_height / 16);
        auto const corner = [](double x, double y) { return FT_Vector{in_64ths(x), in_64ths(y)}; };
        points = {corner(left, 0), corner(left, top), corner(right, top), corner(right, 0),
                  // The other way round, so that it is cut out.
                  corner(left + thick_x, thick_y), corner(right - thick_x, thick_y),
                  corner(right - thick_x, top - thick_y), corner(left + thick_x, top - thick_y)};
    }

    FT_Outline outline() {
        FT_Outline result{};
        result.n_contours = 2;
        result.n_points = 8;
        result.points = points.data();
        result.tags = tags.data();
        result.contours = contours.data();
        return result;
    }
};

GlyphImage rendered(FT_Library library, FT_Outline& outline, bool smooth) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    auto const floor_pixel = [](FT_Pos v) { return static_cast<int>(v >> 6); };
    auto const ceil_pixel = [](FT_Pos v) { return static_cast<int>((v + 63) >> 6); };
    GlyphImage image{floor_pixel(box.xMin),
                     -ceil_pixel(box.yMax),
                     ceil_pixel(box.xMax) - floor_pixel(box.xMin),
                     ceil_pixel(box.yMax) - floor_pixel(box.yMin),
                     {}};
    constexpr int largest = 16384;
    if (image.width <= 0 || image.height <= 0 || image.width > largest || image.height > largest) return {};
    FT_Outline_Translate(&outline, -FT_Pos{image.left} * 64, FT_Pos{image.top + image.height} * 64);

    int const pitch = smooth ? image.width : (image.width + 7) / 8;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(pitch) * static_cast<std::size_t>(image.height));
    FT_Bitmap bitmap{};
    bitmap.rows = static_cast<unsigned>(image.height);
    bitmap.width = static_cast<unsigned>(image.width);
    bitmap.pitch = pitch;
    bitmap.buffer = bytes.data();
    bitmap.num_grays = 256;
    bitmap.pixel_mode = smooth ? FT_PIXEL_MODE_GRAY : FT_PIXEL_MODE_MONO;
    if (FT_Outline_Get_Bitmap(library, &outline, &bitmap) != 0) return {};
    if (smooth) {
        image.coverage = std::move(bytes);
        return image;
    }
    image.coverage.reserve(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            unsigned const byte = bytes[static_cast<std::size_t>(y) * static_cast<std::size_t>(pitch)
                                        + static_cast<std::size_t>(x / 8)];
            image.coverage.push_back((byte >> (7 - x % 8) & 1) != 0 ? 255 : 0);
        }
    return image;
}

} // namespace

struct Typeface::Parts {
    FontFile file;
    std::unique_ptr<FT_FaceRec_, Release> face;
    std::unique_ptr<hb_font_t, Release> shaper;
    double units_per_em = 1000;

    GlyphImage missing_image(GlyphStyle const& style, GlyphPhase phase) const;
    GlyphImage outline_image(FT_Outline& outline, GlyphStyle const& style, GlyphPhase phase) const;
};

Typeface::Typeface(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
Typeface::~Typeface() = default;

std::unique_ptr<Typeface> Typeface::open(FT_LibraryRec_* library, FontFile const& file) {
    FT_Face face = nullptr;
    auto parts = std::make_unique<Parts>();
    const FT_Error error = FT_New_Face(library, file.path.c_str(), file.index, &face);
    if (error == FT_Err_Out_Of_Memory) throw std::bad_alloc();
    if (error != 0) return nullptr;
    parts->face.reset(face);
    parts->file = file;
    if (!FT_IS_SCALABLE(face) || !FT_IS_SFNT(face)) return nullptr;
    parts->shaper = open_shaper(file);
    if (!parts->shaper) return nullptr;
    parts->units_per_em = hb_face_get_upem(hb_font_get_face(parts->shaper.get()));
    return std::unique_ptr<Typeface>(new Typeface(std::move(parts)));
}

FontFile const& Typeface::file() const {
    return parts_->file;
}

bool Typeface::has(char32_t character) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(parts_->shaper.get(), character, &glyph) != 0 && glyph != missing_glyph;
}

hb_font_t* Typeface::shaper() const {
    return parts_->shaper.get();
}

double Typeface::units_per_em() const {
    return parts_->units_per_em;
}

double Typeface::ascent() const {
    return parts_->face->ascender / parts_->units_per_em;
}

double Typeface::descent() const {
    return -parts_->face->descender / parts_->units_per_em;
}

double Typeface::extra_advance() const {
    return parts_->file.embolden ? bold_strength : 0;
}

GlyphImage Typeface::image(std::uint32_t glyph, GlyphStyle const& style, GlyphPhase phase) const {
    FT_Face face = parts_->face.get();
    if (FT_Set_Char_Size(face, in_64ths(style.em_width), in_64ths(style.em_height), 72, 72) != 0) return {};
    if (glyph == missing_glyph) return parts_->missing_image(style, phase);
    // Light hinting moves stems up and down only, so widths stay what shaping measured. Turned text has no
    // rows to fit to.
    const FT_Int32 hinting = style.angle_degrees == 0 ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING;
    if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_BITMAP | hinting) != 0) return {};
    if (face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) return {};
    FT_Outline& outline = face->glyph->outline;
    if (parts_->file.embolden) FT_Outline_Embolden(&outline, in_64ths(style.em_height * bold_strength));
    if (parts_->file.slant) {
        const FT_Matrix slanted{in_16_16(1), in_16_16(slant_tangent), 0, in_16_16(1)};
        FT_Outline_Transform(&outline, &slanted);
    }
    return parts_->outline_image(outline, style, phase);
}

GlyphImage Typeface::Parts::missing_image(GlyphStyle const& style, GlyphPhase phase) const {
    double const advance = hb_font_get_glyph_h_advance(shaper.get(), missing_glyph) / units_per_em;
    MissingGlyphFrame frame(style.em_width, style.em_height, advance * style.em_width);
    FT_Outline outline = frame.outline();
    return outline_image(outline, style, phase);
}

GlyphImage Typeface::Parts::outline_image(FT_Outline& outline, GlyphStyle const& style,
                                          GlyphPhase phase) const {
    if (style.angle_degrees != 0) {
        const FT_Matrix turn = turned(style);
        FT_Outline_Transform(&outline, &turn);
    }
    FT_Outline_Translate(&outline, in_64ths(phase.x), -in_64ths(phase.y));
    return rendered(face->glyph->library, outline, style.smooth);
}

} // namespace qv::raster
