#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "scale/mapping.h"
#include "scale/numeric.h"

namespace qv::scale {
namespace {

/// The frame along one direction of the page, in twips.
struct FrameSpan {
    std::int32_t start = 0;
    std::int32_t length = 0;
};

FrameSpan frame_span(double start_share, double length_share, std::int32_t page) {
    return {to_i32(start_share * page), to_i32(length_share * page)};
}

// The legend's corner stays in the frame; without a place of its own it would be off the page.
std::int32_t legend_start(double percent, FrameSpan frame) {
    const std::int32_t wished = to_i32(percent / 100 * frame.length + frame.start);
    const std::int64_t end = std::int64_t{frame.start} + frame.length;
    return to_i32(MinMax<std::int64_t>(wished, frame.start, end));
}

} // namespace

void CalcBorders(document::ControlState& state) {
    trapped(state, "CalcBorders", [&] {
        document::Graph& graph = current_graph(state);
        const bool whole_page = graph.GraphWholePage;
        const FrameSpan across = whole_page ? FrameSpan{0, state.PageWidth}
                                            : frame_span(graph.GraphLeft, graph.GraphWidth, state.PageWidth);
        const FrameSpan down = whole_page ? FrameSpan{0, state.PageHeight}
                                          : frame_span(graph.GraphTop, graph.GraphHeight, state.PageHeight);
        graph.FrameLeft = across.start;
        graph.FrameWidth = across.length;
        graph.FrameTop = down.start;
        graph.FrameHeight = down.length;
        graph.LegendLeft = legend_start(graph.LegendTableLeft, across);
        graph.LegendTop = legend_start(graph.LegendTableTop, down);
    });
}

} // namespace qv::scale
