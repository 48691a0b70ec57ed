// RangeSummary: the smallest and largest of some values, of 32, 256 and 2048 in turn, so that of very many
// values few need to be looked at.
#pragma once

#include "document/value_range.h"

#include <array>
#include <cstddef>
#include <vector>

namespace qv::document {

/// Values as if they were evenly spaced: where the first lies, how far it is to the next, and how far any of
/// them lies from where that has it.
struct EvenSpacing {
    double first, step, deviation;
};
EvenSpacing spacing_of(double const* values, std::size_t count);

/// Takes half a byte and a little for each value.
class RangeSummary {
public:
    static constexpr std::size_t levels = 3;
    static constexpr std::size_t fan_out = 8; // ranges of a level in one of the next
    /// How many values a range of a level spans.
    static constexpr std::size_t span(std::size_t level) { return std::size_t{32} << (3 * level); }

    /// The level whose ranges span so many values.
    static constexpr std::size_t level_of(std::size_t span_) {
        std::size_t level = 0;
        while (span(level) < span_) ++level;
        return level;
    }

    /// Takes in the values up to `end`, of which the earlier ones are as they were.
    void extend(double const* values, std::size_t end);
    /// Forgets what was known of the values from `end` on.
    void shorten(std::size_t end);

    /// How many values from the first on are summarised in a level.
    std::size_t end(std::size_t level = 0) const { return ranges_[level].size() * span(level); }
    /// The range of the values from `place` on, which is a multiple of the level's span.
    ValueRange const& at(std::size_t level, std::size_t place) const {
        return ranges_[level][place / span(level)];
    }
    /// Whether the level has a range of the values from `place` on.
    bool has(std::size_t level, std::size_t place) const {
        return place % span(level) == 0 && place / span(level) < ranges_[level].size();
    }

private:
    std::array<std::vector<ValueRange>, levels> ranges_;
};

} // namespace qv::document
