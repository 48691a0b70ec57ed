#include "control/document.h"
#include "control/point_entry.h"
#include "control/state_of.h"
#include "test_control.h"

#include <doctest/doctest.h>

#include <limits>
#include <random>

using namespace qv;
using namespace qv::test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
double const not_a_number = std::nan("");

/// The range drawn, the full range and the extent of the data.
using Ranges = std::array<double, 6>;

Ranges ranges(document::Axis const& axis) {
    return {axis.AxisValue1, axis.AxisValue2, axis.ScaleMin, axis.ScaleMax, axis.DataMin, axis.DataMax};
}

document::Axis& x_axis(Control& control) {
    return document::current_graph(control::state_of(control)).Axes[0];
}

} // namespace

TEST_CASE("data sets are told apart by symbol and colour and inherit the rest") {
    Control control;
    control.NewGraph("G");
    control.NewDataSet("first");
    CHECK(control.DataSymbol() == 3);
    CHECK(control.DataSymbolColor() == 0xFF0000);
    CHECK(control.DataLineColor() == 0xFF0000);
    CHECK(control.DataLineThickness() == 1);
    CHECK(control.DataLineStyle() == 0);
    CHECK(control.DataSymbolSize() == doctest::Approx(1.6).epsilon(0.02));
    CHECK(control.ShowErrorBar());
    CHECK(control.BarShadowColor() == rgb(100, 100, 100));

    control.SymbolStyle({.Size = 4, .EdgeThickness = 3, .BarOffset = 2, .ErrorBarColor = 9});
    control.DataHide(true);
    control.AddText("text", 1, 2, 3, "F", 7, 45, true);
    control.AddMathFunc("x", 1, 2);
    control.NewDataSet("second");
    CHECK(control.DataSymbol() == 1);
    CHECK(control.DataSymbolColor() == 0x0000FF);
    CHECK(control.DataSymbolSize() == doctest::Approx(4).epsilon(0.02));
    CHECK(control.DataSymbolEdgeThickness() == 0);
    CHECK(control.BarOffset() == 2);
    CHECK(control.ErrorBarColor() == 0);
    CHECK_FALSE(control.ShowErrorBar());
    CHECK_FALSE(control.DataHide());
    CHECK(control.MathFunc().empty());
    CHECK(control.DataText().empty());
    CHECK(control.DataTextColor() == 7);
    CHECK(control.DataTextAngle() == 0);
    CHECK_FALSE(control.DataTextPercent());
}

TEST_CASE("symbols and colours follow one another") {
    struct Row {
        int symbol, next;
    };
    for (auto const& [symbol, next] : {Row{0, 1}, Row{3, 4}, Row{11, 3}, Row{20, 3}, Row{31, 3}, Row{32, 33},
                                       Row{126, 33}, Row{32767, 33}, Row{-2, -1}}) {
        CAPTURE(symbol);
        FilledControl control;
        control.DataSymbol(symbol);
        control.NewDataSet("next");
        CHECK(control.DataSymbol() == next);
    }
    FilledControl control;
    for (int i = 1; i < 7; ++i) control.NewDataSet("more");
    CHECK(control.data(5).DataLineColor == 0xFFFF00);
    CHECK(control.data(6).DataLineColor == control.data(0).DataLineColor);
}

TEST_CASE("a point goes to the data set asked for, else to the newest") {
    FilledControl control;
    control.NewDataSet("second");
    for (int number : {0, 1, 2, 3, -1}) control.AddDataPoint(1, 2, 0.5, number, " id ");
    CHECK(control.data(0).DataSetPointCount() == 1);
    CHECK(control.data(1).DataSetPointCount() == 4);
    CHECK(control.graph().NumPoints == 5);
    CHECK(control.data(0).points.at(0).DataID == "id");
    CHECK(control.data(0).points.at(0).E == 0.5);
}

