#include "render/error_bars.h"

#include "TestControl.h"
#include "render/data_reach.h"
#include "render/data_sets.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <set>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

struct Errors : TestControl {
    document::Graph& graph = add_graph();
    document::DataSet& set = add_data_set(graph, {});

    Errors() {
        set.ShowErrorBar = true;
        set.ErrorBarColor = 0x0000BB;
    }
    /// Errors below, above, left and right.
    void add(Point point, std::array<double, 4> const& errors) {
        auto const one = [](double const& value) { return std::span(&value, 1); };
        set.points.append(one(point.x), one(point.y), {},
                          {one(errors[0]), one(errors[1]), one(errors[2]), one(errors[3])});
    }
    std::vector<std::string> lines() {
        page().log.clear();
        PlotDataSets(state, page());
        return page().lines("line");
    }
};

} // namespace

TEST_CASE("errors to each side, both ways at once; what is not a length is none") {
    Errors page;
    page.add({4, 5}, {1, 2, 0.5, 1.5});
    page.add({8, 5}, {none, 3, -1, std::numeric_limits<double>::infinity()});
    // A unit is 1000 twips; caps are two millimetres of 100 twips, on whole pixels of 15.
    CHECK(page.lines()
          == std::vector<std::string>{
              "line 4995,7000 4995,4000 #0000BB w1", "line 4890,7000 5100,7000 #0000BB w1",
              "line 4890,4000 5100,4000 #0000BB w1", "line 4500,6000 6500,6000 #0000BB w1",
              "line 4500,5895 4500,6105 #0000BB w1", "line 6500,5895 6500,6105 #0000BB w1",
              "line 9000,6000 9000,3000 #0000BB w1", "line 8895,3000 9105,3000 #0000BB w1"});
    const std::vector<Reach> reaches = reaches_of_points(page.state, page.graph);
    CHECK(reaches[0].extent == document::Extent{3.5, 8});
    CHECK(reaches[1].extent == document::Extent{4, 8});
    CHECK(fits_at_each_drawing(page.set));
    page.set.ErrorBarCap = 0;
    page.set.ErrorBarThickness = 3;
    CHECK(page.lines()
          == std::vector<std::string>{"line 4995,7000 4995,4000 #0000BB w3",
                                      "line 4500,6000 6500,6000 #0000BB w3",
                                      "line 9000,6000 9000,3000 #0000BB w3"});
    page.set.ShowErrorBar = false;
    CHECK(page.lines().empty());
    CHECK_FALSE(fits_at_each_drawing(page.set));
}

TEST_CASE("an error bar is seen as far as it reaches into the axis, though its point is not") {
    Errors page;
    page.add({5, 12}, {4, 1, none, none});
    page.add({5, 30}, {4, 1, none, none});
    CHECK(page.lines().size() == 3);
    // Towards zero and below it, on a logarithmic axis, it leads out of sight.
    page.graph.Axes[1].AxisLog = true;
    page.graph.Axes[1].AxisValue1 = 1;
    page.add({5, 2}, {3, 1, none, none});
    page.add({5, -2}, {1, 4, none, none}); // has no place
    CHECK(page.lines().size() == 6);
    CHECK(reaches_of_points(page.state, page.graph)[1].extent == document::Extent{2, 31});
}

TEST_CASE("E serves where the columns give nothing, and a plain E is drawn as ever") {
    Errors page;
    page.set.points.append({2, 5, 1, {}});
    page.set.points.append({4, 5, -1, {}});
    page.set.DataSymbolFill.EdgeColor = 0x00AA00;
    CHECK_FALSE(draws_errors_together(page.set));
    CHECK(page.lines()[3] == "line 4000,6000 6000,6000 #00AA00 w1");
    page.add({6, 5}, {none, none, 1, none});
    CHECK(draws_errors_together(page.set));
    auto const lines = page.lines();
    CHECK(lines.size() == 8);
    CHECK(lines[3] == "line 4000,6000 6000,6000 #0000BB w1");
}

