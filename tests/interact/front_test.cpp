#include "interact/front.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <functional>

using namespace qv;
using namespace qv::interact;

namespace {

struct FrontLog : testing::EventLog {
    int fronts = 0;
    std::function<void()> on_scale_change = [] {};
    void NewGraphInFront() override { ++fronts; }
    void GraphScaleChanged() override { on_scale_change(); }
};

struct Panels : testing::TestControl {
    FrontLog log;
    explicit Panels(int count) {
        for (int i = 0; i < count; ++i) add_graph();
        state.events = &log;
    }
};

using Order = std::vector<std::int16_t>;

} // namespace

TEST_CASE("a graph comes to the front, the others keep their order") {
    Panels panels(4);
    BringGraphToFront(panels.state, 1);
    CHECK(panels.state.GraphOrder == Order{0, 2, 3, 1});
    CHECK(panels.state.CurrentGraph == 1);
    CHECK(panels.log.fronts == 1);
    CHECK(panels.shown().has("refresh"));
    panels.state.SuppressRaisingEvents = true;
    BringGraphToFront(panels.state, 0);
    CHECK(panels.state.GraphOrder == Order{2, 3, 1, 0});
    CHECK(panels.log.fronts == 1);
    CHECK(panels.log.errors.empty());
}

TEST_CASE("the front graph and indices outside the list change nothing") {
    Panels panels(2);
    panels.state.CurrentGraph = 0;
    for (const std::int16_t graph : Order{1, 2, -1}) BringGraphToFront(panels.state, graph);
    CHECK(panels.state.GraphOrder == Order{0, 1});
    CHECK(panels.state.CurrentGraph == 0);
    CHECK(panels.log.fronts == 0);
    CHECK(panels.shown().log.empty());
}

TEST_CASE("the scroll bars become those of the new front graph, with redraws off or on") {
    for (bool const no_redraw : {false, true}) {
        Panels panels(2);
        panels.state.NoRedraw = no_redraw;
        for (document::Axis& axis : panels.state.Graphs[0]->Axes) {
            axis.AxisRescale = false;
            axis.AxisValue1 = 5;
        }
        panels.state.Graphs[1]->Axes[0].AxisRescale = panels.state.Graphs[1]->Axes[1].AxisRescale = false;
        BringGraphToFront(panels.state, 0);
        CHECK(panels.state.Zoomed);
        CHECK(panels.state.HScroll1.Visible);
        CHECK(panels.state.HScroll1.Value == 1000);
        BringGraphToFront(panels.state, 1);
        CHECK_FALSE(panels.state.Zoomed);
        CHECK_FALSE(panels.state.HScroll1.Visible);
        CHECK(panels.state.NoRedraw == no_redraw);
    }
}

TEST_CASE("a handler that empties the document while a graph comes to the front does no harm") {
    Panels panels(3);
    document::ControlState& state = panels.state;
    panels.log.on_scale_change = [&] {
        for (auto& graph : state.Graphs) state.discarded_graphs.push_back(std::move(graph));
        state.Graphs.clear();
        state.GraphOrder.clear();
        state.GraphTitles.clear();
    };
    BringGraphToFront(state, 0);
    CHECK(state.Graphs.empty());
    CHECK(panels.log.fronts == 0);
}
