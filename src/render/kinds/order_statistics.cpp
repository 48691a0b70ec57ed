#include "render/kinds/order_statistics.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace qv::render {
namespace {

constexpr std::size_t sample_size = 8192;
constexpr std::size_t sampling_pays = 16 * sample_size; // values
// Standard deviations of the place of a value in the sample within which the one sought is looked for.
constexpr double bracket_deviations = 5;
constexpr double largest_number = std::numeric_limits<double>::max();

bool counts(double value) {
    return std::abs(value) <= largest_number;
}

std::vector<double> finite_values(Pieces column, std::size_t count) {
    std::vector<double> values;
    values.reserve(count);
    for (auto const piece : column)
        for (double const value : piece)
            if (counts(value)) values.push_back(value);
    return values;
}

/// Two neighbours in rising order, and how far from the first to the second the quantile lies.
struct Place {
    std::size_t lower = 0, upper = 0;
    double way = 0;
};

Place place_of(double share, std::size_t count) {
    double const position = std::clamp(share, 0.0, 1.0) * static_cast<double>(count - 1);
    auto const lower = static_cast<std::size_t>(position);
    return {lower, std::min(lower + 1, count - 1), position - std::floor(position)};
}

/// The values at both places of values in any order, of which `before` smaller ones were left out.
double between(std::vector<double>& values, std::size_t before, Place const& place) {
    auto const at = [&](std::size_t index) {
        return values.begin() + static_cast<std::ptrdiff_t>(index - before);
    };
    std::nth_element(values.begin(), at(place.lower), values.end());
    double const lower = *at(place.lower);
    double const upper =
        place.upper == place.lower ? lower : *std::min_element(at(place.lower) + 1, values.end());
    return std::lerp(lower, upper, place.way);
}

/// Some of the values, evenly over the column but not at even distances, which might be those of a pattern
/// in it; in rising order.
std::vector<double> sorted_sample(Pieces column) {
    std::size_t size = 0;
    for (auto const piece : column) size += piece.size();
    std::size_t const stride = size / sample_size;
    std::vector<double> sample;
    sample.reserve(sample_size);
    std::size_t next = 0, begin = 0;
    std::uint64_t random = 1;
    for (auto const piece : column) {
        for (; next < begin + piece.size(); next += stride) {
            random = random * 6364136223846793005ULL + 1442695040888963407ULL;
            std::size_t const index = next + (random >> 33) % stride - begin;
            if (index < piece.size() && counts(piece[index])) sample.push_back(piece[index]);
        }
        begin += piece.size();
    }
    std::ranges::sort(sample);
    return sample;
}

/// Values between which a quantile almost surely lies; those of the column that do are collected.
struct Bracket {
    double low = 0, high = 0;
    std::size_t below = 0;
    std::vector<double> inside;

    bool holds(Place const& place) const {
        return place.lower >= below && place.upper < below + inside.size();
    }
};

Bracket bracket_of(double share, std::span<double const> sample) {
    auto const size = static_cast<double>(sample.size());
    double const reach = bracket_deviations * std::sqrt(size * share * (1 - share)) + 2;
    double const place = share * (size - 1);
    auto const at = [&](double index) {
        return sample[static_cast<std::size_t>(std::clamp(index, 0.0, size - 1))];
    };
    return {place - reach < 0 ? -largest_number : at(place - reach),
            place + reach > size - 1 ? largest_number : at(place + reach),
            0,
            {}};
}

// Nothing in the inner loop depends on a branch that cannot be foreseen.
void collect(std::span<double const> piece, Bracket& bracket, std::vector<double>& scratch) {
    scratch.resize(std::max(scratch.size(), piece.size()));
    double* const kept = scratch.data();
    double const low = bracket.low, high = bracket.high;
    std::size_t below = 0, inside = 0;
    for (double const value : piece) {
        below += static_cast<std::size_t>(value < low) & static_cast<std::size_t>(value >= -largest_number);
        kept[inside] = value;
        inside += static_cast<std::size_t>(value >= low) & static_cast<std::size_t>(value <= high);
    }
    bracket.below += below;
    bracket.inside.insert(bracket.inside.end(), kept, kept + inside);
}

/// As Floyd and Rivest select (Expected Time Bounds for Selection, 1975): a sample tells between which values
/// to look. Empty where it has told wrong.
std::vector<std::optional<double>> quantiles_by_sample(Pieces column, std::size_t count,
                                                       std::span<double const> shares) {
    std::vector<double> const sample = sorted_sample(column);
    std::vector<std::optional<double>> found(shares.size());
    if (sample.size() < sample_size / 4) return found;
    std::vector<Bracket> brackets;
    brackets.reserve(shares.size());
    for (double const share : shares) brackets.push_back(bracket_of(std::clamp(share, 0.0, 1.0), sample));
    std::vector<double> scratch;
    for (auto const piece : column)
        for (Bracket& bracket : brackets) collect(piece, bracket, scratch);
    for (std::size_t i = 0; i < shares.size(); ++i) {
        Place const place = place_of(shares[i], count);
        if (brackets[i].holds(place)) found[i] = between(brackets[i].inside, brackets[i].below, place);
    }
    return found;
}

} // namespace

ColumnExtent extent_of(Pieces column) {
    ColumnExtent extent{0, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    for (auto const piece : column) {
        ColumnExtent here = extent;
        for (double const value : piece) {
            if (!counts(value)) continue;
            ++here.count;
            here.least = value < here.least ? value : here.least;
            here.largest = value > here.largest ? value : here.largest;
        }
        extent = here;
    }
    return extent;
}

std::vector<double> quantiles(Pieces column, std::size_t count, std::span<double const> shares) {
    std::vector<std::optional<double>> found(shares.size());
    if (count >= sampling_pays) found = quantiles_by_sample(column, count, shares);
    std::vector<double> values;
    std::vector<double> result;
    result.reserve(shares.size());
    for (std::size_t i = 0; i < shares.size(); ++i) {
        if (!found[i] && values.empty()) values = finite_values(column, count);
        result.push_back(found[i] ? *found[i] : between(values, 0, place_of(shares[i], count)));
    }
    return result;
}

} // namespace qv::render
