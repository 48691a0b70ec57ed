#include "control/state_of.h"
#include "render/page_redraw.h"

#include "pages.h"
#include "qvgraph/RasterSurface.h"
#include "rendered_page.h"

#include <doctest/doctest.h>

#include <fstream>
#include <iterator>
#include <random>

using namespace qv;
using namespace qv::test;
using headless::HeadlessHost;

namespace {

struct Silence : host::EventSink {
    void GraphScaleChanged() override { FAIL("an event"); }
    void ErrorMsg(std::string&, std::string& Description) override { FAIL(Description); }
};

void draw_everything(qvGraph& page) {
    for (char const* name : {"behind", "in front"}) {
        page.NewGraph(name);
        page.GraphPosition({10, 10, 70, 70});
        page.BorderStyle({.Color1 = rgb(255, 255, 255), .Color2 = rgb(180, 200, 230)});
        page.NewDataSet("points");
        for (int i = 0; i <= 50; ++i) page.AddDataPoint(i, std::sin(i * 0.2) * i, i * 0.1);
        page.SymbolStyle({.Symbol = 3, .Size = 1.5F});
        page.NewDataSet("formula");
        page.AddMathFunc("twice(x) - 3");
        page.NewYAxis("right", 1, 1000);
        page.AxisLog(true);
    }
    page.LegendInFront(false);
    page.PageColors({.Color1 = rgb(250, 240, 220), .Color2 = rgb(200, 220, 255)});
}

std::vector<std::uint32_t> pixels_of_surface(DrawSurface const& surface) {
    auto const pixels = static_cast<raster::RasterSurface const&>(surface).pixels();
    return {pixels.begin(), pixels.end()};
}

} // namespace

TEST_CASE("a page redrawn elsewhere looks as it was shown, and nothing else happens") {
    HeadlessHost host({600, 400});
    qvGraph& page = host.control();
    page.DefineFunction("twice(a) = 2 * a");
    draw_everything(page);
    page.Refresh();
    Silence silence;
    page.set_events(&silence);
    auto const shown = pixels_of(host);
    int const times_shown = host.times_shown();
    auto const redrawn = render::redraw_page(control::state_of(page), [&] { return host.make_surface(); });
    CHECK(pixels_of_surface(*redrawn) == shown);
    CHECK(pixels_of(host) == shown);
    CHECK(host.times_shown() == times_shown);
    page.Refresh();
    CHECK(pixels_of(host) == shown);
}

TEST_CASE("an automatic axis keeps the divisions that it is shown with") {
    HeadlessHost host({600, 400});
    qvGraph& page = host.control();
    page.NewGraph("");
    page.NewDataSet("");
    page.AddDataPoint(-47.0199, 4.07882);
    page.AddDataPoint(38.3125, -5.20198);
    page.Refresh();
    auto const shown = pixels_of(host);
    auto const redrawn = render::redraw_page(control::state_of(page), [&] { return host.make_surface(); });
    CHECK(pixels_of_surface(*redrawn) == shown);
    page.Refresh();
    CHECK(pixels_of(host) != shown); // chosen again, they are others
}

TEST_CASE("zoomed and scrolled pages are redrawn as they are shown") {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> value(-50, 50);
    for (int i = 0; i < 20; ++i) {
        CAPTURE(i);
        HeadlessHost host({600, 400});
        qvGraph& page = host.control();
        page.NewGraph("");
        page.NewDataSet("");
        for (int point = 0; point < 2; ++point) page.AddDataPoint(value(random), value(random));
        page.AxisLog(i % 4 == 0);
        page.Refresh();
        auto const is_redrawn_alike = [&] {
            auto const redrawn =
                render::redraw_page(control::state_of(page), [&] { return host.make_surface(); });
            return pixels_of_surface(*redrawn) == pixels_of(host);
        };
        for (auto const& [kind, place] : {std::pair(host::MouseKind::Press, Point{3000, 2000}),
                                          {host::MouseKind::Move, Point{5000, 3500}},
                                          {host::MouseKind::Release, Point{5000, 3500}}})
            host.input(host::MouseInput{kind, host::left_button, 0, place});
        CHECK(control::state_of(page).Zoomed);
        CHECK(is_redrawn_alike());
        host.input(host::WheelInput{-1.5, 0, 0, {4000, 3000}});
        CHECK(is_redrawn_alike());
        host.input(
            host::ScrollInput{host::Bar::HScroll1, control::state_of(page).HScroll1.Value + 20, false});
        CHECK(is_redrawn_alike());
    }
}

