// Legends: before and behind the data, with an edge, with a gradient, without a ground.
#include "example.h"

#include <cmath>

using namespace qv::example;

namespace {

void draw_waves(qv::GraphHandle const& graph) {
    graph.x_axis({.from = 0, .to = 7});
    graph.y_axis({.from = -1.25, .to = 1.25});
    auto const sine = graph.line("sine", {.line_thickness = 3});
    auto const cosine = graph.line("cosine", {.line_dash = 2, .line_thickness = 3});
    for (double x = 0; x <= 6.3; x += 0.05) {
        sine.add(x, std::sin(x));
        cosine.add(x, std::cos(x));
    }
}

} // namespace

void draw(qv::qvGraph& page) {
    constexpr char const* titles[]{"in front", "behind the data", "gradient, thick edge",
                                   "no ground, no edge"};
    const qv::LegendOptions changes[]{{},
                                      {.in_front = false},
                                      {.color2 = qv::rgb(205, 222, 242),
                                       .gradient = 90,
                                       .edge_color = blue,
                                       .edge_thickness = 3,
                                       .left = 30},
                                      {.edge_thickness = 0, .transparent = true, .left = 66}};
    for (int i = 0; i < 4; ++i) {
        int const row = i / 2;
        auto const graph =
            page.graph(titles[i], {.left = 50 * (i % 2), .top = 50 * row, .width = 50, .height = 50});
        graph.legend({.color = white, .edge_color = gray, .edge_thickness = 1, .left = 62, .top = 22})
            .set(changes[i]);
        draw_waves(graph);
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "legends", draw);
}
