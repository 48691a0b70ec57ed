// Texts on the page: at data values or percent of the plot area, aligned nine ways, turned, several lines.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Texts", "x", "y");
    constexpr char const* names[]{"start, top",    "centre, top",    "end, top",
                                  "start, middle", "centre, middle", "end, middle",
                                  "start, bottom", "centre, bottom", "end, bottom"};
    for (int alignment = 0; alignment < 9; ++alignment) {
        double const x = 1.5 + 3.2 * (alignment % 3), y = 9 - 2 * (alignment / 3);
        page.NewDataSet("");
        page.SymbolStyle({.Symbol = 10, .Size = 2, .Color1 = orange});
        page.AddDataPoint(x, y);
        page.AddText(names[alignment], x, y, static_cast<std::uint8_t>(alignment), "Arial|9", ink, 0, false);
    }
    for (int angle = 0; angle < 360; angle += 45) {
        page.NewDataSet("");
        page.AddText("      " + std::to_string(angle) + "°", 2.2, 2.1, 3, "Arial|9|Bold", blue,
                     static_cast<std::int16_t>(angle), false);
    }
    page.NewDataSet("");
    page.AddText("Several lines,\r\nin italics,\r\nat 70 and 20 percent", 70, 20, 4,
                 "Font=Times New Roman|12|Italic", purple, 0, true);
    axis_range(page, 0, 0, 10, 10);
    axis_range(page, 1, 0, 10, 5);
}

int main(int argc, char** argv) {
    return run(argc, argv, "texts", draw);
}
