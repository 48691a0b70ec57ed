#include "render/lines/dense_columns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

constexpr std::size_t few = 12;            // so many points of a column are drawn as they are
constexpr std::size_t unit_size = 16;      // points whose range is looked at before they are
constexpr std::int32_t far_away = 1 << 28; // pixels

std::int32_t row_at(double row) {
    if (std::isnan(row)) return far_away;
    return static_cast<std::int32_t>(std::clamp(row, -1.0 * far_away, 1.0 * far_away));
}

} // namespace

DenseColumns::Stretch DenseColumns::Stretch::piece(std::size_t first, std::size_t past,
                                                   std::size_t most) const {
    using Summary = document::RangeSummary;
    Stretch piece{x + first, y + first, past - first, summary, summary_place + first, 0, {}};
    while (summary && piece.level < most && first + Summary::span(piece.level) <= past
           && summary->has(piece.level, piece.summary_place))
        ++piece.level;
    if (piece.level > 0) {
        piece.count = Summary::span(piece.level - 1);
        piece.range = {summary->at(piece.level - 1, piece.summary_place)};
    } else {
        // Up to where the summary can go on.
        std::size_t const unit = summary ? Summary::span(0) : unit_size;
        std::size_t const place = summary ? piece.summary_place : 0;
        piece.count = std::min(piece.count, unit - place % unit);
        piece.range = {document::range_of(piece.y, piece.count)};
    }
    return piece;
}

bool DenseColumns::is_dense(Visit const& visit) {
    return visit.count > few;
}

void DenseColumns::Visit::clear() {
    count = 0;
    x.clear();
    y.clear();
    x_map = y_map = nullptr;
    stretches.clear();
    reached = {};
}

/// Follows one side of a column away from its middle.
class DenseColumns::Chain {
public:
    Chain(Visit const& visit, std::size_t next, bool forwards, double middle)
        : visit_(visit), middle_(middle), next_(next), forwards_(forwards) {
        if (is_done()) return;
        start_ = forwards ? visit.first_of(next) : visit.last_of(next);
        distance_ = std::abs(start_.x - middle);
        double const level = stretch().y[forwards ? 0 : stretch().count - 1];
        reached_ = before_ = {{level, level}};
        start_level_ = level;
    }

    // Past the last stretch backwards the index wraps round to the largest number.
    bool is_done() const { return next_ >= visit_.stretches.size(); }
    std::size_t next() const { return next_; }
    Stretch const& stretch() const { return visit_.stretches[next_]; }
    Point start() const { return start_; }
    double start_level() const { return start_level_; }
    double distance() const { return distance_; }
    Range const& reached() const { return reached_; }
    /// What it has reached no further away than this.
    Range const& reached_until(double distance) const { return distance_ <= distance ? reached_ : before_; }

    /// It starts with the segment across the middle.
    void start_from(double level) {
        before_ = {{level, level}};
        reached_.include(before_);
    }
    void advance() {
        before_ = reached_;
        reached_.include(stretch().range);
        distance_ = std::abs(visit_.x_of(stretch(), forwards_ ? stretch().count - 1 : 0) - middle_);
        next_ += forwards_ ? 1 : static_cast<std::size_t>(-1);
    }

private:
    Visit const& visit_;
    double middle_;
    std::size_t next_;
    bool forwards_;
    Point start_;
    double start_level_ = 0;
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
    if (visit->x_map) keep_places(*visit);
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
    if (visits_[current_].count == 0 || column != visits_[current_].column) begin(column);
    Visit& visit = visits_[current_];
    if (!visit.x.empty()) {
        for (std::size_t i = 0; i < run.size(); ++i) add(run.place(i));
        return;
    }
    if (visit.count == 0) visit.first = first;
    visit.last = last;
    visit.x_map = run.x_map;
    visit.y_map = run.y_map;
    visit.stretches.push_back(
        {run.x.data(), run.y.data(), run.size(), run.summary, run.summary_place, 0, {}});
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
    if (is_dense(visit) && !pen_.has_gaps) line(place, place);
}

