#include "qvplot/number_axis.h"

#include "scale/number_format.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>

using namespace qv;
using namespace qv::plot;

namespace {

std::string joined(AxisPlan const& plan) {
    std::string text;
    for (double const value : plan.major)
        text += (text.empty() ? "" : " ") + scale::EasyFormat(value, 6, plan.format);
    return text;
}

std::size_t different_labels(AxisPlan const& plan) {
    std::set<std::string> labels;
    for (double const value : plan.major) labels.insert(scale::EasyFormat(value, 6, plan.format));
    return labels.size();
}

LabelRoom room_for(int labels) {
    LabelRoom room;
    room.labels = labels;
    return room;
}

} // namespace

TEST_CASE("linear axes and their labels") {
    struct {
        double low, high;
        char const* labels;
    } const table[]{
        {313, 417, "300 320 340 360 380 400 420"},
        {0, 10, "0 2 4 6 8 10"},
        {-0.48, 1.17, "-0.5 0.0 0.5 1.0 1.5"},
        {0.1, 0.3, "0.10 0.15 0.20 0.25 0.30"},
        {0, 1e6, "0 200,000 400,000 600,000 800,000 1,000,000"},
        {0, 4e9, "0 1e9 2e9 3e9 4e9"},
        {1e9, 1e9 + 6,
         "1,000,000,000 1,000,000,001 1,000,000,002 1,000,000,003 1,000,000,004 1,000,000,005 1,000,000,006"},
        {0, 3e-7, "0 5e-8 1e-7 1.5e-7 2e-7 2.5e-7 3e-7"},
        {5, 5, "4.7 4.8 4.9 5.0 5.1 5.2 5.3"},
        {0, 0, "-1.0 -0.5 0.0 0.5 1.0"},
    };
    for (auto const& row : table) {
        CAPTURE(row.low);
        CAPTURE(row.high);
        CHECK(joined(plan_number_axis({row.low, row.high}, room_for(8), RoundTo::Tick)) == row.labels);
    }
    const AxisPlan years = plan_number_axis({1880, 2023}, room_for(12), RoundTo::FifthOfTick);
    CHECK(joined(years) == "1880 1900 1920 1940 1960 1980 2000 2020");
    CHECK(years.range.low == 1880);
    CHECK(years.range.high == 2024);
}

TEST_CASE("logarithmic axes and their labels") {
    struct {
        double low, high;
        char const* labels;
    } const table[]{
        {1, 1e5, "1 10 100 1000 10000 100000"},
        {0.9, 60, "0.5 1 2 5 10 20 50 100"},
        {3, 5, "3.0 3.5 4.0 4.5 5.0"},
        {7, 7, "2 5 10 20"},
        {1e-30, 1e30, "1e-24 1e-16 1e-8 1 1e8 1e16 1e24"},
    };
    for (auto const& row : table) {
        CAPTURE(row.low);
        CAPTURE(row.high);
        const AxisPlan plan = plan_log_axis({row.low, row.high}, room_for(8));
        CHECK(plan.is_log);
        CHECK(joined(plan) == row.labels);
    }
}

TEST_CASE("axes of any values hold them, with rising ticks inside and no label twice") {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> exponent(-12, 12), sign(-1, 1);
    for (int i = 0; i < 4000; ++i) {
        bool const is_log = i % 2 == 0;
        double const a = std::pow(10, exponent(random)) * (is_log ? 1 : sign(random));
        double const b = a + std::abs(a) * std::pow(10, exponent(random) / 2 - 3);
        const Extent data{std::min(a, b), std::max(a, b)};
        LabelRoom room = room_for(3 + i % 9);
        if (i % 3 == 0) room.characters = 60;
        const AxisPlan plan =
            is_log ? plan_log_axis(data, room) : plan_number_axis(data, room, RoundTo(i % 4 / 2));
        CAPTURE(data.low);
        CAPTURE(data.high);
        CAPTURE(is_log);
        CAPTURE(joined(plan));
        REQUIRE(plan.range.low <= data.low + 1e-8 * data.span());
        REQUIRE(plan.range.high >= data.high - 1e-8 * data.span());
        if (is_log) REQUIRE(plan.range.low > 0);
        REQUIRE(plan.major.size() >= 1);
        REQUIRE(std::ranges::adjacent_find(plan.major, std::ranges::greater_equal()) == plan.major.end());
        REQUIRE(different_labels(plan) == plan.major.size());
        REQUIRE(plan.minor.size() < 200);
    }
}

