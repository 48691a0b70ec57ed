// Text on a RasterSurface.
#include "qvgraph/fault.h"
#include "raster/FontLibrary.h"
#include "raster/blend.h"
#include "raster/canvas.h"
#include "raster/glyph_images.h"
#include "raster/text_shaping.h"

#include <array>
#include <numbers>

namespace qv::raster {
namespace {

constexpr double smallest_em = 1;    // pixels
constexpr double largest_em = 2048;  // pixels; beyond that one glyph fills any screen
constexpr double default_points = 9; // for sizes that make no sense

// A font at a size on one surface.
struct TextMetrics {
    double em_twips;
    double em_width; // pixels
    double em_height;
    int ascent; // pixels
    int descent;
};

// A pixel of a line of text before it is turned, from the line's top-left corner, and where it goes.
struct QuarterTurn {
    int from_x, from_y; // how far x moves for a step right and a step down
    int to_x, to_y;     // and y

    PixelBox turned(PixelBox const& box) const {
        int const x0 = box.left * from_x + box.top * from_y, y0 = box.left * to_x + box.top * to_y;
        int const x1 = (box.right - 1) * from_x + (box.bottom - 1) * from_y;
        int const y1 = (box.right - 1) * to_x + (box.bottom - 1) * to_y;
        return {std::min(x0, x1), std::min(y0, y1), std::max(x0, x1) + 1, std::max(y0, y1) + 1};
    }
};

// By quarters counter-clockwise.
constexpr std::array quarter_turns{QuarterTurn{1, 0, 0, 1}, QuarterTurn{0, 1, -1, 0},
                                   QuarterTurn{-1, 0, 0, -1}, QuarterTurn{0, -1, 1, 0}};

// A position in steps of a quarter pixel: the pixel, and the quarters beyond it.
struct Phased {
    int pixel;
    int phase;
};

Phased phased(double position, bool smooth) {
    if (!smooth) return {whole_pixel(position), 0};
    int const quarters = whole_pixel(position * GlyphImages::phases);
    int const pixel = static_cast<int>(std::floor(static_cast<double>(quarters) / GlyphImages::phases));
    return {pixel, quarters - pixel * GlyphImages::phases};
}

double normal_angle(double degrees) {
    if (!std::isfinite(degrees)) return 0;
    double const angle = std::fmod(degrees, 360);
    return angle < 0 ? angle + 360 : angle;
}

} // namespace

// Draws one line of text in the surface's fore colour.
class RasterSurface::TextPainter {
public:
    TextPainter(RasterSurface& surface, TextMetrics const& metrics)
        : canvas_(*surface.canvas_), state_(surface.state), fonts_(*surface.fonts_), metrics_(metrics),
          twips_x_(surface.twips_per_pixel_x_), twips_y_(surface.twips_per_pixel_y_),
          color_(pixel_value(state_.ForeColor)) {
        if (canvas_.paints_at_once(state_))
            buffer_ = &canvas_.pixels.write();
        else
            mask_ = &canvas_.mask(state_, state_.ForeColor);
    }

    void draw(std::string_view line, PixelPoint top_left, double angle_degrees) {
        const ShapedLine shaped = fonts_.shaped(state_.font, line);
        double const angle = normal_angle(angle_degrees);
        double const quarters = angle / 90;
        bool const square = quarters == std::floor(quarters);
        for (PlacedGlyph const& glyph : shaped.glyphs) {
            if (square)
                draw_square(glyph, top_left, static_cast<std::size_t>(quarters) % 4);
            else
                draw_turned(glyph, top_left, angle);
        }
        canvas_.finish();
    }

private:
    // Upright and quarter turns show one picture, turned pixel by pixel.
    void draw_square(PlacedGlyph const& glyph, PixelPoint top_left, std::size_t quarters) {
        bool const sideways = quarters % 2 == 1;
        double const em_along = sideways ? metrics_.em_height : metrics_.em_width;
        double const em_across = sideways ? metrics_.em_width : metrics_.em_height;
        const Phased along = phased(glyph.x * em_along, state_.Smooth);
        int const across = metrics_.ascent + whole_pixel(glyph.y * em_across);
        const GlyphStyle style{static_cast<float>(em_along), static_cast<float>(em_across), 0, state_.Smooth};
        GlyphImage const& image =
            fonts_.glyph_images().image({glyph.typeface, glyph.glyph, style, along.phase, 0});
        place(image, top_left, along.pixel + image.left, across + image.top, quarter_turns[quarters]);
    }

