#include "render/dashes.h"

#include "RecordingSurface.h"
#include "qvgraph/fault.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

using namespace qv;
using namespace qv::render;

namespace {

constexpr Box page{0, 0, 15000, 12000};

/// Keeps polylines as they come.
class LineSurface : public testing::RecordingSurface {
public:
    std::vector<Point> points;
    void Polyline(std::span<Point const> line) override {
        points.insert(points.end(), line.begin(), line.end());
    }
};

/// From where to where dashes reach along the x axis, their round ends included, neighbours that touch as
/// one.
std::vector<std::pair<double, double>> dashes_along_x(std::vector<Point> const& points, double half_width) {
    std::vector<std::pair<double, double>> found;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (std::isnan(points[i - 1].x) || std::isnan(points[i].x)) continue;
        double const from = points[i - 1].x - half_width, to = points[i].x + half_width;
        if (!found.empty() && from <= found.back().second + 0.01)
            found.back().second = to;
        else
            found.emplace_back(from, to);
    }
    return found;
}

} // namespace

TEST_CASE("patterns are numbers in turn; anything else is a fault") {
    CHECK(dash_pattern("6 2 1 2") == DashPattern{6, 2, 1, 2});
    CHECK(dash_pattern(" 2.5,1\t") == DashPattern{2.5, 1});
    CHECK(dash_pattern("3") == DashPattern{3, 3});
    CHECK(dash_pattern("0 2") == DashPattern{0, 2});
    CHECK(dash_pattern("").empty());
    CHECK(dash_pattern("  ").empty());
    for (char const* text : {"dash", "6 -2", "6 2x", "0 0", "0.2 0.3", "1e9 2", "nan 2", "inf 2",
                             "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1"}) {
        CAPTURE(text);
        CHECK_THROWS_AS(dash_pattern(text), Fault);
    }
}

TEST_CASE("dashes have the pattern's lengths and go on across points, pieces and what cannot be seen") {
    LineSurface surface;
    surface.state.DrawWidth = 2; // 30 twips
    auto const drawn = [&](std::vector<std::vector<double>> const& pieces) {
        surface.points.clear();
        DashedLines lines(surface, {4, 2, 1, 3}, page);
        for (auto const& piece : pieces) {
            std::vector<Point> points;
            for (double const x : piece) points.push_back({x, 100});
            lines.Polyline(points);
        }
        return dashes_along_x(surface.points, 15);
    };
    auto const whole = drawn({{0, 3000}});
    REQUIRE(whole.size() == 20);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        double const start = static_cast<double>(i / 2) * 300 + (i % 2 == 0 ? 0 : 180);
        CHECK(std::abs(whole[i].first - start) < 0.5);
        CHECK(std::abs(whole[i].second - start - (i % 2 == 0 ? 120 : 30)) < 0.5);
    }
    auto const is_whole = [&](auto const& other) {
        REQUIRE(other.size() == whole.size());
        for (std::size_t i = 0; i < whole.size(); ++i)
            CHECK(other[i].first == doctest::Approx(whole[i].first));
    };
    std::vector<double> many;
    for (int i = 0; i <= 3000; i += 7) many.push_back(i);
    many.push_back(3000);
    is_whole(drawn({many}));
    is_whole(drawn({{0, 35, 1000}, {1000, 3000}})); // handed over in two pieces
    // Beginning far to the left and ending far to the right, in ten thousand periods and a piece.
    auto const passing = drawn({{-3000000, 1e12}});
    REQUIRE(passing.size() >= 99);
    CHECK(passing[0].first == doctest::Approx(0).epsilon(0.1));
    CHECK(passing[1].first == doctest::Approx(180).epsilon(0.01));
    CHECK(drawn({{-1e300, 1e300}}).size() <= 102);
}

TEST_CASE("dashes turn corners, and a gap in the line begins the pattern anew") {
    LineSurface surface;
    DashedLines lines(surface, {20, 10}, page); // 300 and 150 twips
    lines.Polyline(std::vector<Point>{{0, 0}, {200, 0}, {200, 1000}});
    // The first dash is one piece round the corner.
    REQUIRE(surface.points.size() > 3);
    CHECK(surface.points[1] == Point{200, 0});
    CHECK(surface.points[2].y == doctest::Approx(92.5)); // half a width before 300 along the line
    CHECK(std::isnan(surface.points[3].x));
    surface.points.clear();
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    lines.Polyline(std::vector<Point>{{5000, 0}, {5100, 0}, {nowhere, 0}, {6000, 0}, {6200, 0}});
    REQUIRE(surface.points.size() == 5);
    CHECK(surface.points[3].x == doctest::Approx(6007.5));
    CHECK(surface.points[4].x == doctest::Approx(6200));
}
