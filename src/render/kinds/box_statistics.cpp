#include "render/kinds/box_statistics.h"

#include "render/kinds/order_statistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

constexpr double notch_factor = 1.57;

// Infinitely far is to the extremes, also where the quartiles are equal.
double whisker_length(double reach, double spread) {
    if (!(reach > 0)) return 0;
    return std::isinf(reach) ? reach : reach * spread;
}

} // namespace

BoxStatistics box_statistics(std::span<double const> values, double reach) {
    constexpr std::array shares{0.25, 0.5, 0.75};
    const std::array pieces{values};
    const std::vector<double> quartiles = quantiles(pieces, values.size(), shares);
    BoxStatistics box;
    box.count = values.size();
    box.lower_quartile = quartiles[0];
    box.median = quartiles[1];
    box.upper_quartile = quartiles[2];
    double const spread = box.upper_quartile - box.lower_quartile;
    box.notch = notch_factor * spread / std::sqrt(static_cast<double>(values.size()));
    double const length = whisker_length(reach, spread);
    double const lowest = box.lower_quartile - length, highest = box.upper_quartile + length;
    double least = std::numeric_limits<double>::infinity(), largest = -least;
    for (double const value : values) {
        if (value >= lowest) least = std::min(least, value);
        if (value <= highest) largest = std::max(largest, value);
    }
    // Quartiles lie between values, so that none of those within reach need be outside the box.
    box.lower_whisker = std::min(least, box.lower_quartile);
    box.upper_whisker = std::max(largest, box.upper_quartile);
    for (double const value : values)
        if (value < box.lower_whisker || value > box.upper_whisker) box.outliers.push_back(value);
    return box;
}

} // namespace qv::render
