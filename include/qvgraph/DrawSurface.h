// DrawSurface: the operations that all drawing uses, and the state that governs them.
#pragma once

#include "qvgraph/export.h"
#include "qvgraph/geometry.h"

#include <cstdint>
#include <exception>
#include <span>
#include <string>
#include <string_view>

namespace qv {

enum class DrawStyle : std::uint8_t { Solid, Dash, Dot, DashDot, DashDotDot, None, InsideSolid };
enum class DrawMode : std::uint8_t { Invert = 6, Copy = 13 };
enum class FillStyle : std::uint8_t { Solid = 0, Transparent = 1 };
enum class LineShape : std::uint8_t { Segment, Box, FilledBox };

/// How a text is written.
struct Font {
    std::string name = "Arial"; ///< the family; the nearest installed one is taken
    double size_points = 9;     ///< points, above 0
    bool bold = false;          ///< heavy letters
    bool italic = false;        ///< slanted letters
    bool operator==(Font const&) const = default;
};

/// What the operations of a surface use beyond their arguments.
struct DrawState {
    Color ForeColor = 0;                           ///< of pen and text
    Color FillColor = 0;                           ///< of the brush
    Color BackColor = rgb(255, 255, 255);          ///< of a cleared surface
    FillStyle fill_style = FillStyle::Transparent; ///< whether shapes are filled
    DrawStyle draw_style = DrawStyle::Solid;       ///< of the pen
    DrawMode draw_mode = DrawMode::Copy;           ///< Invert turns every pixel it touches
    int DrawWidth = 1;                             ///< of the pen in pixels at 96 to the inch, at least 1
    Font font;                                     ///< of text
    double CurrentX = 0;                           ///< twips, where Print begins
    double CurrentY = 0;                           ///< twips, the top of the line that Print writes
    std::uint8_t alpha = 255; ///< of lines, shapes and fills, not of text: 0 invisible, 255 opaque
    bool Smooth = true;       ///< antialiased lines, shapes and text; off: whole pixels only
};

/// One line of text as text: its top-left point in twips and its angle in degrees, counter-clockwise
/// about that point.
struct TextLine {
    std::string_view text;    ///< UTF-8
    Point top_left;           ///< twips
    double angle_degrees = 0; ///< counter-clockwise
};

/// The shapes that a batch of symbols can have. `half_size` is in twips and means: radius of the circle,
/// half side of the square, half diagonal of the diamond, half base of the triangles, half length of plus
/// and cross.
enum class SymbolShape : std::uint8_t {
    Dot,
    Circle,
    Square,
    Diamond,
    TriangleUp,
    TriangleDown,
    WideRectangle,
    TallRectangle,
    Plus,
    Cross
};

/// Equal symbols in many places.
struct SymbolBatch {
    SymbolShape shape = SymbolShape::Circle; ///< of all
    std::int32_t half_size = 0;              ///< twips, see SymbolShape
    std::span<Point const> centres;          ///< twips
};

/// How many pixels wide a pen of this width in pixels draws lines along rows or columns of pixels: the
/// nearest whole number from 1 on, of two that are as near the smaller, so that frames are no heavier than
/// curves.
QV_EXPORT int whole_pen(double pixels);

/// A segment of which only the pixels of a box have to be drawn: elsewhere other segments cover at least as
/// much.
struct LinePart {
    Point from;              ///< twips
    Point to;                ///< twips
    std::int32_t left = 0;   ///< pixels, the first column of the box
    std::int32_t top = 0;    ///< its first row
    std::int32_t right = 0;  ///< the column behind its last
    std::int32_t bottom = 0; ///< the row behind its last
};

/// Pixels of one column, below one another.
struct PixelColumn {
    std::int32_t x = 0;     ///< the column
    std::int32_t top = 0;   ///< its first row that counts
    std::int32_t count = 0; ///< how many rows
};

/// A drawing surface. Points are twips unless a parameter is in pixels (`PixelPoint`, y down, pixel n
/// covers n to n + 1 and a whole number n means that pixel's centre).
///
/// One rounding leads from twips to pixels everywhere: pixel = floor(twips / twips per pixel + 0.5).
/// `Line` segments that are horizontal or vertical, and all boxes, lie on whole pixels and include both
/// ends; `Polyline`, symbols and slanted segments keep their fractions while `Smooth` is on.
class QV_EXPORT DrawSurface {
public:
    DrawState state; ///< what the next operation uses

    virtual ~DrawSurface() = default;

    /// \name Geometry
    /// \{

    /// Whether it shows pixels, so that nothing of a line matters but how it covers them.
    virtual bool ShowsPixels() const { return false; }
    virtual double TwipsPerPixelX() const = 0; ///< any positive fraction
    virtual double TwipsPerPixelY() const = 0; ///< any positive fraction
    /// How wide a pen of `width` pixels at 96 to the inch is in pixels of this surface: at least one, and no
    /// more than could matter.
    double pen_pixels(int width) const;
    virtual PixelSize GetClientRect() const = 0;                                ///< its size in pixels
    double Width() const { return GetClientRect().width * TwipsPerPixelX(); }   ///< twips
    double Height() const { return GetClientRect().height * TwipsPerPixelY(); } ///< twips
    /// Resizes the surface (twips, rounded to whole pixels, at least one); the new area is BackColor.
    virtual void Move(double width_twips, double height_twips) = 0;
    /// \}

