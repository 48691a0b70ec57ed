#include "qvgraph/DrawSurface.h"

#include "base/convert.h"
#include "surface/symbol_form.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv {
namespace {

// Half a pixel, so that the last pixel of a plus or cross is included.
double last_pixel(DrawSurface const& surface) {
    return std::floor(round_half_even(surface.TwipsPerPixelX()) / 2);
}

// Corners lie on whole twips from the centre, cut towards it.
void draw_polygon(DrawSurface& surface, std::span<PixelPoint const> corners, Point centre, double size) {
    std::array<PixelPoint, SymbolForm::most_points> places{};
    const PixelPoint middle = in_pixels(surface, centre);
    std::ranges::transform(corners, places.begin(), [&](PixelPoint corner) {
        const PixelPoint way = in_pixels(surface, {std::trunc(corner.x * size), std::trunc(corner.y * size)});
        return PixelPoint{middle.x + way.x, middle.y + way.y};
    });
    surface.Polygon(std::span(places).first(corners.size()));
}

// The last pixel belongs to a line, so its end lies half a pixel further on.
void draw_lines(DrawSurface& surface, std::span<PixelPoint const> ends, Point centre, double size) {
    double const further = size + last_pixel(surface);
    for (std::size_t i = 0; i + 1 < ends.size(); i += 2)
        surface.Line({centre.x + ends[i].x * size, centre.y + ends[i].y * size},
                     {centre.x + ends[i + 1].x * further, centre.y + ends[i + 1].y * further},
                     LineShape::Segment, surface.state.ForeColor);
}

void draw_rectangle(DrawSurface& surface, Point centre, double half_width, double half_height) {
    // Middle and half sides are each rounded to whole pixels, so that all of a series are equal in size.
    const PixelPoint middle = pixel_at(surface, centre);
    const PixelPoint half = pixel_at(surface, {round_half_even(half_width), round_half_even(half_height)});
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

void DrawSurface::LineParts(std::span<LinePart const> parts) {
    for (LinePart const& part : parts) Polyline(std::array{part.from, part.to});
}

void DrawSurface::CoverColumns(std::span<PixelColumn const>, std::span<std::uint8_t const>) {}

void DrawSurface::Symbols(SymbolBatch const& batch) {
    for (Point const centre : batch.centres) draw_symbol(*this, batch.shape, centre, batch.half_size);
}

// Runs of one colour are boxes.
void DrawSurface::Pixels(PixelPoint left_top, PixelSize size, std::span<std::uint32_t const> pixels) {
    double const dx = TwipsPerPixelX(), dy = TwipsPerPixelY();
    std::uint8_t const alpha = state.alpha;
    std::size_t first = 0;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width;) {
            std::uint32_t const pixel = pixels[first];
            int const start = x;
            while (x < size.width && pixels[first] == pixel) ++x, ++first;
            std::uint32_t const opacity = (pixel >> 24) * alpha / 255;
            if (opacity == 0) continue;
            state.alpha = static_cast<std::uint8_t>(opacity);
            Line({(left_top.x + start) * dx, (left_top.y + y) * dy},
                 {(left_top.x + x - 1) * dx, (left_top.y + y) * dy}, LineShape::FilledBox,
                 rgb(static_cast<int>(pixel >> 16 & 0xFF), static_cast<int>(pixel >> 8 & 0xFF),
                     static_cast<int>(pixel & 0xFF)));
        }
    state.alpha = alpha;
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
    double const size = half_size;
    const SymbolForm form = symbol_form(shape);
    auto const points = form.points();
    switch (form.kind) {
    case SymbolForm::Kind::Dot: surface.PSet(centre); break;
    case SymbolForm::Kind::Oval: surface.Circle(centre, size); break;
    case SymbolForm::Kind::Box:
        draw_rectangle(surface, centre, points[1].x * size, points[1].y * size);
        break;
    case SymbolForm::Kind::Polygon: draw_polygon(surface, points, centre, size); break;
    case SymbolForm::Kind::Lines: draw_lines(surface, points, centre, size); break;
    }
}

} // namespace qv
