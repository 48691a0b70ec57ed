#include "interact/front.h"

#include "document/selection.h"
#include "document/trap.h"
#include "interact/scroll_bars.h"
#include "render/pipeline.h"
#include "scale/zoomed.h"

#include <algorithm>

namespace qv::interact {

using document::ControlState;

void BringGraphToFront(ControlState& state, std::int16_t graph) {
    trapped(state, "BringGraphToFront", [&] {
        if (graph < 0 || graph >= state.NumGraphs() || state.GraphOrder.empty()) return;
        if (state.GraphOrder.back() == graph) return;
        const auto place = std::ranges::find(state.GraphOrder, graph);
        if (place == state.GraphOrder.end()) return;
        std::rotate(place, place + 1, state.GraphOrder.end());
        state.CurrentGraph = graph;
        render::RefreshGraphs(state, -1, true);
        if (state.Graphs.empty()) return;
        scale::SetScrollBarsVisibility(state);
        SetScrollBars(state);
        if (!state.SuppressRaisingEvents) state.events->NewGraphInFront();
    });
}

void refresh_graph(ControlState& state, std::int16_t graph) {
    bool const in_front = !state.GraphOrder.empty() && state.GraphOrder.back() == graph;
    render::RefreshGraphs(state, in_front ? graph : std::int16_t{-1}, true);
}

} // namespace qv::interact
