// A control without surfaces whose faults are written down.
#pragma once

#include "graph/model/ControlState.h"
#include "graph/model/selection.h"

#include <memory>
#include <string>
#include <vector>

namespace qv::scale {

struct BareHost : host::Host {
    std::unique_ptr<DrawSurface> make_surface() override { return nullptr; }
};

struct FaultLog : host::EventSink {
    std::vector<std::string> sources;
    void ErrorMsg(std::string& source, std::string&) override { sources.push_back(source); }
};

/// One graph at frame (1000, 500) with borders of 100 twips, an x axis of 8000 twips and a y axis of 4000.
struct Fixture {
    BareHost host;
    FaultLog faults;
    graph::ControlState state{host};

    Fixture() {
        state.events = &faults;
        state.Graphs.push_back(std::make_unique<graph::Graph>());
        graph::Graph& graph = *state.Graphs.back();
        graph.FrameLeft = 1000;
        graph.FrameTop = 500;
        graph.BorderLeft = graph.BorderTop = 100;
        graph.Axes.resize(2);
        graph.Axes[1].AxisXY = graph::AxisKind::Y;
        graph.SelectedYAxis = 1;
        x_axis().AxisLength = 8000;
        y_axis().AxisLength = 4000;
    }

    graph::Graph& graph() { return *state.Graphs.front(); }
    graph::Axis& x_axis() { return graph().Axes[0]; }
    graph::Axis& y_axis() { return graph().Axes[1]; }
};

} // namespace qv::scale
