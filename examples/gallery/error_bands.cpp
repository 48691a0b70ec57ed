// Errors of their own to each side, as bars both ways and as a band around a line.
#include "example.h"

#include <cmath>
#include <vector>

using namespace qv::example;

namespace {

struct Columns {
    std::vector<double> x, y, below, above, left, right;
};

Columns measured() {
    Columns columns;
    for (int i = 0; i <= 12; ++i) {
        double const x = i * 0.8;
        columns.x.push_back(x);
        columns.y.push_back(4 + 2 * std::sin(x * 0.8) + 0.2 * (i % 3));
        columns.below.push_back(0.3 + 0.05 * i);
        columns.above.push_back(0.8 - 0.04 * i);
        columns.left.push_back(i % 2 == 0 ? 0.3 : 0);
        columns.right.push_back(0.15);
    }
    return columns;
}

} // namespace

void draw(qv::qvGraph& page) {
    page.AutoFit(true);
    auto const graph = page.graph("Measured and expected");
    graph.x_axis({.title = "time, s"});
    graph.y_axis({.title = "signal", .from = 1, .to = 9});
    const Columns values = measured();
    auto const band = graph.line(
        "expected", {.color = green, .line_thickness = 2, .error_bar_color = green, .error_style = 1});
    std::vector<double> x, y, wide;
    for (int i = 0; i <= 100; ++i) {
        x.push_back(i * 0.1);
        y.push_back(4 + 2 * std::sin(i * 0.08));
        wide.push_back(0.35 + 0.005 * i);
    }
    band.add_columns(x, y, wide, wide);
    auto const points =
        graph.symbols("measured", {.color = blue, .error_bar_color = blue, .error_bar_cap = 1.5F});
    points.add_columns(values.x, values.y, values.below, values.above, values.left, values.right);
    graph.legend({.show = true, .place = 1});
}

int main(int argc, char** argv) {
    return run(argc, argv, "error_bands", draw);
}
