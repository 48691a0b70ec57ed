// What lines, errors and areas of a page say of themselves, and how they look in files.
#include "Person.h"
#include "document/selection.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace qv;
using testing::Person;

namespace {

struct SeriesPage : Person {
    GraphHandle made = page.graph("Series", {.left = 0});

    SeriesPage() {
        page.GesturePointTooltip(true);
        page.AutoFit(true);
    }
    /// What stands at the pointer over values on the first axes.
    std::string told_at(double x, double y) {
        Box const box = plot();
        auto const share = [](document::Axis const& axis, double value) {
            return (value - axis.AxisValue1) / (axis.AxisValue2 - axis.AxisValue1);
        };
        move({box.left + box.width * share(x_axis(), x), box.bottom() - box.height * share(y_axis(), y)});
        return state.PointTooltip;
    }
    bool shows_y(double low, double high) {
        return y_axis().AxisValue1 <= low && y_axis().AxisValue2 >= high;
    }
};

} // namespace

TEST_CASE("names of points tell their errors, and automatic axes reach as far as these") {
    SeriesPage person;
    auto const points = person.made.symbols("measured");
    std::vector<double> const x{1, 2, 3}, y{10, 20, 30}, below{1, 0, 5}, above{1, 2, 40}, left{0.5, 0, 0};
    points.add_columns(x, y, below, above, left);
    person.page.Refresh();
    CHECK(person.shows_y(9, 70));
    CHECK(person.told_at(1, 10).ends_with(" -0.5, 10 \u00B1 1"));
    CHECK(person.told_at(2, 20).ends_with("20 +2"));
    CHECK(person.told_at(3, 30).ends_with("30 +40 -5"));
    points.show_error_bar(false);
    person.page.Refresh();
    CHECK(person.y_axis().AxisValue2 < 40);
    CHECK(person.told_at(3, 30).ends_with(", 30"));
    // Without AutoFit too, as no addition of a point has known of them.
    person.page.AutoFit(false);
    points.show_error_bar(true);
    person.page.Refresh();
    CHECK(person.shows_y(9, 70));
}

TEST_CASE("an area is named where the pointer is in it, stacked ones where they are shown") {
    SeriesPage person;
    for (char const* const name : {"lower", "upper"}) {
        auto const area = person.made.area(name, {.area_stacked = 1});
        for (int i = 0; i <= 100; ++i) area.add(i, 5);
    }
    person.page.Refresh();
    CHECK(person.shows_y(0, 10));
    CHECK(person.told_at(50, 2.5).starts_with("lower: 50"));
    CHECK(person.told_at(50, 7.5).starts_with("upper: 50"));
    CHECK(person.told_at(50, 10).starts_with("upper: 50")); // the point itself
    auto sets = person.made.data_sets();
    for (auto const& set : sets) set.area_stacked(2);
    person.page.Refresh();
    CHECK(person.shows_y(0, 100));
    CHECK(person.told_at(50, 75).starts_with("upper"));
    sets[1].hide(true);
    person.page.Refresh();
    CHECK(person.told_at(50, 75).starts_with("lower"));
}

TEST_CASE("what is set is read, and a pattern that is none leaves the one before") {
    SeriesPage person;
    auto const line = person.made.line("line", {.symbol_every = 10,
                                                .line_pattern = "6 2",
                                                .line_alpha = 100,
                                                .fill_alpha = 50,
                                                .steps = 3,
                                                .error_style = 2,
                                                .error_bar_cap = 1.5F,
                                                .area_to = 4});
    CHECK(line.symbol_every() == 10);
    CHECK(line.line_alpha() == 100);
    CHECK(line.error_bar_cap() == 1.5F);
    CHECK(line.area_to() == 4);
    CHECK_THROWS_AS(line.line_pattern("6 x"), Fault);
    CHECK(line.line_pattern() == "6 2");
    CHECK_THROWS_AS(line.line_alpha(256), Fault);
    person.page.NewDataSet("next"); // in the plain style
    CHECK(person.page.DataLineAlpha() == 255);
    CHECK(person.page.DataLinePattern().empty());
    CHECK(person.page.AreaTo() == -1);
    CHECK(person.page.AreaBelowColor() == -1);
}

TEST_CASE("symbols at every n-th point stay with their points, with an edge too") {
    for (int const edge : {0, 1}) {
        SeriesPage person;
        auto const line = person.made.line("line", {.color = rgb(0, 0, 255),
                                                    .symbol = 4,
                                                    .symbol_size = 3,
                                                    .symbol_color = rgb(255, 0, 0),
                                                    .symbol_edge_thickness = edge});
        for (int i = 0; i <= 20; ++i) line.add(i, 5);
        person.made.legend({.show = false});
        auto const red_columns = [&] {
            person.page.Refresh();
            auto const& picture = person.host.picture();
            std::vector<bool> red(static_cast<std::size_t>(picture.width()));
            for (std::size_t i = 0; i < picture.pixels().size(); ++i)
                if (picture.pixels()[i] == 0xFFFF0000) red[i % red.size()] = true;
            int symbols = 0;
            for (std::size_t i = 1; i < red.size(); ++i) symbols += red[i] && !red[i - 1];
            return symbols;
        };
        CHECK(red_columns() == 21);
        line.symbol_every(5);
        CHECK(red_columns() == 5);
        line.symbol_every(1);
        CHECK(red_columns() == 21);
        line.symbol_every(1000);
        CHECK(red_columns() == 1);
        line.symbol_every(5);
        line.line_style(0); // nothing joins the points, so each is shown
        CHECK(red_columns() == 21);
    }
}

TEST_CASE("translucent lines let others through and keep their own crossings even") {
    SeriesPage person;
    auto const line =
        person.made.line("line", {.color = rgb(0, 0, 0), .line_thickness = 20, .line_alpha = 100});
    line.add(std::vector<double>{0, 10, 10, 0}, std::vector<double>{0, 10, 0, 10}); // crosses itself
    person.made.set({.plot_area_color = rgb(255, 255, 255)});
    person.page.Refresh();
    auto const& picture = person.host.picture();
    auto const pixel = [&](double across, double down) {
        const Point place = person.in_plot(across, down);
        auto const x = static_cast<std::size_t>(std::lround(place.x / 15));
        auto const y = static_cast<std::size_t>(std::lround(place.y / 15));
        return picture.pixels()[y * static_cast<std::size_t>(picture.width()) + x] & 0xFF;
    };
    CHECK(pixel(0.5, 0.5) == pixel(0.4, 0.4));
    CHECK(pixel(0.5, 0.5) > 150);
    CHECK(pixel(0.5, 0.5) < 230);
}
