// Values under the pointer: those of the page as it is shown, in double precision, through every gesture.
#include "Person.h"
#include "qvgraph/Outline.h"
#include "scale/mapping.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

using namespace qv;
using namespace qv::testing;
using host::Bar;

namespace {

constexpr double pixel = 15;

/// A graph with one line between two corners, and what a person does there.
struct Reader : Person {
    Reader(double first, double last) {
        page.NewGraph("graph", first, last, first, last);
        page.NewDataSet("line");
        page.AddDataPoint(first, first);
        page.AddDataPoint(last, last);
        page.Refresh();
    }

    void wheel(Point place, double steps) { host.input(host::WheelInput{steps, 0, 0, place}); }
    void pinch(Point place, double scale) { host.input(host::PinchInput{scale, place}); }
    void click(Point place) {
        press(place);
        release(place);
    }
    std::string reading() { return state.Label1.Caption; }
    /// Where a value is drawn.
    Point place_of(double x, double y) {
        return {scale::x_map(graph(), x_axis())(x), scale::y_map(graph(), y_axis())(y)};
    }
    /// What the drawing says of a place, reckoned here in another way than the control does.
    Point drawn_at(Point place) {
        const Box box = plot();
        auto const value = [](document::Axis const& axis, long double share) {
            if (axis.AxisReverse) share = 1 - share;
            long double const first = axis.AxisValue1, last = axis.AxisValue2;
            if (axis.AxisLog) return static_cast<double>(first * std::pow(last / first, share));
            return static_cast<double>(first + (last - first) * share);
        };
        return {value(x_axis(), (place.x - box.left) / box.width),
                value(y_axis(), (box.bottom() - place.y) / box.height)};
    }
};

} // namespace

TEST_CASE("a hundred zooms keep a value under the pointer to the pixel") {
    struct Row {
        double first, last;
        bool is_log, reversed;
    };
    for (Row const& row : {Row{1e6, 1e6 + 1, false, false},
                           {1e6, 1e6 + 1, false, true},
                           {0, 2e6, false, false},
                           {1e6 + 1, 1e6, false, false},
                           {1e6, 1e6 + 1, true, false},
                           {1, 1e7, true, true},
                           {1e6, 1e6 + 1e-4, false, false}}) {
        for (Point const share : {Point{0.37, 0.61}, {0.123456789, 0.9}, {0.5, 0.5}}) {
            CAPTURE(row.first);
            CAPTURE(row.last);
            CAPTURE(row.is_log);
            CAPTURE(share.x);
            Reader person(row.first, row.last);
            for (document::Axis* axis : {&person.x_axis(), &person.y_axis()}) {
                axis->AxisLog = row.is_log;
                axis->AxisReverse = row.reversed;
            }
            person.page.Refresh();
            const Point place = person.in_plot(share.x, share.y);
            const Point values = person.drawn_at(place);
            double worst = 0;
            auto const measure = [&] {
                const Point now = person.place_of(values.x, values.y);
                worst = std::max({worst, std::abs(now.x - place.x), std::abs(now.y - place.y)});
            };
            for (int i = 0; i < 100; ++i) {
                i % 2 ? person.wheel(place, 1) : person.pinch(place, 1.17);
                measure();
            }
            double const span = person.x_axis().AxisValue2 - person.x_axis().AxisValue1;
            CHECK(std::abs(span) < std::abs(row.last - row.first) / 1000);
            for (int i = 0; i < 40; ++i) {
                person.wheel(place, i % 3 ? -2 : 3.5);
                measure();
            }
            CHECK(worst < pixel);
            CHECK(person.heard.errors.empty());
        }
    }
}

TEST_CASE("a box, and a box in it, and one in that show exactly those boxes") {
    for (bool const is_log : {false, true}) {
        Reader person(1e6, 1e6 + 1);
        for (document::Axis* axis : {&person.x_axis(), &person.y_axis()}) axis->AxisLog = is_log;
        person.page.Refresh();
        for (int depth = 0; depth < 3; ++depth) {
            const Point from{person.in_plot(0.31, 0.27)}, to{person.in_plot(0.35, 0.3)};
            const Point low = person.drawn_at(from), high = person.drawn_at(to);
            person.drag(from, to);
            double const slack = 1e-9; // the digits of 1e6 in double precision
            CHECK(std::abs(person.x_axis().AxisValue1 - low.x) < slack);
            CHECK(std::abs(person.x_axis().AxisValue2 - high.x) < slack);
            CHECK(std::abs(person.y_axis().AxisValue1 - high.y) < slack);
            CHECK(std::abs(person.y_axis().AxisValue2 - low.y) < slack);
        }
        CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 < 1e-4);
    }
}

