#include "render/polar/polar_map.h"

#include "TestControl.h"
#include "render/axes/axes.h"
#include "render/data_sets.h"
#include "render/polar/polar_bars.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

using namespace qv;
using namespace qv::render;
using document::DataSet;
using qv::testing::TestControl;

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// A graph whose plot area, 10000 x 10000 twips about (6000, 6000), is polar with y from 0 to 10.
struct PolarPage : TestControl {
    document::Graph& graph = add_graph();

    PolarPage() {
        graph.GraphPolar = true;
        for (document::Axis& axis : graph.Axes) axis.AxisScale = 1;
    }
    PolarMap map() { return *place_map(graph, SeriesScope::Maps::BeingDrawn).polar; }
    DataSet& add_line(std::vector<Point> const& points) {
        DataSet& set = add_data_set(graph, points);
        set.DataLineStyle = line_solid;
        set.DataLineThickness = 1;
        return set;
    }
    std::vector<std::string> draw(std::string_view what) {
        page().log.clear();
        PlotDataSets(state, page());
        return page().lines(what);
    }
};

struct Segment {
    Point from, to;
};

std::vector<Segment> segments(std::vector<std::string> const& lines) {
    std::vector<Segment> found;
    for (std::string const& line : lines) {
        Segment s;
        if (std::sscanf(line.c_str(), "line %lf,%lf %lf,%lf", &s.from.x, &s.from.y, &s.to.x, &s.to.y) == 4)
            found.push_back(s);
    }
    return found;
}

double from_centre(Point place) {
    return std::hypot(place.x - 6000, place.y - 6000);
}

} // namespace

TEST_CASE("the polar map leads there and back, in degrees and radians, either way round") {
    for (bool const radians : {false, true})
        for (bool const clockwise : {false, true})
            for (float const zero : {0.0F, 90.0F, -450.0F})
                for (bool const reverse : {false, true})
                    for (bool const log : {false, true}) {
                        PolarPage page;
                        page.graph.PolarRadians = radians;
                        page.graph.PolarClockwise = clockwise;
                        page.graph.PolarZero = zero;
                        page.graph.Axes[1].AxisReverse = reverse;
                        page.graph.Axes[1].AxisLog = log;
                        page.graph.Axes[1].AxisValue1 = log ? 0.1 : -2;
                        const PolarMap map = page.map();
                        double const degree = radians ? std::numbers::pi / 180 : 1;
                        for (double const angle : {0.0, 45.0, 123.0, 359.0})
                            for (double const y : {0.2, 3.0, 9.9}) {
                                const Point values = map.values_at(map(angle * degree, y));
                                CHECK(values.x == doctest::Approx(angle * degree).epsilon(1e-9));
                                CHECK(values.y == doctest::Approx(y).epsilon(1e-9));
                            }
                        // A turn more is the same place.
                        const Point once = map(30 * degree, 5), twice = map(390 * degree, 5);
                        CHECK(once.x == doctest::Approx(twice.x));
                        CHECK(once.y == doctest::Approx(twice.y));
                    }
}

TEST_CASE("0 points rightwards and angles grow counter-clockwise, as mathematicians have it") {
    PolarPage page;
    const Point right = page.map()(0, 10), top = page.map()(90, 10);
    CHECK(right.x == doctest::Approx(11000));
    CHECK(right.y == doctest::Approx(6000));
    CHECK(top.y == doctest::Approx(1000));
    page.graph.PolarZero = 90;
    page.graph.PolarClockwise = true;
    CHECK(page.map()(90, 10).x == doctest::Approx(11000)); // a compass
}

TEST_CASE("what is less than the centre has no place; the centre of an automatic axis is 0") {
    PolarPage page;
    document::Axis& y = page.graph.Axes[1];
    CHECK(std::isnan(page.map()(0, -1).x));
    CHECK(std::isnan(page.map()(missing, 1).x));
    CHECK(std::isnan(page.map()(0, missing).x));
    y.AxisValue1 = 5;
    CHECK(std::isnan(page.map()(0, 4).x));
    CHECK(from_centre(page.map()(0, 7.5)) == doctest::Approx(2500));
    y.AxisScale = 0;
    CHECK(from_centre(page.map()(0, 5)) == doctest::Approx(2500));
    y.AxisLog = true;
    y.AxisValue1 = 0.1;
    CHECK(std::isnan(page.map()(0, 0).x));
    CHECK(from_centre(page.map()(0, 1)) == doctest::Approx(2500));
    // An axis without a range has no places.
    y.AxisLog = false;
    y.AxisValue1 = y.AxisValue2 = 3;
    y.AxisScale = 1;
    CHECK(std::isnan(page.map()(0, 3).x));
    page.add_line({{0, 3}, {90, 3}});
    CHECK(page.draw("line").empty());
}

