#include "render/kinds/histogram_bins.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace qv::render {
namespace {

/// Bins of one width.
struct EvenBins {
    double first = 0, last = 0;
    std::size_t number = 1;

    // Of a range too long for a number half the values are as good.
    double scale() const { return std::isfinite(last - first) ? 1 : 0.5; }
    double span() const { return last * scale() - first * scale(); }
};

/// The range to be divided; a single value gets half a unit on both sides, or what its digits can tell.
EvenBins range_of(ColumnExtent const& extent) {
    double const value = extent.least;
    if (value != extent.largest) return {value, extent.largest};
    constexpr double least_share = 8 * std::numeric_limits<double>::epsilon();
    double const half = std::max(0.5, std::abs(value) * least_share);
    constexpr double most = std::numeric_limits<double>::max();
    return {std::max(value - half, -most), std::min(value + half, most)};
}

/// No more bins than there are different numbers, nor more than anybody wants.
std::size_t sensible_number(EvenBins const& range, double wanted) {
    double const largest = std::max(std::abs(range.first), std::abs(range.last));
    double const finest = (largest - std::nextafter(largest, 0)) * range.scale();
    double const most = std::min(static_cast<double>(most_bins), std::floor(range.span() / finest));
    return static_cast<std::size_t>(std::clamp(std::isnan(wanted) ? 1 : wanted, 1.0, std::max(most, 1.0)));
}

// Where more than half the values are equal the quartiles tell nothing, and Sturges' rule stands in.
double number_by_rule(Pieces column, ColumnExtent const& extent, EvenBins const& range) {
    constexpr std::array shares{0.25, 0.75};
    const std::vector<double> quartiles = quantiles(column, extent.count, shares);
    auto const count = static_cast<double>(extent.count);
    double const scale = range.scale();
    double const spread = quartiles[1] * scale - quartiles[0] * scale;
    double const width = 2.0 * spread * std::pow(count, -1.0 / 3.0);
    return std::ceil(width > 0 ? range.span() / width : std::log2(count) + 1);
}

std::vector<double> edges_of(EvenBins const& bins) {
    std::vector<double> edges(bins.number + 1);
    auto const number = static_cast<double>(bins.number);
    double const step = (bins.last - bins.first) / number;
    for (std::size_t i = 0; i < bins.number; ++i) {
        auto const at = static_cast<double>(i);
        edges[i] =
            std::isfinite(step) ? at * step + bins.first : std::lerp(bins.first, bins.last, at / number);
    }
    edges.back() = bins.last;
    return edges;
}

/// Edges at multiples of a width, which for widths such as 0.1 are the nearest numbers to 0.1, 0.2, 0.3.
std::vector<double> edges_by_width(ColumnExtent const& extent, double width) {
    double const parts = std::round(1 / width);
    bool const is_part_of_one = parts > 1 && std::abs(parts * width - 1) < 1e-12;
    auto const multiple = [&](double factor) { return is_part_of_one ? factor / parts : factor * width; };
    double first = std::floor(is_part_of_one ? extent.least * parts : extent.least / width);
    double last = std::floor(is_part_of_one ? extent.largest * parts : extent.largest / width) + 1;
    constexpr double countable = 1e15; // beyond it factors have no room for one more
    if (!(last - first <= static_cast<double>(most_bins)) || std::abs(first) > countable
        || std::abs(last) > countable)
        return {};
    // Rounding of the quotient may have passed an edge.
    first -= multiple(first) > extent.least;
    last += multiple(last) <= extent.largest;
    std::vector<double> edges;
    for (double factor = first; factor <= last; ++factor) edges.push_back(multiple(factor));
    return edges;
}

/// The bins into which a value falls of which only the edges are known.
struct AnyBins {
    std::span<double const> edges;

    std::size_t operator()(double value) const {
        std::size_t bin = 0;
        for (std::size_t left = edges.size() - 1; left > 1;) { // without branches that cannot be foreseen
            std::size_t const half = left / 2;
            bin += edges[bin + half] <= value ? half : 0;
            left -= half;
        }
        return bin;
    }
};

/// The same for bins of one width: a guess, which the edges themselves correct.
struct BinsByStep {
    std::span<double const> edges;
    double scale = 1, start = 0, per_unit = 0;

    std::size_t operator()(double value) const {
        std::size_t const last = edges.size() - 2;
        std::size_t bin =
            std::min(last, static_cast<std::size_t>(static_cast<int>((value * scale - start) * per_unit)));
        while (value < edges[bin]) --bin;
        while (bin < last && value >= edges[bin + 1]) ++bin;
        return bin;
    }
};

template <class BinOf>
Bins counted(Pieces column, std::vector<double> edges, BinOf const& bin_of) {
    std::vector<std::uint64_t> before(edges.size());
    std::uint64_t* const counts = before.data() + 1;
    double const first = edges.front(), last = edges.back();
    for (auto const piece : column)
        for (double const value : piece)
            if (value >= first && value <= last) ++counts[bin_of(value)];
    for (std::size_t i = 1; i < before.size(); ++i) before[i] += before[i - 1];
    return {std::move(edges), std::move(before)};
}

Bins evenly_counted(Pieces column, EvenBins const& bins, std::vector<double> edges) {
    double const scale = bins.scale();
    const BinsByStep bin_of{edges, scale, bins.first * scale,
                            static_cast<double>(edges.size() - 1) / bins.span()};
    return counted(column, std::move(edges), bin_of);
}

} // namespace

double Bins::height(std::size_t bin, HistogramMeasure measure, bool cumulative) const {
    auto const number = static_cast<double>(cumulative ? before[bin + 1] : count(bin));
    if (measure != HistogramMeasure::Share && measure != HistogramMeasure::Density) return number;
    if (total() == 0) return 0;
    bool const by_unit = measure == HistogramMeasure::Density && !cumulative;
    double const share = number / static_cast<double>(total());
    return by_unit ? share / (edges[bin + 1] - edges[bin]) : share;
}

Bins histogram_bins(Pieces column, BinRule const& rule) {
    ColumnExtent const extent = extent_of(column);
    if (extent.count == 0) return {};
    if (rule.edges.size() > 1) return counted(column, rule.edges, AnyBins{rule.edges});
    EvenBins bins = range_of(extent);
    if (rule.width > 0 && std::isfinite(rule.width)) {
        std::vector<double> edges = edges_by_width(extent, rule.width);
        if (!edges.empty()) {
            bins = {edges.front(), edges.back(), edges.size() - 1};
            return evenly_counted(column, bins, std::move(edges));
        }
        bins.number = sensible_number(bins, static_cast<double>(most_bins));
    } else {
        bins.number =
            sensible_number(bins, rule.number > 0 ? rule.number : number_by_rule(column, extent, bins));
    }
    return evenly_counted(column, bins, edges_of(bins));
}

} // namespace qv::render
