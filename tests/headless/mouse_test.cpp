#include "Person.h"
#include "control/state_of.h"
#include "interact/scroll_bars.h"
#include "interact/zoom.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cmath>

using namespace qv;
using namespace qv::testing;
using document::HitFlags;
using host::PointerShape;
using Names = std::vector<std::string>;

namespace {

constexpr double pixel = 15;

Point shifted(Point place, double right, double down) {
    return {place.x + right, place.y + down};
}

} // namespace

TEST_CASE("what lies under the mouse: bands, legend, switches, the graph in front") {
    PersonAtGraph person;
    const Box plot = person.plot();
    double const mm = person.state.UnitsPerMmX;
    auto const at = [&](Point place) {
        person.press(place, host::middle_button);
        return person.state.pointing;
    };
    double const middle = plot.top + plot.height / 2;
    CHECK(at({plot.left + 0.9 * mm, middle}).OnPlotLeft);
    CHECK(person.state.MousePointer == PointerShape::WestEast);
    CHECK(at({plot.left + 1.1 * mm, middle}).OnPlotArea);
    CHECK(person.state.MousePointer == PointerShape::Cross);
    CHECK(at({plot.right() - 0.7 * mm, middle}).OnPlotArea);
    CHECK(at({plot.right() - 0.4 * mm, middle}).OnPlotRight);
    CHECK(at({plot.left + 100 * pixel, plot.top + 0.5 * mm}).OnPlotTop);
    CHECK(person.state.MousePointer == PointerShape::NorthSouth);
    CHECK(at({plot.left + 100 * pixel, plot.bottom() - 0.3 * mm}).OnPlotBottom);
    CHECK(at({5, middle}).OnFrameLeft);
    CHECK(at({plot.left / 2, middle}).OnGraphBody);
    CHECK(person.state.MousePointer == PointerShape::FourWay);
    const Box legend = render::legend_box(person.graph());
    CHECK(at({legend.left + 20, legend.top + 20}).OnLegend);
    CHECK(person.state.MousePointer == PointerShape::UpArrow);
    person.page.LegendDragging(false);
    CHECK_FALSE(at({legend.left + 20, legend.top + 20}).OnLegend);
    person.page.GraphAllowZoom(false);
    person.page.GraphAllowDragging(false);
    CHECK(at(person.in_plot(0.3, 0.5)).OnGraphBody);
    CHECK(person.state.MousePointer == PointerShape::Default);
    at({-100, -100});
    CHECK(person.state.MouseGraph == -1);
    CHECK(person.state.pointing == HitFlags{});

    person.page.NewGraph("front", 0, 1, 0, 1);
    person.page.GraphPosition({.Left = 50, .Top = 50, .Width = 50, .Height = 50});
    person.page.Refresh();
    at({person.state.PageWidth * 0.75, person.state.PageHeight * 0.75});
    CHECK(person.state.MouseGraph == 1);
    at({person.state.PageWidth * 0.25, person.state.PageHeight * 0.25});
    CHECK(person.state.MouseGraph == 0);
    CHECK(person.heard.names.back() == "NewGraphInFront");
}

TEST_CASE("a press and release at one place is a click with the data's coordinates") {
    PersonAtGraph person;
    const Point place = person.in_plot(0.25, 0.5);
    person.move(place);
    person.press(place);
    person.release(place);
    CHECK(person.heard.names == Names{"MouseMove", "Click"});
    CHECK(person.heard.x == doctest::Approx(2.5));
    CHECK(person.heard.y == doctest::Approx(5));
    person.x_axis().AxisReverse = true;
    person.page.Refresh();
    person.move(person.in_plot(0.2, 0.5));
    CHECK(person.heard.x == doctest::Approx(8));
    person.page.GraphAllowZoom(false);
    person.take_events();
    person.press(place);
    person.release(place);
    CHECK(std::ranges::count(person.heard.names, "Click") == 0);
}