TEST_CASE("lines run straight, break at missing values, and end at the outermost circle") {
    PolarPage page;
    page.add_line({{0, 5}, {90, 5}, {missing, 5}, {180, 5}, {180, -3}, {270, 5}, {270, 1e300}, {0, 1e308}});
    auto const drawn = segments(page.draw("line"));
    REQUIRE(drawn.size() == 2);
    CHECK(from_centre(drawn[0].from) == doctest::Approx(2500));
    CHECK(drawn[0].to.y == doctest::Approx(3500));
    CHECK(drawn[1].from.y == doctest::Approx(8500));
    CHECK(drawn[1].to.y == doctest::Approx(11000)); // cut at the circle
    // A chord between two points outside is seen where it crosses.
    PolarPage crossing;
    crossing.add_line({{45, 12}, {135, 12}, {225, 40}});
    auto const chords = segments(crossing.draw("line"));
    REQUIRE(!chords.empty());
    for (Segment const& chord : chords) {
        CHECK(from_centre(chord.from) <= 5000.1);
        CHECK(from_centre(chord.to) <= 5000.1);
    }
    CHECK(chords[0].from.y == doctest::Approx(chords[0].to.y));
}

TEST_CASE("areas fill to the centre and no further than the outermost circle") {
    PolarPage page;
    DataSet& set = page.add_line({{0, 5}, {90, 20}, {180, 5}, {270, 5}, {360, 5}});
    set.DataLineStyle = line_area;
    set.DataSymbolFill.Color1 = 0x123456;
    auto const polygons = page.draw("polygon");
    REQUIRE(polygons.size() == 1);
    double furthest = 0;
    std::size_t position = polygons[0].find(' ');
    double x = 0, y = 0;
    while (std::sscanf(polygons[0].c_str() + position, " %lf,%lf", &x, &y) == 2) {
        furthest = std::max(furthest, from_centre({x * 15, y * 15}));
        position = polygons[0].find(' ', position + 1);
    }
    CHECK(furthest == doctest::Approx(5000).epsilon(1e-3));
    CHECK(polygons[0].find("brush #123456") != std::string::npos);
}

TEST_CASE("symbols stand at their places, and none outside") {
    PolarPage page;
    DataSet& set = page.add_data_set(page.graph, {{90, 5}, {0, 11}, {0, -1}, {180, 10}});
    set.DataSymbol = 3;
    set.DataSymbolSize = 50;
    auto const circles = page.draw("circle");
    REQUIRE(circles.size() == 2);
    CHECK(circles[0].starts_with("circle 6000,3500"));
    CHECK(circles[1].starts_with("circle 1000,6000"));
}

TEST_CASE("the grid has circles at round values and spokes with labels inside the plot area") {
    PolarPage page;
    page.page().log.clear();
    GraphAxes(page.state, page.page(), AxesPass::Full);
    double const radius = page.map().radius;
    CHECK(radius > 3000);
    CHECK(radius < 5000);
    std::vector<double> circles;
    for (std::string const& line : page.page().lines("circle")) {
        double r = 0;
        std::sscanf(line.c_str() + line.find(" r") + 2, "%lf", &r);
        circles.push_back(r / radius * 10);
    }
    for (double const value : circles)
        CHECK(value == doctest::Approx(std::round(value * 2) / 2).epsilon(1e-3));
    CHECK(circles.size() >= 3);
    int labels = 0;
    for (std::string const& line : page.page().lines("text")) {
        double x = 0, y = 0;
        REQUIRE(std::sscanf(line.c_str(), "text %lf,%lf", &x, &y) == 2);
        if (line.find("°") == std::string::npos) continue;
        ++labels;
        CHECK(x >= 1000);
        CHECK(y >= 1000);
        CHECK(x <= 11000);
        CHECK(y <= 11000 - 200);
    }
    CHECK(labels == 12);
    // Nothing of straight axes.
    for (std::string const& line : page.page().lines("line"))
        CHECK(line.find("#000000") == std::string::npos);
    page.page().log.clear();
    page.graph.PolarRadians = true;
    GraphAxes(page.state, page.page(), AxesPass::Full);
    bool half = false;
    for (std::string const& line : page.page().lines("text"))
        half |= line.find("\"π/2\"") != std::string::npos;
    CHECK(half);
}

TEST_CASE("very many points of a line cost what it shows, and none of what they reach is missing") {
    // Ten turns of a spiral with a peak in each of a few places.
    auto const points = [](int count) {
        std::vector<Point> made;
        for (int i = 0; i < count; ++i)
            made.push_back({3600.0 * i / count, 1 + 8.0 * i / count + (i % 2 == 0 ? 0.1 : -0.1)});
        made[static_cast<std::size_t>(count / 2)].y = 9.9;
        return made;
    };
    PolarPage page;
    page.add_line(points(400000));
    auto const drawn = segments(page.draw("line"));
    CHECK(drawn.size() < 100000);
    double furthest = 0;
    for (Segment const& segment : drawn)
        furthest = std::max({furthest, from_centre(segment.from), from_centre(segment.to)});
    CHECK(furthest == doctest::Approx(4950));
    // Each is connected with the next.
    for (std::size_t i = 1; i < drawn.size(); ++i) REQUIRE(drawn[i].from == drawn[i - 1].to);
    // Points a pixel apart or more are all there.
    PolarPage few;
    few.add_line({{0, 5}, {10, 6}, {20, 5}, {30, 6}});
    CHECK(segments(few.draw("line")).size() == 3);
}

