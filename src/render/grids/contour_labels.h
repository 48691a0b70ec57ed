// Where the values of contour lines stand along them.
#pragma once

#include "qvgraph/geometry.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace qv::render {

struct ContourLabel {
    std::size_t level = 0;
    Point middle;                   // twips
    std::int16_t angle_degrees = 0; // of the text, counter-clockwise, -90 to 90
};

/// Finds places for the labels of one data set after the other, level by level, apart from one another.
class LabelPlaces {
public:
    /// Labels lie within `plot`; all lengths are twips.
    LabelPlaces(Box const& plot, double line_height) : plot_(plot), line_height_(line_height) {}

    /// Puts labels of this width on lines, apart by places that are not numbers, where these are straightest,
    /// and cuts the lines there. Lines too short or too bent for a label stay whole.
    void put(std::vector<Point>& lines, std::size_t level, double width, std::vector<ContourLabel>& labels);

private:
    struct Gap {
        double from = 0; // along the line
        double to = 0;
    };
    void put_on_one(std::span<Point const> line, std::size_t level, double width,
                    std::vector<ContourLabel>& labels, std::vector<Point>& cut);
    bool has_room(Point middle, double width) const;

    Box plot_;
    double line_height_;
    std::vector<ContourLabel> taken_;
    std::vector<double> taken_widths_;
};

} // namespace qv::render
