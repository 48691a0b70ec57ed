#include "render/axes.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <chrono>

using namespace qv;
using namespace qv::render;
using graph::Axis;
using qv::testing::TestControl;

namespace {

struct AxisPage : TestControl {
    graph::Graph& graph = add_graph();
    Axis& x = graph.Axes[0];
    Axis& y = graph.Axes[1];

    AxisPage() {
        for (Axis* axis : {&x, &y}) {
            axis->AxisMajorDivs = 2;
            axis->AxisRescale = false;
        }
    }
    std::vector<std::string> draw() {
        page().log.clear();
        GraphAxes(state, page(), AxesPass::MarksOnly);
        return page().log;
    }
};

} // namespace

TEST_CASE("an x axis: line, ticks on both edges, labels below, title below them") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.draw();
    auto const& page = axes.page();
    CHECK(page.has("line 1000,11000 11000,11000 #000000 w1"));
    CHECK(page.has("line 6000,10800 6000,11000 #000000 w1")); // own edge, inward
    CHECK(page.has("line 6000,1200 6000,1000 #000000 w1"));   // opposite edge, inward
    CHECK(page.has("text 5950,11000 \"5\" #000000 Arial 9"));
    CHECK(page.has("text 5950,11200 \"x\" #000000 Arial 9"));
    CHECK(axes.events.errors.empty());
}

TEST_CASE("outward ticks push labels and title away by their length") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisTicksInside = axes.x.AxisTicksBothEnds = false;
    axes.x.AxisTicksOutside = true;
    axes.draw();
    CHECK(axes.page().has("line 6000,11000 6000,11200 #000000 w1"));
    CHECK(axes.page().has("text 5950,11200 \"5\" #000000 Arial 9"));
    CHECK(axes.page().has("text 5950,11400 \"x\" #000000 Arial 9"));
}

TEST_CASE("a far-side x axis stands on top, its title above its labels, and moves the graph title up") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisFarSide = true;
    axes.draw();
    CHECK(axes.page().has("line 1000,1000 11000,1000 #000000 w1"));
    CHECK(axes.page().has("text 5950,800 \"5\" #000000 Arial 9"));
    CHECK(axes.page().has("text 5950,600 \"x\" #000000 Arial 9"));
    CHECK(axes.graph.TopAxesHeight == 600);
}

TEST_CASE("axes on one side stand one outside the other") {
    AxisPage axes;
    axes.graph.Axes.push_back(axes.x);
    axes.graph.Axes.push_back(axes.y);
    axes.draw();
    auto const lines = axes.page().lines("line");
    CHECK(axes.page().has("line 1000,11000 11000,11000 #000000 w1"));
    CHECK(axes.page().has("line 1000,11600 11000,11600 #000000 w1"));
    CHECK(axes.page().has("line 1000,1000 1000,11000 #000000 w1"));
    CHECK(axes.page().has("line 400,1000 400,11000 #000000 w1"));
}

TEST_CASE("a y axis's title lies outside its widest label") {
    AxisPage axes;
    axes.x.AxisHide = true;
    axes.y.AxisLabelsHoriz = 0;
    axes.y.AxisValue2 = axes.y.ScaleMax = 20000; // five characters, 500 twips
    axes.draw();
    CHECK(axes.page().has("text 500,900 \"20000\" #000000 Arial 9"));
    auto const title = axes.page().lines("turned");
    REQUIRE(title.size() == 1);
    // Centred on 1000 - 500 - half a line, so that its inner edge meets the label.
    CHECK(title[0].starts_with("turned 300,"));
}

