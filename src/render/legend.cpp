#include "render/legend.h"

#include "base/convert.h"
#include "graph/model/trap.h"

namespace qv::render {

void LegendTable(graph::ControlState& state, DrawSurface&, std::int16_t index) {
    graph::trapped(state, "LegendTable", [&] {
        graph::Graph& graph = *at(state.Graphs, index);
        if (!graph.LegendShow) return;
        graph.LegendWidth = 0;
        graph.LegendHeight = 0;
    });
}

} // namespace qv::render
