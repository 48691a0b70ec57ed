// Lines that go in steps from point to point.
#pragma once

#include "document/records.h"
#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/lines/data_line.h"

#include <cmath>
#include <cstdint>

namespace qv::render {

/// What DataSteps says: until where and from where on a point's value holds.
enum class Steps : std::uint8_t { None = 0, Before = 1, After = 2, Middle = 3 };

/// Other values mean none.
inline Steps steps_of(document::DataSet const& set) {
    return set.DataSteps <= 3 ? static_cast<Steps>(set.DataSteps) : Steps::None;
}

/// Calls `take(x, has_next_value)` with the corners of the line between two points: each has the value of
/// one.
template <class Take>
void for_each_step(Steps steps, double from_x, double to_x, Take const& take) {
    double const middle = from_x + (to_x - from_x) / 2;
    switch (steps) {
    case Steps::None: break;
    case Steps::Before: take(from_x, true); break;
    case Steps::After: take(to_x, false); break;
    case Steps::Middle: take(middle, false); take(middle, true);
    }
}

/// The same with `take(Point)`, in values.
template <class Take>
void for_each_corner(Steps steps, Point from, Point to, Take const& take) {
    for_each_step(steps, from.x, to.x, [&](double x, bool has_next_value) {
        take(Point{x, has_next_value ? to.y : from.y});
    });
}

/// The line through a store's points in steps, cut where a point is not finite. What lies beside the visible
/// box costs its ends only.
void draw_step_line(DrawSurface& surface, document::PointStore const& points, Steps steps,
                    LineMapping const& mapping);

} // namespace qv::render
