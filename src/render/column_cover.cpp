#include "render/column_cover.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::RangeSummary;
using document::ValueRange;

constexpr double nothing = 1.0 / 256;     // pixels; what is that much nearer is not drawn
constexpr double hairbreadth = 1.0 / 160; // pixels; across so little, points are one upright line
constexpr double far_away = 1e7;          // pixels; segments from there are the surface's affair
constexpr std::size_t large = 1 << 14;    // pixels handed over at a time

int row_number(double row) {
    return static_cast<int>(std::clamp(row, -1e8, 1e8));
}

// The part of a segment between two places across.
void cut_columns(RowPlace& from, RowPlace& to, double low, double high) {
    const RowPlace start = from;
    double const slope = from.x == to.x ? 0 : (to.y - from.y) / (to.x - from.x);
    for (RowPlace* const place : {&from, &to}) {
        double const x = std::clamp(place->x, low, high);
        if (x == place->x) continue;
        place->y = start.y + (x - start.x) * slope;
        place->x = x;
    }
}

bool is_far(RowPlace place) {
    return !(std::abs(place.x) < far_away && std::abs(place.y) < far_away);
}

} // namespace

ColumnCover::ColumnCover(DrawSurface& surface, ColumnGrid const& grid, SeenRows rows, double reach)
    : surface_(surface), grid_(grid), columns_per_twip_(1 / surface.TwipsPerPixelX()),
      rows_per_twip_(1 / surface.TwipsPerPixelY()), rows_(rows), reach_(reach),
      covered_squared_(static_cast<float>((reach - 1 + nothing) * (reach - 1 + nothing))) {
    nearest_.resize(rows.count);
}

void ColumnCover::draw(RisingLine const& line) {
    line_ = &line;
    PointStretch const& last = line.stretches.back();
    double const start = across(line.stretches.front().x.front()), end = across(last.x.back());
    auto const [low, high] = std::minmax(start, end);
    std::int64_t const left = grid_.nearest_visible(std::ceil(low - reach_));
    std::int64_t const right = grid_.nearest_visible(std::floor(high + reach_));
    bool const rises = line.x_map.factor > 0;
    // All that lies before the first column is left behind at once.
    double const begin = line.x_map.value_at(
        (static_cast<double>(rises ? left : right) + (rises ? -reach_ : reach_)) / columns_per_twip_);
    auto const is_before = [&](PointStretch const& stretch) { return stretch.x.back() < begin; };
    from_ = {static_cast<std::size_t>(std::ranges::partition_point(line.stretches, is_before)
                                      - line.stretches.begin()),
             0};
    middle_point_ = to_ = from_;
    for (std::int64_t k = 0; k <= right - left; ++k) draw_column(rises ? left + k : right - k);
    surface_.CoverColumns(columns_, coverage_);
    columns_.clear();
    coverage_.clear();
    plain_.clear();
    line_ = nullptr;
}

void ColumnCover::draw_column(std::int64_t column) {
    double const ahead = line_->x_map.factor > 0 ? reach_ : -reach_;
    middle_ = static_cast<double>(column);
    advance(from_, middle_ - ahead);
    advance(middle_point_, middle_);
    advance(to_, middle_ + ahead);
    draw_crossing();
    // The segments that lead out of reach count too.
    Place const past = is_end(to_) ? to_ : Place{to_.stretch, to_.point + 1};
    follow<true>(middle_point_, past);
    follow<false>(from_ == Place{} ? from_ : before(from_), middle_point_);
    hand_over(column);
}

// The segment across the middle, or the end of the line that is nearest to it.
void ColumnCover::draw_crossing() {
    bool const is_first = middle_point_ == Place{};
    const RowPlace from = row_place(is_first ? middle_point_ : before(middle_point_));
    const RowPlace to = is_end(middle_point_) ? from : row_place(middle_point_);
    approach(from, to, 0, rows_.count);
}

