// Areas between two lines, about a value with two colours, stacked, and stacked in percent.
#include "example.h"

#include <array>
#include <cmath>

using namespace qv::example;

namespace {

double income(double t) {
    return 3 + std::sin(t) + 0.4 * std::sin(3 * t);
}

void draw_between(qv::GraphHandle const& graph) {
    graph.y_axis({.from = 1, .to = 6});
    auto const income_area = graph.area(
        "income",
        {.color = blue, .line_thickness = 2, .fill_alpha = 110, .area_below_color = red, .area_to = 1});
    auto const costs = graph.line("costs", {.color = ink, .line_thickness = 2});
    for (double t = 0; t <= 10; t += 0.1) income_area.add(t, income(t));
    for (double t = 0; t <= 10; t += 0.7) costs.add(t, 3 + 0.08 * t - 0.3 * std::cos(t));
}

void draw_about_value(qv::GraphHandle const& graph) {
    auto const area = graph.area(
        "deviation",
        {.color = red, .fill_alpha = 150, .area_base = true, .area_base_value = 0, .area_below_color = blue});
    for (double t = 0; t <= 10; t += 0.25)
        area.add(t, std::sin(t * 1.3) * std::exp(-t / 8) + 0.15 * std::sin(9 * t));
}

void draw_stack(qv::GraphHandle const& graph, int stacking) {
    std::array const colors{blue, orange, green};
    for (int k = 0; k < 3; ++k) {
        auto const area = graph.area(
            "", {.color = colors[static_cast<std::size_t>(k)], .fill_alpha = 190, .area_stacked = stacking});
        for (double t = 0; t <= 10; t += 0.5) area.add(t, 1.2 + 0.4 * k + std::sin(t * 0.6 + k * 1.4) * 0.8);
    }
}

} // namespace

void draw(qv::qvGraph& page) {
    page.AutoFit(true);
    page.FitMargins(true);
    draw_between(page.graph("Between two lines", {.left = 0, .top = 0, .width = 50, .height = 50}));
    draw_about_value(page.graph("About a value", {.left = 50, .top = 0, .width = 50, .height = 50}));
    draw_stack(page.graph("Stacked", {.left = 0, .top = 50, .width = 50, .height = 50}), 1);
    draw_stack(page.graph("In percent", {.left = 50, .top = 50, .width = 50, .height = 50}), 2);
}

int main(int argc, char** argv) {
    return run(argc, argv, "area_kinds", draw);
}
