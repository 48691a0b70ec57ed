#include "document/PointStore.h"

#include "base/text.h"
#include "qvgraph/fault.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::document {
namespace {

constexpr double nothing_given = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t smallest_block = 32;
constexpr std::size_t largest_block = ColumnPool::column_size;

ColumnPool::Column column(std::size_t size, ColumnPool* pool) {
    return pool && size == ColumnPool::column_size ? pool->take() : ColumnPool::Column(new double[size]);
}

} // namespace

PointBlock::PointBlock(std::size_t capacity, ColumnPool* pool)
    : capacity_(capacity), pool_(pool), x_(column(capacity, pool)), y_(column(capacity, pool)) {}

std::span<double const> PointBlock::e() const {
    if (!e_) return {};
    return {e_.get() + begin_, size()};
}

std::span<double const> PointBlock::extra(std::size_t column) const {
    if (!extra_[column]) return {};
    return {extra_[column].get() + begin_, size()};
}

std::string_view PointBlock::data_id(std::size_t index) const {
    if (data_ids_.empty()) return {};
    auto const found = data_ids_.find(begin_ + index);
    return found == data_ids_.end() ? std::string_view() : std::string_view(found->second);
}

PointEntry PointBlock::entry(std::size_t index) const {
    const std::size_t place = begin_ + index;
    return {x_[place], y_[place], e_ ? e_[place] : 0, data_id(index)};
}

void PointBlock::need_e_column() {
    if (e_) return;
    e_ = column(capacity_, pool_);
    std::fill_n(e_.get(), end_, 0.0);
    plain_ = false;
}

void PointBlock::append_extra(std::size_t column, std::span<double const> values, std::size_t count) {
    ColumnPool::Column& kept = extra_[column];
    if (!kept && values.empty()) return;
    if (!kept) {
        kept = qv::document::column(capacity_, pool_);
        std::fill_n(kept.get(), end_, nothing_given);
        plain_ = false;
    }
    if (values.empty())
        std::fill_n(kept.get() + end_, count, nothing_given);
    else
        std::ranges::copy(values, kept.get() + end_);
}

void PointBlock::append_no_extra() {
    for (std::size_t column = 0; column < extra_column_count; ++column) append_extra(column, {}, 1);
}

void PointBlock::keep_data_id(std::string_view data_id) {
    auto const trimmed = trim(data_id);
    if (!trimmed.empty()) data_ids_.emplace(end_, trimmed);
}

void PointBlock::append(std::span<double const> x, std::span<double const> y, std::span<double const> e,
                        ExtraColumns const& extra) {
    if (std::ranges::any_of(e, [](double half_length) { return half_length != 0; })) need_e_column();
    std::ranges::copy(x, x_.get() + end_);
    std::ranges::copy(y, y_.get() + end_);
    if (e_ && e.empty())
        std::fill_n(e_.get() + end_, x.size(), 0.0);
    else if (e_)
        std::ranges::copy(e, e_.get() + end_);
    for (std::size_t column = 0; column < extra_column_count; ++column)
        append_extra(column, extra[column], x.size());
    end_ += x.size();
}

PointBlock::Known const& PointBlock::known() const {
    Known known = known_;
    for (std::size_t i = std::max(known.end, begin_); i < end_; ++i) {
        double const x = x_[i], y = y_[i];
        double const previous = i == begin_ ? x : x_[i - 1];
        known.x_rising &= x >= previous;
        bool const finite = std::isfinite(x) && std::isfinite(y);
        known.all_finite &= finite;
        if (!finite) continue;
        known.x_extent.include(x);
        known.y_extent.include(y);
    }
    known.end = end_;
    return known_ = known;
}

RangeSummary const& PointBlock::y_summary() const {
    y_summary_.extend(y_.get(), end_);
    return y_summary_;
}

EvenSpacing const& PointBlock::x_spacing() const {
    if (spaced_end_ != end_) x_spacing_ = spacing_of(x_.get(), end_);
    spaced_end_ = end_;
    return x_spacing_;
}

void PointBlock::drop_oldest(std::size_t count) {
    for (std::size_t place = begin_; place < begin_ + count && !data_ids_.empty(); ++place)
        data_ids_.erase(place);
    begin_ += count;
}

PointEntry PointStore::at(std::size_t index) const {
    std::size_t before = 0;
    for (PointBlock const& block : blocks_) {
        if (index - before < block.size()) return block.entry(index - before);
        before += block.size();
    }
    raise_subscript_fault("point", static_cast<std::int64_t>(index), 0,
                          static_cast<std::int64_t>(before) - 1);
}

double PointStore::extra_at(std::size_t column, std::size_t index) const {
    for (PointBlock const& block : blocks_) {
        if (index < block.size()) {
            auto const values = block.extra(column);
            return values.empty() ? nothing_given : values[index];
        }
        index -= block.size();
    }
    return nothing_given;
}

bool PointStore::x_rising() const {
    double last = -std::numeric_limits<double>::infinity();
    for (PointBlock const& block : blocks_) {
        if (block.size() == 0) continue;
        if (!block.x_rising() || !(block.x().front() >= last)) return false;
        last = block.x().back();
    }
    return true;
}

void PointStore::start_block() {
    blocks_.emplace_back(std::clamp(size_, smallest_block, largest_block), pool_);
}

void PointStore::append(std::span<double const> x, std::span<double const> y, std::span<double const> e,
                        ExtraColumns const& extra) {
    const std::size_t before = size_;
    try {
        append_in_blocks(x, y, e, extra);
    } catch (...) {
        drop_newest(size_ - before);
        throw;
    }
}

void PointStore::append_in_blocks(std::span<double const> x, std::span<double const> y,
                                  std::span<double const> e, ExtraColumns extra) {
    while (!x.empty()) {
        PointBlock& block = block_with_room();
        const std::size_t count = std::min(x.size(), block.room());
        ExtraColumns here = extra;
        for (auto& column : here) column = column.first(std::min(column.size(), count));
        block.append(x.first(count), y.first(count), e.empty() ? e : e.first(count), here);
        size_ += count;
        x = x.subspan(count);
        y = y.subspan(count);
        if (!e.empty()) e = e.subspan(count);
        for (auto& column : extra) column = column.subspan(std::min(column.size(), count));
    }
}

void PointStore::drop_newest(std::size_t count) {
    size_ -= count;
    for (;;) {
        const std::size_t here = std::min(count, blocks_.empty() ? 0 : blocks_.back().size());
        if (here == 0) return;
        blocks_.back().drop_newest(here);
        if (blocks_.back().size() == 0) blocks_.pop_back();
        count -= here;
    }
}

void PointStore::drop_oldest(std::size_t count) {
    for (count = std::min(count, size_); count > 0;) {
        const std::size_t here = std::min(count, blocks_.front().size());
        blocks_.front().drop_oldest(here);
        if (blocks_.front().size() == 0) blocks_.pop_front();
        size_ -= here;
        dropped_ += here;
        count -= here;
    }
    if (size_ == 0) blocks_.clear(); // a new start with small blocks
}

} // namespace qv::document
