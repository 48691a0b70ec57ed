// Gradients behind a graph: page, border, plot area and legend.
#include "example.h"

#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    qv::Color const night = qv::rgb(20, 24, 40);
    auto const graph = page.graph("Evening", {.left = 5,
                                              .top = 6,
                                              .width = 90,
                                              .height = 88,
                                              .border_color1 = qv::rgb(250, 250, 252),
                                              .border_color2 = qv::rgb(214, 220, 234),
                                              .border_gradient = 270,
                                              .border_gradient_style = 1,
                                              .border_edge_color = night,
                                              .border_edge_thickness = 1,
                                              .plot_area_color1 = qv::rgb(255, 236, 200),
                                              .plot_area_color2 = qv::rgb(92, 108, 160),
                                              .plot_area_gradient = 90,
                                              .plot_area_gradient_shift = 0.2F,
                                              .plot_area_gradient_style = 1});
    page.PageColors({.Color1 = qv::rgb(60, 72, 110), .Color2 = night, .GradientAngle = 270});
    graph.x_axis({.title = "time, minutes", .major_grid = false, .color = ink, .from = 0, .to = 90});
    graph.y_axis({.title = "brightness", .major_grid = false, .color = ink, .from = 0, .to = 100});
    graph.legend({.color1 = qv::rgb(150, 164, 204),
                  .color2 = qv::rgb(200, 208, 228),
                  .gradient = 0,
                  .gradient_style = 1,
                  .edge_color = gray,
                  .edge_thickness = 1,
                  .left = 70,
                  .top = 14});
    auto const sky = graph.line("sky", {.color = white, .line_thickness = 3});
    auto const lamps = graph.line("street lamps", {.color = qv::rgb(255, 204, 64), .line_thickness = 3});
    for (int t = 0; t <= 90; ++t) {
        sky.add(t, 100 / (1 + std::exp((t - 45) / 9.0)));
        lamps.add(t, t < 40 ? 0 : 20);
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "gradient_page", draw);
}
