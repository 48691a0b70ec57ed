// The six shapes of gradients, from one colour to the other and there and back.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    for (int tile = 0; tile < 12; ++tile) {
        int const row = tile / 4, shape = tile % 6 + 1;
        // Below 1 the way leads there and back; 0 is the linear shape's.
        int const style = tile < 6 ? shape : shape == 1 ? 0 : -shape;
        auto const graph =
            page.graph("gStyle " + std::to_string(style), {.title_font = "Arial|9",
                                                           .left = 25 * (tile % 4),
                                                           .top = 33.3 * row,
                                                           .width = 25,
                                                           .height = 33.3,
                                                           .border_left = 3,
                                                           .border_right = 3,
                                                           .border_top = 7,
                                                           .border_bottom = 2,
                                                           .plot_area_color1 = qv::rgb(250, 246, 230),
                                                           .plot_area_color2 = blue,
                                                           .plot_area_gradient = 315,
                                                           .plot_area_gradient_shift = 0,
                                                           .plot_area_gradient_style = style});
        for (qv::AxisHandle const& axis : graph.axes())
            axis.set({.major_grid = false,
                      .tick_length = 0,
                      .show_labels = false,
                      .show_title = false,
                      .from = 0,
                      .to = 1});
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "gradients", draw);
}
