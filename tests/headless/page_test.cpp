#include "control/state_of.h"
#include "picture_check.h"
#include "png_file.h"
#include "qvgraph/HeadlessHost.h"
#include "render/plot_geometry.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

using namespace qv;
using headless::HeadlessHost;

namespace {

std::vector<std::uint32_t> pixels_of(HeadlessHost const& host) {
    auto const pixels = host.picture().pixels();
    return {pixels.begin(), pixels.end()};
}

bool is_white(HeadlessHost const& host) {
    return std::ranges::all_of(host.picture().pixels(), [](std::uint32_t p) { return p == 0xFFFFFFFF; });
}

void draw_sine(qvGraph& page) {
    page.NewGraph("Sine");
    page.NewDataSet("sine");
    page.DataLine({.Thickness = 2});
    for (int i = 0; i <= 100; ++i) page.AddDataPoint(i, std::sin(i * 0.1));
    page.Refresh();
}

/// How a legend is drawn, and what it lists.
struct LegendCase {
    PixelSize page{500, 350};
    char const* font = "";
    std::int16_t edge = 1; // pixels
    bool shown = true, in_front = true;
    char const* text = "A data set";
    std::int16_t line_thickness = 1;
    float symbol_size = 1.6F; // millimetres
};

// Whole pixels only, so that data are either on a pixel or not.
void draw_with_legend(qvGraph& page, LegendCase const& asked) {
    control::state_of(page).Smooth = false;
    page.NewGraph("");
    page.LegendTableStyle({.Font = asked.font,
                           .LeftPercent = 40,
                           .TopPercent = 30,
                           .EdgeThickness = asked.edge,
                           .Show = asked.shown});
    page.LegendInFront(asked.in_front);
    for (std::int16_t symbol = 1; symbol <= 5; ++symbol) {
        page.NewDataSet(asked.text);
        page.SymbolStyle({.Symbol = symbol, .Size = asked.symbol_size});
        page.DataLine({.Thickness = asked.line_thickness});
        for (int i = 0; i <= 20; ++i) page.AddDataPoint(i, symbol * std::sin(i * 0.3));
    }
    page.Refresh();
}

// A page of shapes without any text, so that no font decides its pixels.
void draw_shapes(qvGraph& page) {
    page.NewGraph("", 0, 12, 0, 10);
    page.BorderStyle({.Color1 = rgb(235, 240, 235), .Left = 3, .Top = 3, .Right = 3, .Bottom = 3});
    page.PlotAreaColors({.Color1 = rgb(255, 255, 255)});
    page.GraphShowTitle(false);
    for (int const axis : {0, 1}) {
        page.SetSelectedAxis(axis);
        page.AxisLabelStyle({.Show = false});
        page.AxisTitleStyle({.Show = false});
        page.AxisGridStyle({});
        page.AxisMinorDivs(2);
    }
    for (std::int16_t symbol = 3; symbol <= 11; ++symbol) {
        page.NewDataSet("");
        page.DataSymbol(symbol);
        page.DataSymbolSize(2.5F);
        page.DataSymbolEdgeThickness(symbol % 2);
        page.AddDataPoint(symbol, 8.5);
    }
    page.NewDataSet("");
    page.SymbolStyle(
        {.Symbol = 1, .Size = 4, .Color1 = rgb(70, 130, 180), .EdgeThickness = 1, .BarShadow = true});
    for (int i = 2; i < 11; i += 2) page.AddDataPoint(i, 1 + i % 4);
    for (std::int16_t const style : std::initializer_list<std::int16_t>{1, 2}) {
        page.NewDataSet("");
        page.DataSymbol(0);
        page.DataLine({.Color = rgb(180, 40, 60), .Thickness = style, .Style = style});
        for (int i = 0; i <= 48; ++i) page.AddDataPoint(i * 0.25, 4.5 + style + std::cos(i * 0.4));
    }
    page.Refresh();
}

} // namespace

