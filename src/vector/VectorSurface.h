// VectorSurface: a drawing surface that keeps what is drawn as shapes and text.
#pragma once

#include "qvgraph/RasterSurface.h"
#include "raster/FontLibrary.h"
#include "vector/shapes.h"
#include "vector/symbol_cloud.h"
#include "vector/symbol_shapes.h"

#include <memory>
#include <optional>

namespace qv::vector {

/// Lays text out exactly as a RasterSurface of the same density does. Only what can be seen is kept.
/// Inverting needs pixels and is left out.
class VectorSurface final : public DrawSurface {
public:
    VectorSurface(double twips_per_pixel_x, double twips_per_pixel_y,
                  std::shared_ptr<raster::FontLibrary> fonts);

    NodeList const& nodes() const { return *nodes_; }
    /// There were so many shapes that later ones were left out.
    bool is_overfull() const;
    /// Shows this picture and nothing else; its size must be that of the surface.
    void show_picture(raster::RasterSurface const& picture);
    raster::FontLibrary& fonts() const { return *fonts_; }

    double TwipsPerPixelX() const override { return measure_.TwipsPerPixelX(); }
    double TwipsPerPixelY() const override { return measure_.TwipsPerPixelY(); }
    PixelSize GetClientRect() const override { return {bounds_.right, bounds_.bottom}; }
    void Move(double width_twips, double height_twips) override;

    void Cls() override;
    void SelectClipPath(Box const& box) override;
    /// The source must be a VectorSurface, else fault 5.
    void BitBlt(PixelPoint target, PixelSize size, DrawSurface const& source, PixelPoint origin) override;

    void Line(Point from, Point to, LineShape shape, Color color) override;
    void PSet(Point point) override;
    void Circle(Point centre, double radius_twips) override;
    void Polygon(std::span<PixelPoint const> corners) override;
    void Rectangle(PixelPoint left_top, PixelPoint right_bottom) override;
    void Ellipse(PixelPoint left_top, PixelPoint right_bottom) override;
    /// On a surface with nothing else on it, such as one that is filled with a gradient, the lines become a
    /// picture.
    void LineTo(PixelPoint from, PixelPoint to, Color color) override;
    void Polyline(std::span<Point const> points) override;
    void Symbols(SymbolBatch const& batch) override;
    /// Becomes a picture, or where pixels are not opaque boxes.
    void Pixels(PixelPoint left_top, PixelSize size, std::span<std::uint32_t const> pixels) override;
    void BeginShape() override;
    void EndShape() override;
    void DropShape() noexcept override;

    double TextWidth(std::string_view line) override;
    double TextHeight(std::string_view line) override;
    void Print(std::string_view line) override;
    void TextOutA(PixelPoint top_left, double angle_degrees, std::string_view line) override;

private:
    void add(Shape shape);
    void clear(std::uint32_t color);
    void fill_boxes(std::uint32_t color, std::vector<PixelBox> boxes);
    void fill(std::uint32_t color, double outline, std::span<PixelPoint const> corners);
    void add_lines(Stroke line, std::span<PixelPoint const> points, bool closed);
    void stroke_box(PixelBox box, Color color);
    void snapped_line(PixelBox const& ends, Color color);
    void oval(PixelPoint centre, PixelPoint radii);
    double pen_width() const; // pixels
    Stroke pen(Color color) const;
    /// A colour with the alpha with which it looks on the page as it does on a picture.
    std::uint32_t painted(Color color) const;
    PixelPoint pixel(Point point) const;
    bool is_drawing() const { return state.draw_mode == DrawMode::Copy; }
    std::shared_ptr<NodeList> nodes_of(raster::RasterSurface const& picture) const;
    std::shared_ptr<NodeList const> shown() const;
    Shape part_of_texture(PixelBox const& part, int dx, int dy) const;
    void finish_texture();
    void finish_cloud();

    /// Symbols of one look, collected while a shape is open.
    struct Cloud {
        SymbolLook look;
        SymbolCloud symbols;
    };

    std::shared_ptr<raster::FontLibrary> fonts_;
    raster::RasterSurface measure_;                // one pixel: for the extents of text
    std::optional<raster::RasterSurface> texture_; // device lines on an otherwise empty surface
    std::optional<Cloud> cloud_;
    std::uint32_t background_ = 0xFFFFFFFF;
    PixelBox bounds_{0, 0, 1, 1};
    PixelBox clip_{0, 0, 1, 1};
    int open_shapes_ = 0;
    std::size_t nodes_before_shape_ = 0;
    std::size_t length_ = 0;          // of all shapes as text, those of copies included
    std::shared_ptr<NodeList> nodes_; // the first is the background
};

} // namespace qv::vector
