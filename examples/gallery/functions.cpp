// Functions given as text: poles stay open, wild ones are drawn to the pixel, functions of one's own.
#include "example.h"

using namespace qv::example;

namespace {

void add_function(qv::qvGraph& page, std::string const& formula, double from, double to) {
    page.NewDataSet(formula);
    page.AddMathFunc(formula, from, to);
}

} // namespace

void draw(qv::qvGraph& page) {
    page.DefineFunction("wave(a, t) = EXP(-a*t^2) * COS(6*t)");
    plain_graph(page, "tan(x) and x", "x", "");
    page.GraphPosition({.Left = 0, .Top = 0, .Width = 50, .Height = 50});
    add_function(page, "tan(x)", -5, 5);
    add_function(page, "x", -5, 5);
    axis_range(page, 0, -5, 5, 10);
    axis_range(page, 1, -5, 5, 5);
    plain_graph(page, "sin(1/x)", "x", "");
    page.GraphPosition({.Left = 50, .Top = 0, .Width = 50, .Height = 50});
    add_function(page, "sin(1/x)", 0, 0);
    axis_range(page, 0, -0.5, 0.5, 5, 2);
    axis_range(page, 1, -1.2, 1.2, 4);
    plain_graph(page, "wave(a, t) = EXP(-a*t^2) * COS(6*t)", "t", "");
    page.GraphPosition({.Left = 0, .Top = 50, .Width = 100, .Height = 50});
    add_function(page, "wave(0.2, x)", -4, 4);
    add_function(page, "wave(1, x)", -4, 4);
    axis_range(page, 0, -4, 4, 8, 2);
    axis_range(page, 1, -1, 1, 4);
    page.LegendShow(true);
}

int main(int argc, char** argv) {
    return run(argc, argv, "functions", draw);
}
