#include "vector/symbol_cloud.h"

#include "vector/symbol_shapes.h"

#include <doctest/doctest.h>

#include <random>

using namespace qv;
using namespace qv::vector;

namespace {

constexpr raster::PixelBox page{0, 0, 1200, 800};

SymbolCloud random_cloud(int count, unsigned seed) {
    SymbolCloud cloud(page);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> x(0, page.width()), y(0, page.height());
    for (int i = 0; i < count; ++i) cloud.add({x(random), y(random)});
    return cloud;
}

} // namespace

TEST_CASE("a few symbols keep their exact places, those beyond the box are left out") {
    SymbolCloud cloud({10, 10, 20, 20});
    for (const PixelPoint point :
         {PixelPoint{12.3, 14.7}, PixelPoint{9.4, 15}, PixelPoint{15, 20}, PixelPoint{std::nan(""), 15},
          PixelPoint{12.3, 14.7}, PixelPoint{9.6, 19.4}})
        cloud.add(point);
    auto const runs = cloud.runs({.gap = 3});
    REQUIRE(runs.size() == 3);
    CHECK(runs[0].centre == PixelPoint{12.3, 14.7});
    CHECK(runs[2].centre == PixelPoint{9.6, 19.4});
    CHECK(runs[2].length == 0);
}

TEST_CASE("of many symbols no marked pixel is lost, and none is far from its run") {
    for (int const coarsest : {1, 4}) {
        CAPTURE(coarsest);
        const SymbolCloud cloud = random_cloud(300000, 7);
        auto const runs = cloud.runs({.gap = 2, .coarsest = coarsest});
        CHECK((runs.size() > 25000) == (coarsest == 1)); // finer than allowed they would be welcome
        std::vector<bool> covered(static_cast<std::size_t>(page.width() * page.height()));
        for (SymbolRun const& run : runs)
            for (double x = run.centre.x; x <= run.centre.x + run.length; ++x)
                covered[static_cast<std::size_t>(run.centre.y) * 1200 + static_cast<std::size_t>(x)] = true;
        std::mt19937 random(7);
        std::uniform_real_distribution<double> x(0, page.width()), y(0, page.height());
        int lost = 0;
        for (int i = 0; i < 300000; ++i) {
            // Rows and columns may stand for those after them.
            int const column = whole_pixel(x(random)), row = whole_pixel(y(random));
            bool found = column >= page.right || row >= page.bottom;
            for (int up = 0; up < coarsest && up <= row; ++up)
                for (int left = 0; left < coarsest && left <= column; ++left)
                    found = found || covered[static_cast<std::size_t>((row - up) * 1200 + column - left)];
            lost += found ? 0 : 1;
        }
        CHECK(lost == 0);
    }
}

TEST_CASE("symbols on every pixel are one run a row") {
    SymbolCloud cloud(page);
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x) cloud.add({1.0 * x, 1.0 * y});
    auto const runs = cloud.runs({});
    REQUIRE(runs.size() == 800);
    CHECK(runs[5].centre == PixelPoint{0, 5});
    CHECK(runs[5].length == 1199);
}
