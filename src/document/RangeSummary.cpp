#include "document/RangeSummary.h"

#include <algorithm>
#include <cmath>

namespace qv::document {

EvenSpacing spacing_of(double const* values, std::size_t count) {
    double const first = values[0];
    double const step = count > 1 ? (values[count - 1] - first) / static_cast<double>(count - 1) : 0;
    constexpr std::size_t lanes = 4;
    double deviation[lanes]{};
    for (std::size_t i = 0; i < count; ++i) {
        double const away = std::abs(values[i] - (first + static_cast<double>(i) * step));
        deviation[i % lanes] = std::max(deviation[i % lanes], away);
    }
    return {first, step, *std::ranges::max_element(deviation)};
}

void RangeSummary::extend(double const* values, std::size_t end) {
    std::vector<ValueRange>& finest = ranges_[0];
    for (std::size_t place = finest.size() * span(0); place + span(0) <= end; place += span(0))
        finest.push_back(range_of(values + place, span(0)));
    for (std::size_t level = 1; level < levels; ++level) {
        std::vector<ValueRange> const& below = ranges_[level - 1];
        std::vector<ValueRange>& here = ranges_[level];
        while ((here.size() + 1) * fan_out <= below.size()) {
            ValueRange range = below[here.size() * fan_out];
            for (std::size_t k = 1; k < fan_out; ++k) {
                range.low = std::min(range.low, below[here.size() * fan_out + k].low);
                range.high = std::max(range.high, below[here.size() * fan_out + k].high);
            }
            here.push_back(range);
        }
    }
}

void RangeSummary::shorten(std::size_t end) {
    for (std::size_t level = 0; level < levels; ++level)
        if (ranges_[level].size() > end / span(level)) ranges_[level].resize(end / span(level));
}

} // namespace qv::document
