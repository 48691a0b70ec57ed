// The bins of a histogram and how many values of a column fall into each.
#pragma once

#include "render/kinds/order_statistics.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qv::render {

/// How the bins are found: by the edges, else by the width, else by the number, else by the rule of Freedman
/// and Diaconis (On the Histogram as a Density Estimator, 1981).
struct BinRule {
    std::vector<double> edges; // rising
    double width = 0;          // bins begin at multiples of it
    std::int32_t number = 0;
    bool operator==(BinRule const&) const = default;
};

/// What the height of a bar tells.
enum class HistogramMeasure : std::uint8_t { Count = 0, Share = 1, Density = 2 };

/// Bins next to one another. A bin holds the values from its lower edge up to, but without, its upper edge;
/// the last one holds that as well. Values outside the edges and those that are not finite are in none.
struct Bins {
    std::vector<double> edges;         // one more than bins, or none
    std::vector<std::uint64_t> before; // how many values lie in the bins before each edge

    std::size_t size() const { return edges.empty() ? 0 : edges.size() - 1; }
    std::uint64_t total() const { return before.empty() ? 0 : before.back(); }
    std::uint64_t count(std::size_t bin) const { return before[bin + 1] - before[bin]; }
    /// The count, the share of the total, or the share by unit of the values; `cumulative` of this bin and
    /// those before it, where share and density are the same.
    double height(std::size_t bin, HistogramMeasure measure, bool cumulative) const;
};

/// More are not made: then the whole column is divided into so many.
constexpr std::size_t most_bins = 100'000;

/// Without finite values there are no bins.
Bins histogram_bins(Pieces column, BinRule const& rule);

} // namespace qv::render
