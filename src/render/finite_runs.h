// The points of a data set as runs without gaps: a point that is not finite ends a curve, and the next one
// starts another.
#pragma once

#include "document/PointStore.h"
#include "qvgraph/geometry.h"

#include <cmath>
#include <span>
#include <vector>

namespace qv::render {

/// Calls `take(std::span<Point const>)` with the data values of each run, in order of arrival.
template <class Take>
void for_each_finite_run(document::PointStore const& points, Take take) {
    std::vector<Point> run;
    run.reserve(points.size());
    auto const hand_over = [&] {
        if (!run.empty()) take(std::span<Point const>(run));
        run.clear();
    };
    for (document::PointBlock const& block : points.blocks()) {
        auto const x = block.x(), y = block.y();
        for (std::size_t i = 0; i < block.size(); ++i) {
            if (std::isfinite(x[i]) && std::isfinite(y[i]))
                run.push_back({x[i], y[i]});
            else
                hand_over();
        }
    }
    hand_over();
}

} // namespace qv::render