TEST_CASE("text labels: one a step, also for steps out of range, empty when they run out") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisScale = 2;
    axes.x.AxisMajorDivs = 4;
    axes.x.AxisTextLabels = "a,b,c";
    axes.x.AxisShowTitle = false;
    axes.x.AxisValue1 = 2; // the first step, at 0, lies outside
    axes.draw();
    auto const texts = axes.page().lines("text");
    REQUIRE(texts.size() == 2);
    CHECK(texts[0].find("\"b\"") != std::string::npos);
    std::string_view rest = "x,,y";
    CHECK(NextToken(rest) == "x");
    CHECK(NextToken(rest) == "");
    CHECK(NextToken(rest) == "y");
    CHECK(NextToken(rest) == "");
}

TEST_CASE("a rescaled range is stored and announced once; a log axis not wholly positive turns linear") {
    AxisPage axes;
    axes.events.scale_changes = 0;
    axes.x.AxisScale = 0;
    axes.x.AxisRescale = true;
    axes.x.AxisNoData = false;
    axes.x.DataMin = 0;
    axes.x.DataMax = 7.3;
    axes.y.AxisLog = true;
    axes.draw();
    CHECK(axes.x.AxisValue2 == 8);
    CHECK(axes.x.ScaleMax == 8);
    CHECK_FALSE(axes.x.AxisRescale);
    CHECK(axes.events.scale_changes == 1);
    CHECK_FALSE(axes.y.AxisLog);
    axes.draw();
    CHECK(axes.events.scale_changes == 1);
}

TEST_CASE("grid lines follow the switches and colours of the axis being drawn") {
    AxisPage axes;
    axes.x.AxisGridMajor = axes.y.AxisGridMinor = true;
    axes.x.AxisMajGridColor = 0x00CC00;
    axes.y.AxisMinorDivs = 2;
    axes.draw();
    CHECK(axes.page().has("line 6000,1000 6000,11000 #00CC00 w1"));
    CHECK(axes.page().has("line 1000,8500 11000,8500 #E1E1E1 w1"));
    CHECK_FALSE(axes.page().has("line 1000,6000 11000,6000 #D2D2D2 w1"));
}

TEST_CASE("thinned labels never overlap and keep every second, third, ... one") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisMajorDivs = 100; // 100 twips apart, labels up to 400 wide
    axes.state.ThinTickLabels = true;
    axes.x.AxisShowTitle = false;
    axes.draw();
    auto const texts = axes.page().lines("text");
    CHECK(texts.size() > 15);
    CHECK(texts.size() <= 26);
    CHECK(texts[0].find("\"0\"") != std::string::npos);
}

TEST_CASE("given ticks take the place of the even ones and are labelled by the axis's format or texts") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisTicksBothEnds = false;
    axes.x.major_tick_values = {1, 4, 12}; // the last lies beyond the axis
    axes.x.minor_tick_values = {2.5};
    axes.x.AxisTextLabels = "0.0";
    axes.draw();
    CHECK(axes.page().has("line 2000,10800 2000,11000 #000000 w1"));
    CHECK(axes.page().has("line 3500,10860 3500,11000 #000000 w1"));
    CHECK(axes.page().has("text 1850,11000 \"1.0\" #000000 Arial 9"));
    CHECK(axes.page().has("text 4850,11000 \"4.0\" #000000 Arial 9"));
    CHECK(axes.page().lines("text").size() == 3); // two labels and the title
    axes.x.AxisScale = 2;
    axes.x.AxisTextLabels = "a,b,c";
    axes.draw();
    CHECK(axes.page().has("text 4950,11000 \"b\" #000000 Arial 9"));
    axes.x.major_tick_values.clear();
    axes.draw();
    CHECK(axes.page().has("text 5950,11000 \"b\" #000000 Arial 9")); // divided evenly again
}

TEST_CASE("divisions of any number draw in under a second") {
    AxisPage axes;
    axes.x.AxisMajorDivs = axes.x.AxisMinorDivs = 32767;
    axes.y.AxisMajorDivs = axes.y.AxisMinorDivs = -32768;
    auto const start = std::chrono::steady_clock::now();
    axes.draw();
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(20)); // sanitizers included
    CHECK(axes.events.errors.empty());
}
