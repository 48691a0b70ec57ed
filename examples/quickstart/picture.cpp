// A damped oscillation as a picture and as a page in shapes.
#include <qvgraph/HeadlessHost.h>
#include <qvgraph/qvGraph.h>

#include <cmath>

int main() {
    qv::headless::HeadlessHost host({800, 500}); // a page in memory, in pixels
    qv::qvGraph& page = host.control();
    page.UseLook("light"); // or "dark", "print"; without one, the classic pale yellow

    auto graph = page.graph("A damped oscillation");
    graph.x_axis({.title = "time / s"});
    graph.y_axis({.title = "amplitude / mm"});

    auto line = graph.line("amplitude");
    for (double t = 0; t <= 10; t += 0.01) line.add(t, std::exp(-t / 4) * std::cos(5 * t));

    page.Refresh();
    host.save("oscillation.png");
    host.save("oscillation.svg"); // .pdf and .bmp go the same way
}
