// Wheel, middle button and keys; each with its switch.
#include "Person.h"
#include "interact/hit_test.h"
#include "interact/nearest_point.h"
#include "interact/zoom.h"
#include "scale/mapping.h"

#include <doctest/doctest.h>

#include <random>

using namespace qv;
using namespace qv::testing;
using host::Key;

namespace {

struct Navigator : PersonAtGraph {
    bool wheel(Point place, double steps, std::uint8_t shift = 0) {
        return host.input(host::WheelInput{steps, 0, shift, place});
    }
    bool key(Key key, std::uint8_t shift = 0, char16_t character = 0) {
        return host.input(host::KeyInput{character, shift, key});
    }
    double value_under(Point place) {
        double value = 0;
        scale::GetXCoord(state, 0, static_cast<float>(place.x), value);
        return value;
    }
    std::vector<document::Shown> shown() { return interact::shown_ranges(graph()); }
};

std::vector<document::Shown> const full{{0, 10}, {0, 10}};

} // namespace

TEST_CASE("the wheel zooms about the pointer, between the full range and MaxZoomFactor") {
    Navigator person;
    const Point place = person.in_plot(0.3, 0.3);
    double const before = person.value_under(place);
    CHECK(person.wheel(place, 3));
    CHECK(person.value_under(place) == doctest::Approx(before).epsilon(0.001));
    CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 == doctest::Approx(10 / 1.728));
    person.wheel(place, -50);
    CHECK(person.shown() == full);
    person.wheel(place, 2, host::shift_key);
    CHECK(person.y_axis().AxisValue2 == 10);
    CHECK(person.x_axis().AxisValue2 < 10);
    person.wheel(place, 2, host::ctrl_key);
    CHECK(person.y_axis().AxisValue2 < 10);
    for (int i = 0; i < 100; ++i) person.wheel(place, 5);
    CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 >= 1e-5 * 0.99);
    CHECK_FALSE(person.wheel({1, 1}, 1));
    person.page.GraphAllowZoom(false);
    CHECK_FALSE(person.wheel(place, 1));
    person.page.GraphAllowZoom(true);
    person.state.gestures.wheel_zoom = false;
    CHECK_FALSE(person.wheel(place, 1));
}

TEST_CASE("the middle button pans, keys pan and zoom, Home shows all") {
    Navigator person;
    const Point middle = person.in_plot(0.5, 0.5);
    person.drag(person.in_plot(0.25, 0.25), person.in_plot(0.75, 0.75));
    double const span = person.x_axis().AxisValue2 - person.x_axis().AxisValue1;
    person.drag(middle, person.in_plot(0.6, 0.5), host::middle_button);
    CHECK(person.x_axis().AxisValue1 == doctest::Approx(2.0).epsilon(0.01));
    CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 == doctest::Approx(span));
    person.drag(middle, person.in_plot(9, 0.5), host::middle_button);
    CHECK(person.x_axis().AxisValue1 == 0);
    CHECK(person.key(Key::Right));
    CHECK(person.x_axis().AxisValue1 == doctest::Approx(0.5).epsilon(0.01));
    CHECK(person.key(Key::Plus, host::shift_key, u'+'));
    CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 == doctest::Approx(span / 1.25));
    CHECK(person.key(Key::Home));
    CHECK(person.shown() == full);
    CHECK_FALSE(person.state.HScroll1.Visible);
    person.state.gestures.keyboard = false;
    CHECK_FALSE(person.key(Key::Plus, 0, u'+'));
    CHECK(person.heard.errors.empty());
}

