// The numbers of a box plot.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace qv::render {

/// The five numbers that a box shows; whiskers that are not a number are not there.
struct BoxNumbers {
    double lower_whisker = 0, lower_quartile = 0, median = 0, upper_quartile = 0, upper_whisker = 0;
};

struct BoxStatistics : BoxNumbers {
    std::size_t count = 0;        // of the values
    double notch = 0;             // half its length
    std::vector<double> outliers; // values beyond the whiskers
};

/// Of finite values, at least one. Quartiles as `quantiles` has them. A whisker leads to the last value that
/// is no further from the box than `reach` times the distance of the quartiles (Tukey, Exploratory Data
/// Analysis, 1977). Medians whose notches do not meet differ at about the 95 % level: 1.57 times the distance
/// of the quartiles by the root of the count on both sides (McGill, Tukey and Larsen, Variations of Box
/// Plots, 1978).
BoxStatistics box_statistics(std::span<double const> values, double reach);

} // namespace qv::render
