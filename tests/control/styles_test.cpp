#include "control/members_by_name.h"
#include "test_control.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;

namespace {

using Values = std::map<std::string_view, Variant>;

struct StyleRow {
    std::string_view method;
    std::vector<Variant> arguments;
    Values expected; // every other property stays
};

bool same(Variant const& a, Variant const& b) {
    if (std::holds_alternative<std::string>(a) || std::holds_alternative<std::string>(b)) return a == b;
    double const x = number_of<double>(a), y = number_of<double>(b);
    return std::abs(x - y) <= 0.01 * std::abs(x);
}

/// Sets everything a style method could touch to values that are neither its sentinels nor its defaults.
void unsettle(qvGraph& control, bool flags) {
    for (control::PropertyRow const& row : control::property_table()) {
        if (!row.let || row.target == "control") continue;
        bool const is_flag = row.kind == "boolean" || row.conversion == "flag";
        if (row.accepts != control::Accepts::Number)
            row.let(control, row.conversion == "time_zone"     ? "local"
                             : row.conversion == "color_table" ? "ember"
                             : row.conversion == "levels"      ? "5"
                             : row.conversion == "dashes"      ? "3"
                                                               : "old");
        else
            row.let(control, is_flag ? Variant(flags) : Variant(7));
    }
}

void check_row(StyleRow const& row, bool flags) {
    CAPTURE(row.method);
    CAPTURE(row.arguments.size());
    FilledControl control;
    unsettle(control, flags);
    Values expected;
    for (control::PropertyRow const& property : control::property_table())
        expected[property.name] = property.get(control);
    for (auto const& [name, value] : row.expected) expected.at(name) = value;
    std::vector<Variant> arguments = row.arguments;
    control.Call(row.method, arguments);
    CHECK(control.events().empty());
    // A legend that is given a place stands there.
    if (row.expected.contains("LegendTableLeft")) expected.at("LegendPlace") = 0;
    for (auto const& [name, value] : expected) {
        CAPTURE(name);
        CHECK(same(control.Get(name), value));
    }
}

const std::vector<StyleRow> style_rows{
    // Without arguments: sentinels leave alone, everything else takes its default.
    {"AxisStyle", {}, {{"AxisLog", false}, {"AxisReverse", false}, {"AxisFarSide", false}}},
    {"AxisScaleStyle",
     {},
     {{"AxisValue1", 0},
      {"AxisValue2", 0},
      {"AxisScale", 1},
      {"AxisTextLabels", ""},
      {"AxisMajorDivs", 0},
      {"AxisMinorDivs", 0}}},
    {"AxisTitleStyle", {}, {{"AxisTitleShift", -1}, {"AxisShowTitle", true}}},
    {"AxisLabelStyle", {}, {{"AxisLabelShift", 0}, {"AxisLabelsHoriz", 0}, {"AxisShowLabels", true}}},
    {"AxisGridStyle", {}, {{"AxisGridMajor", true}, {"AxisGridMinor", true}}},
    {"AxisTickStyle",
     {},
     {{"AxisTicksInside", true}, {"AxisTicksOutside", false}, {"AxisTicksBothEnds", true}}},
    {"GraphPosition", {}, {{"GraphWholePage", false}}},
    {"BorderWidths", {}, {}},
    {"BorderStyle", {}, {{"BorderGStyle", 1}, {"BorderTransparent", 0}}},
    {"PageColors", {}, {{"PageGStyle", 1}, {"PageTransparent", 0}}},
    {"PlotAreaColors", {}, {{"PlotAreaGStyle", 1}, {"PlotAreaTransparent", 0}}},
    {"GraphTitleStyle", {}, {{"GraphTitleVShift", 0}, {"GraphTitleHShift", 0}, {"GraphShowTitle", true}}},
    {"LegendTableStyle", {}, {{"LegendGStyle", 1}, {"LegendTransparent", 0}, {"LegendShow", true}}},
    {"SymbolStyle",
     {},
     {{"Bar3D", false},
      {"BarOffset", 0},
      {"BarBase", false},
      {"BarBaseValue", 0},
      {"BarShadow", false},
      {"BarStacked", false},
      {"ShowErrorBar", true},
      {"ErrorBarColor", 0},
      {"DataTextFont", ""}}},
    {"DataLine", {}, {{"DataLineStyle", 1}, {"DataLineThickness", 1}}},

    // With all arguments, each different.
    {"AxisStyle",
     {11, 2, true, false, true},
     {{"AxisColor", 11},
      {"AxisThickness", 2},
      {"AxisLog", true},
      {"AxisReverse", false},
      {"AxisFarSide", true}}},
    {"AxisScaleStyle",
     {1.5, 9.5, -1, 4, 2, "a,b"},
     {{"AxisValue1", 1.5},
      {"AxisValue2", 9.5},
      {"AxisScale", 2},
      {"AxisTextLabels", "a,b"},
      {"AxisMinorDivs", 4}}},
    {"AxisTitleStyle",
     {"T", "F", 12, 3, false},
     {{"AxisTitle", "T"},
      {"AxisTitleFont", "F"},
      {"AxisTitleColor", 12},
      {"AxisTitleShift", 3},
      {"AxisShowTitle", false}}},
    {"AxisLabelStyle",
     {"F", 12, 3, 44.5, false},
     {{"AxisLabelFont", "F"},
      {"AxisLabelColor", 12},
      {"AxisLabelShift", 3},
      {"AxisLabelsHoriz", 44},
      {"AxisShowLabels", false}}},
    {"AxisGridStyle",
     {11, 12, false, true},
     {{"AxisMajGridColor", 11}, {"AxisMinGridColor", 12}, {"AxisGridMajor", false}, {"AxisGridMinor", true}}},
    {"AxisTickStyle",
     {2, 4.0, false, true, false},
     {{"AxisTickThickness", 2},
      {"AxisTickLength", 4},
      {"AxisTicksInside", false},
      {"AxisTicksOutside", true},
      {"AxisTicksBothEnds", false}}},
    {"GraphPosition",
     {10, 20, 30, 40},
     {{"GraphLeft", 10},
      {"GraphTop", 20},
      {"GraphWidth", 30},
      {"GraphHeight", 40},
      {"GraphWholePage", false}}},
    {"BorderWidths",
     {10, 20, 30, 40},
     {{"BorderLeft", 10},
      {"BorderTop", 20},
      {"BorderRight", 30},
      {"BorderBottom", 40},
      {"PlotLeftMargin", 10},
      {"PlotTopMargin", 20},
      {"PlotRightMargin", 30},
      {"PlotBottomMargin", 40}}},
    {"BorderStyle",
     {11, 12, 45, 0.5, 99, true, -1, 20, -1, 40},
     {{"BorderColor1", 11},
      {"BorderColor2", 12},
      {"BorderGradient", 45},
      {"BorderGShift", 0.5},
      {"BorderTransparent", -1},
      {"BorderTop", 20},
      {"BorderBottom", 40},
      {"PlotTopMargin", 20},
      {"PlotBottomMargin", 40}}},
    {"PageColors",
     {11, -1, 45, 0.5, 3, true},
     {{"PageColor1", 11},
      {"PageColor2", 11},
      {"PageGradient", 45},
      {"PageGShift", 0.5},
      {"PageGStyle", 3},
      {"PageTransparent", -1}}},
    {"PlotAreaColors",
     {11, 12, 45, 0.5, 2.5, true},
     {{"PlotAreaColor1", 11},
      {"PlotAreaColor2", 12},
      {"PlotAreaGradient", 45},
      {"PlotAreaGShift", 0.5},
      {"PlotAreaGStyle", 2},
      {"PlotAreaTransparent", -1}}},
    {"GraphTitleStyle",
     {"", "F", 12, 2, 3, false},
     {{"GraphTitleFont", "F"},
      {"GraphTitleColor", 12},
      {"GraphTitleHShift", 2},
      {"GraphTitleVShift", 3},
      {"GraphShowTitle", false}}},
    {"LegendTableStyle",
     {"F", 12, 5.0, 6.0, 13, 2, 14, 15, 45, 0.5, 4, true, false},
     {{"LegendFont", "F"},
      {"LegendFontColor", 12},
      {"LegendTableLeft", 5},
      {"LegendTableTop", 6},
      {"LegendEdgeColor", 13},
      {"LegendEdgeThickness", 2},
      {"LegendTableColor1", 14},
      {"LegendTableColor2", 15},
      {"LegendGradient", 45},
      {"LegendGshift", 0.5},
      {"LegendGStyle", 4},
      {"LegendTransparent", -1},
      {"LegendShow", false}}},
    {"SymbolStyle",
     {-1, 4.0, 11, 12, 2, true, 0.5, true, true, true, 3.5, false, "F", 13},
     {{"DataSymbol", -1},
      {"DataSymbolSize", 4},
      {"DataSymbolColor", 11},
      {"DataSymbolEdgeColor", 12},
      {"DataSymbolEdgeThickness", 2},
      {"Bar3D", true},
      {"BarOffset", 0.5},
      {"BarShadow", true},
      {"BarStacked", true},
      {"BarBase", true},
      {"BarBaseValue", 3.5},
      {"ShowErrorBar", false},
      {"ErrorBarColor", 13},
      {"DataTextFont", "F"}}},
    {"DataLine", {11, -1, 4}, {{"DataLineColor", 11}, {"DataLineStyle", 4}}},
};

} // namespace

