// Dates: ticks where months begin, a format for their labels, labels turned.
#include "example.h"

#include <cmath>
#include <vector>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Hours of daylight at 52° north", "", "hours");
    constexpr double new_year = 45658; // 2025, in days since 1899-12-30
    constexpr int days_of_months[]{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    line(page, "daylight", orange, 2, 4);
    page.DataSymbolColor(qv::rgb(255, 240, 214));
    for (int day = 0; day <= 365; ++day)
        page.AddDataPoint(new_year + day, 12.2 + 4.4 * std::sin((day - 80) * 6.2832 / 365.25));
    axis_range(page, 1, 0, 20, 4, 5);
    axis_range(page, 0, new_year, new_year + 365, 12);
    std::vector<double> months{new_year};
    for (int const days : days_of_months) months.push_back(months.back() + days);
    page.SetAxisTicks(months);
    page.AxisTextLabels("d mmm yyyy");
    page.AxisLabelsHoriz(45);
}

int main(int argc, char** argv) {
    return run(argc, argv, "dates", draw);
}
