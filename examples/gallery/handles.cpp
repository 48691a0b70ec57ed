// Handles: two graphs side by side, each with two y axes, a live series that keeps its latest points, and
// nothing that is ever selected.
#include "qvgraph/HeadlessHost.h"

#include <cmath>
#include <string>

namespace {

constexpr qv::Color ink = qv::rgb(40, 44, 52), pale = qv::rgb(228, 231, 236), white = qv::rgb(255, 255, 255);
constexpr qv::Color blue = qv::rgb(38, 98, 168), red = qv::rgb(190, 50, 50);

qv::GraphHandle plain_graph(qv::qvGraph& page, std::string const& name, double left) {
    return page.graph(name, {.border_color = white,
                             .plot_area_color = white,
                             .title_color = ink,
                             .title_font = "Arial|11|Bold",
                             .left = left,
                             .width = 50,
                             .border_left = 15,
                             .border_right = 15,
                             .border_top = 12,
                             .border_bottom = 13,
                             .border_edge_thickness = 0});
}

// An axis takes the colour of its data.
qv::AxisOptions colored(std::string const& title, qv::Color color) {
    return {.title = title,
            .major_grid = true,
            .ticks_both_ends = false,
            .major_grid_color = pale,
            .color = color,
            .label_font = "Arial|8",
            .label_color = color,
            .label_angle = 0,
            .title_color = color};
}

void draw(qv::qvGraph& page) {
    auto year = plain_graph(page, "Weather", 0);
    auto live = plain_graph(page, "Live", 50);

    year.x_axis(colored("month", ink));
    auto celsius = year.y_axis(colored("mean temperature, °C", red));
    auto millimetres = year.add_y_axis(colored("rain, mm", blue));
    millimetres.set({.major_grid = false, .far_side = true, .from = 0, .to = 160});
    auto rain = year.bars("rain", {.axis = millimetres, .color = blue, .symbol_size = 3.2});
    auto warmth = year.line("temperature", {.axis = celsius, .color = red, .symbol = 3, .line_thickness = 2});
    for (int month = 1; month <= 12; ++month) {
        warmth.add(month, 10 - 9 * std::cos((month - 1) * 0.52));
        rain.add(month, 60 + 30 * std::sin(month * 0.8));
    }
    celsius.set({.from = 0, .to = 20, .major_divs = 4});
    year.x_axis({.from = 0, .to = 13, .major_divs = 13});
    year.legend({.color = white, .left = 20, .top = 13});

    auto seconds = live.x_axis(colored("seconds", ink));
    live.y_axis(colored("signal", ink));
    auto signal = live.line("the latest 500 of 3000 points", {.color = blue, .line_thickness = 2});
    signal.keep_latest(500);
    double t = 0;
    for (int i = 0; i < 3000; ++i, t += 0.01) signal.add(t, std::sin(3 * t) + 0.3 * std::sin(17 * t));
    seconds.set({.from = t - 5, .to = t});
    live.legend({.color = white, .left = 25, .top = 13});
}

} // namespace

int main(int argc, char** argv) {
    qv::headless::HeadlessHost host({960, 400});
    draw(host.control());
    host.control().Refresh();
    host.save(argc > 1 ? argv[1] : "handles.png");
}
