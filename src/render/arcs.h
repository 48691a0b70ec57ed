// Arcs as corners, and shapes with arcs filled.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace qv::render {

/// An angle whose chord is nowhere further than a tenth of a pixel from its arc.
inline double arc_step(double radius, double twips_per_pixel) {
    double const off = std::min(0.1 * twips_per_pixel / std::max(radius, 1.0), 1.0);
    return std::max(2 * std::acos(1 - off), 1e-3);
}

/// Calls `take` with angles from one to the other, both included, none further than a step from the next.
template <class Take>
void for_each_on_arc(double from, double to, double step, Take const& take) {
    double const way = to - from;
    auto const pieces = static_cast<int>(std::ceil(std::abs(way) / step)) + 1;
    for (int i = 0; i < pieces; ++i) take(from + way * i / pieces);
    take(to);
}

/// Fills a polygon in one colour, without an edge.
void fill_polygon(DrawSurface& surface, std::span<PixelPoint const> corners, Color color);
/// Fills what an outline encloses in one colour, without an edge.
void fill_outline(DrawSurface& surface, std::span<Point const> outline, Color color);

} // namespace qv::render
