#include "render/lines/data_line.h"

#include "RecordingSurface.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdint>
#include <map>
#include <random>

using namespace qv;
using namespace qv::render;

namespace {

// Collects whole polylines and what they cover: per pixel column the rows they span.
class CoverageSurface : public qv::testing::RecordingSurface {
public:
    std::vector<Point> points;
    std::map<int, std::pair<double, double>> columns;

    void Polyline(std::span<Point const> line) override {
        points.insert(points.end(), line.begin(), line.end());
        for (std::size_t i = 1; i < line.size(); ++i) cover(line[i - 1], line[i]);
    }

private:
    static int column_of(double x) { return static_cast<int>(std::floor(x / 15 + 0.5)); }
    void include(int column, double y) {
        auto [place, fresh] = columns.try_emplace(column, y, y);
        place->second.first = std::min(place->second.first, y);
        place->second.second = std::max(place->second.second, y);
    }
    void cover(Point from, Point to) {
        include(column_of(from.x), from.y);
        include(column_of(to.x), to.y);
    }
};

LineMapping mapping(double x_factor = 100, bool is_log = false) {
    return {{.start = x_factor < 0 ? 11000.0 : 1000.0,
             .first = is_log ? 1.0 : 0.0,
             .factor = x_factor,
             .is_log = is_log,
             .valid = true},
            {.start = 6000, .factor = -100, .valid = true},
            {985, 985, 10030, 10030}};
}

document::PointStore noisy_points(std::size_t count, double x_span, double x_jitter) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> noise(-1, 1);
    document::PointStore store;
    for (std::size_t i = 0; i < count; ++i) {
        double const x = x_span * static_cast<double>(i) / static_cast<double>(count);
        store.append({x + x_jitter * noise(random), 30 * noise(random), 0, {}});
    }
    return store;
}

CoverageSurface plain(document::PointStore const& store, LineMapping const& map) {
    CoverageSurface surface;
    std::vector<Point> all;
    for (std::size_t i = 0; i < store.size(); ++i)
        all.push_back({map.x(store.at(i).X), map.y(store.at(i).Y)});
    surface.Polyline(all);
    return surface;
}

} // namespace

TEST_CASE("a thinned line covers the columns that the whole line covers") {
    for (double const jitter : {0.0, 0.5})
        for (double const factor : {100.0, -100.0}) {
            CAPTURE(jitter);
            CAPTURE(factor);
            const document::PointStore store = noisy_points(200000, 100, jitter);
            CoverageSurface thinned;
            thinned.state.Smooth = false;
            const LineMapping map = mapping(factor);
            draw_data_line(thinned, store, map);
            if (jitter == 0) CHECK(thinned.points.size() < 4 * 700);
            for (auto const& [column, rows] : plain(store, map).columns) {
                if (column * 15 < map.visible.left || column * 15 > map.visible.right()) continue;
                CAPTURE(column);
                REQUIRE(thinned.columns.contains(column));
                CHECK(thinned.columns[column].first == doctest::Approx(rows.first));
                CHECK(thinned.columns[column].second == doctest::Approx(rows.second));
            }
        }
}

TEST_CASE("sparse points reach the surface as they are") {
    const document::PointStore store = noisy_points(50, 100, 0.1);
    CoverageSurface surface;
    draw_data_line(surface, store, mapping());
    CHECK(surface.points == plain(store, mapping()).points);
}

TEST_CASE("a point that is not finite breaks the line on both sides") {
    document::PointStore store;
    for (double const y : {1.0, 2.0, std::nan(""), 3.0, 4.0}) store.append({y == y ? y : 2.5, y, 0, {}});
    qv::testing::RecordingSurface surface;
    draw_data_line(surface, store, mapping());
    CHECK(surface.log
          == std::vector<std::string>{"line 1100,5900 1200,5800 #000000 w1",
                                      "line 1300,5700 1400,5600 #000000 w1"});
}

TEST_CASE("blocks out of sight cost two points and keep the line's way into view") {
    document::PointStore store;
    for (int i = 0; i < 100000; ++i) store.append({-1000 + i * 0.01, std::sin(i * 0.1), 0, {}});
    store.append({50, 5, 0, {}});
    CoverageSurface surface;
    draw_data_line(surface, store, mapping());
    CHECK(surface.points.size() < 100);
    CHECK(surface.points.back() == Point{6000, 5500});
    // The last point before the visible one is kept where it was.
    CHECK(surface.points[surface.points.size() - 2].x == doctest::Approx(1000 + 100 * -0.01));
}

TEST_CASE("a logarithmic x finds its columns as the plain path does") {
    document::PointStore store;
    for (int i = 1; i < 100000; ++i) store.append({i * 0.001, std::cos(i * 0.37) * 20, 0, {}});
    CoverageSurface thinned;
    thinned.state.Smooth = false;
    const LineMapping map = mapping(2000, true);
    draw_data_line(thinned, store, map);
    for (auto const& [column, rows] : plain(store, map).columns) {
        if (column * 15 < map.visible.left || column * 15 > map.visible.right()) continue;
        CAPTURE(column);
        CHECK(thinned.columns[column].first == doctest::Approx(rows.first));
    }
}
