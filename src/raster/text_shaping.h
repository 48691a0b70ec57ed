// Text shaping: from a line of text to glyphs with their places.
#pragma once

#include "raster/typeface.h"

#include <functional>
#include <string>
#include <vector>

namespace qv::raster {

/// A glyph and its origin relative to the start of the line on the baseline, in em, y downwards.
struct PlacedGlyph {
    Typeface const* typeface = nullptr;
    std::uint32_t glyph = 0;
    float x = 0;
    float y = 0;
};

/// A line of text, independent of its size.
struct ShapedLine {
    std::vector<PlacedGlyph> glyphs;
    double width = 0; // em
};

/// Answers which face draws a character; never null.
using FaceChoice = std::function<Typeface const*(char32_t)>;

/// Shapes the characters run by run: a run has one face and one script. Runs stand from left to right in the
/// order of the text; within a run of a right-to-left script the glyphs run to the left.
ShapedLine shape_line(std::u32string const& characters, FaceChoice const& choose_face);

} // namespace qv::raster