void ColumnCover::hand_over(std::int64_t column) {
    if (!nearest_.empty()) {
        columns_.push_back({static_cast<std::int32_t>(column), rows_.first + nearest_.first(),
                            nearest_.past() - nearest_.first()});
        nearest_.take_coverage(reach_, coverage_);
    }
    if (coverage_.size() < large) return;
    surface_.CoverColumns(columns_, coverage_);
    columns_.clear();
    coverage_.clear();
}

// To the first point at or behind a position in pixels. Most often points are evenly spaced.
void ColumnCover::advance(Place& place, double position) const {
    double const limit = line_->x_map.value_at(position / columns_per_twip_);
    auto const stretches = line_->stretches;
    while (!is_end(place) && stretches[place.stretch].x.back() < limit) place = {place.stretch + 1, 0};
    if (is_end(place)) return;
    auto const x = stretches[place.stretch].x;
    if (!(x[place.point] < limit)) return;
    // Never at `low`, at or before `high`.
    std::size_t low = place.point, high = x.size() - 1;
    double const share = (limit - x[low]) / (x[high] - x[low]);
    std::size_t const guess =
        low + static_cast<std::size_t>(std::clamp(share, 0.0, 1.0) * static_cast<double>(high - low));
    if (x[guess] < limit) {
        low = guess;
        for (std::size_t step = 1; low + step < high && x[low + step] < limit; step *= 2) low += step;
        for (std::size_t step = 1; low + step < high; step *= 2)
            if (!(x[low + step] < limit)) high = low + step;
    } else {
        high = guess;
        for (std::size_t step = 1; high > low + step; step *= 2) {
            if (x[high - step] < limit) {
                low = high - step;
                break;
            }
            high -= step;
        }
    }
    place.point = static_cast<std::size_t>(
        std::lower_bound(x.begin() + static_cast<std::ptrdiff_t>(low) + 1,
                         x.begin() + static_cast<std::ptrdiff_t>(high), limit)
        - x.begin());
}

ColumnCover::Place ColumnCover::before(Place place) const {
    if (place.point > 0) return {place.stretch, place.point - 1};
    return {place.stretch - 1, line_->stretches[place.stretch - 1].x.size() - 1};
}

// Pixels.
double ColumnCover::across(double x) const {
    return line_->x_map(x) * columns_per_twip_;
}

double ColumnCover::row_of(double level) const {
    return line_->y_map(level) * rows_per_twip_ - rows_.first;
}

RowPlace ColumnCover::row_place(Place place) const {
    PointStretch const& stretch = line_->stretches[place.stretch];
    return {across(stretch.x[place.point]) - middle_, row_of(stretch.y[place.point])};
}

ColumnCover::Way ColumnCover::way_from(Place place) const {
    double const level = line_->stretches[place.stretch].y[place.point], row = row_of(level);
    return {{level, level}, row, row, false};
}

/// Follows the points from one to another, backwards from the last.
template <bool forwards>
void ColumnCover::follow(Place first, Place past) {
    if (first == past) return;
    Way way = way_from(forwards ? first : before(past));
    // Of the last stretch only the points before the last place count, if any.
    std::size_t const stretches = past.stretch - first.stretch + (past.point > 0 ? 1 : 0);
    for (std::size_t k = 0; k < stretches && !way.is_out_of_reach; ++k) {
        std::size_t const number = first.stretch + (forwards ? k : stretches - 1 - k);
        PointStretch const& stretch = line_->stretches[number];
        if (way.holds(stretch.y_range)) continue;
        follow<forwards>(way, Piece{stretch, number, number == first.stretch ? first.point : 0,
                                    number == past.stretch ? past.point : stretch.x.size()});
    }
}

