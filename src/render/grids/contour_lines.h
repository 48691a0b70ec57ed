// Contour lines: where the values of a grid, taken at the middles of its cells, pass a level.
#pragma once

#include "document/Grid.h"
#include "qvgraph/geometry.h"

#include <cstddef>
#include <span>
#include <vector>

namespace qv::render {

/// Places are column and row numbers: 0 is the middle of the first cell, 0.5 half the way to the next. Of
/// each place at least one number is whole. A closed line ends where it begins.
struct ContourLine {
    std::size_t level = 0; // number of its level
    std::vector<Point> places;
    Point low, high; // the corners of the box that holds them
};

/// The lines of rising levels, each as long as it goes on. Between four neighbouring middles values are those
/// of the bilinear surface, whose saddle decides which corners are joined. Lines end at the outermost middles
/// and at cells without a value; between values of one sign a logarithmic scale, `is_log`, divides by
/// logarithms.
std::vector<ContourLine> contour_lines(document::Grid const& grid, std::span<double const> levels,
                                       bool is_log);

} // namespace qv::render
