// A control with one graph whose geometry suits positions worked out by hand.
#pragma once

#include "TestControl.h"

namespace qv::scale {

/// One graph at frame (1000, 500) with borders of 100 twips, an x axis of 8000 twips and a y axis of 4000.
struct Fixture : testing::TestControl {
    Fixture() {
        document::Graph& graph = add_graph();
        graph.FrameLeft = 1000;
        graph.FrameTop = 500;
        graph.BorderLeft = graph.BorderTop = 100;
        x_axis().AxisLength = 8000;
        y_axis().AxisLength = 4000;
    }

    document::Graph& graph() { return *state.Graphs.front(); }
    document::Axis& x_axis() { return graph().Axes[0]; }
    document::Axis& y_axis() { return graph().Axes[1]; }
    std::vector<std::string>& errors() { return events.errors; }
};

} // namespace qv::scale