void DenseColumns::prepare(Visit& visit) {
    if (!visit.x_map)
        visit.stretches.assign(1, {visit.x.data(), visit.y.data(), visit.count, nullptr, 0, 0, {}});
    if (is_dense(visit)) {
        visit.order = order_of(visit);
        split_into_pieces(visit);
        if (visit.order != Order::None) split_at_middle(visit);
    }
    find_reached(visit);
}

// A visit that is no longer made of runs alone.
void DenseColumns::keep_places(Visit& visit) {
    for (Stretch const& stretch : visit.stretches)
        for (std::size_t i = 0; i < stretch.count; ++i) {
            const Point place = visit.place(stretch, i);
            visit.x.push_back(place.x);
            visit.y.push_back(place.y);
        }
    visit.stretches.clear();
    visit.x_map = visit.y_map = nullptr;
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
        std::size_t const step = visit.x_map ? std::max<std::size_t>(1, stretch.count - 1) : 1;
        for (std::size_t i = 0; i < stretch.count; i += step) go_to(visit.x_of(stretch, i));
    }
    return rises && falls ? Order::None : falls ? Order::Falling : Order::Rising;
}

// The level of the summary of which a column has enough ranges.
std::size_t DenseColumns::level_for(std::size_t count) {
    constexpr std::size_t enough = 16;
    std::size_t level = 0;
    while (level < document::RangeSummary::levels && count >= enough * document::RangeSummary::span(level))
        ++level;
    return level;
}

void DenseColumns::split_into_pieces(Visit& visit) {
    collected_.swap(visit.stretches);
    visit.stretches.clear();
    std::size_t const level = level_for(visit.count);
    for (Stretch const& stretch : collected_)
        append_pieces(visit.stretches, stretch, 0, stretch.count, level);
}

void DenseColumns::append_pieces(std::vector<Stretch>& pieces, Stretch const& stretch, std::size_t first,
                                 std::size_t past, std::size_t level) {
    while (first < past) first += pieces.emplace_back(stretch.piece(first, past, level)).count;
}

// So that the middle of the column lies between two stretches.
void DenseColumns::split_at_middle(Visit& visit) {
    double const middle = grid_.centre(visit.column);
    bool const rises = visit.order == Order::Rising;
    auto const is_before = [&](double x) { return rises ? x <= middle : x >= middle; };
    auto const found = std::ranges::partition_point(visit.stretches, [&](Stretch const& stretch) {
        return is_before(visit.x_of(stretch, stretch.count - 1));
    });
    visit.half = static_cast<std::size_t>(found - visit.stretches.begin());
    if (found == visit.stretches.end()) return;
    const Stretch stretch = *found;
    std::size_t before = 0, behind = stretch.count - 1; // the last is not before
    while (before < behind) {
        std::size_t const between = before + (behind - before) / 2;
        if (is_before(visit.x_of(stretch, between)))
            before = between + 1;
        else
            behind = between;
    }
    if (before == 0) return;
    split_.clear();
    append_pieces(split_, stretch, 0, before, stretch.level);
    visit.half += split_.size();
    append_pieces(split_, stretch, before, stretch.count, stretch.level);
    *found = split_.front();
    visit.stretches.insert(found + 1, split_.begin() + 1, split_.end());
}

bool DenseColumns::is_flat(Point from, Point to) const {
    // As strokes see it.
    return std::abs(to.x / pen_.pixel_width / 4 - from.x / pen_.pixel_width / 4)
           >= std::abs(to.y / pen_.pixel_height / 4 - from.y / pen_.pixel_height / 4);
}

bool DenseColumns::is_reached(Reached const& reached, Point from, Point to) const {
    auto const [low, high] = std::minmax(from.y, to.y);
    auto const& levels = reached[is_flat(from, to)];
    return levels && levels->holds({low, high});
}

// Levels are known as one range; of two that lie apart the larger is remembered.
void DenseColumns::include(Reached& reached, Point from, Point to) const {
    auto const [low, high] = std::minmax(from.y, to.y);
    const Range levels{{low, high}};
    std::optional<Range>& known = reached[is_flat(from, to)];
    if (known && known->touches(levels))
        known->include(levels);
    else if (!known || levels.high - levels.low > known->high - known->low)
        known = levels;
}

