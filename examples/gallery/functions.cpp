// Functions given as text: poles stay open, wild ones are drawn to the pixel, functions of one's own.
#include "example.h"

using namespace qv::example;

namespace {

struct Ranges {
    double x1, x2, y1, y2;
};

qv::GraphHandle graph(qv::qvGraph& page, char const* title, qv::GraphOptions const& place,
                      char const* variable, Ranges const& ranges) {
    auto const made = page.graph(title, place);
    made.x_axis({.title = variable, .from = ranges.x1, .to = ranges.x2});
    made.y_axis({.from = ranges.y1, .to = ranges.y2});
    made.legend({.show = false});
    return made;
}

} // namespace

void draw(qv::qvGraph& page) {
    page.DefineFunction("wave(a, t) = EXP(-a*t^2) * COS(6*t)");
    auto const tangent =
        graph(page, "tan(x) and x", {.left = 0, .top = 0, .width = 50, .height = 50}, "x", {-5, 5, -5, 5});
    for (char const* const formula : {"tan(x)", "x"})
        tangent.function(formula, formula, {.formula_from = -5, .formula_to = 5});

    graph(page, "sin(1/x)", {.left = 50, .top = 0, .width = 50, .height = 50}, "x", {-0.5, 0.5, -1.2, 1.2})
        .function("sin(1/x)", "sin(1/x)");

    auto const waves = graph(page, "wave(a, t) = EXP(-a*t^2) * COS(6*t)",
                             {.left = 0, .top = 50, .width = 100, .height = 50}, "t", {-4, 4, -1, 1});
    for (char const* const formula : {"wave(0.2, x)", "wave(1, x)"}) waves.function(formula, formula);
    waves.legend({.show = true});
}

int main(int argc, char** argv) {
    return run(argc, argv, "functions", draw);
}
