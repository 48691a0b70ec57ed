#include "render/pipeline.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <algorithm>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

std::ptrdiff_t place_of(std::vector<std::string> const& log, std::string_view start) {
    return std::ranges::find_if(log, [&](auto const& line) { return line.starts_with(start); }) - log.begin();
}

struct TwoGraphs : TestControl {
    document::Graph& back = add_graph();
    document::Graph& front = add_graph();

    TwoGraphs() {
        state.GraphTitles = {"back", "front"};
        for (document::Graph* graph : {&back, &front}) {
            for (document::Axis& axis : graph->Axes) {
                axis.AxisHide = true;
                axis.AxisRescale = false;
            }
            graph->BorderFill.Color1 = graph->BorderFill.Color2 = graph == &back ? 0x0000AA : 0x0000BB;
        }
    }
};

} // namespace

TEST_CASE("a full refresh draws from back to front and keeps the page without the front graph") {
    TwoGraphs page;
    Refresh(page.state);
    auto const& log = page.page().log;
    CHECK(place_of(log, "cls") == 1);
    CHECK(place_of(log, "fill 0,0 15000,1000 #0000AA") < place_of(log, "fill 0,0 15000,1000 #0000BB"));
    CHECK(static_cast<qv::testing::RecordingSurface&>(*page.state.Picture2).lines("blit").size() == 1);
    CHECK(page.shown().lines("blit").size() == 1);
    CHECK(page.state.CurrentGraph == 1);
    CHECK_FALSE(page.front.GraphNotDrawn);
    CHECK(page.events.errors.empty());
}

TEST_CASE("a refresh of one graph starts from the kept page") {
    TwoGraphs page;
    Refresh(page.state);
    page.page().log.clear();
    RefreshGraphs(page.state, 1, true);
    auto const& log = page.page().log;
    CHECK(log[1].starts_with("blit"));
    CHECK(page.page().lines("fill 0,0 15000,1000 #0000AA").empty());
    CHECK(page.page().lines("cls").empty());
}

TEST_CASE("what keeps a page from being drawn") {
    TwoGraphs page;
    page.state.NoRedraw = true;
    Refresh(page.state);
    CHECK(page.page().log.empty());
    page.state.NoRedraw = false;
    RefreshGraphs(page.state, 2, true);
    RefreshGraphs(page.state, 32767, true);
    CHECK(page.shown().log.empty());
    CHECK(page.events.errors.empty());
    page.front.GraphInclude = false;
    Refresh(page.state);
    CHECK(page.page().lines("fill 0,0 15000,1000 #0000BB").empty());
    page.state.Graphs.clear();
    page.state.GraphOrder.clear();
    page.shown().log.clear();
    Refresh(page.state);
    CHECK(page.shown().has("fill 0,0 15075,12075 #FFFFFF w1"));
}

TEST_CASE("the page edge lies inside the page, half its width from the border") {
    TwoGraphs page;
    page.state.PageFill.EdgeThickness = 3;
    page.state.PageFill.EdgeColor = 0x00FF00;
    DrawPageBackground(page.state);
    CHECK(page.page().has("box 22,22 14970,11970 #00FF00 w3"));
    page.state.PageFill.EdgeColor = -1;
    page.page().state.ForeColor = 0x123456;
    DrawPageBackground(page.state);
    CHECK(page.page().has("box 22,22 14970,11970 #123456 w3"));
}

TEST_CASE("border, plot area and frame lines") {
    TwoGraphs page;
    page.back.PlotAreaFill.Transparent = true;
    page.back.Axes[0].AxisTicksBothEnds = false;
    page.back.Axes[0].AxisThickness = 2;
    DrawGraph(page.state, page.page(), 0);
    CHECK(page.page().lines("fill").size() == 4); // strips around the plot area, nothing on it
    CHECK(page.page().has("box 0,0 15000,12000 #000000 w1"));
    CHECK(page.page().lines("box 1000,1000 11000,1000").empty());
    CHECK(page.page().has("box 1000,11000 11000,11000 #000000 w2"));
    CHECK(page.page().has("box 11000,1000 11000,11000 #000000 w1"));
}