TEST_CASE("a fresh page is white and a drawn one is not; Reset and a refresh make it white again") {
    HeadlessHost host({200, 150});
    host.control().Refresh();
    CHECK(is_white(host));
    draw_sine(host.control());
    CHECK_FALSE(is_white(host));
    host.control().Reset();
    host.control().PageColors({});
    host.control().Refresh();
    CHECK(is_white(host));
}

TEST_CASE("a page draws alike each time, on each host, and after a resize there and back") {
    HeadlessHost first({300, 200}), second({300, 200});
    draw_sine(first.control());
    draw_sine(second.control());
    auto const pixels = pixels_of(first);
    CHECK(pixels_of(second) == pixels);
    first.control().Refresh();
    CHECK(pixels_of(first) == pixels);
    int const shown = second.times_shown();
    second.resize_picture({250, 160});
    second.resize_picture({300, 200});
    CHECK(pixels_of(second) == pixels);
    CHECK(second.times_shown() == shown + 2);
}

TEST_CASE("nothing is drawn on a resize before the first refresh") {
    HeadlessHost host({300, 200});
    host.control().NewGraph("quiet");
    host.resize_picture({310, 210});
    CHECK(host.times_shown() == 0);
}

TEST_CASE("twice the density gives twice the pixels of the same page") {
    HeadlessHost plain({300, 200}), dense({600, 400}, 192);
    draw_sine(plain.control());
    draw_sine(dense.control());
    CHECK(control::state_of(dense.control()).PageWidth == control::state_of(plain.control()).PageWidth);
    CHECK(dense.picture().width() == 600);
    auto const darkness = [](HeadlessHost const& host) {
        double sum = 0;
        for (std::uint32_t const p : host.picture().pixels()) sum += 255 - (p >> 8 & 0xFF);
        return sum / static_cast<double>(host.picture().pixels().size());
    };
    CHECK(darkness(dense) == doctest::Approx(darkness(plain)).epsilon(0.5));
}

TEST_CASE("frames, axes, grids and outlines have their widths at 96 to the inch, whole at every side") {
    struct Row {
        double factor;
        int pixels;
        int outline, outline_pixels; // of the graph
    };
    for (Row const& row : {Row{1, 1, 1, 1}, Row{1, 1, 2, 2}, Row{1, 1, 3, 3}, Row{1, 1, 7, 7},
                           Row{1.25, 1, 1, 1}, Row{1.5, 1, 2, 3}, Row{1.75, 2, 1, 2}, Row{2, 2, 1, 2},
                           Row{2, 2, 3, 6}, Row{2.5, 2, 1, 2}, Row{3, 3, 1, 3}}) {
        CAPTURE(row.factor);
        CAPTURE(row.outline);
        auto const pixels = [&](double at_96) { return static_cast<int>(std::lround(at_96 * row.factor)); };
        HeadlessHost host({pixels(321), pixels(241)}, 96 * row.factor);
        qvGraph& page = host.control();
        page.NewGraph("", 0, 1, 0, 1);
        page.GraphPosition({0, 0, 100, 100});
        page.PageColors({.Color1 = rgb(255, 255, 255)});
        page.BorderStyle({.Color1 = rgb(255, 255, 255)});
        page.BorderEdgeThickness(static_cast<std::int16_t>(row.outline));
        page.PlotAreaColors({.Color1 = rgb(255, 255, 255)});
        page.LegendShow(false);
        for (int const axis : {0, 1}) {
            page.SetSelectedAxis(axis);
            page.AxisTickStyle({.Length = 0});
            page.AxisScaleStyle({.Value1 = 0, .Value2 = 1, .MajorDivs = 2, .MinorDivs = 1, .ScaleStyle = 1});
            page.AxisGridStyle({.MajorGridColor = 0, .MajorGridShow = true});
        }
        page.Refresh();
        // A row through the upper half of the plot area and a column through its right half: outline, frame,
        // grid line, frame, outline.
        std::vector<int> runs[2];
        document::Graph& graph = *control::state_of(page).Graphs[0];
        Box const plot = render::plot_box(graph);
        double const twips = host.picture().TwipsPerPixelX();
        int const y = static_cast<int>((plot.top + plot.height * 0.8) / twips);
        int const x = static_cast<int>((plot.left + plot.width * 0.8) / twips);
        for (int const down : {0, 1}) {
            bool was_black = false;
            for (int i = 0; i < (down ? host.picture().height() : host.picture().width()); ++i) {
                bool const black =
                    host.picture().pixels()[static_cast<std::size_t>(down ? i * host.picture().stride() + x
                                                                          : y * host.picture().stride() + i)]
                    == 0xFF000000;
                if (black && !was_black) runs[down].push_back(0);
                if (black) ++runs[down].back();
                was_black = black;
            }
        }
        int const w = row.pixels, o = row.outline_pixels;
        CHECK(runs[0] == std::vector{o, w, w, w, o});
        CHECK(runs[1] == std::vector{o, w, w, w, o});
    }
}

