// Margins that fit what stands in them, plots that are flush, legends that find a place.
#include "Person.h"
#include "control/state_of.h"
#include "qvgraph/handles.h"
#include "render/plot_geometry.h"
#include "scale/mapping.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

using namespace qv;
using namespace qv::testing;
using headless::HeadlessHost;
using Pixels = std::vector<std::uint32_t>;

namespace {

Pixels pixels_of(HeadlessHost& host) {
    auto const pixels = host.picture().pixels();
    return {pixels.begin(), pixels.end()};
}

document::Graph& graph_of(HeadlessHost& host, std::size_t index = 0) {
    return *control::state_of(host.control()).Graphs[index];
}

Box plot_of(HeadlessHost& host, std::size_t index = 0) {
    return render::plot_box(graph_of(host, index));
}

/// Whether the outermost pixels of the picture have the page's colour: nothing is cut off.
bool has_clean_edge(HeadlessHost& host) {
    auto const pixels = host.picture().pixels();
    auto const width = static_cast<std::size_t>(host.picture().width());
    auto const height = static_cast<std::size_t>(host.picture().height());
    auto const is_page = [&](std::size_t x, std::size_t y) { return pixels[y * width + x] == pixels[0]; };
    // The strip beside the page area belongs to the window's frame.
    std::size_t const right = width - 6, bottom = height - 6;
    for (std::size_t x = 0; x < right; ++x)
        if (!is_page(x, 0) || !is_page(x, bottom)) return false;
    for (std::size_t y = 0; y < bottom; ++y)
        if (!is_page(0, y) || !is_page(right, y)) return false;
    return true;
}

void add_line(qvGraph& page, double from, double to) {
    page.NewDataSet("data");
    for (int i = 0; i <= 20; ++i) page.AddDataPoint(i, from + (to - from) * i / 20);
}

} // namespace

TEST_CASE("whatever the labels and titles, none is cut off") {
    for (double const largest : {1.0, 1e6, 123456789.0})
        for (int const angle : {0, 45, 90})
            for (bool const far_side : {false, true}) {
                CAPTURE(largest);
                CAPTURE(angle);
                CAPTURE(far_side);
                HeadlessHost host({480, 360});
                qvGraph& page = host.control();
                page.UseLook("light");
                page.NewGraph("A title\nof two lines");
                page.SelectXaxis();
                page.AxisTitle("across");
                page.AxisLabelsHoriz(angle);
                page.AxisFarSide(far_side);
                page.SelectYaxis();
                page.AxisTitle("up\nin two lines");
                page.AxisFarSide(far_side);
                page.AxisTextLabels("0.000");
                add_line(page, -largest, largest);
                page.Refresh();
                CHECK(has_clean_edge(host));
                Pixels const first = pixels_of(host);
                page.Refresh();
                CHECK(pixels_of(host) == first);
                page.FitMargins(false);
                page.Refresh();
                CHECK_FALSE(has_clean_edge(host));
            }
}

TEST_CASE("margins do not shrink while a person zooms, and do when everything is shown again") {
    HeadlessHost host({480, 360});
    qvGraph& page = host.control();
    page.UseLook("light");
    page.NewGraph("graph");
    add_line(page, 0, 1000000);
    page.Refresh();
    Box const whole = plot_of(host);
    for (int i = 0; i < 20; ++i) {
        host.input(
            host::WheelInput{.steps = 5, .place = {whole.left + whole.width / 2, whole.bottom() - 30}});
        CHECK(plot_of(host).width <= whole.width);
    }
    host.input(host::WheelInput{.steps = -500, .place = {whole.left + 300, whole.top + 300}});
    CHECK(plot_of(host).width == whole.width);
}

TEST_CASE("a small graph leaves out titles and labels for its plot area's sake") {
    auto before = document::LeftOut::Labels;
    for (int const width : {60, 90, 140, 220, 480}) {
        CAPTURE(width);
        HeadlessHost host({width, width * 3 / 4});
        host.control().UseLook("light");
        host.control().NewGraph("A graph");
        host.control().AxisTitle("titled");
        add_line(host.control(), 0, 100000);
        host.control().Refresh();
        document::Graph const& graph = graph_of(host);
        CHECK(plot_of(host).width >= 0.39 * graph.FrameWidth);
        CHECK(plot_of(host).height >= 0.39 * graph.FrameHeight);
        CHECK(graph.fitting.left_out <= before);
        before = graph.fitting.left_out;
        if (width == 60) CHECK(before == document::LeftOut::Labels);
    }
    CHECK(before == document::LeftOut::Nothing);
}

