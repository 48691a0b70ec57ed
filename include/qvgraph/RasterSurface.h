// RasterSurface: a drawing surface in memory, 32 bits a pixel.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/export.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace qv::raster {

/// The installed fonts and all that is kept about them, shared by the surfaces of one thread.
class FontLibrary;

/// A library of its own; fonts are looked for on first use.
QV_EXPORT std::shared_ptr<FontLibrary> make_font_library();

/// How large the current font comes out on a surface.
struct LineMetrics {
    double em_pixels = 0;     ///< the font's size
    double ascent_pixels = 0; ///< from the top of a line to its baseline
};

/// Draws on a picture of its own. To be used on one thread, as the fonts it shares.
class QV_EXPORT RasterSurface final : public DrawSurface {
public:
    /// One white pixel, to be resized with `Move`. Twips per pixel: any positive numbers, else fault 5.
    RasterSurface(double twips_per_pixel_x, double twips_per_pixel_y, std::shared_ptr<FontLibrary> fonts);
    ~RasterSurface() override;
    /// What was moved from may only be destroyed or assigned to.
    RasterSurface(RasterSurface&&) noexcept;
    RasterSurface& operator=(RasterSurface&&) noexcept; ///< the same

    /// For a window that moves to another screen. The pixels stay; what is drawn later has the new scale.
    void set_twips_per_pixel(double x, double y);

    /// The picture as rows of 0xFFRRGGBB, top row first, `stride` pixels from row to row. It is complete when
    /// no shape is open, and stays in place until the surface is drawn on, copied whole or moved.
    std::span<std::uint32_t const> pixels() const;
    /// The same pixels, as they are now for as long as this is held: what is drawn later goes elsewhere.
    std::shared_ptr<std::uint32_t const> snapshot() const;
    int width() const;                     ///< pixels, at least 1
    int height() const;                    ///< pixels, at least 1
    int stride() const { return width(); } ///< pixels from row to row

    bool ShowsPixels() const override { return true; }
    double TwipsPerPixelX() const override { return twips_per_pixel_x_; }
    double TwipsPerPixelY() const override { return twips_per_pixel_y_; }
    PixelSize GetClientRect() const override;
    /// A change of size keeps the picture in the corner and lifts the clip. More than 32767 pixels a side or
    /// 2^28 in all is fault 7; a size that is not a number is fault 5.
    void Move(double width_twips, double height_twips) override;

    void Cls() override;
    void SelectClipPath(Box const& box) override;
    /// The source must be a RasterSurface, else fault 5.
    void BitBlt(PixelPoint target, PixelSize size, DrawSurface const& source, PixelPoint origin) override;

    void Line(Point from, Point to, LineShape shape, Color color) override;
    void PSet(Point point) override;
    void Circle(Point centre, double radius_twips) override;
    void Polygon(std::span<PixelPoint const> corners) override;
    void Rectangle(PixelPoint left_top, PixelPoint right_bottom) override;
    void Ellipse(PixelPoint left_top, PixelPoint right_bottom) override;
    void LineTo(PixelPoint from, PixelPoint to, Color color) override;
    void Polyline(std::span<Point const> points) override;
    void LineParts(std::span<LinePart const> parts) override;
    void CoverColumns(std::span<PixelColumn const> columns, std::span<std::uint8_t const> coverage) override;
    void Symbols(SymbolBatch const& batch) override;
    void Pixels(PixelPoint left_top, PixelSize size, std::span<std::uint32_t const> pixels) override;
    void BeginShape() override;
    void EndShape() override;
    void DropShape() noexcept override;

    /// Without any font the first attempt of all surfaces of a library to print is fault 53; later ones draw
    /// nothing, and extents are estimates.
    double TextWidth(std::string_view line) override;
    double TextHeight(std::string_view line) override;
    LineMetrics line_metrics() const; ///< of the current font
    void Print(std::string_view line) override;
    void TextOutA(PixelPoint top_left, double angle_degrees, std::string_view line) override;

private:
    struct Canvas;
    class TextPainter;

    double twips_per_pixel_x_ = 15;
    double twips_per_pixel_y_ = 15;
    std::shared_ptr<FontLibrary> fonts_;
    std::unique_ptr<Canvas> canvas_;
};

} // namespace qv::raster
