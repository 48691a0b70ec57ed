#include "control/document.h"
#include "control/members_by_name.h"
#include "control/state_of.h"
#include "test_control.h"

#include <doctest/doctest.h>

#include <limits>
#include <set>

using namespace qv;
using namespace qv::test;
using control::Accepts;
using control::property_table;
using control::PropertyRow;

namespace {

using Snapshot = std::map<std::string_view, Variant>;

Snapshot snapshot(qvGraph const& control) {
    Snapshot values;
    for (PropertyRow const& row : property_table()) values[row.name] = row.get(control);
    return values;
}

std::set<std::string_view> differences(Snapshot const& before, Snapshot const& after) {
    std::set<std::string_view> names;
    for (auto const& [name, value] : before)
        if (!(after.at(name) == value)) names.insert(name);
    return names;
}

/// Properties that may change when `changed` is set: those on the same field, and what the row says follows.
std::set<std::string_view> may_change(PropertyRow const& changed) {
    std::set<std::string_view> names;
    for (PropertyRow const& row : property_table())
        if (row.target == changed.target && row.field == changed.field) names.insert(row.name);
    if (changed.then == "fix_range") names.insert("AxisScale");
    return names;
}

/// A text that a property takes: not each takes any.
Variant fitting_text(PropertyRow const& row, char const* any) {
    static const std::map<std::string_view, char const*> by_conversion{
        {"time_zone", "Europe/Berlin"}, {"color_table", "tide"}, {"levels", "1; 2"}, {"dashes", "6 2"}};
    auto const found = by_conversion.find(row.conversion);
    return found == by_conversion.end() ? any : found->second;
}

Variant another_value(PropertyRow const& row, Variant const& present) {
    if (row.kind == "boolean") return !number_of<bool>(present);
    if (row.accepts == Accepts::Number) return number_of<double>(present) == 3.0 ? 5 : 3;
    return fitting_text(row, "Font=Times|12");
}

/// A number that does not fit the property; not-a-number for those that take every finite one.
double unfitting(PropertyRow const& row) {
    static const std::map<std::string_view, double> by_conversion{
        {"byte", 300}, {"rounded", 40000}, {"mm_across", 1e38}, {"mm_down", 1e38}, {"half_mm_across", 5000}};
    static const std::map<std::string_view, double> by_kind{
        {"uint8", -1}, {"int16", 40000}, {"int32", 3e9}, {"color", 5e9}, {"float32", 1e39}};
    auto const conversion = by_conversion.find(row.conversion);
    if (conversion != by_conversion.end()) return conversion->second;
    auto const kind = by_kind.find(row.kind);
    return kind == by_kind.end() ? 0 : kind->second;
}

} // namespace

TEST_CASE("every property keeps what it is given and changes nothing else") {
    for (PropertyRow const& row : property_table()) {
        if (!row.let) continue;
        CAPTURE(row.name);
        FilledControl control;
        Snapshot const before = snapshot(control);
        Variant const value = another_value(row, before.at(row.name));
        row.let(control, value);
        Variant const after = row.get(control);
        if (row.conversion == "flag")
            CHECK(number_of<int>(after) == -1);
        else if (row.accepts == Accepts::Number)
            CHECK(number_of<double>(after) == doctest::Approx(number_of<double>(value)).epsilon(0.01));
        else
            CHECK(after == value);
        CHECK(after.index() == before.at(row.name).index());
        auto changed = differences(before, snapshot(control));
        CHECK(changed.contains(row.name));
        for (std::string_view name : may_change(row)) changed.erase(name);
        CHECK(changed.empty());
        CHECK(control.events().empty());
    }
}

TEST_CASE("a number that does not fit is an overflow and changes nothing") {
    for (PropertyRow const& row : property_table()) {
        double const value = unfitting(row);
        if (!row.let || row.accepts != Accepts::Number || value == 0) continue;
        CAPTURE(row.name);
        FilledControl control;
        Snapshot const before = snapshot(control);
        CHECK(fault_number([&] { row.let(control, value); }) == 6);
        CHECK(differences(before, snapshot(control)).empty());
    }
    FilledControl control;
    CHECK(fault_number([&] { control.AxisTickLength(1000); }) == 6);
    CHECK(fault_number([&] { control.LegendGStyle(std::nan("")); }) == 6);
    CHECK(fault_number([&] { control.DataSymbol(std::size_t(-1)); }) == 6);
}

