#include "render/dense_columns.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace qv::render {
namespace {

constexpr std::size_t few = 8;        // so many points of a column are drawn as they are
constexpr std::size_t unit_size = 16; // points whose range is looked at before they are

// Where the line from `a` to `b` has this y; x is on the page, y a value.
Point at_height(double y, Point a, Point b, scale::AxisMap const& y_map) {
    double const start = y_map(a.y), length = y_map(b.y) - start;
    double const part = length == 0 ? 1 : std::clamp((y_map(y) - start) / length, 0.0, 1.0);
    return {a.x + part * (b.x - a.x), y};
}

// First point of the run at the far side of the place, if it lies within; mostly points are evenly spaced.
std::size_t split_at(PointRun const& run, double place) {
    double const first = run.x_at(0), last = run.x_at(run.size() - 1);
    auto const is_before = [&](std::size_t i) {
        return last >= first ? run.x_at(i) <= place : run.x_at(i) >= place;
    };
    if (!is_before(0)) return 0;
    if (is_before(run.size() - 1)) return run.size();
    std::size_t low = 0, high = run.size() - 1; // the first is before, the last is not
    auto const guess = static_cast<std::size_t>((place - first) / (last - first) * static_cast<double>(high));
    for (std::size_t const i : {guess, guess + 1})
        if (i > low && i < high) (is_before(i) ? low : high) = i;
    while (high - low > 1) {
        std::size_t const middle = low + (high - low) / 2;
        (is_before(middle) ? low : high) = middle;
    }
    return high;
}

} // namespace

/// Follows the points of half a run from one of its ends, whose units have been measured.
class DenseColumns::Walk {
public:
    Walk(DenseColumns const& columns, PointRun const& run, std::size_t first, std::size_t past)
        : columns_(columns), run_(run), first_(first), past_(past) {}

    void forwards(Records& records) {
        start(records, run_.y[first_]);
        step_ = 1;
        for (std::size_t u = 0; u < columns_.units_.size(); ++u)
            if (exceeds(columns_.units_[u])) enter(u);
    }
    void backwards(Records& records) {
        start(records, run_.y[past_ - 1]);
        step_ = -1;
        for (std::size_t u = columns_.units_.size(); u-- > 0;)
            if (exceeds(columns_.units_[u])) enter(u);
    }

private:
    void start(Records& records, double y) {
        records_ = &records;
        reached_ = {y, y};
    }

    bool exceeds(Range const& unit) const { return unit.high > reached_.high || unit.low < reached_.low; }

    void enter(std::size_t unit) {
        std::size_t const first = first_ + unit * unit_size;
        std::size_t const last = std::min(first + unit_size, past_) - 1;
        for (std::size_t k = first; k <= last; ++k) visit(step_ > 0 ? k : first + last - k);
    }

    // The first point of a walk has been reached, so there is one before any that is higher or lower.
    void visit(std::size_t i) {
        double const y = run_.y[i];
        bool const rises = y > reached_.high;
        if (!rises && !(y < reached_.low)) return;
        double& reached = rises ? reached_.high : reached_.low;
        std::size_t const before = i - static_cast<std::size_t>(step_);
        const Point to{run_.x_at(i), y};
        const Point from = at_height(reached, {run_.x_at(before), run_.y[before]}, to, run_.y_map);
        (rises ? records_->rising : records_->falling).push_back({from, to});
        reached = y;
    }

    DenseColumns const& columns_;
    PointRun const& run_;
    std::size_t first_, past_;
    std::ptrdiff_t step_ = 1;
    Records* records_ = nullptr;
    Range reached_{};
};

