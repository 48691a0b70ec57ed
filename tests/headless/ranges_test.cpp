// Ranges that follow the data: FitAxes, AutoFit, axes of data sets, units of equal length, linked axes.
#include "Person.h"
#include "interact/zoom.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using namespace qv;
using namespace qv::testing;
using host::Key;

namespace {

using document::Axis;
using document::Shown;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double no_number = std::numeric_limits<double>::quiet_NaN();

Shown shown(Axis const& axis) {
    return {axis.AxisValue1, axis.AxisValue2};
}

Shown full(Axis const& axis) {
    return {axis.ScaleMin, axis.ScaleMax};
}

bool is_near(Shown const& range, double first, double last) {
    double const tolerance = 1e-9 * std::max(std::abs(first), std::abs(last));
    return std::abs(range.first - first) <= tolerance && std::abs(range.last - last) <= tolerance;
}

/// A graph with automatic axes and a data set.
struct Fitted : Person {
    Fitted() {
        page.NewGraph("graph");
        page.NewDataSet("data");
    }
    void line() { page.DataLine({.Style = 1}); }
    void bars(bool stacked = false) {
        page.SymbolStyle({.Symbol = 1, .Size = 4, .EdgeThickness = 0, .Stacked = stacked});
    }
    void points(std::vector<Point> const& points) {
        for (const Point point : points) page.AddDataPoint(point.x, point.y);
    }
    bool fits(double x1, double x2, double y1, double y2) {
        bool const x_fits = is_near(shown(x_axis()), x1, x2) && full(x_axis()) == shown(x_axis());
        bool const y_fits = is_near(shown(y_axis()), y1, y2) && full(y_axis()) == shown(y_axis());
        if (!x_fits || !y_fits) {
            MESSAGE(x_axis().AxisValue1, " .. ", x_axis().AxisValue2);
            MESSAGE(y_axis().AxisValue1, " .. ", y_axis().AxisValue2);
        }
        return x_fits && y_fits;
    }
    bool wheel(Point place, double steps, std::uint8_t shift = 0) {
        return host.input(host::WheelInput{steps, 0, shift, place});
    }
    bool key(Key key, std::uint8_t shift = 0) { return host.input(host::KeyInput{0, shift, key}); }
};

} // namespace

TEST_CASE("FitAxes shows the data and a twentieth more, and drawing leaves it at that") {
    Fitted person;
    person.line();
    person.points({{0, -3}, {no_number, 50}, {10, infinity}, {20, 7}});
    person.page.FitAxes();
    CHECK(person.fits(-1, 21, -3.5, 7.5));
    person.page.Refresh();
    CHECK(person.fits(-1, 21, -3.5, 7.5));
    CHECK_FALSE(person.state.Zoomed);
    person.page.FitAxes(0);
    CHECK(person.fits(0, 20, -3, 7));
    person.page.DropDataPoints(1);
    person.page.AddDataPoint(22, 8);
    person.page.FitAxes(0);
    CHECK(person.fits(20, 22, 7, 8));
    person.page.Call("FitAxes", {0.5});
    CHECK(person.fits(19, 23, 6.5, 8.5));
    person.page.Refresh();
    CHECK(person.heard.errors.empty());
}

TEST_CASE("FitAxes leaves fixed axes, other graphs and empty pages alone, and wants a margin") {
    Fitted person;
    person.page.FitAxes();
    CHECK(person.fits(0, 0, 0, 0));
    person.points({{1, 1}, {2, 2}});
    person.page.NewGraph("other", 0, 5);
    person.page.NewDataSet("data");
    person.points({{1, 1}, {2, 2}});
    person.page.FitAxes(0);
    CHECK(shown(person.graph(1).Axes[0]) == Shown{0, 5});
    CHECK(shown(person.graph(1).Axes[1]) == Shown{1, 2});
    CHECK(shown(person.y_axis()) == Shown{1, 2});
    person.page.Refresh();
    CHECK(shown(person.graph(1).Axes[1]) == Shown{1, 2});
    CHECK(shown(person.y_axis()).last > 1.99); // as the classic rounding has it
    for (double const margin : {-0.1, no_number, infinity}) {
        person.page.FitAxes(margin);
        REQUIRE(person.heard.errors.size() == 1);
        CHECK(person.heard.errors[0].starts_with("Error 5 has occured in qvGraph.ocx, FitAxes"));
        person.heard.errors.clear();
    }
    person.page.Reset();
    person.page.FitAxes();
    CHECK(person.heard.errors.size() == 1); // there is no graph
}

