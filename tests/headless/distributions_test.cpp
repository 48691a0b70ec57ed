// Histograms, box plots and strips as a person meets them: the axes they get, what is read out of them, by
// pointer and keys, and what leaves the page.
#include "Person.h"
#include "interact/nearest_point.h"
#include "interact/point_steps.h"
#include "qvgraph/Outline.h"
#include "scale/mapping.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

using namespace qv;
using namespace qv::testing;

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

struct Reader : Person {
    GraphHandle graph_;

    explicit Reader(char const* look = "light") {
        page.UseLook(look);
        graph_ = page.graph("graph");
    }
    std::string name_at(Point place) {
        auto const found = interact::nearest_point(state, 0, place, 0);
        return found ? interact::point_name(state, 0, *found) : "";
    }
    std::string read() { return state.Label1.Caption; }
};

} // namespace

TEST_CASE("automatic axes hold the bins of a histogram, and its bars stand on 0") {
    for (char const* const look : {"classic", "light"})
        for (bool const lies : {false, true}) {
            CAPTURE(look);
            CAPTURE(lies);
            Reader reader(look);
            auto const set = reader.graph_.histogram("values", {.histogram_bin_width = 1, .bar_horiz = lies});
            set.add_values(std::vector<double>{100.5, 101.5, missing, 101.7, 104.2}, 7);
            reader.page.Refresh();
            auto const values = lies ? reader.graph_.y_axis() : reader.graph_.x_axis();
            auto const counts = lies ? reader.graph_.x_axis() : reader.graph_.y_axis();
            CHECK(counts.from() == 0);
            CHECK(counts.to() == doctest::Approx(2.1));
            CHECK(values.from() == doctest::Approx(99.75));
            CHECK(values.to() == doctest::Approx(105.25));
            set.add_values(std::vector<double>{110});
            reader.page.Refresh();
            CHECK(values.to() == doctest::Approx(111.55));
            set.histogram_measure(1);
            reader.page.Refresh();
            CHECK(counts.to() == doctest::Approx(0.42));
            set.clear();
            reader.page.Refresh();
            CHECK(reader.heard.errors.empty());
        }
}

TEST_CASE(
    "a logarithmic axis of counts begins below the lowest bar, one of values at the first edge it has") {
    Reader reader;
    auto const set = reader.graph_.histogram("values");
    set.histogram_edges(std::vector{0.0, 1.0, 10.0, 100.0});
    std::vector<double> values(200, 5);
    values.push_back(50);
    set.add_values(values);
    reader.graph_.x_axis().log(true);
    reader.graph_.y_axis().log(true);
    reader.page.Refresh();
    CHECK(reader.graph_.x_axis().log());
    CHECK(reader.graph_.x_axis().from() > 0.5);
    CHECK(reader.graph_.x_axis().from() < 1);
    CHECK(reader.graph_.y_axis().from() == 0.5);
    CHECK(reader.graph_.y_axis().to() > 200);
    CHECK_THROWS_WITH(set.histogram_edges(std::vector{1.0, 1.0}), doctest::Contains("rising order"));
    CHECK_THROWS(set.histogram_edges(std::vector{1.0}));
    CHECK_THROWS(set.histogram_edges(std::vector{1.0, missing}));
    reader.page.SetHistogramEdges(std::vector{2.0, 1.0});
    CHECK(reader.heard.errors.size() == 1);
}

TEST_CASE("automatic axes hold boxes and strips with their width, whiskers and outliers") {
    Reader reader;
    reader.page.AutoFit(true);
    auto const boxes = reader.graph_.boxes("boxes");
    boxes.add_values(std::vector<double>{1, 2, 3, 4, 5, 50, missing}, 1);
    boxes.add_values(std::vector<double>{2, 3}, 5);
    reader.page.Refresh();
    CHECK(reader.graph_.x_axis().from() == doctest::Approx(0 - 0.3)); // 2 wide, and a twentieth of 0..6 more
    CHECK(reader.graph_.x_axis().to() == doctest::Approx(6.3));
    CHECK(reader.graph_.y_axis().from() < 1);
    CHECK(reader.graph_.y_axis().to() > 50);
    boxes.kind(3);
    boxes.group_width(0);
    reader.page.Refresh();
    CHECK(reader.graph_.x_axis().from() == doctest::Approx(0.8));
    boxes.bar_horiz(true); // the points stay where they are
    reader.page.Refresh();
    CHECK(reader.graph_.x_axis().to() == doctest::Approx(5.2));
}

