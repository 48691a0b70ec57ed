#include "qvgraph/DrawSurface.h"

#include "base/convert.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv {
namespace {

PixelPoint in_pixels(DrawSurface const& surface, Point point) {
    return {point.x / surface.TwipsPerPixelX(), point.y / surface.TwipsPerPixelY()};
}

PixelPoint nearest_pixel(PixelPoint point) {
    return {std::floor(point.x + 0.5), std::floor(point.y + 0.5)};
}

// Half a pixel, so that the last pixel of a plus or cross is included.
double last_pixel(DrawSurface const& surface) {
    return std::floor(round_half_even(surface.TwipsPerPixelX()) / 2);
}

void draw_triangle(DrawSurface& surface, Point centre, std::int32_t size, int direction) {
    double const apex = static_cast<double>((3LL * direction * size) / 2);
    double const base = static_cast<double>((static_cast<long long>(direction) * size) / 2);
    const std::array corners{in_pixels(surface, {centre.x, centre.y - apex}),
                             in_pixels(surface, {centre.x - size, centre.y + base}),
                             in_pixels(surface, {centre.x + size, centre.y + base})};
    surface.Polygon(corners);
}

void draw_diamond(DrawSurface& surface, Point centre, std::int32_t size) {
    const PixelPoint middle = in_pixels(surface, centre);
    const PixelPoint half = in_pixels(surface, {static_cast<double>(size), static_cast<double>(size)});
    const std::array corners{PixelPoint{middle.x, middle.y - half.y}, PixelPoint{middle.x - half.x, middle.y},
                             PixelPoint{middle.x, middle.y + half.y},
                             PixelPoint{middle.x + half.x, middle.y}};
    surface.Polygon(corners);
}

void draw_rectangle(DrawSurface& surface, Point centre, double half_width, double half_height) {
    // Middle and half sides are each rounded to whole pixels, so that all of a series are equal in size.
    const PixelPoint middle = nearest_pixel(in_pixels(surface, centre));
    const PixelPoint half =
        nearest_pixel(in_pixels(surface, {round_half_even(half_width), round_half_even(half_height)}));
    surface.Rectangle({middle.x - half.x, middle.y - half.y}, {middle.x + half.x + 1, middle.y + half.y + 1});
}

} // namespace

int whole_pen(double pixels) {
    return std::max(1, static_cast<int>(std::ceil(pixels - 0.5)));
}

double DrawSurface::pen_pixels(int width) const {
    constexpr double twips_at_96 = twips_per_inch / 96, widest = 1 << 16;
    // One pen serves both directions, also where pixels are not square.
    double const twips_per_pixel = std::sqrt(TwipsPerPixelX() * TwipsPerPixelY());
    return std::clamp(width * twips_at_96 / twips_per_pixel, 1.0, widest);
}

void DrawSurface::Polyline(std::span<Point const> points) {
    auto const finite = [](Point p) { return std::isfinite(p.x) && std::isfinite(p.y); };
    for (std::size_t i = 1; i < points.size(); ++i)
        if (finite(points[i - 1]) && finite(points[i]))
            Line(points[i - 1], points[i], LineShape::Segment, state.ForeColor);
}

void DrawSurface::Symbols(SymbolBatch const& batch) {
    for (Point const centre : batch.centres) draw_symbol(*this, batch.shape, centre, batch.half_size);
}

void DrawSurface::Text(TextLine const& line) {
    if (line.angle_degrees == 0) {
        state.CurrentX = line.top_left.x;
        state.CurrentY = line.top_left.y;
        Print(line.text);
    } else {
        TextOutA(in_pixels(*this, line.top_left), line.angle_degrees, line.text);
    }
}

void draw_symbol(DrawSurface& surface, SymbolShape shape, Point centre, std::int32_t half_size) {
    double const s = half_size;
    double const t = s + last_pixel(surface);
    auto const segment = [&](Point from, Point to) {
        surface.Line({centre.x + from.x, centre.y + from.y}, {centre.x + to.x, centre.y + to.y},
                     LineShape::Segment, surface.state.ForeColor);
    };
    switch (shape) {
    case SymbolShape::Dot: surface.PSet(centre); break;
    case SymbolShape::Circle: surface.Circle(centre, s); break;
    case SymbolShape::Square: draw_rectangle(surface, centre, s, s); break;
    case SymbolShape::Diamond: draw_diamond(surface, centre, half_size); break;
    case SymbolShape::TriangleUp: draw_triangle(surface, centre, half_size, 1); break;
    case SymbolShape::TriangleDown: draw_triangle(surface, centre, half_size, -1); break;
    case SymbolShape::WideRectangle: draw_rectangle(surface, centre, s * 1.3, s / 1.3); break;
    case SymbolShape::TallRectangle: draw_rectangle(surface, centre, s / 1.3, s * 1.3); break;
    case SymbolShape::Plus:
        segment({-s, 0}, {t, 0});
        segment({0, s}, {0, -t});
        break;
    case SymbolShape::Cross:
        segment({-s, -s}, {t, t});
        segment({-s, s}, {t, -t});
        break;
    }
}

} // namespace qv