    void draw_turned(PlacedGlyph const& glyph, PixelPoint top_left, double angle) {
        double const radians = angle * std::numbers::pi / 180;
        double const along = glyph.x * metrics_.em_twips;
        double const across = metrics_.ascent * twips_y_ + glyph.y * metrics_.em_twips;
        const Phased x =
            phased((along * std::cos(radians) + across * std::sin(radians)) / twips_x_, state_.Smooth);
        const Phased y =
            phased((across * std::cos(radians) - along * std::sin(radians)) / twips_y_, state_.Smooth);
        const GlyphStyle style{static_cast<float>(metrics_.em_width), static_cast<float>(metrics_.em_height),
                               static_cast<float>(angle), state_.Smooth};
        GlyphImage const& image =
            fonts_.glyph_images().image({glyph.typeface, glyph.glyph, style, x.phase, y.phase});
        place(image, top_left, x.pixel + image.left, y.pixel + image.top, quarter_turns[0]);
    }

    // Draws the image with its corner `left`, `top` from the text's corner before the turn.
    void place(GlyphImage const& image, PixelPoint top_left, int left, int top, QuarterTurn const& turn) {
        int const x0 = whole_pixel(top_left.x), y0 = whole_pixel(top_left.y);
        const PixelBox upright{left, top, left + image.width, top + image.height};
        if (image.width == 0 || intersection(moved(turn.turned(upright), x0, y0), canvas_.clip).empty())
            return;
        std::uint8_t const* coverage = image.coverage.data();
        for (int j = top; j < upright.bottom; ++j)
            for (int i = left; i < upright.right; ++i, ++coverage) {
                if (*coverage == 0) continue;
                int const x = x0 + i * turn.from_x + j * turn.from_y;
                int const y = y0 + i * turn.to_x + j * turn.to_y;
                if (canvas_.clip.contains(x, y)) put(x, y, *coverage);
            }
    }

    void put(int x, int y, std::uint8_t coverage) {
        if (mask_ == nullptr) {
            std::uint32_t& pixel = buffer_->row(y)[x];
            pixel = blended_text(pixel, color_, coverage);
        } else if (state_.draw_mode != DrawMode::Invert) {
            mask_->raise(x, y, coverage);
        } else if (coverage >= 128) {
            mask_->raise(x, y, 255);
        }
    }

    Canvas& canvas_;
    DrawState const& state_;
    FontLibrary& fonts_;
    TextMetrics metrics_;
    double twips_x_;
    double twips_y_;
    std::uint32_t color_;
    PixelBuffer* buffer_ = nullptr; // one of the two is drawn on
    CoverageMask* mask_ = nullptr;  // instead of the pixels
};

namespace {

TextMetrics metrics_of(RasterSurface const& surface, FontLibrary& fonts) {
    Font const& font = surface.state.font;
    double const points = font.size_points > 0 ? font.size_points : default_points;
    double const wish = points * twips_per_point / surface.TwipsPerPixelY();
    double const em_height = std::clamp(wish, smallest_em, largest_em);
    double const em_twips = em_height * surface.TwipsPerPixelY();
    double const em_width = std::clamp(em_twips / surface.TwipsPerPixelX(), smallest_em, largest_em);
    const FontHeights heights = fonts.heights(font);
    return {em_twips, em_width, em_height, whole_pixel(heights.ascent * em_height),
            whole_pixel(heights.descent * em_height)};
}

} // namespace

double RasterSurface::TextWidth(std::string_view line) {
    return fonts_->shaped(state.font, line).width * metrics_of(*this, *fonts_).em_width * twips_per_pixel_x_;
}

double RasterSurface::TextHeight(std::string_view) {
    const TextMetrics metrics = metrics_of(*this, *fonts_);
    return (metrics.ascent + metrics.descent) * twips_per_pixel_y_;
}

LineMetrics RasterSurface::line_metrics() const {
    const TextMetrics metrics = metrics_of(*this, *fonts_);
    return {metrics.em_height, static_cast<double>(metrics.ascent)};
}

void RasterSurface::Print(std::string_view line) {
    TextOutA({state.CurrentX / twips_per_pixel_x_, state.CurrentY / twips_per_pixel_y_}, 0, line);
}

void RasterSurface::TextOutA(PixelPoint top_left, double angle_degrees, std::string_view line) {
    if (!is_finite(top_left) || line.empty()) return;
    if (!fonts_->has_fonts()) return fonts_->report_missing_fonts();
    TextPainter(*this, metrics_of(*this, *fonts_)).draw(line, top_left, angle_degrees);
}

} // namespace qv::raster
