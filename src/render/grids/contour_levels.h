// The values at which contour lines are drawn.
#pragma once

#include "document/PointStore.h"

#include <string_view>
#include <vector>

namespace qv::render {

/// What a host says of levels: how many, or which.
struct LevelChoice {
    int count = 0;              // about so many round ones, where there are no values
    std::vector<double> values; // rising, all different
};

/// Reads "", a whole number of levels from 1 to 1000, or a list of numbers separated by ";" (or ","), of
/// which one alone is written "5;". Anything else is fault 5.
LevelChoice level_choice(std::string_view text);

/// The levels chosen within a range of values: those given, or about as many round ones as asked for,
/// multiples of 1, 2 or 5 times a power of ten, on a logarithmic scale over several powers those powers.
std::vector<double> contour_levels(LevelChoice const& choice, document::Extent const& range, bool is_log);

} // namespace qv::render
