// Colour maps: what they say of values is true for the eye, whatever they are made of.
#include "render/grids/color_map.h"

#include "qvgraph/fault.h"
#include "render/grids/color_scale.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

using namespace qv;
using namespace qv::render;

namespace {

/// The lightness of CIELAB, 0 to 100, reckoned from the bytes of a colour: another model than the maps are
/// made in.
double cie_lightness(Color color) {
    auto const light = [&](int shift) {
        double const stored = (color >> shift & 0xFF) / 255.0;
        return stored <= 0.04045 ? stored / 12.92 : std::pow((stored + 0.055) / 1.055, 2.4);
    };
    double const luminance = 0.2126 * light(0) + 0.7152 * light(8) + 0.0722 * light(16);
    return luminance > 216.0 / 24389 ? 116 * std::cbrt(luminance) - 16 : luminance * 24389 / 27;
}

std::vector<double> lightness_of(ColorMap const& map) {
    std::vector<double> values;
    for (Color const color : map.colors) values.push_back(cie_lightness(color));
    return values;
}

/// The largest and the smallest step between neighbours, as shares of the mean.
struct Steps {
    double least = 1e9, most = 0;
};
Steps steps_of(ColorMap const& map, std::size_t first, std::size_t end) {
    std::vector<double> steps;
    for (std::size_t i = first + 1; i < end; ++i) steps.push_back(distance(map.seen[i - 1], map.seen[i]));
    double sum = 0;
    for (double const step : steps) sum += step;
    double const mean = sum / static_cast<double>(steps.size());
    return {*std::ranges::min_element(steps) / mean, *std::ranges::max_element(steps) / mean};
}

constexpr std::size_t last = ColorMap::size - 1, half = ColorMap::size / 2;
constexpr double byte_rounding = 0.4; // of a lightness

} // namespace

TEST_CASE("colours of values that grow become lighter and lighter, in even steps") {
    for (char const* name : {"night", "ember", "meadow"}) {
        CAPTURE(name);
        const ColorMap map = color_map(name);
        auto const lightness = lightness_of(map);
        for (std::size_t i = 4; i < lightness.size(); i += 4) CHECK(lightness[i] > lightness[i - 4]);
        for (std::size_t i = 1; i < lightness.size(); ++i)
            CHECK(lightness[i] > lightness[i - 1] - byte_rounding);
        CHECK(lightness[last] - lightness[0] > 65);
        const Steps steps = steps_of(map, 0, ColorMap::size);
        CHECK(steps.least > 0.97);
        CHECK(steps.most < 1.03);
        for (Oklab const& seen : map.seen) CHECK(distance(oklab(color_of(seen)), seen) < 0.012);
    }
}

TEST_CASE("colours about a middle are as light on both sides") {
    for (char const* name : {"tide", "moor"}) {
        CAPTURE(name);
        const ColorMap map = color_map(name);
        for (std::size_t i = 0; i < half; ++i) {
            CHECK(map.seen[i].lightness == doctest::Approx(map.seen[last - i].lightness).epsilon(1e-9));
            if (i > 0) CHECK(map.seen[i].lightness > map.seen[i - 1].lightness);
        }
        const Steps steps = steps_of(map, 0, half);
        CHECK(steps.least > 0.97);
        CHECK(steps.most < 1.03);
        // The step over the middle is none larger than the others, so no edge shows where there is none.
        CHECK(distance(map.seen[half - 1], map.seen[half])
              < 1.1 * distance(map.seen[half], map.seen[half + 1]));
        CHECK(distance(map.seen[0], map.seen[last]) > 0.2);
    }
}

TEST_CASE("colours that go round are level and close the circle") {
    const ColorMap map = color_map("dial");
    for (std::size_t i = 0; i < ColorMap::size; ++i) {
        CHECK(oklab(map.colors[i]).lightness == doctest::Approx(map.seen[0].lightness).epsilon(0.006));
        CHECK(distance(map.seen[i], map.seen[(i + 1) % ColorMap::size])
              == doctest::Approx(distance(map.seen[0], map.seen[1])).epsilon(1e-6));
    }
}

TEST_CASE("a colour and how it is seen lead to one another") {
    for (int red = 0; red < 256; red += 51)
        for (int green = 0; green < 256; green += 51)
            for (int blue = 0; blue < 256; blue += 51)
                CHECK(color_of(oklab(rgb(red, green, blue))) == rgb(red, green, blue));
}

TEST_CASE("lists of colours, turned maps, and texts that name none") {
    const ColorMap list = color_map(" #000000; #FF8000 , #ffffff");
    CHECK(list.colors[0] == 0);
    CHECK(list.colors[last] == rgb(255, 255, 255));
    CHECK(distance(oklab(list.colors[half]), oklab(rgb(255, 128, 0))) < 0.02);
    const ColorMap turned = color_map("- tide"), tide = color_map("tide");
    for (std::size_t i = 0; i < ColorMap::size; ++i) CHECK(turned.colors[i] == tide.colors[last - i]);
    CHECK(turned.order == ColorOrder::Diverging);
    CHECK(color_map("").colors == color_map("night").colors);
    for (char const* text :
         {"rainbow", "#000000", "#00000g; #ffffff", "#000000;;#ffffff", "--tide", "#000000;"}) {
        CAPTURE(text);
        CHECK_THROWS_AS(color_map(text), Fault);
    }
}

TEST_CASE("values find their colours on any range, and the ends beyond it") {
    document::Axis bar;
    bar.AxisXY = document::AxisKind::Color;
    bar.AxisValue1 = 10;
    bar.AxisValue2 = 1000;
    bar.AxisLog = true;
    const ColorScale logarithmic(&bar, {});
    CHECK(logarithmic.level(10) == 0);
    CHECK(logarithmic.level(100) == half);
    CHECK(logarithmic.level(1) == 0);
    CHECK(logarithmic.level(HUGE_VAL) == last);
    for (double const none : {0.0, -5.0, std::nan("")})
        CHECK(logarithmic.level(none) == ColorScale::no_color);
    std::swap(bar.AxisValue1, bar.AxisValue2);
    CHECK(ColorScale(&bar, {}).level(900) < 10);
    bar.AxisLog = false;
    bar.AxisValue1 = -1.7e308;
    bar.AxisValue2 = 1.7e308;
    CHECK(ColorScale(&bar, {}).level(0) == half);
    bar.AxisValue1 = bar.AxisValue2 = 3;
    CHECK(ColorScale(&bar, {}).level(3) == half);
}

TEST_CASE("of several values in a pixel a peak wins: the largest, or the one farthest from the middle") {
    document::Axis bar;
    bar.AxisXY = document::AxisKind::Color;
    bar.AxisValue1 = -10;
    bar.AxisValue2 = 10;
    auto const wins = [&](double one, double other) {
        const ColorScale scale(&bar, {});
        const ColorRanks ranks(scale, 0);
        return ranks.rank(scale.level(one)) > ranks.rank(scale.level(other));
    };
    CHECK(wins(9, -10));
    CHECK(wins(-10, std::nan("")));
    bar.AxisColors = "tide";
    CHECK(wins(-10, 9));
    CHECK(wins(9, -8));
    bar.AxisColors = "";
    std::swap(bar.AxisValue1, bar.AxisValue2);
    CHECK(wins(9, -10));
}
