// Gradients behind a graph: page, border, plot area and legend.
#include "example.h"

#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Evening", "time, minutes", "brightness");
    page.PageColors({.Color1 = qv::rgb(60, 72, 110), .Color2 = qv::rgb(20, 24, 40), .GradientAngle = 270});
    page.GraphPosition({.Left = 5, .Top = 6, .Width = 90, .Height = 88});
    page.BorderStyle(
        {.Color1 = qv::rgb(250, 250, 252), .Color2 = qv::rgb(214, 220, 234), .GradientAngle = 270});
    page.BorderEdgeThickness(1);
    page.BorderEdgeColor(qv::rgb(20, 24, 40));
    page.PlotAreaColors({.Color1 = qv::rgb(255, 236, 200),
                         .Color2 = qv::rgb(92, 108, 160),
                         .GradientAngle = 90,
                         .gShift = 0.2F});
    for (int const axis : {0, 1}) {
        page.SetSelectedAxis(axis);
        page.AxisGridMajor(false);
        page.AxisColor(ink);
    }
    line(page, "sky", white, 3);
    for (int t = 0; t <= 90; ++t) page.AddDataPoint(t, 100 / (1 + std::exp((t - 45) / 9.0)));
    line(page, "street lamps", qv::rgb(255, 204, 64), 3);
    for (int t = 0; t <= 90; ++t) page.AddDataPoint(t, t < 40 ? 0 : 20);
    axis_range(page, 0, 0, 90, 9);
    axis_range(page, 1, 0, 100, 5);
    page.LegendTableStyle({.EdgeColor = gray,
                           .EdgeThickness = 1,
                           .Color1 = qv::rgb(150, 164, 204),
                           .Color2 = qv::rgb(200, 208, 228),
                           .GradientAngle = 0});
    page.LegendTableLeft(70);
    page.LegendTableTop(14);
}

int main(int argc, char** argv) {
    return run(argc, argv, "gradient_page", draw);
}
