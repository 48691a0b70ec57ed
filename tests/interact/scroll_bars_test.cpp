#include "interact/scroll_bars.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <cmath>

using namespace qv;
using namespace qv::interact;

namespace {

void set_ranges(document::Axis& axis, double first, double last, double full_first, double full_last) {
    axis.AxisValue1 = first;
    axis.AxisValue2 = last;
    axis.ScaleMin = full_first;
    axis.ScaleMax = full_last;
}

// A host whose bars answer every change as a user's would.
struct AnsweringHost : testing::RecordingHost {
    document::ControlState* state = nullptr;
    bool always_silent = true;
    int calls = 0;
    void child_controls_changed() override {
        ++calls;
        always_silent = always_silent && state->NoRedraw;
    }
};

} // namespace

TEST_CASE("the thumbs show where the visible span lies") {
    struct Row {
        double first, last, full_first, full_last;
        bool is_log, reversed;
        std::int32_t large, small, across, down;
    };
    for (Row const& row : {Row{0, 5, 0, 10, false, false, 500, 10, 0, 1000},
                           {5, 10, 0, 10, false, false, 500, 10, 1000, 0},
                           {2, 3, 0, 10, false, false, 111, 2, 222, 778},
                           {2, 3, 0, 10, false, true, 111, 2, 778, 222},
                           {8, 7, 10, 0, false, false, 111, 2, 222, 778}, // both ranges run downwards
                           {0, 0.01, 0, 10, false, false, 10, 10, 0, 1000},
                           {1, 10, 1, 1e4, true, false, 333, 6, 0, 1000},
                           {1e3, 1e4, 1, 1e4, true, false, 333, 6, 1000, 0},
                           {-5, 15, 0, 10, false, false, 1000, 20, 0, 77}, // more than everything
                           {-4, -2, 0, 10, false, false, 250, 5, 500, 500},
                           {90, 92, 0, 10, false, false, 250, 5, 1000, 0}, // beyond the full range
                           {1, 2, 7, 7, false, false, 1000, 20, 0, 77},
                           {0, HUGE_VAL, 0, HUGE_VAL, false, false, 1000, 20, 0, 77}}) {
        CAPTURE(row.first);
        CAPTURE(row.last);
        testing::TestControl control;
        document::Graph& graph = control.add_graph();
        for (document::Axis& axis : graph.Axes) {
            set_ranges(axis, row.first, row.last, row.full_first, row.full_last);
            axis.AxisLog = row.is_log;
            axis.AxisReverse = row.reversed;
        }
        control.state.Zoomed = true;
        control.state.VScroll1.Value = 77;
        SetScrollBars(control.state);
        for (host::ScrollBar const* bar : {&control.state.HScroll1, &control.state.VScroll1}) {
            CHECK(bar->LargeChange == row.large);
            CHECK(bar->SmallChange == row.small);
            CHECK(bar->Visible);
        }
        CHECK(control.state.HScroll1.Value == row.across);
        CHECK(control.state.VScroll1.Value == row.down);
        CHECK(graph.Axes[0].AxisValue1 == row.first);
        CHECK(graph.Axes[1].AxisValue2 == row.last);
        CHECK(control.events.errors.empty());
    }
}

TEST_CASE("both bars are hidden unless the graph is zoomed and may be") {
    testing::TestControl control;
    document::Graph& graph = control.add_graph();
    for (bool const zoomed : {false, true}) {
        for (bool const allowed : {false, true}) {
            control.state.Zoomed = zoomed;
            graph.GraphAllowZoom = allowed;
            control.state.HScroll1.Visible = true;
            SetScrollBars(control.state);
            CHECK(control.state.HScroll1.Visible == (zoomed && allowed));
            CHECK(control.state.VScroll1.Visible == (zoomed && allowed));
        }
    }
}

TEST_CASE("the host hears of new thumbs while redraws are off, and the switch returns on every way out") {
    AnsweringHost host;
    document::ControlState state(host);
    testing::EventLog events;
    host.state = &state;
    state.events = &events;
    SetScrollBars(state);
    CHECK(host.calls == 1);
    CHECK(host.always_silent);
    CHECK_FALSE(state.NoRedraw);
    state.Zoomed = true; // of no graph
    SetScrollBars(state);
    CHECK_FALSE(state.NoRedraw);
    REQUIRE(events.errors.size() == 1);
    CHECK(events.errors[0].starts_with("Error 9 has occured in qvGraph.ocx, SetScrollBars"));
    state.NoRedraw = true;
    SetScrollBars(state);
    CHECK(state.NoRedraw);
}

TEST_CASE("the bars lie along the inner edges and leave room for the read-out") {
    struct Row {
        double width, height;
        bool label;
        host::Placement across, down;
    };
    for (Row const& row : {Row{10000, 8000, false, {0, 7750, 9800, 250}, {9800, 0, 200, 7750}},
                           {10000, 8000, true, {1650, 7750, 8150, 250}, {9800, 0, 200, 7750}},
                           {500, 300, true, {1650, 1000, 1000, 250}, {1000, 0, 200, 1000}},
                           {500, 300, false, {0, 1000, 1000, 250}, {1000, 0, 200, 1000}}}) {
        testing::TestControl control;
        document::ControlState& state = control.state;
        state.inner_width = row.width;
        state.inner_height = row.height;
        state.HScroll1.Height = 250;
        state.VScroll1.Width = 200;
        state.Label1.Left = 50;
        state.Label1.Width = 1500;
        state.Label1.Height = 255;
        state.Label1.Visible = row.label;
        ResizeScrollBars(state);
        CHECK(static_cast<host::Placement const&>(state.HScroll1) == row.across);
        CHECK(static_cast<host::Placement const&>(state.VScroll1) == row.down);
        CHECK(state.Label1.Top == row.height - 260);
    }
}
