#include "render/dense_columns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

constexpr std::size_t few = 6;             // so many points of a column are drawn as they are
constexpr std::size_t unit_size = 16;      // points whose range is looked at before they are
constexpr std::int32_t far_away = 1 << 28; // pixels

std::int32_t row_at(double row) {
    if (std::isnan(row)) return far_away;
    return static_cast<std::int32_t>(std::clamp(row, -1.0 * far_away, 1.0 * far_away));
}

// Smallest and largest of a few values; four at a time, because each comparison waits for the one before it.
template <class Range>
Range range_of(double const* values, std::size_t count) {
    constexpr std::size_t lanes = 4;
    if (count < 2 * lanes) {
        Range range{values[0], values[0]};
        for (std::size_t i = 1; i < count; ++i) {
            range.low = std::min(range.low, values[i]);
            range.high = std::max(range.high, values[i]);
        }
        return range;
    }
    double low[lanes], high[lanes];
    std::copy_n(values, lanes, low);
    std::copy_n(values, lanes, high);
    // The last lanes are looked at twice where the count is not a multiple.
    for (std::size_t next = lanes; next < count; next += lanes) {
        double const* const some = values + std::min(next, count - lanes);
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            low[lane] = std::min(low[lane], some[lane]);
            high[lane] = std::max(high[lane], some[lane]);
        }
    }
    return {std::min(std::min(low[0], low[1]), std::min(low[2], low[3])),
            std::max(std::max(high[0], high[1]), std::max(high[2], high[3]))};
}

} // namespace

Point DenseColumns::Stretch::place(std::size_t i) const {
    return {x_at(i), level(i)};
}

void DenseColumns::Stretch::measure() {
    const Range values = range_of<Range>(y, count);
    range = values;
    if (!y_map) return;
    auto const [low, high] = std::minmax({(*y_map)(values.low), (*y_map)(values.high)});
    range = {low, high};
}

bool DenseColumns::Visit::is_dense() const {
    return count > few;
}

void DenseColumns::Visit::clear() {
    count = 0;
    x.clear();
    y.clear();
    stretches.clear();
    reached = {};
}

/// Follows one side of a column away from its middle.
class DenseColumns::Chain {
public:
    Chain(Visit const& visit, std::size_t next, bool forwards, double middle)
        : visit_(visit), middle_(middle), next_(next), forwards_(forwards) {
        if (is_done()) return;
        start_ = forwards ? stretch().first() : stretch().last();
        distance_ = std::abs(start_.x - middle);
        reached_ = before_ = {start_.y, start_.y};
    }

    // Past the last stretch backwards the index wraps round to the largest number.
    bool is_done() const { return next_ >= visit_.stretches.size(); }
    std::size_t next() const { return next_; }
    Stretch const& stretch() const { return visit_.stretches[next_]; }
    Point start() const { return start_; }
    double distance() const { return distance_; }
    Range const& reached() const { return reached_; }
    /// What it has reached no further away than this.
    Range const& reached_until(double distance) const { return distance_ <= distance ? reached_ : before_; }

    /// It starts with the segment across the middle.
    void start_from(Point other) {
        before_ = {other.y, other.y};
        reached_.include(before_);
    }
    void advance() {
        before_ = reached_;
        reached_.include(stretch().range);
        distance_ = std::abs(stretch().x_at(forwards_ ? stretch().count - 1 : 0) - middle_);
        next_ += forwards_ ? 1 : static_cast<std::size_t>(-1);
    }

private:
    Visit const& visit_;
    double middle_;
    std::size_t next_;
    bool forwards_;
    Point start_;
    double distance_ = 0; // of the place it has come to
    Range reached_{}, before_{};
};

