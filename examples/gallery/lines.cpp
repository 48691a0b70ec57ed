// Lines: solid and dashed, thin and thick, several on one page with a legend.
#include "example.h"

#include <cmath>

using namespace qv::example;

void draw(qv::qvGraph& page) {
    plain_graph(page, "Damped oscillations", "time, s", "amplitude");
    struct {
        char const* name;
        int thickness, dash;
        double damping;
    } const curves[]{{"free", 1, 2, 0}, {"light", 2, 0, 0.15}, {"strong", 3, 0, 0.6}};
    for (auto const& [name, thickness, dash, damping] : curves) {
        page.NewDataSet(name);
        page.DataLineThickness(thickness);
        page.DataLineDash(dash);
        for (double t = 0; t <= 10; t += 0.02) page.AddDataPoint(t, std::exp(-damping * t) * std::cos(4 * t));
    }
    axis_range(page, 0, 0, 10, 10, 2);
    axis_range(page, 1, -1.5, 1.5, 6, 2);
    page.LegendShow(true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "lines", draw);
}
