// Columns of a file as lines on one graph.
#include <qvgraph/HeadlessHost.h>
#include <qvgraph/qvGraph.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

int main() {
    std::ifstream file("measurements.csv");
    std::string line;
    std::getline(file, line); // the names of the columns
    std::vector<double> hours, inside, outside;
    double hour = 0, in = 0, out = 0;
    while (std::getline(file, line))
        if (std::sscanf(line.c_str(), "%lf,%lf,%lf", &hour, &in, &out) == 3) {
            hours.push_back(hour);
            inside.push_back(in);
            outside.push_back(out);
        }

    qv::headless::HeadlessHost host({800, 500});
    qv::qvGraph& page = host.control();
    page.UseLook("light");
    auto graph = page.graph("A day");
    graph.x_axis({.title = "hour", .from = 0, .to = 24}); // fixed; the y axis finds its range
    graph.y_axis({.title = "°C"});
    // colours are 0xBBGGRR, and the look's own where none is given
    auto warm = graph.line("inside", {.color = 0x1E12BA, .symbol = 3});
    auto cold = graph.line("outside", {.symbol = 4});
    warm.add(hours, inside); // whole columns at once
    cold.add(hours, outside);
    page.Refresh();
    host.save("day.png");
}
