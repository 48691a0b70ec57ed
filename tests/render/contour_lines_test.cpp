// Contour lines: they lie on their levels, go on as long as they can, and miss none.
#include "render/grids/contour_lines.h"

#include "qvgraph/fault.h"
#include "render/grids/contour_labels.h"
#include "render/grids/contour_levels.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

using namespace qv;
using namespace qv::render;
using document::Grid;

namespace {

Grid grid_of(std::size_t columns, std::size_t rows, auto const& value_at) {
    Grid grid;
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < columns; ++column)
            grid.values.push_back(value_at(static_cast<double>(column), static_cast<double>(row)));
    for (std::size_t i = 0; i <= columns; ++i) grid.x_edges.push_back(static_cast<double>(i));
    for (std::size_t i = 0; i <= rows; ++i) grid.y_edges.push_back(static_cast<double>(i));
    grid.measure();
    return grid;
}

bool is_closed(ContourLine const& line) {
    return line.places.front() == line.places.back();
}

bool is_whole(double number) {
    return number == std::floor(number);
}

/// The value at a place on the way between two middles.
double value_at(Grid const& grid, Point place) {
    auto const node = [&](double x, double y) {
        return grid.row(static_cast<std::size_t>(y))[static_cast<std::size_t>(x)];
    };
    double const x = std::floor(place.x), y = std::floor(place.y);
    if (is_whole(place.x) && is_whole(place.y)) return node(x, y);
    if (is_whole(place.y)) return std::lerp(node(x, y), node(x + 1, y), place.x - x);
    return std::lerp(node(x, y), node(x, y + 1), place.y - y);
}

std::vector<double> noise(std::size_t count, std::uint64_t seed) {
    std::vector<double> values;
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        values.push_back(static_cast<double>(seed >> 11) * 0x1p-53);
    }
    return values;
}

} // namespace

TEST_CASE("of a plane, of a hill") {
    const Grid plane = grid_of(5, 4, [](double x, double) { return x; });
    auto const lines = contour_lines(plane, std::vector{1.5}, false);
    REQUIRE(lines.size() == 1);
    CHECK(lines[0].places.size() == 4);
    for (Point const place : lines[0].places) CHECK(place.x == 1.5);
    const Grid hill = grid_of(41, 41, [](double x, double y) { return -std::hypot(x - 20, y - 20); });
    auto const rings = contour_lines(hill, std::vector{-15.0, -10.0}, false);
    REQUIRE(rings.size() == 2);
    for (ContourLine const& ring : rings) {
        CHECK(is_closed(ring));
        for (Point const place : ring.places)
            CHECK(std::hypot(place.x - 20, place.y - 20)
                  == doctest::Approx(ring.level == 0 ? 15 : 10).epsilon(0.01));
    }
}

TEST_CASE("a saddle joins the corners on its own side of the level") {
    // Corners 0 0 and 1 1 are high; the saddle of these values is at 0.5, and at 0.26 with a deeper corner.
    auto const count_right_of = [](double deep, double level) {
        const Grid grid = grid_of(2, 2, [&](double x, double y) {
            return x == y ? 1.0 : x > y ? deep : 0.0;
        });
        auto const lines = contour_lines(grid, std::vector{level}, false);
        REQUIRE(lines.size() == 2);
        // Joined where each line cuts off a low corner: its ends are both on the sides of that corner.
        bool const cuts_off_low = std::ranges::any_of(lines, [](ContourLine const& line) {
            return std::ranges::all_of(line.places, [](Point place) { return place.x == 1 || place.y == 0; });
        });
        return cuts_off_low;
    };
    CHECK(count_right_of(0, 0.4));
    CHECK_FALSE(count_right_of(0, 0.6));
    // (1 - 0 * -2) / (1 + 2 - 0 + 1) is 0.25: the mean of the corners, 0, would join them the other way.
    CHECK(count_right_of(-2, 0.2));
    CHECK_FALSE(count_right_of(-2, 0.3));
}

TEST_CASE("every crossing between neighbours is on one line, and lines end only where values do") {
    std::vector<double> values = noise(30 * 25, 7);
    for (std::size_t const hole : {100U, 101U, 333U, 0U}) values[hole] = std::nan("");
    const Grid grid =
        grid_of(30, 25, [&](double x, double y) { return values[static_cast<std::size_t>(y * 30 + x)]; });
    const std::vector<double> levels{0.2, 0.5, 0.8};
    auto const lines = contour_lines(grid, levels, false);
    auto const missing = [&](std::size_t x, std::size_t y) { return std::isnan(grid.row(y)[x]); };
    auto const is_square = [&](std::size_t x, std::size_t y) {
        return x + 1 < 30 && y + 1 < 25 && !missing(x, y) && !missing(x + 1, y) && !missing(x, y + 1)
               && !missing(x + 1, y + 1);
    };
    for (std::size_t level = 0; level < levels.size(); ++level) {
        // How many squares with values lie at each crossed way between neighbours: that many segments meet
        // there.
        std::size_t crossed = 0, ends = 0;
        for (std::size_t y = 0; y < 25; ++y)
            for (std::size_t x = 0; x < 30; ++x)
                for (auto const& [dx, dy] : {std::pair(1U, 0U), std::pair(0U, 1U)}) {
                    if (x + dx >= 30 || y + dy >= 25) continue;
                    double const a = grid.row(y)[x], b = grid.row(y + dy)[x + dx];
                    if (!((a >= levels[level]) != (b >= levels[level])) || std::isnan(a) || std::isnan(b))
                        continue;
                    bool const before = dx ? y > 0 && is_square(x, y - 1) : x > 0 && is_square(x - 1, y);
                    bool const behind = is_square(x, y);
                    crossed += before || behind;
                    ends += before != behind;
                }
        std::set<std::pair<double, double>> places;
        std::size_t number = 0, open_ends = 0;
        for (ContourLine const& line : lines) {
            if (line.level != level) continue;
            open_ends += is_closed(line) ? 0 : 2;
            for (std::size_t i = is_closed(line) ? 1 : 0; i < line.places.size(); ++i, ++number)
                places.emplace(line.places[i].x, line.places[i].y);
            for (Point const place : line.places)
                CHECK(value_at(grid, place) == doctest::Approx(levels[level]).epsilon(1e-12));
        }
        CHECK(number == crossed);
        CHECK(places.size() == crossed);
        CHECK(open_ends == ends);
    }
}

