#include "render/gradient.h"

#include "TestControl.h"
#include "qvgraph/clsGradient.h"
#include "qvgraph/system_color.h"

#include <doctest/doctest.h>

#include <limits>

using namespace qv;
using namespace qv::render;
using qv::testing::RecordingSurface;
using qv::testing::TestControl;

namespace {

struct GradientPage : TestControl {
    document::Graph& graph = add_graph();
    RecordingSurface& scratch = static_cast<RecordingSurface&>(*state.ScratchPic1);

    void draw(Area area, document::FillSpec const& fill) {
        page().log.clear();
        scratch.log.clear();
        DrawGradient(state, page(), area, fill);
    }
};

constexpr document::FillSpec blue_to_white{.Color1 = 0xFF0000, .Color2 = 0xFFFFFF};

} // namespace

TEST_CASE("an angle is kept within one turn, whatever is given") {
    struct Row {
        float given, kept;
    };
    for (const Row row : {Row{-45, 315}, Row{315, 315}, Row{360, 0}, Row{-360, 0}, Row{725.5F, 5.5F},
                          Row{-0.5F, 359.5F}, Row{-1e-9F, 0}, Row{1e11F, 32}, Row{-1e11F, 328}}) {
        clsGradient gradient;
        gradient.Angle(row.given);
        CHECK(gradient.Angle() == row.kept);
    }
}

TEST_CASE("only colours that name a known system colour are replaced") {
    clsGradient gradient;
    gradient.Color1(system_color(24));
    CHECK(gradient.Color1() == system_color_values[24]);
    gradient.Color2(system_color(25));
    CHECK(gradient.Color2() == system_color(25));
    gradient.Color2(-1);
    CHECK(gradient.Color2() == -1);
    CHECK(gradient.BlendColors(-1, -1, 3) == std::vector<Color>(3, 0xFFFFFF));
}

TEST_CASE("colour tables: one way, and there and back") {
    struct Row {
        std::int16_t style;
        float shift;
        int count;
        std::vector<Color> colors;
    };
    const std::vector<Row> rows{
        {1, 0, 5, {0, 40, 80, 120, 200}},       {0, 0, 5, {0, 80, 160, 80, 200}},
        {-2, 0, 6, {0, 67, 133, 133, 67, 200}}, {3, 1, 6, {0, 0, 0, 0, 3, 200}},
        {3, 7, 6, {0, 0, 0, 0, 3, 200}},        {3, -1, 4, {0, 174, 187, 200}},
        {-1, 0.30103F, 3, {0, 89, 200}},        {1, 0, -7, {0, 200}},
    };
    for (Row const& row : rows) {
        clsGradient gradient;
        gradient.Style(row.style);
        gradient.Shift(row.shift);
        CAPTURE(row.style);
        CAPTURE(row.shift);
        CHECK(gradient.BlendColors(0, 200, row.count) == row.colors);
    }
    // Channels go their own ways, down as well as up.
    CHECK(clsGradient().BlendColors(rgb(0, 100, 200), rgb(200, 100, 0), 4)
          == std::vector<Color>{rgb(0, 100, 200), rgb(50, 100, 150), rgb(100, 100, 100), rgb(200, 100, 0)});
}

TEST_CASE("an area is painted a little larger beside the page and copied into its clip") {
    GradientPage page;
    page.draw(Area::PlotArea, blue_to_white);
    CHECK(page.page().log
          == std::vector<std::string>{"clip 1000,1000 11000,11000", "blit 67,67 size 667,667 from 0,0",
                                      "clip 0,0 15000,12000"});
    CHECK(page.scratch.GetClientRect() == PixelSize{680, 680});
    CHECK(page.scratch.log.front() == "clip 0,0 10200,10200");
    CHECK(page.scratch.lines("device").size() >= 680);
    page.draw(Area::Page, blue_to_white);
    CHECK(page.page().has("blit 0,0 size 1001,801 from 0,0"));
    CHECK(page.events.errors.empty());
}

TEST_CASE("a legend table sets no clip, so only its own pixels are copied") {
    GradientPage page;
    page.graph.LegendLeft = page.graph.LegendTop = 150;
    page.graph.LegendWidth = 300;
    page.graph.LegendHeight = 150;
    page.draw(Area::LegendTable, blue_to_white);
    CHECK(page.page().log
          == std::vector<std::string>{"blit 10,10 size 21,11 from 0,0", "clip 0,0 15000,12000"});
}

TEST_CASE("fills that need no painter") {
    GradientPage page;
    page.draw(Area::GraphFrame, {.Color1 = 0x00FF00, .Color2 = 0x00FF00});
    CHECK(page.scratch.lines("device").empty());
    CHECK(page.scratch.log.back() == "cls");
    CHECK(page.scratch.state.BackColor == 0x00FF00);
    CHECK(page.page().lines("blit").size() == 1);
    page.draw(Area::GraphFrame, {.Color1 = 1, .Color2 = 2, .Transparent = true});
    CHECK(page.page().log.empty());
    page.state.Graphs.clear();
    page.draw(Area::Page, blue_to_white);
    CHECK(page.page().log.empty());
    CHECK(page.events.errors.empty());
}

TEST_CASE("a failing painter is named and leaves the first colour; other failures are the procedure's own") {
    GradientPage page;
    page.draw(Area::PlotArea,
              {.Color1 = 1, .Color2 = 2, .gShift = std::numeric_limits<float>::quiet_NaN(), .gStyle = 2});
    CHECK(page.events.errors
          == std::vector<std::string>{"Error 6 has occured in qvGraph.ocx, GradientRect: Overflow"});
    CHECK(page.scratch.state.BackColor == 1);
    CHECK(page.scratch.log.back() == "cls");
    CHECK(page.page().lines("blit").size() == 1);
    page.graph.Axes.clear();
    page.draw(Area::PlotArea, blue_to_white);
    CHECK(page.events.errors.back().find("DrawGradient") != std::string::npos);
}