TEST_CASE("graphs of one column and of one row are flush, however one of them is redrawn") {
    HeadlessHost host({600, 480});
    qvGraph& page = host.control();
    page.UseLook("light");
    page.AlignPlots(true);
    double largest = 1;
    for (double const top : {0.0, 50.0})
        for (double const left : {0.0, 50.0}) {
            page.NewGraph("graph");
            page.GraphPosition({left, top, 50, 50});
            add_line(page, 0, largest *= 1000);
        }
    page.Refresh();
    auto const is_flush = [&] {
        for (std::size_t i : {0U, 1U}) {
            CHECK(plot_of(host, i).left == plot_of(host, i + 2).left);
            CHECK(plot_of(host, i).width == plot_of(host, i + 2).width);
            CHECK(plot_of(host, 2 * i).top == plot_of(host, 2 * i + 1).top);
            CHECK(plot_of(host, 2 * i).height == plot_of(host, 2 * i + 1).height);
        }
    };
    is_flush();
    Box const before = plot_of(host, 1);
    page.AxisTextLabels("0.0000000");
    page.RefreshCurrentGraph();
    is_flush();
    CHECK(plot_of(host, 1).width < before.width);
    Pixels const alone = pixels_of(host);
    page.Refresh();
    CHECK(pixels_of(host) == alone);
}

TEST_CASE("titles that are longer than the frame take several lines") {
    HeadlessHost host({420, 360});
    qvGraph& page = host.control();
    page.UseLook("light");
    page.NewGraph("A title that is longer than the frame of its graph, and goes on x^{2 and 3}");
    page.SelectXaxis();
    page.AxisTitle("an axis whose title is longer than the frame of its graph is wide");
    page.SelectYaxis();
    page.AxisTitle("another title that is longer than the frame of its graph is high");
    add_line(page, 0, 1);
    page.Refresh();
    CHECK(has_clean_edge(host));
    CHECK(plot_of(host).height > 0.4 * graph_of(host).FrameHeight);
    Box const broken = plot_of(host);
    page.AxisTitle("short");
    page.Refresh();
    CHECK(plot_of(host).left < broken.left - 100); // a line less
    page.FitMargins(false);
    page.Refresh();
    CHECK_FALSE(has_clean_edge(host));
}

TEST_CASE("titles of one word that is longer than the frame take several lines") {
    HeadlessHost host({300, 300});
    qvGraph& page = host.control();
    page.UseLook("light");
    page.NewGraph("/srv/measurements/2026/spectrometer/dark-current/detector_7.csv");
    page.SelectXaxis();
    page.AxisTitle("Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft");
    add_line(page, 0, 1);
    page.Refresh();
    CHECK(has_clean_edge(host));
    page.FitMargins(false);
    page.Refresh();
    CHECK_FALSE(has_clean_edge(host));
}

