#include "graph/model/PointStore.h"

#include "base/fault.h"

#include <algorithm>
#include <cmath>

namespace qv::graph {
namespace {

constexpr std::size_t smallest_block = 32;
constexpr std::size_t largest_block = 16384;

std::unique_ptr<double[]> column(std::size_t size) {
    return std::make_unique_for_overwrite<double[]>(size);
}

} // namespace

PointBlock::PointBlock(std::size_t capacity)
    : capacity_(capacity), x_(column(capacity)), y_(column(capacity)) {}

std::span<double const> PointBlock::e() const {
    if (!e_) return {};
    return {e_.get() + begin_, size()};
}

std::string_view PointBlock::data_id(std::size_t index) const {
    if (data_ids_.empty()) return {};
    const auto found = data_ids_.find(begin_ + index);
    return found == data_ids_.end() ? std::string_view() : std::string_view(found->second);
}

PointEntry PointBlock::entry(std::size_t index) const {
    const std::size_t place = begin_ + index;
    return {x_[place], y_[place], e_ ? e_[place] : 0, data_id(index)};
}

void PointBlock::append(PointEntry const& point) {
    if (point.E != 0 && !e_) {
        e_ = column(capacity_);
        std::fill_n(e_.get(), end_, 0.0);
    }
    if (!point.DataID.empty()) data_ids_.emplace(end_, point.DataID);
    if (!(end_ == begin_ || point.X >= x_[end_ - 1])) x_rising_ = false;
    x_[end_] = point.X;
    y_[end_] = point.Y;
    if (e_) e_[end_] = point.E;
    ++end_;
    if (std::isfinite(point.X) && std::isfinite(point.Y)) {
        x_extent_.include(point.X);
        y_extent_.include(point.Y);
    } else {
        all_finite_ = false;
        if (std::isnan(point.X)) x_rising_ = false;
    }
}

void PointBlock::drop_oldest(std::size_t count) {
    for (std::size_t place = begin_; place < begin_ + count && !data_ids_.empty(); ++place)
        data_ids_.erase(place);
    begin_ += count;
}

PointEntry PointStore::at(std::size_t index) const {
    for (PointBlock const& block : blocks_) {
        if (index < block.size()) return block.entry(index);
        index -= block.size();
    }
    raise_fault(FaultNumber::SubscriptOutOfRange);
}

void PointStore::append(PointEntry const& point) {
    if (blocks_.empty() || blocks_.back().full())
        blocks_.emplace_back(std::clamp(size_, smallest_block, largest_block));
    blocks_.back().append(point);
    ++size_;
    if (!(point.X >= last_x_)) x_rising_ = false;
    last_x_ = point.X;
}

void PointStore::drop_oldest(std::size_t count) {
    for (count = std::min(count, size_); count > 0;) {
        const std::size_t here = std::min(count, blocks_.front().size());
        blocks_.front().drop_oldest(here);
        if (blocks_.front().size() == 0) blocks_.pop_front();
        size_ -= here;
        count -= here;
    }
    if (size_ == 0) *this = PointStore();
}

} // namespace qv::graph
