// How values are distributed: a histogram with bins by the rule and its share below each value, two
// histograms that lie, notched box plots upon the points themselves.
#include "qvgraph/HeadlessHost.h"
#include "qvgraph/looks.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace {

/// The same numbers everywhere: sums of twelve parts of one are as good as a bell curve.
std::vector<double> bell(int count, double middle, double width) {
    static std::uint32_t seed = 7;
    std::vector<double> values;
    for (int i = 0; i < count; ++i) {
        double sum = -6;
        for (int part = 0; part < 12; ++part) {
            seed = seed * 1664525U + 1013904223U;
            sum += seed / 4294967296.0;
        }
        values.push_back(middle + width * sum);
    }
    return values;
}

void draw_heights(qv::qvGraph& page) {
    qv::Color const white = qv::rgb(255, 255, 255), red = qv::look("light").palette[3];
    auto const women = bell(1500, 164, 6), men = bell(1500, 178, 7);
    auto all = page.graph("Heights of 3000 people", {.width = 50, .height = 50});
    all.x_axis({.title = "cm"});
    all.y_axis({.title = "people"});
    auto below = all.add_y_axis({.title = "share below", .far_side = true});
    auto people = all.histogram("", {.symbol_edge_color = white, .symbol_edge_thickness = 1});
    auto share =
        all.histogram("", {.axis = below, .color = red, .transparent = true, .histogram_bin_width = 1});
    share.histogram_measure(1);
    share.histogram_cumulative(true);
    for (auto const& set : {people, share})
        for (auto const& values : {women, men}) set.add_values(values);

    auto lying = page.graph("The same by sex", {.top = 50, .width = 50, .height = 50});
    lying.x_axis({.title = "density"});
    lying.y_axis({.title = "cm"});
    for (bool const female : {false, true}) {
        auto set = lying.histogram(female ? "women" : "men", {.transparent = female, .bar_horiz = true});
        set.histogram_bin_width(2.5);
        set.histogram_measure(2);
        set.add_values(female ? women : men);
    }
}

void draw_times(qv::qvGraph& page) {
    auto graph = page.graph("Reaction by age", {.left = 50, .width = 50});
    graph.x_axis({.title = "age, decades"});
    graph.y_axis({.title = "milliseconds"});
    qv::Color const pale = qv::rgb(150, 165, 190);
    auto points = graph.strip("each", {.color = pale, .symbol_size = 0.8F, .group_width = 0.4});
    auto boxes = graph.boxes(
        "boxes", {.symbol_size = 1.2F, .transparent = true, .line_thickness = 1, .box_notches = true});
    for (int decade = 2; decade <= 7; ++decade) {
        auto times = bell(120, 4.9 + 0.012 * decade * decade, 0.16 + 0.02 * decade);
        for (double& time : times) time = std::exp(time);
        boxes.add_values(times, decade);
        points.add_values(times, decade);
    }
}

} // namespace

int main(int argc, char** argv) {
    qv::headless::HeadlessHost host({960, 560});
    host.control().UseLook("light");
    draw_heights(host.control());
    draw_times(host.control());
    host.control().Refresh();
    host.save(argc > 1 ? argv[1] : "distributions.png");
}
