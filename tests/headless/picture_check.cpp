#include "picture_check.h"

#include "png_file.h"
#include "raster/FontLibrary.h"
#include "raster/file_replacement.h"
#include "raster/png.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace qv::testing {
namespace {

using raster::RasterSurface;

std::filesystem::path stored_picture(std::string const& name) {
    char const* const source = std::getenv("QV_SOURCE_DIR");
    return std::filesystem::path(source ? source : ".") / "tests" / "pictures" / (name + ".png");
}

// White where the pictures agree, black where they differ.
RasterSurface difference(RasterSurface const& a, raster::PixelBuffer const& b) {
    RasterSurface result(15, 15, nullptr);
    result.Move(a.Width(), a.Height());
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            auto const i = static_cast<std::size_t>(y) * static_cast<std::size_t>(a.width())
                           + static_cast<std::size_t>(x);
            if (i >= b.pixels.size() || a.pixels()[i] != b.pixels[i]) result.PSet({x * 15.0, y * 15.0});
        }
    return result;
}

} // namespace

bool shows_picture(RasterSurface const& surface, std::string const& name) {
    auto const file = stored_picture(name);
    raster::replace_file(name + "-actual.png", raster::encode_png(surface));
    if (!std::filesystem::exists(file)) {
        std::cerr << file << " is missing; look at " << name << "-actual.png and copy it there\n";
        return false;
    }
    raster::PixelBuffer const stored = test::read_png(file);
    bool const same = stored.width == surface.width() && stored.height == surface.height()
                      && std::equal(stored.pixels.begin(), stored.pixels.end(), surface.pixels().begin());
    if (same) {
        std::filesystem::remove(name + "-actual.png");
        return true;
    }
    std::filesystem::copy_file(file, name + "-expected.png",
                               std::filesystem::copy_options::overwrite_existing);
    raster::replace_file(name + "-difference.png", raster::encode_png(difference(surface, stored)));
    std::cerr << "compare " << name << "-expected.png, -actual.png and -difference.png in "
              << std::filesystem::current_path() << "\n";
    return false;
}

} // namespace qv::testing