void DenseColumns::add(PointRun const& run, PixelColumn const& column) {
    if (run.size() == 0) return;
    bool const is_dense = run.size() > few;
    const Point start = run.place(0);
    // A dense run draws nothing at its ends but what leads there.
    if (last_)
        line(last_->place, start);
    else if (is_dense)
        line(start, start);
    const Range range = is_dense ? add_dense(run, column) : add_sparse(run);
    bool const is_rising = run.x_at(run.size() - 1) >= start.x;
    if (last_ && last_->is_dense)
        draw(waiting_, last_->y_map,
             last_->next_column == column.number ? std::optional(range) : std::nullopt);
    if (is_dense) {
        bool const is_beside = last_ && last_->column == column.number - (is_rising ? 1 : -1);
        draw(near_side_, run.y_map, is_beside ? std::optional(last_->range) : std::nullopt);
        std::swap(waiting_, far_side_);
    }
    last_ = {run.place(run.size() - 1),
             run.y_map,
             column.number,
             column.number + (is_rising ? 1 : -1),
             range,
             is_dense};
}

void DenseColumns::finish() {
    if (last_ && last_->is_dense) {
        draw(waiting_, last_->y_map, std::nullopt);
        line(last_->place, last_->place);
    }
    last_.reset();
}

DenseColumns::Range DenseColumns::add_sparse(PointRun const& run) {
    for (std::size_t i = 1; i < run.size(); ++i) line(run.place(i - 1), run.place(i));
    auto const [low, high] = std::ranges::minmax(run.y);
    return {low, high};
}

DenseColumns::Range DenseColumns::add_dense(PointRun const& run, PixelColumn const& column) {
    std::size_t const count = run.size(), half = split_at(run, column.centre);
    Range range{run.y[0], run.y[0]};
    auto const follow = [&](std::size_t first, std::size_t past, auto const& each_way) {
        if (first == past) return;
        const Range of_half = measure(run, first, past);
        range = {std::min(range.low, of_half.low), std::max(range.high, of_half.high)};
        each_way(Walk(*this, run, first, past));
        draw(middle_, run.y_map, std::nullopt);
    };
    if (half > 0 && half < count) line(run.place(half - 1), run.place(half));
    follow(0, half, [&](Walk walk) { walk.forwards(near_side_), walk.backwards(middle_); });
    follow(half, count, [&](Walk walk) { walk.backwards(far_side_), walk.forwards(middle_); });
    return range;
}

DenseColumns::Range DenseColumns::measure(PointRun const& run, std::size_t first, std::size_t past) {
    units_.clear();
    Range whole{run.y[first], run.y[first]};
    double const* const y = run.y.data();
    for (std::size_t begin = first; begin < past; begin += unit_size) {
        std::size_t const end = std::min(begin + unit_size, past);
        Range unit{y[begin], y[begin]};
        for (std::size_t i = begin + 1; i < end; ++i)
            unit = {std::min(unit.low, y[i]), std::max(unit.high, y[i])};
        units_.push_back(unit);
        whole = {std::min(whole.low, unit.low), std::max(whole.high, unit.high)};
    }
    return whole;
}

void DenseColumns::draw(Records& records, scale::AxisMap const& y_map, std::optional<Range> hidden) {
    if (hidden) {
        auto const hide = [&](std::vector<Piece>& pieces, double until, auto is_beyond) {
            std::erase_if(pieces, [&](Piece const& piece) { return !is_beyond(piece.to.y, until); });
            if (!pieces.empty() && is_beyond(until, pieces[0].from.y))
                pieces[0].from = at_height(until, pieces[0].from, pieces[0].to, y_map);
        };
        hide(records.rising, hidden->high, std::greater<>());
        hide(records.falling, hidden->low, std::less<>());
    }
    draw(records.rising, y_map);
    draw(records.falling, y_map);
    records.rising.clear();
    records.falling.clear();
}

void DenseColumns::draw(std::vector<Piece> const& pieces, scale::AxisMap const& y_map) {
    for (Piece const& piece : pieces)
        line({piece.from.x, y_map(piece.from.y)}, {piece.to.x, y_map(piece.to.y)});
}

void DenseColumns::line(Point from, Point to) {
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    if (pieces_.empty() || pieces_.back() != from) {
        if (!pieces_.empty()) pieces_.push_back({nowhere, nowhere});
        pieces_.push_back(from);
    }
    pieces_.push_back(to);
}

} // namespace qv::render