TEST_CASE("ticks are chosen anew with everything that they follow from") {
    using Change = void (*)(HeadlessHost&, AxisHandle const&);
    Change const changes[] = {
        [](HeadlessHost&, AxisHandle const& x) { x.label_font("Arial|16|Bold"); },
        [](HeadlessHost&, AxisHandle const& x) { x.label_angle(90); },
        [](HeadlessHost&, AxisHandle const& x) { x.si_prefix(true); },
        [](HeadlessHost&, AxisHandle const& x) { x.offset(true); },
        [](HeadlessHost&, AxisHandle const& x) { x.text_labels("0.00000"); },
        [](HeadlessHost&, AxisHandle const& x) { x.set({.from = 10, .log = true}); },
        [](HeadlessHost&, AxisHandle const& x) { x.to(101'327); },
        [](HeadlessHost& host, AxisHandle const&) {
            host.resize_picture({200, 300});
        },
        [](HeadlessHost& host, AxisHandle const& x) {
            x.text_labels("0^\\2"), host.control().RichText(false);
        },
    };
    auto const drawn = [&](Change change, bool first_without) {
        HeadlessHost host({420, 300});
        host.control().UseLook("light");
        auto const x = host.control().graph("").x_axis({.from = 101'324.1, .to = 101'325.7});
        if (first_without) host.control().Refresh();
        change(host, x);
        host.control().Refresh();
        return pixels_of(host);
    };
    Pixels const unchanged = drawn([](HeadlessHost&, AxisHandle const&) {}, true);
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        CAPTURE(i);
        Pixels const pixels = drawn(changes[i], true);
        CHECK(pixels == drawn(changes[i], false));
        CHECK(pixels != unchanged);
    }
}

TEST_CASE("a legend hides neither functions nor lying or stacked bars, or stands beside them") {
    HeadlessHost host({600, 400});
    qvGraph& page = host.control();
    page.UseLook("light");
    auto const legend = [&] { return render::legend_box(graph_of(host)); };
    auto const hides = [&](double x, double y) {
        document::Graph const& graph = graph_of(host);
        Point const place{scale::x_map(graph, graph.Axes[0])(x), scale::y_map(graph, graph.Axes[1])(y)};
        return render::holds(legend(), place);
    };
    auto graph = page.graph("graph");
    graph.x_axis({.from = 0, .to = 10});
    graph.y_axis({.from = 0, .to = 10});
    SUBCASE("a function") {
        graph.function("right and top", "9.3");
        page.Refresh();
        for (double x = 0; x <= 10; x += 0.01) REQUIRE_FALSE(hides(x, 9.3));
    }
    SUBCASE("lying bars, one upon the other") {
        for (bool const stacked : {false, true})
            graph.bars("bars", {.bar_horiz = true, .bar_stacked = stacked, .bar_width = 1}).add(4.5, 9);
        page.Refresh();
        CHECK(legend().left > plot_of(host).left + plot_of(host).width / 2);
        CHECK(legend().top > plot_of(host).top + plot_of(host).height / 4);
    }
    SUBCASE("data everywhere: beside them, and back when they go") {
        auto cloud = graph.symbols("cloud");
        for (int i = 0; i < 2500; ++i) cloud.add(0.2 * (i % 50) + 0.1, 0.2 * (i / 50) + 0.1);
        page.Refresh();
        CHECK(legend().left >= plot_of(host).right());
        double const width = plot_of(host).width;
        page.Refresh();
        CHECK(plot_of(host).width == width);
        graph.x_axis({.from = 4, .to = 6}); // zoomed by the host
        page.Refresh();
        page.Refresh();
        CHECK(plot_of(host).width == width);
        cloud.clear();
        cloud.add(5, 5);
        page.Refresh();
        CHECK(legend().left + legend().width < plot_of(host).right());
    }
    SUBCASE("nowhere, where there is no room") {
        graph.symbols("a name that leaves no room for anything beside it").add(5, 5);
        host.resize_picture({300, 70});
        page.Refresh();
        CHECK(graph_of(host).LegendWidth == 0);
        host.resize_picture({600, 400});
        page.Refresh();
        CHECK(graph_of(host).LegendWidth > 0);
    }
}

TEST_CASE("a legend stands where it hides least") {
    HeadlessHost host({600, 400});
    qvGraph& page = host.control();
    page.UseLook("light");
    page.NewGraph("graph", 0, 20, 0, 20);
    add_line(page, 0, 20);
    page.Refresh();
    auto const legend = [&] { return render::legend_box(graph_of(host)); };
    auto const at_left = [&] { return legend().left < plot_of(host).left + plot_of(host).width / 3; };
    auto const at_top = [&] { return legend().top < plot_of(host).top + plot_of(host).height / 3; };
    CHECK(at_left());
    CHECK(at_top());
    SUBCASE("it goes where there is room when data come") {
        page.NewDataSet("left");
        for (int i = 0; i < 400; ++i) page.AddDataPoint(i % 10, 19 - i / 20 % 10);
        page.Refresh();
        CHECK_FALSE((at_left() && at_top()));
    }
    SUBCASE("beside the plot area") {
        page.LegendPlace(2);
        page.Refresh();
        CHECK(legend().left >= plot_of(host).right());
        CHECK(has_clean_edge(host));
    }
    SUBCASE("one too large for the plot area stands beside it") {
        for (int i = 0; i < 20; ++i) page.NewDataSet("another data set " + std::to_string(i));
        page.Refresh();
        CHECK(legend().left >= plot_of(host).right());
    }
    SUBCASE("a place that is set holds, from whatever look") {
        page.LegendTableLeft(60);
        page.LegendTableTop(70);
        CHECK(page.LegendPlace() == 0);
        page.UseLook("dark");
        page.Refresh();
        CHECK(legend().left == doctest::Approx(0.6 * graph_of(host).FrameWidth).epsilon(0.01));
    }
    SUBCASE("where a person puts it, and back where it was on Escape") {
        Pixels const before = pixels_of(host);
        Box const box = legend();
        Point const grip{box.left + box.width / 2, box.top + box.height / 2};
        auto const press = [&](host::MouseKind kind, Point place) {
            host.input(host::MouseInput{.kind = kind, .button = host::left_button, .place = place});
        };
        auto const drag = [&] {
            press(host::MouseKind::Press, grip);
            host.input(host::MouseInput{.kind = host::MouseKind::Move,
                                        .button = host::left_button,
                                        .place = {grip.x + 2000, grip.y + 2000}});
        };
        drag();
        CHECK(legend().left == doctest::Approx(box.left + 2000).epsilon(0.02));
        page.Refresh();
        CHECK(legend().left == doctest::Approx(box.left + 2000).epsilon(0.02));
        host.input(host::KeyInput{.character = 27, .key = host::Key::Escape});
        press(host::MouseKind::Release, grip);
        page.Refresh();
        CHECK(pixels_of(host) == before);
    }
}
