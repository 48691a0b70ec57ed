// Everything is painted once: whichever way a page is refreshed, it shows what a page drawn anew does.
#include "Person.h"
#include "control/state_of.h"
#include "pages.h"
#include "render/page_redraw.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace qv;
using namespace qv::testing;
using Pixels = std::vector<std::uint32_t>;

namespace {

struct Variation {
    bool legend_in_front = true;
    bool marks_in_front = false;
    std::int16_t edge = 1; // pixels, of the legend
    bool see_through = false;
    std::int16_t line = 1; // pixels
    double dots_per_inch = 96;
};

const std::vector<Variation> variations{
    {},
    {.legend_in_front = false},
    {.legend_in_front = false, .marks_in_front = true, .edge = 7},
    {.marks_in_front = true, .edge = 0, .see_through = true},
    {.legend_in_front = false, .see_through = true},
    {.edge = 4, .line = 40},
    {.legend_in_front = false, .edge = 0, .line = 40, .dots_per_inch = 110},
    {.edge = 3, .see_through = true, .dots_per_inch = 144},
};

// Lines, texts and symbols from end to end, so that each legend lies over some and under others.
void add_graph(qvGraph& page, Variation const& variation) {
    page.NewGraph("A title", 0, 10, -6, 6);
    page.AxisMarksInFront(variation.marks_in_front);
    page.SetSelectedAxis(1);
    page.AxisGridStyle({});
    page.AxisLabelShift(-6.0F); // labels over the data
    page.LegendTableStyle({.LeftPercent = 30, .TopPercent = 40, .EdgeThickness = variation.edge});
    page.LegendTransparent(variation.see_through);
    page.LegendTableColor2(rgb(120, 200, 90));
    page.LegendInFront(variation.legend_in_front);
    for (std::int16_t symbol : std::initializer_list<std::int16_t>{0, 3}) {
        page.NewDataSet("A data set");
        page.SymbolStyle({.Symbol = symbol, .Size = 1.6F});
        page.DataLine({.Thickness = variation.line, .Style = static_cast<std::int16_t>(symbol ? 2 : 1)});
        for (int i = 0; i <= 40; ++i) page.AddDataPoint(i / 4.0, 5 * std::sin(i * 0.7 + symbol));
    }
    page.DataText("a text over them");
    page.DataTextPercent(true);
    page.DataTextX(30);
    page.DataTextY(45);
}

Pixels pixels_of(DrawSurface const& surface) {
    auto const pixels = static_cast<raster::RasterSurface const&>(surface).pixels();
    return {pixels.begin(), pixels.end()};
}

/// The page as it would be drawn anew, which nothing of it hears of.
Pixels drawn_anew(headless::HeadlessHost& host) {
    return pixels_of(
        *render::redraw_page(control::state_of(host.control()), [&] { return host.make_surface(); }));
}

Pixels shown(headless::HeadlessHost const& host) {
    return pixels_of(host.picture());
}

/// Three graphs over each other, the upper ones with plot areas that the lower ones are seen through.
void draw_see_through_graphs(qvGraph& page) {
    for (float const place : {5.0F, 15.0F, 25.0F}) {
        add_graph(page, {});
        page.GraphPosition({.Left = place, .Top = place, .Width = 60, .Height = 60});
        page.BorderStyle({.Color1 = rgb(255, 255, 255), .Color2 = rgb(160, 190, 240)});
        page.PlotAreaTransparent(true);
        page.LegendShow(false);
    }
    page.PageColors({.Color1 = rgb(0, 160, 90), .Color2 = rgb(0, 160, 90)});
}

} // namespace

TEST_CASE("a front graph looks as the same graph does behind another") {
    for (Variation const& variation : variations) {
        CAPTURE(&variation - variations.data());
        headless::HeadlessHost front({500, 350}, variation.dots_per_inch),
            back({500, 350}, variation.dots_per_inch);
        for (auto* host : {&front, &back}) {
            add_graph(host->control(), variation);
            if (host == &back) {
                host->control().NewGraph("");
                host->control().GraphInclude(false);
            }
            host->control().Refresh();
        }
        CHECK(shown(front) == shown(back));
        CHECK(shown(front) == drawn_anew(front));
    }
}

