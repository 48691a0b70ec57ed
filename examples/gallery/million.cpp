// A million points as one line, and the last moments of a live series whose oldest points are dropped.
#include "example.h"

#include <cmath>
#include <cstdint>
#include <vector>

using namespace qv::example;

namespace {

/// Noise between -1 and 1, the same on every machine.
double noise(std::uint32_t& seed) {
    seed = seed * 1664525 + 1013904223;
    return static_cast<double>(seed >> 8) / 8388608 - 1;
}

} // namespace

void draw(qv::qvGraph& page) {
    std::uint32_t seed = 1;
    auto const whole = page.graph("A million points", {.left = 0, .top = 0, .width = 100, .height = 55});
    whole.x_axis({.title = "sample", .from = 0, .to = 1e6});
    whole.y_axis({.from = -1, .to = 1});
    std::vector<double> x(1000000), y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<double>(i);
        double const t = x[i] / 1e6;
        y[i] = std::sin(9 * t) * (1 - t) + 0.4 * t * noise(seed) * noise(seed);
    }
    whole.line("", {.line_thickness = 1}).add(x, y);

    auto const live = page.graph("The last 300 of 5000", {.left = 0, .top = 55, .width = 100, .height = 45});
    auto const walk = live.line("", {.line_thickness = 1});
    walk.keep_latest(300);
    double value = 0;
    for (int second = 0; second < 5000; ++second) walk.add(second, value += noise(seed));
    live.x_axis({.title = "second", .from = 4700, .to = 5000}); // behind the points, which widen ranges
    live.y_axis({.from = 0, .to = 25});
}

int main(int argc, char** argv) {
    return run(argc, argv, "million", draw);
}
