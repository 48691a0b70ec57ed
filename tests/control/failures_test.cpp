#include "control/data_entry.h"
#include "control/document.h"
#include "control/members_by_name.h"
#include "control/state_of.h"
#include "test_control.h"

#include <doctest/doctest.h>

#include <limits>
#include <set>

using namespace qv;
using namespace qv::test;

namespace {

std::vector<Variant> plain_arguments(control::MethodRow const& method) {
    std::vector<Variant> arguments;
    for (auto const& parameter : method.parameters) {
        if (!parameter.required) break;
        switch (parameter.accepts) {
        case control::Accepts::Text: arguments.emplace_back("text"); break;
        case control::Accepts::Texts: arguments.emplace_back(TextList()); break;
        case control::Accepts::Numbers: arguments.emplace_back(NumberList{1}); break;
        default: arguments.emplace_back(1);
        }
    }
    return arguments;
}

// Members that do their work, or nothing, on a control without graphs. All others report an index fault,
// except GetAxisRange, which throws it.
const std::set<std::string_view> quiet_without_graphs{
    "Reset",         "NewGraph",      "SetSelectedGraph", "GetSelectedGraph",
    "GetGraphNames", "NewDataSet",    "AddDataPoint",     "AddMathFunc",
    "AddText",       "AddDataPoints", "DefineFunction",   "DropDataPoints",
    "SetTooltip",    "SetCrossHair",  "Refresh",          "RefreshCurrentGraph",
    "RefreshGraphs", "GetGradient",   "GetColor",         "GetSelectedAxisIndex",
    "CheckFormula",  "UseLook",       "AddDataColumns"};
// What a host without printer, clipboard and files answers.
const std::map<std::string_view, int> faults_of_bare_host{
    {"PrintImage", 482}, {"CopyToClipboard", 521}, {"SaveImage", 57}};

Events expected_without_graphs(std::string_view method) {
    if (quiet_without_graphs.contains(method)) return {};
    auto const service = faults_of_bare_host.find(method);
    return error(service == faults_of_bare_host.end() ? 9 : service->second, std::string(method));
}

} // namespace

TEST_CASE("every method works or reports an index fault on a control without graphs") {
    for (control::MethodRow const& method : control::method_table()) {
        CAPTURE(method.name);
        Control control;
        control.SuppressRaisingEvents(true);
        auto arguments = plain_arguments(method);
        if (method.name == "GetAxisRange") {
            CHECK(fault_number([&] { control.Call(method.name, arguments); }) == 9);
            continue;
        }
        if (method.name == "GetSelectedAxisIndex") arguments[0] = 7;
        if (method.name == "UseLook") arguments[0] = "dark";
        if (method.name == "DefineFunction") arguments[0] = "f(a) = a";
        control.Call(method.name, arguments);
        CHECK(control.events() == expected_without_graphs(method.name));
    }
}

TEST_CASE("results of a failed call") {
    Control control;
    CHECK(control.SetSelectedAxis(0) == -1);
    CHECK(control.SelectXaxis() == 0);
    CHECK(control.GraphTitle().empty());
    std::int16_t index = 7;
    control.GetSelectedData(index);
    CHECK(index == 7);
}

TEST_CASE("a point on a graph whose axes are gone is reported, not added") {
    FilledControl control;
    control::ClearGraphData(control::state_of(control));
    control.NewXAxis("only x");
    control.NewDataSet("D");
    control.events();
    control.AddDataPoint(1, 1);
    CHECK(control.events() == error(9, "AddDataPoint"));
    CHECK(control.graph().NumPoints == 0);
    CHECK(fault_number([&] { control.AddDataPoints(std::vector{1.0}, std::vector{1.0}); }) == 9);
    CHECK(control.graph().NumPoints == 0);
}

TEST_CASE("counters stop at their last number and the structure stays as it was") {
    constexpr int most = std::numeric_limits<std::int16_t>::max();
    Control control;
    control.SuppressRaisingEvents(true);
    control.NewGraph("G");
    document::Graph& graph = document::current_graph(control::state_of(control));
    while (graph.NumDataSets() < most) graph.DataSets.emplace_back();
    while (graph.NumAxes() < most) graph.Axes.emplace_back();
    graph.NumPoints = std::numeric_limits<std::int32_t>::max();
    control.NewDataSet("one too many");
    CHECK(control.events() == error(6, "NewDataSet"));
    control.NewXAxis("one too many");
    CHECK(control.events() == error(6, "NewXAxis"));
    CHECK(graph.NumDataSets() == most);
    CHECK(graph.NumAxes() == most);
    CHECK(graph.SelectedXAxis == 0);
    CHECK(fault_number([&] { control.AddDataPoint(0, 0); }) == 6);
    CHECK(graph.DataSets.back().DataSetPointCount() == 0);
    auto& state = control::state_of(control);
    state.Graphs.resize(most);
    state.GraphTitles.resize(most);
    state.GraphOrder.resize(most);
    control.NewGraph("one too many");
    CHECK(control.events() == error(6, "NewGraph"));
    CHECK(state.GraphTitles.size() == most);
    CHECK(state.CurrentGraph == 0);
}

TEST_CASE("Reset may be called from inside any event") {
    struct Row {
        std::string_view what;
        std::function<void(Control&)> action;
    };
    const std::vector<Row> rows{
        {"NewGraph", [](Control& g) { g.NewGraph("again"); }},
        {"NewXAxis", [](Control& g) { g.NewXAxis("again"); }},
        {"AddDataPoint", [](Control& g) { g.AddDataPoint(100, 100); }},
        {"AddDataPoints",
         [](Control& g) {
             g.AddDataPoints(std::vector{50.0, 60.0}, std::vector{1.0, 2.0});
         }},
        {"a failing style", [](Control& g) { g.AxisStyle({.LineColor = 1, .LineThickness = 300}); }},
        {"Refresh", [](Control& g) { g.Refresh(); }},
        {"SetSelectedGraph", [](Control& g) { g.SetSelectedGraph(0); }},
    };
    for (Row const& row : rows) {
        CAPTURE(row.what);
        FilledControl control;
        control.AddDataPoint(1, 1);
        control.AddDataPoint(9, 7.3);
        control.NewGraph("second");
        control.NewDataSet("D");
        control.AddDataPoint(1, 1);
        control.AddDataPoint(2, 2.7);
        control.events();
        control.log.on_event = [&] {
            control.log.on_event = [] {};
            control.Reset();
        };
        row.action(control);
        control.log.on_event = [] {};
        CHECK_FALSE(control.events().empty());
        CHECK(control.GraphIndex() == 0);
        control.NewGraph("after");
        CHECK(control.GraphTitle() == "after");
        CHECK(control::state_of(control).discarded_graphs.empty());
        CHECK_FALSE(control::state_of(control).Refreshing);
        control.events();
        control.Refresh();
        for (std::string const& event : control.events()) CHECK(event == "GraphScaleChanged");
    }
}

TEST_CASE("errors are raised while notifications are suppressed, and a handler's failure is reported") {
    Control control;
    control.SuppressRaisingEvents(true);
    control.NewXAxis("x");
    CHECK(control.events() == error(9, "NewXAxis"));
    control.SuppressRaisingEvents(false);
    control.log.on_event = [&] {
        control.log.on_event = [] {};
        throw std::runtime_error("handler");
    };
    control.NewGraph("G");
    CHECK(control.events()[1] == "Error 5 has occured in qvGraph.ocx, NewXAxis");
    control.set_events(nullptr);
    control.NewGraph("unheard");
    CHECK(control.events().empty());
}