TEST_CASE("steps of zooming are undone and redone, a run of one kind at once") {
    Navigator person;
    person.drag(person.in_plot(0.2, 0.2), person.in_plot(0.6, 0.6));
    auto const boxed = person.shown();
    for (int i = 0; i < 5; ++i) person.wheel(person.in_plot(0.5, 0.5), 1);
    auto const wheeled = person.shown();
    CHECK(person.key(Key::Left, host::alt_key));
    CHECK(person.shown() == boxed);
    CHECK(person.key(Key::Left, host::alt_key));
    CHECK(person.shown() == full);
    CHECK_FALSE(person.key(Key::Left, host::alt_key));
    CHECK(person.key(Key::Right, host::alt_key));
    CHECK(person.key(Key::Right, host::alt_key));
    CHECK(person.shown() == wheeled);
    CHECK_FALSE(person.key(Key::Right, host::alt_key));
    person.key(Key::Left, host::alt_key);
    person.drag(person.in_plot(0.2, 0.2), person.in_plot(0.6, 0.6)); // a new way: nothing to redo
    CHECK_FALSE(person.key(Key::Right, host::alt_key));
    person.page.Reset();
    CHECK_FALSE(person.key(Key::Left, host::alt_key));
}

TEST_CASE("Escape takes a rubber band or a drag back") {
    Navigator person;
    person.page.GraphPosition({.Left = 10, .Top = 10, .Width = 70, .Height = 70});
    person.page.Refresh();
    auto const before = person.pixels();
    person.press(person.in_plot(0.2, 0.2));
    person.move(person.in_plot(0.5, 0.5), host::left_button);
    CHECK(person.key(Key::Escape, 0, 27));
    CHECK(person.pixels() == before);
    person.release(person.in_plot(0.5, 0.5));
    CHECK(person.shown() == full);

    document::Graph& graph = person.graph();
    for (const Point grip : {Point{graph.FrameLeft + 200.0, graph.FrameTop + 200.0},
                             Point{graph.FrameLeft + 5.0, graph.FrameTop + 2000.0},
                             Point{person.plot().left + 5, person.plot().top + 500},
                             Point{graph.LegendLeft + 20.0, graph.LegendTop + 20.0}}) {
        person.press(grip);
        person.move({grip.x + 900, grip.y + 900}, host::left_button);
        CHECK(person.pixels() != before);
        CHECK(person.key(Key::Escape));
        CHECK(person.pixels() == before);
        person.move({grip.x + 100, grip.y + 100}, host::left_button);
        person.release({grip.x + 100, grip.y + 100});
        CHECK(person.pixels() == before);
    }
    CHECK_FALSE(person.key(Key::Escape));
}

TEST_CASE("Escape keeps what new data have widened during the drag") {
    using Ranges = std::vector<document::Shown>;
    for (std::uint8_t const button : {host::left_button, host::middle_button}) {
        CAPTURE(int{button});
        Navigator person;
        auto const widen_in_a_drag = [&](double value) {
            person.press(person.in_plot(0.2, 0.2), button);
            person.move(person.in_plot(0.4, 0.4), button);
            person.page.AddDataPoint(value, 5);
            person.page.Refresh();
            person.move(person.in_plot(0.3, 0.5), button);
            CHECK(person.key(Key::Escape));
        };
        widen_in_a_drag(20);
        CHECK(person.shown() == Ranges{{0, 20}, full[1]});
        CHECK_FALSE(person.state.Zoomed);
        person.key(Key::Plus);
        const Ranges zoomed = person.shown();
        widen_in_a_drag(40); // also widens what a zoomed axis shows
        if (button == host::left_button)
            CHECK(person.shown() == Ranges{{zoomed[0].first, 40}, zoomed[1]});
        else
            CHECK(person.shown() == zoomed);
        person.key(Key::Home);
        CHECK(person.shown() == Ranges{{0, 40}, full[1]});
    }
}

TEST_CASE("Tab goes through the graphs and leaves after the last") {
    Navigator person;
    person.page.NewGraph("second");
    person.page.NewGraph("third");
    person.page.SetSelectedGraph(0);
    CHECK(person.key(Key::Tab, 0, u'\t'));
    CHECK(person.state.CurrentGraph == 1);
    CHECK(person.key(Key::Tab));
    CHECK_FALSE(person.key(Key::Tab));
    CHECK(person.key(Key::Tab, host::shift_key));
    CHECK(person.state.CurrentGraph == 1);
}

