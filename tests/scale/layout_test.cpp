#include "fixture.h"
#include "scale/axis_range.h"
#include "scale/mapping.h"
#include "scale/numeric.h"
#include "scale/zoomed.h"

#include <doctest/doctest.h>

#include <cmath>

using namespace qv;
using namespace qv::scale;

TEST_CASE("the frame is a share of the page and the legend's corner stays in it") {
    struct Row {
        bool whole_page;
        float left, width, legend_percent;
        std::int32_t frame_left, frame_width, legend_left;
    };
    for (Row const& row : {Row{false, 0.25F, 0.5F, 100, 2500, 5000, 7500},
                           {false, 0.25F, 0.5F, 150, 2500, 5000, 7500},
                           {false, 0.25F, 0.5F, -10, 2500, 5000, 2500},
                           {false, 0.25F, 0.5F, 50, 2500, 5000, 5000},
                           {true, 0.25F, 0.5F, 25, 0, 10000, 2500},
                           {false, -0.5F, 0, 0, -5000, 0, -5000}}) {
        Fixture control;
        control.state.PageWidth = 10000;
        control.state.PageHeight = 20000;
        document::Graph& graph = control.graph();
        graph.GraphWholePage = row.whole_page;
        graph.GraphLeft = graph.GraphTop = row.left;
        graph.GraphWidth = graph.GraphHeight = row.width;
        graph.LegendTableLeft = graph.LegendTableTop = row.legend_percent;
        CalcBorders(control.state);
        CHECK(graph.FrameLeft == row.frame_left);
        CHECK(graph.FrameWidth == row.frame_width);
        CHECK(graph.LegendLeft == row.legend_left);
        CHECK(graph.FrameTop == 2 * row.frame_left);
        CHECK(graph.FrameHeight == 2 * row.frame_width);
        CHECK(graph.LegendTop == 2 * row.legend_left);
    }
}

TEST_CASE("frame positions round halves to even and overflow is reported") {
    Fixture control;
    control.state.PageWidth = 5;
    control.graph().GraphLeft = 0.5F;
    CalcBorders(control.state);
    CHECK(control.graph().FrameLeft == 2);
    control.state.PageWidth = 2000000000;
    control.graph().GraphLeft = 1;
    control.graph().GraphWidth = 1;
    control.graph().LegendTableLeft = 0;
    CalcBorders(control.state); // the right edge is beyond 32 bits
    CHECK(control.graph().LegendLeft == 2000000000);
    CHECK(control.errors().empty());
    control.graph().GraphLeft = 2;
    CalcBorders(control.state);
    REQUIRE(control.errors().size() == 1);
    CHECK(control.errors()[0] == "Error 6 has occured in qvGraph.ocx, CalcBorders: Overflow");
}

TEST_CASE("the full range follows the range mode of an axis") {
    for (auto const& [mode, low, high] :
         {std::tuple(0, 1.0, 2.0), {1, 3.0, 4.0}, {2, 3.0, 4.0}, {7, 5.0, 6.0}}) {
        Fixture control;
        document::Axis& axis = control.y_axis();
        axis.AxisScale = static_cast<std::uint8_t>(mode);
        std::tie(axis.DataMin, axis.DataMax) = std::pair(1, 2);
        std::tie(axis.AxisValue1, axis.AxisValue2) = std::pair(3, 4);
        std::tie(axis.ScaleMin, axis.ScaleMax) = std::pair(5, 6);
        SetAxisScale(axis);
        CHECK(axis.ScaleMin == low);
        CHECK(axis.ScaleMax == high);
    }
}

TEST_CASE("a graph is zoomed when either selected axis shows less than its full range") {
    Fixture control;
    SetScrollBarsVisibility(control.state);
    CHECK_FALSE(control.state.Zoomed);
    control.y_axis().ScaleMax = std::nextafter(10, 11);
    SetScrollBarsVisibility(control.state);
    CHECK(control.state.Zoomed);
    control.graph().Axes.push_back(control.x_axis());
    control.graph().Axes[1].ScaleMax = 10;
    control.graph().Axes[2].ScaleMax = 1; // not selected
    SetScrollBarsVisibility(control.state);
    CHECK_FALSE(control.state.Zoomed);
    control.state.Zoomed = true;
    control.state.Graphs.clear();
    SetScrollBarsVisibility(control.state);
    CHECK_FALSE(control.state.Zoomed);
    CHECK(control.errors().size() == 1);
}

TEST_CASE("a logarithm that does not exist is reported and counts as zero") {
    Fixture control;
    CHECK(xxLog(control.state, -1, true) == 0);
    CHECK(xxExp(control.state, 1e6, true) == 0);
    CHECK(xxExp(control.state, 2, false) == 2);
    REQUIRE(control.errors().size() == 2);
    CHECK(control.errors()[0]
          == "Error 5 has occured in qvGraph.ocx, xxLog: Invalid procedure call or argument");
    CHECK(control.errors()[1] == "Error 6 has occured in qvGraph.ocx, xxExp: Overflow");
}
