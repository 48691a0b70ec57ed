// What one press of a mouse button and the moves after it have to remember.
#pragma once

#include "document/records.h"
#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace qv::document {

/// Gestures beyond the classic ones; a host switches off what it wants for itself.
struct Gestures {
    bool wheel_zoom = true;    // about the pointer; Shift: x axes only, Ctrl: y axes only
    bool middle_pan = true;    // dragging with the middle button
    bool keyboard = true;      // arrows, + and -, Home
    bool read_points = true;   // Ctrl+arrows go from point to point and from data set to data set
    bool pinch_zoom = true;    // two fingers
    bool tab_through = true;   // Tab and Shift+Tab go from graph to graph
    bool escape = true;        // takes a drag or a rubber band back
    bool undo_zoom = true;     // Alt+Left, Alt+Right
    bool point_tooltip = true; // names the data point under the pointer
};

/// The displayed range of one axis, in data values.
struct Shown {
    double first = 0;
    double last = 0;
    bool operator==(Shown const&) const = default;
};

/// The displayed ranges of a graph's axes before a step of zooming. Steps of the kinds from `Wheel` on follow
/// each other quickly; a run of one kind is taken back as a whole.
enum class ZoomKind : std::uint8_t { Box, Full, Double, Wheel, Pan, Key, Scroll };
struct ZoomStep {
    std::int16_t graph = 0;
    ZoomKind kind = ZoomKind::Box;
    std::vector<Shown> ranges;
};
struct ZoomHistory {
    std::vector<ZoomStep> undo;
    std::vector<ZoomStep> redo;
};

/// The values under a place, axis by axis, that a run of zooming about it keeps there.
struct ZoomAnchor {
    std::int16_t graph = -1;
    Point place;
    std::vector<double> values;
};

/// Where the pointer is, in twips on the page.
struct PointerTrack {
    std::optional<Point> place; // not while it moves with a button held; none before it was seen
    Point press;                // where a button last went down
    bool dragging = false;      // it has moved with a button held
    bool is_read = false;       // the read-out shows the values under it
};

/// The point that a person reads by keys.
struct ReadPoint {
    std::int16_t graph = 0;
    std::int16_t data_set = 0;
    std::size_t arrival = 0; // of all points the data set ever had
};

/// Where a graph and its legend were when a button was pressed.
struct GraphPlace {
    float left = 0, top = 0, width = 0, height = 0; // fractions of the page
    Margins margins;
    std::uint8_t legend_place = 0;
    float legend_left = 0, legend_top = 0; // percent of the frame
    std::vector<Shown> ranges;
    std::vector<bool> shows_all; // which axes showed their full range, wherever it may reach since
};

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

    bool on_frame_edge() const { return OnFrameLeft || OnFrameTop || OnFrameRight || OnFrameBottom; }
    bool on_plot_edge() const { return OnPlotLeft || OnPlotTop || OnPlotRight || OnPlotBottom; }
    bool on_edge() const { return on_frame_edge() || on_plot_edge(); }
    bool operator==(HitFlags const&) const = default;
};

/// A corner on the page in whole twips.
struct Corner {
    std::int32_t left = 0;
    std::int32_t top = 0;
    bool operator==(Corner const&) const = default;
};

/// A shape drawn over the visible page in invert mode: drawn once more, it is gone.
struct InvertedShape {
    Point from, to;
    LineShape form = LineShape::Segment;
    Box clip;
    bool operator==(InvertedShape const&) const = default;
};

/// What lies over the visible page and is no part of it; nothing but render/page_marks.cpp writes it.
enum class Mark : std::uint8_t { CrossHair, ZoomBox, ReadPoint };
struct PageMarks {
    std::array<std::vector<InvertedShape>, 3> shapes; // by mark, as they were drawn
    bool lifted = false;                              // all are off the page for a moment
};

/// A mark under the pointer, and which of its values it would take along.
struct MarkGrip {
    std::int16_t data_set = 0;
    std::uint8_t moves = 0;         // bits of render::MarkPart
    bool held = false;              // it is being dragged
    std::array<double, 4> before{}; // its values when that began
};

/// The corners of a rubber band.
struct ZoomBox {
    Point from, to;
};

struct Pointing : HitFlags {
    Corner Grab;       // of the mouse from the frame's corner when a drag starts
    Corner LegendGrab; // of the mouse from the legend's corner; while a graph moves, of the legend from the
                       // frame's
    float LastMouseX = 0; // the last position that a move has dealt with, twips
    float LastMouseY = 0;
    Corner last_graph_corner; // of the previous step of a drag
    Corner last_legend_corner;
    std::uint8_t pressed = 0; // the button whose drag is in progress, 0 for none
    GraphPlace before_press;
    std::optional<ZoomBox> zoom_box; // of the drag in progress
    std::optional<MarkGrip> mark;
};

} // namespace qv::document