TEST_CASE("the point under the pointer is named unless the host has a tooltip of its own") {
    Navigator person;
    person.page.AddDataPoint(2.5, 8, 0, 0, "peak");
    person.page.Refresh();
    person.move(person.in_plot(0.252, 0.202));
    CHECK(person.state.shown_tooltip() == "line, peak: 2.5, 8");
    person.move(person.in_plot(0.45, 0.2));
    CHECK(person.state.shown_tooltip().empty());
    person.page.SetTooltip("mine");
    person.move(person.in_plot(0.25, 0.2));
    CHECK(person.state.shown_tooltip() == "mine");
}

TEST_CASE("a bar as wide as values is named all along its end, where it stands") {
    Navigator person;
    person.page.NewDataSet("rain");
    person.page.SymbolStyle({.Symbol = 1, .BarOffset = 1, .BarBase = true});
    person.page.BarWidth(2);
    person.page.AddDataPoint(7, 8, 0, 2);
    person.page.Refresh();
    for (double const x : {0.705, 0.8, 0.895}) { // the bar is 7 to 9 wide
        person.move(person.in_plot(x, 0.2));
        CHECK(person.state.shown_tooltip() == "rain: 7, 8");
    }
    person.move(person.in_plot(0.6, 0.2));
    CHECK(person.state.shown_tooltip().empty());
}

TEST_CASE("points and data sets are read by keys") {
    Navigator person;
    person.page.AddDataPoint(11, std::nan(""));
    person.page.AddDataPoint(4.2, 9);
    person.page.NewDataSet("second");
    for (double x : {1.0, 3.9, 8.0}) person.page.AddDataPoint(x, 2, 0, 0, x == 8 ? "end" : "");
    person.page.NewDataSet("hidden");
    person.page.AddDataPoint(1, 1);
    person.page.DataHide(true);
    person.page.Refresh();
    auto const before = person.pixels();
    auto const reading = [&] { return person.state.Label1.Caption; };
    CHECK(person.key(Key::Right, host::ctrl_key));
    CHECK(reading() == "line: 0, 0");
    CHECK(person.pixels() != before);
    CHECK_FALSE(person.key(Key::Left, host::ctrl_key));
    for (int i = 0; i < 11; ++i) CHECK(person.key(Key::Right, host::ctrl_key));
    CHECK(reading() == "line: 4.2, 9"); // past the point that cannot be drawn
    CHECK_FALSE(person.key(Key::Right, host::ctrl_key));
    CHECK(person.key(Key::Down, host::ctrl_key));
    CHECK(reading() == "second: 3.9, 2");
    CHECK(person.key(Key::Right, host::ctrl_key));
    CHECK(reading() == "second, end: 8, 2");
    CHECK_FALSE(person.key(Key::Down, host::ctrl_key));
    CHECK(person.key(Key::Up, host::ctrl_key));
    CHECK(reading() == "line: 8, 8");
    auto const marked = person.pixels();
    person.page.Refresh();
    CHECK(person.pixels() == marked); // the mark is there again
    CHECK(person.key(Key::Escape));
    CHECK(person.pixels() == before);
    CHECK(reading().empty());
    CHECK_FALSE(person.key(Key::Escape));
    for (int i = 0; i < 9; ++i) person.key(Key::Right, host::ctrl_key);
    CHECK(reading() == "line: 8, 8");
    person.page.DropDataPoints(3, 1);
    CHECK(person.key(Key::Right, host::ctrl_key));
    CHECK(reading() == "line: 9, 9");
    person.page.Reset();
    CHECK_FALSE(person.key(Key::Right, host::ctrl_key));
}

TEST_CASE("the mark of a point at the edge stays inside the plot area, that of one beyond it is not drawn") {
    Navigator person;
    auto const before = person.pixels();
    person.key(Key::Right, host::ctrl_key); // the point at the lower left corner
    const Box inner = person.plot();
    const Box plot{inner.left - 8, inner.top - 8, inner.width + 16,
                   inner.height + 16}; // its edge's pixels too
    auto const after = person.pixels();
    auto const& page = person.host.picture();
    int inside = 0, outside = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x) {
            auto const i = static_cast<std::size_t>(y * page.width() + x);
            if (before[i] == after[i]) continue;
            bool const in_plot = interact::holds(plot, {x * 15.0, y * 15.0});
            ++(in_plot ? inside : outside);
        }
    CHECK(inside > 5);
    CHECK(outside == 0);
    person.drag(person.in_plot(0.5, 0.1), person.in_plot(0.9, 0.4)); // zoomed away from the point
    auto const zoomed = person.pixels();
    person.key(Key::Escape);
    CHECK(person.pixels() == zoomed);
}

