#include "control/document.h"
#include "control/state_of.h"
#include "test_control.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;

TEST_CASE("a new graph has an x and a y axis, fixed where its ends differ") {
    Control control;
    control.NewGraph("G", 0, 10);
    CHECK(control.events() == Events{"GraphScaleChanged", "GraphScaleChanged"});
    TextList names;
    std::int16_t count = 0;
    control.GetAxisNames(names, count);
    CHECK(count == 2);
    CHECK(names == TextList{"x-axis", "y-axis", ""});
    CHECK(control.AxisTitle() == "x-axis");
    CHECK(control.AxisScale() == 1);
    double a1 = -1, a2 = -1;
    control.GetAxisRange(a1, a2);
    CHECK(a1 == 0);
    CHECK(a2 == 10);
    CHECK(control.AxisLabelsHoriz() == 0);
    CHECK(control.SetSelectedAxis(1) == 1);
    CHECK(control.AxisScale() == 0);
    CHECK(control.AxisLabelsHoriz() == 90);
    CHECK(control.graph().SelectedYAxis == 1);
}

TEST_CASE("axes are selected by number, by kind and level") {
    Control control;
    control.NewGraph("G");
    CHECK(control.SelectYaxis(2) == 0);
    CHECK(control.graph().SelectedAxis == 0);
    control.NewYAxis("y2");
    control.NewXAxis("x2");
    CHECK(control.graph().SelectedAxis == 0);
    CHECK(control.GetSelectedAxisIndex(0) == 3);
    CHECK(control.GetSelectedAxisIndex(1) == 2);
    CHECK(control.GetSelectedAxisIndex(5) == -1);
    CHECK(control.SelectYaxis() == 1);
    CHECK(control.SelectYaxis(2) == 2);
    CHECK(control.SelectXaxis(2) == 3);
    CHECK(control.SelectXaxis(-1) == 0);
    CHECK(control.SetSelectedAxis(4) == -1);
    CHECK(control.SetSelectedAxis(-1) == -1);
    CHECK(control.graph().SelectedAxis == 0);
}

TEST_CASE("clearing a graph keeps its settings and starts its axes anew") {
    FilledControl control;
    control.BorderColor1(5);
    control.AddDataPoint(1, 1);
    control::ClearGraphData(control::state_of(control));
    CHECK(control.graph().NumDataSets() == 0);
    CHECK(control.graph().NumPoints == 0);
    CHECK(control.BorderColor1() == 5);
    control.NewXAxis("again");
    CHECK(control.graph().NumAxes() == 1);
    CHECK(control.AxisTitle() == "again");
}

TEST_CASE("graphs are listed from entry 1 and brought to the front") {
    Control control;
    control.NewGraph("first");
    control.NewGraph("second");
    CHECK(control.GetSelectedGraph() == 1);
    TextList names;
    std::int16_t count = 0;
    control.GetGraphNames(names, count);
    CHECK(count == 2);
    CHECK(names == TextList{"", "first", "second"});
    control.events();
    control.SetSelectedGraph(1);
    control.SetSelectedGraph(2);
    control.SetSelectedGraph(-1);
    CHECK(control.events().empty());
    control.SetSelectedGraph(0);
    CHECK(control.events().back() == "NewGraphInFront");
    CHECK(control.GraphIndex() == 0);
    CHECK(control.GraphTitle() == "first");
    CHECK(control::state_of(control).GraphOrder == std::vector<std::int16_t>{1, 0});
}

TEST_CASE("data sets are selected and listed") {
    FilledControl control;
    control.NewDataSet("E", false);
    std::int16_t index = -1;
    control.GetSelectedData(index);
    CHECK(index == 1);
    CHECK_FALSE(control.DataInLegendTable());
    control.SetSelectedData(0);
    control.SetSelectedData(2);
    control.SetSelectedData(-1);
    CHECK(control.DataLegend() == "D");
    TextList names;
    std::int16_t count = 0;
    control.GetDataSetNames(names, count);
    CHECK(count == 2);
    CHECK(names == TextList{"D", "E", ""});
}

TEST_CASE("Reset empties the document and restores the page, whatever stood there") {
    FilledControl control;
    control.GraphLeft(40);
    control.PageColors({.Color1 = 5, .GradientAngle = 30, .Transparent = true});
    control.AxisMarksInFront(true);
    control.SuppressRaisingEvents(true);
    control::state_of(control).Zoomed = control::state_of(control).HScroll1.Visible = true;
    control.Reset();
    CHECK(control.GraphIndex() == 0);
    CHECK_FALSE(control.AxisMarksInFront());
    CHECK(control.SuppressRaisingEvents());
    CHECK_FALSE(control::state_of(control).Zoomed);
    CHECK_FALSE(control::state_of(control).HScroll1.Visible);
    control.NewGraph("again");
    CHECK(control.events().empty());
    CHECK(control.GraphLeft() == 0);
    CHECK(control.PageColor1() == 0xFFFFFF);
    CHECK(control.PageGradient() == 90);
    CHECK(control.PageTransparent() == -1);
    CHECK(control.graph().NumDataSets() == 0);
}

TEST_CASE("resizing draws only what has been drawn before") {
    FilledControl control;
    int const shown = control.host->pages_shown;
    control.UserControl_Resize(12000, 8000);
    CHECK(control.host->pages_shown == shown);
    CHECK(control::state_of(control).PageWidth == 12000 - 255 - 70);
    CHECK(control::state_of(control).PageHeight == 8000 - 255 - 70 - 5); // the surface has whole pixels
    control.Refresh();
    control.UserControl_Resize(9000, 6000);
    CHECK(control.host->pages_shown == shown + 2);
    CHECK_FALSE(control::state_of(control).NoRedraw);
    control.UserControl_Resize(0, 0);
    CHECK(control::state_of(control).PageWidth < 0);
}

TEST_CASE("ticks given to an axis must be finite and go with a new axis") {
    FilledControl control;
    control.SetSelectedAxis(0);
    const std::vector<double> majors{1, 2.5}, minors{2};
    control.SetAxisTicks(majors, minors);
    CHECK(control.axis(0).major_tick_values == majors);
    CHECK(control.axis(0).minor_tick_values == minors);
    CHECK(control.axis(1).major_tick_values.empty());
    control.SetAxisTicks(std::vector{1.0, HUGE_VAL});
    CHECK(control.events() == error(5, "SetAxisTicks"));
    CHECK(control.axis(0).major_tick_values == majors);
    document::Axis axis = control.axis(0);
    ResetAxis(control::state_of(control), axis, "new", document::AxisKind::X, 0, 1);
    CHECK(axis.major_tick_values.empty());
}

TEST_CASE("small settings") {
    FilledControl control;
    control.SetCrossHair(3);
    CHECK(control::state_of(control).CrossHairOn);
    CHECK(control::state_of(control).CrossHairStyle == 2);
    control.SetCrossHair(0);
    CHECK_FALSE(control::state_of(control).CrossHairOn);
    control.SetTooltip("tip");
    CHECK(control::state_of(control).Tooltip == "tip");
    control.SetShowXYcoords(true);
    CHECK(control::state_of(control).Label1.Visible);
    control.GraphShowXY(false);
    CHECK(control::state_of(control).Label1.Visible);
    CHECK(control.Version() == "2.13");
    control::state_of(control).PointerX = 3;
    control::state_of(control).PointerY = 4;
    control.Picture1_DblClick();
    std::int16_t key = 65;
    control.Picture1_KeyPress(key);
    CHECK(key == 0);
    CHECK(control.events() == Events{"DblClick 3 4", "KeyPress 65"});
}
