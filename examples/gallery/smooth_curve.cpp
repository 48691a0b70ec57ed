// A smooth curve through a few points, beside the straight line.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "A day's temperatures", "hour", "degrees Celsius");
    constexpr double degrees[]{11.2, 10.1, 9.4, 12.8, 17.9, 21.4, 22.6, 19.7, 14.8};
    struct {
        char const* name;
        qv::Color color;
        int thickness, style, symbol;
    } const sets[]{{"straight", ink, 1, 2, 0}, {"natural spline", red, 2, 3, 3}};
    for (auto const& [name, color, thickness, style, symbol] : sets) {
        line(page, name, color, thickness, style);
        page.SymbolStyle(
            {.Symbol = symbol, .Size = 2.2F, .Color1 = white, .Color2 = red, .EdgeThickness = 2});
        for (int i = 0; i < 9; ++i) page.AddDataPoint(3 * i, degrees[i]);
    }
    page.LegendShow(true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "smooth_curve", draw);
}
