// The page in words: what assistive programs are told of it.
#pragma once

#include "qvgraph/geometry.h"

#include <string>
#include <vector>

namespace qv {

/// An axis or a data set.
struct PartOutline {
    std::string name;        ///< "x axis Time", "amplitude"
    std::string description; ///< an axis's range; count and extremes of a data set
};

/// A graph with its axes, then its data sets.
struct GraphOutline {
    std::string name;               ///< its title
    std::string description;        ///< how many axes and data sets
    Box frame;                      ///< twips
    std::vector<PartOutline> parts; ///< axes, then data sets
};

} // namespace qv
