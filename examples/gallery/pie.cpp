// Pie and ring: labels that keep apart on both sides, small slices gathered, a legend of slices.
#include "example.h"

#include <string>
#include <utility>

using namespace qv::example;

namespace {

void draw(qv::qvGraph& page) {
    std::pair<char const*, double> const sources[] = {
        {"oil", 31.6}, {"coal", 26.5}, {"gas", 23.3}, {"water", 6.4}, {"nuclear", 4.0}, {"wind", 3.3},
        {"sun", 2.4},  {"waste", 0.6}, {"wood", 0.7}, {"earth", 0.7}, {"biofuel", 0.5}};
    auto pie = page.graph("Energy of the world, percent", {.left = 0, .width = 50});
    pie.legend({.show = false});
    auto const all = pie.pie("energy");
    auto ring = page.graph("The same, gathered", {.left = 50, .width = 50});
    auto const few =
        ring.pie("energy", {.pie_hole = 55, .pie_labels = 2, .pie_gather = 3.5, .pie_gather_name = "other"});
    ring.legend({.place = 2});
    for (auto const& [name, value] : sources)
        for (auto const& slices : {all, few}) slices.add_slice(name, value);
}

} // namespace

int main(int argc, char** argv) {
    return run(argc, argv, "pie", draw);
}
