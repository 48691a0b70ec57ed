// Bars by category: beside each other with their values at the ends, lying in percent of each bar, upon each
// other, and long texts that are turned. No offset and no width is counted by hand.
#include "example.h"

#include <vector>

using namespace qv::example;

namespace {

qv::TextList const regions{"North", "East", "South", "West"};

struct Series {
    char const* name;
    qv::Color color;
    std::vector<double> values;
};
Series const years[]{
    {"2023", blue, {42, 31, 55, 23}}, {"2024", orange, {47, 36, 49, 30}}, {"2025", green, {51, 33, 58, 38}}};

qv::GraphHandle graph(qv::qvGraph& page, char const* title, float left, float top, float width) {
    return page.graph(title, {.left = left, .top = top, .width = width, .height = 50});
}

} // namespace

void draw(qv::qvGraph& page) {
    page.AutoFit(true);
    auto const grouped = graph(page, "Grouped", 0, 0, 58);
    grouped.bar_arrangement(1);
    grouped.legend({.place = 2});
    grouped.y_axis({.title = "orders"});
    for (Series const& year : years)
        grouped.bars(year.name, {.color = year.color, .bar_labels = 2}).add(regions, year.values);

    auto const percent = graph(page, "Lying, in percent", 58, 0, 42);
    percent.bar_arrangement(3);
    percent.legend({.show = false});
    percent.x_axis({.title = "share of the orders, %"});
    percent.y_axis({.reverse = true});
    for (Series const& year : years)
        percent
            .bars(year.name,
                  {.color = year.color, .bar_horiz = true, .bar_labels = 1, .bar_label_format = "0"})
            .add(regions, year.values);

    auto const stacked = graph(page, "Stacked, gains and losses", 0, 50, 50);
    stacked.bar_arrangement(2);
    stacked.legend({.show = false});
    stacked.y_axis({.title = "balance"});
    stacked.bars("sold", {.color = blue}).add({"Q1", "Q2", "Q3", "Q4"}, std::vector<double>{14, 18, 11, 22});
    stacked.bars("let", {.color = green}).add({"Q1", "Q2", "Q3", "Q4"}, std::vector<double>{6, 7, 9, 8});
    stacked.bars("spent", {.color = red})
        .add({"Q1", "Q2", "Q3", "Q4"}, std::vector<double>{-9, -13, -17, -10});

    auto const long_names = graph(page, "Long names", 50, 50, 50);
    long_names.bar_arrangement(1);
    long_names.legend({.show = false});
    long_names.y_axis({.title = "rainy days"});
    long_names.bars("rain", {.color = purple, .bar_labels = 2})
        .add({"Aberdeen", "Bergen", "Bratislava", "Casablanca", "Dubrovnik", "Gothenburg", "Thessaloniki",
              "Reykjavik"},
             std::vector<double>{145, 231, 87, 74, 109, 166, 78, 213});
}

int main(int argc, char** argv) {
    return run(argc, argv, "categories", draw);
}
