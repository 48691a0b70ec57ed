// Polar graphs: a line with symbols and an area on a compass, and functions of the angle in radians.
#include "example.h"

#include <cmath>

using namespace qv::example;

namespace {

void draw(qv::qvGraph& page) {
    // A compass: north at the top, clockwise.
    auto wind = page.graph(
        "Antenna, dB", {.polar = true, .polar_zero = 90, .polar_clockwise = true, .left = 0, .width = 50});
    wind.y_axis({.from = -30, .to = 0});
    auto lobe = wind.area("gain", {.symbol_color = qv::rgb(206, 224, 245), .line_color = blue});
    auto measured = wind.symbols("measured", {.symbol = 3, .symbol_color = orange});
    auto const gain = [](double degrees) {
        double const angle = degrees * 3.14159265358979 / 180;
        return 20 * std::log10(std::abs(std::cos(angle / 2) * std::cos(2.5 * std::sin(angle))) + 0.03);
    };
    for (int degrees = 0; degrees <= 360; degrees += 2) lobe.add(degrees, gain(degrees));
    for (int degrees = 0; degrees < 360; degrees += 15)
        measured.add(degrees, gain(degrees) + std::sin(degrees));

    auto roses =
        page.graph("Functions of the angle", {.polar = true, .polar_radians = true, .left = 50, .width = 50});
    roses.function("rose", "2 * abs(cos(2 * x))", {.color = red});
    roses.function("spiral", "x / 6.2832", {.color = green, .formula_from = 0, .formula_to = 12.566});
}

} // namespace

int main(int argc, char** argv) {
    return run(argc, argv, "polar", draw);
}