void DenseColumns::find_reached(Visit& visit) const {
    visit.reached = {};
    if (!pen_.has_gaps) {
        Range range{document::range_of(visit.stretches[0].y, 1)};
        for (Stretch const& stretch : visit.stretches)
            range.include(is_dense(visit) ? document::ValueRange(stretch.range)
                                          : document::range_of(stretch.y, stretch.count));
        visit.reached[0] = range;
        return;
    }
    std::optional<Point> from;
    for (Stretch const& stretch : visit.stretches)
        for (std::size_t i = 0; i < stretch.count; ++i) {
            const Point to = visit.place(stretch, i);
            if (from) include(visit.reached, *from, to);
            from = to;
        }
}

DenseColumns::Range DenseColumns::rows_of(Visit const& visit, Range const& levels) {
    auto const [low, high] = std::minmax({visit.row_of(levels.low), visit.row_of(levels.high)});
    return {{low, high}};
}

void DenseColumns::draw(Visit const& visit, Visit const* before, Visit const* after) {
    if (!is_dense(visit)) return draw_sparse(visit);
    if (visit.order == Order::None)
        draw_unordered(visit,
                       {static_cast<std::int32_t>(visit.column), static_cast<std::int32_t>(visit.column) + 1},
                       nullptr);
    else if (pen_.has_gaps)
        draw_middle_with_gaps(visit);
    else
        draw_middle(visit);
    if (pen_.covers_beside) draw_beside(visit, before, after);
}

void DenseColumns::draw_sparse(Visit const& visit) {
    Point from = visit.first;
    for (Stretch const& stretch : visit.stretches)
        for (std::size_t i = &stretch == visit.stretches.data() ? 1 : 0; i < stretch.count; ++i) {
            const Point to = visit.place(stretch, i);
            line(from, to);
            from = to;
        }
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
        ahead_is_near ? back.start_from(ahead.start_level()) : ahead.start_from(back.start_level());
    }
    bool const has_both = !ahead.is_done() && !back.is_done();
    View view_ahead{columns, middle, false, {}}, view_back = view_ahead;
    while (!ahead.is_done() || !back.is_done()) {
        bool const goes_ahead = back.is_done() || (!ahead.is_done() && ahead.distance() <= back.distance());
        Chain& chain = goes_ahead ? ahead : back;
        Chain const& other = goes_ahead ? back : ahead;
        Range known = chain.reached();
        if (has_both) known.include(other.reached_until(chain.distance()));
        const Piece piece{visit, chain.next(), chain.stretch(), goes_ahead};
        consider(piece, known, goes_ahead ? view_ahead : view_back);
        chain.advance();
    }
    draw_waiting(view_ahead);
    draw_waiting(view_back);
}

void DenseColumns::draw_middle_with_gaps(Visit const& visit) {
    auto const column = static_cast<std::int32_t>(visit.column);
    const Columns columns{column, column + 1};
    std::size_t const past = visit.stretches.size();
    if (visit.half > 0 && visit.half < past)
        part(visit.last_of(visit.half - 1), visit.first_of(visit.half), columns);
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
            draw_unordered(visit, columns, neighbour);
        else
            draw_side(visit, columns, forwards, neighbour, neighbour == connected);
    }
}