TEST_CASE("panning in a deep zoom moves by the way of the hand, and back to where it was") {
    Reader person(1e6, 1e6 + 1);
    const Point middle = person.in_plot(0.5, 0.5), beside = person.in_plot(0.53, 0.44);
    for (int i = 0; i < 60; ++i) person.wheel(middle, 1);
    double const x = person.x_axis().AxisValue1, y = person.y_axis().AxisValue1;
    const Point values = person.drawn_at(middle);
    person.press(middle, host::middle_button);
    person.move(beside, host::middle_button);
    const Point there = person.place_of(values.x, values.y);
    CHECK(std::abs(there.x - beside.x) < pixel);
    CHECK(std::abs(there.y - beside.y) < pixel);
    person.move(middle, host::middle_button);
    person.release(middle, host::middle_button);
    CHECK(person.x_axis().AxisValue1 == x);
    CHECK(person.y_axis().AxisValue1 == y);
}

TEST_CASE("read-out, pointer and click tell y in double precision") {
    Reader person(1000, 1001);
    const Point place = person.in_plot(0.25, 0.7);
    const Point values = person.drawn_at(place);
    person.move(place);
    CHECK(std::abs(person.heard.y - values.y) < 1e-9);
    person.click(place);
    CHECK(person.heard.names.back() == "Click");
    CHECK(std::abs(person.heard.x - values.x) < 1e-9);
    CHECK(std::abs(person.heard.y - values.y) < 1e-9);
}

TEST_CASE("a click tells the values of the page as it is shown then") {
    struct KeyListener : HeardEvents {
        Point typed;
        void KeyPress(std::int16_t&, double& X, double& Y) override { typed = {X, Y}; }
    } listener;
    Reader person(0, 10);
    person.page.set_events(&listener);
    const Point place = person.in_plot(0.3, 0.4);
    auto const click_tells_the_page = [&] {
        const Point values = person.drawn_at(place);
        // Typed before the click: the pointer rests, and no event has told where.
        person.host.input(host::KeyInput{u'a', 0, host::Key::None});
        CHECK(listener.typed.x == doctest::Approx(values.x).epsilon(1e-12));
        CHECK(listener.typed.y == doctest::Approx(values.y).epsilon(1e-12));
        auto const number = [](std::string const& text) { return std::stod(text); };
        if (!person.reading().empty()) {
            auto const comma = person.reading().find(", ");
            CHECK(number(person.reading()) == doctest::Approx(values.x).epsilon(0.01));
            CHECK(number(person.reading().substr(comma + 2)) == doctest::Approx(values.y).epsilon(0.01));
        }
        person.click(place);
        CHECK(listener.names.back() == "Click");
        CHECK(listener.x == doctest::Approx(values.x).epsilon(1e-12));
        CHECK(listener.y == doctest::Approx(values.y).epsilon(1e-12));
        person.mouse(host::MouseKind::DoubleClick, host::left_button, 0, place);
        CHECK(listener.names.back() == "DblClick");
        CHECK(listener.x == doctest::Approx(values.x).epsilon(1e-12));
    };
    SUBCASE("without a move before") {
        person.click(place);
        CHECK(listener.x == doctest::Approx(3));
        CHECK(listener.y == doctest::Approx(6));
    }
    SUBCASE("under a pointer that rests") {
        person.move(place);
        CHECK(person.reading() == "3, 6");
        person.wheel(person.in_plot(0.9, 0.9), 4); // leaves the pointer there
        person.move(place);
        click_tells_the_page();
        person.scroll(Bar::HScroll1, 200);
        click_tells_the_page();
        person.scroll(Bar::VScroll1, 700);
        click_tells_the_page();
        person.press(place, host::left_button, host::shift_key);
        person.release(place, host::left_button, host::shift_key);
        click_tells_the_page();
        person.host.input(host::KeyInput{0, 0, host::Key::Left});
        click_tells_the_page();
        person.press(place, host::right_button);
        person.release(place, host::right_button);
        click_tells_the_page();
        person.drag(person.in_plot(0.1, 0.1), place);
        click_tells_the_page();
        person.host.input(host::KeyInput{0, host::alt_key, host::Key::Left});
        click_tells_the_page();
        person.host.resize_picture({640, 500});
        click_tells_the_page();
    }
    SUBCASE("data that were not drawn yet") {
        person.move(place);
        person.page.AddDataPoint(50, -40);
        person.click(place);
        CHECK(listener.x == doctest::Approx(3));
        CHECK(listener.y == doctest::Approx(6));
        person.page.Refresh();
        CHECK(person.x_axis().AxisValue2 == 50);
        click_tells_the_page();
        CHECK(person.reading() == "15, -10");
    }
    SUBCASE("properties that were not shown yet") {
        person.move(place);
        person.page.SetSelectedAxis(0);
        person.page.AxisReverse(true);
        person.page.AxisLog(true);
        person.page.SetSelectedAxis(1);
        person.page.AxisValue2(1000);
        person.move(person.in_plot(0.5, 0.5));
        CHECK(person.reading() == "5, 5");
        person.click(place);
        CHECK(listener.x == doctest::Approx(3));
        CHECK(listener.y == doctest::Approx(6));
    }
    SUBCASE("another selected axis") {
        person.page.NewYAxis("second", 100, 200);
        person.page.Refresh();
        person.move(place);
        CHECK(person.reading() == "3, 160");
        person.page.SetSelectedAxis(1);
        person.click(place);
        CHECK(listener.y == doctest::Approx(6));
    }
    CHECK(listener.errors.empty());
}