TEST_CASE("the second press of a double click zooms and drags nothing, however the hand shakes") {
    PersonAtGraph person;
    const Point place = person.in_plot(0.25, 0.5), beside = person.in_plot(0.3, 0.6);
    auto const ranges = interact::shown_ranges(person.graph());
    auto const pixels = person.pixels();
    person.press(place);
    person.release(place);
    person.mouse(host::MouseKind::DoubleClick, host::left_button, 0, place);
    person.move(beside, host::left_button);
    CHECK(person.pixels() == pixels);
    person.release(beside);
    CHECK(person.heard.names == Names{"Click", "DblClick", "MouseMove"});
    CHECK(interact::shown_ranges(person.graph()) == ranges);
    CHECK(person.pixels() == pixels);
}

TEST_CASE("a rubber band follows the mouse, leaves no trace and zooms every axis to its corners") {
    PersonAtGraph person;
    person.page.NewYAxis("second", 100, 200);
    person.page.SelectYaxis(1);
    person.page.Refresh();
    auto const before = person.pixels();
    const Point from = person.in_plot(0.2, 0.25), to = person.in_plot(0.6, 0.75);
    person.press(from);
    person.move(person.in_plot(0.4, 0.4), host::left_button);
    auto const with_box = person.pixels();
    CHECK(with_box != before);
    person.move(to, host::left_button);
    CHECK(person.pixels() != with_box);
    person.move(from, host::left_button);
    person.release(from); // back at the start: a click, and the page is whole again
    CHECK(person.pixels() == before);
    CHECK(person.heard.names.back() == "Click");

    person.drag(from, to);
    CHECK(person.x_axis().AxisValue1 == doctest::Approx(2));
    CHECK(person.x_axis().AxisValue2 == doctest::Approx(6));
    CHECK(person.y_axis().AxisValue1 == doctest::Approx(2.5));
    CHECK(person.y_axis().AxisValue2 == doctest::Approx(7.5));
    CHECK(person.graph().Axes[2].AxisValue1 == doctest::Approx(125));
    CHECK(person.state.Zoomed);
    CHECK(person.state.HScroll1.Visible);
    person.press(from, host::right_button);
    person.release(from, host::right_button);
    CHECK(person.x_axis().AxisValue2 == 10);
    CHECK_FALSE(person.state.HScroll1.Visible);
    CHECK(person.heard.errors.empty());
}

TEST_CASE("a box as narrow as the page can show keeps its exact ranges; a thinner one changes nothing") {
    PersonAtGraph person;
    for (int i = 0; i < 2; ++i)
        person.drag(person.in_plot(0.5, 0.5), shifted(person.in_plot(0.5, 0.5), 45, 45));
    double const first = person.x_axis().AxisValue1, last = person.x_axis().AxisValue2;
    CHECK(last - first > 0);
    CHECK(last - first < 1e-3);
    interact::SetScrollBars(person.state);
    person.page.Refresh();
    CHECK(person.x_axis().AxisValue1 == first);
    CHECK(person.x_axis().AxisValue2 == last);
    for (int i = 0; i < 3; ++i)
        person.drag(person.in_plot(0.5, 0.5), shifted(person.in_plot(0.5, 0.5), 45, 45));
    CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 >= 10 / person.state.MaxZoomFactor);
}

