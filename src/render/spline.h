// The smooth curve through a data set's points: a natural cubic spline.
#pragma once

#include "document/records.h"
#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/lines/data_line.h"

#include <span>
#include <vector>

namespace qv::render {

/// Second derivatives at the points, zero at both ends: the tridiagonal system of the natural cubic spline,
/// solved by elimination without pivoting. Neighbours of equal x make a right-hand side of 1000; rows that
/// have lost their diagonal take over the value beside them.
std::vector<double> SplineCoefficients(std::span<Point const> points);

/// Those of a data set's points, the runs without gaps one behind the other; kept while the points stay.
std::vector<double> const& second_derivatives(document::DataSet const& set);

/// A stretch of the curve between two points, with the second derivatives there.
struct SplineStretch {
    Point from, to;
    double at_from = 0, at_to = 0;

    /// Where the curve is at a share of the way from one to the other; on the straight line where the
    /// equations overflow.
    Point at(double share) const;
};

/// Draws the curve in the surface's pen, a step for every 50 twips across, at most 100 between two points.
/// Two points of equal x leave a gap.
void draw_spline(DrawSurface& surface, document::DataSet const& set, LineMapping const& mapping);

} // namespace qv::render
