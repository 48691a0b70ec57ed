// The smallest useful program: a page with one line on it.
#include <qvgraph/HeadlessHost.h>
#include <qvgraph/qvGraph.h>

#include <cmath>

int main() {
    qv::headless::HeadlessHost host({800, 500}); // a page in memory, in pixels
    qv::qvGraph& page = host.control();
    page.UseLook("light"); // or "dark", "print", one of your own
    auto graph = page.graph("A damped oscillation");
    auto line = graph.line("amplitude");
    for (double t = 0; t <= 10; t += 0.01) line.add(t, std::exp(-t / 4) * std::cos(5 * t));
    page.Refresh();
    host.save("first_page.png"); // or .svg, .pdf
}