TEST_CASE("a series follows every change of what is selected") {
    FilledControl control;
    control.NewYAxis("second");
    auto const count = [&](std::size_t graph, std::size_t set) {
        return control::state_of(control).Graphs[graph]->DataSets[set].DataSetPointCount();
    };
    auto const y_axis = [&](std::size_t axis) -> document::Axis& {
        return control::state_of(control).Graphs[0]->Axes[axis];
    };
    double x = 100;
    auto const add_some = [&](double y) {
        for (int i = 0; i < 3; ++i) control.AddDataPoint(++x, y);
    };
    std::int32_t const first = count(0, 0);
    add_some(500);
    CHECK(count(0, 0) == first + 3);
    CHECK(y_axis(2).AxisValue2 == 500);
    control.SelectYaxis(1);
    add_some(900);
    CHECK(y_axis(1).AxisValue2 == 900);
    CHECK(y_axis(2).AxisValue2 == 500);
    control.NewDataSet("next");
    add_some(1);
    CHECK(count(0, 0) == first + 6);
    CHECK(count(0, 1) == 3);
    control.NewGraph("other");
    add_some(1); // no data set there
    CHECK(count(0, 1) == 3);
    control.SetSelectedGraph(0);
    add_some(1);
    CHECK(count(0, 1) == 6);
    control.DropDataPoints(6, 2);
    add_some(1);
    CHECK(count(0, 1) == 3);
    control.AddDataPoint(++x, 2, 0.5, 0, "named");
    add_some(1);
    document::PointStore const& points = control::state_of(control).Graphs[0]->DataSets[1].points;
    CHECK(points.at(3).DataID == "named");
    CHECK(points.at(4).E == 0);
    CHECK(x_axis(control).AxisValue2 == x);
    control.Reset();
    add_some(1);
    CHECK(control::state_of(control).Graphs.empty());
}

TEST_CASE("a point after a graph was emptied goes to the new data set, not where the last one went") {
    FilledControl control;
    control.AddDataPoint(5, 6);
    control::ClearGraphData(control.state());
    CHECK(control.state().point_target.points == nullptr);
    control.NewXAxis("x");
    control.NewYAxis("y");
    control.SetSelectedAxis(0);
    control.NewDataSet("new");
    control.AddDataPoint(1, 2);
    control.AddDataPoint(3, 4);
    CHECK(control.data(0).DataSetPointCount() == 2);
    CHECK(control.graph().NumPoints == 2);
}

TEST_CASE("the memory of dropped points serves the next ones") {
    document::ColumnPool pool;
    std::vector<double> const values(5 * document::ColumnPool::column_size, 1.0);
    for (int round = 0; round < 3; ++round) {
        document::PointStore store(&pool);
        store.append(values, values, values);
        CHECK(store.at(values.size() - 1).E == 1);
        document::PointStore moved = std::move(store);
        moved.drop_oldest(3 * document::ColumnPool::column_size);
        moved.append({2, 3, 0, {}});
        CHECK(moved.at(moved.size() - 1).Y == 3);
    }
    double* const kept = pool.take().get();
    CHECK(pool.take().get() == kept);
}

TEST_CASE("points widen the ranges of the selected axes") {
    struct Row {
        std::string_view what;
        double x1, x2;             // of NewGraph
        std::vector<double> start; // range drawn afterwards, for a zoomed axis
        std::vector<double> x;
        Ranges expected;
        bool rescale;
        std::size_t events; // one a point and axis pair that changed
    };
    const std::vector<Row> rows{
        {"first point", 0, 0, {}, {5}, {5, 5, 5, 5, 5, 5}, true, 0},
        {"both sides", 0, 0, {}, {5, 9, 1}, {1, 9, 1, 9, 1, 9}, true, 2},
        {"fixed, inside", 0, 10, {}, {5}, {0, 10, 0, 10, 0, 10}, false, 0},
        {"fixed, outside", 0, 10, {}, {12, -3}, {-3, 12, -3, 12, -3, 12}, false, 2},
        {"high to low", 10, 0, {}, {5}, {10, 0, 10, 0, 5, 5}, false, 0},
        {"high to low, outside", 10, 0, {}, {12, -3}, {12, -3, 12, -3, -3, 12}, false, 2},
        {"zoomed, inside the full range", 0, 10, {4, 6}, {8}, {4, 8, 0, 10, 0, 10}, false, 1},
        {"zoomed, outside the full range", 0, 10, {4, 6}, {12}, {4, 12, 0, 12, 0, 12}, false, 1},
        {"not finite", 0, 0, {}, {infinity, not_a_number, -infinity}, {0, 0, 0, 0, 0, 0}, false, 0},
    };
    for (Row const& row : rows) {
        CAPTURE(row.what);
        Control control;
        control.NewGraph("G", row.x1, row.x2, 0, 1);
        control.NewDataSet("D");
        control.events();
        document::Axis& axis = x_axis(control);
        if (!row.start.empty()) {
            axis.AxisValue1 = row.start[0];
            axis.AxisValue2 = row.start[1];
        }
        axis.AxisRescale = false;
        for (double x : row.x) control.AddDataPoint(x, 0.5);
        CHECK(ranges(axis) == row.expected);
        CHECK(axis.AxisRescale == row.rescale);
        CHECK(control.events().size() == row.events);
        CHECK(control.graph().NumPoints == static_cast<int>(row.x.size()));
        CHECK(axis.AxisNoData == !std::isfinite(row.x[0]));
    }
}

