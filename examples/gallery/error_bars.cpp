// Error bars upright and lying, and points with names.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("Five stars");
    graph.x_axis({.title = "distance, light years", .from = 0, .to = 30});
    graph.y_axis({.title = "magnitude", .from = -2, .to = 1.5, .reverse = true}); // the brighter, the higher
    auto const stars =
        graph.symbols("distance uncertain", {.symbol = 3, .symbol_size = 2.4F, .text_font = "Arial|8"});
    stars.add(8.6, -1.46, -1.4, "Sirius"); // an error below zero lies
    stars.add(11.5, 0.34, -0.9, "Procyon");
    stars.add(16.7, 0.76, -2.1, "Altair");
    stars.add(25, 0.03, -1.2, "Vega");
    auto const others = graph.symbols("magnitude uncertain", {.symbol = 5, .symbol_size = 2.8F});
    others.add(21, -0.7, 0.25);
    others.add(13.5, -0.9, 0.4);
}

int main(int argc, char** argv) {
    return run(argc, argv, "error_bars", draw);
}