TEST_CASE("where arithmetic ends an axis still has its ends") {
    double const most = std::numeric_limits<double>::max(), least = std::numeric_limits<double>::denorm_min();
    CHECK(plan_number_axis({-most, most}, room_for(8), RoundTo::Tick).major == std::vector{-most, most});
    CHECK(plan_number_axis({0, least}, room_for(8), RoundTo::Tick).major.size() == 2);
    CHECK(plan_log_axis({least, most}, room_for(8)).major.size() >= 2);
    const Extent ranges[]{{0, most},      {-1, 1.79e308},    {-most / 2, most / 3},
                          {most, most},   {-most, -most},    {1e308, 1.1e308},
                          {least, least}, {-1e308, 7.9e307}, {1, 1 + 2e-16}};
    for (Extent const& data : ranges)
        for (auto const rounding : {RoundTo::Nothing, RoundTo::FifthOfTick, RoundTo::Tick})
            for (int const labels : {0, 2, 8}) {
                CAPTURE(data.low);
                CAPTURE(data.high);
                const AxisPlan plan = plan_number_axis(data, room_for(labels), rounding);
                CHECK(std::isfinite(plan.range.span()));
                CHECK(plan.range.low <= data.low + 1e-8 * data.span());
                CHECK(plan.range.high >= data.high - 1e-8 * data.span());
                CHECK(plan.major.size() + plan.minor.size() < 1000);
                if (data.low > 0) CHECK(std::isfinite(plan_log_axis(data, room_for(labels)).range.high));
            }
}

TEST_CASE("little room for labels leaves the data at least half of the axis") {
    for (double const low : {-30.0, -1.0, 0.0, 3.0, 999.0})
        for (double const span : {0.1, 1.0, 57.0, 4e6})
            for (int const labels : {0, 1, 2, 3})
                for (double const characters : {1.0, 5.0, 1e9}) {
                    CAPTURE(low);
                    CAPTURE(span);
                    LabelRoom room = room_for(labels);
                    room.characters = characters;
                    const AxisPlan plan = plan_number_axis({low, low + span}, room, RoundTo::Tick);
                    CHECK(plan.range.span() <= 2 * span);
                    CHECK(plan.major.size() >= 2);
                }
}

TEST_CASE("a zoomed axis keeps its ends and has two round ticks or more between them") {
    std::mt19937 random(9);
    std::uniform_real_distribution<double> exponent(-9, 9), unit(0, 1);
    for (int i = 0; i < 4000; ++i) {
        double const low = std::pow(10, exponent(random)), span = low * std::pow(10, 3 * unit(random) - 3);
        const Extent shown{low, low + span};
        const AxisPlan plan = i % 2 == 0 ? plan_log_axis(shown, room_for(8), RoundTo::Nothing)
                                         : plan_number_axis(shown, room_for(8), RoundTo::Nothing);
        CAPTURE(shown.low);
        CAPTURE(shown.high);
        REQUIRE(plan.range == shown);
        REQUIRE(plan.major.size() >= 2);
        REQUIRE(plan.major.front() >= shown.low * (1 - 1e-8));
        REQUIRE(plan.major.back() <= shown.high * (1 + 1e-8));
        REQUIRE(different_labels(plan) == plan.major.size());
    }
}