TEST_CASE("no step draws with a pen that another has left behind, nor leaves its own") {
    for (PageKind const& kind : page_kinds) {
        CAPTURE(kind.name);
        headless::HeadlessHost plain({300, 200}), other({300, 200});
        kind.fill(plain.control());
        plain.control().Refresh();
        kind.fill(other.control());
        document::ControlState& state = control::state_of(other.control());
        auto const surfaces = {state.Picture1.get(), state.GraphImage.get(), state.ScratchPic1.get()};
        for (DrawSurface* surface : surfaces) {
            surface->state.DrawWidth = 9;
            surface->state.draw_style = DrawStyle::Dot;
        }
        other.control().Refresh();
        CHECK(shown(other) == shown(plain));
        for (DrawSurface const* surface : surfaces) {
            CHECK(surface->state.DrawWidth == 9);
            CHECK(surface->state.draw_style == DrawStyle::Dot);
        }
    }
}

TEST_CASE("a page during and after the drag of a legend is one that has its legend there") {
    for (Variation const& variation : variations) {
        CAPTURE(&variation - variations.data());
        headless::HeadlessHost host({500, 350}, variation.dots_per_inch);
        add_graph(host.control(), variation);
        host.control().Refresh();
        auto const before = shown(host);
        document::Graph const& graph = *control::state_of(host.control()).Graphs[0];
        const Point place{graph.LegendLeft + 60.0, graph.LegendTop + 60.0};
        auto const mouse = [&](host::MouseKind kind, Point at) {
            host.input(host::MouseInput{kind, host::left_button, 0, at});
        };
        // Not in the plot area only, where a press would begin a zoom.
        host.control().GraphAllowZoom(false);
        mouse(host::MouseKind::Press, place);
        CHECK(shown(host) == before);
        std::set<std::int32_t> lefts;
        for (double const way : {100.0, 777.0, -900.0, 20000.0, -20000.0, 5.0}) {
            CAPTURE(way);
            mouse(host::MouseKind::Move, {place.x + way, place.y - way / 2});
            lefts.insert(graph.LegendLeft);
            CHECK(shown(host) == drawn_anew(host));
        }
        CHECK(lefts.size() == 6);
        mouse(host::MouseKind::Move, place);
        CHECK(shown(host) == before);
        mouse(host::MouseKind::Release, place);
        CHECK(shown(host) == before);
    }
}

TEST_CASE("a legend changed since it was drawn leaves nothing behind when it is dragged") {
    Person person;
    add_graph(person.page, {});
    person.page.GraphAllowZoom(false);
    person.page.Refresh();
    auto const drag_after = [&](std::string const& what, auto change) {
        CAPTURE(what);
        change();
        document::Graph const& graph = person.graph();
        const Point place{graph.LegendLeft + 60.0, graph.LegendTop + 60.0};
        person.press(place);
        person.move({place.x - 600, place.y + 300}, host::left_button);
        CHECK(person.pixels() == drawn_anew(person.host));
        person.release({place.x - 600, place.y + 300});
    };
    drag_after("no edge", [&] { person.page.LegendEdgeThickness(0); });
    drag_after("behind", [&] { person.page.LegendInFront(false); });
    drag_after("in front", [&] { person.page.LegendInFront(true); });
    drag_after("another ground", [&] { person.page.LegendTableColor1(rgb(1, 2, 3)); });
    drag_after("beyond the page", [&] {
        person.page.GraphPosition({.Left = 60, .Top = 20, .Width = 80, .Height = 60});
        person.page.LegendTableLeft(38);
        person.page.Refresh();
    });
    drag_after("one graph, no legend", [&] { person.page.RefreshGraphs(0, false); });
    drag_after("no legend", [&] { person.page.RefreshGraphs(-1, false); });
}

TEST_CASE("through a plot area the page and the graphs below are seen as they are, at every depth") {
    headless::HeadlessHost host({700, 500});
    qvGraph& page = host.control();
    draw_see_through_graphs(page);
    page.Refresh();
    auto const is_of_page = [&](Pixels const& pixels) {
        return std::ranges::count(pixels, 0xFF00A05A) > 700 * 500 / 3;
    };
    CHECK(is_of_page(shown(host)));
    CHECK(shown(host) == drawn_anew(host));
    page.Refresh();
    CHECK(shown(host) == drawn_anew(host));
    for (std::int16_t const graph : std::initializer_list<std::int16_t>{0, 2, 1}) {
        page.SetSelectedGraph(graph);
        CHECK(shown(host) == drawn_anew(host));
        page.DataHide(true);
        page.Refresh();
        CHECK(shown(host) == drawn_anew(host));
        page.RefreshCurrentGraph();
        CHECK(shown(host) == drawn_anew(host));
    }
    page.PageColors({.Color1 = rgb(250, 250, 210), .Color2 = rgb(250, 250, 210)});
    page.RefreshCurrentGraph();
    CHECK(shown(host) == drawn_anew(host));
    CHECK_FALSE(is_of_page(shown(host)));
}