TEST_CASE("a zoomed automatic axis is not rescaled, an unzoomed one is") {
    for (bool zoomed : {false, true}) {
        FilledControl control;
        control.AddDataPoint(0, 0);
        control.AddDataPoint(10, 0);
        document::Axis& axis = x_axis(control);
        if (zoomed) axis.AxisValue1 = 5;
        axis.AxisRescale = false;
        control.AddDataPoint(11, 0);
        CHECK(axis.AxisRescale == !zoomed);
        CHECK(axis.DataMax == 11);
    }
}

TEST_CASE("many points at once are the same as one by one, with one event") {
    std::mt19937 random(7);
    std::normal_distribution<double> value(0, 10);
    for (int round = 0; round < 60; ++round) {
        CAPTURE(round);
        double const x1 = round % 3 == 0 ? 0 : value(random), x2 = round % 3 == 0 ? 0 : value(random);
        std::vector<double> x, y, e;
        bool const has_gaps = round % 5 < 2;
        for (int i = 0; i < (round % 4 == 3 ? 2500 : 203); ++i) {
            x.push_back(has_gaps && i % 50 == 7 ? not_a_number : value(random));
            y.push_back(has_gaps && i % 60 == 0 ? infinity : value(random));
            e.push_back(round % 2 ? value(random) : 0);
        }
        Control single, batch;
        for (Control* control : {&single, &batch}) {
            control->NewGraph("G", x1, x2);
            control->NewDataSet("D");
            control->AddDataPoint(1, 1);
            if (round % 4 == 0) x_axis(*control).AxisValue2 = 2;
            x_axis(*control).AxisRescale = false;
            control->events();
        }
        for (std::size_t i = 0; i < x.size(); ++i) single.AddDataPoint(x[i], y[i], e[i]);
        batch.AddDataPoints(x, y, round % 2 ? std::span<double const>(e) : std::span<double const>());
        CHECK(ranges(single.axis(0)) == ranges(batch.axis(0)));
        CHECK(ranges(single.axis(1)) == ranges(batch.axis(1)));
        CHECK(single.axis(0).AxisRescale == batch.axis(0).AxisRescale);
        CHECK(batch.events().size() == std::min<std::size_t>(single.events().size(), 1));
        auto const &one = single.data(0).points, &all = batch.data(0).points;
        REQUIRE(one.size() == all.size());
        CHECK(one.x_rising() == all.x_rising());
        for (std::size_t i = 0; i < one.size(); ++i) {
            CHECK((one.at(i).X == all.at(i).X || std::isnan(one.at(i).X)));
            CHECK(one.at(i).Y == all.at(i).Y);
            CHECK(one.at(i).E == all.at(i).E);
        }
        for (std::size_t i = 0; i < one.blocks().size(); ++i) {
            CHECK(one.blocks()[i].x_extent() == all.blocks()[i].x_extent());
            CHECK(one.blocks()[i].all_finite() == all.blocks()[i].all_finite());
            CHECK(one.blocks()[i].x_rising() == all.blocks()[i].x_rising());
        }
    }
}

TEST_CASE("columns of different length are refused as a whole") {
    FilledControl control;
    std::vector<double> const two{1, 2}, three{1, 2, 3};
    CHECK(fault_number([&] { control.AddDataPoints(two, three); }) == 5);
    CHECK(fault_number([&] { control.AddDataPoints(two, two, three); }) == 5);
    CHECK(control.graph().NumPoints == 0);
    control.AddDataPoints({}, {});
    CHECK(control.axis(0).AxisNoData);
}