TEST_CASE("an edge of the plot area is as thick as the axis that stands on it, and no other's") {
    TwoGraphs page;
    document::Graph& graph = page.back;
    graph.Axes.push_back(graph.Axes[0]);
    auto &first = graph.Axes[0], &second = graph.Axes[2];
    first.AxisHide = second.AxisHide = false;
    first.AxisThickness = 3;
    second.AxisThickness = 7;
    second.AxisColor = 0x0000FF;
    graph.SelectedXAxis = 2;
    auto const edges = [&] {
        page.page().log.clear();
        DrawGraph(page.state, page.page(), 0);
        std::vector<std::string> found = page.page().lines("box 1000,11000 11000,11000");
        for (std::string& top : page.page().lines("box 1000,1000 11000,1000")) found.push_back(top);
        return found;
    };
    const std::string bottom = "box 1000,11000 11000,11000 ", top = "box 1000,1000 11000,1000 ";
    CHECK(edges() == std::vector{bottom + "#000000 w3", top + "#000000 w3"});
    second.AxisFarSide = true; // takes its edge over from the ticks of the first
    CHECK(edges() == std::vector{bottom + "#000000 w3", top + "#0000FF w7"});
    second.AxisHide = true;
    first.AxisFarSide = true;
    first.AxisTicksBothEnds = false;
    CHECK(edges() == std::vector{bottom + "#000000 w1", top + "#000000 w3"});
}

TEST_CASE("a two-coloured border goes round a transparent plot area") {
    TwoGraphs page;
    page.back.BorderFill.Color2 = 0x00FF00;
    page.back.PlotAreaFill.Transparent = true;
    DrawGraph(page.state, page.page(), 0);
    auto const& log = page.page().log;
    for (char const* strip : {"clip 0,0 15000,985", "clip 0,0 985,12000", "clip 11015,0 15000,12000",
                              "clip 0,11015 15000,12000"}) {
        CAPTURE(strip);
        auto const place = static_cast<std::size_t>(place_of(log, strip));
        REQUIRE(place + 1 < log.size());
        CHECK(log[place + 1] == "blit 0,0 size 1001,801 from 0,0");
    }
    CHECK(page.page().lines("blit").size() == 4);
}

TEST_CASE("one graph is drawn alone only over what would be drawn behind it now") {
    TwoGraphs page;
    document::ControlState& state = page.state;
    auto const draws_all = [&](std::int16_t which) {
        page.page().log.clear();
        RefreshGraphs(state, which, true);
        CHECK(state.CurrentGraph == which);
        return page.page().has("cls");
    };
    CHECK(draws_all(1)); // nothing is kept yet
    CHECK_FALSE(draws_all(1));
    CHECK(draws_all(0)); // another graph lies in front of it
    CHECK_FALSE(draws_all(1));
    state.PageFill.Color1 = 0x123456;
    CHECK(draws_all(1));
    state.GraphImage->Move(9000, 9000);
    CHECK(draws_all(1));
    page.add_graph();
    CHECK(draws_all(2));
    CHECK_FALSE(draws_all(2));
    std::swap(state.GraphOrder[0], state.GraphOrder[1]);
    CHECK(draws_all(2));
    page.back.GraphTitleFont = "Font=Arial|99999"; // fails
    Refresh(state);
    CHECK_FALSE(page.events.errors.empty());
    CHECK(draws_all(2));
}

TEST_CASE("an event handler may refresh or fail without ending the drawing") {
    struct Handler : qv::testing::EventLog {
        document::ControlState* state = nullptr;
        void GraphScaleChanged() override {
            EventLog::GraphScaleChanged();
            if (state) Refresh(*state);
        }
    };
    TwoGraphs page;
    Handler handler;
    page.state.events = &handler;
    handler.state = &page.state;
    page.front.Axes[0].AxisHide = false;
    page.front.Axes[0].AxisRescale = true;
    Refresh(page.state);
    CHECK(handler.scale_changes == 1);
    CHECK(page.shown().lines("blit").size() == 2); // drawn again once
    CHECK_FALSE(page.state.Refreshing);
}