TEST_CASE("the name of the point under the resting pointer is that of the page as shown") {
    Reader person(0, 10);
    person.page.AddDataPoint(3, 6, 0, 0, "peak");
    person.page.Refresh();
    const Point place = person.in_plot(0.3, 0.4);
    person.move(place);
    CHECK(person.state.shown_tooltip() == "line, peak: 3, 6");
    person.wheel(person.in_plot(0.8, 0.8), 4);
    person.move(place);
    CHECK(person.state.shown_tooltip().empty());
    person.scroll(Bar::HScroll1, 0);
    person.press(place, host::right_button); // everything again, under a pointer that rests
    person.release(place, host::right_button);
    CHECK(person.state.shown_tooltip() == "line, peak: 3, 6");
}

TEST_CASE("values of an axis of time are read as dates and times, down to a pixel") {
    constexpr double noon = 1711879200; // 31 March 2024, 12:00 in Berlin
    Reader person(noon, noon + 86400);
    person.page.SelectXaxis();
    person.page.AxisTime(true);
    person.page.AxisTimeZone("Europe/Berlin");
    person.page.AddDataPoint(noon + 21600, noon + 43200, 0, 0, "evening");
    person.page.Refresh();
    person.move(person.place_of(noon + 21600, noon + 43200));
    CHECK(person.state.shown_tooltip().starts_with("line, evening: 31 Mar 2024 18:00, 1"));
    CHECK(person.reading().find("31 Mar 2024 1") == 0); // a pixel is some two minutes, so minutes are told
    CHECK(person.reading().find(':') == person.reading().rfind(':'));
    for (int i = 0; i < 60; ++i) person.wheel(person.place_of(noon + 21600, noon + 43200), 1);
    person.move(person.place_of(noon + 21600, noon + 43200));
    CHECK(person.reading().starts_with("31 Mar 2024 18:00:00.0")); // now it is less than a second
    auto const outline = person.page.outline(0);
    REQUIRE(outline.has_value());
    CHECK(outline->parts[0].description.ends_with(", Europe/Berlin"));
    CHECK(outline->parts[0].description.starts_with("31 Mar 2024 1"));
    CHECK(outline->parts[2].description.find("x 31 Mar 2024 12:00") != std::string::npos);
    person.page.AxisTextLabels("d/m hh:mm");
    person.page.Refresh();
    person.move(person.place_of(noon + 21600, noon + 43200));
    CHECK(person.reading().starts_with("31/3 18:00, "));
    CHECK(person.heard.errors.empty());
}

