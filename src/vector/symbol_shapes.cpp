#include "vector/symbol_shapes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::vector {
namespace {

using raster::whole_pixel;

// How far a symbol's pieces lie from its centre, in half widths and half heights.
constexpr double wide = 1.3;
constexpr double narrow = 1 / 1.3;
constexpr double apex = 1.5;

bool is_of_lines(SymbolShape shape) {
    return shape == SymbolShape::Plus || shape == SymbolShape::Cross;
}

// As rectangles are drawn: snapped to whole pixels, middle and half sides each, with the pen's width.
PixelBox box_of(SymbolLook const& look, SymbolRun const& run, double wide_by, double tall_by) {
    int const width = whole_pen(look.pen_width);
    int const across = whole_pixel(wide_by * look.half_width), down = whole_pixel(tall_by * look.half_height);
    int const left = whole_pixel(run.centre.x), last = whole_pixel(run.centre.x + run.length);
    int const middle = whole_pixel(run.centre.y);
    return {left - across - width / 2, middle - down - width / 2, last + across - width / 2 + width,
            middle + down - width / 2 + width};
}

Boxes boxes_of(SymbolLook const& look, std::vector<SymbolRun> const& runs, double wide_by, double tall_by) {
    Boxes boxes{look.color, {}};
    for (SymbolRun const& run : runs) boxes.boxes.push_back(box_of(look, run, wide_by, tall_by));
    int const height = boxes.boxes[0].height();
    auto const is_as_high = [height](PixelBox const& box) { return box.height() == height; };
    if (std::ranges::all_of(boxes.boxes, is_as_high)) boxes.height = height;
    return boxes;
}

/// Where a run of this piece reaches: the piece, its right side moved by the run's length. The corners are
/// given in half sizes, clockwise, those of the left side first.
struct Piece {
    std::vector<PixelPoint> left;
    std::vector<PixelPoint> right;
};

Fill fill_of(SymbolLook const& look, std::vector<SymbolRun> const& runs, Piece const& piece) {
    Fill fill{look.color, look.pen_width, look.smooth, {}};
    for (SymbolRun const& run : runs) {
        Contour& contour = fill.contours.emplace_back();
        auto const add = [&](PixelPoint corner, double moved) {
            const PixelPoint place{run.centre.x + 0.5 + moved + corner.x * look.half_width,
                                   run.centre.y + 0.5 + corner.y * look.half_height};
            if (contour.empty() || contour.back() != place) contour.push_back(place);
        };
        for (const PixelPoint corner : piece.left) add(corner, 0);
        for (const PixelPoint corner : piece.right) add(corner, run.length);
    }
    return fill;
}

// Lines with round ends: a dot where the run is a single symbol.
Stroke rounds_of(SymbolLook const& look, std::vector<SymbolRun> const& runs, double diameter) {
    Stroke stroke{.color = look.color, .width = diameter, .smooth = look.smooth};
    for (SymbolRun const& run : runs) {
        Contour& line = stroke.lines.emplace_back();
        line.push_back({run.centre.x + 0.5, run.centre.y + 0.5});
        if (run.length > 0) line.push_back({run.centre.x + 0.5 + run.length, run.centre.y + 0.5});
    }
    return stroke;
}

std::vector<Shape> crosses_of(SymbolLook const& look, std::vector<SymbolRun> const& runs) {
    const Piece falling{{{1, 1}, {-1, -1}}, {{-1, -1}, {1, 1}}};
    const Piece rising{{{-1, 1}, {1, -1}}, {{1, -1}, {-1, 1}}};
    return {fill_of(look, runs, falling), fill_of(look, runs, rising)};
}

} // namespace

int SymbolLook::reach() const {
    return static_cast<int>(std::ceil(apex * std::max(half_width, half_height) + pen_width / 2 + 2));
}

RunLimits SymbolLook::run_limits() const {
    // Thin symbols in every second row only would be seen as stripes.
    if (shape == SymbolShape::Dot || is_of_lines(shape)) return {.coarsest = static_cast<int>(pen_width / 2)};
    double const half_size = std::min(half_width, half_height);
    // The edge of a run of circles would else be seen to be straight.
    return {.gap = std::max(1.0, half_width / 2), .coarsest = static_cast<int>(half_size / 2)};
}

std::vector<Shape> SymbolLook::shapes(std::vector<SymbolRun> const& runs) const {
    if (runs.empty()) return {};
    switch (shape) {
    case SymbolShape::Dot:
        if (whole_pen(pen_width) == 1) return {boxes_of({shape, 0, 0, 1, color}, runs, 0, 0)};
        return {rounds_of(*this, runs, pen_width)};
    case SymbolShape::Circle:
        if (half_width == half_height) return {rounds_of(*this, runs, 2 * half_width + pen_width)};
        return {fill_of(*this, runs,
                        {{{0, 1}, {-0.7, 0.7}, {-1, 0}, {-0.7, -0.7}, {0, -1}},
                         {{0, -1}, {0.7, -0.7}, {1, 0}, {0.7, 0.7}, {0, 1}}})};
    case SymbolShape::Square: return {boxes_of(*this, runs, 1, 1)};
    case SymbolShape::WideRectangle: return {boxes_of(*this, runs, wide, narrow)};
    case SymbolShape::TallRectangle: return {boxes_of(*this, runs, narrow, wide)};
    case SymbolShape::Diamond:
        return {fill_of(*this, runs, {{{0, 1}, {-1, 0}, {0, -1}}, {{0, -1}, {1, 0}, {0, 1}}})};
    case SymbolShape::TriangleUp:
        return {fill_of(*this, runs, {{{-1, 0.5}, {0, -apex}}, {{0, -apex}, {1, 0.5}}})};
    case SymbolShape::TriangleDown:
        return {fill_of(*this, runs, {{{0, apex}, {-1, -0.5}}, {{1, -0.5}, {0, apex}}})};
    case SymbolShape::Plus: return {boxes_of(*this, runs, 1, 0), boxes_of(*this, runs, 0, 1)};
    case SymbolShape::Cross: return crosses_of(*this, runs);
    }
    return {};
}

} // namespace qv::vector