template <bool forwards>
void ColumnCover::follow(Way& way, Piece const& piece) {
    RangeSummary const* const summary = piece.stretch.summary;
    std::size_t first = piece.first, past = piece.past;
    while (first < past && !way.is_out_of_reach) {
        // The largest range that begins (ends) here, or the points up to where one does.
        std::size_t const rest = past - first, place = piece.stretch.summary_place + (forwards ? first : past);
        std::size_t level = 0, count = rest;
        if (summary) {
            while (level < RangeSummary::levels && RangeSummary::span(level) <= rest
                   && summary->has(level, forwards ? place : place - RangeSummary::span(level)))
                ++level;
            std::size_t const odd = place % RangeSummary::span(0);
            count = level > 0 ? RangeSummary::span(level - 1)
                    : odd > 0 ? std::min(rest, forwards ? RangeSummary::span(0) - odd : odd)
                              : std::min(rest, RangeSummary::span(0));
        }
        const Piece part{piece.stretch, piece.number, forwards ? first : past - count,
                         forwards ? first + count : past};
        if (level == 0) {
            look_at_points<forwards>(way, part);
        } else {
            ValueRange const& range = summary->at(level - 1, piece.stretch.summary_place + part.first);
            if (!way.holds(range)) look_at<forwards>(way, part, level - 1, range);
        }
        (forwards ? first += count : past -= count);
    }
}

template <bool forwards>
ColumnCover::Place ColumnCover::place_before(Piece const& piece, std::size_t point) const {
    if (forwards) return piece.number + point > 0 ? before({piece.number, point}) : Place{};
    if (point + 1 < piece.stretch.x.size()) return {piece.number, point + 1};
    return piece.number + 1 < line_->stretches.size() ? Place{piece.number + 1, 0}
                                                      : Place{piece.number, point};
}

/// Points that leave the levels reached, of which the summary knows the range.
template <bool forwards>
void ColumnCover::look_at(Way& way, Piece const& piece, std::size_t level, ValueRange const& range) {
    auto const x = piece.stretch.x;
    std::size_t const nearest = forwards ? piece.first : piece.past - 1;
    const Place before_it = place_before<forwards>(piece, nearest);
    double const near = std::abs(across(line_->stretches[before_it.stretch].x[before_it.point]) - middle_);
    way.is_out_of_reach = near >= reach_;
    if (way.is_out_of_reach) return;
    if (!brings_nearer(way, range, near)) return include(way, range);
    double const start = across(x[piece.first]) - middle_, end = across(x[piece.past - 1]) - middle_;
    if (std::abs(end - start) <= hairbreadth) {
        if (range.low > way.levels.high || range.high < way.levels.low)
            reach(way, row_place(before_it), {piece.number, nearest});
        double const x_of_all = (start + end) / 2;
        double const low_row = row_of(range.low), high_row = row_of(range.high);
        if (range.high > way.levels.high)
            approach({x_of_all, way.high_row}, {x_of_all, high_row}, Climb{way.high_row, high_row});
        if (range.low < way.levels.low)
            approach({x_of_all, way.low_row}, {x_of_all, low_row}, Climb{way.low_row, low_row});
        return include(way, range);
    }
    if (level == 0) return look_at_points<forwards>(way, piece);
    std::size_t const span = RangeSummary::span(level - 1);
    for (std::size_t k = 0; k < RangeSummary::fan_out && !way.is_out_of_reach; ++k) {
        std::size_t const first = piece.first + (forwards ? k : RangeSummary::fan_out - 1 - k) * span;
        ValueRange const& part = piece.stretch.summary->at(level - 1, piece.stretch.summary_place + first);
        if (!way.holds(part))
            look_at<forwards>(way, {piece.stretch, piece.number, first, first + span}, level - 1, part);
    }
}

template <bool forwards>
void ColumnCover::look_at_points(Way& way, Piece const& piece) {
    double const* const y = piece.stretch.y.data();
    for (std::size_t k = 0; k < piece.past - piece.first; ++k) {
        std::size_t const point = forwards ? piece.first + k : piece.past - 1 - k;
        if (y[point] >= way.levels.low && y[point] <= way.levels.high) continue;
        reach(way, row_place(place_before<forwards>(piece, point)), {piece.number, point});
        if (way.is_out_of_reach) return;
    }
}

