// Categories: their texts and moments, the range that shows them, and the ticks of moments without the gaps.
#include "qvgraph/fault.h"
#include "scale/category_text.h"
#include "scale/time_ticks.h"

#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <random>

using namespace qv;
using namespace qv::scale;
using document::CategoryList;

namespace {

constexpr double day = 86400;
constexpr double monday = 1767571200; // 5 January 2026 in UTC

std::string joined(std::string_view text) {
    return std::string(CategoryList(text));
}

/// Trading days: Mondays to Fridays.
std::vector<double> trading_days(std::size_t count) {
    std::vector<double> times;
    for (int i = 0; times.size() < count; ++i)
        if (i % 7 < 5) times.push_back(monday + i * day);
    return times;
}

TimeScale scale_of(double low, double high, double length) {
    return {.low = low,
            .high = high,
            .zone = {},
            .pattern = {},
            .length = length,
            .room_before = 100,
            .room_after = 100,
            .gap = 12,
            .minor_gap = 4,
            .size_along = [](std::string_view text) { return 6.0 * static_cast<double>(text.size()); }};
}

std::string labels(TimeScale const& scale, std::vector<double> const& times) {
    std::string text;
    auto const ticks = category_time_ticks(scale, times);
    REQUIRE(ticks);
    for (TimeTick const& tick : *ticks)
        if (!tick.label.empty())
            text += std::to_string(static_cast<int>(tick.value)) + " " + tick.label + "|";
    return text;
}

} // namespace

TEST_CASE("category texts come back as they were given, commas and backslashes within them too") {
    for (char const* const text :
         {"", "Mon,Tue,Wed", "one", "a\\,b,c", "\\alpha,x\\\\,y", "ä,,b", ",", "a\\\\"})
        CHECK(joined(text) == text);
    CHECK(CategoryList(std::string_view("a\\,b,c")).texts() == std::vector<std::string>{"a,b", "c"});
    CHECK(CategoryList(std::string_view(",")).size() == 2);
    std::mt19937 random(3);
    for (int round = 0; round < 500; ++round) {
        std::vector<std::string> texts(1 + random() % 3);
        for (std::string& text : texts)
            for (auto left = random() % 5; left > 0; --left) text += "a,\\"[random() % 3];
        if (texts.size() == 1 && texts[0].empty()) continue; // no text at all
        CHECK(CategoryList(std::string_view(joined(std::string(CategoryList(texts))))).texts() == texts);
    }
}

TEST_CASE("categories are numbered in order of arrival, moments also when they do not rise") {
    CategoryList texts(std::string_view("b,a,b"));
    CHECK(texts.number_of("b") == 0);
    CHECK(texts.number_of("c") == 3);
    CHECK(texts.number_of("c") == 3);
    std::mt19937 random(5);
    CategoryList times;
    std::vector<double> seen;
    for (int i = 0; i < 2000; ++i) {
        double const time = i < 200 ? i * 7.0 : static_cast<double>(random() % 1000);
        auto const known = std::ranges::find(seen, time) - seen.begin();
        CHECK(times.number_of(time) == static_cast<std::size_t>(known));
        if (static_cast<std::size_t>(known) == seen.size()) seen.push_back(time);
        CHECK(times.times_rise() == std::ranges::is_sorted(seen));
    }
    CHECK(times.number_of("text") == 0); // the other kind replaces them
    CHECK_FALSE(times.are_times());
}

TEST_CASE("an axis of categories shows half a category beyond the first and the last") {
    document::Axis axis;
    axis.AxisCategories = true;
    auto const range = [&](document::Extent const& data) {
        auto const [low, high] = category_range(axis, data);
        return std::array{low, high};
    };
    CHECK(range({}) == std::array{-0.5, 0.5});
    CHECK(range({2, 6}) == std::array{1.5, 6.5});
    CHECK(range({2.4, 5.5}) == std::array{1.5, 6.5});
    axis.categories = CategoryList(std::string_view("a,b,c"));
    CHECK(range({}) == std::array{-0.5, 2.5});
    CHECK(range({1, 1}) == std::array{-0.5, 2.5});
    CHECK(range({-1, 4}) == std::array{-1.5, 4.5});
}

