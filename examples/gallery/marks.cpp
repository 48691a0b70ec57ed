// Marks: reference lines and bands with labels, an arrow and a rectangle, in values and in percent of the
// plot area.
#include "example.h"

#include <cmath>

using namespace qv::example;

namespace {

void draw(qv::qvGraph& page) {
    auto graph = page.graph("Oven");
    graph.x_axis({.title = "minutes", .from = 0, .to = 60});
    graph.y_axis({.title = "°C", .from = 0, .to = 250});
    graph.vertical_band(52, HUGE_VAL, {.color = gray, .text = "off", .text_ori = 3, .text_color = gray});
    graph.horizontal_band(
        170, 190, {.color = green, .legend = "wanted", .text = "wanted", .text_ori = 2, .text_color = green});
    auto temperature = graph.line("temperature", {.color = blue});
    for (double t = 0; t <= 60; t += 0.25) {
        double const heating = 185 - 165 * std::exp(-t / 6) + 18 * std::exp(-t / 30) * std::sin(t * 0.9);
        temperature.add(t, t < 52 ? heating : heating * std::exp((52 - t) / 25));
    }
    graph.horizontal_line(
        230, {.line_dash = 1, .line_color = red, .text = "too hot", .text_ori = 1, .text_color = red});
    graph.vertical_line(12, {.line_color = gray, .line_thickness = 1, .text = "put in", .text_ori = 2});
    graph.arrow({24, 70}, {13.4, 168}, {.line_color = ink, .line_thickness = 1, .text = "the door was open"});
    graph
        .rectangle({64, 8}, {84, 28},
                   {.line_style = 1,
                    .line_color = purple,
                    .line_thickness = 1,
                    .mark_percent = true,
                    .text = "in percent\nof the plot",
                    .text_ori = 4,
                    .text_color = purple})
        .transparent(true);
}

} // namespace

int main(int argc, char** argv) {
    return run(argc, argv, "marks", draw);
}
