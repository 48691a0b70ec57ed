// Axes of categories on finished pages: entry by text and by date, ranges, labels, the read-out, bars and
// candles.
#include "Person.h"
#include "control/state_of.h"

#include <doctest/doctest.h>

#include <cmath>

using namespace qv;
using namespace qv::testing;

namespace {

constexpr double day = 86400;
constexpr double monday = 1767571200; // 5 January 2026 in UTC

struct CategoryPerson : Person {
    CategoryPerson() {
        page.UseLook("light");
        page.GesturePointTooltip(true);
    }
    GraphHandle made = page.graph("graph");

    std::array<double, 2> x_range() {
        page.Refresh();
        return {x_axis().AxisValue1, x_axis().AxisValue2};
    }
    std::string told_at(double across, double down) {
        move(in_plot(across, down));
        return state.Label1.Caption;
    }
    std::string tooltip_at(double across, double down) {
        move(in_plot(across, down));
        return state.shown_tooltip();
    }
};

std::vector<double> trading_days(std::size_t count) {
    std::vector<double> times;
    for (int i = 0; times.size() < count; ++i)
        if (i % 7 < 5) times.push_back(monday + i * day);
    return times;
}

} // namespace

TEST_CASE("points are added by the texts of categories, which the axis shows and tells") {
    CategoryPerson person;
    person.page.SelectXaxis();
    person.page.AxisCategoryTexts("Mon,Tue");
    person.page.NewDataSet("data");
    for (char const* const text : {"Tue", "Mon", "Thu, late", "Tue"}) person.page.AddCategoryPoint(text, 5);
    CHECK(person.x_axis().AxisCategories);
    person.page.SelectXaxis();
    CHECK(person.page.AxisCategoryTexts() == "Mon,Tue,Thu\\, late");
    CHECK(person.graph().DataSets[0].points.at(2).X == 2);
    CHECK(person.x_range() == std::array{-0.5, 2.5});
    CHECK(person.told_at(0.1, 0.5).starts_with("Mon, "));
    CHECK(person.told_at(0.9, 0.5).starts_with("Thu, late, "));
    CHECK(person.tooltip_at(0.5, 0.5) == "data: Tue, 5");
    person.page.AddCategoryPoint("Fri", 6);
    CHECK(person.x_range() == std::array{-0.5, 3.5});
    CHECK(person.heard.errors.empty());
}

TEST_CASE("categories that come while the axis is zoomed are there when it is zoomed out") {
    CategoryPerson person;
    auto const bars = person.made.bars("bars");
    bars.add({"a", "b", "c", "d"}, std::vector<double>{1, 2, 3, 4});
    person.page.Refresh();
    person.x_axis().AxisValue1 = 0.5;
    person.x_axis().AxisValue2 = 1.5;
    person.page.Refresh();
    CHECK(person.x_axis().AxisValue2 == 1.5);
    bars.add("e", 5);
    person.x_axis().AxisValue1 = person.x_axis().ScaleMin;
    person.x_axis().AxisValue2 = person.x_axis().ScaleMax;
    CHECK(person.x_range() == std::array{-0.5, 4.5});
}

TEST_CASE("a fitted range of categories leaves half a category, a given range stays") {
    CategoryPerson person;
    person.made.x_axis().set_categories({"a", "b", "c"});
    person.page.AutoFit(true);
    CHECK(person.x_range() == std::array{-0.5, 2.5}); // without any data
    auto const bars = person.made.bars("bars");
    bars.add({"a", "d"}, std::vector<double>{1, 2});
    person.made.bar_arrangement(1);
    person.made.bar_width_share(1);
    CHECK(person.x_range() == std::array{-0.5, 3.5});
    person.made.x_axis().log(true);
    CHECK(person.x_range() == std::array{-0.5, 3.5});
    person.made.x_axis({.from = 1, .to = 2});
    CHECK(person.x_range() == std::array{1.0, 2.0});
}

TEST_CASE("dates go into categories of time, texts that are none are told") {
    CategoryPerson person;
    person.page.SelectXaxis();
    person.page.SetAxisCategoryTimes(std::vector{monday, monday + day});
    person.page.NewDataSet("data");
    person.page.AddCategoryPoint("2026-01-06", 1);
    person.page.AddCategoryPoint("2026-01-08", 2);
    CHECK(person.graph().DataSets[0].points.at(1).X == 2);
    CHECK(person.heard.errors.empty());
    person.page.AddCategoryPoint("soon", 3);
    REQUIRE(person.heard.errors.size() == 1);
    CHECK(person.heard.errors[0].find("\"soon\" is no date") != std::string::npos);
    CHECK(person.graph().NumPoints == 2);
    CHECK(person.x_range() == std::array{-0.5, 2.5});
    CHECK(person.told_at(0.9, 0.5).starts_with("8 Jan 2026, "));
    person.page.SetAxisCategoryTimes(std::vector<double>{NAN});
    CHECK(person.heard.errors.size() == 2);
    CHECK(person.x_axis().categories.size() == 3);
    auto const bars = person.made.bars("wrong");
    CHECK_THROWS_AS(bars.add({"2026-01-06"}, std::vector<double>{1, 2}), Fault);
    CHECK(bars.size() == 0);
}