void DenseColumns::add(Point place) {
    std::int64_t const column = grid_.column(place.x);
    Visit* visit = &visits_[current_];
    if (visit->count == 0 || column != visit->column) {
        begin(column);
        visit = &visits_[current_];
    }
    // Beside the visible box only the way in and out is of interest.
    if (visit->count == 2 && !grid_.is_visible(column)) {
        visit->x.pop_back();
        visit->y.pop_back();
        --visit->count;
    }
    if (visit->count == 0) visit->first = place;
    visit->last = place;
    visit->x.push_back(place.x);
    visit->y.push_back(place.y);
    ++visit->count;
}

void DenseColumns::add_run(PointRun const& run) {
    if (run.size() == 0) return;
    const Point first = run.place(0), last = run.place(run.size() - 1);
    std::int64_t const column = grid_.column(first.x);
    if (!grid_.is_visible(column)) return add(first), add(last);
    if (run.size() <= few) {
        for (std::size_t i = 0; i < run.size(); ++i) add(run.place(i));
        return;
    }
    if (visits_[current_].count == 0 || column != visits_[current_].column) begin(column);
    Visit& visit = visits_[current_];
    if (visit.count == 0) visit.first = first;
    visit.last = last;
    store_stretch(visit);
    visit.stretches.push_back({run.x.data(), run.y.data(), run.size(), run.x_map, run.y_map, {}});
    visit.count += run.size();
}

void DenseColumns::begin(std::int64_t column) {
    if (visits_[current_].count > 0) close();
    visits_[current_].clear();
    visits_[current_].column = column;
}

// The current visit is complete, so the one before can be drawn.
void DenseColumns::close() {
    Visit& visit = visits_[current_];
    Visit const& waiting = visits_[(current_ + 2) % 3];
    prepare(visit);
    if (known_visits_ == 0) {
        end_at(visit, visit.first);
    } else {
        draw(waiting, known_visits_ > 1 ? &visits_[(current_ + 1) % 3] : nullptr, &visit);
        line(waiting.last, visit.first);
    }
    ++known_visits_;
    current_ = (current_ + 1) % 3;
    visits_[current_].count = 0;
}

void DenseColumns::finish() {
    if (visits_[current_].count > 0) close();
    if (known_visits_ > 0) {
        Visit const& last = visits_[(current_ + 2) % 3];
        draw(last, known_visits_ > 1 ? &visits_[(current_ + 1) % 3] : nullptr, nullptr);
        end_at(last, last.last);
    }
    known_visits_ = 0;
    for (Visit& visit : visits_) visit.clear();
}

// A dense visit draws nothing at its ends but what leads there.
void DenseColumns::end_at(Visit const& visit, Point place) {
    if (visit.is_dense() && !pen_.has_gaps) line(place, place);
}

void DenseColumns::prepare(Visit& visit) {
    if (visit.is_dense()) {
        resolve_stored(visit);
        visit.order = order_of(visit);
        split_into_units(visit);
        if (visit.order != Order::None) split_at_middle(visit);
    }
    find_reached(visit);
}

// Points that were added one by one stay where they are from now on.
void DenseColumns::resolve_stored(Visit& visit) {
    store_stretch(visit);
    double const* x = visit.x.data();
    double const* y = visit.y.data();
    for (Stretch& stretch : visit.stretches) {
        if (stretch.x_map) continue;
        stretch.x = x;
        stretch.y = y;
        x += stretch.count;
        y += stretch.count;
    }
}

// Points that were added one by one since the last run become a stretch.
void DenseColumns::store_stretch(Visit& visit) {
    std::size_t stored = 0;
    for (Stretch const& stretch : visit.stretches) stored += stretch.x_map ? 0 : stretch.count;
    if (visit.x.size() > stored)
        visit.stretches.push_back({nullptr, nullptr, visit.x.size() - stored, nullptr, nullptr, {}});
}

