// Selection primitives: the current graph, its selected axis and data set, and the defaults of a new axis.
#pragma once

#include "base/convert.h"
#include "document/ControlState.h"

#include <string_view>

namespace qv::document {

/// The selected graph; fault 9 when there is none.
inline Graph& current_graph(ControlState& state) {
    return *at(state.Graphs, state.CurrentGraph, "graph");
}
inline Graph const& current_graph(ControlState const& state) {
    return *at(state.Graphs, state.CurrentGraph, "graph");
}
/// Whether `graph` is still the selected one; an event's handler may have discarded it.
bool is_current(ControlState const& state, Graph const& graph);
/// Its selected axis; fault 9 when there is none.
Axis& selected_axis(ControlState& state);
Axis const& selected_axis(ControlState const& state);
/// Its selected data set; fault 9 when there is none.
DataSet& selected_data_set(ControlState& state);
DataSet const& selected_data_set(ControlState const& state);

inline Axis& selected_x_axis(Graph& graph) {
    return at(graph.Axes, graph.SelectedXAxis, "axis");
}
inline Axis& selected_y_axis(Graph& graph) {
    return at(graph.Axes, graph.SelectedYAxis, "axis");
}
/// Index field of the selected axis of a kind.
std::int16_t& selected_index(Graph& graph, AxisKind kind);

/// Position of the level-th axis (from 1) of a kind; 0 when there is none.
std::int16_t AxisLevelIndex(Graph const& graph, AxisKind kind, std::int16_t level);

/// An axis with its defaults. It is fixed when a1 differs from a2.
Axis fresh_axis(ControlState const& state, std::string_view name, AxisKind kind, double a1, double a2);

/// Gives an axis its defaults and raises GraphScaleChanged. It is fixed when a1 differs from a2.
void ResetAxis(ControlState& state, Axis& axis, std::string_view name, AxisKind kind, double a1, double a2);

/// Starts all range fields of an automatic axis at its first value.
void InitAxisLimits(Axis& axis, double value);

/// Keeps a graph's selected x and y axes and puts them back on every way out.
class SelectedAxesScope {
public:
    explicit SelectedAxesScope(Graph& graph)
        : graph_(graph), x_(graph.SelectedXAxis), y_(graph.SelectedYAxis) {}
    ~SelectedAxesScope() {
        graph_.SelectedXAxis = x_;
        graph_.SelectedYAxis = y_;
    }
    SelectedAxesScope(SelectedAxesScope const&) = delete;
    SelectedAxesScope& operator=(SelectedAxesScope const&) = delete;

private:
    Graph& graph_;
    std::int16_t x_;
    std::int16_t y_;
};

/// Makes a graph the current one and the earlier one again on every way out, if it still exists.
class CurrentGraphScope {
public:
    CurrentGraphScope(ControlState& state, std::int16_t graph) : state_(state), earlier_(state.CurrentGraph) {
        state_.CurrentGraph = graph;
    }
    ~CurrentGraphScope() {
        if (earlier_ < state_.NumGraphs()) state_.CurrentGraph = earlier_;
    }
    CurrentGraphScope(CurrentGraphScope const&) = delete;
    CurrentGraphScope& operator=(CurrentGraphScope const&) = delete;

private:
    ControlState& state_;
    std::int16_t earlier_;
};

/// Keeps a value and puts it back on every way out.
template <class T>
class RestoreScope {
public:
    explicit RestoreScope(T& target) : target_(target), value_(target) {}
    RestoreScope(T& target, T temporary) : target_(target), value_(target) { target_ = temporary; }
    ~RestoreScope() { target_ = value_; }
    RestoreScope(RestoreScope const&) = delete;
    RestoreScope& operator=(RestoreScope const&) = delete;

private:
    T& target_;
    T value_;
};

} // namespace qv::document
