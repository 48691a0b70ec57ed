#include "vector/pdf.h"

#include "raster/stroke.h"
#include "raster/text_shaping.h"
#include "vector/VectorSurface.h"
#include "vector/pdf_document.h"

#include <cairo-ft.h>
#include <fontconfig/fontconfig.h>

#include <map>
#include <numbers>

namespace qv::vector {
namespace {

using FontFace = std::unique_ptr<cairo_font_face_t, Release<cairo_font_face_destroy>>;
using FontPattern = std::unique_ptr<FcPattern, Release<FcPatternDestroy>>;
using FontOptions = std::unique_ptr<cairo_font_options_t, Release<cairo_font_options_destroy>>;

FontFace open_face(raster::FontFile const& file) {
    const FontPattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FILE, reinterpret_cast<FcChar8 const*>(file.path.c_str()));
    FcPatternAddInteger(pattern.get(), FC_INDEX, file.index);
    FontFace face(cairo_ft_font_face_create_for_pattern(pattern.get()));
    unsigned int const added = (file.embolden ? unsigned{CAIRO_FT_SYNTHESIZE_BOLD} : 0U)
                               | (file.slant ? unsigned{CAIRO_FT_SYNTHESIZE_OBLIQUE} : 0U);
    if (added != 0) cairo_ft_font_face_set_synthesize(face.get(), added);
    return face;
}

class PdfWriter {
public:
    explicit PdfWriter(VectorSurface const& page)
        : page_(page), document_(page.Width() / twips_per_point, page.Height() / twips_per_point,
                                 FaultNumber::DeviceError),
          cairo_(document_.drawing()) {
        cairo_scale(cairo_, page.TwipsPerPixelX() / twips_per_point, page.TwipsPerPixelY() / twips_per_point);
        const PixelSize size = page.GetClientRect();
        for_each_shape(page.nodes(), {0, 0, size.width, size.height},
                       [this](Shape const& shape, Placed const& placed) {
                           cairo_save(cairo_);
                           if (placed.is_cut) clip_to(placed.clip);
                           cairo_translate(cairo_, placed.dx, placed.dy);
                           std::visit([this](auto const& kind) { draw(kind); }, shape);
                           cairo_restore(cairo_);
                       });
    }

    std::vector<std::uint8_t> finish() { return document_.finish(); }

private:
    void add_box(PixelBox const& box) {
        cairo_rectangle(cairo_, box.left, box.top, box.width(), box.height());
    }

    void clip_to(PixelBox const& box) {
        add_box(box);
        cairo_clip(cairo_);
    }

    void set_color(std::uint32_t color) {
        auto const part = [color](int shift) { return (color >> shift & 0xFF) / 255.0; };
        cairo_set_source_rgba(cairo_, part(16), part(8), part(0), part(24));
    }

    /// Draws what consists of several steps in one colour, so that it is translucent as a whole.
    template <class Draw>
    void as_one_paint(std::uint32_t color, Draw const& draw) {
        if (raster::alpha_of(color) == raster::opaque) return draw(color);
        cairo_push_group(cairo_);
        draw(raster::translucent(color, raster::opaque));
        cairo_pop_group_to_source(cairo_);
        cairo_paint_with_alpha(cairo_, raster::alpha_of(color) / 255.0);
    }

    void set_pen(std::uint32_t color, double width, DrawStyle style, double dash_start) {
        set_color(color);
        cairo_set_line_width(cairo_, width);
        cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
        cairo_set_line_cap(cairo_, raster::is_dashed(style) ? CAIRO_LINE_CAP_BUTT : CAIRO_LINE_CAP_ROUND);
        std::vector<double> lengths;
        for (int const length : raster::dash_lengths(style))
            if (length != 0) lengths.push_back(length * width);
        cairo_set_dash(cairo_, lengths.data(), static_cast<int>(lengths.size()), dash_start);
    }

    void add_contours(std::vector<Contour> const& contours, bool closed) {
        for (Contour const& contour : contours) {
            for (std::size_t i = 0; i < contour.size(); ++i)
                i == 0 ? cairo_move_to(cairo_, contour[i].x, contour[i].y)
                       : cairo_line_to(cairo_, contour[i].x, contour[i].y);
            if (contour.size() == 1) cairo_line_to(cairo_, contour[0].x, contour[0].y); // a dot
            if (closed) cairo_close_path(cairo_);
        }
    }

    void draw(Boxes const& shape) {
        set_color(shape.color);
        for (PixelBox const& box : shape.boxes) add_box(box);
        cairo_fill(cairo_);
    }