TEST_CASE("extra columns stay with their points, through plain ones, blocks and dropping") {
    FilledControl control;
    for (int i = 0; i < 20; ++i) control.AddDataPoint(i, i);
    std::vector<double> x, low, high;
    for (int i = 20; i < 300; ++i) {
        x.push_back(i);
        low.push_back(i * 2);
        high.push_back(i * 3);
    }
    control.AddDataColumns(x, x, low, {}, high);
    for (int i = 300; i < 320; ++i) control.AddDataPoint(i, i);
    control.DropDataPoints(10);
    auto const& points = control.data(0).points;
    REQUIRE(points.size() == 310);
    for (std::size_t i = 0; i < points.size(); ++i) {
        double const number = points.at(i).X;
        bool const given = number >= 20 && number < 300;
        CHECK((given ? points.extra_at(0, i) == number * 2 : std::isnan(points.extra_at(0, i))));
        CHECK((given ? points.extra_at(2, i) == number * 3 : std::isnan(points.extra_at(2, i))));
        CHECK(std::isnan(points.extra_at(1, i)));
    }
    CHECK(fault_number([&] { control.AddDataColumns(x, x, std::vector{1.0}); }) == 5);
    CHECK(points.size() == 310);
}

TEST_CASE("the oldest points are dropped from their data set alone") {
    FilledControl control;
    control.NewDataSet("second");
    for (int i = 0; i < 100; ++i) control.AddDataPoint(i, i, 0, 1 + i % 2);
    auto const before = ranges(control.axis(0));
    control.DropDataPoints(40, 1);
    CHECK(control.graph().NumPoints == 60);
    CHECK(control.data(0).points.at(0).X == 80);
    CHECK(control.data(1).DataSetPointCount() == 50);
    CHECK(ranges(control.axis(0)) == before);
    control.DropDataPoints(1000);
    CHECK(control.graph().NumPoints == 10);
    control.events();
    control.DropDataPoints(-1);
    CHECK(control.events() == error(5, "DropDataPoints"));
    CHECK(control.graph().NumPoints == 10);
}

TEST_CASE("functions and texts belong to the newest data set") {
    struct Row {
        int style, expected;
    };
    for (auto const& [style, expected] : {Row{0, 1}, Row{1, 1}, Row{2, 1}, Row{3, 3}}) {
        FilledControl control;
        control.DataLineStyle(style);
        control.AddMathFunc("sin(x)", -1, 1);
        CHECK(control.DataLineStyle() == expected);
        CHECK(control.DataSymbol() == 0);
        CHECK_FALSE(control.ShowErrorBar());
        CHECK(control.MathFuncX1() == -1);
    }
    FilledControl control;
    control.AddText("one", 1, 2, 3, "F", 4, 5, true);
    control.AddText("", 9, 9, 9, "G", 9, 9, false);
    CHECK(control.DataText() == "one");
    CHECK(control.DataTextY() == 2);
    CHECK(control.DataTextOri() == 3);
    CHECK(control.DataTextPercent());
    CHECK(control.DataLegend() == "D");
}

TEST_CASE("what a store knows of its points is true at any time, over blocks and after dropping") {
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        CAPTURE(round);
        document::PointStore store;
        double last = 0;
        for (int step = 0; step < 60; ++step) {
            std::vector<double> x(random() % 40), y(x.size());
            for (double& value : x) value = last += random() % 400 == 0 ? -1 : 1;
            for (double& value : y) value = random() % 300 == 0 ? infinity : double(random() % 100);
            store.append(x, y, {});
            if (step % 3 == 0) store.append({last, 5, 0, {}});
            if (step % 7 == 0) store.drop_oldest(random() % 80);
            bool rising = true;
            double previous = -infinity;
            for (document::PointBlock const& block : store.blocks()) {
                bool finite = true;
                for (std::size_t i = 0; i < block.size(); ++i) {
                    auto const point = block.entry(i);
                    rising &= point.X >= previous;
                    previous = point.X;
                    finite &= std::isfinite(point.Y);
                    if (!std::isfinite(point.Y)) continue;
                    CHECK(block.y_extent().low <= point.Y);
                    CHECK(block.y_extent().high >= point.Y);
                }
                if (block.all_finite()) CHECK(finite);
            }
            if (store.x_rising()) CHECK(rising);
            if (step < 7 && round % 2) CHECK(store.x_rising() == rising);
        }
    }
}
