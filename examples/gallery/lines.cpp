// Lines: solid and dashed, thin and thick, several on one page with a legend.
#include "example.h"

#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    auto const graph = page.graph("Damped oscillations");
    graph.x_axis({.title = "time, s", .from = 0, .to = 10});
    graph.y_axis({.title = "amplitude", .from = -1.5, .to = 1.5});
    struct {
        char const* name;
        int thickness, dash;
        double damping;
    } const curves[]{{"free", 1, 2, 0}, {"light", 2, 0, 0.15}, {"strong", 3, 0, 0.6}};
    for (auto const& [name, thickness, dash, damping] : curves) {
        auto const line = graph.line(name, {.line_dash = dash, .line_thickness = thickness});
        for (double t = 0; t <= 10; t += 0.02) line.add(t, std::exp(-damping * t) * std::cos(4 * t));
    }
}

int main(int argc, char** argv) {
    return run(argc, argv, "lines", draw);
}
