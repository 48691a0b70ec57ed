// Error bars upright and lying, and points with names.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Five stars", "distance, light years", "magnitude");
    page.NewDataSet("distance uncertain");
    page.SymbolStyle({.Symbol = 3, .Size = 2.4F, .TextFont = "Arial|8"});
    struct {
        double distance, magnitude, error;
        char const* name;
    } const stars[]{{8.6, -1.46, -1.4, "Sirius"},
                    {11.5, 0.34, -0.9, "Procyon"},
                    {16.7, 0.76, -2.1, "Altair"},
                    {25, 0.03, -1.2, "Vega"}};
    for (auto const& [distance, magnitude, error, name] : stars)
        page.AddDataPoint(distance, magnitude, error, 0, name);
    page.NewDataSet("magnitude uncertain");
    page.SymbolStyle({.Symbol = 5, .Size = 2.8F});
    page.AddDataPoint(21, -0.7, 0.25);
    page.AddDataPoint(13.5, -0.9, 0.4);
    axis_range(page, 0, 0, 30, 6, 5);
    axis_range(page, 1, -2, 1.5, 7);
    page.AxisReverse(true); // the brighter, the higher
    page.LegendShow(true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "error_bars", draw);
}
