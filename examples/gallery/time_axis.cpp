// Axes of time: values in seconds since 1970, shown in a time zone, here on days when clocks are put forward.
#include "example.h"

#include <cmath>

using namespace qv::example;

constexpr double degree = 3.14159265358979 / 180, latitude = 52.5 * degree, longitude = 13.4;
constexpr double hour = 3600, day = 24 * hour;
constexpr double new_year = 1704067200; // 2024 in UTC

double declination(double time) {
    return -23.44 * degree * std::cos(360 * degree * ((time - new_year) / day + 10) / 365.25);
}

double height_of_sun(double time) {
    double const angle = ((time - new_year) / hour + longitude / 15 - 12) * 15 * degree;
    double const sine = std::sin(latitude) * std::sin(declination(time))
                        + std::cos(latitude) * std::cos(declination(time)) * std::cos(angle);
    return std::asin(sine) / degree;
}

double hours_of_daylight(double time) {
    return std::acos(-std::tan(latitude) * std::tan(declination(time))) / degree / 7.5;
}

void draw(qv::qvGraph& page) {
    auto const height =
        page.graph("The sun over Berlin at the end of March 2024", {.left = 0, .width = 100, .height = 50});
    height.x_axis({.time = true, .time_zone = "Europe/Berlin"});
    height.y_axis({.title = "degrees"});
    auto const sun = height.line("", {.color = orange});
    double const saturday = new_year + 89 * day - hour; // midnight in Berlin
    for (double time = saturday; time <= saturday + 71 * hour; time += hour / 6)
        sun.add(time, height_of_sun(time));

    auto const days = page.graph("Hours of daylight", {.left = 0, .top = 50, .width = 100, .height = 50});
    days.x_axis({.time = true, .time_zone = "Europe/Berlin"});
    days.y_axis({.title = "hours"});
    auto const length = days.line("", {.color = blue});
    for (double time = new_year; time <= new_year + 550 * day; time += day)
        length.add(time, hours_of_daylight(time));
}

int main(int argc, char** argv) {
    return run(argc, argv, "time_axis", draw);
}
