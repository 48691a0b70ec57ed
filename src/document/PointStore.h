// PointStore: the points of one data set, in order of arrival, in columns.
#pragma once

#include "document/ColumnPool.h"
#include "document/RangeSummary.h"
#include "document/StableList.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace qv::document {

/// The smallest and largest value seen; empty while low > high.
struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    bool empty() const { return low > high; }
    void include(double value) {
        low = value < low ? value : low;
        high = value > high ? value : high;
    }
    bool operator==(Extent const&) const = default;
};

/// One point: X, Y, E (half length of its error bar) and its identifying text, which is kept without blanks
/// at its ends.
struct PointEntry {
    double X = 0;
    double Y = 0;
    double E = 0;
    std::string_view DataID;
};

/// Columns that points may have beside X, Y and E; what they mean follows from how the data set is drawn. An
/// empty one gives its points not-a-number, which means nothing was given.
constexpr std::size_t extra_column_count = 4;
using ExtraColumns = std::array<std::span<double const>, extra_column_count>;

/// A run of consecutive points. The E column exists only where some E is not zero, extra ones only where
/// they were given, identifying texts only for the points that have one, so that a plain point takes 16
/// bytes.
class PointBlock {
public:
    /// Columns as large as the pool's come from there, unless it is nullptr.
    PointBlock(std::size_t capacity, ColumnPool* pool);

    std::size_t size() const { return end_ - begin_; }
    bool full() const { return end_ == capacity_; }
    std::span<double const> x() const { return {x_.get() + begin_, size()}; }
    std::span<double const> y() const { return {y_.get() + begin_, size()}; }
    /// The E column; empty when every E is zero.
    std::span<double const> e() const;
    /// An extra column; empty when nothing was given for any point of the block.
    std::span<double const> extra(std::size_t column) const;
    std::string_view data_id(std::size_t index) const;
    bool has_data_ids() const { return !data_ids_.empty(); }
    PointEntry entry(std::size_t index) const;
    /// Whether points were dropped of it.
    bool was_cut() const { return begin_ > 0; }

    /// Extents of the points whose X and Y are both finite. After points were dropped they may still span
    /// those.
    Extent const& x_extent() const { return known().x_extent; }
    Extent const& y_extent() const { return known().y_extent; }
    bool all_finite() const { return known().all_finite; }
    /// No X is below the one before it, and none is a not-a-number.
    bool x_rising() const { return known().x_rising; }
    /// Of the Y values, made when first asked for; its places begin with the points that were dropped.
    RangeSummary const& y_summary() const;
    /// Of the X values, counted from the points that were dropped on.
    EvenSpacing const& x_spacing() const;
    /// The place of the first point in the summary.
    std::size_t summary_place() const { return begin_; }

    void append(PointEntry const& point);
    /// Appends a point without E and text; false, and nothing is done, when that takes more than two stores.
    bool append_plain(double x, double y);
    /// Appends columns of one length, at most `room()`; all but x and y may be empty.
    void append(std::span<double const> x, std::span<double const> y, std::span<double const> e,
                ExtraColumns const& extra = {});
    std::size_t room() const { return capacity_ - end_; }
    void drop_oldest(std::size_t count);
    /// Takes back points that were appended as columns.
    void drop_newest(std::size_t count) {
        end_ -= count;
        y_summary_.shorten(end_);
        spaced_end_ = 0;
    }

private:
    /// What is known of the points before `end`; brought up to date when somebody asks, so that adding a
    /// point costs no more than storing it.
    struct Known {
        Extent x_extent;
        Extent y_extent;
        bool all_finite = true;
        bool x_rising = true;
        std::size_t end = 0;
    };
    Known const& known() const;
    void need_e_column();
    void append_extra(std::size_t column, std::span<double const> values, std::size_t count);
    void append_no_extra();
    void keep_data_id(std::string_view data_id);

    std::size_t capacity_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    ColumnPool* pool_;
    ColumnPool::Column x_;
    ColumnPool::Column y_;
    ColumnPool::Column e_;
    std::array<ColumnPool::Column, extra_column_count> extra_;
    bool plain_ = true; // neither E nor extra columns
    std::unordered_map<std::size_t, std::string> data_ids_;
    mutable Known known_;
    mutable RangeSummary y_summary_;
    mutable EvenSpacing x_spacing_{};
    mutable std::size_t spaced_end_ = 0; // x_spacing_ is of the points before
};

// In the header because it runs once a point.
inline void PointBlock::append(PointEntry const& point) {
    if (point.E != 0) need_e_column();
    if (!point.DataID.empty()) keep_data_id(point.DataID);
    x_[end_] = point.X;
    y_[end_] = point.Y;
    if (e_) e_[end_] = point.E;
    if (!plain_) append_no_extra();
    ++end_;
}

inline bool PointBlock::append_plain(double x, double y) {
    if (full() || !plain_) return false;
    x_[end_] = x;
    y_[end_] = y;
    ++end_;
    return true;
}

/// Blocks grow from small to large and are never copied, so adding is cheap at any size.
class PointStore {
public:
    /// The pool, if any, has to outlive the store.
    explicit PointStore(ColumnPool* pool = nullptr) : pool_(pool) {}

    std::size_t size() const { return size_; }
    /// How many points were dropped so far. Points never change: as long as this and `size` stay, they do.
    std::size_t dropped() const { return dropped_; }
    StableList<PointBlock> const& blocks() const { return blocks_; }
    /// A value of an extra column in order of arrival; not-a-number where none was given.
    double extra_at(std::size_t column, std::size_t index) const;
    /// The point at `index` in order of arrival; an index outside the store is fault 9.
    PointEntry at(std::size_t index) const;
    /// Every X of the store is at least the one before it.
    bool x_rising() const;

    void append(PointEntry const& point);
    /// Appends a point without E and text to the newest block; false, and nothing is done, when it has no
    /// room or keeps E values.
    bool append_plain(double x, double y) {
        if (blocks_.empty() || !blocks_.back().append_plain(x, y)) return false;
        ++size_;
        return true;
    }
    /// Appends columns of one length, or where that fails nothing; all but x and y may be empty.
    void append(std::span<double const> x, std::span<double const> y, std::span<double const> e,
                ExtraColumns const& extra = {});
    /// Forgets the `count` oldest points (all of them when there are fewer).
    void drop_oldest(std::size_t count);

private:
    void start_block();
    void append_in_blocks(std::span<double const> x, std::span<double const> y, std::span<double const> e,
                          ExtraColumns extra);
    void drop_newest(std::size_t count);
    PointBlock& block_with_room() {
        if (blocks_.empty() || blocks_.back().full()) start_block();
        return blocks_.back();
    }

    ColumnPool* pool_;
    StableList<PointBlock> blocks_;
    std::size_t size_ = 0;
    std::size_t dropped_ = 0;
};

inline void PointStore::append(PointEntry const& point) {
    block_with_room().append(point);
    ++size_;
}

} // namespace qv::document
