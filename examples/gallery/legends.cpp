// Legends: before and behind the data, with an edge, with a gradient, without a ground.
#include "example.h"

#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    struct {
        char const* title;
        bool in_front, transparent;
        int edge;
        qv::Color second;
        float left;
    } const graphs[]{{"in front", true, false, 1, white, 62},
                     {"behind the data", false, false, 1, white, 62},
                     {"gradient, thick edge", true, false, 3, qv::rgb(205, 222, 242), 30},
                     {"no ground, no edge", true, true, 0, white, 66}};
    for (int i = 0; i < 4; ++i) {
        auto const& [title, in_front, transparent, edge, second, left] = graphs[i];
        plain_graph(page, title, "", "");
        page.GraphPosition({.Left = 50.0F * static_cast<float>(i % 2),
                            .Top = 50.0F * static_cast<float>(i / 2),
                            .Width = 50,
                            .Height = 50});
        page.NewDataSet("sine");
        page.DataLineThickness(3);
        for (double x = 0; x <= 6.3; x += 0.05) page.AddDataPoint(x, std::sin(x));
        page.NewDataSet("cosine");
        page.DataLineDash(2);
        for (double x = 0; x <= 6.3; x += 0.05) page.AddDataPoint(x, std::cos(x));
        axis_range(page, 0, 0, 7, 7);
        axis_range(page, 1, -1.25, 1.25, 5);
        page.LegendTableStyle({.LeftPercent = left,
                               .TopPercent = 22,
                               .EdgeColor = edge > 1 ? blue : gray,
                               .EdgeThickness = edge,
                               .Color1 = white,
                               .Color2 = second,
                               .GradientAngle = 90,
                               .Transparent = transparent});
        page.LegendInFront(in_front);
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "legends", draw);
}
