// The looks that come with the control. Which colours data sets get is checked by looks_test.cpp: told apart
// by those who miss a kind of cone, and in grey.
#include "base/text.h"
#include "qvgraph/fault.h"
#include "qvgraph/looks.h"

#include <algorithm>

namespace qv {
namespace {

/// The colours of which the table of a look is made.
struct Inks {
    Color page, plot;
    Color text;   // titles and legends
    Color labels; // at ticks
    Color axis;   // lines and ticks
    Color grid, fine_grid;
    Color legend_edge;
};

LookValues page_values(Inks const& inks) {
    return {{"PageColor1", inks.page},
            {"PageColor2", inks.page},
            {"BorderColor1", inks.page},
            {"BorderColor2", inks.page},
            {"BorderEdgeThickness", 0},
            {"PlotAreaColor1", inks.plot},
            {"PlotAreaColor2", inks.plot},
            {"GraphTitleFont", "Arial|12|Bold"},
            {"GraphTitleColor", inks.text},
            {"GraphTitleVShift", 1},
            {"LegendFont", "Arial|9"},
            {"LegendFontColor", inks.text},
            {"LegendTableColor1", inks.plot},
            {"LegendTableColor2", inks.plot},
            {"LegendEdgeColor", inks.legend_edge},
            {"LegendPlace", 1},
            // Millimetres, and more where FitMargins needs more.
            {"BorderLeft", 6},
            {"BorderRight", 6},
            {"BorderTop", 5},
            {"BorderBottom", 5}};
}

LookValues axis_values(Inks const& inks) {
    return {{"AxisColor", inks.axis},
            {"AxisTickLength", 1},
            {"AxisTicksInside", false},
            {"AxisTicksOutside", true},
            {"AxisTicksBothEnds", false},
            {"AxisLabelFont", "Arial|9"},
            {"AxisLabelColor", inks.labels},
            {"AxisLabelsHoriz", 0},
            {"AxisTitleFont", "Arial|10"},
            {"AxisTitleColor", inks.text},
            {"AxisLabelShift", -1},
            {"AxisTitleShift", -1},
            {"AxisGridMajor", true},
            {"AxisMajGridColor", inks.grid},
            {"AxisMinGridColor", inks.fine_grid}};
}

LookValues data_values(Inks const& inks) {
    return {{"DataLineStyle", 1},        {"DataLineThickness", 2},     {"DataSymbolSize", 2},
            {"DataTextFont", "Arial|9"}, {"DataTextColor", inks.text}, {"BarShadowColor", inks.grid}};
}

Look look_in(std::string_view name, Inks const& inks) {
    Look look;
    look.name = name;
    look.symbols = {0};
    for (LookValues values : {page_values(inks), axis_values(inks), data_values(inks)})
        look.values.merge(values);
    look.unnamed_axes = {{"AxisShowTitle", false}};
    look.further_axes = {{"AxisGridMajor", false}};
    look.switches = {"ThinTickLabels", "AdaptiveCurves", "DotLonePoints", "FitMargins",       "RoundTicks",
                     "AutoFit",        "DataOwnAxes",    "RichText",      "TellFormulaErrors"};
    return look;
}

Look light() {
    Look look = look_in("light", {.page = rgb(255, 255, 255),
                                  .plot = rgb(255, 255, 255),
                                  .text = rgb(45, 50, 60),
                                  .labels = rgb(80, 87, 99),
                                  .axis = rgb(140, 147, 158),
                                  .grid = rgb(230, 233, 238),
                                  .fine_grid = rgb(243, 245, 247),
                                  .legend_edge = rgb(214, 218, 225)});
    look.palette = {rgb(11, 107, 203), rgb(245, 117, 16),  rgb(37, 139, 92),   rgb(186, 18, 30),
                    rgb(30, 62, 178),  rgb(101, 178, 233), rgb(196, 107, 163), rgb(57, 57, 71)};
    return look;
}

Look dark() {
    Look look = look_in("dark", {.page = rgb(27, 30, 37),
                                 .plot = rgb(27, 30, 37),
                                 .text = rgb(226, 230, 237),
                                 .labels = rgb(176, 183, 195),
                                 .axis = rgb(112, 120, 134),
                                 .grid = rgb(50, 55, 66),
                                 .fine_grid = rgb(38, 42, 51),
                                 .legend_edge = rgb(70, 77, 91)});
    look.palette = {rgb(105, 153, 240), rgb(240, 201, 47),  rgb(58, 193, 143),  rgb(220, 62, 61),
                    rgb(159, 120, 176), rgb(161, 229, 255), rgb(251, 159, 206), rgb(240, 237, 180)};
    return look;
}

/// For paper without colour: lines by their dashes and symbols, bars and areas by greys with an edge.
Look print() {
    constexpr Color black = rgb(0, 0, 0), white = rgb(255, 255, 255);
    Look look = look_in("print", {.page = white,
                                  .plot = white,
                                  .text = black,
                                  .labels = black,
                                  .axis = black,
                                  .grid = rgb(217, 217, 217),
                                  .fine_grid = rgb(236, 236, 236),
                                  .legend_edge = rgb(128, 128, 128)});
    look.values["DataSymbolSpacing"] = 9;
    look.palette = {black};
    auto const grey = [](int level) { return rgb(level, level, level); };
    look.fills = {grey(90), grey(205), grey(150), grey(30), grey(235), grey(120), grey(178), grey(60)};
    look.filled = {
        {"DataSymbolEdgeThickness", 1}, {"DataSymbol", 0}, {"DataLineDash", 0}, {"DataLineThickness", 1}};
    look.dashes = {0, 1, 2, 3, 4, 0, 1, 2};
    // The first is a plain line. Then square, triangle, circle, cross, triangle downwards, plus, diamond.
    look.symbols = {0, 4, 6, 3, 11, 7, 10, 5};
    return look;
}

Look classic() {
    Look look;
    look.name = "classic";
    return look;
}

struct LookRow {
    std::string_view name;
    Look (*make)();
};
constexpr LookRow looks[] = {{"light", light}, {"dark", dark}, {"print", print}, {"classic", classic}};

} // namespace

std::vector<std::string_view> look_names() {
    std::vector<std::string_view> names;
    for (LookRow const& row : looks) names.push_back(row.name);
    return names;
}

Look look(std::string_view name) {
    for (LookRow const& row : looks)
        if (equals_ignoring_case(row.name, name)) return row.make();
    std::string known;
    for (LookRow const& row : looks) known += (known.empty() ? "" : ", ") + std::string(row.name);
    raise_fault(FaultNumber::InvalidProcedureCall,
                "UseLook knows no look named \"" + std::string(name) + "\". The looks are " + known + ".");
}

} // namespace qv