TEST_CASE("a box of less than three pixels of 96 dots per inch both ways is a click") {
    struct Row {
        double dots_per_inch, width, height; // twips
        bool is_click;
    };
    for (Row const row : {Row{96, 30, 30, true}, Row{96, -30, 30, true}, Row{96, 45, 30, false},
                          Row{96, 15, -45, false}, Row{96, 45, 45, false}, Row{96, 0, 900, true},
                          Row{192, 37.5, 37.5, true}, Row{192, 45, 7.5, false}, Row{144, 40, 40, true}}) {
        CAPTURE(row.width);
        CAPTURE(row.height);
        headless::HeadlessHost host({800, 600}, row.dots_per_inch);
        HeardEvents heard;
        host.control().set_events(&heard);
        host.control().NewGraph("graph", 0, 10, 0, 10);
        host.control().Refresh();
        document::Graph& graph = *control::state_of(host.control()).Graphs[0];
        const Box plot = render::plot_box(graph);
        const Point from{std::round(plot.left + plot.width / 2), std::round(plot.top + plot.height / 2)};
        const Point to = shifted(from, row.width, row.height);
        auto const mouse = [&](host::MouseKind kind, Point place) {
            host.input(host::MouseInput{kind, host::left_button, 0, place});
        };
        mouse(host::MouseKind::Press, from);
        mouse(host::MouseKind::Move, to);
        mouse(host::MouseKind::Release, to);
        CHECK((heard.names == Names{"MouseMove", "Click"}) == row.is_click);
        CHECK((interact::shown_ranges(graph) == std::vector<document::Shown>{{0, 10}, {0, 10}})
              == row.is_click);
    }
}

TEST_CASE("Shift zooms by two on the axis's own scale, down to MaxZoomFactor and up to the full range") {
    PersonAtGraph person;
    document::Axis& y = person.y_axis();
    y.AxisLog = true;
    y.AxisValue1 = y.ScaleMin = 1;
    y.AxisValue2 = y.ScaleMax = 10000;
    person.page.Refresh();
    const Point middle = person.in_plot(0.5, 0.5);
    person.press(middle, host::left_button, host::shift_key);
    CHECK(person.x_axis().AxisValue1 == doctest::Approx(2.5));
    CHECK(y.AxisValue1 == doctest::Approx(10));
    CHECK(y.AxisValue2 == doctest::Approx(1000));
    CHECK(person.state.HScroll1.Visible);
    person.press(middle, host::right_button, host::shift_key);
    CHECK(y.AxisValue1 == doctest::Approx(1));
    CHECK(y.AxisValue2 == doctest::Approx(10000));
    CHECK(person.x_axis().AxisValue2 == doctest::Approx(10));
    for (int i = 0; i < 60; ++i) person.press(middle, host::left_button, host::shift_key);
    CHECK(person.x_axis().AxisValue2 - person.x_axis().AxisValue1 >= 1e-5 * 0.999);
    for (int i = 0; i < 60; ++i) person.press(middle, host::right_button, host::shift_key);
    CHECK(person.x_axis().AxisValue1 == 0);
    CHECK_FALSE(person.state.Zoomed);
}

TEST_CASE("dragging a graph moves it with its legend; its edges stop at the plot's margins") {
    PersonAtGraph person;
    person.page.GraphPosition({.Left = 10, .Top = 10, .Width = 50, .Height = 50});
    person.page.Refresh();
    document::Graph& graph = person.graph();
    double const legend_offset = graph.LegendLeft - graph.FrameLeft;
    const Point body{graph.FrameLeft + 100.0, graph.FrameTop + 100.0};
    person.take_events();
    person.drag(body, shifted(body, 600, 300));
    CHECK(graph.FrameLeft == doctest::Approx(0.1 * person.state.PageWidth + 600).epsilon(0.001));
    CHECK(graph.LegendLeft - graph.FrameLeft == legend_offset);
    CHECK(person.take_events() == Names{"GraphPositionChanged", "MouseMove"});
    person.drag({graph.FrameLeft + 100.0, graph.FrameTop + 100.0}, {-5000, -5000});
    CHECK(graph.FrameLeft == 0);

    double const right = graph.GraphLeft + graph.GraphWidth;
    person.drag({graph.FrameLeft + 1.0, graph.FrameTop + 2000.0}, {12000, graph.FrameTop + 2000.0});
    CHECK(graph.GraphLeft + graph.GraphWidth == doctest::Approx(right));
    CHECK(graph.GraphWidth
          == doctest::Approx((graph.BorderLeft + graph.BorderRight)
                             / static_cast<float>(person.state.PageWidth)));
    const Box plot = person.plot();
    person.page.SuppressRaisingEvents(true);
    person.take_events();
    person.drag({graph.FrameLeft + 300.0, plot.bottom() - 2},
                {graph.FrameLeft + 300.0, plot.bottom() - 1000});
    CHECK(person.take_events() == Names{"MouseMove"});
}

