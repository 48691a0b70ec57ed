#include "render/areas.h"

#include "TestControl.h"
#include "render/data_reach.h"
#include "render/data_sets.h"
#include "render/stacked_areas.h"
#include "scale/mapping.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr Color above = 0x0000FF, below = 0xFF0000;

/// Keeps filled polygons by colour, in data values of axes 0..10 on the plot area.
class FillSurface : public testing::RecordingSurface {
public:
    struct Filled {
        Color color;
        int alpha;
        std::vector<Point> corners;
    };
    std::vector<Filled> fills;
    void Polygon(std::span<PixelPoint const> corners) override {
        Filled filled{state.FillColor, state.alpha, {}};
        for (const PixelPoint corner : corners)
            filled.corners.push_back({(corner.x * 15 - 1000) / 1000, (11000 - corner.y * 15) / 1000});
        fills.push_back(filled);
    }
    /// Of all polygons of a colour.
    double area(Color color) const {
        double sum = 0;
        for (Filled const& filled : fills) {
            if (filled.color != color) continue;
            double twice = 0;
            for (std::size_t i = 0; i < filled.corners.size(); ++i) {
                const Point a = filled.corners[i], b = filled.corners[(i + 1) % filled.corners.size()];
                twice += a.x * b.y - b.x * a.y;
            }
            sum += std::abs(twice) / 2;
        }
        return sum;
    }
};

struct Areas : TestControl {
    document::Graph& graph = add_graph();
    FillSurface surface;

    document::DataSet& add(std::vector<Point> const& points) {
        document::DataSet& set = add_data_set(graph, points);
        set.DataLineStyle = line_area;
        set.DataSymbolFill.Color1 = above;
        set.AreaBelowColor = below;
        return set;
    }
    FillSurface const& draw() {
        surface.fills.clear();
        PlotDataSets(state, surface);
        CHECK(events.errors.empty());
        return surface;
    }
    bool holds(document::DataSet const& set, double x, double y) {
        const LineMapping mapping{scale::x_map(graph, graph.Axes[0]),
                                  scale::y_map(graph, graph.Axes[1]),
                                  {1000, 1000, 10000, 10000}};
        return area_holds({graph, set, mapping}, {mapping.x(x), mapping.y(y)});
    }
};

} // namespace

TEST_CASE("an area about a value has two colours, which meet where the line crosses it") {
    Areas page;
    document::DataSet& set = page.add({{0, 2}, {4, 8}, {8, 2}});
    set.AreaBase = true;
    set.AreaBaseValue = 5;
    page.draw();
    // The line crosses at 2 and 6: a triangle of 4 by 3 above and two of 2 by 3 below.
    CHECK(page.surface.area(above) == doctest::Approx(6));
    CHECK(page.surface.area(below) == doctest::Approx(6));
    for (auto const& filled : page.surface.fills)
        for (const Point corner : filled.corners)
            CHECK((filled.color == above ? corner.y >= 5 - 1e-9 : corner.y <= 5 + 1e-9));
    CHECK(page.holds(set, 4, 7.9));
    CHECK(page.holds(set, 0.5, 4.5));
    CHECK_FALSE(page.holds(set, 0.5, 5.5));
    CHECK_FALSE(page.holds(set, 4, 4.9));
    // Above is what is larger, also on an axis that runs downwards.
    page.graph.Axes[1].AxisReverse = true;
    page.draw();
    CHECK(page.surface.area(above) == doctest::Approx(6));
    page.graph.Axes[1].AxisReverse = false;
    set.AreaBelowColor = -1;
    page.draw();
    CHECK(page.surface.area(above) == doctest::Approx(12));
    set.DataFillAlpha = 100;
    page.draw();
    CHECK(page.surface.fills[0].alpha == 100);
    CHECK(page.surface.state.alpha == 255);
    // Automatic axes show where it begins.
    set.AreaBaseValue = -3;
    CHECK(reaches_of_points(page.state, page.graph)[1].extent == document::Extent{-3, 8});
}

TEST_CASE("steps of an area, and gaps in it") {
    Areas page;
    document::DataSet& set = page.add({{0, 2}, {4, 4}, {5, none}, {6, 6}, {8, 6}});
    set.DataSteps = 2;
    page.draw();
    CHECK(page.surface.area(above) == doctest::Approx(4 * 2 + 2 * 6));
    set.DataSteps = 1;
    page.draw();
    CHECK(page.surface.area(above) == doctest::Approx(4 * 4 + 2 * 6));
    CHECK(page.holds(set, 1, 3.9));
    CHECK_FALSE(page.holds(set, 5.5, 1));
}

