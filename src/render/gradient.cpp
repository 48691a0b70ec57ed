#include "render/gradient.h"

#include "graph/model/trap.h"
#include "render/plot_geometry.h"

namespace qv::render {

void DrawGradient(graph::ControlState& state, DrawSurface& surface, Area area, graph::FillSpec const& fill) {
    graph::trapped(state, "DrawGradient", [&] {
        if (state.Graphs.empty() || fill.Transparent) return;
        ClipGraphArea(state, surface, area);
        fill_box(surface, area_box(state, area), fill.Color1);
        ClipGraphArea(state, surface, Area::GraphFrame);
    });
}

} // namespace qv::render
