// A smooth curve through a few points, beside the straight line.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("A day's temperatures");
    graph.x_axis({.title = "hour"});
    graph.y_axis({.title = "degrees Celsius"});
    auto const straight = graph.line("straight", {.line_style = 2, .line_color = ink, .line_thickness = 1});
    auto const spline = graph.line("natural spline", {.symbol = 3,
                                                      .symbol_size = 2.2F,
                                                      .symbol_color = white,
                                                      .symbol_edge_color = red,
                                                      .symbol_edge_thickness = 2,
                                                      .line_style = 3,
                                                      .line_color = red});
    constexpr double degrees[]{11.2, 10.1, 9.4, 12.8, 17.9, 21.4, 22.6, 19.7, 14.8};
    for (int i = 0; i < 9; ++i)
        for (auto const& curve : {straight, spline}) curve.add(3 * i, degrees[i]);
}

int main(int argc, char** argv) {
    return run(argc, argv, "smooth_curve", draw);
}