TEST_CASE("an area between two data sets joins the points of either where the other has none") {
    Areas page;
    document::DataSet& upper = page.add({{0, 4}, {10, 4}});
    document::DataSet& lower = page.add_data_set(page.graph, {{-5, 2}, {2, 2}, {6, 6}, {8, 2}});
    upper.AreaTo = 1;
    page.draw();
    // From 0 to 8: two units high up to 2, closing at 4; beyond it up to two below, back at 7, then open
    // again.
    CHECK(page.surface.area(above) == doctest::Approx(4 + 2 + 1));
    CHECK(page.surface.area(below) == doctest::Approx(2 * 2 / 2.0 + 1 * 2 / 2.0));
    CHECK(page.holds(upper, 1, 3));
    CHECK_FALSE(page.holds(upper, 9, 3));
    // The order in which points arrive does not matter, and a hidden set still bounds the area.
    double const whole = page.surface.area(above);
    document::PointStore reversed;
    for (std::size_t i = lower.points.size(); i-- > 0;) reversed.append(lower.points.at(i));
    std::swap(lower.points, reversed);
    lower.DataHide = true;
    page.draw();
    CHECK(page.surface.area(above) == doctest::Approx(whole));
    CHECK(reaches_of_points(page.state, page.graph)[0].extent == document::Extent{-5, 10});
    for (int const number : {-1, 0, 2, 99}) { // none, itself, not there
        upper.AreaTo = static_cast<std::int16_t>(number);
        page.draw();
        CHECK(page.surface.area(above) == doctest::Approx(40));
    }
}

TEST_CASE("stacked areas stand upon those before, with other places of x too, and in percent") {
    Areas page;
    document::DataSet& first = page.add({{0, 1}, {4, 3}, {8, 1}});
    document::DataSet& second = page.add({{2, 2}, {6, 2}});
    document::DataSet& third = page.add({{0, 1}, {8, 1}});
    for (document::DataSet* set : {&first, &second, &third}) set->AreaStacked = 1;
    auto const top_at = [&](document::DataSet const& set, double x) {
        double top = none;
        for (BandPlace const& place : stacked_area(page.graph, set))
            if (place.x == x && !std::isnan(place.edge)) top = place.edge;
        return top;
    };
    CHECK(top_at(first, 4) == 3);
    CHECK(top_at(second, 4) == 5); // a corner of the first
    CHECK(top_at(second, 2) == 4);
    CHECK(top_at(third, 4) == 6);
    CHECK(top_at(third, 2) == 5);
    CHECK(shown_points(page.graph, second).at(1).Y == 4);
    CHECK(page.holds(third, 4, 5.5));
    CHECK_FALSE(page.holds(third, 4, 4.5));
    page.draw();
    CHECK(page.surface.area(above) == doctest::Approx(16 + 8 + 8));
    CHECK(reaches_of_points(page.state, page.graph)[1].extent == document::Extent{0, 6});

    first.points.append({10, none, 0, {}}); // what was worked out follows the points
    second.DataHide = true;
    CHECK(top_at(third, 4) == 4);
    second.DataHide = false;
    for (document::DataSet* set : {&first, &second, &third}) set->AreaStacked = 2;
    CHECK(top_at(third, 4) == doctest::Approx(100));
    CHECK(top_at(first, 4) == doctest::Approx(50));
    CHECK(reaches_of_points(page.state, page.graph)[1].extent.high == doctest::Approx(100));
    // A set whose values are all zero shares nothing out.
    document::DataSet& zero = page.add({{20, 0}, {21, 0}});
    zero.AreaStacked = 2;
    CHECK(std::isnan(top_at(zero, 20)));
    page.draw();
}

TEST_CASE("areas of many points are few corners that reach as far, wherever the axis is zoomed to") {
    Areas page;
    std::vector<Point> points;
    for (int i = 0; i < 100000; ++i) points.push_back({i / 10000.0, i % 2 == 0 ? 8.0 : 2.0});
    document::DataSet& set = page.add(points);
    set.AreaBase = true;
    set.AreaBaseValue = 5;
    page.draw();
    std::size_t corners = 0;
    for (auto const& filled : page.surface.fills) corners += filled.corners.size();
    CHECK(corners < 20000);
    CHECK(page.surface.area(above) > 3);
    for (auto const& [from, to] : {std::pair(4.0, 4.0001), std::pair(100.0, 200.0), std::pair(10.0, 0.0)}) {
        page.graph.Axes[0].AxisValue1 = from;
        page.graph.Axes[0].AxisValue2 = to;
        page.draw();
        for (auto const& filled : page.surface.fills)
            for (const Point corner : filled.corners) {
                CHECK(std::abs(corner.x) < 100);
                CHECK(std::isfinite(corner.y));
            }
    }
    page.graph.Axes[1].AxisLog = true; // the base has no place there below 0
    page.graph.Axes[1].AxisValue1 = 1;
    set.AreaBaseValue = -1;
    page.draw();
}