TEST_CASE("what counts: error bars, hidden sets, functions, positive values on logarithmic axes") {
    Fitted person;
    person.page.AddDataPoint(1, 10, 2);  // upright
    person.page.AddDataPoint(4, 20, -3); // lying
    person.page.FitAxes(0);
    CHECK(person.fits(1, 7, 8, 20));
    person.page.ShowErrorBar(false);
    person.page.FitAxes(0);
    CHECK(person.fits(1, 4, 10, 20));
    person.page.NewDataSet("hidden");
    person.points({{-100, 1000}});
    person.page.DataHide(true);
    person.page.FitAxes(0);
    CHECK(person.fits(1, 4, 10, 20));
    person.page.NewDataSet("function");
    person.page.AddMathFunc("x*x*10", 2, 6);
    person.page.FitAxes(0);
    CHECK(person.fits(1, 6, 10, 360));

    Fitted log;
    log.page.SelectYaxis();
    log.page.AxisLog(true);
    log.points({{-7, -5}, {1, 1}, {2, 100}, {3, 0}});
    log.page.FitAxes(0.5);
    CHECK(log.fits(0.5, 2.5, 0.1, 1000));
    log.page.Refresh();
    CHECK(log.fits(0.5, 2.5, 0.1, 1000));
    CHECK(log.y_axis().AxisLog);
    log.page.DropDataPoints(3);
    log.page.FitAxes(0); // nothing positive is left
    CHECK_FALSE(log.y_axis().AxisLog);
    CHECK(is_near(shown(log.y_axis()), -1, 1));
}

TEST_CASE("one value gets a range about it, ends beyond all numbers get none") {
    for (auto const& [value, first, last] :
         std::vector<std::array<double, 3>>{{0, -1, 1}, {200, 190, 210}, {-1e-300, -1.05e-300, -0.95e-300}}) {
        Fitted person;
        person.points({{value, value}});
        person.page.FitAxes(0);
        CHECK(person.fits(first, last, first, last));
        person.page.Refresh();
        CHECK(person.fits(first, last, first, last));
    }
    Fitted moment;
    moment.page.SelectXaxis();
    moment.page.AxisTime(true);
    moment.points({{1.7e9, 1}});
    moment.page.FitAxes(0);
    CHECK(is_near(shown(moment.x_axis()), 1.7e9 - 43200, 1.7e9 + 43200));
    Fitted person;
    person.points({{0, -1e308}, {1, 1.5e308}});
    person.page.FitAxes();
    REQUIRE(person.heard.errors.size() == 1);
    CHECK(person.heard.errors[0].starts_with("Error 6 has occured in qvGraph.ocx, FitAxes"));
    CHECK(shown(person.y_axis()) == Shown{-1e308, 1.5e308});
}

TEST_CASE(
    "bars stand on their base without a gap, stacked ones count with their ends, none is cut at its side") {
    Fitted person;
    person.bars();
    person.points({{1, 4}, {2, 6}, {3, 5}});
    person.page.FitAxes();
    CHECK(is_near(shown(person.y_axis()), 0, 6.3));
    person.page.Refresh();
    double const bar = 0.9 * person.graph().DataSets[0].DataSymbolSize;
    Axis const& x = person.x_axis();
    double const twips_per_unit = x.AxisLength / (x.AxisValue2 - x.AxisValue1);
    CHECK((1 - x.AxisValue1) * twips_per_unit > bar);
    CHECK((x.AxisValue2 - 3) * twips_per_unit > bar);
    person.page.NewDataSet("second");
    person.bars(true);
    person.points({{1, 2}, {2, 3}, {3, 10}});
    person.page.FitAxes(0.1);
    CHECK(is_near(shown(person.y_axis()), 0, 16.5)); // 5 + 10, not 10
    person.page.SetSelectedData(0);
    person.page.BarBase(true);
    person.page.BarBaseValue(-2);
    person.page.FitAxes(0.1);
    CHECK(is_near(shown(person.y_axis()), -2, 16.7));
    person.page.DataHide(true); // the second set stands on zero now
    person.page.FitAxes(0.1);
    CHECK(is_near(shown(person.y_axis()), 0, 11));
    CHECK(person.heard.errors.empty());

    Fitted lying;
    lying.bars();
    lying.page.BarHoriz(true);
    lying.points({{-4, 1}, {-6, 2}});
    lying.page.BarBase(true);
    lying.page.FitAxes();
    CHECK(is_near(shown(lying.x_axis()), -6.3, 0)); // they hang from zero
}

