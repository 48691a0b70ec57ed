#include "control/members_by_name.h"
#include "test_control.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;

namespace {

bool mentions(Fault const& fault, std::string_view word) {
    return fault.description.find(word) != std::string::npos;
}

} // namespace

TEST_CASE("a graph is built by name") {
    Control control;
    control.Call("newgraph", {"G", 0, 10});
    control.Call("NewDataSet", {"D"});
    control.Call("AddDataPoint", {5, 2.5, {}, {}, "id"});
    control.Call("AxisStyle", {0xFF, {}, true});
    control.Let("axisthickness", 3.0);
    CHECK(control.Get("AxisColor") == Variant(0xFF));
    CHECK(control.Get("AxisLog") == Variant(true));
    CHECK(control.AxisThickness() == 3);
    CHECK(control.data(0).points.at(0).DataID == "id");
    CHECK(control.Call("CheckFormula", {"x +"}) == Variant(control.CheckFormula("x +")));
    CHECK(control.Call("SetSelectedAxis", {1}) == Variant(std::int16_t{1}));
    CHECK(control.Call("GraphTitle") == Variant("G"));
    CHECK(control.Get("Version") == Variant("2.13"));
    control.Let("SuppressRaisingEvents", true);
    CHECK(control.SuppressRaisingEvents());
    control.Let("AxisTitle", 12);
    CHECK(control.Get("AxisTitle") == Variant("12"));
}

TEST_CASE("columns and ticks go by name as lists of numbers") {
    Control control;
    control.Call("NewGraph", {"G", 0, 10});
    control.Call("NewDataSet", {"D"});
    control.Call("AddDataPoints", {NumberList{1, 2, 3}, NumberList{4, 5, 6}});
    control.Call("AddDataPoints", {NumberList{4}, NumberList{7}, NumberList{0.5}, 1});
    CHECK(control.data(0).points.size() == 4);
    CHECK(control.data(0).points.at(3).E == 0.5);
    control.Call("SelectXaxis");
    control.Call("SetAxisTicks", {NumberList{0, 5, 10}});
    CHECK(mentions(fault_of([&] {
                       control.Call("AddDataPoints", {TextList{"1"}, NumberList{4}});
                   }),
                   "a list of numbers, but was given a list of texts"));
    CHECK(fault_of([&] { control.Call("NewGraph", {NumberList{1}}); }).number == 13);
}

TEST_CASE("the page tells its size and its graphs, and takes its gestures, by name") {
    Control control;
    control.UserControl_Resize(12000, 8000);
    CHECK(control.Get("NumGraphs") == Variant(std::int16_t{0}));
    control.NewGraph("G");
    CHECK(control.Get("NumGraphs") == Variant(std::int16_t{1}));
    CHECK(control.Get("PageWidth") == Variant(control.state().PageWidth));
    CHECK(control.Get("UnitsPerMmX") == Variant(control.state().UnitsPerMmX));
    CHECK(fault_of([&] { control.Let("PageHeight", 1); }).number == 438);
    control.Let("GestureWheelZoom", false);
    CHECK_FALSE(control.state().gestures.wheel_zoom);
}

TEST_CASE("results that come through parameters are written back") {
    FilledControl control;
    std::vector<Variant> names(2);
    control.Call("GetAxisNames", names);
    CHECK(names == std::vector<Variant>{TextList{"x-axis", "y-axis", ""}, std::int16_t{2}});
    std::vector<Variant> range(2);
    control.AxisValue2(4);
    control.Call("GetAxisRange", range);
    CHECK(range == std::vector<Variant>{0.0, 4.0});
    Control empty;
    std::vector<Variant> kept{TextList{"kept"}, std::int16_t{7}};
    empty.Call("GetAxisNames", kept);
    CHECK(kept == std::vector<Variant>{TextList{"kept"}, std::int16_t{7}});
}

TEST_CASE("what is wrong with a name, a kind or a count is said") {
    struct Row {
        std::function<void(qvGraph&)> action;
        FaultNumber number;
        std::string_view word;
    };
    using enum FaultNumber;
    const std::vector<Row> rows{
        {[](auto& g) { g.Get("AxisColour"); }, UnknownMember, "\"AxisColor\""},
        {[](auto& g) { g.Let("Nonsense123", 1); }, UnknownMember, "Nonsense123"},
        {[](auto& g) { g.Let("xAxisIndex", 1); }, UnknownMember, "not set"},
        {[](auto& g) { g.Get("NewGraph"); }, UnknownMember, "Call"},
        {[](auto& g) { g.Call("AxisColor"); }, UnknownMember, "Let"},
        {[](auto& g) { g.Let("AxisColor", "red"); }, TypeMismatch, "AxisColor takes a number"},
        {[](auto& g) { g.Let("AxisLabelFont", 9); }, TypeMismatch, "a text"},
        {[](auto& g) { g.Let("AxisTitle", TextList{}); }, TypeMismatch, "a list"},
        {[](auto& g) { g.Call("NewGraph", {5}); }, TypeMismatch, "GraphName"},
        {[](auto& g) { g.Call("AxisStyle", {"red"}); }, TypeMismatch, "LineColor"},
        {[](auto& g) {
             g.Call("GetAxisNames", {1, 2});
         },
         TypeMismatch, "AxisNames"},
        {[](auto& g) { g.Call("NewGraph"); }, WrongArgumentCount, "[x1]"},
        {[](auto& g) { g.Call("Reset", {1}); }, WrongArgumentCount, "Reset()"},
        {[](auto& g) {
             g.Call("AddDataPoint", {1, 2, 3, 40000});
         },
         Overflow, ""},
    };
    for (Row const& row : rows) {
        CAPTURE(row.word);
        FilledControl control;
        Fault const fault = fault_of([&] { row.action(control); });
        CHECK(fault.number == static_cast<int>(row.number));
        CHECK(mentions(fault, row.word));
        CHECK(control.events().empty());
        CHECK(control.graph().NumPoints == 0);
    }
}

TEST_CASE("the tables name every member once") {
    std::map<std::string_view, int> names;
    for (auto const& row : control::property_table()) ++names[row.name];
    for (auto const& row : control::method_table()) ++names[row.name];
    for (auto const& [name, count] : names) {
        CAPTURE(name);
        CHECK(count == 1);
    }
}