/// Goes on to a point outside the levels reached.
void ColumnCover::reach(Way& way, RowPlace from, Place to) {
    double const near = std::abs(from.x);
    way.is_out_of_reach = near >= reach_;
    if (way.is_out_of_reach) return;
    const RowPlace there = row_place(to);
    double const level = line_->stretches[to.stretch].y[to.point];
    bool const is_higher = level > way.levels.high;
    double& edge = is_higher ? way.high_row : way.low_row;
    const Climb climb{edge, there.y};
    if (brings_nearer(climb, near)) approach(from, there, climb);
    (is_higher ? way.levels.high : way.levels.low) = level;
    edge = there.y;
}

void ColumnCover::include(Way& way, ValueRange const& range) const {
    if (range.high > way.levels.high) way.levels.high = range.high, way.high_row = row_of(range.high);
    if (range.low < way.levels.low) way.levels.low = range.low, way.low_row = row_of(range.low);
}

bool ColumnCover::brings_nearer(Way const& way, ValueRange const& range, double near) const {
    return (range.high > way.levels.high && brings_nearer(Climb{way.high_row, row_of(range.high)}, near))
           || (range.low < way.levels.low && brings_nearer(Climb{way.low_row, row_of(range.low)}, near));
}

/// Whether a line no nearer than this brings any row nearer. Between the distances it is their squares'
/// difference that is compared.
bool ColumnCover::brings_nearer(Climb climb, double near) const {
    bool const down = climb.goal >= climb.edge;
    auto const limit = [&](double squared) {
        return std::max(covered_squared_, static_cast<float>(squared + 2 * nothing * near));
    };
    int const first = std::max(0, row_number(down ? std::floor(climb.edge) + 1 : std::ceil(climb.goal)));
    int const past =
        std::min(rows_.count, row_number(down ? std::floor(climb.goal) + 1 : std::ceil(climb.edge)));
    if (nearest_.is_any_farther(first, past, limit(near * near))) return true;
    // Rows that it does not reach, but comes near to.
    int const step = down ? 1 : -1;
    for (int row = row_number(down ? std::floor(climb.goal) + 1 : std::ceil(climb.goal) - 1);; row += step) {
        double const away = std::abs(row - climb.goal), squared = near * near + away * away;
        if (squared >= reach_ * reach_) return false;
        if (row >= 0 && row < rows_.count && nearest_.is_any_farther(row, row + 1, limit(squared)))
            return true;
    }
}

void ColumnCover::approach(RowPlace from, RowPlace to, Climb climb) {
    bool const down = climb.goal >= climb.edge;
    approach(from, to, row_number(down ? std::floor(climb.edge) + 1 : std::ceil(climb.goal - reach_)),
             row_number(down ? std::floor(climb.goal + reach_) + 1 : std::ceil(climb.edge)));
}

void ColumnCover::approach(RowPlace from, RowPlace to, int first, int past) {
    if (is_far(from) || is_far(to)) {
        auto const on_page = [&](RowPlace place) {
            return Point{(place.x + middle_) / columns_per_twip_, (place.y + rows_.first) / rows_per_twip_};
        };
        const std::vector<Point> segment{on_page(from), on_page(to)};
        if (plain_ != segment) surface_.Polyline(segment);
        plain_ = segment;
        return;
    }
    auto const [left, right] = std::minmax(from.x, to.x);
    if (left >= reach_ || right <= -reach_) return;
    if (left < -reach_ || right > reach_) cut_columns(from, to, -reach_, reach_);
    auto const [top, bottom] = std::minmax(from.y, to.y);
    first = std::max({first, 0, row_number(std::ceil(top - reach_))});
    past = std::min({past, rows_.count, row_number(std::floor(bottom + reach_)) + 1});
    if (first < past) nearest_.approach(from, to, 0, first, past);
}

} // namespace qv::render