void DenseColumns::draw_side(Visit const& visit, Columns columns, bool forwards, Visit const* neighbour,
                             bool connected) {
    std::size_t const count = visit.stretches.size();
    // From more than half a column away a pixel beside it may be out of reach.
    bool const near_half_only = pen_.reach <= 1;
    std::size_t const first = near_half_only && !forwards ? visit.half : 0;
    std::size_t const past = near_half_only && forwards ? visit.half : count;
    bool const leads_on = near_half_only && visit.half > 0 && visit.half < count;
    const Point before_middle = leads_on ? visit.last_of(visit.half - 1) : Point();
    const Point behind_middle = leads_on ? visit.first_of(visit.half) : Point();
    if (pen_.has_gaps) {
        Reached known = neighbour ? neighbour->reached : Reached();
        if (leads_on) part(before_middle, behind_middle, columns);
        return follow_with_gaps(visit, first, past, forwards, known, columns);
    }
    Stretch const& last = visit.stretches.back();
    double const start = forwards ? visit.stretches.front().y[0] : last.y[last.count - 1];
    Range levels{{start, start}};
    // What leads here from the neighbour has reached all between.
    if (neighbour && neighbour->y_map == visit.y_map && (connected || neighbour->reached[0]->holds(levels)))
        levels.include(*neighbour->reached[0]);
    bool const is_left = columns.right == visit.column;
    View view{columns, grid_.centre(visit.column + (is_left ? -1 : 1)), true, {}};
    for (std::size_t k = 0; k < past - first; ++k) {
        std::size_t const stretch = forwards ? first + k : past - 1 - k;
        consider({visit, stretch, visit.stretches[stretch], forwards}, levels, view);
    }
    draw_waiting(view);
    if (leads_on) part_outside(before_middle, behind_middle, columns, rows_of(visit, levels));
}

void DenseColumns::draw_unordered(Visit const& visit, Columns columns, Visit const* neighbour) {
    Reached hidden = neighbour ? neighbour->reached : Reached();
    if (hidden[0] && !pen_.has_gaps) hidden[0] = rows_of(*neighbour, *hidden[0]);
    std::optional<Point> from;
    for (Stretch const& stretch : visit.stretches)
        for (std::size_t i = 0; i < stretch.count; ++i) {
            const Point to = visit.place(stretch, i);
            if (from) {
                auto const& known = hidden[pen_.has_gaps && is_flat(*from, to)];
                known ? part_outside(*from, to, columns, *known) : part(*from, to, columns);
            }
            from = to;
        }
}

// What reaches no further row of pixels waits: most likely something reaches one soon, and is nearer to it.
void DenseColumns::consider(Piece const& piece, Range& known, View& view) {
    Range const& range = piece.part.range;
    if (known.holds(range)) return;
    bool const is_higher = range.high > known.high, is_lower = range.low < known.low;
    if (is_higher && is_lower) {
        draw_waiting(view);
    } else {
        Waiting& waiting = view.waiting[is_higher];
        double const edge = piece.visit.row_of(is_higher ? known.high : known.low) / pen_.pixel_height;
        double const goal = piece.visit.row_of(is_higher ? range.high : range.low) / pen_.pixel_height;
        bool const goes_down = goal > edge;
        double const row = goes_down ? std::floor(edge) + 1 : std::ceil(edge) - 1;
        bool const passes = goes_down ? goal >= row : goal <= row;
        double const missing = passes ? 0 : std::abs(row - goal);
        std::size_t const last = piece.part.count - 1;
        double const far = distance(piece.visit.x_of(piece.part, piece.forwards ? last : 0), view);
        if (waiting.piece && (waiting.row != row || !is_hidden(waiting, far, missing, view)))
            draw_all(*waiting.piece, waiting.known, view.columns);
        waiting.piece.reset();
        if (!passes) {
            waiting.piece.emplace(piece);
            waiting.known = known;
            waiting.row = row;
            // The first piece of a way begins behind the middle, whatever leads across it.
            waiting.near = std::min(distance(place_before(piece, piece.forwards ? 0 : last).x, view),
                                    distance(piece.visit.x_of(piece.part, piece.forwards ? 0 : last), view));
            waiting.missing = missing;
            known.include(range);
            return;
        }
    }
    if (piece.part.count == 1) {
        draw_all(piece, known, view.columns);
        known.include(range);
    } else if (piece.part.level > 1) {
        consider_pieces(piece, known, view);
    } else {
        consider_points(piece, known, view);
    }
}

void DenseColumns::consider_pieces(Piece const& piece, Range& known, View& view) {
    using Summary = document::RangeSummary;
    Stretch const& part = piece.part;
    std::size_t const level = part.level - 1, span = Summary::span(level - 1);
    for (std::size_t k = 0; k < Summary::fan_out; ++k) {
        std::size_t const first = (piece.forwards ? k : Summary::fan_out - 1 - k) * span;
        document::ValueRange const& range = part.summary->at(level - 1, part.summary_place + first);
        if (!known.holds(range))
            consider({piece.visit,
                      piece.stretch,
                      {part.x + first,
                       part.y + first,
                       span,
                       part.summary,
                       part.summary_place + first,
                       level,
                       {range}},
                      piece.forwards},
                     known, view);
    }
}

