#include "control/document.h"
#include "control/members_by_name.h"
#include "control/state_of.h"
#include "test_control.h"

#include <doctest/doctest.h>

#include <cmath>
#include <memory>
#include <type_traits>

using namespace qv;
using namespace qv::test;
using control::PropertyRow;

namespace {

using Snapshot = std::map<std::string, Variant>;

/// Every property of every graph, axis and data set, and what is selected.
Snapshot everything(Control& control) {
    document::ControlState& state = control.state();
    Snapshot all{{"current", state.CurrentGraph}, {"front", state.GraphOrder.back()}};
    const std::int16_t current = state.CurrentGraph;
    auto const read = [&](std::string_view target, std::string const& place) {
        for (PropertyRow const& row : control::property_table())
            if (row.target == target) all[place + std::string(row.name)] = row.get(control);
    };
    for (std::int16_t g = 0; g < state.NumGraphs(); ++g) {
        state.CurrentGraph = g;
        document::Graph& graph = *state.Graphs[static_cast<std::size_t>(g)];
        document::GraphSettings const kept = graph;
        std::string const place = std::to_string(g) + " ";
        all[place + "x"] = graph.SelectedXAxis;
        all[place + "y"] = graph.SelectedYAxis;
        all[place + "axis"] = graph.SelectedAxis;
        all[place + "data"] = graph.SelectedDataSet;
        read("graph", place);
        for (graph.SelectedAxis = 0; graph.SelectedAxis < graph.NumAxes(); ++graph.SelectedAxis)
            read("axis", place + "axis " + std::to_string(graph.SelectedAxis) + " ");
        for (graph.SelectedDataSet = 0; graph.SelectedDataSet < graph.NumDataSets(); ++graph.SelectedDataSet)
            read("data", place + "data " + std::to_string(graph.SelectedDataSet) + " ");
        static_cast<document::GraphSettings&>(graph) = kept;
    }
    state.CurrentGraph = current;
    return all;
}

/// Two graphs of two data sets and three axes, and the handles of the first graph; the second is selected.
struct TwoGraphs : Control {
    GraphHandle first = qvGraph::graph("first");
    AxisHandle axis = first.add_y_axis({.title = "third"});
    DataHandle unused = first.line("a");
    DataHandle data = first.line("b");
    LegendHandle legend = first.legend();

    TwoGraphs() {
        NewGraph("second");
        NewYAxis("third");
        NewDataSet("a");
        NewDataSet("b");
        events();
    }
    /// Selects by the classic members what the handles lead to.
    void select() {
        state().CurrentGraph = 0;
        document::Graph& graph = document::current_graph(state());
        graph.SelectedAxis = 2;
        graph.SelectedDataSet = 1;
    }
    template <class Owner>
    auto const& handle() const {
        if constexpr (std::is_same_v<Owner, AxisProperties>)
            return axis;
        else if constexpr (std::is_same_v<Owner, DataProperties>)
            return data;
        else if constexpr (std::is_same_v<Owner, LegendProperties>)
            return legend;
        else
            return first;
    }
};

template <class Value>
Value another(Value const& present) {
    if constexpr (std::is_same_v<Value, bool>)
        return !present;
    else if constexpr (std::is_same_v<Value, std::string>)
        return present == "UTC" ? "Europe/Berlin" : present + "2";
    else
        return present == Value(3) ? Value(5) : Value(3);
}

/// Sets one property by the classic members, by the handle's member and by an option; all must do the same.
template <class Owner, class Options, class Value>
void check_property(std::string_view name, Value (Owner::*get)() const, auto set, auto give) {
    CAPTURE(name);
    TwoGraphs classic, by_member, by_option;
    Value value = another((by_member.handle<Owner>().*get)());
    if constexpr (std::is_same_v<Value, std::string>)
        if (name == "AxisColors") value = "tide"; // it takes no other text
    Snapshot const before = everything(by_member);
    document::Graph& graph = *classic.state().Graphs[0];
    auto const [axis, data_set] = std::pair(graph.SelectedAxis, graph.SelectedDataSet);
    classic.select();
    classic.Let(name, Variant(value));
    classic.state().CurrentGraph = 1;
    graph.SelectedAxis = axis;
    graph.SelectedDataSet = data_set;

    set(by_member.handle<Owner>(), value);
    Options options;
    give(options, value);
    by_option.handle<Owner>().set(options);
    Snapshot const expected = everything(classic);
    CHECK(expected != before);
    CHECK(everything(by_member) == expected);
    CHECK(everything(by_option) == expected);
    CHECK((by_member.handle<Owner>().*get)() == (by_option.handle<Owner>().*get)());
    CHECK(by_member.events() == classic.events());
    CHECK(by_option.events().empty());
}

template <class Owner, class Value>
auto getter(Value (Owner::*member)() const) {
    return member;
}

} // namespace

