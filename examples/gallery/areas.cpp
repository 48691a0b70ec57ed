// Filled areas: plain, and with each piece outlined.
#include "example.h"

#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Tide and inflow", "hours", "metres");
    line(page, "high water", blue, 2, 4);
    page.DataSymbolColor(qv::rgb(205, 222, 242));
    for (double t = 0; t <= 24; t += 0.1) page.AddDataPoint(t, 3 + 1.4 * std::cos(t * 0.506));
    line(page, "inflow by the hour", green, 1, 5);
    page.DataSymbolColor(qv::rgb(214, 236, 220));
    for (int t = 0; t <= 24; ++t) page.AddDataPoint(t, 1 + 0.6 * std::sin(t * 0.4) + 0.1 * (t % 3));
    axis_range(page, 0, 0, 24, 8, 3);
    axis_range(page, 1, 0, 6, 6);
    page.LegendShow(true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "areas", draw);
}
