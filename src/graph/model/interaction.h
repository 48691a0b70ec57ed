// What one press of a mouse button and the moves after it have to remember.
#pragma once

#include <cstdint>

namespace qv::graph {

/// What lies under the mouse. Hovering adds to it; a press starts afresh.
struct HitFlags {
    bool OnLegend = false;
    bool OnGraphBody = false;
    bool OnPlotArea = false;
    bool OnFrameLeft = false;
    bool OnFrameTop = false;
    bool OnFrameRight = false;
    bool OnFrameBottom = false;
    bool OnPlotLeft = false;
    bool OnPlotTop = false;
    bool OnPlotRight = false;
    bool OnPlotBottom = false;

    bool on_edge() const {
        return OnFrameLeft || OnFrameTop || OnFrameRight || OnFrameBottom || OnPlotLeft || OnPlotTop
               || OnPlotRight || OnPlotBottom;
    }
    bool operator==(HitFlags const&) const = default;
};

/// A corner on the page in whole twips.
struct Corner {
    std::int32_t left = 0;
    std::int32_t top = 0;
    bool operator==(Corner const&) const = default;
};

struct Pointing : HitFlags {
    Corner Grab;       // of the mouse from the frame's corner when a drag starts
    Corner LegendGrab; // of the mouse from the legend's corner; while a graph moves, of the legend from the
                       // frame's
    float LastMouseX = 0; // the last position that a move has dealt with, twips
    float LastMouseY = 0;
    Corner last_graph_corner; // of the previous step of a drag
    Corner last_legend_corner;
    bool box_on_page = false; // the rubber band drawn in invert mode is in step with the picture
};

} // namespace qv::graph
