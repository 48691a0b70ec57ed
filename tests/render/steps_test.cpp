#include "render/steps.h"

#include "TestControl.h"
#include "render/data_sets.h"

#include <doctest/doctest.h>

#include <cmath>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

/// Keeps the ends of each segment.
class SegmentSurface : public testing::RecordingSurface {
public:
    std::vector<std::vector<Point>> lines;
    void Polyline(std::span<Point const> line) override { lines.emplace_back(line.begin(), line.end()); }
};

struct Stairs : TestControl {
    document::Graph& graph = add_graph();
    SegmentSurface surface;

    std::vector<std::vector<Point>> draw(std::vector<Point> const& points, int steps) {
        graph.DataSets.clear();
        document::DataSet& set = add_data_set(graph, points);
        set.DataLineStyle = line_solid;
        set.DataSteps = static_cast<std::uint8_t>(steps);
        surface.lines.clear();
        PlotDataSets(state, surface);
        return surface.lines;
    }
};

using Lines = std::vector<std::vector<Point>>;

} // namespace

TEST_CASE("steps before, after and halfway between points; a gap ends them") {
    Stairs stairs;
    double const nan = std::nan("");
    const std::vector<Point> points{{2, 4}, {4, 8}, {5, nan}, {6, 2}, {8, 2}};
    // A unit is 1000 twips; the plot area begins at 1000, 11000.
    CHECK(stairs.draw(points, 1)
          == Lines{{{3000, 7000}, {3000, 3000}, {5000, 3000}}, {{7000, 9000}, {7000, 9000}, {9000, 9000}}});
    CHECK(stairs.draw(points, 2)
          == Lines{{{3000, 7000}, {5000, 7000}, {5000, 3000}}, {{7000, 9000}, {9000, 9000}, {9000, 9000}}});
    CHECK(stairs.draw({{2, 4}, {4, 8}}, 3)
          == Lines{{{3000, 7000}, {4000, 7000}, {4000, 3000}, {5000, 3000}}});
    CHECK(stairs.draw({{2, 4}, {4, 8}}, 4) == Lines{{{3000, 7000}, {5000, 3000}}}); // no such steps
    // Halfway in values, where a logarithmic axis shows them.
    stairs.graph.Axes[0].AxisLog = true;
    stairs.graph.Axes[0].AxisValue1 = 1;
    auto const lines = stairs.draw({{2, 4}, {4, 8}}, 3);
    CHECK(lines[0][1].x == doctest::Approx(1000 + 10000 * std::log10(3)));
}

TEST_CASE("long steps become few points that reach as far, with blocks out of sight and backwards too") {
    Stairs stairs;
    std::vector<Point> points;
    for (int i = 0; i < 200000; ++i) points.push_back({-50 + i / 1000.0, 5 + 4.0 * (i % 7 - 3) / 3});
    for (bool const backwards : {false, true}) {
        if (backwards) std::ranges::reverse(points);
        auto const lines = stairs.draw(points, 2);
        REQUIRE(lines.size() == 1);
        CHECK(lines[0].size() < 5000);
        // Each visible column has both extremes.
        for (double x = 1100; x < 11000; x += 500) {
            double low = 1e9, high = 0;
            for (const Point point : lines[0])
                if (std::abs(point.x - x) <= 15) low = std::min(low, point.y), high = std::max(high, point.y);
            CHECK(low == doctest::Approx(2000).epsilon(0.02));
            CHECK(high == doctest::Approx(10000).epsilon(0.02));
        }
    }
}
