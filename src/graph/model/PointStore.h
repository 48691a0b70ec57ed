// PointStore: the points of one data set, in order of arrival, in columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace qv::graph {

/// The smallest and largest value seen; empty while low > high.
struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    bool empty() const { return low > high; }
    void include(double value) {
        if (value < low) low = value;
        if (value > high) high = value;
    }
    bool operator==(Extent const&) const = default;
};

/// One point: X, Y, E (half length of its error bar) and its identifying text.
struct PointEntry {
    double X = 0;
    double Y = 0;
    double E = 0;
    std::string_view DataID;
};

/// A run of consecutive points. The E column exists only where some E is not zero, identifying texts only
/// for the points that have one, so that a plain point takes 16 bytes.
class PointBlock {
public:
    explicit PointBlock(std::size_t capacity);

    std::size_t size() const { return end_ - begin_; }
    bool full() const { return end_ == capacity_; }
    std::span<double const> x() const { return {x_.get() + begin_, size()}; }
    std::span<double const> y() const { return {y_.get() + begin_, size()}; }
    /// The E column; empty when every E is zero.
    std::span<double const> e() const;
    std::string_view data_id(std::size_t index) const;
    bool has_data_ids() const { return !data_ids_.empty(); }
    PointEntry entry(std::size_t index) const;

    /// Extents of the points whose X and Y are both finite. After points were dropped they still span those.
    Extent const& x_extent() const { return x_extent_; }
    Extent const& y_extent() const { return y_extent_; }
    bool all_finite() const { return all_finite_; }
    /// No X is below the one before it, and none is a not-a-number.
    bool x_rising() const { return x_rising_; }

    void append(PointEntry const& point);
    /// Appends columns of one length, at most `room()`; `e` may be empty.
    void append(std::span<double const> x, std::span<double const> y, std::span<double const> e);
    std::size_t room() const { return capacity_ - end_; }
    void drop_oldest(std::size_t count);

private:
    void need_e_column();
    void note(double x, double y);

    std::size_t capacity_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::unique_ptr<double[]> x_;
    std::unique_ptr<double[]> y_;
    std::unique_ptr<double[]> e_;
    std::unordered_map<std::size_t, std::string> data_ids_;
    Extent x_extent_;
    Extent y_extent_;
    bool all_finite_ = true;
    bool x_rising_ = true;
};

/// Blocks grow from small to large and are never copied, so adding is cheap at any size.
class PointStore {
public:
    std::size_t size() const { return size_; }
    std::deque<PointBlock> const& blocks() const { return blocks_; }
    /// The point at `index` in order of arrival; an index outside the store is fault 9.
    PointEntry at(std::size_t index) const;
    /// Every X of the store is at least the one before it.
    bool x_rising() const { return x_rising_; }

    void append(PointEntry const& point);
    /// Appends columns of one length; `e` may be empty.
    void append(std::span<double const> x, std::span<double const> y, std::span<double const> e);
    /// Forgets the `count` oldest points (all of them when there are fewer).
    void drop_oldest(std::size_t count);

private:
    PointBlock& block_with_room();

    std::deque<PointBlock> blocks_;
    std::size_t size_ = 0;
    double last_x_ = -std::numeric_limits<double>::infinity();
    bool x_rising_ = true;
};

} // namespace qv::graph
