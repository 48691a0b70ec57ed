// What a PDF reader makes of a printed sheet.
#pragma once

#include "png_file.h"
#include "qvgraph/geometry.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace qv::test {

struct PrintedSheet {
    double width_mm = 0;
    double height_mm = 0;
    Box ink_mm; // what is not white
};

inline void run(std::string const& command) {
    INFO(command);
    REQUIRE(std::system(command.c_str()) == 0);
}

/// Draws the only page of a PDF file at 300 dots per inch and measures it.
inline PrintedSheet measure_sheet(std::filesystem::path const& pdf) {
    constexpr double mm_per_dot = 25.4 / 300;
    const TemporaryFolder folder;
    const std::string page = (folder.path() / "page").string();
    run("pdftoppm -r 300 -png -singlefile '" + pdf.string() + "' '" + page + "'");
    const raster::PixelBuffer pixels = read_png(page + ".png");
    int left = pixels.width, top = pixels.height, right = 0, bottom = 0;
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x) {
            if (pixels.row(y)[x] == 0xFFFFFFFF) continue;
            left = std::min(left, x);
            right = std::max(right, x + 1);
            top = std::min(top, y);
            bottom = std::max(bottom, y + 1);
        }
    return {pixels.width * mm_per_dot,
            pixels.height * mm_per_dot,
            {left * mm_per_dot, top * mm_per_dot, (right - left) * mm_per_dot, (bottom - top) * mm_per_dot}};
}

/// The picture that was printed, as the file keeps it.
inline raster::PixelBuffer picture_in(std::filesystem::path const& pdf) {
    const TemporaryFolder folder;
    run("pdfimages -png '" + pdf.string() + "' '" + (folder.path() / "picture").string() + "'");
    return read_png(folder.path() / "picture-000.png");
}

inline void check_box(Box const& found, Box const& wanted, double tolerance) {
    CAPTURE(found.left);
    CAPTURE(found.top);
    CAPTURE(found.width);
    CAPTURE(found.height);
    CHECK(std::abs(found.left - wanted.left) <= tolerance);
    CHECK(std::abs(found.top - wanted.top) <= tolerance);
    CHECK(std::abs(found.right() - wanted.right()) <= tolerance);
    CHECK(std::abs(found.bottom() - wanted.bottom()) <= tolerance);
}

} // namespace qv::test
