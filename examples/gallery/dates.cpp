// Dates: ticks where months begin, a format for their labels, labels turned.
#include "example.h"

#include <cmath>
#include <vector>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    constexpr double new_year = 45658; // 2025, in days since 1899-12-30
    constexpr int days_of_months[]{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    auto const graph = page.graph("Hours of daylight at 52° north");
    graph.y_axis({.title = "hours", .from = 0, .to = 20});
    auto const x = graph.x_axis(
        {.label_angle = 45, .from = new_year, .to = new_year + 365, .text_labels = "d mmm yyyy"});
    std::vector<double> months{new_year};
    for (int const days : days_of_months) months.push_back(months.back() + days);
    x.ticks(months);
    auto const hours = graph.area("", {.symbol_color = qv::rgb(255, 240, 214), .line_color = orange});
    for (int day = 0; day <= 365; ++day)
        hours.add(new_year + day, 12.2 + 4.4 * std::sin((day - 80) * 6.2832 / 365.25));
}

int main(int argc, char** argv) {
    return run(argc, argv, "dates", draw);
}
