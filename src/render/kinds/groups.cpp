#include "render/kinds/groups.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

double smallest_step(std::vector<double> const& rising) {
    double smallest = 0;
    for (std::size_t i = 1; i < rising.size(); ++i) {
        double const step = rising[i] - rising[i - 1];
        if (step > 0 && std::isfinite(step) && (smallest == 0 || step < smallest)) smallest = step;
    }
    return smallest;
}

} // namespace

std::size_t PositionIndex::of(double position) {
    if (last_ < positions_.size() && positions_[last_] == position) return last_;
    if (positions_.size() <= few) {
        auto const found = std::ranges::find(positions_, position);
        last_ = static_cast<std::size_t>(found - positions_.begin());
        if (found != positions_.end()) return last_;
    } else if (auto const found = numbers_.find(position); found != numbers_.end()) {
        return last_ = found->second;
    }
    last_ = positions_.size();
    positions_.push_back(position);
    numbers_.emplace(position, last_);
    return last_;
}

Gaps gaps_between(std::vector<double> positions) {
    std::ranges::sort(positions);
    Gaps gaps{smallest_step(positions), 0};
    std::erase_if(positions, [](double position) { return !(position > 0); });
    for (double& position : positions) position = std::log(position);
    gaps.logarithmic = smallest_step(positions);
    return gaps;
}

double half_width_of_groups(document::DataSet const& set, Gaps const& gaps, document::Axis const& axis) {
    constexpr double day = 24 * 3600.0;
    double const alone = axis.AxisTime && !axis.AxisLog ? day : 1;
    double const gap = axis.AxisLog ? gaps.logarithmic : gaps.linear;
    double const share = set.GroupWidth >= 0 ? std::min(set.GroupWidth, 1.0) : 0;
    return share / 2 * (gap > 0 ? gap : alone);
}

} // namespace qv::render
