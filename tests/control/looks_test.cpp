#include "control/members_by_name.h"
#include "control/property_access.h"
#include "qvgraph/looks.h"
#include "test_control.h"

#include <doctest/doctest.h>

#include <numbers>
#include <set>

using namespace qv;
using namespace qv::test;

namespace {

constexpr double pi = std::numbers::pi;

struct Triple {
    double a = 0, b = 0, c = 0;
};
using Matrix = Triple[3];

Triple product(Matrix const& m, Triple v) {
    auto const row = [&](Triple const& r) { return r.a * v.a + r.b * v.b + r.c * v.c; };
    return {row(m[0]), row(m[1]), row(m[2])};
}

// G. M. Machado, M. M. Oliveira, L. A. F. Fernandes: A Physiologically-based Model for Simulation of Color
// Vision Deficiency, IEEE Transactions on Visualization and Computer Graphics 15 (2009), 1291-1298: the
// matrices of severity 1.0, for linear RGB.
constexpr Matrix all_cones{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
constexpr Matrix protan{
    {0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}};
constexpr Matrix deutan{
    {0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}};
constexpr Matrix tritan{
    {1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}};

// IEC 61966-2-1.
Triple linear(Color color) {
    auto const level = [color](int shift) {
        double const share = (color >> shift & 0xFF) / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return {level(0), level(8), level(16)};
}

// WCAG 2.1: relative luminance and contrast ratio.
double luminance(Color color) {
    const Triple light = linear(color);
    return 0.2126 * light.a + 0.7152 * light.b + 0.0722 * light.c;
}

double contrast(Color a, Color b) {
    auto const [dark, bright] = std::minmax({luminance(a), luminance(b)});
    return (bright + 0.05) / (dark + 0.05);
}

/// CIE L*a*b* under D65.
Triple lab(Triple light) {
    constexpr Matrix xyz{{0.4124564, 0.3575761, 0.1804375},
                         {0.2126729, 0.7151522, 0.0721750},
                         {0.0193339, 0.1191920, 0.9503041}};
    auto const inside = [](double level) { return std::clamp(level, 0.0, 1.0); };
    const Triple seen = product(xyz, {inside(light.a), inside(light.b), inside(light.c)});
    const Triple white = product(xyz, {1, 1, 1});
    auto const f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    double const x = f(seen.a / white.a), y = f(seen.b / white.b), z = f(seen.c / white.c);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

/// CIEDE2000 (CIE 142-2001): the difference of two colours; 1 can just be seen side by side.
double difference(Triple p, Triple q) {
    auto const to_7 = [](double value) { return std::pow(value, 7); };
    constexpr double most = 6103515625.0; // 25^7
    auto const cosine = [](double degrees) { return std::cos(degrees * pi / 180); };
    auto const sine = [](double degrees) { return std::sin(degrees * pi / 180); };
    double const chroma = (std::hypot(p.b, p.c) + std::hypot(q.b, q.c)) / 2;
    double const g = 0.5 * (1 - std::sqrt(to_7(chroma) / (to_7(chroma) + most)));
    double const a1 = p.b * (1 + g), a2 = q.b * (1 + g);
    double const c1 = std::hypot(a1, p.c), c2 = std::hypot(a2, q.c);
    auto const hue = [](double a, double b) { return std::fmod(std::atan2(b, a) * 180 / pi + 360, 360); };
    double const h1 = hue(a1, p.c), h2 = hue(a2, q.c);
    double turn = c1 * c2 == 0 ? 0 : h2 - h1;
    if (turn > 180) turn -= 360;
    if (turn < -180) turn += 360;
    double middle_hue = (h1 + h2) / 2;
    if (std::abs(h1 - h2) > 180) middle_hue += middle_hue < 180 ? 180 : -180;
    if (c1 * c2 == 0) middle_hue = h1 + h2;
    double const middle_l = (p.a + q.a) / 2 - 50, middle_c = (c1 + c2) / 2;
    double const t = 1 - 0.17 * cosine(middle_hue - 30) + 0.24 * cosine(2 * middle_hue)
                     + 0.32 * cosine(3 * middle_hue + 6) - 0.2 * cosine(4 * middle_hue - 63);
    double const l = (q.a - p.a) / (1 + 0.015 * middle_l * middle_l / std::sqrt(20 + middle_l * middle_l));
    double const c = (c2 - c1) / (1 + 0.045 * middle_c);
    double const h = 2 * std::sqrt(c1 * c2) * sine(turn / 2) / (1 + 0.015 * middle_c * t);
    double const rotation = -2 * std::sqrt(to_7(middle_c) / (to_7(middle_c) + most))
                            * sine(60 * std::exp(-std::pow((middle_hue - 275) / 25, 2)));
    return std::sqrt(l * l + c * c + h * h + rotation * c * h);
}

Color color_of(Look const& look, std::string const& property) {
    return number_of<std::int32_t>(look.values.at(property));
}

using Values = std::map<std::string_view, Variant>;

Values values_of(qvGraph const& control) {
    Values values;
    for (control::PropertyRow const& row : control::property_table())
        if (row.name != "LookName") values[row.name] = row.get(control);
    return values;
}

/// The names of the properties that differ.
std::string differences(Values const& a, Values const& b) {
    std::string names;
    for (auto const& [name, value] : a)
        if (!(b.at(name) == value)) names += std::string(name) + " ";
    return names;
}

void fill(Control& control) {
    control.NewGraph("G");
    control.NewYAxis("second");
    for (int set = 0; set < 3; ++set) {
        control.NewDataSet("D");
        control.AddDataPoint(1, 2);
    }
    control.AddMathFunc("x");
    control.NewDataSet("E");
}

} // namespace

TEST_CASE("the difference of two colours is that of the published examples") {
    // G. Sharma, W. Wu, E. N. Dalal: The CIEDE2000 Color-Difference Formula (2005), pairs 1, 7, 14, 17,
    // 20, 25.
    struct Row {
        Triple a, b;
        double difference;
    };
    for (auto const& [a, b, expected] :
         {Row{{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425}, Row{{50, 0, 0}, {50, -1, 2}, 2.3669},
          Row{{50, -0.001, 2.49}, {50, 0.0011, -2.49}, 4.7461}, Row{{50, 2.5, 0}, {73, 25, -18}, 27.1492},
          Row{{50, 2.5, 0}, {58, 24, 15}, 19.4535},
          Row{{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644}})
        CHECK(difference(a, b) == doctest::Approx(expected).epsilon(0.0001));
}

TEST_CASE("eight colours are told apart by all eyes and in grey, and from the page") {
    for (std::string const name : {"light", "dark"}) {
        CAPTURE(name);
        const Look look = qv::look(name);
        REQUIRE(look.palette.size() == 8);
        for (auto const* const eyes : {&all_cones, &protan, &deutan, &tritan})
            for (std::size_t i = 0; i < 8; ++i)
                for (std::size_t j = 0; j < i; ++j) {
                    CAPTURE(i);
                    CAPTURE(j);
                    CHECK(difference(lab(product(*eyes, linear(look.palette[i]))),
                                     lab(product(*eyes, linear(look.palette[j]))))
                          >= 11);
                }
        std::vector<double> lightness;
        for (Color const color : look.palette) {
            lightness.push_back(lab(linear(color)).a);
            CHECK(contrast(color, color_of(look, "PlotAreaColor1")) >= 2.3);
        }
        std::ranges::sort(lightness);
        for (std::size_t i = 1; i < 8; ++i) CHECK(lightness[i] - lightness[i - 1] >= 5);
    }
}

TEST_CASE("in print data sets differ in dashes or symbols, and bars in grey") {
    const Look print = look("print");
    std::set<std::pair<int, int>> kinds;
    for (std::size_t i = 0; i < 8; ++i)
        kinds.emplace(print.dashes[i % print.dashes.size()], print.symbols[i % print.symbols.size()]);
    CHECK(kinds.size() == 8);
    CHECK(std::set(print.palette.begin(), print.palette.end()) == std::set<Color>{0});
    std::vector<double> lightness;
    for (Color const color : print.fills) lightness.push_back(lab(linear(color)).a);
    std::ranges::sort(lightness);
    for (std::size_t i = 1; i < lightness.size(); ++i) CHECK(lightness[i] - lightness[i - 1] >= 8);
}

TEST_CASE("texts stand out from what they are written on") {
    for (std::string const name : {"light", "dark", "print"}) {
        const Look look = qv::look(name);
        for (char const* const text :
             {"GraphTitleColor", "AxisTitleColor", "AxisLabelColor", "LegendFontColor", "DataTextColor"})
            for (char const* const below :
                 {"PageColor1", "BorderColor1", "PlotAreaColor1", "LegendTableColor1"}) {
                CAPTURE(name);
                CAPTURE(text);
                CHECK(contrast(color_of(look, text), color_of(look, below)) >= 4.5);
            }
    }
}

TEST_CASE("every look goes and leaves nothing, whatever came before") {
    for (std::string_view const name : look_names()) {
        CAPTURE(name);
        Control control, plain;
        fill(control);
        fill(plain);
        Values const classic = values_of(plain);
        control.UseLook(name);
        CHECK(control.LookName() == name);
        CHECK(differences(values_of(control), classic).empty() == (name == "classic"));
        Control later;
        later.UseLook(name);
        fill(later);
        for (int set = 0; set < 4; ++set) {
            for (Control* const page : {&control, &later, &plain}) page->SetSelectedData(set);
            CHECK(differences(values_of(control), values_of(later)) == "");
        }
        control.UseLook("print");
        control.UseLook("classic");
        for (int set = 3; set >= 0; --set)
            for (int axis = 0; axis < 3; ++axis) {
                for (Control* const page : {&control, &plain}) {
                    page->SetSelectedData(set);
                    page->SetSelectedAxis(axis);
                }
                CHECK(differences(values_of(control), values_of(plain)) == "");
            }
        CHECK(control.events() == later.events());
    }
}

TEST_CASE("a look leaves alone whatever the host has set, before or after it, by whichever way") {
    for (control::PropertyRow const& row : control::property_table()) {
        if (!row.let) continue;
        CAPTURE(row.name);
        FilledControl before, after;
        after.UseLook("light");
        Variant value = row.get(before);
        if (row.accepts == control::Accepts::Number && row.name != "AxisValue1" && row.name != "AxisValue2")
            value = 5;
        for (Control* const control : {static_cast<Control*>(&before), static_cast<Control*>(&after)})
            control->Let(row.name, value);
        Variant const kept = row.get(before);
        before.UseLook("dark");
        after.UseLook("dark");
        CHECK(row.get(before) == kept);
        CHECK(row.get(after) == kept);
        before.UseLook("classic");
        CHECK(row.get(before) == kept);
    }
    FilledControl control;
    control.AxisTickStyle({.Length = 4, .Inside = true});
    control.DataLine({.Thickness = 300});
    control.AddText("T", 1, 2, 0, "Times|20", 0x123456, 0, false);
    control.PlotLeftMargin(30);
    control.UseLook("dark");
    CHECK(control.AxisTicksInside());
    CHECK(control.data(0).DataLineThickness == 300);
    CHECK(control.DataTextColor() == 0x123456);
    CHECK(control.DataTextFont() == "Times|20");
    CHECK(control.BorderLeft() == 30);
}

TEST_CASE("a data set is a line, or what the host makes of it") {
    struct Row {
        int symbol, line; // -9: left alone
        int shown_symbol, shown_line;
    };
    for (Row const& row : {Row{-9, -9, 0, 1}, Row{1, -9, 1, 0}, Row{6, -9, 6, 0}, Row{0, -9, 0, 1},
                           Row{-9, 0, 4, 0}, Row{-9, 3, 0, 3}, Row{5, 1, 5, 1}, Row{0, 0, 0, 0}}) {
        CAPTURE(row.symbol);
        CAPTURE(row.line);
        Control control;
        control.UseLook("light");
        control.NewGraph("G");
        control.NewDataSet("first");
        control.NewDataSet("second");
        if (row.line != -9) control.DataLineStyle(row.line);
        if (row.symbol != -9) control.DataSymbol(row.symbol);
        CHECK(control.DataSymbol() == row.shown_symbol);
        CHECK(control.DataLineStyle() == row.shown_line);
        control.UseLook("dark");
        CHECK(control.DataSymbol() == row.shown_symbol);
        CHECK(control.DataLineStyle() == row.shown_line);
    }
    Control control;
    control.UseLook("print");
    control.NewGraph("G");
    control.NewDataSet("bars");
    control.SymbolStyle({.Symbol = 1, .Size = 8});
    CHECK(control.DataSymbolColor() == look("print").fills[0]);
    CHECK(control.DataSymbolEdgeThickness() == 1);
    control.NewDataSet("function");
    control.AddMathFunc("x");
    control.NewDataSet("line");
    CHECK(control.DataSymbol() == look("print").symbols[2]);
    CHECK(control.DataLineStyle() == 1);
    control.SetSelectedData(1);
    CHECK(control.DataSymbol() == 0);
}

TEST_CASE("only axes with a name show it, and only the first of a kind its grid") {
    Control control;
    control.UseLook("light");
    control.NewGraph("G");
    CHECK_FALSE(control.AxisShowTitle());
    CHECK(control.AxisTitle() == "x-axis");
    control.AxisTitle("time");
    CHECK(control.AxisShowTitle());
    control.NewYAxis("pressure");
    control.SelectYaxis(2);
    CHECK(control.AxisShowTitle());
    CHECK_FALSE(control.AxisGridMajor());
    control.SelectYaxis(1);
    CHECK(control.AxisGridMajor());
}

TEST_CASE("a look lasts through Reset, which takes back what the host has set of the page") {
    FilledControl control;
    control.UseLook("dark");
    Color const page = control.PageColor1();
    control.PageColors({.Color1 = 0x123456});
    control.Reset();
    CHECK(control.LookName() == "dark");
    CHECK(control.state().Picture1->state.BackColor == page);
    control.NewGraph("G");
    CHECK(control.PageColor1() == page);
    control.UseLook("classic");
    CHECK(control.PageColor1() == 0xFFFFFF);
}

TEST_CASE("a host's own look, and what is none") {
    FilledControl control;
    Look mine = look("Light");
    CHECK(mine.name == "light");
    mine.name = "house";
    mine.values["axiscolor"] = 0x123456;
    mine.palette = {7, 8};
    control.UseLook(mine);
    CHECK(control.LookName() == "house");
    CHECK(control.AxisColor() == 0x123456);
    control.NewDataSet("second");
    control.NewDataSet("third");
    CHECK(control.DataLineColor() == 7);
    CHECK(control.AdaptiveCurves());

    Values const before = values_of(control);
    auto const fault_of = [&](auto const& change) {
        Look bad = look("dark");
        change(bad);
        return fault_number([&] { control.UseLook(bad); });
    };
    CHECK(fault_of([](Look& bad) { bad.values["AxisColour"] = 1; }) == 438);
    CHECK(fault_of([](Look& bad) { bad.values["NumGraphs"] = 1; }) == 438);
    CHECK(fault_of([](Look& bad) { bad.values["AxisValue1"] = 1; }) == 5);
    CHECK(fault_of([](Look& bad) { bad.values["AxisColor"] = "red"; }) == 13);
    CHECK(fault_of([](Look& bad) { bad.values["AxisThickness"] = 300; }) == 6);
    CHECK(fault_of([](Look& bad) { bad.further_axes["AxisThickness"] = 300; }) == 6);
    CHECK(fault_of([](Look& bad) { bad.symbols = {0, 0, 40000}; }) == 6);
    CHECK(fault_of([](Look& bad) { bad.switches = {"Bright"}; }) == 438);
    CHECK(fault_number([&] { control.UseLook("bright"); }) == 5);
    CHECK(differences(values_of(control), before) == "");
    CHECK(control.LookName() == "house");
    try {
        control.Call("UseLook", {"bright"});
        FAIL("an unknown look was taken");
    } catch (Fault const& fault) {
        for (std::string_view const name : look_names())
            CHECK(fault.description.find(name) != std::string::npos);
    }
    control.Call("uselook", {"DARK"});
    CHECK(control.Get("LookName") == Variant("dark"));
}
