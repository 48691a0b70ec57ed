// A control's state with recording surfaces, and a sink that keeps the events it hears.
#pragma once

#include "RecordingSurface.h"
#include "document/ControlState.h"
#include "document/selection.h"

#include <memory>
#include <string>
#include <vector>

namespace qv::testing {

class RecordingHost : public host::Host {
public:
    std::unique_ptr<DrawSurface> make_surface() override { return std::make_unique<RecordingSurface>(); }
};

class EventLog : public host::EventSink {
public:
    std::vector<std::string> errors; // "Source: Description"
    int scale_changes = 0;

    void GraphScaleChanged() override { ++scale_changes; }
    void ErrorMsg(std::string& Source, std::string& Description) override {
        errors.push_back(Source + ": " + Description);
    }
};

/// A page of 1000 x 800 pixels (15000 x 12000 twips and the inset) with one millimetre as 100 twips.
struct TestControl {
    RecordingHost host;
    EventLog events;
    document::ControlState state{host};

    TestControl() {
        state.events = &events;
        state.UnitsPerMmX = state.UnitsPerMmY = 100;
        for (auto* surface :
             {&state.Picture1, &state.GraphImage, &state.Picture2, &state.ScratchPic1, &state.ScratchPic2}) {
            *surface = host.make_surface();
            (*surface)->Move(15000 + document::page_inset, 12000 + document::page_inset);
        }
        state.PageWidth = 15000;
        state.PageHeight = 12000;
    }

    RecordingSurface& page() { return static_cast<RecordingSurface&>(*state.GraphImage); }
    RecordingSurface& shown() { return static_cast<RecordingSurface&>(*state.Picture1); }

    /// Appends a graph whose plot area is 10000 x 10000 twips at (1000, 1000), with fixed axes 0..10.
    document::Graph& add_graph() {
        state.Graphs.push_back(std::make_unique<document::Graph>(document::fresh_graph(100, 100)));
        state.GraphTitles.emplace_back("title");
        state.CurrentGraph = static_cast<std::int16_t>(state.Graphs.size() - 1);
        state.GraphOrder.push_back(state.CurrentGraph);
        document::Graph& graph = *state.Graphs.back();
        graph.BorderLeft = graph.BorderTop = 1000;
        graph.BorderRight = 4000;
        graph.BorderBottom = 1000;
        graph.FrameWidth = 15000;
        graph.FrameHeight = 12000;
        for (auto const kind : {document::AxisKind::X, document::AxisKind::Y}) {
            document::Axis& axis = graph.Axes.emplace_back();
            ResetAxis(state, axis, kind == document::AxisKind::X ? "x" : "y", kind, 0, 10);
            axis.AxisLength = 10000;
        }
        graph.SelectedYAxis = 1;
        return graph;
    }

    document::DataSet& add_data_set(document::Graph& graph, std::vector<Point> const& points) {
        document::DataSet& set = graph.DataSets.emplace_back();
        set.yAxisIndex = 1;
        for (const Point point : points) set.points.append({point.x, point.y, 0, {}});
        return set;
    }
};

} // namespace qv::testing
