// Filled areas: plain, and with each piece outlined.
#include "example.h"

#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("Tide and inflow");
    graph.x_axis({.title = "hours", .from = 0, .to = 24});
    graph.y_axis({.title = "metres", .from = 0, .to = 6});
    auto const tide = graph.area("high water", {.symbol_color = qv::rgb(205, 222, 242), .line_color = blue});
    for (double t = 0; t <= 24; t += 0.1) tide.add(t, 3 + 1.4 * std::cos(t * 0.506));
    auto const inflow = graph.area(
        "inflow by the hour",
        {.symbol_color = qv::rgb(214, 236, 220), .line_style = 5, .line_color = green, .line_thickness = 1});
    for (int t = 0; t <= 24; ++t) inflow.add(t, 1 + 0.6 * std::sin(t * 0.4) + 0.1 * (t % 3));
}

int main(int argc, char** argv) {
    return run(argc, argv, "areas", draw);
}
