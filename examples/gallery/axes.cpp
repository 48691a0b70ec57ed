// Axes: two on the left, one on the far side; logarithmic, reversed; ticks at both ends; grids.
#include "example.h"

#include <algorithm>
#include <cmath>

using namespace qv::example;

namespace {

// An axis takes the colour of its data.
qv::AxisOptions colored(char const* title, qv::Color color, double from, double to) {
    return {
        .title = title, .color = color, .label_color = color, .title_color = color, .from = from, .to = to};
}

} // namespace

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("Air above the ground");
    graph.x_axis({.title = "height, km",
                  .ticks_both_ends = true,
                  .ticks_inside = true,
                  .ticks_outside = false,
                  .from = 0,
                  .to = 40});
    auto const pressures = graph.y_axis(colored("pressure, hPa", blue, 1, 1000));
    pressures.set({.minor_grid = true, .log = true});
    auto const temperatures = graph.add_y_axis(colored("temperature, °C", red, -60, 20));
    auto const boiling_points = graph.add_y_axis(colored("boiling point of water, °C", green, 0, 100));
    boiling_points.set({.far_side = true, .reverse = true});
    auto const pressure = graph.line("", {.axis = pressures, .color = blue});
    auto const temperature = graph.line("", {.axis = temperatures, .color = red});
    auto const boiling = graph.line("", {.axis = boiling_points, .color = green});
    for (double h = 0; h <= 40; h += 0.5) {
        pressure.add(h, 1013 * std::exp(-h / 7));
        temperature.add(h, h < 11 ? 15 - 6.5 * h : h < 20 ? -56.5 : -56.5 + 1.6 * (h - 20));
        boiling.add(h, std::max(100 - 24 * h / 7, 0.0));
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "axes", draw);
}