TEST_CASE("undo leaves out ranges that the page no longer has, and steps of a graph that is gone") {
    Navigator person;
    person.drag(person.in_plot(0.2, 0.2), person.in_plot(0.6, 0.6));
    person.page.SelectYaxis(1);
    person.page.AxisScaleStyle({.Value1 = 100, .Value2 = 200});
    person.page.Refresh();
    auto const y = person.shown()[1];
    CHECK(person.key(Key::Left, host::alt_key));
    CHECK(person.shown() == std::vector<document::Shown>{{0, 10}, y});

    struct Refiller : host::EventSink {
        qvGraph* page = nullptr;
        void NewGraphInFront() override {
            page->Reset();
            page->NewGraph("another", 0, 1, 0, 1);
        }
    } refiller;
    refiller.page = &person.page;
    Navigator second;
    second.page.NewGraph("front", 0, 10, 0, 10);
    second.page.GraphPosition({50, 50, 50, 50});
    second.page.Refresh();
    refiller.page = &second.page;
    second.page.set_events(&refiller);
    second.wheel(second.in_plot(0.2, 0.2), 1); // brings the first graph to the front
    CHECK(second.state.zoom_history.undo.empty());
}

TEST_CASE("an axis without a scale is left alone by every gesture") {
    for (bool const reverse : {false, true}) {
        Navigator person;
        person.drag(person.in_plot(0.2, 0.2), person.in_plot(0.6, 0.6));
        person.y_axis().AxisReverse = reverse;
        person.y_axis().AxisLog = true; // from 0, and not drawn since
        auto const before = person.shown();
        const Point place = person.in_plot(0.5, 0.5);
        person.wheel(place, 1);
        person.y_axis().AxisLog = true;
        person.key(Key::Left);
        person.y_axis().AxisLog = true;
        person.press(place, host::right_button, host::shift_key);
        person.y_axis().AxisLog = true;
        person.press(place, host::left_button, host::shift_key);
        person.y_axis().AxisLog = true;
        person.scroll(host::Bar::VScroll1, 400);
        CHECK(person.heard.errors.empty());
        CHECK(person.shown()[1] == before[1]);
        CHECK(person.shown()[0] != before[0]);
    }
}

