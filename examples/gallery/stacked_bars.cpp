// Bars upon bars: upright and shaded like cylinders, and lying from a base value.
#include "example.h"

using namespace qv::example;

namespace {

constexpr double shares[3][5]{{31, 28, 25, 22, 20}, {18, 21, 24, 26, 27}, {9, 12, 16, 21, 26}};
const qv::Color colors[]{ink, blue, orange};
constexpr char const* names[]{"coal", "gas", "wind"};

void add_bars(qv::GraphHandle const& graph, bool lying) {
    for (int set = 0; set < 3; ++set) {
        auto const bars =
            graph.bars(names[set], {.symbol_color = lying ? colors[set] : qv::rgb(235, 240, 250),
                                    .symbol_edge_color = colors[set],
                                    .symbol_edge_thickness = 0,
                                    .bar_horiz = lying,
                                    .bar_3d = !lying,
                                    .bar_stacked = set > 0,
                                    .bar_width = 0.75}); // of a year
        for (int year = 0; year < 5; ++year) {
            double const share = shares[set][year];
            lying ? bars.add(share, 2020 + year) : bars.add(2020 + year, share);
        }
    }
}

} // namespace

void draw(qv::qvGraph& page) {
    auto const upright = page.graph("Electricity, upright", {.left = 0, .width = 50});
    upright.x_axis({.from = 2019, .to = 2025});
    upright.y_axis({.title = "share, %", .from = 0, .to = 80});
    upright.legend({.show = false});
    add_bars(upright, false);
    auto const lying = page.graph("and lying", {.left = 50, .width = 50});
    lying.x_axis({.title = "share, %", .from = 0, .to = 100});
    lying.y_axis({.from = 2019, .to = 2025});
    add_bars(lying, true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "stacked_bars", draw);
}