TEST_CASE("logarithmic levels divide by logarithms, and values that have none are gaps") {
    const Grid grid = grid_of(3, 2, [](double x, double) { return std::pow(10, 2 * x); });
    auto const lines = contour_lines(grid, std::vector{-1.0, 0.0, 10.0}, true);
    REQUIRE(lines.size() == 1);
    CHECK(lines[0].level == 2);
    CHECK(lines[0].places[0].x == doctest::Approx(0.5));
    const Grid low = grid_of(3, 2, [](double x, double) { return x - 1; });
    CHECK(contour_lines(low, std::vector{0.5}, true).empty());
    CHECK(contour_lines(grid_of(1, 5, [](double, double y) { return y; }), std::vector{2.5}, false).empty());
    CHECK(contour_lines(grid_of(4, 4, [](double, double) { return 2.0; }), std::vector{2.0}, false).empty());
}

TEST_CASE("levels: how many, which, round ones, and texts that say neither") {
    auto const levels = [](char const* text, double low, double high, bool is_log = false) {
        return contour_levels(level_choice(text), {low, high}, is_log);
    };
    CHECK(levels("", 0, 1)
          == std::vector{0.1, 0.2, 0.30000000000000004, 0.4, 0.5, 0.6000000000000001, 0.7000000000000001, 0.8,
                         0.9});
    CHECK(levels("4", 0, 10) == std::vector{2.0, 4.0, 6.0, 8.0});
    CHECK(levels("5; 1;2.5, 1", 0, 10) == std::vector{1.0, 2.5, 5.0});
    CHECK(levels("7;", 0, 10) == std::vector{7.0});
    CHECK(levels("", 0.5, 2000, true) == std::vector{1.0, 10.0, 100.0, 1000.0});
    CHECK(levels("", 3, 3).empty());
    CHECK(levels("", -1.7e308, 1.7e308).empty());
    for (double const span : {1e-300, 1e-9, 1.0, 1e12, 1e300})
        for (int const count : {1, 3, 8, 40}) {
            CAPTURE(span);
            CAPTURE(count);
            auto const some = levels(std::to_string(count).c_str(), 0.123 * span, 1.123 * span);
            CHECK(some.size() >= static_cast<std::size_t>(count) / 2);
            CHECK(some.size() <= static_cast<std::size_t>(count) * 2 + 1);
        }
    for (char const* text : {"0", "-3", "2.5", "1001", "many", "1; two", ";", "1;;2", "nan;"}) {
        CAPTURE(text);
        CHECK_THROWS_AS(level_choice(text), Fault);
    }
}

TEST_CASE("a label stands on the straightest part of its line, upright, and the line has a gap there") {
    LabelPlaces places({0, 0, 10000, 10000}, 200);
    std::vector<ContourLabel> labels;
    std::vector<Point> lines;
    for (int i = 0; i <= 100; ++i) // zigzag, then straight down to the left
        lines.push_back(i < 50 ? Point{5000.0 + (i % 2) * 300, 1000.0 + 20 * i}
                               : Point{7000.0 - 40 * i, 40.0 * i});
    places.put(lines, 3, 400, labels);
    REQUIRE(labels.size() == 1);
    CHECK(labels[0].level == 3);
    CHECK(labels[0].angle_degrees == 45);
    CHECK(labels[0].middle.y > 2200);
    auto const gap = std::ranges::find_if(lines, [](Point place) { return std::isnan(place.x); });
    REQUIRE(gap != lines.end());
    REQUIRE(gap != lines.begin());
    CHECK(std::hypot(std::next(gap)->x - std::prev(gap)->x, std::next(gap)->y - std::prev(gap)->y) > 400);
    // A second line at the same place finds no room there; a short one gets no label.
    std::vector<Point> again{{5000, 2000}, {3000, 4000}}, brief{{100, 100}, {300, 300}};
    std::size_t const before = labels.size();
    places.put(brief, 0, 400, labels);
    CHECK(labels.size() == before);
    CHECK(brief.size() == 2);
    places.put(again, 0, 400, labels);
    for (std::size_t i = 0; i + 1 < labels.size(); ++i)
        CHECK(std::hypot(labels[i].middle.x - labels.back().middle.x,
                         labels[i].middle.y - labels.back().middle.y)
              > 400);
}
