#include "render/axes/ticks.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

using namespace qv::render;

namespace {

std::vector<double> values(std::vector<Tick> const& ticks, TickKind kind) {
    std::vector<double> found;
    for (Tick const& tick : ticks)
        if (tick.kind == kind) found.push_back(tick.value);
    return found;
}

} // namespace

TEST_CASE("a linear axis has a tick at each division and one beyond") {
    auto const ticks = axis_ticks({.low = -1, .high = 1, .major_divs = 4, .minor_divs = 2});
    CHECK(values(ticks, TickKind::Major) == std::vector<double>{-1, -0.5, 0, 0.5, 1, 1.5});
    CHECK(values(ticks, TickKind::Minor).front() == -0.75);
    CHECK(values(axis_ticks({.low = 3, .high = 8, .major_divs = 0, .minor_divs = 1}), TickKind::Major)
          == std::vector<double>{3, 8});
}

TEST_CASE("a tick that rounding moved off zero is zero") {
    for (const Tick tick : axis_ticks({.low = -0.3, .high = 0.6, .major_divs = 9, .minor_divs = 1})) {
        CAPTURE(tick.value);
        CHECK((tick.value == 0 || std::abs(tick.value) > 0.05));
        CHECK_FALSE((tick.value == 0 && std::signbit(tick.value)));
    }
}

TEST_CASE("a logarithmic axis has a tick at each power of ten, from the one below its low end") {
    auto const ticks =
        axis_ticks({.low = 0.8, .high = 1200, .major_divs = 4, .minor_divs = 9, .is_log = true});
    auto const majors = values(ticks, TickKind::Major);
    REQUIRE(majors.size() >= 5);
    for (std::size_t i = 0; i < majors.size(); ++i)
        CHECK(majors[i] == doctest::Approx(std::pow(10.0, static_cast<double>(i) - 1)));
    CHECK(std::ranges::count(values(ticks, TickKind::Minor), 30.0) == 1);
    // From high to low the same powers count.
    auto const turned =
        axis_ticks({.low = 1200, .high = 0.8, .major_divs = 4, .minor_divs = 9, .is_log = true});
    CHECK(values(turned, TickKind::Major) == majors);
}

TEST_CASE("minor ticks closer than a pixel fall into one without leaving a pixel empty") {
    constexpr double pixel = 1.0 / 800;
    for (bool const is_log : {false, true}) {
        CAPTURE(is_log);
        auto const ticks = axis_ticks({.low = 1,
                                       .high = 10,
                                       .major_divs = 1,
                                       .minor_divs = 32767,
                                       .is_log = is_log,
                                       .pixel_share = pixel});
        CHECK(ticks.size() < 10000);
        auto const minors = values(ticks, TickKind::Minor);
        auto const place = [&](double value) { return is_log ? std::log10(value) : (value - 1) / 9; };
        for (std::size_t i = 1; i < minors.size() && place(minors[i]) < 1 && !is_log; ++i)
            CHECK(place(minors[i]) - place(minors[i - 1]) <= pixel * 1.0001);
    }
    CHECK(axis_ticks({.low = 0, .high = 1, .major_divs = 32767, .minor_divs = 32767, .pixel_share = pixel})
              .size()
          < 100000);
}

TEST_CASE("ranges that cannot be divided have no ticks") {
    CHECK(axis_ticks({.low = std::nan(""), .high = 1, .major_divs = 5}).empty());
    CHECK(axis_ticks({.low = 0, .high = HUGE_VAL, .major_divs = 5}).empty());
    CHECK(axis_ticks({.low = -1, .high = 10, .major_divs = 5, .is_log = true}).empty());
    CHECK(axis_ticks({.low = 0, .high = 1, .major_divs = -5}).empty());
}

TEST_CASE("a range that is not divided has no minor ticks") {
    for (bool const is_log : {false, true})
        CHECK(values(axis_ticks({.low = 1, .high = 1000, .major_divs = 0, .minor_divs = 9, .is_log = is_log}),
                     TickKind::Minor)
                  .empty());
}

TEST_CASE("a logarithmic range of less than two powers of ten has ticks at 2 and 5 or at round steps") {
    struct Row {
        double low, high;
        std::vector<double> majors;
    };
    for (Row const& row : {Row{2, 8, {2, 5}},
                           {0.3, 4, {0.5, 1, 2}},
                           {30, 6, {10, 20}},
                           {3, 4, {3, 3.2, 3.4, 3.6, 3.8, 4}},
                           {99, 101, {99, 99.5, 100, 100.5, 101}},
                           {1e5, 1e5 + 1, {1e5, 100000.2, 100000.4, 100000.6, 100000.8, 100001}}}) {
        CAPTURE(row.low);
        CAPTURE(row.high);
        auto const [low, high] = std::minmax(row.low, row.high);
        auto found = values(
            axis_ticks({.low = row.low, .high = row.high, .major_divs = 1, .minor_divs = 9, .is_log = true}),
            TickKind::Major);
        std::erase_if(found,
                      [&, low = low, high = high](double value) { return value < low || value > high; });
        REQUIRE(found.size() == row.majors.size());
        for (std::size_t i = 0; i < found.size(); ++i) CHECK(found[i] == doctest::Approx(row.majors[i]));
    }
    CHECK(
        values(axis_ticks({.low = 5e-324, .high = 1e-323, .major_divs = 1, .is_log = true}), TickKind::Major)
            .size()
        >= 2);
    CHECK(values(axis_ticks({.low = 2, .high = 8, .major_divs = 1, .minor_divs = 9, .is_log = true}),
                 TickKind::Minor)
          == std::vector<double>{3, 4, 6, 7, 8, 9});
}

TEST_CASE("more powers of ten than divisions: some are left out evenly, none at the end") {
    struct Row {
        double low, high;
        int divisions;
        std::vector<double> majors;
    };
    for (Row const& row : {Row{1e-12, 1e12, 5, {1e-12, 1e-6, 1, 1e6, 1e12}},
                           {1e-3, 1e6, 3, {1e-3, 1, 1e3, 1e6}},
                           {1, 1e11, 5, {1, 1e3, 1e6, 1e9}},
                           {1, 1000, 1, {1, 1000}},
                           {1000, 1, 0, {1, 1000}}}) {
        CAPTURE(row.high);
        auto const found = values(
            axis_ticks({.low = row.low, .high = row.high, .major_divs = row.divisions, .is_log = true}),
            TickKind::Major);
        REQUIRE(found.size() == row.majors.size());
        for (std::size_t i = 0; i < found.size(); ++i) CHECK(found[i] == doctest::Approx(row.majors[i]));
    }
    // Labels that are counted off have a power each, to the end.
    auto const counted = values(
        axis_ticks({.low = 1, .high = 1e9, .major_divs = 3, .is_log = true, .majors_are_powers = true}),
        TickKind::Major);
    CHECK(counted.size() == 11);
}
