// Bars side by side, with an edge, a shadow and an axis of texts.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Rain and snow", "", "millimetres");
    constexpr double rain[]{52, 48, 60, 71, 88, 104}, snow[]{64, 70, 41, 12, 0, 0};
    struct {
        char const* name;
        double const* values;
        qv::Color color;
        float offset;
    } const sets[]{{"rain", rain, blue, -0.18F}, {"snow", snow, qv::rgb(205, 222, 242), 0.18F}};
    for (auto const& [name, values, color, offset] : sets) {
        page.NewDataSet(name);
        page.SymbolStyle({.Symbol = 1,
                          .Color1 = color,
                          .Color2 = ink,
                          .EdgeThickness = 1,
                          .BarOffset = offset,
                          .BarShadow = true,
                          .BarBase = true});
        page.BarWidth(0.36); // of a month, and so are the offsets
        for (int month = 0; month < 6; ++month) page.AddDataPoint(month, values[month]);
    }
    axis_range(page, 1, 0, 120, 6);
    page.SetSelectedAxis(0);
    page.AxisScaleStyle({.Value1 = -1, .Value2 = 6, .MajorDivs = 7, .MinorDivs = 1, .ScaleStyle = 2});
    page.AxisTextLabels(",January,February,March,April,May,June,");
    page.AxisGridMajor(false);
    page.LegendShow(true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "bars", draw);
}
