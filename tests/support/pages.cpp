#include "pages.h"

#include <cmath>
#include <string>
#include <vector>

namespace qv::testing {
namespace {

void add_points(qvGraph& page, int count, bool with_details = false) {
    for (int i = 0; i < count; ++i)
        page.AddDataPoint(1 + i % 9 + i * 0.001, 5 + 4 * std::sin(i), with_details ? 0.5 : 0, 0,
                          with_details ? "the point's own text" : "");
}

void add_series(qvGraph& page, int symbol, int line_style, int count = 12) {
    page.NewDataSet("a series with a name of some length");
    page.DataSymbol(symbol);
    page.DataLineStyle(line_style);
    add_points(page, count);
}

/// A curve of more points than columns, a smooth one, a dotted one, and points given as columns.
void fill_with_lines(qvGraph& page) {
    page.NewGraph("lines", 0, 10, 0, 10);
    for (int const style : {1, 2, 3}) add_series(page, 0, style, 60);
    std::vector<double> column(9000);
    for (std::size_t i = 0; i < column.size(); ++i) column[i] = static_cast<double>(i) / 900;
    page.NewDataSet("columns");
    page.DataLine({.Style = 1});
    page.AddDataPoints(column, column);
    page.DropDataPoints(100);
    for (int const axis : {0, 1}) {
        page.SetSelectedAxis(axis);
        page.AxisGridMajor(true);
        page.AxisGridMinor(true);
    }
}

void fill_with_symbols(qvGraph& page) {
    page.NewGraph("symbols");
    for (int symbol = 1; symbol <= 12; ++symbol) add_series(page, symbol, 0, 6);
    add_series(page, 'x', 0);
    page.SymbolStyle({.Symbol = 4, .Size = 2, .Color1 = 255, .Color2 = 0, .EdgeThickness = 1});
    add_points(page, 8, true);
    add_series(page, 3, 0, 6000);
    page.LegendInFront(false);
    page.AxisMarksInFront(true);
}

void fill_with_bars(qvGraph& page) {
    for (bool const flat : {true, false}) {
        page.NewGraph("bars");
        page.GraphPosition({.Left = flat ? 0.F : 50.F, .Top = 0, .Width = 50, .Height = 100});
        for (int i = 0; i < 2; ++i) {
            add_series(page, -1, 0);
            page.Bar3D(!flat);
            page.BarHoriz(flat);
            page.BarShadow(!flat);
            page.BarStacked(i == 1);
        }
    }
    add_series(page, -1, 0, 300);
}

void fill_with_areas(qvGraph& page) {
    page.NewGraph("areas", 1, 10, 0, 10);
    for (int const style : {4, 5, 6}) {
        add_series(page, 0, style);
        page.BarBase(style != 5);
    }
    page.SetSelectedAxis(0);
    page.AxisLog(true);
    page.NewYAxis("a second axis, turned round", 0, 1);
    page.AxisReverse(true);
    page.AxisFarSide(true);
    add_series(page, 5, 1);
}

void fill_with_functions(qvGraph& page) {
    page.AdaptiveCurves(true);
    page.DefineFunction("bent(a) = a^2 / (a + 3)");
    page.NewGraph("functions", 0, 10, -10, 10);
    page.NewDataSet("sine");
    page.AddMathFunc("10*sin(x)");
    // Each call of a user function takes memory, so that a few samples do.
    page.NewDataSet("bent");
    page.AddMathFunc("bent(x)", 4, 4.2);
    page.AddText("a text over\r\nthe page", 20, 20, 0, "Font=Liberation Serif|12|Bold", 255, 30, true);
    page.SetSelectedAxis(1);
    page.AxisTextLabels("low,middle,quite a high one");
}

void fill_with_gradients(qvGraph& page) {
    page.PageColors({.Color1 = 255, .Color2 = 65535, .GradientAngle = 30});
    for (int i = 0; i < 2; ++i) {
        page.NewGraph("gradients", 0, 10, 0, 10);
        page.GraphPosition(
            {.Left = i == 0 ? 0.F : 30.F, .Top = i == 0 ? 0.F : 20.F, .Width = 65, .Height = 70});
        page.BorderStyle({.Color1 = 65280, .Color2 = 255});
        page.PlotAreaColors({.Color1 = 16711680, .Color2 = 255, .gStyle = 3, .Transparent = i == 1});
        page.LegendTableStyle({.Color1 = 16777215, .Color2 = 255});
        page.GraphTitleStyle(
            {.Title = "a title with a font of its own", .Font = "Font=DejaVu Sans|11|Italic"});
        add_series(page, 3, 1);
    }
    page.SetCrossHair(1);
}

} // namespace

std::array<PageKind, 6> const page_kinds{{{"lines", fill_with_lines},
                                          {"symbols", fill_with_symbols},
                                          {"bars", fill_with_bars},
                                          {"areas", fill_with_areas},
                                          {"functions", fill_with_functions},
                                          {"gradients", fill_with_gradients}}};

} // namespace qv::testing
