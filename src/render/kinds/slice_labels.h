// Where the labels round a pie stand, so that none covers another.
#pragma once

#include "qvgraph/geometry.h"

#include <span>
#include <vector>

namespace qv::render {

/// Something of a height that would best lie with its middle at a place, twips.
struct WishedPlace {
    double middle = 0;
    double height = 0;
};

/// The middles of things that lie one below the other in this order between two ends without covering one
/// another, together as near as can be to where they would like to lie (least squares; the pools of adjacent
/// violators). Things that are higher together than there is room overlap nobody's neighbour but reach beyond
/// the far end.
std::vector<double> pushed_apart(std::span<WishedPlace const> wishes, double low, double high);

} // namespace qv::render
