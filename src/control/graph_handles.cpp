// Graphs by handle: their titles, legends and data sets, and the graphs of a page.
#include "control/data_entry.h"
#include "control/document.h"
#include "control/handle_records.h"
#include "document/selection.h"
#include "qvgraph/qvGraph.h"
#include "render/graph_ranges.h"
#include "render/plot_geometry.h"

#include <algorithm>
#include <utility>

namespace qv::control {
namespace {

std::int16_t index_of(ControlState const& state, Graph const& graph) {
    auto const is_it = [&](auto const& other) { return other.get() == &graph; };
    return static_cast<std::int16_t>(std::ranges::find_if(state.Graphs, is_it) - state.Graphs.begin());
}

std::string& title_of(Handle const& handle) {
    ControlState& state = Access::page(handle);
    return state.GraphTitles[static_cast<std::size_t>(index_of(state, Access::graph(handle)))];
}

} // namespace
} // namespace qv::control

namespace qv {

using control::Access;
using control::Records;
using document::ControlState;
using document::DataSet;

std::string GraphHandle::title() const {
    return control::title_of(*this);
}

void GraphHandle::title(std::string_view title) const {
    control::title_of(*this) = title;
}

Box GraphHandle::plot_area() const {
    Access::page(*this);
    return render::plot_box(Access::graph(*this));
}

void GraphHandle::fit(double margin) const {
    ControlState& state = Access::page(*this);
    bool const has_new_range = [&] {
        const document::CurrentGraphScope current(state, control::index_of(state, Access::graph(*this)));
        return render::fit_axes(state, margin);
    }();
    if (has_new_range) document::raise_scale_changed(state);
}

LegendHandle GraphHandle::legend() const {
    ControlState& state = Access::page(*this);
    return Access::make<LegendHandle>(state, Access::graph(*this), Access::graph(*this));
}

LegendHandle GraphHandle::legend(LegendOptions const& options) const {
    LegendHandle const table = legend();
    table.set(options);
    return table;
}

std::vector<DataHandle> GraphHandle::data_sets() const {
    Access::page(*this);
    return control::handles_of<DataHandle>(*this, Access::graph(*this).DataSets);
}

DataHandle GraphHandle::find(std::string_view legend) const {
    for (DataHandle const& set : data_sets())
        if (Access::record<DataSet>(set).DataLegend == legend) return set;
    return {};
}

GraphHandle qvGraph::graph(std::string_view name, GraphOptions const& options) {
    ControlState& state = *state_;
    auto graph = control::graph_with_axes(state, {});
    control::apply(Records{.control = &state, .graph = graph.get()}, options);
    GraphHandle const made = control::graph_handle(state, *graph);
    control::append_graph(state, std::move(graph), name);
    control::tell_of_first_axes(state);
    return made;
}

std::vector<GraphHandle> qvGraph::graphs() {
    std::vector<GraphHandle> handles;
    handles.reserve(state_->Graphs.size());
    for (auto const& graph : state_->Graphs) handles.push_back(control::graph_handle(*state_, *graph));
    return handles;
}

GraphHandle qvGraph::find_graph(std::string_view name) {
    auto const found = std::ranges::find(state_->GraphTitles, name);
    if (found == state_->GraphTitles.end()) return {};
    return control::graph_handle(
        *state_, *state_->Graphs[static_cast<std::size_t>(found - state_->GraphTitles.begin())]);
}

} // namespace qv
