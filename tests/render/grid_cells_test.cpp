// Cells: points counted in them, and the pixels that each of them has.
#include "render/grids/grid_cells.h"

#include "render/grids/grid_places.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

using namespace qv;
using namespace qv::render;
using document::Grid;
using document::PointStore;

namespace {

scale::AxisMap map_of(double first, double last, double start, double length, bool is_log = false) {
    scale::AxisMap map;
    map.start = start;
    map.length = length;
    map.first = first;
    map.last = last;
    map.is_log = is_log;
    map.factor = length / scale::ScaleFrom{first, is_log}(last);
    map.valid = true;
    map.off_page = start - length;
    return map;
}

double sum(Grid const& grid) {
    double total = 0;
    for (double const value : grid.values) total += value;
    return total;
}

} // namespace

TEST_CASE("each point is counted once, in the cell whose edges hold it") {
    std::uint64_t seed = 3;
    std::vector<double> x, y;
    for (int i = 0; i < 20000; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        // Many on edges: multiples of 0.1, whose products round.
        x.push_back(std::floor(static_cast<double>(seed >> 40) * 0x1p-24 * 101) / 10);
        y.push_back(static_cast<double>(seed >> 11 & 0xFFFF) / 65536 + 1);
    }
    x[5] = std::nan("");
    y[6] = HUGE_VAL;
    for (bool const is_log : {false, true}) {
        CAPTURE(is_log);
        PointStore points;
        points.append(x, y, {});
        const Grid grid = binned(points, {false, is_log}, 100, 7);
        REQUIRE(grid.columns() == 100);
        REQUIRE(grid.rows() == 7);
        std::vector<double> expected(grid.values.size());
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
            auto const column = cell_at(grid.x_edges, x[i]), row = cell_at(grid.y_edges, y[i]);
            REQUIRE(column);
            REQUIRE(row);
            ++expected[*row * 100 + *column];
        }
        CHECK(grid.values == expected);
        CHECK(sum(grid) == 19998);
        double const middle = grid.y_edges[3] / grid.y_edges[2];
        if (is_log) CHECK(grid.y_edges[6] / grid.y_edges[5] == doctest::Approx(middle));
    }
}

TEST_CASE("weights are added up, points without one count; points alike, gone or without a place") {
    PointStore points;
    points.append(std::vector{1.0, 1.0, 2.0, -1.0}, std::vector{1.0, 1.0, 2.0, 5.0}, {},
                  {std::vector{2.5, std::nan(""), -1.0, 7.0}});
    const Grid grid = binned(points, {true, true}, 2, 2); // -1 has no place on a logarithmic axis
    CHECK(grid.values == std::vector{3.5, 0.0, 0.0, -1.0});
    PointStore one;
    one.append({4, 4, 0, {}});
    CHECK(sum(binned(one, {}, 0, 0)) == 1);
    CHECK(sum(binned(one, {true, true}, 0, 0)) == 1);
    PointStore huge;
    huge.append(std::vector{-1.7e308, 1.7e308, 1e9}, std::vector{1e15, 1e15, 1e15}, {});
    CHECK(sum(binned(huge, {}, 4, 4)) == 3);
    CHECK(binned(PointStore(), {}, 4, 4).values.empty());
    points.drop_oldest(2);
    CHECK(binned(points, {}, 2, 1).x_edges == std::vector{-1.0, 0.5, 2.0});
}

TEST_CASE("pixels belong to the cells on them without gap or overlap, and no cell is without a pixel") {
    const std::vector<double> rising{0, 1, 2.5, 2.6, 2.7, 7, 10}, falling(rising.rbegin(), rising.rend());
    for (auto const& edges : {rising, falling})
        for (double const span : {10.0, -10.0, 0.5, 1000.0})
            for (double const start : {0.0, 1.0, 2.61}) {
                CAPTURE(span);
                CAPTURE(start);
                const scale::AxisMap map = map_of(start, start + span, 300, 3000);
                const CellPixels cells(map, edges, 15, {20, 221});
                auto const of_pixels = cells.cells_of_pixels();
                for (int pixel = 22; pixel < 219; ++pixel) { // beside the frame
                    auto const [first, final] = of_pixels[static_cast<std::size_t>(pixel - 20)];
                    // Each of its cells is somewhere on the pixel.
                    auto const left = cell_at(edges, map.value_at(15 * (pixel - 0.499999))),
                               right = cell_at(edges, map.value_at(15 * (pixel + 0.499999)));
                    if (!left || !right) continue;
                    auto const [from, to] =
                        std::minmax({static_cast<std::int32_t>(*left), static_cast<std::int32_t>(*right)});
                    CHECK(first <= final);
                    CHECK(first >= from);
                    CHECK(final <= to);
                }
                // One of the outermost pixels alone would lie below the frame.
                for (std::size_t cell = 0; cell + 1 < edges.size(); ++cell) {
                    const PixelSpan pixels = cells.of(cell);
                    CHECK_FALSE((pixels.size() == 1 && (pixels.first == 20 || pixels.end == 221)
                                 && std::abs(map(edges[cell]) - map(edges[cell + 1])) < 15));
                }
                for (std::size_t cell = 0; cell + 1 < edges.size(); ++cell) {
                    auto const [low, high] = std::minmax({map(edges[cell]), map(edges[cell + 1])});
                    if (low > 300 && high < 3300) CHECK(cells.of(cell).size() >= 1);
                }
            }
}

TEST_CASE(
    "a cell that begins at or below zero reaches the low end of a logarithmic axis, which way it runs") {
    const std::vector<double> edges{-1, 0, 1, 10};
    for (bool const falls : {false, true}) {
        CAPTURE(falls);
        const scale::AxisMap map =
            falls ? map_of(100, 0.01, 0, 1500, true) : map_of(0.01, 100, 0, 1500, true);
        const CellPixels cells(map, edges, 15, {0, 101});
        CHECK(cells.of(0).size() == 0);
        CHECK(cells.of(1).first == (falls ? 50 : 0));
        CHECK(cells.of(1).end == (falls ? 101 : 50));
        CHECK(cells.of(2).size() == 25);
    }
}

TEST_CASE("a value on an edge belongs to the cell that begins there, the last edge to the last cell") {
    const std::vector<double> rising{0, 1, 2}, falling{2, 1, 0};
    CHECK(cell_at(rising, 0) == 0);
    CHECK(cell_at(rising, 1) == 1);
    CHECK(cell_at(rising, 2) == 1);
    CHECK_FALSE(cell_at(rising, 2.1));
    CHECK_FALSE(cell_at(rising, std::nan("")));
    CHECK(cell_at(falling, 2) == 0);
    CHECK(cell_at(falling, 1) == 1);
    CHECK(cell_at(falling, 0) == 1);
    CHECK_FALSE(cell_at(falling, -0.1));
}
