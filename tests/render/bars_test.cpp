#include "render/bars/bars.h"

#include "TestControl.h"
#include "render/data_sets.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

// The filled boxes of all bars, drawn with a half width of 90 twips.
struct BarPage : TestControl {
    document::Graph& graph = add_graph();

    document::DataSet& add_bars(std::vector<Point> const& points, bool stacked = false) {
        document::DataSet& set = add_data_set(graph, points);
        set.DataSymbol = 1;
        set.DataSymbolSize = 100;
        set.BarStacked = stacked;
        return set;
    }
    std::vector<std::string> fills() {
        page().log.clear();
        PlotDataSets(state, page());
        CHECK(events.errors.empty());
        return page().lines("fill");
    }
};

} // namespace

TEST_CASE("a bar starts below the plot area, or at its base value") {
    BarPage bars;
    document::DataSet& set = bars.add_bars({{5, 4}});
    CHECK(bars.fills() == std::vector<std::string>{"fill 5910,12090 6090,7000 #000000 w1"});
    set.BarBase = true;
    set.BarBaseValue = 2;
    set.BarOffset = 3;
    CHECK(bars.fills() == std::vector<std::string>{"fill 6210,9000 6390,7000 #000000 w1"});
    set.BarHoriz = true;
    CHECK(bars.fills() == std::vector<std::string>{"fill 3000,7210 6000,7390 #000000 w1"});
}

TEST_CASE("a stacked set stands on the set before it, by position and not by value") {
    BarPage bars;
    bars.add_bars({{1, 3}, {2, 1}});
    bars.add_bars({{1, 2}, {7, 4}}, true);
    auto const fills = bars.fills();
    REQUIRE(fills.size() == 4);
    CHECK(fills[2] == "fill 1910,8000 2090,6000 #000000 w1");
    CHECK(fills[3] == "fill 7910,10000 8090,6000 #000000 w1");
    // A set that is not stacked starts anew; a stacked first set has nothing to stand on.
    bars.add_bars({{1, 5}});
    CHECK(bars.fills()[4] == "fill 1910,12090 2090,6000 #000000 w1");
    bars.graph.DataSets[0].BarStacked = true;
    CHECK(bars.fills()[0] == "fill 1910,12090 2090,8000 #000000 w1");
}

TEST_CASE("shadow lies one millimetre right and below, the edge on top") {
    BarPage bars;
    document::DataSet& set = bars.add_bars({{5, 4}});
    set.BarBase = set.BarShadow = true;
    set.BarShadowColor = 0x646464;
    set.DataSymbolFill.EdgeThickness = 2;
    set.DataSymbolFill.EdgeColor = 0x0000FF;
    bars.fills();
    auto const& log = bars.page().log;
    auto const shadow = std::ranges::find(log, "fill 6010,11100 6190,7100 #646464 w2");
    auto const edge = std::ranges::find(log, "box 5910,11000 6090,7000 #0000FF w2");
    CHECK(shadow < edge);
    CHECK(edge != log.end());
}

TEST_CASE("a shaded bar runs from the edge colour to the face colour") {
    BarPage bars;
    document::DataSet& set = bars.add_bars({{5, 4}});
    set.BarBase = set.Bar3D = true;
    set.DataSymbolFill.EdgeColor = 0x000000;
    set.DataSymbolFill.Color1 = 0xFFFFFF;
    auto const fills = bars.fills();
    CHECK(fills.size() > 10);
    CHECK(fills.front() == "fill 5910,11000 6090,7000 #000000 w1");
    auto const colors = BlendColors(bars.state, 0x000000, 0x0000C8, 5);
    CHECK(colors == std::vector<Color>{0, 40, 80, 120, 200});
    CHECK(BlendColors(bars.state, 1, 2, -7) == std::vector<Color>{1, 2});
}

TEST_CASE("a bar far outside a zoomed page is cut, not reported") {
    BarPage bars;
    bars.add_bars({{5, 1e9}, {5, -1e9}});
    bars.graph.Axes[1].AxisValue1 = 1;
    bars.graph.Axes[1].AxisValue2 = 1 + 1e-6;
    CHECK(bars.fills().size() == 2);
}

TEST_CASE("bars whose width is one of values are that wide on any axis, however it is zoomed") {
    BarPage bars;
    document::DataSet& set = bars.add_bars({{5, 4}});
    set.BarBase = true;
    set.BarWidth = 0.5;
    CHECK(bars.fills() == std::vector<std::string>{"fill 5750,11000 6250,7000 #000000 w1"});
    set.BarOffset = 0.5; // of values too
    CHECK(bars.fills() == std::vector<std::string>{"fill 6250,11000 6750,7000 #000000 w1"});
    document::Axis& x = bars.graph.Axes[0];
    x.AxisReverse = true;
    CHECK(bars.fills() == std::vector<std::string>{"fill 5250,11000 5750,7000 #000000 w1"});
    x.AxisReverse = false;
    x.AxisValue2 = 5;
    CHECK(bars.fills() == std::vector<std::string>{"fill 11500,11000 12500,7000 #000000 w1"});
    x.AxisLog = true; // the values between 4 and 6.25, of 1 to 100
    x.AxisValue1 = 1;
    x.AxisValue2 = 100;
    set.BarOffset = 0.125;
    set.BarWidth = 2.25;
    CHECK(bars.fills() == std::vector<std::string>{"fill 4010.3,11000 4979.4,7000 #000000 w1"});
    x.AxisLog = false;
    x.AxisValue1 = 5.1; // far inside the bar
    x.AxisValue2 = 5.1 + 1e-12;
    set.Bar3D = true;
    CHECK(bars.fills().size() < 100000);
    set.Bar3D = false;
    set.BarHoriz = true;
    set.BarOffset = 0;
    set.BarWidth = 1;
    bars.graph.Axes[0].AxisValue1 = 0;
    bars.graph.Axes[0].AxisValue2 = 10;
    CHECK(bars.fills() == std::vector<std::string>{"fill 1000,6500 6000,7500 #000000 w1"});
    for (double const width : {0.0, -1.0, HUGE_VAL, std::nan("")}) { // as set in millimetres
        set.BarWidth = width;
        CHECK(bars.fills() == std::vector<std::string>{"fill 1000,6910 6000,7090 #000000 w1"});
    }
}
