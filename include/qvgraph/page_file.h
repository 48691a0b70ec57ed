// The page as a file, in the format that the file's name asks for.
#pragma once

#include "qvgraph/RasterSurface.h"
#include "qvgraph/Services.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qv::output {

using Bytes = std::vector<std::uint8_t>;

/// What a clipboard is given.
constexpr std::array<std::string_view, 3> clipboard_types{"image/bmp", "image/png", "image/svg+xml"};

/// The page, whose pixels are a RasterSurface, as the bytes of a media type: "image/bmp" (24 bits a pixel),
/// "image/png", and drawn anew in shapes and text "image/svg+xml", "application/pdf". Another type is
/// fault 5.
QV_EXPORT Bytes encode_page(std::string_view media_type, host::PagePicture const& page,
                            std::shared_ptr<raster::FontLibrary> const& fonts);

/// Writes the page: a name ending in .png, .svg or .pdf in that format, whatever the case of its letters, any
/// other as a bitmap. Failures are faults (53 to 76) that name file and reason.
QV_EXPORT void save_page(std::string const& file, host::PagePicture const& page,
                         std::shared_ptr<raster::FontLibrary> const& fonts);

} // namespace qv::output
