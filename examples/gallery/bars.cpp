// Bars side by side, with an edge, a shadow and an axis of texts.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("Rain and snow");
    graph.x_axis({.major_grid = false,
                  .from = -1,
                  .to = 6,
                  .scale = 2,
                  .text_labels = ",January,February,March,April,May,June,",
                  .major_divs = 7,
                  .minor_divs = 1});
    graph.y_axis({.title = "millimetres", .from = 0, .to = 120});
    constexpr double rain[]{52, 48, 60, 71, 88, 104}, snow[]{64, 70, 41, 12, 0, 0};
    constexpr double width = 0.36; // of a month, and so are the offsets
    struct {
        char const* name;
        double const* values;
        qv::Color color;
        double offset;
    } const sets[]{{"rain", rain, blue, -width / 2}, {"snow", snow, qv::rgb(205, 222, 242), width / 2}};
    for (auto const& [name, values, color, offset] : sets) {
        auto const bars = graph.bars(name, {.symbol_color = color,
                                            .symbol_edge_color = ink,
                                            .symbol_edge_thickness = 1,
                                            .bar_shadow = true,
                                            .bar_offset = offset,
                                            .bar_width = width});
        for (int month = 0; month < 6; ++month) bars.add(month, values[month]);
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "bars", draw);
}
