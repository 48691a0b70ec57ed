#include "render/symbols.h"

#include "TestControl.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::render;
using qv::testing::RecordingSurface;
using qv::testing::TestControl;

TEST_CASE("texts of counters and characters") {
    CHECK(symbol_text(-1, 27) == "27");
    CHECK(symbol_text(-2, 1) == "A");
    CHECK(symbol_text(-2, 26) == "Z");
    CHECK(symbol_text(-2, 27) == "A1");
    CHECK(symbol_text(-2, 53) == "A2");
    CHECK(symbol_text(65, 0) == "A");
    CHECK(symbol_text(-65, 0) == "A");
    CHECK(symbol_text(228, 0) == "\u00e4");
    CHECK(symbol_text(5, 0).empty());
    CHECK_FALSE(symbol_text(-32768, 0).empty());
}

TEST_CASE("colour codes") {
    TestControl control;
    RecordingSurface surface;
    auto const color = [&](std::int32_t code) {
        SetLineColor(control.state, surface, code);
        return surface.state.ForeColor;
    };
    CHECK(color(0) == 0);
    CHECK(color(2) == 0x0000FF);
    CHECK(color(7) == 0xFFFFFF);
    CHECK(color(8) == 8);
    CHECK(color(-1) == -1);
}

TEST_CASE("a point is drawn while it lies within a thousandth of the range") {
    TestControl control;
    document::Graph& graph = control.add_graph();
    document::DataSet& set = control.add_data_set(graph, {});
    set.DataSymbol = 3;
    set.DataSymbolSize = 50;
    set.ShowErrorBar = true;
    RecordingSurface surface;
    auto const draw = [&](double x, double y, double e = 0) {
        surface.log.clear();
        DataPointXY(control.state, surface, {0, {x, y, e, {}}, {}});
        return surface.log.size();
    };
    CHECK(draw(10.009, 5) == 1);
    CHECK(draw(10.011, 5) == 0);
    CHECK(draw(5, -0.011, 1) == 0);
    CHECK(draw(5, 5, 1) == 4);
    // A range given from high to low shows its points as well.
    std::swap(graph.Axes[0].AxisValue1, graph.Axes[0].AxisValue2);
    CHECK(draw(5, 5) == 1);
    CHECK(control.events.errors.empty());
}

TEST_CASE("error bars stand upright for a positive E and lie for a negative one, at their points") {
    TestControl control;
    document::Graph& graph = control.add_graph();
    document::DataSet& set = control.add_data_set(graph, {});
    set.DataSymbolFill.EdgeColor = 0x00AA00;
    set.ErrorBarColor = 0x0000BB;
    set.ShowErrorBar = true;
    RecordingSurface surface;
    DataPointXY(control.state, surface, {0, {4, 5, 2, {}}, {}});
    CHECK(surface.has("line 4995,8000 4995,4000 #0000BB w1"));
    surface.log.clear();
    graph.Axes[0].AxisReverse = true;
    DataPointXY(control.state, surface, {0, {4, 5, -2, {}}, {}});
    CHECK(surface.has("line 9000,6000 5000,6000 #00AA00 w1"));
    CHECK(surface.has("line 9000,5900 9000,6100 #00AA00 w1"));
}

TEST_CASE("a transparent symbol hides the point and its text but not its error bar") {
    TestControl control;
    document::Graph& graph = control.add_graph();
    document::DataSet& set = control.add_data_set(graph, {});
    set.DataSymbol = 4;
    set.DataSymbolSize = 45;
    set.ShowErrorBar = true;
    RecordingSurface surface;
    DataPointXY(control.state, surface, {0, {5, 5, 1, "id"}, {}});
    CHECK(surface.lines("text").size() == 1);
    CHECK(surface.lines("rectangle").size() == 1);
    surface.log.clear();
    set.DataSymbolFill.Transparent = true;
    DataPointXY(control.state, surface, {0, {5, 5, 1, "id"}, {}});
    CHECK(surface.lines("line").size() == 3);
    CHECK(surface.log.size() == 3);
}