TEST_CASE("no gesture turns an axis round or leaves its full range") {
    struct Row {
        document::Shown shown, full;
        bool reverse = false, is_log = false;
    };
    Row const rows[] = {
        {{0, 10}, {0, 10}},
        {{10, 0}, {10, 0}},
        {{2, 6}, {0, 10}, true},
        {{8, 2}, {0, 10}}, // against the full range
        {{2, 8}, {10, 0}},
        {{12, 14}, {0, 10}}, // beyond it
        {{-5, 4}, {0, 10}},
        {{1e-3, 1e5}, {1e-3, 1e5}, false, true},
        {{1e4, 10}, {1e5, 1e-3}, true, true},
        {{1e15, 1e15 + 8}, {1e15, 1e15 + 8}},
    };
    std::mt19937 random(16);
    auto const below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    for (Row const& row : rows) {
        CAPTURE(row.shown.first);
        CAPTURE(row.shown.last);
        Navigator person;
        for (document::Axis& axis : person.graph().Axes) {
            axis.AxisValue1 = row.shown.first;
            axis.AxisValue2 = row.shown.last;
            axis.ScaleMin = row.full.first;
            axis.ScaleMax = row.full.last;
            axis.AxisReverse = row.reverse;
            axis.AxisLog = row.is_log;
        }
        person.page.Refresh();
        auto const place = [&] { return person.in_plot(0.02 + below(97) / 100.0, 0.02 + below(97) / 100.0); };
        auto const gesture = [&](int kind) {
            switch (kind) {
            case 0: return person.drag(place(), place());
            case 1: return person.drag(place(), place(), host::middle_button);
            case 2: return static_cast<void>(person.wheel(place(), below(7) - 3));
            case 3: return person.press(place(), host::left_button, host::shift_key);
            case 4: return person.press(place(), host::right_button, host::shift_key);
            case 5: return person.drag(place(), place(), host::right_button);
            case 6: return person.scroll(below(2) ? host::Bar::HScroll1 : host::Bar::VScroll1, below(1001));
            case 7: return static_cast<void>(person.key(below(2) ? Key::Left : Key::Right, host::alt_key));
            case 8: return person.scroll(host::Bar::VScroll1, 1000 * below(2));
            default: return static_cast<void>(person.key(static_cast<Key>(1 + below(7))));
            }
        };
        for (int i = 0; i < 200; ++i) {
            auto const before = person.shown();
            int const kind = below(11);
            gesture(kind);
            CAPTURE(i);
            CAPTURE(kind);
            for (std::size_t axis = 0; axis < 2; ++axis) {
                auto const [first, last] = person.shown()[axis];
                auto const [low, high] = std::minmax({row.full.first, row.full.last});
                REQUIRE((first < last) == (row.shown.first < row.shown.last));
                bool const was_inside = std::min(before[axis].first, before[axis].last) >= low
                                        && std::max(before[axis].first, before[axis].last) <= high;
                bool const is_inside = std::min(first, last) >= low && std::max(first, last) <= high;
                bool const is_as_before = document::Shown{first, last} == before[axis];
                REQUIRE((is_inside || (!was_inside && is_as_before)));
            }
        }
        CHECK(person.heard.errors.empty());
    }
}

TEST_CASE("undo keeps the direction of an axis that the host has turned, and to its new full range") {
    Navigator person;
    person.drag(person.in_plot(0.2, 0.2), person.in_plot(0.6, 0.6));
    person.page.SetSelectedAxis(0);
    person.page.AxisScaleStyle({.Value1 = 8, .Value2 = 1});
    person.page.Refresh();
    CHECK(person.key(Key::Left, host::alt_key));
    CHECK(person.shown()[0] == document::Shown{8, 1});
}

TEST_CASE("two fingers zoom about the place between them") {
    Navigator person;
    CHECK(person.host.input(host::PinchInput{2, person.in_plot(0.5, 0.5)}));
    CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 == doctest::Approx(5));
    CHECK_FALSE(person.host.input(host::PinchInput{0, person.in_plot(0.5, 0.5)}));
    CHECK_FALSE(person.host.input(host::PinchInput{2, {1, 1}}));
}

TEST_CASE("the nearest point is the one that looking at all of them finds") {
    std::mt19937 random(3);
    Navigator person;
    person.page.NewDataSet("cloud");
    std::vector<double> x(20000), y(20000);
    for (bool const rising : {false, true}) {
        for (std::size_t i = 0; i < x.size(); ++i) {
            x[i] =
                rising ? 10.0 * static_cast<double>(i) / 20000 : static_cast<double>(random() % 10000) / 1000;
            y[i] = static_cast<double>(random() % 10000) / 1000;
        }
        person.page.AddDataPoints(x, y);
        scale::AxisMap const x_map = scale::x_map(person.graph(), person.x_axis());
        scale::AxisMap const y_map = scale::y_map(person.graph(), person.y_axis());
        for (int round = 0; round < 50; ++round) {
            const Point place = person.in_plot(static_cast<double>(random() % 1000) / 1000,
                                               static_cast<double>(random() % 1000) / 1000);
            double least = 200;
            for (document::DataSet const& set : person.graph().DataSets)
                for (std::size_t i = 0; i < set.points.size(); i += 1) {
                    auto const point = set.points.at(i);
                    least = std::min(least, std::hypot(x_map(point.X) - place.x, y_map(point.Y) - place.y));
                }
            auto const found = interact::nearest_point(person.state, 0, place, 200);
            CHECK((found ? found->distance : 200) == doctest::Approx(least));
        }
    }
}
