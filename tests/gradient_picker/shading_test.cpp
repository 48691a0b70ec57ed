// Shades, angles and the list of named colours.
#include "gradient_picker/shading.h"

#include "gradient_picker/color_names.h"

#include <doctest/doctest.h>

#include <map>
#include <string_view>

namespace qv::gradient_picker {
namespace {

TEST_CASE("a shade goes to white above 0 and to black below, rounding halves to even") {
    struct Row {
        Color color;
        float shade;
        Color shaded;
    };
    Color const color = rgb(10, 100, 255);
    const Row rows[] = {{color, 0, color},
                        {color, 1, rgb(255, 255, 255)},
                        {color, -1, rgb(0, 0, 0)},
                        {color, 0.5F, rgb(132, 178, 255)}, // 132.5 and 177.5
                        {color, -0.5F, rgb(5, 50, 128)},   // 127.5
                        {color, 7, rgb(255, 255, 255)},
                        {color, -7, rgb(0, 0, 0)},
                        {system_color(15), 0, system_color(15)},
                        {system_color(15), -0.2F, rgb(12, 0, 0)},
                        {-1, -0.5F, rgb(128, 128, 128)}};
    for (Row const& row : rows) {
        CAPTURE(row.color);
        CAPTURE(row.shade);
        CHECK(ShadeColor(row.color, row.shade) == row.shaded);
        CHECK(AdjustColor(row.color, -row.shade) == row.shaded);
    }
}

TEST_CASE("a place's angle grows counter-clockwise from the right, straight up and down included") {
    struct Row {
        double dx, dy;
        int degrees;
    };
    for (const Row row : {Row{10, 0, 0},
                          {10, 10, 45},
                          {0, 10, 90},
                          {-10, 10, 135},
                          {-10, 0, 180},
                          {-10, -10, 225},
                          {0, -0.1, 270},
                          {10, -10, 315},
                          {1, 1000, 90},
                          {1, -1000, 270},
                          {-1, 1000, 90},
                          {-1, -1000, 270},
                          {1000, -1, 0},
                          {-1000, 1, 180}}) {
        CAPTURE(row.dx);
        CAPTURE(row.dy);
        CHECK(ArcTanDeg(row.dx, row.dy) == row.degrees);
    }
    CHECK_FALSE(ArcTanDeg(0, 0).has_value());
}

TEST_CASE("the named colours keep their order and have red in the low byte") {
    auto const colors = color_names();
    REQUIRE(colors.size() == 140);
    std::map<std::string_view, Color> by_name;
    for (auto const& [name, color] : colors) by_name[name] = color;
    CHECK(by_name.size() == 140);
    CHECK(colors[0].name == "AliceBlue");
    CHECK(colors[7].name == "Black");
    CHECK(colors[139].name == "YellowGreen");
    CHECK(by_name.at("Red") == 255);
    CHECK(by_name.at("Blue") == 16711680);
    CHECK(by_name.at("Fuchia") == 16711935);
    CHECK(by_name.at("MediumspringGreen") == rgb(0x00, 0xFA, 0x9A));
    CHECK(by_name.at("Chocolate") == rgb(0xD2, 0x69, 0x1E));
}

} // namespace
} // namespace qv::gradient_picker
