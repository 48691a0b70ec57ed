#include "qvgraph/page_file.h"

#include "qvgraph/RasterSurface.h"
#include "raster/bmp.h"
#include "raster/file_replacement.h"
#include "raster/png.h"
#include "vector/VectorSurface.h"
#include "vector/pdf.h"
#include "vector/svg.h"

#include "qvgraph/fault.h"

#include <algorithm>

namespace qv::output {
namespace {

using Fonts = std::shared_ptr<raster::FontLibrary>;

constexpr std::size_t longest_file_of_shapes = 1000000; // bytes

raster::RasterSurface const& pixels_of(host::PagePicture const& page) {
    return static_cast<raster::RasterSurface const&>(page.pixels());
}

struct Format {
    std::string_view ending; // of the last row: any
    std::string_view media_type;
    Bytes (*encode)(host::PagePicture const& page, Fonts const& fonts);
};

/// The page in shapes; as its picture where they would make too long a file.
Bytes encode_shapes(host::PagePicture const& page, Fonts const& fonts,
                    Bytes (*encode)(vector::VectorSurface const&)) {
    raster::RasterSurface const& pixels = pixels_of(page);
    auto const make_surface = [&] {
        return std::make_unique<vector::VectorSurface>(pixels.TwipsPerPixelX(), pixels.TwipsPerPixelY(),
                                                       fonts);
    };
    auto const drawn = page.redrawn(make_surface);
    auto& shapes = static_cast<vector::VectorSurface&>(*drawn);
    if (!shapes.is_overfull()) {
        Bytes file = encode(shapes);
        if (file.size() <= longest_file_of_shapes) return file;
    }
    shapes.show_picture(pixels);
    return encode(shapes);
}

Bytes svg_of(vector::VectorSurface const& shapes) {
    const std::string text = vector::svg_of(shapes);
    return {text.begin(), text.end()};
}

constexpr std::array formats{
    Format{".png", "image/png",
           [](auto const& page, Fonts const&) { return raster::encode_png(pixels_of(page)); }},
    Format{".svg", "image/svg+xml",
           [](auto const& page, Fonts const& fonts) { return encode_shapes(page, fonts, svg_of); }},
    Format{".pdf", "application/pdf",
           [](auto const& page, Fonts const& fonts) { return encode_shapes(page, fonts, vector::pdf_of); }},
    Format{"", "image/bmp",
           [](auto const& page, Fonts const&) { return raster::encode_bmp(pixels_of(page)); }},
};

bool ends_with(std::string_view name, std::string_view ending) {
    if (name.size() < ending.size()) return false;
    return std::ranges::equal(name.substr(name.size() - ending.size()), ending, [](char letter, char wanted) {
        return (letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter) == wanted;
    });
}

} // namespace

Bytes encode_page(std::string_view media_type, host::PagePicture const& page, Fonts const& fonts) {
    auto const format = std::ranges::find(formats, media_type, &Format::media_type);
    if (format == formats.end())
        raise_fault(FaultNumber::InvalidProcedureCall, "A page cannot be had as " + std::string(media_type));
    return format->encode(page, fonts);
}

void save_page(std::string const& file, host::PagePicture const& page, Fonts const& fonts) {
    auto const format =
        std::ranges::find_if(formats, [&](Format const& f) { return ends_with(file, f.ending); });
    raster::replace_file(file, format->encode(page, fonts));
}

} // namespace qv::output
