// Every symbol: ten shapes, with and without an edge; numbers, letters and characters.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("Symbols");
    graph.x_axis({.title = "DataSymbol of the shapes", .from = 1, .to = 12});
    graph.y_axis({.show_labels = false, .from = 0, .to = 6});
    const qv::Color colors[]{blue, orange, green, red, purple};
    for (int row = 0; row < 3; ++row)
        for (int symbol = 2; symbol <= 11; ++symbol) {
            qv::Color const color = colors[symbol % 5];
            graph
                .symbols("", {.symbol = symbol,
                              .symbol_size = 2 + row,
                              .symbol_color = row == 1 ? white : color,
                              .symbol_edge_color = row == 1 ? color : ink,
                              .symbol_edge_thickness = row})
                .add(symbol, 5 - row);
        }
    struct {
        int symbol;
        double y;
        char const* font;
    } const texts[]{{-1, 2, "Arial|10|Bold"}, {-2, 1.3, "Arial|10"}, {'*', 0.6, "Arial|14|Bold"}};
    for (auto const& [symbol, y, font] : texts) {
        auto const set = graph.symbols("", {.symbol = symbol, .symbol_color = ink, .text_font = font});
        for (int x = 2; x <= 11; ++x) set.add(x, y);
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "symbols", draw);
}
