// Colour tables: the colours on the way from one colour to another.
#pragma once

#include "qvgraph/geometry.h"

#include <vector>

namespace qv::render {

struct ColorBlend {
    Color from = 0; // bits 24 to 31 of both colours mean nothing here
    Color to = 0;
    double exponent = 1;    // of the way; above 1 the table stays near `from` longer
    bool symmetric = false; // forth and back, but for the last entry, which is `to` in every table
};

/// `count` colours, at least 2, from the first colour to the last. Entry i of n is i / n of the way, raised
/// to the exponent. An exponent that is not a number is fault 6.
std::vector<Color> color_table(ColorBlend const& blend, int count);

} // namespace qv::render
