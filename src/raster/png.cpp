#include "raster/png.h"

#include "qvgraph/RasterSurface.h"
#include "qvgraph/fault.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <csetjmp>

#include <png.h>

namespace qv::raster {
namespace {

constexpr double metres_per_twip = 0.0254 / 1440;

std::uint32_t per_metre(double twips_per_pixel) {
    double const density = std::clamp(1 / (twips_per_pixel * metres_per_twip), 0.0, 1e9);
    return static_cast<std::uint32_t>(std::lround(density));
}

// The library calls these from C, through which no exception may pass.
void append_bytes(png_structp png, png_bytep bytes, png_size_t count) noexcept {
    auto& target = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    try {
        target.insert(target.end(), bytes, bytes + count);
        return;
    } catch (std::exception const&) {
    }
    png_error(png, "out of memory");
}

// The library's own function would write to standard error.
[[noreturn]] void leave(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void ignore_warning(png_structp, png_const_charp) {}

struct Writer {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignore_warning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    Writer() = default;
    Writer(Writer const&) = delete;
    Writer& operator=(Writer const&) = delete;
    ~Writer() { png_destroy_write_struct(&png, &info); }
};

// The functions that a failure leaves by longjmp hold nothing that needs a destructor.
bool write_picture(Writer& writer, RasterSurface const& surface, std::vector<std::uint8_t>& bytes) {
    if (writer.info == nullptr || setjmp(png_jmpbuf(writer.png)) != 0) return false;
    png_set_write_fn(writer.png, &bytes, append_bytes, nullptr);
    png_set_IHDR(writer.png, writer.info, static_cast<png_uint_32>(surface.width()),
                 static_cast<png_uint_32>(surface.height()), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(writer.png, writer.info, per_metre(surface.TwipsPerPixelX()),
                 per_metre(surface.TwipsPerPixelY()), PNG_RESOLUTION_METER);
    // Flat colours and repeated rows compress well without trying every filter.
    png_set_filter(writer.png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE | PNG_FILTER_UP);
    png_set_compression_level(writer.png, 5);
    png_write_info(writer.png, writer.info);
    // 0xFFRRGGBB lies in memory as B G R x on little-endian machines and as x R G B on others.
    if constexpr (std::endian::native == std::endian::little) {
        png_set_bgr(writer.png);
        png_set_filler(writer.png, 0, PNG_FILLER_AFTER);
    } else {
        png_set_filler(writer.png, 0, PNG_FILLER_BEFORE);
    }
    std::uint32_t const* row = surface.pixels().data();
    for (int y = 0; y < surface.height(); ++y, row += surface.stride())
        png_write_row(writer.png, reinterpret_cast<png_const_bytep>(row));
    png_write_end(writer.png, nullptr);
    return true;
}

} // namespace

std::vector<std::uint8_t> encode_png(RasterSurface const& surface) {
    std::vector<std::uint8_t> bytes;
    Writer writer;
    if (!write_picture(writer, surface, bytes))
        raise_fault(FaultNumber::OutOfMemory, "Not enough memory to write the picture as PNG");
    return bytes;
}

} // namespace qv::raster
