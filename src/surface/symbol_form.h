// What the symbols look like: one description for single ones, batches in pixels and files of shapes.
#pragma once

#include "qvgraph/DrawSurface.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace qv {

/// A symbol around its centre. Lengths are in half sizes, x to the right and y down.
struct SymbolForm {
    enum class Kind : std::uint8_t {
        Dot,     // as wide as the pen
        Oval,    // of one half size
        Box,     // from left top to right bottom, on whole pixels
        Polygon, // convex
        Lines    // each of two points
    };
    static constexpr std::size_t most_points = 8;

    Kind kind;
    std::uint8_t count = 0;
    std::array<PixelPoint, most_points> places{};

    std::span<PixelPoint const> points() const { return {places.data(), count}; }
};

/// No symbol reaches further from its centre, in half sizes.
constexpr double farthest_corner = 1.5;

constexpr SymbolForm symbol_form(SymbolShape shape) {
    using Kind = SymbolForm::Kind;
    constexpr double wide = 1.3, narrow = 1 / wide, apex = farthest_corner;
    switch (shape) {
    case SymbolShape::Dot: return {Kind::Dot};
    case SymbolShape::Circle: return {Kind::Oval};
    case SymbolShape::Square: return {Kind::Box, 2, {{{-1, -1}, {1, 1}}}};
    case SymbolShape::WideRectangle: return {Kind::Box, 2, {{{-wide, -narrow}, {wide, narrow}}}};
    case SymbolShape::TallRectangle: return {Kind::Box, 2, {{{-narrow, -wide}, {narrow, wide}}}};
    case SymbolShape::Diamond: return {Kind::Polygon, 4, {{{0, -1}, {-1, 0}, {0, 1}, {1, 0}}}};
    case SymbolShape::TriangleUp: return {Kind::Polygon, 3, {{{0, -apex}, {-1, 0.5}, {1, 0.5}}}};
    case SymbolShape::TriangleDown: return {Kind::Polygon, 3, {{{0, apex}, {-1, -0.5}, {1, -0.5}}}};
    case SymbolShape::Plus: return {Kind::Lines, 4, {{{-1, 0}, {1, 0}, {0, 1}, {0, -1}}}};
    case SymbolShape::Cross: return {Kind::Lines, 4, {{{-1, -1}, {1, 1}, {-1, 1}, {1, -1}}}};
    }
    return {Kind::Dot};
}

/// Whether a line lies on whole pixels, as those along rows and columns do.
constexpr bool is_along_pixels(PixelPoint from, PixelPoint to) {
    return from.x == to.x || from.y == to.y;
}

} // namespace qv