TEST_CASE("dragging as far as numbers reach turns no place round") {
    for (double const far : {2147480000.0, -2147480000.0}) {
        CAPTURE(far);
        PersonAtGraph person;
        document::Graph& graph = person.graph();
        person.press({graph.LegendLeft + 30.0, graph.LegendTop + 30.0});
        person.state.pointing.LegendGrab = {far > 0 ? -30000 : 30000, far > 0 ? -30000 : 30000};
        person.move({far, far}, host::left_button);
        person.release({far, far});
        CHECK(graph.LegendLeft >= graph.FrameLeft);
        CHECK(graph.LegendLeft + graph.LegendWidth <= graph.FrameLeft + graph.FrameWidth);
        bool const at_the_end = graph.LegendLeft > graph.FrameLeft;
        CHECK(at_the_end == (far > 0));
        person.drag({graph.FrameLeft + 300.0, graph.FrameTop + 900.0}, {far, far});
        CHECK(person.graph().FrameLeft >= 0);
        CHECK(person.graph().LegendLeft >= 0);
    }
}

TEST_CASE("position events tell of what has moved, and of nothing else") {
    PersonAtGraph person;
    person.page.GraphPosition({.Left = 10, .Top = 10, .Width = 50, .Height = 50});
    person.page.Refresh();
    document::Graph const& graph = person.graph();
    auto const events_of = [&](Point from, std::vector<Point> const& ways) {
        person.take_events();
        person.press(from);
        for (const Point way : ways) person.move(shifted(from, way.x, way.y), host::left_button);
        Names names = person.take_events();
        std::erase(names, "MouseMove");
        return names;
    };
    const Point body{graph.FrameLeft + 100.0, graph.FrameTop + 100.0};
    const Point legend{graph.LegendLeft + 30.0, graph.LegendTop + 30.0};
    const Point edge{static_cast<double>(graph.FrameLeft + graph.FrameWidth), graph.FrameTop + 2000.0};
    float const left = graph.GraphLeft, legend_left = graph.LegendTableLeft;
    Names const moved{"GraphPositionChanged"}, legend_moved{"LegendPositionChanged"};
    auto const escape = [&] {
        person.host.input(host::KeyInput{0, 0, host::Key::Escape});
        return person.take_events();
    };
    CHECK(events_of(body, {}).empty());
    CHECK(graph.GraphLeft == left);
    CHECK(escape().empty());
    CHECK(events_of(body, {{15, 0}, {15, 0}}) == moved);
    CHECK(escape() == moved);                                          // back where it was
    CHECK(events_of(body, {{-9000, -9000}, {-9015, -9000}}) == moved); // in the corner of the page at once
    CHECK(escape() == moved);
    CHECK(events_of(edge, {{-9000, 0}, {-9015, 0}, {-9030, 0}}) == moved); // as narrow as it gets
    CHECK(escape() == moved);
    CHECK(events_of(legend, {}).empty());
    CHECK(graph.LegendTableLeft == legend_left);
    CHECK(events_of(legend, {{-300, 0}, {-300, 0}}) == legend_moved);
    CHECK(escape() == legend_moved);
    CHECK(events_of(legend, {{900, -900}, {915, -900}}).empty()); // in the corner of the frame already
    CHECK(escape().empty());
    person.page.SuppressRaisingEvents(true);
    CHECK(events_of(body, {{15, 0}}).empty());
    CHECK(escape().empty());
}

