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

void place(qv::qvGraph& page, float top, float height) {
    page.GraphPosition({.Left = 0, .Top = top, .Width = 100, .Height = height});
    page.SelectXaxis();
    page.AxisLink("time");
}

} // namespace

void draw(qv::qvGraph& page) {
    page.AlignPlots(true);
    plain_graph(page, "River level and air temperature", "", "level, m");
    place(page, 0, 56);
    line(page, "level", blue);
    page.NewYAxis("temperature, °C");
    page.SelectYaxis(2);
    page.AxisStyle({.LineColor = orange, .FarSide = true});
    page.AxisLabelColor(orange);
    page.AxisTitleColor(orange);
    line(page, "temperature", orange, 1);
    for (Hour hour; hour.time < 20; hour = next(hour)) {
        page.AddDataPoint(hour.time, hour.level, 0, 1);
        page.AddDataPoint(hour.time, hour.temperature, 0, 2);
    }
    plain_graph(page, "Rain", "day", "mm in three hours");
    place(page, 56, 44);
    page.NewDataSet("rain");
    page.SymbolStyle({.Symbol = 1});
    page.BarWidth(0.125); // of a day: three hours
    for (Hour hour; hour.time < 20; hour = next(hour)) page.AddDataPoint(hour.time, hour.rain);
}

int main(int argc, char** argv) {
    return run(argc, argv, "linked", draw);
}