TEST_CASE("a value is told as its category; beside them there is none") {
    document::Axis axis;
    axis.AxisCategories = true;
    CHECK(category_text(axis, 2.4) == "2");
    axis.categories = CategoryList(std::string_view("a,b,c"));
    CHECK(category_text(axis, -0.5) == "a");
    CHECK(category_text(axis, 1.49) == "b");
    CHECK(category_text(axis, 2.5) == "c"); // where the axis ends
    for (double const beside : {-0.51, 2.51, 1e300, double(NAN), double(INFINITY)})
        CHECK_FALSE(category_text(axis, beside));
    axis.AxisTime = true;
    axis.categories = CategoryList(std::span<double const>(trading_days(7)));
    CHECK(category_text(axis, 5) == "12 Jan 2026");
    axis.AxisTextLabels = "ddd d mmm";
    CHECK(category_text(axis, 4) == "Fri 9 Jan");
}

TEST_CASE("dates are read in their zone, anything else is none") {
    CHECK(time_of_text("2026-01-05", "UTC") == monday);
    CHECK(time_of_text("2026-01-05 09:30", "UTC") == monday + 9.5 * 3600);
    CHECK(time_of_text("2026-01-05T23:59:59", "UTC") == monday + day - 1);
    CHECK(time_of_text("2026-01-05", "Europe/Berlin") == monday - 3600);
    for (char const* const text :
         {"", "Mon", "2026", "2026-13-01", "2026-02-29", "2026-01-05 ", "2026-01-05 09", "2026-01-05 24:00",
          "2026-1-5", "2026-01-05 09:30:15.5", "-026-01-05"})
        CHECK_FALSE(time_of_text(text, "UTC"));
}

TEST_CASE("days without weekends are labelled in two levels, at the first day of each step") {
    const std::vector<double> times = trading_days(700);
    CHECK(labels(scale_of(-0.5, 6.5, 700), times) == "0 5\nJan 2026|1 6|2 7|3 8|4 9|5 12|6 13|");
    CHECK(labels(scale_of(9.5, 39.5, 400), times) == "10 19\nJan 2026|15 26|20 2\nFeb|25 9|30 16|35 23|");
    CHECK(labels(scale_of(9.5, 89.5, 200), times) == "20 Feb\n2026|40 Mar|62 Apr|84 May|");
    CHECK(labels(scale_of(-0.5, 699.5, 600), times).starts_with("0 Jan\n2026|"));
    // Panning moves no label.
    for (double const low : {90.5, 100.5, 120.5}) {
        CAPTURE(low);
        CHECK(labels(scale_of(low, low + 80, 200), times).find("127 Jul") != std::string::npos);
    }
}

TEST_CASE("labels of moments keep apart at any zoom, and none is told where none is") {
    const std::vector<double> times = trading_days(3000);
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        double const low = static_cast<double>(random() % 30000) / 10 - 20;
        double const span = std::exp(static_cast<double>(random() % 8000) / 1000);
        const TimeScale scale = scale_of(low, low + span, 500);
        auto const ticks = category_time_ticks(scale, times);
        REQUIRE(ticks);
        double end = -HUGE_VAL, before = -1;
        for (TimeTick const& tick : *ticks) {
            CHECK(tick.value > before);
            CHECK((tick.value >= low && tick.value <= low + span && tick.value <= 2999));
            before = tick.value;
            if (tick.label.empty()) continue;
            double const half = 3.0 * static_cast<double>(tick.label.substr(0, tick.label.find('\n')).size());
            double const middle = (tick.value - low) / span * 500;
            CHECK(middle - half >= end);
            end = middle + half;
        }
    }
    CHECK(category_time_ticks(scale_of(-9, -2, 500), times)->empty());
    CHECK(category_time_ticks(scale_of(0, 5, 500), {})->empty());
    CHECK_FALSE(category_time_ticks(scale_of(0, 1, 500), std::array{0.0, 1e300}));
}
