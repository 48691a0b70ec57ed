// Lines in steps, with dashes of their own, translucent, and with a symbol at every n-th point.
#include "example.h"

#include <cmath>
#include <string>

using namespace qv::example;

namespace {

void draw_steps(qv::GraphHandle const& graph) {
    graph.x_axis({.title = "steps: before, after and halfway between points"});
    graph.y_axis({.from = -2, .to = 16});
    for (int const steps : {1, 2, 3}) {
        auto const line =
            graph.line(std::to_string(steps), {.symbol = 3, .line_thickness = 2, .steps = steps});
        for (int x = 0; x <= 8; ++x) line.add(x, 3 * (3 - steps) + std::sin(x * 0.9));
    }
}

void draw_dashes(qv::GraphHandle const& graph) {
    graph.x_axis({.title = "dashes in widths of the line"});
    graph.y_axis({.from = -5, .to = 9});
    int height = 0;
    for (char const* const pattern : {"8 3", "0 2", "8 2 0 2", "3 1 1 1 1 1"}) {
        auto const line = graph.line(pattern, {.line_pattern = pattern, .line_thickness = 3});
        for (int i = 0; i <= 400; ++i) line.add(i / 50.0, height + std::sin(i * 0.018));
        height -= 1;
    }
    graph.legend({.place = 1});
}

void draw_crowd(qv::GraphHandle const& graph) {
    graph.x_axis({.title = "forty lines that let one another through"});
    for (int k = 0; k < 40; ++k) {
        auto const line = graph.line("", {.color = blue, .line_thickness = 2, .line_alpha = 50});
        for (int i = 0; i <= 160; ++i)
            line.add(i / 20.0, std::sin(i / 20.0 + 0.04 * k) * (1 + 0.01 * k) + 0.2 * std::sin(k * 1.7));
    }
}

void draw_symbols(qv::GraphHandle const& graph) {
    graph.x_axis({.title = "a symbol at every 25th point"});
    int symbol = 3;
    for (qv::Color const color : {blue, red}) {
        auto const line =
            graph.line("", {.color = color, .symbol = symbol++, .symbol_every = 25, .symbol_size = 2.4F});
        for (int i = 0; i <= 400; ++i) line.add(i / 50.0, std::exp(-i / 200.0) * std::cos(i / 30.0 + symbol));
    }
}

} // namespace

void draw(qv::qvGraph& page) {
    page.FitMargins(true);
    draw_steps(page.graph("Steps", {.left = 0, .top = 0, .width = 50, .height = 50}));
    draw_dashes(page.graph("Dashes", {.left = 50, .top = 0, .width = 50, .height = 50}));
    draw_crowd(page.graph("Alpha", {.left = 0, .top = 50, .width = 50, .height = 50}));
    draw_symbols(page.graph("Symbols", {.left = 50, .top = 50, .width = 50, .height = 50}));
}

int main(int argc, char** argv) {
    return run(argc, argv, "line_styles", draw);
}
