// Pages of shapes, drawn by other programs, and how far such a picture is from another.
#pragma once

#include "png_file.h"
#include "printed_sheet.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <filesystem>

namespace qv::test {

/// An SVG or PDF file at 96 dots per inch.
inline raster::PixelBuffer rendered(std::filesystem::path const& file) {
    const TemporaryFolder folder;
    const std::string page = (folder.path() / "page").string();
    if (file.extension() == ".svg")
        run("rsvg-convert -d 96 -p 96 '" + file.string() + "' -o '" + page + ".png'");
    else
        run("pdftoppm -r 96 -png -singlefile '" + file.string() + "' '" + page + "'");
    return read_png(page + ".png");
}

/// Mean difference of a colour channel, 0 to 1.
inline double mean_difference(raster::PixelBuffer const& a, raster::PixelBuffer const& b) {
    REQUIRE(a.width == b.width);
    REQUIRE(a.height == b.height);
    double sum = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        for (int shift = 0; shift < 24; shift += 8)
            sum += std::abs(static_cast<int>(a.pixels[i] >> shift & 0xFF)
                            - static_cast<int>(b.pixels[i] >> shift & 0xFF));
    return sum / (255.0 * 3 * static_cast<double>(a.pixels.size()));
}

} // namespace qv::test
