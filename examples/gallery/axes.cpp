// Axes: two on the left, one on the far side; logarithmic, reversed; ticks at both ends; grids.
#include "example.h"

#include <algorithm>
#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Air above the ground", "height, km", "pressure, hPa");
    page.SetSelectedAxis(1);
    page.AxisStyle({.LineColor = blue, .LogScale = true});
    page.AxisLabelColor(blue);
    page.AxisTitleColor(blue);
    page.AxisGridMinor(true);
    axis_range(page, 1, 1, 1000, 3, 9);
    struct {
        char const* title;
        qv::Color color;
        bool far_side, reversed;
        double from, to;
    } const more[]{{"temperature, °C", red, false, false, -60, 20},
                   {"boiling point of water, °C", green, true, true, 0, 100}};
    int axis_number = 1;
    for (auto const& [title, color, far_side, reversed, from, to] : more) {
        page.NewYAxis(title, from, to);
        page.SetSelectedAxis(++axis_number);
        page.AxisStyle({.LineColor = color, .Reverse = reversed, .FarSide = far_side});
        page.AxisTitleColor(color);
        page.AxisLabelColor(color);
    }
    axis_range(page, 0, 0, 40, 8, 5);
    page.AxisTickStyle({.Inside = true, .Outside = false, .BothEnds = true});
    for (int axis = 1; axis <= 3; ++axis) {
        page.SelectYaxis(axis);
        line(page, "", axis == 1 ? blue : more[axis - 2].color);
        for (double h = 0; h <= 40; h += 0.5) {
            double const pressure = 1013 * std::exp(-h / 7);
            double const temperature = h < 11 ? 15 - 6.5 * h : h < 20 ? -56.5 : -56.5 + 1.6 * (h - 20);
            double const boiling = 100 - 8 * std::log(1013 / pressure) * 3;
            page.AddDataPoint(h, axis == 1 ? pressure : axis == 2 ? temperature : std::max(boiling, 0.0));
        }
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "axes", draw);
}