TEST_CASE("every property by handle is the classic one of a record that nobody has selected") {
    std::size_t rows = 0;
#define QV_HANDLE_COLOR(owner, name, property)
#define QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property, kind) ++rows;
#define QV_HANDLE_PROPERTY(owner, name, property, kind)                                                      \
    ++rows;                                                                                                  \
    check_property<owner##Properties, owner##Options>(                                                       \
        #property, getter<owner##Properties>(&owner##Properties::name),                                      \
        [](owner##Properties const& handle, auto const& value) { handle.name(value); },                      \
        [](owner##Options& options, auto const& value) { options.name = value; });
#include "control/handle_properties.def"
    std::size_t reachable = 0;
    for (PropertyRow const& row : control::property_table())
        reachable += row.target == "axis" || row.target == "graph" || row.target == "data";
    CHECK(rows == reachable);
}

TEST_CASE("making and filling by handle selects nothing and raises what the classic members raise") {
    TwoGraphs control;
    auto const selection = [&] {
        std::vector<int> numbers{control.state().CurrentGraph};
        for (auto const& graph : control.state().Graphs)
            for (int number :
                 {graph->SelectedAxis, graph->SelectedXAxis, graph->SelectedYAxis, graph->SelectedDataSet})
                numbers.push_back(number);
        numbers.resize(9);
        return numbers;
    };
    auto const before = selection();
    control.events();
    GraphHandle const third = control.qvGraph::graph("third", {.left = 50, .width = 50});
    CHECK(control.events() == Events{"GraphScaleChanged", "GraphScaleChanged"});
    AxisHandle const y = control.first.add_y_axis({.title = "new"});
    CHECK(control.events() == Events{"GraphScaleChanged"});
    DataHandle const line = control.first.line("line", {.axis = y, .color = 0x123456});
    CHECK(control.events().empty());
    line.add(1, 2); // the first point begins an automatic axis, which tells nobody yet
    CHECK(control.events().empty());
    line.add(3, 4);
    CHECK(control.events() == Events{"GraphScaleChanged"});
    line.add(2, 3);
    CHECK(control.events().empty());
    std::vector<double> const xs{5, 6, 7}, ys{8, 9, 10}, errors{0, 1, 2};
    line.add(xs, ys, errors);
    CHECK(control.events() == Events{"GraphScaleChanged"});
    line.keep_latest(2);
    line.set({.symbol = 3});
    control.first.title("renamed");
    CHECK(control.events().empty());
    CHECK(selection() == before);
    CHECK(control.host->pages_shown == 0);

    CHECK(third.left() == 50);
    CHECK(line.line_color() == 0x123456);
    CHECK(line.y_axis() == y);
    CHECK(y.to() == 10);
    CHECK(control.axis.to() == 0); // the data lie elsewhere
    CHECK(control.qvGraph::find_graph("renamed") == control.first);
    CHECK(control.first.find("line") == line);
    CHECK(control.qvGraph::graphs().size() == 3);
    CHECK_FALSE(control.qvGraph::find_graph("first"));
    CHECK_FALSE(control.first.find("nobody"));
}

TEST_CASE("points by handle are those of the classic members, selected for them") {
    Control classic, handles;
    classic.NewGraph("G");
    classic.NewDataSet("D");
    DataHandle const set = handles.qvGraph::graph("G").symbols("D");
    std::vector<double> const xs{4, 2, 9}, ys{1, -7, 3};
    double const nothing = std::nan("");
    for (int i = 0; i < 300; ++i) {
        classic.AddDataPoint(i, i % 7);
        set.add(i, i % 7);
    }
    classic.AddDataPoint(nothing, 5, 2, 0, " id ");
    set.add(nothing, 5, 2, " id ");
    classic.AddDataPoints(xs, ys, ys);
    set.add(xs, ys, ys);
    CHECK(everything(handles) == everything(classic));
    CHECK(handles.events() == classic.events());
    REQUIRE(set.size() == classic.data(0).DataSetPointCount());
    for (std::size_t i = 0; i < 304; ++i) {
        document::PointEntry const mine = handles.data(0).points.at(i), its = classic.data(0).points.at(i);
        CHECK((mine.X == its.X || i == 300));
        CHECK(mine.Y == its.Y);
        CHECK(mine.E == its.E);
        CHECK(mine.DataID == its.DataID);
    }
    CHECK(handles.axis(0).DataMax == classic.axis(0).DataMax);
    CHECK(handles.graph().NumPoints == classic.graph().NumPoints);
    CHECK(fault_number([&] { set.add(xs, std::vector<double>{1.0}); }) == 5);
    CHECK(set.size() == 304);
}

TEST_CASE("a graph fits its axes and tells its plot area by handle, whichever is selected") {
    TwoGraphs page;
    for (int i = 0; i <= 10; ++i) page.data.add(100 + i, i);
    const Snapshot before = everything(page);
    page.first.fit(0.1);
    Snapshot after = everything(page);
    CHECK(page.first.x_axis().from() == 99);
    CHECK(page.first.x_axis().to() == 111);
    CHECK(page.first.y_axis().to() == 11);
    for (char const* kept : {"current", "front", "0 data", "1 x"}) CHECK(after.at(kept) == before.at(kept));
    for (auto const& entry : before)
        if (entry.first.starts_with("1 ")) CHECK_MESSAGE(after.at(entry.first) == entry.second, entry.first);
    CHECK_THROWS_AS(page.first.fit(-1), Fault);
    page.Refresh();
    const Box left = page.first.plot_area();
    CHECK(left.width > 0);
    page.first.set({.left = 50, .width = 50});
    CHECK(page.first.plot_area().left == left.left); // as it was drawn last
    page.Refresh();
    CHECK(page.first.plot_area().left > left.left);
    CHECK(page.first.plot_area().width < left.width);
    const GraphHandle gone = page.first;
    page.Reset();
    CHECK_THROWS_AS(gone.plot_area(), Fault);
    CHECK_THROWS_AS(gone.fit(), Fault);
}

TEST_CASE("a data set keeps its latest points, whoever adds them") {
    FilledControl control;
    DataHandle const set = control.qvGraph::graphs()[0].data_sets()[0];
    for (int i = 0; i < 5; ++i) control.AddDataPoint(i, i); // finds the short way for the next ones
    set.keep_latest(3);
    auto const oldest = [&] { return control.data(0).points.at(0).X; };
    CHECK(set.size() == 3);
    for (int i = 5; i < 3000; ++i) {
        i % 2 ? set.add(i, i) : control.AddDataPoint(i, i);
        REQUIRE(set.size() == 3);
        REQUIRE(oldest() == i - 2);
    }
    std::vector<double> const xs{1, 2, 3, 4, 5};
    set.add(xs, xs);
    CHECK(oldest() == 3);
    control.AddDataPoints(xs, xs);
    CHECK(set.size() == 3);
    CHECK(control.graph().NumPoints == 3);
    set.drop(1);
    CHECK(set.size() == 2);
    set.keep_latest(0);
    set.add(xs, xs);
    CHECK(set.size() == 7);
    set.clear();
    CHECK(set.size() == 0);
    CHECK(control.graph().NumPoints == 0);
    CHECK(fault_number([&] { set.keep_latest(-1); }) == 5);
    CHECK(fault_number([&] { set.drop(-1); }) == 5);
}

TEST_CASE("each kind of data set is what its name says, whatever came before") {
    Control control;
    GraphHandle const graph = control.qvGraph::graph("G");
    auto const looks = [](DataHandle const& set) {
        return std::array<int, 4>{set.symbol(), set.line_style(), set.bar_base(), set.show_error_bar()};
    };
    for (int round = 0; round < 2; ++round) {
        CAPTURE(round);
        CHECK(looks(graph.line("l", {.line_thickness = 4})) == std::array{0, 1, 0, 1});
        CHECK(looks(graph.bars("b", {.bar_stacked = true})) == std::array{1, 0, 1, 1});
        CHECK(looks(graph.symbols("s")) == std::array{3 + round, 0, 0, 1});
        CHECK(looks(graph.area("a")) == std::array{0, 4, 0, 1});
        CHECK(looks(graph.function("f", "x^2", {.formula_to = 4})) == std::array{0, 1, 0, 0});
        CHECK(graph.data_sets().back().formula() == "x^2");
        CHECK(graph.data_sets().back().line_thickness() == 1);
        CHECK_FALSE(graph.data_sets().back().bar_stacked());
        CHECK(looks(graph.text("t", 1, 2)) == std::array{0, 0, 0, 1});
        CHECK(graph.data_sets().back().text_y() == 2);
    }
    CHECK(graph.data_sets()[0].line_color() != graph.data_sets()[1].line_color());
    graph.set({.border_color = 5, .plot_area_color = 6});
    CHECK(graph.border_color1() == 5);
    CHECK(graph.border_color2() == 5);
    CHECK(graph.plot_area_color2() == 6);
    CHECK(graph.legend({.color = 7}).color2() == 7);
}

TEST_CASE("data lie on axes of their own graph only") {
    Control control;
    GraphHandle const graph = control.qvGraph::graph("G"), other = control.qvGraph::graph("H");
    AxisHandle const x = graph.add_x_axis(), y = graph.add_y_axis();
    DataHandle const set = graph.line("l", {.axis = y, .other_axis = x});
    CHECK(set.x_axis() == x);
    CHECK(set.y_axis() == y);
    set.set({.axis = graph.y_axis()});
    CHECK(set.x_axis() == x);
    CHECK(set.y_axis() == graph.y_axis());
    CHECK(fault_number([&] { graph.line("m", {.axis = other.y_axis()}); }) == 5);
    CHECK(fault_number([&] { set.set({.axis = other.x_axis(), .color = 9}); }) == 5);
    CHECK(set.line_color() != 9);
    CHECK(graph.data_sets().size() == 1);
    CHECK(fault_number([&] { set.set({.symbol_size = 1e6}); }) == 6);
}

TEST_CASE("a handle whose graph or page is gone says so, and a new graph is none of its business") {
    auto control = std::make_unique<Control>();
    GraphHandle const graph = control->qvGraph::graph("G");
    AxisHandle const axis = graph.y_axis();
    DataHandle set = graph.line("l");
    DataHandle const copy = set, empty;
    CHECK(copy == set);
    CHECK_FALSE(set.discarded());
    CHECK(empty.discarded());
    CHECK(fault_of([&] { empty.add(1, 2); }).description.starts_with("This handle is empty"));

    control->Reset();
    control->qvGraph::graph("another").line("l");
    CHECK(graph.discarded());
    CHECK_FALSE(copy);
    for (auto const& use : std::vector<std::function<void()>>{
             [&] { set.add(1, 2); }, [&] { copy.clear(); }, [&] { axis.title("t"); }, [&] { axis.log(); },
             [&] { graph.line("n"); }, [&] { graph.title(); }, [&] { graph.axes(); }, [&] { graph.set({}); },
             [&] { control->qvGraph::graphs()[0].line("n", {.axis = axis}); }})
        CHECK(fault_of(use).description.starts_with("The graph of this handle was discarded by Reset"));
    set = control->qvGraph::graphs()[0].data_sets()[0];
    set.add(1, 2);
    CHECK(set.size() == 1);
    control.reset();
    CHECK(set.discarded());
    CHECK(fault_of([&] { set.size(); }).description.starts_with("The page of this handle is gone"));
    CHECK(fault_of([&] { copy.add(1, 2); }).description.starts_with("The page of this handle is gone"));
}

TEST_CASE("a handler may discard what is just being made or filled") {
    Control control;
    auto const reset_once = [&] {
        control.log.on_event = [&] {
            control.log.on_event = [] {};
            control.Reset();
        };
    };
    reset_once();
    CHECK(control.qvGraph::graph("G").discarded());
    GraphHandle graph = control.qvGraph::graph("G");
    reset_once();
    CHECK(graph.add_x_axis().discarded());
    graph = control.qvGraph::graph("G");
    DataHandle set = graph.line("l");
    set.add(1, 1);
    reset_once();
    set.add(2, 2);
    CHECK(set.discarded());
}

TEST_CASE("a look dresses what handles make and leaves what they set") {
    Control control, classic;
    for (Control* const page : {&control, &classic}) page->UseLook("dark");
    classic.NewGraph("G");
    classic.NewDataSet("D");
    GraphHandle const graph = control.qvGraph::graph("G");
    DataHandle const line = graph.line("D"), red = graph.line("E", {.line_color = 0x0000FF});
    DataHandle const dots = graph.symbols("F");
    CHECK(graph.border_color1() == classic.BorderColor1());
    CHECK(graph.y_axis().label_color() == classic.AxisLabelColor());
    CHECK(line.line_color() == classic.DataLineColor());
    CHECK(line.line_thickness() == classic.DataLineThickness());
    for (char const* const look : {"print", "classic"}) {
        control.UseLook(look);
        CHECK(red.line_color() == 0x0000FF);
        CHECK(line.line_style() == 1);
        CHECK(line.symbol() == 0);
        CHECK(dots.line_style() == 0);
        CHECK(dots.symbol() == 3);
    }
}

TEST_CASE("points are read back as they came, over all blocks; a column nobody filled is empty") {
    Control control;
    GraphHandle const graph = control.qvGraph::graph("G");
    DataHandle const plain = graph.line("plain"), rich = graph.line("rich");
    std::vector<double> x(5000), lengths(5000, 0.25);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i) / 3;
    plain.add(x, x);
    CHECK(plain.points().x == x);
    CHECK(plain.points().y == x);
    CHECK(plain.points().error.empty());
    rich.add(1, 2);
    rich.add_columns(x, x, {}, lengths);
    rich.add(7, 8, 0.5);
    PointValues const points = rich.points();
    CHECK(points.error.size() == 5002);
    CHECK(points.error.front() == 0);
    CHECK(points.error.back() == 0.5);
    CHECK(points.extra[0].empty());
    CHECK(std::isnan(points.extra[1].front()));
    CHECK(points.extra[1][1] == 0.25);
    CHECK(std::isnan(points.extra[1].back()));
    rich.drop(5000);
    CHECK(rich.points().y == std::vector<double>{x.back(), 8});
}