    /// \name Whole surface
    /// \{
    virtual void Cls() = 0; ///< fills the whole surface with BackColor, whatever the clip
    /// Later drawing is cut to this box: the whole pixels from its left top to its right bottom corner,
    /// both included. Replaces any earlier clip.
    virtual void SelectClipPath(Box const& box) = 0;
    /// Copies a block of pixels exactly, cut at both surfaces' edges and at the clip. Works on overlapping
    /// blocks of one surface.
    virtual void BitBlt(PixelPoint target, PixelSize size, DrawSurface const& source, PixelPoint origin) = 0;
    /// Tells whoever shows the surface that it is complete.
    virtual void Refresh() {}
    /// \}

    /// \name Lines and shapes
    /// `Line` uses the current width, style and mode. A box outline and a filled box span the two corners.
    /// The device shapes use the pen (ForeColor, DrawWidth, draw_style) and the brush (FillColor,
    /// fill_style); `Rectangle` and `Ellipse` exclude their right and bottom pixel.
    /// \{

    /// A segment, or the box between two corners, filled or not, in a colour of its own.
    virtual void Line(Point from, Point to, LineShape shape, Color color) = 0;
    virtual void PSet(Point point) = 0; ///< a point as wide as the pen, in ForeColor
    /// A circle with pen and brush.
    virtual void Circle(Point centre, double radius_twips) = 0;
    /// A closed polygon with pen and brush.
    virtual void Polygon(std::span<PixelPoint const> corners) = 0;
    /// A rectangle with pen and brush.
    virtual void Rectangle(PixelPoint left_top, PixelPoint right_bottom) = 0;
    /// The ellipse inside a rectangle, with pen and brush.
    virtual void Ellipse(PixelPoint left_top, PixelPoint right_bottom) = 0;
    /// A one-pixel solid line, both ends included, never smoothed.
    virtual void LineTo(PixelPoint from, PixelPoint to, Color color) = 0;
    /// \}

    /// \name Text
    /// Extents are in twips, in the current font. Text is UTF-8.
    /// \{
    virtual double TextWidth(std::string_view line) = 0;  ///< of one line
    virtual double TextHeight(std::string_view line) = 0; ///< of one line, empty or not
    /// Prints upright with the top-left corner at CurrentX, CurrentY in ForeColor.
    virtual void Print(std::string_view line) = 0;
    /// Prints turned about the top-left point; angle in degrees, counter-clockwise.
    virtual void TextOutA(PixelPoint top_left, double angle_degrees, std::string_view line) = 0;
    /// \}

    /// \name Whole things
    /// Defaults are built from the single operations; a surface that can do better overrides them.
    /// \{

    /// Connected segments in ForeColor with the current width and style. Not-finite points break the line.
    virtual void Polyline(std::span<Point const> points);
    /// Segments as a polyline's, of which only parts need to be drawn.
    virtual void LineParts(std::span<LinePart const> parts);
    /// Covers columns of pixels in ForeColor; `coverage` holds that of each column's pixels in turn, 0 to
    /// 255. Only for surfaces that show pixels.
    virtual void CoverColumns(std::span<PixelColumn const> columns, std::span<std::uint8_t const> coverage);
    /// Symbols without an edge in FillColor (Dot, Plus and Cross in ForeColor).
    virtual void Symbols(SymbolBatch const& batch);
    virtual void Text(TextLine const& line); ///< one line in ForeColor, upright or turned
    /// A block of pixels of colours of their own, row by row from the top, `size.width` to a row: 0xAARRGGBB,
    /// laid over what is below as far as their alpha and that of the state say. Copy mode only.
    virtual void Pixels(PixelPoint left_top, PixelSize size, std::span<std::uint32_t const> pixels);
    /// Between these calls everything drawn in one colour is one shape: each pixel is painted once, with
    /// the largest coverage any piece gives it.
    virtual void BeginShape() {}
    virtual void EndShape() {} ///< paints what was collected
    /// In place of EndShape where drawing has failed: what was collected of the shape is forgotten.
    virtual void DropShape() noexcept {}
    /// \}
};

/// Keeps a shape open for as long as it lives. Ending it may fail like any drawing.
class ShapeScope {
public:
    /// Opens a shape on a surface that lives longer.
    explicit ShapeScope(DrawSurface& surface) : surface_(surface) { surface_.BeginShape(); }
    ~ShapeScope() noexcept(false) {
        if (std::uncaught_exceptions() > failures_before_)
            surface_.DropShape();
        else
            surface_.EndShape();
    }
    ShapeScope(ShapeScope const&) = delete;
    ShapeScope& operator=(ShapeScope const&) = delete;

private:
    DrawSurface& surface_;
    int failures_before_ = std::uncaught_exceptions();
};

/// Draws one symbol with the surface's single operations, pen and brush.
QV_EXPORT void draw_symbol(DrawSurface& surface, SymbolShape shape, Point centre, std::int32_t half_size);

} // namespace qv
