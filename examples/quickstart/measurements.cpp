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
    page.NewGraph("A day", 0, 24); // the x axis is fixed, the y axis finds its range
    page.NewDataSet("inside");
    page.DataLine({.Color = 0x3C3CC8, .Thickness = 2});
    page.AddDataPoints(hours, inside); // whole columns at once
    page.NewDataSet("outside");
    page.DataLine({.Color = 0xA86426, .Thickness = 2});
    page.AddDataPoints(hours, outside);
    page.Refresh();
    host.save("day.png");
}