TEST_CASE("a saved page reads back as it was shown; a file that cannot be written is named") {
    HeadlessHost host({300, 200});
    draw_sine(host.control());
    auto const file = std::filesystem::temp_directory_path() / "qvgraph-page-test.png";
    host.save(file);
    CHECK(test::read_png(file).pixels == pixels_of(host));
    std::filesystem::remove(file);
    try {
        host.save("/no/such/folder/page.png");
        FAIL("saving into a missing folder must fail");
    } catch (Fault const& fault) {
        CHECK(fault.number == 76);
        CHECK(fault.description.find("/no/such/folder/page.png") != std::string::npos);
    }
}

TEST_CASE("shapes look as they always did") {
    HeadlessHost host({320, 240});
    draw_shapes(host.control());
    CHECK(qv::testing::shows_picture(host.picture(), "shapes"));
    control::state_of(host.control()).Smooth = false;
    host.control().Refresh();
    CHECK(qv::testing::shows_picture(host.picture(), "shapes-flat"));
}

TEST_CASE("a legend changes pixels only inside its edge") {
    const std::vector<LegendCase> cases{
        {},
        {.font = "Font=Times New Roman|20|Bold|Italic"},
        {.font = "Font=Courier New|5", .edge = 0},
        {.edge = 7, .line_thickness = 9, .symbol_size = 30},
        {.text = "A name that is much longer than the others\r\nand has another line"},
        {.page = {200, 150}, .text = "\u00c4\u00d6\u00dc \u6f22"},
        {.page = {90, 60}},
    };
    for (LegendCase const& asked : cases) {
        CAPTURE(std::string(asked.font));
        HeadlessHost with(asked.page), without(asked.page);
        draw_with_legend(with.control(), asked);
        LegendCase hidden = asked;
        hidden.shown = false;
        draw_with_legend(without.control(), hidden);
        document::Graph const& graph = *control::state_of(with.control()).Graphs[0];
        double const edge = asked.edge / 2.0 + 1;
        int changed = 0, outside = 0;
        for (int y = 0; y < asked.page.height; ++y)
            for (int x = 0; x < asked.page.width; ++x) {
                auto const at = static_cast<std::size_t>(y * with.picture().stride() + x);
                if (with.picture().pixels()[at] == without.picture().pixels()[at]) continue;
                ++changed;
                outside += x < graph.LegendLeft / 15.0 - edge || y < graph.LegendTop / 15.0 - edge
                           || x > (graph.LegendLeft + graph.LegendWidth) / 15.0 + edge
                           || y > (graph.LegendTop + graph.LegendHeight) / 15.0 + edge;
            }
        CHECK(outside == 0);
        CHECK((changed > 0) == (graph.LegendWidth > 0));
    }
}

TEST_CASE("data are not hidden by a legend behind them") {
    constexpr std::uint32_t blue = 0xFF0000FF; // the first data set's colour, as a pixel
    auto const colored = [&](LegendCase const& asked) {
        HeadlessHost host(asked.page);
        draw_with_legend(host.control(), asked);
        return std::ranges::count(host.picture().pixels(), blue);
    };
    CHECK(colored({.in_front = false}) >= colored({.shown = false}));
    CHECK(colored({.in_front = true}) < colored({.shown = false}));
}
