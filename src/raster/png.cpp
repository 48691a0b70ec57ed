#include "raster/png.h"

#include "qvgraph/RasterSurface.h"
#include "qvgraph/fault.h"
#include "raster/file_replacement.h"

#include <bit>
#include <csetjmp>
#include <cstring>

#include <png.h>

namespace qv::raster {
namespace {

constexpr double metres_per_twip = 0.0254 / 1440;
constexpr std::uint32_t largest_side = 65535;

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

struct ByteSource {
    std::uint8_t const* next;
    std::size_t left;
};

void take_bytes(png_structp png, png_bytep bytes, png_size_t count) {
    auto& source = *static_cast<ByteSource*>(png_get_io_ptr(png));
    if (count > source.left) png_error(png, "unexpected end of file");
    std::memcpy(bytes, source.next, count);
    source.next += count;
    source.left -= count;
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

struct Reader {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignore_warning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    Reader() = default;
    Reader(Reader const&) = delete;
    Reader& operator=(Reader const&) = delete;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
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

bool read_header(Reader& reader, ByteSource& source, PngPicture& picture) {
    if (reader.info == nullptr || setjmp(png_jmpbuf(reader.png)) != 0) return false;
    png_set_user_limits(reader.png, largest_side, largest_side);
    png_set_read_fn(reader.png, &source, take_bytes);
    png_read_info(reader.png, reader.info);
    picture.buffer.width = static_cast<int>(png_get_image_width(reader.png, reader.info));
    picture.buffer.height = static_cast<int>(png_get_image_height(reader.png, reader.info));
    picture.pixels_per_metre_x = png_get_x_pixels_per_meter(reader.png, reader.info);
    picture.pixels_per_metre_y = png_get_y_pixels_per_meter(reader.png, reader.info);
    png_set_expand(reader.png);
    png_set_strip_16(reader.png);
    png_set_strip_alpha(reader.png);
    png_set_gray_to_rgb(reader.png);
    if constexpr (std::endian::native == std::endian::little) {
        png_set_bgr(reader.png);
        png_set_filler(reader.png, 0xFF, PNG_FILLER_AFTER);
    } else {
        png_set_filler(reader.png, 0xFF, PNG_FILLER_BEFORE);
    }
    int const passes = png_set_interlace_handling(reader.png);
    png_read_update_info(reader.png, reader.info);
    return passes > 0;
}

bool read_rows(Reader& reader, png_bytepp rows) {
    if (setjmp(png_jmpbuf(reader.png)) != 0) return false;
    png_read_image(reader.png, rows);
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

void write_png(std::string const& path, RasterSurface const& surface) {
    replace_file(path, encode_png(surface));
}

PngPicture read_png(std::string const& path) {
    const std::vector<std::uint8_t> bytes = read_file(path);
    ByteSource source{bytes.data(), bytes.size()};
    PngPicture picture;
    Reader reader;
    auto const fail = [&] { raise_fault(FaultNumber::DeviceError, path + " is not a complete PNG file"); };
    if (!read_header(reader, source, picture)) fail();
    PixelBuffer& buffer = picture.buffer;
    buffer.pixels.resize(static_cast<std::size_t>(buffer.width) * static_cast<std::size_t>(buffer.height));
    std::vector<png_bytep> rows;
    for (int y = 0; y < buffer.height; ++y) rows.push_back(reinterpret_cast<png_bytep>(buffer.row(y)));
    if (!read_rows(reader, rows.data())) fail();
    return picture;
}

} // namespace qv::raster