    void draw(Fill const& shape) {
        cairo_set_fill_rule(cairo_,
                            shape.contours.size() == 1 ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
        add_contours(shape.contours, true);
        if (shape.outline <= 0) {
            set_color(shape.color);
            return cairo_fill(cairo_);
        }
        as_one_paint(shape.color, [&](std::uint32_t color) {
            set_pen(color, shape.outline, DrawStyle::Solid, 0);
            cairo_fill_preserve(cairo_);
            cairo_stroke(cairo_);
        });
    }

    void draw(Stroke const& shape) {
        set_pen(shape.color, shape.width, shape.style, shape.dash_start);
        add_contours(shape.lines, shape.closed);
        cairo_stroke(cairo_);
    }

    void draw(Oval const& shape) {
        auto const add_oval = [&] {
            cairo_save(cairo_);
            cairo_translate(cairo_, shape.centre.x, shape.centre.y);
            // A circle cannot be scaled to nothing.
            cairo_scale(cairo_, std::max(shape.radius_x, 1e-6), std::max(shape.radius_y, 1e-6));
            cairo_arc(cairo_, 0, 0, 1, 0, 2 * std::numbers::pi);
            cairo_close_path(cairo_);
            cairo_restore(cairo_);
        };
        auto const paint = [&](std::uint32_t fill, std::uint32_t outline) {
            if (shape.filled) {
                set_color(fill);
                add_oval();
                cairo_fill(cairo_);
            }
            if (shape.outlined) {
                set_pen(outline, shape.width, shape.style, 0);
                add_oval();
                cairo_stroke(cairo_);
            }
        };
        if (!shape.is_one_paint()) return paint(shape.fill_color, shape.color);
        as_one_paint(shape.color, [&](std::uint32_t color) { paint(color, color); });
    }

    void draw(Text const& shape) {
        const raster::ShapedLine line = page_.fonts().shaped(shape.font, shape.text);
        set_color(shape.color);
        // Turned about the middle of the corner's pixel, as pixels are.
        double const middle = shape.angle_degrees == 0 ? 0 : 0.5;
        cairo_translate(cairo_, shape.corner.x + middle, shape.corner.y + middle);
        cairo_rotate(cairo_, -shape.angle_degrees * std::numbers::pi / 180);
        cairo_translate(cairo_, -middle, shape.baseline - middle);
        double const em_across = shape.em * page_.TwipsPerPixelY() / page_.TwipsPerPixelX();
        std::vector<cairo_glyph_t> run;
        for (std::size_t i = 0; i < line.glyphs.size(); ++i) {
            raster::PlacedGlyph const& glyph = line.glyphs[i];
            run.push_back({glyph.glyph, glyph.x * em_across, glyph.y * shape.em});
            bool const ends = i + 1 == line.glyphs.size() || line.glyphs[i + 1].typeface != glyph.typeface;
            if (!ends) continue;
            show(run, *glyph.typeface, em_across, shape.em);
            run.clear();
        }
    }

    void show(std::vector<cairo_glyph_t> const& run, raster::Typeface const& typeface, double em_across,
              double em_down) {
        cairo_set_font_face(cairo_, face(typeface));
        cairo_matrix_t size;
        cairo_matrix_init_scale(&size, em_across, em_down);
        cairo_set_font_matrix(cairo_, &size);
        // Places come from the unhinted widths of the text's shaping.
        const FontOptions options(cairo_font_options_create());
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        cairo_set_font_options(cairo_, options.get());
        cairo_show_glyphs(cairo_, run.data(), static_cast<int>(run.size()));
    }

    cairo_font_face_t* face(raster::Typeface const& typeface) {
        FontFace& known = faces_[&typeface];
        if (!known) known = open_face(typeface.file());
        return known.get();
    }

    void draw(Picture const& shape) {
        // Some readers stretch a picture by a pixel, and blur it, when it ends exactly on a pixel's edge.
        constexpr double inset = 0.001;
        document_.draw(*shape.pixels,
                       {shape.place.x + inset, shape.place.y + inset, shape.pixels->width() - 2 * inset,
                        shape.pixels->height() - 2 * inset});
    }

    void draw(Copy const&) {} // copies are taken apart before

    VectorSurface const& page_;
    std::map<raster::Typeface const*, FontFace> faces_;
    PdfDocument document_;
    cairo_t* cairo_;
};

} // namespace

std::vector<std::uint8_t> pdf_of(VectorSurface const& page) {
    return PdfWriter(page).finish();
}

} // namespace qv::vector
