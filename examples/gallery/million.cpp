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
    plain_graph(page, "A million points", "sample", "");
    page.GraphPosition({.Left = 0, .Top = 0, .Width = 100, .Height = 55});
    std::vector<double> x(1000000), y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<double>(i);
        double const t = x[i] / 1e6;
        y[i] = std::sin(9 * t) * (1 - t) + 0.4 * t * noise(seed) * noise(seed);
    }
    page.NewDataSet("");
    page.DataLineThickness(1);
    page.AddDataPoints(x, y);
    axis_range(page, 0, 0, 1e6, 5, 2);
    axis_range(page, 1, -1, 1, 4);
    plain_graph(page, "The last 300 of 5000", "second", "");
    page.GraphPosition({.Left = 0, .Top = 55, .Width = 100, .Height = 45});
    page.NewDataSet("");
    page.DataLineThickness(1);
    double value = 0;
    for (int second = 0; second < 5000; ++second) {
        page.AddDataPoint(second, value += noise(seed));
        if (second >= 300) page.DropDataPoints(1);
    }
    axis_range(page, 0, 4700, 5000, 6, 5);
    axis_range(page, 1, 0, 25, 5);
}

int main(int argc, char** argv) {
    return run(argc, argv, "million", draw);
}
