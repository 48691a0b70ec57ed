// Twenty axes with ticks at round values: of any range, in any size, logarithmic, reversed, with a prefix, an
// offset.
#include "example.h"

using namespace qv::example;

namespace {

struct Ticks {
    char const* title;
    double first, last;
    bool is_log = false, si_prefix = false, offset = false, reversed = false;
};

// An x axis alone, at a place in percent of the page.
void axis_graph(qv::qvGraph& page, Ticks const& ticks, double left, double top, double width) {
    auto const graph = page.graph("", {.left = left,
                                       .top = top,
                                       .width = width,
                                       .height = 10,
                                       .border_left = 5,
                                       .border_right = 5,
                                       .border_top = 0,
                                       .border_bottom = 10});
    graph.y_axis({.hide = true});
    graph.x_axis({.title = ticks.title,
                  .label_font = "Arial|8",
                  .title_font = "Arial|9",
                  .from = ticks.first,
                  .to = ticks.last,
                  .log = ticks.is_log,
                  .reverse = ticks.reversed,
                  .si_prefix = ticks.si_prefix,
                  .offset = ticks.offset});
}

} // namespace

void draw(qv::qvGraph& page) {
    page.FitMargins(false);
    Ticks const wide[]{{"0 .. 1", 0, 1},
                       {"313 .. 417", 313, 417},
                       {"−0.73 .. 2.19", -0.73, 2.19},
                       {"reversed", -40, 12, false, false, false, true},
                       {"0 .. 12345", 0, 12345},
                       {"0 .. 8·10^{6}", 0, 8e6},
                       {"0 .. 3·10^{10}", 0, 3e10},
                       {"0 .. 7·10^{−6}", 0, 7e-6},
                       {"SI prefix: frequency, Hz", 0, 48000, false, true},
                       {"offset: pressure, Pa", 101324.1, 101325.7, false, false, true}};
    Ticks const narrow[]{{"log, 1 .. 10^{3}", 1, 1e3, true},
                         {"log, 10^{−9} .. 10^{12}", 1e-9, 1e12, true},
                         {"log, 3 .. 80", 3, 80, true},
                         {"log, 2.1 .. 3.3", 2.1, 3.3, true},
                         {"log, SI: 20 .. 20 000", 20, 20000, true, true},
                         {"1990 .. 2024", 1990, 2024},
                         {"17.201 .. 17.209", 17.201, 17.209},
                         {"−1 .. 1", -1, 1},
                         {"0 .. 2·10^{5}", 0, 2e5},
                         {"99 990 .. 100 040", 99990, 100040}};
    for (int row = 0; row < 10; ++row) {
        axis_graph(page, wide[row], 0, row * 10, 58);
        axis_graph(page, narrow[row], 58, row * 10, row < 5 ? 42 : 21 + 4 * (row - 5));
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "ticks", draw);
}