TEST_CASE("a graph that fills the page stays there; its plot's margins can be dragged") {
    PersonAtGraph person;
    person.page.GraphWholePage(true);
    person.page.Refresh();
    document::Graph const& graph = person.graph();
    auto const place = [&] {
        return std::array{graph.GraphLeft, graph.GraphTop, graph.GraphWidth, graph.GraphHeight};
    };
    auto const before = place();
    auto const pixels = person.pixels();
    double const middle = graph.FrameHeight / 2.0;
    for (const Point grip : {Point{300, middle}, Point{5, middle}, Point{graph.FrameWidth - 2.0, middle},
                             Point{3000, 5}, Point{3000, graph.FrameHeight - 2.0}})
        person.drag(grip, shifted(grip, 900, 600));
    CHECK(place() == before);
    CHECK(person.pixels() == pixels);
    CHECK(std::ranges::count(person.take_events(), "GraphPositionChanged") == 0);
    const Point margin{person.plot().left + 5, middle};
    person.drag(margin, shifted(margin, 600, 0));
    CHECK(std::ranges::count(person.take_events(), "GraphPositionChanged") > 0);
    CHECK(person.pixels() != pixels);
}

TEST_CASE("a legend is dragged inside its frame; Ctrl fetches and hides it") {
    PersonAtGraph person;
    document::Graph& graph = person.graph();
    const Box legend = render::legend_box(graph);
    auto const page_before = person.pixels();
    person.press({legend.left + 30, legend.top + 30});
    CHECK(person.pixels() == page_before);
    person.move({legend.left - 3000, legend.top + 3000}, host::left_button);
    person.move({legend.left - 6000, legend.top + 6000}, host::left_button);
    auto const dragged = person.pixels();
    person.release({legend.left - 6000, legend.top + 6000});
    CHECK(graph.LegendLeft == doctest::Approx(legend.left - 6030));
    // What the drag has left on the page is what a redraw paints.
    CHECK(dragged == person.pixels());
    person.press({graph.LegendLeft + 30.0, graph.LegendTop + 30.0});
    person.move({-9000, 100000}, host::left_button);
    CHECK(graph.LegendLeft == graph.FrameLeft);
    CHECK(graph.LegendTop + graph.LegendHeight == graph.FrameTop + graph.FrameHeight);
    CHECK(graph.LegendTableTop
          == doctest::Approx(100.0 * (graph.FrameHeight - graph.LegendHeight) / graph.FrameHeight));
    person.release({-9000, 100000});
    const Point place = person.in_plot(0.5, 0.5);
    person.press(place, host::left_button, host::ctrl_key);
    CHECK(graph.LegendLeft == doctest::Approx(place.x).epsilon(0.001));
    person.press(place, host::right_button, host::ctrl_key);
    CHECK_FALSE(graph.LegendShow);
    person.press(place, host::left_button, host::ctrl_key); // nothing to fetch
    CHECK(person.heard.errors.empty());
}

TEST_CASE("the cross-hair follows the mouse and leaves the page as it was; its style goes round") {
    PersonAtGraph person;
    auto const before = person.pixels();
    const Point place = person.in_plot(0.5, 0.5);
    person.press(place, host::right_button, host::alt_key);
    CHECK(person.state.CrossHairStyle == 0);
    person.move(place);
    person.press(place, host::left_button, host::alt_key);
    CHECK(person.pixels() != before);
    for (int style : {1, 2, 0}) {
        person.press(place, host::right_button, host::alt_key);
        CHECK(person.state.CrossHairStyle == style);
    }
    for (double share : {0.2, 0.4, 0.9}) person.move(person.in_plot(share, share));
    person.move({1, 1}); // beside the plot area
    CHECK(person.pixels() == before);
    person.move(place);
    person.page.Refresh();
    person.move(person.in_plot(0.1, 0.1)); // erases nothing: the redraw has
    person.move({1, 1});
    person.move({2, 2});
    CHECK(person.pixels() == before);
}