TEST_CASE("with AutoFit every drawing fits; a zoom stays, and new extremes widen the full range") {
    Fitted person;
    person.page.AutoFit(true);
    person.line();
    person.points({{0, 0}, {10, 10}});
    person.page.Refresh();
    CHECK(person.fits(-0.5, 10.5, -0.5, 10.5));
    person.page.AddDataPoint(20, 10);
    person.page.Refresh();
    CHECK(person.fits(-1, 21, -0.5, 10.5));
    person.page.DropDataPoints(1);
    person.page.Refresh();
    CHECK(is_near(shown(person.x_axis()), 9.5, 20.5));
    person.page.AddDataPoint(0, 0);
    person.page.Refresh();
    person.wheel(person.in_plot(0.5, 0.5), 5);
    const Shown zoomed = shown(person.x_axis());
    CHECK(zoomed.last - zoomed.first < 10);
    person.page.AddDataPoint((zoomed.first + zoomed.last) / 2, 5);
    person.page.Refresh();
    CHECK(shown(person.x_axis()) == zoomed);
    person.page.AddDataPoint(40, 5);
    person.page.Refresh();
    CHECK(is_near(full(person.x_axis()), -2, 42));
    CHECK(shown(person.x_axis()).first == zoomed.first);
    CHECK(person.state.Zoomed);
    person.key(Key::Home);
    CHECK(person.fits(-2, 42, -0.5, 10.5));
    person.page.FitAxes(0.2); // a margin asked for stays
    person.page.AddDataPoint(40, 40);
    person.page.Refresh();
    CHECK(person.fits(-8, 48, -8, 48));
    CHECK(person.heard.errors.empty());
}

TEST_CASE(
    "an axis that becomes automatic after a fixed range fits its data at the next drawing under AutoFit") {
    for (bool const fits : {false, true}) {
        Fitted person;
        person.page.AutoFit(fits);
        person.points({{0, 0}, {10, 10}});
        person.page.SelectYaxis();
        person.page.AxisScaleStyle({.Value1 = 2, .Value2 = 3});
        person.page.Refresh();
        CHECK(shown(person.y_axis()) == Shown{2, 3});
        person.page.AxisScale(0);
        person.page.Refresh();
        if (fits)
            CHECK(is_near(shown(person.y_axis()), -0.5, 10.5));
        else
            CHECK(shown(person.y_axis()) == Shown{2, 3}); // zoomed, as ever
    }
}

TEST_CASE("where AutoFit ends ranges are round as if it had never been, those of FitAxes stay") {
    Fitted person, classic;
    for (Fitted* const it : {&person, &classic}) {
        it->page.AutoFit(it == &person);
        it->points({{0, -3}, {10, 17}});
        it->page.Refresh();
    }
    CHECK_FALSE(shown(person.y_axis()) == shown(classic.y_axis()));
    person.page.AutoFit(false);
    person.page.Refresh();
    CHECK(shown(person.y_axis()) == shown(classic.y_axis()));
    CHECK(person.pixels() == classic.pixels());
    person.page.FitAxes(0);
    person.page.Refresh();
    CHECK(person.fits(0, 10, -3, 17));
}

TEST_CASE("with DataOwnAxes points widen the axes of their data set, one by one and in columns") {
    for (bool const own : {false, true}) {
        CAPTURE(own);
        Fitted person;
        person.page.NewYAxis("second");
        person.page.NewDataSet("on the second axis");
        Axis const& first = person.y_axis();
        Axis const& second = person.graph().Axes[2];
        person.page.AddDataPoint(0, 100, 0, 1); // found by the switch as it was then
        person.page.DataOwnAxes(own);
        for (int i = 0; i <= 3; ++i) person.page.AddDataPoint(i, 100 + i, 0, 2);
        for (int i = 0; i <= 3; ++i) person.page.AddDataPoint(i, i, 0, 1);
        std::vector<double> const x{4, 5}, y{7, 8};
        person.page.AddDataPoints(x, y, {}, 1);
        CHECK(first.DataMax == (own ? 8 : 0));
        CHECK(second.DataMax == 103);
        CHECK(second.DataMin == (own ? 100 : 0));
        person.page.DataOwnAxes(false);
        person.page.AddDataPoint(1, 500, 0, 1);
        CHECK(second.DataMax == 500);
        CHECK(person.heard.errors.empty());
    }
}

namespace {

/// Twips a unit of the axes of a graph.
double unequal(document::Graph& graph) {
    auto const unit = [&](Axis const& axis) {
        return axis.AxisLength / std::abs(axis.AxisValue2 - axis.AxisValue1);
    };
    return std::abs(unit(graph.Axes[0]) / unit(graph.Axes[1]) - 1);
}

} // namespace