TEST_CASE(
    "while a button is held the pointer's values stay and the read-out is hidden, whatever is dragged") {
    Reader person(0, 10);
    person.page.GraphPosition({.Left = 10, .Top = 10, .Width = 60, .Height = 60});
    person.page.Refresh();
    struct Row {
        Point place;
        std::uint8_t button;
    };
    for (Row const& row : {Row{person.in_plot(0.4, 0.4), host::left_button},
                           {person.in_plot(0.4, 0.4), host::middle_button},
                           {{person.plot().left + 10, person.in_plot(0.5, 0.5).y}, host::left_button}}) {
        person.move({row.place.x + 1, row.place.y});
        person.move(row.place);
        CHECK(person.state.Label1.Visible);
        person.press(row.place, row.button);
        const Point values{person.state.PointerX, person.state.PointerY};
        for (int step = 1; step < 4; ++step) {
            person.move({row.place.x + step * 300, row.place.y + step * 150}, row.button);
            CHECK(person.heard.x == values.x);
            CHECK(person.heard.y == values.y);
            CHECK_FALSE(person.state.Label1.Visible);
            CHECK(person.reading().empty());
        }
        person.host.input(host::KeyInput{0, 0, host::Key::Escape});
        person.release(row.place, row.button);
    }
}

TEST_CASE("Zoomed and the scroll bars are those of the selected axes, whatever else is drawn") {
    Reader person(0, 10);
    person.page.NewYAxis("second", 100, 200);
    person.page.SetSelectedAxis(1);
    person.page.Refresh();
    CHECK_FALSE(person.state.Zoomed);
    person.y_axis().AxisValue2 = 4; // the first y axis alone, drawn before the second
    person.page.Refresh();
    CHECK(person.state.Zoomed);
    CHECK(person.state.VScroll1.Visible);
    CHECK(person.state.VScroll1.LargeChange == 500);
    person.page.SetSelectedAxis(2);
    CHECK_FALSE(person.state.Zoomed);
    CHECK_FALSE(person.state.VScroll1.Visible);
    person.page.Refresh();
    CHECK_FALSE(person.state.Zoomed);
    person.graph().Axes[2].AxisValue1 = 190;
    person.page.SetSelectedAxis(1);
    CHECK(person.state.Zoomed);
    CHECK(person.state.VScroll1.LargeChange == 500);
    person.page.SetSelectedAxis(2);
    CHECK(person.state.VScroll1.LargeChange == 111);
    CHECK(person.state.VScroll1.Value == 0);

    // The program gives the axes other ranges, which are all there is.
    Reader other(0, 10);
    other.drag(other.in_plot(0.2, 0.2), other.in_plot(0.6, 0.6));
    CHECK(other.state.HScroll1.Visible);
    for (int const axis : {0, 1}) {
        other.page.SetSelectedAxis(axis);
        other.page.AxisValue1(-20);
        other.page.AxisValue2(20);
    }
    other.page.Refresh();
    CHECK_FALSE(other.state.Zoomed);
    CHECK_FALSE(other.state.HScroll1.Visible);
    CHECK(other.heard.errors.empty());
}

TEST_CASE("a scroll bar at its end shows the end of the full range, not a bit beyond") {
    for (bool const is_log : {false, true}) {
        Reader person(1.1, 7.3e6);
        for (document::Axis* axis : {&person.x_axis(), &person.y_axis()}) axis->AxisLog = is_log;
        person.page.Refresh();
        person.drag(person.in_plot(0.21, 0.17), person.in_plot(0.63, 0.48));
        person.scroll(Bar::HScroll1, 1000);
        person.scroll(Bar::VScroll1, 0);
        CHECK(person.x_axis().AxisValue2 == 7.3e6);
        CHECK(person.y_axis().AxisValue2 == 7.3e6);
        person.scroll(Bar::HScroll1, 0);
        CHECK(person.x_axis().AxisValue1 == 1.1);
    }
}
