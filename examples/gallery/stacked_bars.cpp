// Bars upon bars: upright and shaded like cylinders, and lying from a base value.
#include "example.h"

using namespace qv::example;

namespace {

constexpr double shares[3][5]{{31, 28, 25, 22, 20}, {18, 21, 24, 26, 27}, {9, 12, 16, 21, 26}};
const qv::Color colors[]{ink, blue, orange};
constexpr char const* names[]{"coal", "gas", "wind"};

void add_bars(qv::qvGraph& page, bool lying) {
    for (int set = 0; set < 3; ++set) {
        page.NewDataSet(names[set]);
        page.SymbolStyle({.Symbol = 1,
                          .Color1 = lying ? colors[set] : qv::rgb(235, 240, 250),
                          .Color2 = colors[set],
                          .EdgeThickness = 0,
                          .Bar3D = !lying,
                          .Stacked = set > 0,
                          .BarBase = true});
        page.BarHoriz(lying);
        page.BarWidth(0.75); // of a year
        for (int year = 0; year < 5; ++year)
            page.AddDataPoint(lying ? shares[set][year] : 2020 + year,
                              lying ? 2020 + year : shares[set][year]);
    }
}

} // namespace

void draw(qv::qvGraph& page) {
    plain_graph(page, "Electricity, upright", "", "share, %");
    page.GraphPosition({.Left = 0, .Top = 0, .Width = 50, .Height = 100});
    add_bars(page, false);
    axis_range(page, 0, 2019, 2025, 6);
    axis_range(page, 1, 0, 80, 8);
    plain_graph(page, "and lying", "share, %", "");
    page.GraphPosition({.Left = 50, .Top = 0, .Width = 50, .Height = 100});
    add_bars(page, true);
    axis_range(page, 0, 0, 100, 5);
    axis_range(page, 1, 2019, 2025, 6);
    page.LegendShow(true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "stacked_bars", draw);
}