TEST_CASE("KeepEqualUnits makes units equally long through sizes, zooms and data") {
    for (bool const fits : {false, true}) {
        CAPTURE(fits);
        Fitted person;
        person.page.AutoFit(fits);
        person.line();
        person.points({{0, 0}, {10, 10}});
        person.page.Refresh();
        const Shown classic = shown(person.x_axis());
        CHECK(unequal(person.graph()) > 0.1);
        person.page.KeepEqualUnits(true);
        person.page.Refresh();
        CHECK(unequal(person.graph()) < 1e-6);
        CHECK(shown(person.x_axis()).first < classic.first);
        CHECK(is_near(shown(person.y_axis()), full(person.y_axis()).first, full(person.y_axis()).last));
        CHECK_FALSE(person.state.Zoomed);
        const std::vector<Shown> wide = interact::shown_ranges(person.graph());
        person.host.resize_picture({400, 700});
        CHECK(unequal(person.graph()) < 1e-6);
        CHECK(is_near(shown(person.x_axis()), classic.first, classic.last));
        CHECK(shown(person.y_axis()).first < classic.first);
        person.host.resize_picture({800, 600});
        CHECK(interact::shown_ranges(person.graph()) == wide);
        person.wheel(person.in_plot(0.1, 0.4), 4);
        CHECK(unequal(person.graph()) < 1e-6);
        CHECK(person.state.Zoomed);
        person.drag(person.in_plot(0.5, 0.5), person.in_plot(0.52, 0.52), host::middle_button);
        CHECK(unequal(person.graph()) < 1e-6);
        person.drag(person.in_plot(0.2, 0.2), person.in_plot(0.3, 0.8)); // a narrow box
        CHECK(unequal(person.graph()) < 1e-6);
        person.key(Key::Home);
        CHECK(interact::shown_ranges(person.graph()) == wide);
        person.page.AddDataPoint(5, 30);
        person.page.Refresh();
        CHECK(unequal(person.graph()) < 1e-6);
        CHECK(shown(person.y_axis()).last >= 30);
        CHECK_FALSE(person.state.Zoomed);
        person.page.DropDataPoints(3);
        person.points({{0, 0}, {10, 10}});
        person.page.FitAxes();
        person.page.KeepEqualUnits(false);
        person.page.Refresh();
        CHECK(person.fits(-0.5, 10.5, -0.5, 10.5));
        CHECK(person.heard.errors.empty());
    }
}

TEST_CASE("the value under the pointer stays there where units are equal") {
    Fitted person;
    person.page.AutoFit(true);
    person.points({{0, 0}, {10, 10}});
    person.page.KeepEqualUnits(true);
    person.page.Refresh();
    const Point place = person.in_plot(0.05, 0.3); // beside the data
    auto const value = [&] {
        person.move(place);
        return std::pair{person.state.PointerX, person.state.PointerY};
    };
    auto const before = value();
    for (int i = 0; i < 6; ++i) person.wheel(place, 1);
    CHECK(value().first == doctest::Approx(before.first));
    CHECK(value().second == doctest::Approx(before.second));
}

namespace {

/// Two graphs, one below the other, with data at other places and x axes of one name.
struct Linked : Fitted {
    Linked(bool fits = false) {
        page.AutoFit(fits);
        page.GraphPosition({0, 0, 100, 50});
        points({{0, 0}, {10, 5}});
        page.NewGraph("lower");
        page.GraphPosition({0, 50, 100, 50});
        page.NewDataSet("data");
        points({{5, 0}, {40, 300}});
        link(0);
        link(1);
        page.Refresh();
    }
    void link(int graph, char const* name = "time") {
        page.SetSelectedGraph(graph);
        page.SelectXaxis();
        page.AxisLink(name);
    }
    Axis& lower() { return graph(1).Axes[0]; }
    bool are_one() { return x_axis().ranges() == lower().ranges(); }
    Point in_lower(double across, double down) {
        const Box box = render::plot_box(graph(1));
        return {box.left + box.width * across, box.top + box.height * down};
    }
    /// Whether what is shown is what would be drawn anew.
    bool is_as_anew() {
        auto const before = pixels();
        page.Refresh();
        return pixels() == before;
    }
};

} // namespace

