// PDF files of a surface of shapes.
#pragma once

#include <cstdint>
#include <vector>

namespace qv::vector {

class VectorSurface;

/// The page as a PDF document of one page of its size on paper. Text is text, in the fonts that the page was
/// laid out with, embedded. A page that cannot be drawn is fault 57.
std::vector<std::uint8_t> pdf_of(VectorSurface const& page);

} // namespace qv::vector