TEST_CASE("a refresh of one graph erases no other") {
    headless::HeadlessHost host({700, 500});
    qvGraph& page = host.control();
    draw_see_through_graphs(page);
    page.RefreshCurrentGraph(); // nothing has been drawn before
    CHECK(shown(host) == drawn_anew(host));
    page.NewGraph("new");
    page.GraphPosition({.Left = 60, .Top = 5, .Width = 30, .Height = 30});
    page.RefreshCurrentGraph();
    CHECK(shown(host) == drawn_anew(host));
    page.RefreshGraphs(1, true);
    CHECK(shown(host) == drawn_anew(host));
    CHECK(page.GraphIndex() == 1);
    page.Reset();
    page.NewGraph("after Reset");
    page.GraphPosition({.Left = 30, .Top = 30, .Width = 30, .Height = 30});
    page.RefreshCurrentGraph();
    CHECK(shown(host) == drawn_anew(host));
}

TEST_CASE("graphs dragged over others leave no trail") {
    Person person;
    draw_see_through_graphs(person.page);
    person.page.Refresh();
    for (auto& graph : person.state.Graphs) graph->GraphAllowZoom = false;
    struct {
        std::size_t graph;
        double across, down; // where no other graph lies over it
    } const grips[]{{0, 0.02, 0.02}, {2, 0.98, 0.98}, {1, 0.98, 0.02}};
    for (auto const& grip : grips) {
        CAPTURE(grip.graph);
        document::Graph const& graph = person.graph(grip.graph);
        const Point place{graph.FrameLeft + grip.across * graph.FrameWidth,
                          graph.FrameTop + grip.down * graph.FrameHeight};
        person.press(place);
        for (double const way : {1500.0, -700.0, 100.0}) {
            person.move({place.x + way, place.y + way / 2}, host::left_button);
            CHECK(person.pixels() == drawn_anew(person.host));
        }
        person.release({place.x + 100, place.y + 50});
        CHECK(person.state.GraphOrder.back() == static_cast<std::int16_t>(grip.graph));
    }
}

TEST_CASE("a resize draws the page anew when any graph of it was drawn") {
    headless::HeadlessHost host({300, 200});
    qvGraph& page = host.control();
    add_graph(page, {});
    page.Refresh();
    page.NewGraph("not drawn yet");
    host.resize_picture({420, 300});
    CHECK(shown(host) == drawn_anew(host));
    page.Reset();
    page.NewGraph("not drawn yet");
    int const times = host.times_shown();
    host.resize_picture({300, 200});
    CHECK(host.times_shown() == times);
}

TEST_CASE("data and functions on hidden automatic axes are drawn, and their ranges announced") {
    struct Heard : host::EventSink {
        int scale_changes = 0;
        void GraphScaleChanged() override { ++scale_changes; }
    };
    for (bool const function : {false, true}) {
        CAPTURE(function);
        headless::HeadlessHost host({300, 200}), visible({300, 200});
        Heard heard;
        for (auto* each : {&host, &visible}) {
            qvGraph& page = each->control();
            page.NewGraph("");
            page.NewDataSet("");
            page.DataLine({.Color = rgb(1, 2, 3)});
            if (function)
                page.AddMathFunc("100 * x + 1000");
            else
                for (int i = 0; i < 10; ++i) page.AddDataPoint(i + 500, i * i);
            page.SetSelectedAxis(0);
            page.AxisHide(each == &host);
            page.SetSelectedAxis(1);
            page.AxisHide(each == &host);
        }
        host.control().set_events(&heard);
        host.control().Refresh();
        visible.control().Refresh();
        CHECK(heard.scale_changes == 2);
        for (std::size_t const axis : {0U, 1U}) {
            document::Axis const& hidden = control::state_of(host.control()).Graphs[0]->Axes[axis];
            document::Axis const& seen = control::state_of(visible.control()).Graphs[0]->Axes[axis];
            CHECK(hidden.AxisValue1 == seen.AxisValue1);
            CHECK(hidden.AxisValue2 == seen.AxisValue2);
            CHECK(hidden.AxisValue1 < hidden.AxisValue2);
        }
        auto const drawn = [](auto const& each) {
            return std::ranges::count_if(shown(each), [](auto p) { return (p & 0xFFFFFF) < 0x808080; });
        };
        CHECK(drawn(host) > 100);
    }
}
