#include "scale/mapping.h"

#include "fixture.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace qv;
using namespace qv::scale;

namespace {

constexpr double largest = std::numeric_limits<double>::max();

void set_range(document::Axis& axis, double first, double last, bool is_log, bool reversed) {
    axis.AxisValue1 = first;
    axis.AxisValue2 = last;
    axis.AxisLog = is_log;
    axis.AxisReverse = reversed;
}

struct Mapped {
    float x = -1;
    float y = -1;
};

Mapped mapped(Fixture& control, double value) {
    Mapped result;
    PosX(control.state, value, result.x);
    PosY(control.state, value, result.y);
    return result;
}

} // namespace

TEST_CASE("positions on both axes") {
    // The plot area is 1100..9100 by 600..4600.
    struct Row {
        double first, last;
        bool is_log, reversed;
        double value;
        float x, y;
    };
    for (Row const& row : {Row{0, 10, false, false, 0, 1100, 4600},
                           {0, 10, false, false, 10, 9100, 600},
                           {0, 10, false, false, 2.5, 3100, 3600},
                           {0, 10, false, true, 2.5, 7100, 1600},
                           {10, 0, false, false, 2.5, 7100, 1600}, // a range that runs downwards
                           {1, 100, true, false, 10, 5100, 2600},
                           {1, 100, true, true, 1, 9100, 600},
                           {1, 100, true, false, 0, -6900, 8600}, // cannot be mapped: one length outside
                           {1, 100, true, true, -3, 17100, -3400},
                           {0, 100, true, false, 10, -6900, 8600},
                           {5, 5, false, false, 5, -6900, 8600},
                           {5, 5, false, true, 5, 17100, -3400},
                           {1e15, 1e15 + 1, false, false, 1e15, 1100, 4600},
                           {1e15, 1e15 + 1, false, false, 1e15 + 1, 9100, 600},
                           {0, 10, false, false, std::nan(""), -6900, 8600}}) {
        CAPTURE(row.value);
        CAPTURE(row.first);
        CAPTURE(row.reversed);
        Fixture control;
        set_range(control.x_axis(), row.first, row.last, row.is_log, row.reversed);
        set_range(control.y_axis(), row.first, row.last, row.is_log, row.reversed);
        const Mapped position = mapped(control, row.value);
        CHECK(position.x == row.x);
        CHECK(position.y == row.y);
        CHECK(control.errors().empty());
    }
}

TEST_CASE("extreme values and ranges give a position without a fault") {
    double const extremes[] = {0,        1e-300,   1e300,     -1e300,      largest,
                               -largest, HUGE_VAL, -HUGE_VAL, std::nan("")};
    Fixture control;
    for (double const first : extremes) {
        for (double const last : extremes) {
            for (bool const is_log : {false, true}) {
                set_range(control.x_axis(), first, last, is_log, false);
                set_range(control.y_axis(), first, last, is_log, true);
                for (double const value : extremes) {
                    const Mapped position = mapped(control, value);
                    REQUIRE(std::isfinite(position.x));
                    REQUIRE(std::isfinite(position.y));
                    REQUIRE(position.x <= 1e10F);
                }
            }
        }
    }
    CHECK(control.errors().empty());
    set_range(control.x_axis(), 0, 1, false, false);
    CHECK(mapped(control, 1e9).x == 10000);
}

TEST_CASE("pages map back to values, on straight, logarithmic and reversed axes") {
    std::mt19937_64 random(23);
    std::uniform_real_distribution<double> power(-30, 30), share(0, 1);
    for (int i = 0; i < 8000; ++i) {
        bool const is_log = i % 2 == 1, reversed = i / 2 % 2 == 1;
        double const first = std::pow(10, power(random)) * (!is_log && i % 3 == 0 ? -1 : 1);
        double const last =
            is_log ? first * std::pow(10, power(random)) : first + std::pow(10, power(random));
        if (last == first || std::abs((last - first) / first) < 1e-3) continue;
        CAPTURE(first);
        CAPTURE(last);
        CAPTURE(is_log);
        CAPTURE(reversed);
        Fixture control;
        set_range(control.x_axis(), first, last, is_log, reversed);
        set_range(control.y_axis(), first, last, is_log, reversed);
        double const t = share(random);
        double const value = is_log ? first * std::pow(last / first, t) : first + (last - first) * t;

        const AxisMap x = x_map(control.graph(), control.x_axis());
        const AxisMap y = y_map(control.graph(), control.y_axis());
        const Mapped position = mapped(control, value);
        REQUIRE(position.x == doctest::Approx(x(value)));
        REQUIRE(position.y == doctest::Approx(y(value)));

        double x_back = 0, y_back = 0;
        GetXCoord(control.state, 0, position.x, x_back);
        GetYCoord(control.state, 0, position.y, y_back);
        REQUIRE(control.errors().empty());
        // A position is good to a thousandth of a twip of 4000, on either scale; 32 bits to their last place.
        double const span = is_log ? value * std::abs(std::log(last / first)) : std::abs(last - first);
        REQUIRE(std::abs(x_back - value) <= span * 1e-6 + std::abs(value) * 1e-12);
        REQUIRE(std::abs(y_back - value) <= span * 1e-5
                                                + (std::abs(first) + std::abs(last)) * (is_log ? 0 : 1e-6)
                                                + std::abs(value) * 1e-4);
        REQUIRE(x.value_at(x(value)) == doctest::Approx(value).epsilon(1e-9));
        REQUIRE(y.value_at(y(value)) == doctest::Approx(value).epsilon(1e-9));
    }
}

TEST_CASE("the y value has 32 bits, unless its range does not fit into them") {
    Fixture control;
    double value = 0;
    set_range(control.y_axis(), 0, 1, false, false);
    GetYCoord(control.state, 0, 4600 - 4000 / 3.0F, value);
    CHECK(value == static_cast<double>(static_cast<float>(value)));
    CHECK(value == doctest::Approx(1 / 3.0).epsilon(1e-6));
    for (double const unit : {1e300, 1e-300, -1e-50}) {
        set_range(control.y_axis(), unit, 3 * unit, false, false);
        GetYCoord(control.state, 0, 2600, value);
        CHECK(value == doctest::Approx(2 * unit));
    }
    CHECK(control.errors().empty());
}

TEST_CASE("what cannot be mapped back is reported and leaves the value alone") {
    struct Row {
        std::int16_t graph;
        std::int32_t length;
        double first, last;
        char const* error;
    };
    for (Row const& row : {Row{0, 0, 0, 1, "Error 11"},
                           {1, 100, 0, 1, "Error 9"},
                           {-1, 100, 0, 1, "Error 9"},
                           {0, 100, -1, 1, "Error 5"},
                           {0, 100, -2, -1, "Error 5"},
                           {0, 100, 1, largest, "Error 6"}}) {
        CAPTURE(row.error);
        Fixture control;
        for (document::Axis& axis : control.graph().Axes) {
            set_range(axis, row.first, row.last, true, false);
            axis.AxisLength = row.length;
        }
        double x = 7, y = 7;
        GetXCoord(control.state, row.graph, 9999, x);
        GetYCoord(control.state, row.graph, -9999, y);
        CHECK(x == 7);
        CHECK(y == 7);
        REQUIRE(control.errors().size() == 2);
        const std::string source = std::string(row.error) + " has occured in qvGraph.ocx, ";
        CHECK(control.errors()[0].starts_with(source + "GetXCoord"));
        CHECK(control.errors()[1].starts_with(source + "GetYCoord"));
    }
}
