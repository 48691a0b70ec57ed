#include "fixture.h"
#include "scale/axis_range.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace qv;
using namespace qv::scale;

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

struct Ends {
    double low, high;
};

AxisRange scaled(double low, double high, bool is_log = false) {
    AxisRange range{.low = low, .high = high, .is_log = is_log};
    auto_scale(range);
    return range;
}

bool is_power_of_ten_multiple(double value, double unit) {
    double const count = value / unit;
    return std::abs(count - std::nearbyint(count)) <= 1e-9 * std::max(1.0, std::abs(count));
}

} // namespace

TEST_CASE("linear ranges become round") {
    struct Row {
        double low, high, rounded_low, rounded_high;
        int major, minor;
    };
    for (Row const& row : {Row{0, 10, 0, 10, 5, 2},
                           {10, 0, 0, 10, 5, 2},
                           {0, 7.3, 0, 8, 8, 2},
                           {0, 15, 0, 20, 4, 5},
                           {-3, 7, -3, 7, 5, 2},
                           {0, 100, 0, 100, 5, 2},
                           {-100, 0, -100, 0, 5, 2},
                           {0.5, 10.4, 0, 12, 6, 2}, // an odd count, even lower end
                           {1.5, 11.4, 0, 12, 6, 2}, // an odd count, odd lower end
                           {0, 0, 0, 1e-12, 5, 5},
                           {50, 50, 50, 50.5, 5, 2},
                           {-50, -50, -50, -49.5, 5, 2},
                           {0.001, 0.0073, 0.001, 0.008, 7, 2},
                           {1000000, 1000001, 1000000, 1000001, 5, 5}, // a fraction lost in 32 bits
                           {16777216.5, 16777219.4, 16777216, 16777220, 4, 2},
                           {0, 2.0000005 / 0.999, 0, 3, 6, 2}, // half a millionth over: seen in 32 bits
                           {0, 2.0000001 / 0.999, 0, 2, 4, 2}, // a tenth of one: not seen
                           {1e300, 1.1e300, 1e300, 1.1e300, 5, 2},
                           {1e-300, 2e-300, 1e-300, 2e-300, 5, 5},
                           {-4e307, 4e307, -4e307, 4e307, 8, 2}}) {
        CAPTURE(row.low);
        CAPTURE(row.high);
        const AxisRange range = scaled(row.low, row.high);
        CHECK(range.low == doctest::Approx(row.rounded_low).epsilon(1e-15));
        CHECK(range.high == doctest::Approx(row.rounded_high).epsilon(1e-15));
        CHECK(range.major_divs == row.major);
        CHECK(range.minor_divs == row.minor);
    }
}

TEST_CASE("logarithmic ranges are widened or turn linear") {
    struct Row {
        double low, high, rounded_low, rounded_high;
        int major, minor;
        bool is_log;
    };
    for (Row const& row : {Row{1, 1000, 0.8, 1200, 4, 9, true},
                           {-5, 100, 0.8, 120, 3, 9, true}, // the lower end becomes 1
                           {0, 100, 0.8, 120, 3, 9, true},
                           {1, 1.5, 1, 1.5, 5, 2, false},
                           {3, 3, 3, 3.03, 6, 2, false},
                           {-10, -1, -10, -1, 9, 2, false}, // with its own ends
                           {-10, 0, -10, 0, 5, 2, false},
                           {1e-300, 1e300, 8e-301, 1.2e300, 601, 9, true},
                           {123456, 123456789, 98765, 1.481e8, 4, 9, true}}) {
        CAPTURE(row.low);
        CAPTURE(row.high);
        const AxisRange range = scaled(row.low, row.high, true);
        CHECK(range.is_log == row.is_log);
        CHECK(range.low == doctest::Approx(row.rounded_low).epsilon(1e-15));
        CHECK(range.high == doctest::Approx(row.rounded_high).epsilon(1e-15));
        CHECK(range.major_divs == row.major);
        CHECK(range.minor_divs == row.minor);
    }
}

TEST_CASE("a rounded range holds the data, has few divisions and stays put") {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> share(-1, 1), magnitude(-290, 290), narrowness(-11, 0);
    for (int i = 0; i < 30000; ++i) {
        double const middle = share(random) * std::pow(10, magnitude(random));
        double const width = std::abs(middle) * std::pow(10, narrowness(random)) * (i % 3 == 0 ? 100 : 1);
        double const low = middle - width * std::abs(share(random));
        double const high = middle + width * std::abs(share(random));
        CAPTURE(low);
        CAPTURE(high);
        const AxisRange range = scaled(low, high);
        double const unseen = (range.high - range.low) * 0.0011 + std::abs(middle) * 1e-15;
        REQUIRE(range.low <= low + unseen);
        REQUIRE(range.high >= high - unseen);
        // Less would waste the plot area.
        REQUIRE(high - low >= (range.high - range.low) * 0.3 - std::abs(middle) * 1e-14);
        REQUIRE(range.major_divs >= 2);
        REQUIRE(range.major_divs <= 9);
        REQUIRE(range.minor_divs >= 2);
        REQUIRE(range.minor_divs <= 9);
        // Widening an odd count may reach the next power of ten; after that nothing moves any more.
        const AxisRange again = scaled(range.low, range.high);
        const AxisRange third = scaled(again.low, again.high);
        REQUIRE(third.low == again.low);
        REQUIRE(third.high == again.high);
        REQUIRE(third.major_divs == again.major_divs);
    }
}

TEST_CASE("limits are multiples of a power of ten") {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> value(-1000, 1000);
    for (int i = 0; i < 2000; ++i) {
        const AxisRange range = scaled(value(random), value(random));
        double const unit = std::pow(10, std::floor(std::log10((range.high - range.low) * 1.0001 / 2)) - 1);
        CAPTURE(range.low);
        CAPTURE(range.high);
        CHECK(is_power_of_ten_multiple(range.low, unit));
        CHECK(is_power_of_ten_multiple(range.high, unit));
    }
}

TEST_CASE("the ends of the number line end in a range or a fault") {
    double const not_a_number = std::nan(""), infinity = HUGE_VAL;
    Fixture control;
    for (bool const is_log : {false, true}) {
        for (Ends const& ends : {Ends{not_a_number, 1.0},
                                 {0.0, not_a_number},
                                 {0.0, infinity},
                                 {-infinity, infinity},
                                 {-largest, largest},
                                 {largest, largest}}) {
            CAPTURE(ends.low);
            CAPTURE(ends.high);
            AxisRange range{.low = ends.low, .high = ends.high, .major_divs = 7, .is_log = is_log};
            control.errors().clear();
            AutoScale(control.state, range);
            REQUIRE(control.errors().size() == 1);
            CHECK(control.errors()[0] == "Error 6 has occured in qvGraph.ocx, AutoScale: Overflow");
            CHECK(range.major_divs == 7);
        }
        for (Ends const& ends : {Ends{smallest, smallest},
                                 {0.0, smallest},
                                 {smallest, 2 * smallest},
                                 {1e-310, 3e-310},
                                 {1e15, std::nextafter(1e15, infinity)},
                                 {1.0, std::nextafter(1.0, 2.0)},
                                 {smallest, 1e300}}) {
            CAPTURE(ends.low);
            CAPTURE(ends.high);
            const AxisRange range = scaled(ends.low, ends.high, is_log);
            CHECK(range.low <= ends.low);
            CHECK(range.high >= ends.high);
            CHECK(range.high > range.low);
            CHECK(range.major_divs >= 1);
        }
    }
    CHECK_THROWS(scaled(-8e307, 9e307)); // only the rounded span is too large
}
