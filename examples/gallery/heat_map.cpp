// Heat maps: a matrix and its contour lines, points counted in cells, values on cells, colours for angles.
#include "qvgraph/HeadlessHost.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace {

constexpr int side = 60;

std::vector<double> square_of(double (*value_at)(double x, double y)) {
    std::vector<double> values;
    for (int i = 0; i < side * side; ++i)
        values.push_back(value_at((2.0 * (i % side) + 1) / side - 1, (2.0 * (i / side) + 1) / side - 1));
    return values;
}

double hills(double x, double y) {
    auto const bell = [](double a, double b) { return std::exp(-a * a - b * b); };
    x *= 3, y *= 3;
    return 3 * (1 - x) * (1 - x) * bell(x, y + 1) - 10 * (x / 5 - x * x * x - std::pow(y, 5)) * bell(x, y)
           - bell(x + 1, y) / 3;
}

void draw_hills(qv::GraphHandle const& graph) {
    graph.color_axis({.title = "height, m"});
    auto map = graph.heat_map("");
    map.grid(square_of(hills), side, side, -3, 3, -3, 3);
    graph.contours("", {.line_color = 0xFFFFFF, .contour_levels = "6", .contour_labels = true}).grid(map);
}

void draw_points(qv::GraphHandle const& graph) {
    graph.color_axis({.title = "points a cell", .log = true, .colors = "ember"});
    auto map = graph.heat_map("", {.grid_bins_x = 80, .grid_bins_y = 60});
    std::uint64_t seed = 1;
    auto const uniform = [&] {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        return (static_cast<double>(seed >> 11) + 0.5) * 0x1p-53;
    };
    for (int i = 0; i < 100000; ++i) {
        double const radius = std::sqrt(-2 * std::log(uniform())), angle = 6.283185307179586 * uniform();
        double const x = radius * std::cos(angle);
        map.add(x, 0.5 * x + 0.6 * radius * std::sin(angle));
    }
}

void draw_values(qv::GraphHandle const& graph) {
    graph.color_axis({.title = "change, %", .from = -10, .to = 10, .colors = "tide"});
    const std::vector<double> changes{-9, -4.5, 0.5, 3,  8,    -6, NAN, 1, 2.5, 6,
                                      2,  4,    NAN, -1, -3.5, 7,  9.5, 5, -2,  -8};
    graph.heat_map("", {.missing_color = 0xE0E0E0, .cell_values = true}).grid(changes, 5, 4);
}

void draw_angles(qv::GraphHandle const& graph) {
    graph.color_axis({.title = "angle, degrees", .from = -180, .to = 180, .colors = "dial"});
    graph.x_axis({.log = true});
    std::vector<double> x_edges, y_edges;
    for (int i = 0; i <= side; ++i) {
        x_edges.push_back(std::pow(10, 4.0 * i / side));
        y_edges.push_back(2.0 * i / side - 1);
    }
    auto const angle = [](double x, double y) { return std::atan2(y, x) * 57.29577951308232; };
    graph.heat_map("").grid(square_of(angle), x_edges, y_edges);
}

} // namespace

int main(int argc, char** argv) {
    qv::headless::HeadlessHost host({960, 720});
    qv::qvGraph& page = host.control();
    page.UseLook("light");
    draw_hills(page.graph("A matrix and its contours", {.left = 0, .top = 0, .width = 50, .height = 50}));
    draw_points(page.graph("100 000 points counted", {.left = 50, .top = 0, .width = 50, .height = 50}));
    draw_values(page.graph("Values, cells without one", {.left = 0, .top = 50, .width = 50, .height = 50}));
    draw_angles(page.graph("Angles", {.left = 50, .top = 50, .width = 50, .height = 50}));
    page.Refresh();
    host.save(argc > 1 ? argv[1] : "heat_map.png");
}