DenseColumns::Order DenseColumns::order_of(Visit const& visit) {
    bool rises = false, falls = false;
    double last = visit.first.x;
    auto const go_to = [&](double x) {
        rises |= x > last;
        falls |= x < last;
        last = x;
    };
    for (Stretch const& stretch : visit.stretches) {
        // Within a run x keeps its direction.
        if (stretch.x_map)
            go_to(stretch.x_at(0)), go_to(stretch.x_at(stretch.count - 1));
        else
            for (std::size_t i = 0; i < stretch.count; ++i) go_to(stretch.x[i]);
    }
    return rises && falls ? Order::None : falls ? Order::Falling : Order::Rising;
}

void DenseColumns::split_into_units(Visit& visit) {
    collected_.swap(visit.stretches);
    visit.stretches.clear();
    for (Stretch const& stretch : collected_)
        for (std::size_t begin = 0; begin < stretch.count; begin += unit_size) {
            Stretch& unit = visit.stretches.emplace_back(stretch);
            unit.x += begin;
            unit.y += begin;
            unit.count = std::min(unit_size, stretch.count - begin);
            unit.measure();
        }
}

// So that the middle of the column lies between two stretches.
void DenseColumns::split_at_middle(Visit& visit) {
    double const middle = grid_.centre(visit.column);
    bool const rises = visit.order == Order::Rising;
    auto const is_before = [&](double x) { return rises ? x <= middle : x >= middle; };
    auto const found = std::ranges::partition_point(
        visit.stretches, [&](Stretch const& stretch) { return is_before(stretch.x_at(stretch.count - 1)); });
    visit.half = static_cast<std::size_t>(found - visit.stretches.begin());
    if (found == visit.stretches.end()) return;
    std::size_t before = 0;
    while (is_before(found->x_at(before))) ++before;
    if (before == 0) return;
    Stretch first_part = *found;
    first_part.count = before;
    first_part.measure();
    found->x += before;
    found->y += before;
    found->count -= before;
    found->measure();
    visit.stretches.insert(found, first_part);
    ++visit.half;
}

bool DenseColumns::is_flat(Point from, Point to) const {
    // As strokes see it.
    return std::abs(to.x / pen_.pixel_width / 4 - from.x / pen_.pixel_width / 4)
           >= std::abs(to.y / pen_.pixel_height / 4 - from.y / pen_.pixel_height / 4);
}

bool DenseColumns::is_reached(Reached const& reached, Point from, Point to) const {
    auto const [low, high] = std::minmax(from.y, to.y);
    auto const& levels = reached[pen_.has_gaps && is_flat(from, to)];
    return levels && levels->holds({low, high});
}

// Levels are known as one range; of two that lie apart the larger is remembered.
void DenseColumns::include(Reached& reached, Point from, Point to) const {
    auto const [low, high] = std::minmax(from.y, to.y);
    const Range levels{low, high};
    std::optional<Range>& known = reached[pen_.has_gaps && is_flat(from, to)];
    if (known && known->touches(levels))
        known->include(levels);
    else if (!known || levels.high - levels.low > known->high - known->low)
        known = levels;
}

void DenseColumns::find_reached(Visit& visit) const {
    visit.reached = {};
    if (!pen_.has_gaps) {
        Range range{visit.first.y, visit.first.y};
        if (visit.is_dense())
            for (Stretch const& stretch : visit.stretches) range.include(stretch.range);
        else
            for (double const y : visit.y) range.include({y, y});
        visit.reached[0] = range;
        return;
    }
    std::optional<Point> from;
    auto const go_to = [&](Point to) {
        if (from) include(visit.reached, *from, to);
        from = to;
    };
    if (visit.is_dense())
        for (Stretch const& stretch : visit.stretches)
            for (std::size_t i = 0; i < stretch.count; ++i) go_to(stretch.place(i));
    else
        for (std::size_t i = 0; i < visit.x.size(); ++i) go_to({visit.x[i], visit.y[i]});
}

void DenseColumns::draw(Visit const& visit, Visit const* before, Visit const* after) {
    if (!visit.is_dense()) return draw_sparse(visit);
    if (visit.order == Order::None)
        draw_unordered(visit,
                       {static_cast<std::int32_t>(visit.column), static_cast<std::int32_t>(visit.column) + 1},
                       {});
    else if (pen_.has_gaps)
        draw_middle_with_gaps(visit);
    else
        draw_middle(visit);
    if (pen_.covers_beside) draw_beside(visit, before, after);
}

