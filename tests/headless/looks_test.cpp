// Looks on finished pages, pixel by pixel.
#include "Person.h"
#include "control/state_of.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <set>

using namespace qv;
using namespace qv::testing;
using headless::HeadlessHost;
using Pixels = std::vector<std::uint32_t>;

namespace {

Pixels pixels_of(HeadlessHost& host) {
    host.control().Refresh();
    auto const pixels = host.picture().pixels();
    return {pixels.begin(), pixels.end()};
}

Pixels in_look(HeadlessHost& host, char const* name) {
    host.control().UseLook(name);
    return pixels_of(host);
}

void fill(qvGraph& page) {
    page.NewGraph("Lines");
    page.GraphPosition({0, 0, 50, 100});
    for (int set = 0; set < 3; ++set) {
        page.NewDataSet("line");
        for (int i = 0; i <= 40; ++i) page.AddDataPoint(i, std::sin(0.2 * i + set));
    }
    page.NewDataSet("function");
    page.AddMathFunc("cos(x)");
    page.NewGraph("Bars");
    page.GraphPosition({50, 0, 50, 100});
    for (int set = 0; set < 2; ++set) {
        page.NewDataSet("bars");
        page.SymbolStyle({.Symbol = 1, .Size = 3, .BarOffset = 3.0F * static_cast<float>(set)});
        for (int i = 0; i < 5; ++i) page.AddDataPoint(i, i + set, 0.5);
    }
}

} // namespace

TEST_CASE("looks come and go on a finished page, and the picture depends on the last one alone") {
    HeadlessHost untouched({500, 300});
    fill(untouched.control());
    Pixels const classic = pixels_of(untouched);
    for (char const* const first : {"light", "dark", "print"}) {
        HeadlessHost made_so({500, 300});
        made_so.control().UseLook(first);
        fill(made_so.control());
        Pixels const expected = pixels_of(made_so);
        CHECK(expected != classic);
        HeadlessHost changed({500, 300});
        fill(changed.control());
        CHECK(in_look(changed, first) == expected);
        for (char const* const other : {"light", "dark", "print", "classic"}) {
            in_look(changed, other);
            CHECK(in_look(changed, first) == expected);
        }
        CHECK(in_look(changed, "classic") == classic);
    }
}

TEST_CASE("a dark page is dark before its first graph too") {
    HeadlessHost host({60, 40});
    Pixels const empty = in_look(host, "dark");
    CHECK(std::set(empty.begin(), empty.end()).size() == 1);
    CHECK(empty[0] != 0xFFFFFFFF);
    host.control().Reset();
    CHECK(pixels_of(host) == empty);
}

TEST_CASE("dashes leave gaps, and symbols on a line keep their distance") {
    auto const dark_pixels = [](auto const& style) {
        HeadlessHost host({400, 200});
        qvGraph& page = host.control();
        page.UseLook("print");
        page.NewGraph("", 0, 1, 0, 1);
        page.LegendShow(false);
        page.NewDataSet("line");
        for (int i = 0; i <= 1000; ++i) page.AddDataPoint(i / 1000.0, 0.5);
        style(page);
        return std::ranges::count(pixels_of(host), 0xFF000000);
    };
    auto const plain = dark_pixels([](qvGraph&) {});
    for (int const dash : {1, 2, 3, 4})
        CHECK(dark_pixels([&](qvGraph& page) { page.DataLineDash(dash); }) < plain - 80);
    CHECK(dark_pixels([](qvGraph& page) { page.DataLineDash(5); }) == plain);
    auto const spaced = dark_pixels([](qvGraph& page) { page.DataSymbol(4), page.DataLineStyle(1); });
    auto const at_each = dark_pixels(
        [](qvGraph& page) { page.DataSymbol(4), page.DataLineStyle(1), page.DataSymbolSpacing(0); });
    auto const without_line = dark_pixels([](qvGraph& page) { page.DataSymbol(4); });
    CHECK(plain < spaced);
    CHECK(2 * spaced < at_each);
    CHECK(without_line == at_each);
}

TEST_CASE("a point of a line that no segment reaches is a dot, and no other") {
    constexpr double gap = std::numeric_limits<double>::quiet_NaN();
    // The same points, once with the dots, once without: how many pixels differ.
    auto const dotted = [](std::vector<double> const& ys, bool log = false, int symbol = 0) {
        Pixels pages[2];
        for (bool const dots : {false, true}) {
            HeadlessHost host({300, 200});
            qvGraph& page = host.control();
            page.UseLook("light");
            page.NewGraph("", 0, 10, 1, 10);
            page.SelectYaxis();
            page.AxisLog(log);
            page.DotLonePoints(dots);
            page.NewDataSet("");
            page.DataSymbol(symbol);
            double x = 1;
            for (double const y : ys) page.AddDataPoint(x++, y);
            page.AxisValue1(1);
            page.AxisValue2(10);
            pages[dots] = pixels_of(host);
        }
        std::ptrdiff_t count = 0;
        for (std::size_t i = 0; i < pages[0].size(); ++i) count += pages[0][i] != pages[1][i];
        return count;
    };
    auto const one = dotted({5});
    CHECK(one > 8);
    CHECK(one < 40);
    CHECK(dotted({5, gap, 5}) == 2 * one);
    CHECK(dotted({gap, 5, gap, 2, 3}) == one);
    CHECK(dotted({2, 3, gap, 5}) == one);
    CHECK(dotted({5, -1, 5, -1}, true) > one);
    CHECK(dotted({}) == 0);
    CHECK(dotted({5, 5}) == 0);
    CHECK(dotted({5}, false, 4) == 0);
    CHECK(dotted({gap, gap}) == 0);
    CHECK(dotted({50}) == 0);
}

TEST_CASE("what a person has dragged stays where it is in every look") {
    PersonAtGraph person;
    const Box plot = person.plot();
    const Point edge{plot.left, plot.top + plot.height / 2};
    person.drag(edge, {edge.x + 900, edge.y});
    float const margin = person.graph().BorderLeft;
    CHECK(margin > 900);
    const Point on_legend{person.graph().LegendLeft + 200.0, person.graph().LegendTop + 100.0};
    person.drag(on_legend, {on_legend.x - 1500, on_legend.y + 1200});
    float const legend = person.graph().LegendTableLeft;
    CHECK(legend < 90);
    for (char const* const name : {"light", "classic"}) {
        person.page.UseLook(name);
        CHECK(person.graph().BorderLeft == margin);
        CHECK(person.graph().LegendTableLeft == legend);
    }
}
