// Adaptive sampling: where to evaluate a function so that its curve on the page is true to a pixel.
#pragma once

#include "qvgraph/geometry.h"
#include "render/lines/data_line.h"

#include <functional>
#include <span>
#include <vector>

namespace qv::render {

/// Evaluates a function for each of `x`; a failing sample becomes not-a-number.
using EvaluateOver = std::function<void(std::span<double const> x, std::span<double> y)>;

struct CurveFrame {
    LineMapping mapping;
    double x_from = 0; // ends of the curve, data values
    double x_to = 0;
    double pixel = 15; // twips
};

/// The curve as places on the page. A place that is not finite stands between pieces that are not connected:
/// where samples fail, at poles and at jumps.
///
/// Four samples a pixel to begin with; intervals across which the curve climbs more than half a pixel are
/// halved, with their neighbours, down to 128 samples a pixel. What still climbs then is searched for a jump
/// by bisection, and so is the border of a stretch where samples fail.
std::vector<Point> sample_curve(EvaluateOver const& evaluate, CurveFrame const& frame);

} // namespace qv::render