TEST_CASE("bins and boxes are read out by pointer and by keys") {
    Reader reader;
    auto const set = reader.graph_.histogram("values", {.histogram_bin_width = 1});
    set.add_values(std::vector<double>{0.5, 1.5, 1.7, 2.5});
    reader.page.Refresh();
    CHECK(reader.name_at(reader.in_plot(0.5, 0.5)) == "values: from 1, to 2, count 2");
    CHECK(reader.name_at(reader.in_plot(0.2, 0.3)).empty());
    CHECK(interact::step_point(reader.state, true));
    CHECK(reader.read() == "values: from 0, to 1, count 1");
    for (int step = 0; step < 2; ++step) CHECK(interact::step_point(reader.state, true));
    CHECK(reader.read() == "values: from 2, to 3, count 1");
    CHECK_FALSE(interact::step_point(reader.state, true));
    set.clear(); // what was read is gone
    reader.page.Refresh();
    CHECK(reader.page.outline(0)->parts[2].description.find("0 items") != std::string::npos);

    set.kind(2);
    set.add_values(std::vector<double>{1, 2, 3, 4, 50}, 3);
    reader.page.Refresh();
    std::string const box =
        reader.name_at({reader.in_plot(0.5, 0).x, scale::y_map(reader.graph(), reader.graph().Axes[1])(2.5)});
    CHECK(box.starts_with("values: 3"));
    CHECK(box.find("lower quartile 2") != std::string::npos);
    CAPTURE(box);
    CHECK(box.ends_with("upper whisker 4, count 5, outliers 1"));
}

TEST_CASE("a look fills histograms and boxes as it fills bars, whenever it is put on") {
    auto const colors = [](Reader& reader) {
        auto const set = reader.graph_.find("values");
        return std::vector<Color>{set.symbol_color(), set.line_color(), set.symbol_edge_thickness()};
    };
    for (int const kind : {1, 2}) {
        Reader before("print"), after("light");
        for (Reader* const reader : {&before, &after})
            reader->graph_.line("values").kind(static_cast<std::uint8_t>(kind));
        after.page.UseLook("print");
        CHECK(colors(before) == colors(after));
        CHECK(colors(before) == std::vector<Color>{rgb(90, 90, 90), 0, 1});
    }
}

TEST_CASE("a page with every kind of distribution is drawn the same twice, whatever is zoomed") {
    Reader reader;
    auto const data = [](int i) { return std::sin(i * 0.7) * (i % 9) + (i % 50 == 3 ? missing : 0); };
    for (int kind = 1; kind <= 3; ++kind) {
        auto const set = reader.graph_.line("set " + std::to_string(kind));
        set.kind(static_cast<std::uint8_t>(kind));
        set.box_notches(true);
        for (int i = 0; i < 500; ++i) set.add(i % 4 + 0.5, data(i));
    }
    for (bool const reverse : {false, true})
        for (auto const& [from, to] : {std::pair{-10.0, 10.0},
                                       {10.0, -10.0},
                                       {1.0, 1.0 + 1e-9},
                                       {-1e300, 1e300},
                                       {3.0, 3.0},
                                       {500.0, 501.0}}) {
            for (auto const& axis : reader.graph_.axes()) {
                axis.set({.from = from, .to = to});
                axis.reverse(reverse);
            }
            reader.page.Refresh();
            auto const first = reader.pixels();
            reader.page.Refresh();
            CHECK(reader.pixels() == first);
        }
    CHECK(reader.heard.errors.empty());
}
