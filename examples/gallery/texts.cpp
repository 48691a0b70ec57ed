// Texts on the page: at data values or percent of the plot area, aligned nine ways, turned, several lines.
#include "example.h"

using namespace qv::example;

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("Texts");
    graph.x_axis({.title = "x", .from = 0, .to = 10});
    graph.y_axis({.title = "y", .from = 0, .to = 10});
    constexpr char const* names[]{"start, top",    "centre, top",    "end, top",
                                  "start, middle", "centre, middle", "end, middle",
                                  "start, bottom", "centre, bottom", "end, bottom"};
    auto const places = graph.symbols("", {.symbol = 10, .symbol_size = 2, .symbol_color = orange});
    for (int alignment = 0; alignment < 9; ++alignment) {
        int const row = alignment / 3, column = alignment % 3;
        double const x = 1.5 + 3.2 * column, y = 9 - 2 * row;
        places.add(x, y);
        graph.text(names[alignment], x, y,
                   {.text_ori = alignment, .text_font = "Arial|9", .text_color = ink});
    }
    for (int angle = 0; angle < 360; angle += 45)
        graph.text("      " + std::to_string(angle) + "°", 2.2, 2.1,
                   {.text_ori = 3, .text_font = "Arial|9|Bold", .text_color = blue, .text_angle = angle});
    graph.text("Several lines,\r\nin italics,\r\nat 70 and 20 percent", 70, 20,
               {.text_ori = 4,
                .text_font = "Font=Times New Roman|12|Italic",
                .text_color = purple,
                .text_percent = true});
}

int main(int argc, char** argv) {
    return run(argc, argv, "texts", draw);
}
