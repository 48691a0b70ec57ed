// The way from a handle to its record, and what the members of handles share.
#pragma once

#include "control/property_access.h"
#include "document/handle_anchor.h"
#include "qvgraph/handles.h"

#include <type_traits>
#include <vector>

namespace qv::control {

struct HandleAccess {
    static bool leads_on(Handle const& handle) {
        return handle.anchor_ && handle.anchor_->page && handle.anchor_->generation == handle.generation_;
    }
    static bool is_empty(Handle const& handle) { return !handle.anchor_; }
    /// The page of a handle; fault 91 when it leads nowhere.
    static ControlState& page(Handle const& handle) {
        if (!leads_on(handle)) raise_discarded(handle);
        return *handle.anchor_->page;
    }
    // Of a handle whose page was asked for first.
    static Graph& graph(Handle const& handle) { return *handle.graph_; }
    template <class Record>
    static Record& record(Handle const& handle) {
        return *static_cast<Record*>(handle.record_);
    }
    template <class Made, class Record>
    static Made make(ControlState& state, Graph& graph, Record& record) {
        HandleAnchor& anchor = state.handle_anchor.of(state);
        Made made;
        Handle& handle = made;
        handle.anchor_ = &anchor;
        ++anchor.holders;
        handle.generation_ = anchor.generation;
        handle.graph_ = &graph;
        handle.record_ = &record;
        return made;
    }

private:
    [[noreturn, gnu::cold, gnu::noinline]] static void raise_discarded(Handle const& handle) {
        char const* const why =
            !handle.anchor_
                ? "This handle is empty. Assign it what page.graph(...) or a member of a handle returns."
            : !handle.anchor_->page
                ? "The page of this handle is gone."
                : "The graph of this handle was discarded by Reset. Make a new one with page.graph(...).";
        raise_fault(FaultNumber::ObjectNotSet, why);
    }
};
using Access = HandleAccess;

/// The records of a handle to this kind of record, for the procedures of properties.
template <class Record>
Records records_of(Handle const& handle) {
    Records records{.control = &Access::page(handle), .graph = &Access::graph(handle)};
    if constexpr (std::is_same_v<Record, Axis>) records.axis = &Access::record<Axis>(handle);
    if constexpr (std::is_same_v<Record, DataSet>) records.data = &Access::record<DataSet>(handle);
    return records;
}

// Set the properties that are given.
void apply(Records const& records, AxisOptions const& options);
void apply(Records const& records, LegendOptions const& options);
void apply(Records const& records, GraphOptions const& options);
void apply(Records const& records, DataOptions const& options);

/// Finishes the newest element of a list; where that fails, the element goes again.
void whole_or_not_at_all(auto& list, auto finish) {
    try {
        finish();
    } catch (...) {
        list.pop_back();
        throw;
    }
}

template <class Made, class Records>
std::vector<Made> handles_of(Handle const& handle, Records& records) {
    ControlState& state = Access::page(handle);
    std::vector<Made> handles;
    handles.reserve(records.size());
    for (auto& record : records) handles.push_back(Access::make<Made>(state, Access::graph(handle), record));
    return handles;
}

/// Number of an axis in its graph; fault 5 for one of another graph.
std::int16_t axis_index(Graph const& graph, Axis const& axis);

/// Puts a data set on the axes that the options name.
void lay_on_axes(Graph const& graph, DataSet& set, DataOptions const& options);

GraphHandle graph_handle(ControlState& state, Graph& graph);
GraphHandle graph_of(Handle const& handle);

} // namespace qv::control
