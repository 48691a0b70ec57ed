#include "render/ticks.h"

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
