// Bars upon bars: where each bar of a data set begins and ends, in data values.
#pragma once

#include "document/records.h"
#include "qvgraph/geometry.h"
#include "render/symbols.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace qv::render {

/// Ends of the bars drawn last, by position in their data set.
struct BarStack {
    std::vector<BarBase> ends;
    std::size_t position = 0;

    BarBase& here() {
        if (position >= ends.size()) ends.resize(position + 1);
        return ends[position];
    }
};

/// A bar's end and where it begins.
struct StackedBar {
    Point end;
    BarBase base;
    bool is_finite() const { return std::isfinite(end.x) && std::isfinite(end.y); }
};

/// Puts a bar onto the one below it and leaves its end for the next data set.
inline StackedBar stacked(BarStack& stack, document::DataSet const& set, Point value) {
    StackedBar bar{value, stack.here()};
    if (set.BarStacked) (set.BarHoriz ? bar.end.x : bar.end.y) += set.BarHoriz ? bar.base.x : bar.base.y;
    // A bar that is not drawn leaves the one below it to stand on.
    if (bar.is_finite()) stack.here() = {bar.end.x, bar.end.y};
    ++stack.position;
    return bar;
}

} // namespace qv::render
