// SVG files of a surface of shapes.
#pragma once

#include <string>

namespace qv::vector {

class VectorSurface;

/// The page as an SVG 1.1 document in UTF-8, with text as text. Its width and height are those of the page on
/// paper, in points; one unit inside is one pixel of the page.
std::string svg_of(VectorSurface const& page);

} // namespace qv::vector