TEST_CASE("a band spans the errors around the points, in steps and with gaps, behind the line") {
    Errors page;
    page.add({1, 5}, {1, 2, none, none});
    page.add({3, 5}, {1, 1, none, none});
    page.add({4, none}, {1, 1, none, none});
    page.add({6, 5}, {0, 1, none, none});
    page.add({8, 5}, {1, 1, none, none});
    page.set.ErrorStyle = 1;
    page.set.DataLineStyle = line_solid;
    CHECK(page.lines().size() == 2); // only the line: two pieces
    auto const polygons = page.page().lines("polygon");
    REQUIRE(polygons.size() == 2);
    // In pixels of 15 twips.
    CHECK(polygons[0].starts_with(
        "polygon 133.33,266.67 266.67,333.33 266.67,466.67 133.33,466.67 pen #0000BB"));
    CHECK(page.page().log[1] == polygons[0]);
    page.set.DataSteps = 2;
    page.lines();
    CHECK(page.page().lines("polygon")[0].starts_with(
        "polygon 133.33,266.67 266.67,266.67 266.67,333.33 266.67,466.67 133.33,466.67"));
    page.set.ErrorStyle = 2;
    page.set.DataSteps = 0;
    page.set.DataLineStyle = line_none;
    CHECK(page.lines().size() == 3 + 3 + 2 + 3);
    CHECK(page.page().lines("polygon").size() == 2);
}

TEST_CASE("error bars of stacked bars stand at their ends, moved as the bars are") {
    Errors page;
    document::DataSet& below = page.graph.DataSets[0];
    below.points.append({2, 3, 0, {}});
    document::DataSet& above = page.add_data_set(page.graph, {});
    for (document::DataSet* bars : {&below, &above}) {
        bars->DataSymbol = 1;
        bars->DataSymbolSize = 100;
        bars->ShowErrorBar = true;
        bars->BarOffset = 3; // millimetres of 100 twips
    }
    above.BarStacked = true;
    double const x = 2, y = 4, error = 1;
    above.points.append({&x, 1}, {&y, 1}, {}, {std::span(&error, 1)});
    CHECK(page.lines()[0] == "line 3300,5000 3300,4000 #000000 w1");
}

TEST_CASE("of very many error bars those that lie on others are left out, and no pixel is missing") {
    Errors page;
    std::set<std::string> of_few;
    // The same bars again and again; few enough at first for all of them to be drawn.
    auto const point = [](int i) { return Point{0.011 * (i % 1000), 5 + (i * 7 % 1000) * 0.0006}; };
    auto const add = [&](int i) { page.add(point(i), {0.1 + i % 3, i % 5 == 0 ? none : 0.5, none, none}); };
    for (int i = 0; i < 3000; ++i) add(i);
    for (std::string const& line : page.lines()) of_few.insert(line);
    for (int i = 3000; i < 60000; ++i) add(i);
    auto const of_many = page.lines();
    CHECK(of_many.size() < 20000);
    // Pixels are whole: compared are places in pixels.
    auto const pixels = [](auto const& lines) {
        std::set<std::pair<long, long>> found;
        for (std::string const& line : lines) {
            double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
            REQUIRE(std::sscanf(line.c_str(), "line %lf,%lf %lf,%lf", &x1, &y1, &x2, &y2) == 4);
            auto const whole = [](double twips) { return std::lround(std::floor(twips / 15 + 0.5)); };
            for (long x = std::min(whole(x1), whole(x2)); x <= std::max(whole(x1), whole(x2)); ++x)
                for (long y = std::min(whole(y1), whole(y2)); y <= std::max(whole(y1), whole(y2)); ++y)
                    if (x >= 67 && x <= 733 && y >= 67 && y <= 733) found.emplace(x, y);
        }
        return found;
    };
    CHECK(pixels(of_many) == pixels(of_few));
}