TEST_CASE("steps go round and outwards, smooth curves through their points") {
    PolarPage page;
    DataSet& set = page.add_line({{0, 4}, {90, 8}});
    set.DataSteps = 2;
    auto const steps = segments(page.draw("line"));
    REQUIRE(steps.size() > 10);
    for (std::size_t i = 0; i + 1 < steps.size(); ++i)
        CHECK(from_centre(steps[i].to) == doctest::Approx(2000));
    CHECK(steps.back().to.y == doctest::Approx(2000));
    CHECK(steps.back().to.x == doctest::Approx(6000));
    set.DataSteps = 0;
    set.DataLineStyle = line_smooth;
    auto const round = segments(page.draw("line")); // of two points: evenly from one distance to the other
    REQUIRE(round.size() > 10);
    for (Segment const& piece : round) {
        double const degrees = std::atan2(6000 - piece.to.y, piece.to.x - 6000) * 180 / std::numbers::pi;
        CHECK(from_centre(piece.to) == doctest::Approx(2000 + 2000 * degrees / 90));
    }
}

TEST_CASE("polar bars are wedges as wide as values say, rays as wide as millimetres say, cut at the circle") {
    PolarPage page;
    DataSet& set = page.add_line({{0, 5}, {90, 20}, {180, missing}, {270, -3}});
    set.DataLineStyle = line_none;
    set.DataSymbol = symbol_bar;
    set.BarWidth = 30;
    auto const corners = [](std::string const& line) {
        std::vector<Point> found;
        std::size_t position = line.find(' ');
        Point pixel;
        while (std::sscanf(line.c_str() + position, " %lf,%lf", &pixel.x, &pixel.y) == 2) {
            found.push_back({pixel.x * 15, pixel.y * 15});
            position = line.find(' ', position + 1);
        }
        return found;
    };
    auto const wedges = page.draw("polygon");
    REQUIRE(wedges.size() == 2); // no value, or one below the centre, has none
    for (std::size_t i = 0; i < wedges.size(); ++i) {
        double const reach = i == 0 ? 2500 : 5000;
        for (Point const corner : corners(wedges[i])) {
            double const away = from_centre(corner);
            if (away < 1) continue;
            CHECK(away == doctest::Approx(reach).epsilon(1e-3));
            double const angle = std::atan2(6000 - corner.y, corner.x - 6000) * 180 / std::numbers::pi;
            CHECK(std::abs(angle - (i == 0 ? 0 : 90)) <= 15.1);
        }
    }
    set.BarWidth = 0;
    set.DataSymbolSize = 200; // twips
    auto const rays = page.draw("polygon");
    REQUIRE(rays.size() == 2);
    auto const ray = corners(rays[0]);
    REQUIRE(ray.size() == 4);
    CHECK(ray[1].x == doctest::Approx(8500));
    CHECK(std::abs(ray[1].y - ray[2].y) == doctest::Approx(360));
    // Lying ones are parts of rings, about the y of their points.
    set.BarHoriz = true;
    set.points.drop_oldest(4);
    set.points.append({90, 5, 0, {}});
    auto const ring = page.draw("polygon");
    REQUIRE(ring.size() == 1);
    for (Point const corner : corners(ring[0])) CHECK(std::abs(from_centre(corner) - 2500) <= 181);
}

TEST_CASE("arranged bars stand upon each other in polar graphs, and are pointed at there") {
    PolarPage page;
    page.graph.BarArrangement = 2;
    for (int i = 0; i < 2; ++i) {
        DataSet& set = page.add_line({{0, 3}, {120, 3}, {240, 3}});
        set.DataLineStyle = line_none;
        set.DataSymbol = symbol_bar;
    }
    page.graph.BarWidthShare = 0.5;
    CHECK(page.draw("polygon").size() == 6);
    const BarPlan plan(page.graph);
    const SeriesScope scope(page.state, page.graph, 1, SeriesScope::Maps::BeingDrawn);
    CHECK(polar_bar_at(scope.view(), plan, page.map()(120, 4.5)) == 1U);
    CHECK(!polar_bar_at(scope.view(), plan, page.map()(120, 1.5))); // of the set below
    CHECK(!polar_bar_at(scope.view(), plan, page.map()(180, 4.5)));
}