TEST_CASE("lying bars have their categories on the y axis") {
    CategoryPerson person;
    auto const bars = person.made.bars("bars", {.bar_horiz = true});
    bars.add("one", 7);
    bars.add({"two", "three"}, std::vector<double>{8, 9});
    CHECK(person.y_axis().AxisCategories);
    CHECK_FALSE(person.x_axis().AxisCategories);
    CHECK(person.graph().DataSets[0].points.at(2).X == 9);
    CHECK(person.graph().DataSets[0].points.at(2).Y == 2);
}

TEST_CASE("arranged bars are pointed at and read where they stand") {
    CategoryPerson person;
    person.made.bar_arrangement(1);
    person.made.y_axis({.from = 0, .to = 10});
    person.made.legend({.show = false});
    person.made.bars("left").add({"a", "b"}, std::vector<double>{8, 4});
    person.made.bars("right").add({"a", "b"}, std::vector<double>{2, 6});
    person.page.Refresh();
    CHECK(person.tooltip_at(0.2, 0.6) == "left: a, 8");
    CHECK(person.tooltip_at(0.35, 0.9) == "right: a, 2");
    CHECK(person.tooltip_at(0.35, 0.6).empty());
    person.made.bar_arrangement(2);
    person.page.Refresh();
    CHECK(person.tooltip_at(0.25, 0.05) == "right: a, 2"); // upon the other
    person.made.bar_arrangement(3);
    person.made.y_axis({.to = 100});
    person.page.Refresh();
    CHECK(person.tooltip_at(0.75, 0.8) == "left: b, 4");
}

TEST_CASE("errors of arranged bars widen the axis from the ends of their bars") {
    CategoryPerson person;
    person.made.bar_arrangement(2);
    std::vector<double> const x{0, 1}, low{3, 2}, high{4, 5}, error{2, 2};
    person.made.bars("a").add_columns(x, low, error, error);
    person.made.bars("b").add_columns(x, high, error, error);
    person.page.Refresh();
    CHECK(person.y_axis().AxisValue2 >= 9); // 3 + 4 and 2 more
    CHECK(person.y_axis().AxisValue1 == 0);
}

TEST_CASE("candles without weekends: every day is as wide, the days are told, volumes have an axis") {
    CategoryPerson person;
    person.made.x_axis({.time = true, .categories = true});
    auto const candles = person.made.candles("ACME");
    auto const volume = candles.show_volume({.title = "volume"});
    CHECK(volume.far_side());
    std::vector<double> const times = trading_days(10);
    std::vector<double> const open(10, 4), high(10, 8), low(10, 2), close(10, 6), amount(10, 500);
    candles.add_candles(times, open, high, low, close, amount);
    CHECK(person.x_range() == std::array{-0.5, 9.5});
    CHECK(person.graph().DataSets[0].points.at(5).X == 5); // Monday next to Friday
    auto const tooltip = person.tooltip_at(0.55, 0.3);
    CHECK(tooltip.starts_with("ACME: 12 Jan 2026, O 4, H 8, L 2, C 6, V 500"));
    document::Axis const& volume_axis = person.graph().Axes[2];
    CHECK(volume_axis.AxisValue1 == 0);
    CHECK(volume_axis.AxisValue2 >= 1500); // a third of it
    CHECK(person.y_axis().AxisValue1 < 0); // room below the prices
    candles.add_candles(std::vector{times[9] + day}, std::vector{6.0}, std::vector{30.0}, std::vector{5.0},
                        std::vector{7.0}, std::vector{9000.0});
    CHECK(person.x_range() == std::array{-0.5, 10.5});
    CHECK(person.y_axis().AxisValue2 >= 30);
    CHECK(volume_axis.AxisValue2 >= 27000);
    CHECK(person.heard.errors.empty());
}

TEST_CASE(
    "labels of many categories are thinned or turned, and the page stays as it was without categories") {
    CategoryPerson person;
    auto const bars = person.made.bars("bars");
    TextList texts;
    std::vector<double> values;
    for (int i = 0; i < 12; ++i) {
        texts.push_back("category " + std::to_string(i));
        values.push_back(i);
    }
    person.made.x_axis().title("");
    bars.add(texts, values);
    person.page.Refresh();
    double const turned = person.plot().height;
    person.made.x_axis().label_angle(-1); // nearly straight: the host's angle is kept, labels are left out
    person.page.Refresh();
    CHECK(person.plot().height > turned + 300);
    for (int i = 12; i < 100000; ++i) {
        texts.push_back(std::to_string(i));
        values.push_back(i);
    }
    bars.clear();
    bars.add(texts, values);
    CHECK(person.x_range()[1] == 99999.5);
    CHECK(person.heard.errors.empty());
}