TEST_CASE("the read-out shows the coordinates while no button is held") {
    PersonAtGraph person;
    person.move(person.in_plot(0.25, 0.5));
    CHECK(person.state.Label1.Visible);
    CHECK(person.state.Label1.Caption == "2.5, 5");
    CHECK(person.state.Label1.Width >= 1500);
    person.press(person.in_plot(0.25, 0.5));
    person.move(person.in_plot(0.75, 0.75), host::left_button);
    CHECK(person.state.Label1.Caption.empty());
    CHECK(person.heard.x == doctest::Approx(2.5));
    person.page.SetShowXYcoords(false);
    person.release(person.in_plot(0.25, 0.5));
    person.move(person.in_plot(0.3, 0.5));
    CHECK_FALSE(person.state.Label1.Visible);
    CHECK(person.heard.x == doctest::Approx(3));
}

TEST_CASE("the read-out tells neighbouring pixels apart") {
    for (bool const is_log : {false, true}) {
        CAPTURE(is_log);
        PersonAtGraph person;
        for (int const axis : {0, 1}) {
            person.page.SetSelectedAxis(axis);
            person.page.AxisScaleStyle({.Value1 = 10000, .Value2 = 10002, .MajorDivs = 4, .ScaleStyle = 1});
            person.page.AxisLog(is_log);
        }
        person.page.Refresh();
        Point const place = person.in_plot(0.3, 0.6);
        std::string before;
        for (int i = 0; i < 20; ++i) {
            person.move({place.x + i * pixel, place.y});
            const std::string text = person.state.Label1.Caption;
            CHECK(text.substr(0, text.find(',')) != before);
            before = text.substr(0, text.find(','));
        }
    }
}

TEST_CASE("a zoomed automatic logarithmic axis stays logarithmic until its data are narrow") {
    Person person;
    person.page.NewGraph("graph");
    person.page.NewDataSet("line");
    for (int i = 0; i <= 10; ++i) person.page.AddDataPoint(std::pow(10, i / 3.0), i);
    person.page.SetSelectedAxis(0);
    person.page.AxisLog(true);
    person.page.Refresh();
    CHECK(person.x_axis().AxisLog);
    for (int i = 0; i < 8; ++i) person.drag(person.in_plot(0.4, 0.3), person.in_plot(0.6, 0.7));
    CHECK(person.x_axis().AxisLog);
    CHECK(person.x_axis().AxisValue2 / person.x_axis().AxisValue1 < 1.1);
    person.page.Refresh();
    CHECK(person.x_axis().AxisLog);
}

TEST_CASE("scroll bars move the span, keep its length, agree with reversed and logarithmic axes") {
    for (bool const reversed : {false, true}) {
        CAPTURE(reversed);
        PersonAtGraph person;
        for (document::Axis& axis : person.graph().Axes) axis.AxisReverse = reversed;
        person.page.Refresh();
        person.drag(person.in_plot(0.2, 0.2), person.in_plot(0.6, 0.6));
        document::Axis const& x = person.x_axis();
        document::Axis const& y = person.y_axis();
        person.scroll(host::Bar::HScroll1, 0);
        CHECK((reversed ? x.AxisValue2 : x.AxisValue1) == doctest::Approx(reversed ? 10 : 0));
        CHECK(x.AxisValue2 - x.AxisValue1 == doctest::Approx(4));
        CHECK(person.state.HScroll1.Value == 0);
        person.scroll(host::Bar::HScroll1, 500);
        CHECK(x.AxisValue1 == doctest::Approx(3));
        person.scroll(host::Bar::VScroll1, 0);
        CHECK((reversed ? y.AxisValue1 : y.AxisValue2) == doctest::Approx(reversed ? 0 : 10));
        person.scroll(host::Bar::VScroll1, 1000);
        CHECK((reversed ? y.AxisValue2 : y.AxisValue1) == doctest::Approx(reversed ? 10 : 0));
        CHECK(person.heard.errors.empty());
    }
    PersonAtGraph person;
    person.scroll(host::Bar::HScroll1, 700); // nothing is zoomed
    CHECK(person.x_axis().AxisValue1 == 0);
    person.page.Reset();
    person.scroll(host::Bar::HScroll1, 700);
    CHECK(person.heard.errors.empty());
}