TEST_CASE("linked axes show one range: all their data, every zoom, pan, scroll and undo") {
    for (bool const fits : {false, true}) {
        CAPTURE(fits);
        Linked person(fits);
        CHECK(person.are_one());
        if (fits) CHECK(is_near(shown(person.x_axis()), -2, 42));
        CHECK(shown(person.x_axis()).first <= 0);
        CHECK(shown(person.x_axis()).last >= 40);
        CHECK(shown(person.y_axis()).last < 10); // y axes go their own ways
        const Shown all = shown(person.x_axis());
        for (bool const in_upper : {true, false}) {
            person.wheel(in_upper ? person.in_plot(0.5, 0.5) : person.in_lower(0.5, 0.5), 3);
            CHECK(person.are_one());
            CHECK(shown(person.lower()) != all);
            CHECK(person.is_as_anew());
            const Shown zoomed = shown(person.lower());
            person.drag(person.in_lower(0.5, 0.5), person.in_lower(0.55, 0.5), host::middle_button);
            CHECK(shown(person.x_axis()) != zoomed);
            CHECK(person.are_one());
            person.key(Key::Left, host::alt_key);
            CHECK(person.are_one());
            CHECK(shown(person.x_axis()) == zoomed);
            person.scroll(host::Bar::HScroll1, 0);
            CHECK(person.x_axis().AxisValue1 == all.first);
            CHECK(person.are_one());
            person.drag(person.in_lower(0.2, 0.2), person.in_lower(0.4, 0.8));
            CHECK(person.are_one());
            CHECK(person.is_as_anew());
            person.key(Key::Home);
            CHECK(person.are_one());
            CHECK(shown(person.x_axis()) == all);
        }
        CHECK(person.heard.errors.empty());
    }
}

TEST_CASE("linked axes follow new data and what the host sets, wherever it is") {
    for (bool const fits : {false, true}) {
        CAPTURE(fits);
        Linked person(fits);
        person.page.SetSelectedGraph(1);
        person.page.AddDataPoint(90, 1);
        person.page.RefreshCurrentGraph();
        CHECK(person.are_one());
        CHECK(shown(person.x_axis()).last >= 90);
        CHECK(person.is_as_anew());
        person.page.NewGraph("third");
        person.page.NewDataSet("data");
        person.points({{-50, 0}, {0, 1}});
        person.link(2);
        person.page.Refresh();
        CHECK(person.are_one());
        CHECK(shown(person.graph(2).Axes[0]) == shown(person.x_axis()));
        CHECK(shown(person.x_axis()).first <= -50);
        person.page.AxisScaleStyle({.Value1 = 3, .Value2 = 4}); // of the third
        person.page.RefreshCurrentGraph();
        CHECK(shown(person.x_axis()) == Shown{3, 4});
        CHECK(person.are_one());
        person.link(2, ""); // goes its own way from now on
        person.page.AxisScaleStyle({.Value1 = 1, .Value2 = 2});
        person.page.Refresh();
        CHECK((shown(person.x_axis()) == Shown{3, 4}) != fits); // fitted to what the two show
        person.wheel(person.in_lower(0.5, 0.5), -2);            // behind the third: nothing there is in front
        CHECK(person.are_one());
        CHECK(person.heard.errors.empty());
    }
}

TEST_CASE("a graph of equal units hands on what it has made of a linked axis") {
    Linked person(true);
    person.page.SetSelectedGraph(1);
    person.page.KeepEqualUnits(true);
    person.page.Refresh();
    CHECK(unequal(person.graph(1)) < 1e-6);
    CHECK(person.are_one());
    CHECK(person.is_as_anew());
    person.wheel(person.in_plot(0.5, 0.5), 2); // in the other one
    CHECK(unequal(person.graph(1)) < 1e-6);
    CHECK(person.are_one());
    person.key(Key::Home);
    person.page.KeepEqualUnits(false);
    person.page.SetSelectedGraph(1);
    person.page.KeepEqualUnits(false);
    person.page.Refresh();
    CHECK(is_near(shown(person.x_axis()), -2, 42));
}

TEST_CASE("a handler that empties the page while linked ranges are settled leaves an empty page") {
    struct Emptying : HeardEvents {
        qvGraph* page = nullptr;
        void GraphScaleChanged() override { page->Reset(); }
    } emptying;
    Linked person(true);
    emptying.page = &person.page;
    person.page.SetSelectedGraph(0);
    person.page.AddDataPoint(20, 1); // inside: raises nothing
    person.page.DropDataPoints(2);
    person.page.set_events(&emptying);
    person.page.Refresh();
    CHECK(person.page.NumGraphs() == 0);
    CHECK(std::ranges::all_of(person.pixels(), [](std::uint32_t pixel) { return pixel == 0xFFFFFFFF; }));
    CHECK(emptying.errors.empty());
}
