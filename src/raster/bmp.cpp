#include "raster/bmp.h"

#include "qvgraph/RasterSurface.h"
#include "qvgraph/fault.h"

#include <cmath>
#include <limits>

namespace qv::raster {
namespace {

constexpr std::size_t file_header_size = 14;
constexpr std::size_t picture_header_size = 40;
constexpr std::size_t headers_size = file_header_size + picture_header_size;
constexpr std::size_t bits_per_pixel = 24;
constexpr double twips_per_metre = twips_per_inch / 0.0254;

std::size_t row_size(RasterSurface const& surface) {
    return (static_cast<std::size_t>(surface.width()) * bits_per_pixel / 8 + 3) / 4 * 4;
}

class LittleEndianBytes {
public:
    explicit LittleEndianBytes(std::size_t expected) { bytes_.reserve(expected); }
    void put(std::size_t value, int count) {
        for (int i = 0; i < count; ++i) bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
    void fill_up(std::size_t multiple_of, std::size_t from) {
        while ((bytes_.size() - from) % multiple_of != 0) bytes_.push_back(0);
    }
    std::vector<std::uint8_t> take() { return std::move(bytes_); }

private:
    std::vector<std::uint8_t> bytes_;
};

void put_headers(LittleEndianBytes& file, RasterSurface const& surface, std::size_t pixels_size) {
    auto const per_metre = [](double twips_per_pixel) {
        return static_cast<std::size_t>(std::lround(twips_per_metre / twips_per_pixel));
    };
    file.put('B', 1);
    file.put('M', 1);
    file.put(headers_size + pixels_size, 4);
    file.put(0, 4);
    file.put(headers_size, 4);
    file.put(picture_header_size, 4);
    file.put(static_cast<std::size_t>(surface.width()), 4);
    file.put(static_cast<std::size_t>(surface.height()), 4); // positive: the bottom row comes first
    file.put(1, 2);                                          // planes
    file.put(bits_per_pixel, 2);
    file.put(0, 4); // not compressed
    file.put(pixels_size, 4);
    file.put(per_metre(surface.TwipsPerPixelX()), 4);
    file.put(per_metre(surface.TwipsPerPixelY()), 4);
    file.put(0, 4); // no palette
    file.put(0, 4);
}

} // namespace

std::vector<std::uint8_t> encode_bmp(RasterSurface const& surface) {
    std::size_t const pixels_size = row_size(surface) * static_cast<std::size_t>(surface.height());
    if (headers_size + pixels_size > std::numeric_limits<std::int32_t>::max())
        raise_fault(FaultNumber::OutOfMemory,
                    "The picture is too large for a bitmap file; write a .png file");
    LittleEndianBytes file(headers_size + pixels_size);
    put_headers(file, surface, pixels_size);
    std::span<std::uint32_t const> const pixels = surface.pixels();
    auto const width = static_cast<std::size_t>(surface.width());
    for (auto y = static_cast<std::size_t>(surface.height()); y-- > 0;) {
        for (std::uint32_t const pixel :
             pixels.subspan(y * static_cast<std::size_t>(surface.stride()), width))
            file.put(pixel, 3); // 0xRRGGBB: blue comes first
        file.fill_up(4, headers_size);
    }
    return file.take();
}

} // namespace qv::raster