TEST_CASE("a name that is no time zone's is a fault that names it, and changes nothing") {
    FilledControl control;
    control.AxisTimeZone("Asia/Tokyo");
    try {
        control.AxisTimeZone("Asia/Tokio");
        FAIL("an unknown zone was taken");
    } catch (Fault const& fault) {
        CHECK(fault.number == 5);
        CHECK(fault.description.find("\"Asia/Tokio\"") != std::string::npos);
    }
    CHECK(control.AxisTimeZone() == "Asia/Tokyo");
}

TEST_CASE("a property without its graph, axis or data set is an index fault to the caller") {
    auto const check_all = [](qvGraph& control, std::set<std::string_view> const& present) {
        for (PropertyRow const& row : property_table()) {
            CAPTURE(row.name);
            int const expected = present.contains(row.target) ? 0 : 9;
            CHECK(fault_number([&] { row.get(control); }) == expected);
            Variant const value = row.accepts == Accepts::Number ? Variant(1) : fitting_text(row, "1");
            if (row.let) CHECK(fault_number([&] { row.let(control, value); }) == expected);
        }
    };
    Control empty;
    check_all(empty, {"control"});
    FilledControl cleared;
    control::ClearGraphData(control::state_of(cleared));
    check_all(cleared, {"control", "graph", "page"});
    CHECK(cleared.events().empty());
}

TEST_CASE("lengths are stored in twips, sizes as fractions") {
    FilledControl control;
    control.GraphLeft(25);
    control.AxisTickLength(3);
    control.DataSymbolSize(3);
    control.PlotTopMargin(10);
    control.BorderGStyle(2.5);
    control.LegendTransparent(5);
    control.BarOffset(0.5);
    CHECK(control.graph().GraphLeft == 0.25f);
    CHECK(control.axis(0).AxisTickLength == 170); // 3 mm are 170.08 twips
    CHECK(control.data(0).DataSymbolSize == 85);
    CHECK(control.graph().BorderTop == doctest::Approx(566.93));
    CHECK(control.graph().BorderFill.gStyle == 2);
    CHECK(control.graph().LegendFill.Transparent);
    CHECK(control.data(0).BarOffset == 0.5);
    CHECK(control.BorderTop() == control.PlotTopMargin());
}

TEST_CASE("setting an end of the range fixes the axis, setting its mode brings the full range along") {
    FilledControl control;
    control.AddDataPoint(1, 1);
    control.AddDataPoint(9, 1);
    control.AxisValue1(5);
    CHECK(control.AxisScale() == 1);
    CHECK(control.axis(0).ScaleMin == 5);
    CHECK(control.axis(0).ScaleMax == 9);
    control.AxisScale(0);
    CHECK(control.axis(0).ScaleMin == 1);
    CHECK(control.axis(0).ScaleMax == 9);
    CHECK(control.AxisValue1() == 5);
}

TEST_CASE("values that have no counterpart in C++ types") {
    FilledControl control;
    control.AxisColor(0x80000018);
    CHECK(control.AxisColor() == system_color(0x18));
    control.Let("AxisColor", 2147483672.0);
    CHECK(control.AxisColor() == system_color(0x18));
    control.AxisTitle(2.5);
    CHECK(control.AxisTitle() == "2.5");
    control.DataLine({.Thickness = 300});
    CHECK(fault_number([&] { control.DataLineThickness(); }) == 6);
}

TEST_CASE("the page's first colour is the background of the page surfaces") {
    FilledControl control;
    control.PageColors({.Color1 = 0x123456});
    CHECK(control::state_of(control).Picture1->state.BackColor == 0x123456);
    control.Reset();
    CHECK(control::state_of(control).GraphImage->state.BackColor == 0xFFFFFF);
}
