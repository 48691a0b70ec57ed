// The six shapes of gradients, from one colour to the other and there and back.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    for (int tile = 0; tile < 12; ++tile) {
        int const shape = tile % 6 + 1;
        // Below 1 the way leads there and back; 0 is the linear shape's.
        int const style = tile < 6 ? shape : shape == 1 ? 0 : -shape;
        page.NewGraph("gStyle " + std::to_string(style));
        page.GraphPosition({.Left = 25.0F * static_cast<float>(tile % 4),
                            .Top = 33.3F * static_cast<float>(tile / 4),
                            .Width = 25,
                            .Height = 33.3F});
        page.BorderWidths({.Left = 3, .Top = 7, .Right = 3, .Bottom = 2});
        page.GraphTitleFont("Arial|9");
        page.PlotAreaColors({.Color1 = qv::rgb(250, 246, 230),
                             .Color2 = blue,
                             .GradientAngle = 315,
                             .gShift = 0,
                             .gStyle = static_cast<float>(style)});
        for (int const axis : {0, 1}) {
            axis_range(page, axis, 0, 1, 1);
            page.AxisShowLabels(false);
            page.AxisShowTitle(false);
            page.AxisTickLength(0);
            page.AxisGridMajor(false);
        }
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "gradients", draw);
}