TEST_CASE("what was changed since the page was shown is redrawn as the next drawing shows it") {
    HeadlessHost host({600, 400});
    qvGraph& page = host.control();
    auto const next_is = [&] {
        auto const redrawn = pixels_of_surface(
            *render::redraw_page(control::state_of(page), [&] { return host.make_surface(); }));
        page.Refresh();
        return redrawn == pixels_of(host);
    };
    page.NewGraph("");
    page.NewDataSet("");
    page.AddDataPoint(6, 1);
    page.AddDataPoint(249997, 2);
    page.Refresh();
    page.AxisLog(true);
    CHECK(next_is());
    page.AxisMajorDivs(17);
    CHECK(next_is());
    page.AddDataPoint(600000, 3);
    CHECK(next_is());
    page.AxisValue1(10);
    CHECK(next_is());
    page.AxisScale(0);
    CHECK(next_is());
}

TEST_CASE("every text stands once in a file of shapes, and the file looks like the page") {
    for (bool const in_front : {false, true}) {
        CAPTURE(in_front);
        HeadlessHost host({600, 400});
        qvGraph& page = host.control();
        page.AxisMarksInFront(in_front);
        std::vector<std::string> texts;
        for (char const* name : {"lower", "upper"}) {
            auto const text = [&](std::string const& what) { return texts.emplace_back(name + what); };
            page.NewGraph(text(" graph"), 0, 10, 0, 10);
            page.GraphPosition(
                {.Left = texts.size() == 1 ? 5.0F : 20.0F, .Top = 10, .Width = 70, .Height = 80});
            page.BorderStyle({.Color1 = rgb(255, 255, 255), .Color2 = rgb(180, 200, 230)});
            page.PlotAreaTransparent(true);
            page.SetSelectedAxis(0);
            page.AxisTitle(text(" x"));
            page.SetSelectedAxis(1);
            page.AxisTitle(text(" y"));
            page.NewDataSet(text(" data"));
            for (int i = 0; i <= 10; ++i) page.AddDataPoint(i, i);
            page.NewDataSet("");
            page.DataText(text(" text"));
            page.DataTextPercent(true);
            page.DataTextX(60);
            page.DataTextY(80);
            page.LegendInFront(in_front);
            page.LegendTableLeft(40);
            page.LegendTableTop(30);
        }
        page.PageColors({.Color1 = rgb(0, 160, 90), .Color2 = rgb(0, 160, 90)});
        page.Refresh();
        const test::TemporaryFolder folder;
        host.save(folder.path() / "page.svg");
        const std::string file = test::content_of(folder.path() / "page.svg");
        for (std::string const& text : texts) {
            CAPTURE(text);
            auto const place = file.find(">" + text + "</text>");
            REQUIRE(place != std::string::npos);
            CHECK(file.find(">" + text + "</text>", place + 1) == std::string::npos);
        }
        auto const count = [&](std::string const& text) {
            std::size_t found = 0;
            for (auto place = file.find(text); place != std::string::npos; place = file.find(text, place + 1))
                ++found;
            return found;
        };
        CHECK(count(">10</text>") == 4); // two axes each
        for (char const* name : {"page.svg", "page.pdf"}) {
            CAPTURE(name);
            host.save(folder.path() / name);
            CHECK(test::mean_difference(test::rendered(folder.path() / name),
                                        raster::PixelBuffer{600, 400, pixels_of(host)})
                  < 0.01);
        }
    }
}

TEST_CASE("a page that waits for its first drawing is redrawn without being drawn") {
    HeadlessHost host({600, 400});
    HeadlessHost other({600, 400});
    draw_everything(host.control());
    draw_everything(other.control());
    other.control().Refresh();
    Silence silence;
    host.control().set_events(&silence);
    auto const redrawn =
        render::redraw_page(control::state_of(host.control()), [&] { return host.make_surface(); });
    CHECK(pixels_of_surface(*redrawn) == pixels_of(other));
    CHECK(control::state_of(host.control()).Graphs[0]->GraphNotDrawn);
    CHECK(control::state_of(host.control()).Graphs[0]->FrameWidth == 0);
    CHECK(control::state_of(host.control()).Graphs[0]->DataSets[0].points.size()
          == 51); // they have come back
}

TEST_CASE("surfaces that cannot be made leave the document whole") {
    HeadlessHost host({60, 40});
    draw_dark_page(host.control());
    int left = 3;
    auto const make = [&]() -> std::unique_ptr<DrawSurface> {
        if (left-- == 0) throw std::bad_alloc();
        return host.make_surface();
    };
    CHECK_THROWS_AS(render::redraw_page(control::state_of(host.control()), make), std::bad_alloc);
    CHECK(control::state_of(host.control()).Graphs[0]->DataSets[0].points.size() == 101);
}