void DenseColumns::draw_sparse(Visit const& visit) {
    for (std::size_t i = 1; i < visit.x.size(); ++i)
        line({visit.x[i - 1], visit.y[i - 1]}, {visit.x[i], visit.y[i]});
}

// Both sides in turn, always the nearer one, so that each knows what the other has reached.
void DenseColumns::draw_middle(Visit const& visit) {
    auto const column = static_cast<std::int32_t>(visit.column);
    const Columns columns{column, column + 1};
    double const middle = grid_.centre(visit.column);
    Chain ahead(visit, visit.half, true, middle), back(visit, visit.half - 1, false, middle);
    if (!ahead.is_done() && !back.is_done()) {
        part(back.start(), ahead.start(), columns);
        bool const ahead_is_near = ahead.distance() <= back.distance();
        ahead_is_near ? back.start_from(ahead.start()) : ahead.start_from(back.start());
    }
    bool const has_both = !ahead.is_done() && !back.is_done();
    while (!ahead.is_done() || !back.is_done()) {
        bool const goes_ahead = back.is_done() || (!ahead.is_done() && ahead.distance() <= back.distance());
        Chain& chain = goes_ahead ? ahead : back;
        Chain const& other = goes_ahead ? back : ahead;
        Range known = chain.reached();
        if (has_both) known.include(other.reached_until(chain.distance()));
        if (!known.holds(chain.stretch().range)) follow(visit, chain.next(), goes_ahead, known, columns);
        chain.advance();
    }
}

void DenseColumns::draw_middle_with_gaps(Visit const& visit) {
    auto const column = static_cast<std::int32_t>(visit.column);
    const Columns columns{column, column + 1};
    std::size_t const past = visit.stretches.size();
    if (visit.half > 0 && visit.half < past)
        part(visit.stretches[visit.half - 1].last(), visit.stretches[visit.half].first(), columns);
    Reached known;
    follow_with_gaps(visit, visit.half, past, true, known, columns);
    known = {};
    follow_with_gaps(visit, 0, visit.half, false, known, columns);
}

void DenseColumns::draw_beside(Visit const& visit, Visit const* before, Visit const* after) {
    for (int const side : {-1, 1}) {
        auto const column = static_cast<std::int32_t>(visit.column);
        const Columns columns = side < 0 ? Columns{-far_away, column} : Columns{column + 1, far_away};
        auto const lies_here = [&](Visit const* other) {
            return other && other->column == visit.column + side;
        };
        bool const forwards = (visit.order == Order::Rising) == (side < 0);
        Visit const* const connected = forwards ? before : after;
        Visit const* const neighbour = lies_here(connected) ? connected
                                       : lies_here(before)  ? before
                                       : lies_here(after)   ? after
                                                            : nullptr;
        if (visit.order == Order::None)
            draw_unordered(visit, columns, neighbour ? neighbour->reached : Reached());
        else
            draw_side(visit, columns, forwards, neighbour, neighbour == connected);
    }
}

void DenseColumns::draw_side(Visit const& visit, Columns columns, bool forwards, Visit const* neighbour,
                             bool connected) {
    std::size_t const count = visit.stretches.size();
    // From more than half a column away a pixel beside it may be out of reach.
    bool const near_half_only = pen_.reach <= 1;
    if (near_half_only && visit.half > 0 && visit.half < count)
        part(visit.stretches[visit.half - 1].last(), visit.stretches[visit.half].first(), columns);
    std::size_t const first = near_half_only && !forwards ? visit.half : 0;
    std::size_t const past = near_half_only && forwards ? visit.half : count;
    Reached known = neighbour ? neighbour->reached : Reached();
    if (pen_.has_gaps) return follow_with_gaps(visit, first, past, forwards, known, columns);
    double const start = (forwards ? visit.first : visit.last).y;
    // What leads here from the neighbour has reached all between.
    Range levels{start, start};
    if (known[0] && (connected || known[0]->holds(levels))) levels.include(*known[0]);
    for (std::size_t k = 0; k < past - first; ++k) {
        std::size_t const stretch = forwards ? first + k : past - 1 - k;
        Range const& range = visit.stretches[stretch].range;
        if (levels.holds(range)) continue;
        follow(visit, stretch, forwards, levels, columns);
        levels.include(range);
    }
}

