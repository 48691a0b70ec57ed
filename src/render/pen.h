// The pen of one drawing step.
#pragma once

#include "qvgraph/DrawSurface.h"

#include <algorithm>

namespace qv::render {

/// Gives a surface a pen for as long as a step lasts; what was set before is back afterwards, on every way
/// out. So no step draws with what another has left behind.
class PenScope {
public:
    /// A thickness of 0 is drawn as 1.
    PenScope(DrawSurface& surface, int thickness, DrawStyle style = DrawStyle::Solid)
        : state_(surface.state), width_(state_.DrawWidth), style_(state_.draw_style) {
        state_.DrawWidth = std::max(1, thickness);
        state_.draw_style = style;
    }
    ~PenScope() {
        state_.DrawWidth = width_;
        state_.draw_style = style_;
    }
    PenScope(PenScope const&) = delete;
    PenScope& operator=(PenScope const&) = delete;

private:
    DrawState& state_;
    int width_;
    DrawStyle style_;
};

} // namespace qv::render
