// Every symbol: ten shapes, with and without an edge; numbers, letters and characters.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Symbols", "DataSymbol of the shapes", "");
    const qv::Color colors[]{blue, orange, green, red, purple};
    for (int row = 0; row < 3; ++row)
        for (int symbol = 2; symbol <= 11; ++symbol) {
            page.NewDataSet("");
            page.SymbolStyle({.Symbol = symbol,
                              .Size = static_cast<float>(2 + row),
                              .Color1 = row == 1 ? white : colors[symbol % 5],
                              .Color2 = row == 1 ? colors[symbol % 5] : ink,
                              .EdgeThickness = row});
            page.AddDataPoint(symbol, 5 - row);
        }
    struct {
        int symbol;
        double y;
        char const* font;
    } const texts[]{{-1, 2, "Arial|10|Bold"}, {-2, 1.3, "Arial|10"}, {'*', 0.6, "Arial|14|Bold"}};
    for (auto const& [symbol, y, font] : texts) {
        page.NewDataSet("");
        page.SymbolStyle({.Symbol = symbol, .Color1 = ink, .TextFont = font});
        for (int x = 2; x <= 11; ++x) page.AddDataPoint(x, y);
    }
    axis_range(page, 0, 1, 12, 11);
    axis_range(page, 1, 0, 6, 6);
    page.AxisShowLabels(false);
}

int main(int argc, char** argv) {
    return run(argc, argv, "symbols", draw);
}