TEST_CASE("style methods set what they name and leave everything else") {
    for (StyleRow const& row : style_rows) {
        check_row(row, true);
        check_row(row, false);
    }
}

TEST_CASE("an omitted second colour follows the first, in the caller's variable too") {
    FilledControl control;
    BorderStyleArguments border{.Color1 = 0xFF};
    control.BorderStyle(border);
    CHECK(border.Color2 == 0xFF);
    CHECK(control.BorderColor2() == 0xFF);
    SymbolStyleArguments neither;
    control.SymbolStyle(neither);
    CHECK(neither.Color2 == -1);
    std::vector<Variant> arguments{0xFF, {}, {}};
    control.Call("PlotAreaColors", arguments);
    CHECK(arguments[1] == Variant(0xFF));
    CHECK(arguments[2].is_empty());
}

TEST_CASE("style methods are called by order or by name, with any type of number") {
    FilledControl control;
    double const left = 12.5;
    int const top = 20;
    control.GraphPosition({left, top, 50, 50});
    CHECK(control.GraphLeft() == 12.5f);
    control.AxisStyle({.LineColor = 0x80000018});
    CHECK(control.AxisColor() == system_color(0x18));
    control.GraphTitleStyle({.Title = "New"});
    CHECK(control.GraphTitle() == "New");
    AxisGridStyleArguments const grid{.MajorGridColor = 7};
    control.AxisGridStyle(grid);
    CHECK(control.AxisMajGridColor() == 7);
}

TEST_CASE("a failing style method reports itself and keeps what it set before") {
    FilledControl control;
    control.LegendTableStyle({.EdgeColor = 5, .EdgeThickness = 300, .Color1 = 6});
    CHECK(control.events() == error(6, "LegendTableStyle"));
    CHECK(control.LegendEdgeColor() == 5);
    CHECK(control.LegendTableColor1() != 6);
    control.BorderStyle({.Color1 = 5, .Left = 1e38});
    CHECK(control.events() == error(6, "BorderWidths"));
    CHECK(control.BorderColor1() == 5);
    control.DataLine({.Thickness = 40000, .Style = 3});
    CHECK(control.events() == error(6, "DataLine"));
    CHECK(control.DataLineStyle() == 3);
    control.SetCrossHair(300);
    CHECK(control.events() == error(6, "SetCrossHair"));
}
