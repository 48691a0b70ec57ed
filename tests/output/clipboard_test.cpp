#include "pages.h"
#include "raster/bmp.h"
#include "raster/png.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;

TEST_CASE("copying replaces what was on the clipboard by the page as it was last shown") {
    headless::HeadlessHost host({120, 90});
    draw_dark_page(host.control());
    host.control().CopyToClipboard();
    auto const first = host.clipboard();
    CHECK(first.at("image/png") == raster::encode_png(host.picture()));
    CHECK(first.at("image/bmp") == raster::encode_bmp(host.picture()));
    host.control().PageColors({.Color1 = 255, .Color2 = 255});
    host.control().CopyToClipboard(); // not redrawn yet
    CHECK(host.clipboard().at("image/bmp") == first.at("image/bmp"));
    host.control().Refresh();
    host.control().CopyToClipboard();
    CHECK(host.clipboard().at("image/bmp") != first.at("image/bmp"));
}
