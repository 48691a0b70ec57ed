#include "vector/symbol_shapes.h"

#include "surface/symbol_form.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::vector {
namespace {

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

// The corners that face left from the lowest to the highest, and back down those that face right. Two points
// are a line there and back.
Piece piece_of(std::span<PixelPoint const> corners) {
    double area = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const PixelPoint a = corners[i], b = corners[(i + 1) % corners.size()];
        area += a.x * b.y - b.x * a.y;
    }
    std::vector<PixelPoint> clockwise(corners.begin(), corners.end());
    if (area < 0) std::ranges::reverse(clockwise);
    auto const is_higher = [](PixelPoint a, PixelPoint b) { return a.y < b.y || (a.y == b.y && a.x < b.x); };
    auto const leftmost_lowest = [](PixelPoint a, PixelPoint b) {
        return a.y > b.y || (a.y == b.y && a.x < b.x);
    };
    std::rotate(clockwise.begin(), std::ranges::min_element(clockwise, leftmost_lowest), clockwise.end());
    auto const top = std::ranges::min_element(clockwise, is_higher);
    Piece piece{{clockwise.begin(), top + 1}, {top, clockwise.end()}};
    // An edge along a row ends one side and begins the other.
    if (piece.right.size() > 1 && piece.right[1].y == top->y) piece.right.erase(piece.right.begin());
    if (piece.right.back().y != clockwise[0].y) piece.right.push_back(clockwise[0]);
    return piece;
}

std::vector<Shape> lines_of(SymbolLook const& look, std::vector<SymbolRun> const& runs,
                            std::span<PixelPoint const> ends) {
    std::vector<Shape> shapes;
    for (std::size_t i = 0; i + 1 < ends.size(); i += 2)
        if (is_along_pixels(ends[i], ends[i + 1]))
            shapes.emplace_back(boxes_of(look, runs, std::abs(ends[i].x), std::abs(ends[i].y)));
        else
            shapes.emplace_back(fill_of(look, runs, piece_of(ends.subspan(i, 2))));
    return shapes;
}

std::vector<Shape> ovals_of(SymbolLook const& look, std::vector<SymbolRun> const& runs) {
    if (look.half_width == look.half_height)
        return {rounds_of(look, runs, 2 * look.half_width + look.pen_width)};
    return {fill_of(look, runs,
                    {{{0, 1}, {-0.7, 0.7}, {-1, 0}, {-0.7, -0.7}, {0, -1}},
                     {{0, -1}, {0.7, -0.7}, {1, 0}, {0.7, 0.7}, {0, 1}}})};
}

} // namespace

int SymbolLook::reach() const {
    return static_cast<int>(
        std::ceil(farthest_corner * std::max(half_width, half_height) + pen_width / 2 + 2));
}

RunLimits SymbolLook::run_limits() const {
    // Thin symbols in every second row only would be seen as stripes.
    auto const kind = symbol_form(shape).kind;
    if (kind == SymbolForm::Kind::Dot || kind == SymbolForm::Kind::Lines)
        return {.coarsest = static_cast<int>(pen_width / 2)};
    double const half_size = std::min(half_width, half_height);
    // The edge of a run of circles would else be seen to be straight.
    return {.gap = std::max(1.0, half_width / 2), .coarsest = static_cast<int>(half_size / 2)};
}

std::vector<Shape> SymbolLook::shapes(std::vector<SymbolRun> const& runs) const {
    if (runs.empty()) return {};
    const SymbolForm form = symbol_form(shape);
    switch (form.kind) {
    case SymbolForm::Kind::Dot:
        if (whole_pen(pen_width) == 1) return {boxes_of({shape, 0, 0, 1, color}, runs, 0, 0)};
        return {rounds_of(*this, runs, pen_width)};
    case SymbolForm::Kind::Oval: return ovals_of(*this, runs);
    case SymbolForm::Kind::Box: return {boxes_of(*this, runs, form.places[1].x, form.places[1].y)};
    case SymbolForm::Kind::Polygon: return {fill_of(*this, runs, piece_of(form.points()))};
    case SymbolForm::Kind::Lines: return lines_of(*this, runs, form.points());
    }
    return {};
}

} // namespace qv::vector
