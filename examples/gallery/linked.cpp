// Two graphs whose x axes share one range: zooming either moves both. Points widen the axes of their own data
// set, so the curve on the second y axis needs no more than that axis; all ranges fit what is drawn.
#include "example.h"

#include <cmath>

using namespace qv::example;

namespace {

constexpr double lag = 0.9;

/// Water falls on a valley, and its river follows.
struct Hour {
    double time = 0; // days
    double rain = 0; // mm
    double level = 1.2;
    double temperature = 9;
};

double rain_at(double day) {
    double const showers = std::sin(day * 2.1) + std::sin(day * 0.73 + 2) + 0.4 * std::sin(day * 9);
    return showers > 0.9 ? 4 * (showers - 0.9) : 0;
}

Hour next(Hour const& hour) {
    double const time = hour.time + 0.125;
    double const rain = rain_at(time);
    return {time, rain, 1.2 + (hour.level - 1.2) * lag + rain * 0.03,
            14 + 3 * std::sin(time / 3) - 5 * std::cos(time * 6.2832) - rain * 0.6};
}

} // namespace

void draw(qv::qvGraph& page) {
    page.AlignPlots(true);
    auto const valley =
        page.graph("River level and air temperature", {.left = 0, .top = 0, .width = 100, .height = 56});
    valley.x_axis({.link = "time"});
    valley.y_axis({.title = "level, m"});
    auto const celsius = valley.add_y_axis({.title = "temperature, °C",
                                            .color = orange,
                                            .label_color = orange,
                                            .title_color = orange,
                                            .far_side = true});
    auto const level = valley.line("level", {.color = blue});
    auto const warmth = valley.line("temperature", {.axis = celsius, .color = orange, .line_thickness = 1});
    valley.legend({.show = false});

    auto const rain = page.graph("Rain", {.left = 0, .top = 56, .width = 100, .height = 44});
    rain.x_axis({.title = "day", .link = "time"});
    rain.y_axis({.title = "mm in three hours"});
    auto const bars = rain.bars("", {.bar_width = 0.125}); // of a day: three hours

    for (Hour hour; hour.time < 20; hour = next(hour)) {
        level.add(hour.time, hour.level);
        warmth.add(hour.time, hour.temperature);
        bars.add(hour.time, hour.rain);
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "linked", draw);
}
