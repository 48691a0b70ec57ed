// Handles: two graphs side by side, each with two y axes, a live series that keeps its latest points, and
// nothing that is ever selected.
#include "qvgraph/HeadlessHost.h"
#include "qvgraph/looks.h"

#include <cmath>
#include <string>

namespace {

// An axis takes the colour of its data.
qv::AxisOptions colored(std::string const& title, qv::Color color) {
    return {.title = title, .color = color, .label_color = color, .title_color = color};
}

void draw(qv::qvGraph& page) {
    qv::Look const light = qv::look("light");
    qv::Color const blue = light.palette[0], orange = light.palette[1];
    auto year = page.graph("Weather", {.left = 0, .width = 56});
    year.x_axis({.title = "month"});
    auto celsius = year.y_axis(colored("mean temperature, °C", orange));
    auto millimetres = year.add_y_axis(colored("rain, mm", blue));
    millimetres.set({.far_side = true});
    auto rain = year.bars("rain", {.axis = millimetres, .color = blue, .bar_width = 0.6});
    auto warmth = year.line("temperature", {.axis = celsius, .color = orange, .symbol = 3});
    for (int month = 1; month <= 12; ++month) {
        warmth.add(month, 10 - 9 * std::cos((month - 1) * 0.52));
        rain.add(month, 60 + 30 * std::sin(month * 0.8));
    }

    auto live = page.graph("Live", {.left = 56, .width = 44});
    live.x_axis({.title = "seconds"});
    live.y_axis({.title = "signal"});
    auto signal = live.line("the latest 500 of 3000 points", {.color = blue});
    signal.keep_latest(500);
    for (int i = 0; i < 3000; ++i) {
        double const t = i * 0.01;
        signal.add(t, std::sin(3 * t) + 0.3 * std::sin(17 * t));
    }
}

} // namespace

int main(int argc, char** argv) {
    qv::headless::HeadlessHost host({960, 400});
    host.control().UseLook("light");
    draw(host.control());
    host.control().Refresh();
    host.save(argc > 1 ? argv[1] : "handles.png");
}