void DenseColumns::consider_points(Piece const& piece, Range& known, View& view) {
    Stretch const& part = piece.part;
    for (std::size_t k = 0; k < part.count; ++k) {
        std::size_t const i = piece.forwards ? k : part.count - 1 - k;
        double const level = part.y[i];
        if (level < known.low || level > known.high)
            consider({piece.visit,
                      piece.stretch,
                      {part.x + i, part.y + i, 1, nullptr, 0, 0, {{level, level}}},
                      piece.forwards},
                     known, view);
    }
}

// Pixels of the distance across from the pixels that see it.
double DenseColumns::distance(double x, View const& view) const {
    return std::abs(x - view.centre) / pen_.pixel_width;
}

// Whether a piece as far away as this that misses the row by so much is as near to the pixels there, and so
// to those beyond.
bool DenseColumns::is_hidden(Waiting const& waiting, double far, double missing, View const& view) const {
    constexpr double certainly = 1e-6;
    // Seen from columns further away distances across grow, and their squares differ more.
    double const across = view.is_beside ? (far - waiting.near) * 2 * (pen_.reach + 1)
                                         : far * far - waiting.near * waiting.near;
    return across + certainly <= waiting.missing * waiting.missing - missing * missing;
}

void DenseColumns::draw_waiting(View& view) {
    for (Waiting& waiting : view.waiting) {
        if (waiting.piece) draw_all(*waiting.piece, waiting.known, view.columns);
        waiting.piece.reset();
    }
}

void DenseColumns::draw_all(Piece const& piece, Range known, Columns columns) {
    for (std::size_t k = 0; k < piece.part.count; ++k) {
        std::size_t const i = piece.forwards ? k : piece.part.count - 1 - k;
        double const level = piece.part.y[i];
        if (level >= known.low && level <= known.high) continue;
        const Point from = place_before(piece, i), to = piece.visit.place(piece.part, i);
        // Drawn in the direction in which the line runs, as that decides how it is rounded.
        part_outside(piece.forwards ? from : to, piece.forwards ? to : from, columns,
                     rows_of(piece.visit, known));
        known.include({level, level});
    }
}

// The place before a point of a piece; of the visit's first its own.
Point DenseColumns::place_before(Piece const& piece, std::size_t i) {
    Visit const& visit = piece.visit;
    Stretch const& whole = visit.stretches[piece.stretch];
    auto const place = static_cast<std::size_t>(piece.part.y + i - whole.y);
    if (piece.forwards) {
        if (place > 0) return visit.place(whole, place - 1);
        return piece.stretch > 0 ? visit.last_of(piece.stretch - 1) : visit.first;
    }
    if (place + 1 < whole.count) return visit.place(whole, place + 1);
    return piece.stretch + 1 < visit.stretches.size() ? visit.first_of(piece.stretch + 1) : visit.last;
}

void DenseColumns::follow_with_gaps(Visit const& visit, std::size_t first, std::size_t past, bool forwards,
                                    Reached& known, Columns columns) {
    std::optional<Point> from;
    for (std::size_t k = 0; k < past - first; ++k) {
        Stretch const& stretch = visit.stretches[forwards ? first + k : past - 1 - k];
        for (std::size_t n = 0; n < stretch.count; ++n) {
            const Point to = visit.place(stretch, forwards ? n : stretch.count - 1 - n);
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

void DenseColumns::part_outside(Point from, Point to, Columns columns, Range rows) {
    auto const [low, high] = std::minmax(from.y, to.y);
    if (high > rows.high)
        parts_.push_back({from, to, columns.left, row_at(std::floor(rows.high / pen_.pixel_height)) + 1,
                          columns.right, far_away});
    if (low < rows.low)
        parts_.push_back({from, to, columns.left, -far_away, columns.right,
                          row_at(std::ceil(rows.low / pen_.pixel_height))});
}

} // namespace qv::render