void DenseColumns::draw_unordered(Visit const& visit, Columns columns, Reached const& hidden) {
    std::optional<Point> from;
    for (Stretch const& stretch : visit.stretches)
        for (std::size_t i = 0; i < stretch.count; ++i) {
            const Point to = stretch.place(i);
            if (from) {
                auto const& known = hidden[pen_.has_gaps && is_flat(*from, to)];
                known ? part_outside(*from, to, columns, *known) : part(*from, to, columns);
            }
            from = to;
        }
}

// The last place before a stretch, on the way through it; of the first stretch, its own first place.
Point DenseColumns::place_before(Visit const& visit, std::size_t stretch, bool forwards) const {
    Stretch const& here = visit.stretches[stretch];
    if (forwards) return stretch > 0 ? visit.stretches[stretch - 1].last() : here.first();
    return stretch + 1 < visit.stretches.size() ? visit.stretches[stretch + 1].first() : here.last();
}

void DenseColumns::follow(Visit const& visit, std::size_t index, bool forwards, Range known,
                          Columns columns) {
    Stretch const& stretch = visit.stretches[index];
    for (std::size_t k = 0; k < stretch.count; ++k) {
        std::size_t const i = forwards ? k : stretch.count - 1 - k;
        double const level = stretch.level(i);
        if (level >= known.low && level <= known.high) continue;
        const Point from =
            k == 0 ? place_before(visit, index, forwards) : stretch.place(forwards ? i - 1 : i + 1);
        const Point to = stretch.place(i);
        // Drawn in the direction in which the line runs, as that decides how it is rounded.
        forwards ? part_outside(from, to, columns, known) : part_outside(to, from, columns, known);
        known.include({level, level});
    }
}

void DenseColumns::follow_with_gaps(Visit const& visit, std::size_t first, std::size_t past, bool forwards,
                                    Reached& known, Columns columns) {
    std::optional<Point> from;
    for (std::size_t k = 0; k < past - first; ++k) {
        Stretch const& stretch = visit.stretches[forwards ? first + k : past - 1 - k];
        for (std::size_t n = 0; n < stretch.count; ++n) {
            const Point to = stretch.place(forwards ? n : stretch.count - 1 - n);
            if (from && !is_reached(known, *from, to)) {
                forwards ? part(*from, to, columns) : part(to, *from, columns);
                include(known, *from, to);
            }
            from = to;
        }
    }
}

void DenseColumns::line(Point from, Point to) {
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    if (lines_.empty() || lines_.back() != from) {
        if (!lines_.empty()) lines_.push_back({nowhere, nowhere});
        lines_.push_back(from);
    }
    lines_.push_back(to);
}

void DenseColumns::part(Point from, Point to, Columns columns) {
    parts_.push_back({from, to, columns.left, -far_away, columns.right, far_away});
}

void DenseColumns::part_outside(Point from, Point to, Columns columns, Range known) {
    auto const [low, high] = std::minmax(from.y, to.y);
    if (high > known.high)
        parts_.push_back({from, to, columns.left, row_at(std::floor(known.high / pen_.pixel_height)) + 1,
                          columns.right, far_away});
    if (low < known.low)
        parts_.push_back({from, to, columns.left, -far_away, columns.right,
                          row_at(std::ceil(known.low / pen_.pixel_height))});
}

} // namespace qv::render
