#include "render/column_cover.h"

#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::render {
namespace {

using document::RangeSummary;
using document::ValueRange;

constexpr double nothing = 1.0 / 400;     // pixels; what is that much nearer is not drawn
constexpr double hairbreadth = 1.0 / 110; // pixels; across so little, points are one upright line
constexpr std::size_t few_points = 8;
constexpr double far_away = 1e7;       // pixels; segments from there are the surface's affair
constexpr std::size_t large = 1 << 14; // pixels handed over at a time

// Rows as whole numbers, however far away.
int row_below(double row) {
    return floor_int(std::clamp(row, -farthest_pixel, farthest_pixel));
}

int row_above(double row) {
    return -row_below(-row);
}

// The first row that something has not reached which goes up or down.
int next_row(double row, int step) {
    return step > 0 ? row_below(row) + 1 : row_above(row) - 1;
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

// Without a jump for each of the values, as nobody can foresee which leave the range.
bool is_any_outside(double const* values, std::size_t count, ValueRange const& range) {
    bool outside = false;
#ifdef __SSE2__
    if (count == few_points) {
        const __m128d one = _mm_loadu_pd(values), two = _mm_loadu_pd(values + 2);
        const __m128d three = _mm_loadu_pd(values + 4), four = _mm_loadu_pd(values + 6);
        const __m128d low = _mm_min_pd(_mm_min_pd(one, two), _mm_min_pd(three, four));
        const __m128d high = _mm_max_pd(_mm_max_pd(one, two), _mm_max_pd(three, four));
        return _mm_movemask_pd(_mm_or_pd(_mm_cmplt_pd(low, _mm_set1_pd(range.low)),
                                         _mm_cmpgt_pd(high, _mm_set1_pd(range.high))))
               != 0;
    }
#endif
    for (std::size_t i = 0; i < count; ++i) outside |= (values[i] < range.low) | (values[i] > range.high);
    return outside;
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

ColumnCover::PixelMap::PixelMap(scale::AxisMap const& axis, double pixels_per_twip_, double origin_)
    : map(&axis), start(axis.start * pixels_per_twip_ - origin_), factor(axis.factor * pixels_per_twip_),
      pixels_per_twip(pixels_per_twip_), origin(origin_), is_linear(!axis.is_log) {}

void ColumnCover::draw(RisingLine const& line) {
    x_map_ = &line.x_map;
    column_of_ = PixelMap(line.x_map, columns_per_twip_, 0);
    row_of_ = PixelMap(line.y_map, rows_per_twip_, rows_.first);
    double const start = column_of_(line.stretches.front().x.front()),
                 end = column_of_(line.stretches.back().x.back());
    auto const [low, high] = std::minmax(start, end);
    std::int64_t const left = grid_.nearest_visible(std::ceil(low - reach_));
    std::int64_t const right = grid_.nearest_visible(std::floor(high + reach_));
    bool const rises = line.x_map.factor > 0;
    ahead_ = rises ? reach_ : -reach_;
    // What lies before the first column and its neighbour is left out.
    double const begin =
        line.x_map.value_at((static_cast<double>(rises ? left : right) - ahead_) / columns_per_twip_);
    auto const is_before = [&](PointStretch const& stretch) { return stretch.x.back() < begin; };
    auto const seen = std::ranges::partition_point(line.stretches, is_before);
    stretches_.clear();
    for (auto it = seen == line.stretches.begin() ? seen : seen - 1; it != line.stretches.end(); ++it)
        stretches_.push_back(lay_out(*it));
    from_ = middle_point_ = to_ = {};
    for (std::int64_t k = 0; k <= right - left; ++k) draw_column(rises ? left + k : right - k);
    surface_.CoverColumns(columns_, coverage_);
    columns_.clear();
    coverage_.clear();
    plain_.clear();
}

ColumnCover::Stretch ColumnCover::lay_out(PointStretch const& stretch) const {
    constexpr double nearly = 1.0 / 1024; // pixels
    Stretch laid_out{stretch, 0, 0, false};
    if (!stretch.spacing || !column_of_.is_linear) return laid_out;
    laid_out.step = stretch.spacing->step * column_of_.factor;
    laid_out.start =
        column_of_(stretch.spacing->first) + static_cast<double>(stretch.summary_place) * laid_out.step;
    laid_out.is_even = std::abs(stretch.spacing->deviation * column_of_.factor) < nearly
                       && std::isfinite(laid_out.start) && std::isfinite(laid_out.step);
    return laid_out;
}

void ColumnCover::draw_column(std::int64_t column) {
    middle_ = static_cast<double>(column);
    advance(from_, middle_ - ahead_);
    advance(middle_point_, middle_);
    advance(to_, middle_ + ahead_);
    draw_crossing();
    // The segments that lead out of reach count too.
    draw_ways(from_ == Place{} ? from_ : before(from_),
              is_end(to_) ? to_ : Place{to_.stretch, to_.point + 1});
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

// To the first point at or behind a position in pixels.
void ColumnCover::advance(Place& place, double position) const {
    double const limit = x_map_->value_at(position / columns_per_twip_);
    auto const is_passed = [&](Stretch const& stretch) {
        std::size_t const last = stretch.x.size() - 1;
        return stretch.is_even ? (across(column_of_, stretch, last) - position) * ahead_ < 0
                               : stretch.x[last] < limit;
    };
    while (!is_end(place) && is_passed(stretches_[place.stretch])) place = {place.stretch + 1, 0};
    if (is_end(place)) return;
    Stretch const& stretch = stretches_[place.stretch];
    auto const x = stretch.x;
    if (stretch.is_even) {
        double const point = stretch.step == 0 ? 0 : std::ceil((position - stretch.start) / stretch.step);
        if (point > static_cast<double>(place.point))
            place.point = std::min(x.size() - 1, static_cast<std::size_t>(point));
        return;
    }
    if (!(x[place.point] < limit)) return;
    std::size_t low = place.point, step = 1; // never there
    for (; low + step < x.size() && x[low + step] < limit; step *= 2) low += step;
    auto const found =
        std::lower_bound(x.begin() + static_cast<std::ptrdiff_t>(low) + 1,
                         x.begin() + static_cast<std::ptrdiff_t>(std::min(low + step, x.size())), limit);
    place.point = static_cast<std::size_t>(found - x.begin());
}

ColumnCover::Place ColumnCover::before(Place place) const {
    if (place.point > 0) return {place.stretch, place.point - 1};
    return {place.stretch - 1, stretches_[place.stretch - 1].x.size() - 1};
}

RowPlace ColumnCover::row_place(Place place) const {
    Stretch const& stretch = stretches_[place.stretch];
    return {across(stretch, place.point), row_of_(stretch.y[place.point])};
}

ColumnCover::Way ColumnCover::way_from(Place place) const {
    double const level = stretches_[place.stretch].y[place.point], row = row_of_(level);
    int const upwards = row_of_.factor > 0 ? 1 : -1; // rows, where levels rise
    return {{level, level}, {row, -upwards}, {row, upwards}};
}

// Each side on its own, but next to the middle both in turn where points are not very dense.
void ColumnCover::draw_ways(Place first, Place past) {
    Place const middle = middle_point_;
    if (middle != past && middle.point > 0 && !is_narrow(stretches_[middle.stretch]))
        return follow_both_ways(first, past);
    if (middle != past) follow<true>(way_from(middle), middle, past);
    if (first != middle) follow<false>(way_from(before(middle)), first, middle);
}

/// Follows a few points of the stretch at the middle, the nearer side first, so that each side knows what the
/// other has reached. What a side has reached with its last segment is known when it is the nearer one again.
void ColumnCover::follow_both_ways(Place first, Place past) {
    constexpr int few = 16;
    const Place middle = middle_point_;
    Stretch const& stretch = stretches_[middle.stretch];
    struct Side {
        std::size_t point;
        double near, level;
    };
    auto const side_at = [&](std::size_t point) {
        return Side{point, std::abs(across(stretch, point)), stretch.y[point]};
    };
    std::array sides{side_at(middle.point - 1), side_at(middle.point)};
    std::size_t const begin = first.stretch == middle.stretch ? first.point : 0;
    std::size_t const end = past.stretch == middle.stretch ? past.point : stretch.x.size();
    Way way = way_from({middle.stretch, sides[sides[1].near <= sides[0].near].point});
    for (int k = 0; k < few; ++k) {
        bool const ahead = sides[1].near <= sides[0].near;
        Side& side = sides[ahead];
        if (side.near >= reach_ || (ahead ? side.point + 1 >= end : side.point <= begin)) break;
        extend(way, side.level, side.near);
        std::size_t const from = side.point;
        side = side_at(ahead ? from + 1 : from - 1);
        if ((side.level < way.levels.low) | (side.level > way.levels.high))
            draw_climb(side.level > way.levels.high ? way.high : way.low, row_place({middle.stretch, from}),
                       row_place({middle.stretch, side.point}));
    }
    draw_waiting(way.low);
    draw_waiting(way.high);
    Way back = way;
    extend(back, sides[0].level, sides[0].near);
    follow<false>(back, first, {middle.stretch, sides[0].point});
    extend(way, sides[1].level, sides[1].near);
    follow<true>(way, {middle.stretch, sides[1].point + 1}, past);
}

// To a level that was reached at this distance.
void ColumnCover::extend(Way& way, double level, double near) {
    if (level > way.levels.high) way.levels.high = level, pass(way.high, row_of_(level), near);
    if (level < way.levels.low) way.levels.low = level, pass(way.low, row_of_(level), near);
}

/// Follows the points from one to another, backwards from the last.
template <bool forwards>
void ColumnCover::follow(Way way, Place first, Place past) {
    // Of the last stretch only the points before the last place count, if any.
    std::size_t const stretches = past.stretch - first.stretch + (past.point > 0 ? 1 : 0);
    for (std::size_t k = 0; k < stretches && !way.is_out_of_reach; ++k) {
        std::size_t const number = first.stretch + (forwards ? k : stretches - 1 - k);
        Stretch const& stretch = stretches_[number];
        if (way.holds(stretch.y_range)) continue;
        follow<forwards>(way, Piece{stretch, number, number == first.stretch ? first.point : 0,
                                    number == past.stretch ? past.point : stretch.x.size()});
    }
    draw_waiting(way.low);
    draw_waiting(way.high);
}

template <bool forwards>
void ColumnCover::follow(Way& way, Piece const& piece) {
    RangeSummary const* const summary = piece.stretch.summary;
    std::size_t first = piece.first, past = piece.past;
    while (first < past && !way.is_out_of_reach) {
        // The largest range that begins (ends) here, or the points up to where one does.
        std::size_t const rest = past - first,
                          place = piece.stretch.summary_place + (forwards ? first : past);
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
    return piece.number + 1 < stretches_.size() ? Place{piece.number + 1, 0} : Place{piece.number, point};
}

/// Points that leave the levels reached, of which the summary knows the range.
template <bool forwards>
void ColumnCover::look_at(Way& way, Piece const& piece, std::size_t level, ValueRange const& range) {
    std::size_t const nearest = forwards ? piece.first : piece.past - 1;
    const Place before_it = place_before<forwards>(piece, nearest);
    double const near = std::abs(across(stretches_[before_it.stretch], before_it.point));
    way.is_out_of_reach = near >= reach_;
    if (way.is_out_of_reach) return;
    bool const is_higher = range.high > way.levels.high, is_lower = range.low < way.levels.low;
    double const high_row = is_higher ? row_of_(range.high) : 0, low_row = is_lower ? row_of_(range.low) : 0;
    // To look at so few costs no more than to find out.
    if (level > 0 && !(is_higher && brings_nearer(way.high, high_row, near))
        && !(is_lower && brings_nearer(way.low, low_row, near))) {
        if (is_higher) pass(way.high, high_row, near), way.levels.high = range.high;
        if (is_lower) pass(way.low, low_row, near), way.levels.low = range.low;
        return;
    }
    double const start = across(piece.stretch, piece.first), end = across(piece.stretch, piece.past - 1);
    if (std::abs(end - start) <= hairbreadth) {
        return climb<forwards>(way, piece, range);
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

// Whether a few points are known to lie within a hairbreadth.
bool ColumnCover::is_narrow(Stretch const& stretch) {
    return stretch.is_even && std::abs(stretch.step) * (few_points - 1) <= hairbreadth;
}

// A few at a time, which most often stay within the levels reached.
template <bool forwards>
void ColumnCover::look_at_points(Way& way, Piece const& piece) {
    double const* const y = piece.stretch.y.data();
    bool const narrow = is_narrow(piece.stretch);
    std::size_t first = piece.first, past = piece.past;
    while (first < past && !way.is_out_of_reach) {
        std::size_t const count = std::min(few_points, past - first);
        const Piece part{piece.stretch, piece.number, forwards ? first : past - count,
                         forwards ? first + count : past};
        (forwards ? first : past) = forwards ? part.past : part.first;
        if (!is_any_outside(y + part.first, count, way.levels)) continue;
        if (narrow)
            climb<forwards>(way, part, document::range_of(y + part.first, count));
        else
            reach_points<forwards>(way, part);
    }
}

template <bool forwards>
void ColumnCover::reach_points(Way& way, Piece const& piece) {
    double const* const y = piece.stretch.y.data();
    for (std::size_t k = 0; k < piece.past - piece.first && !way.is_out_of_reach; ++k) {
        std::size_t const point = forwards ? piece.first + k : piece.past - 1 - k;
        // Both at once, as nobody can foresee either.
        if ((y[point] < way.levels.low) | (y[point] > way.levels.high))
            reach(way, row_place(place_before<forwards>(piece, point)), {piece.number, point});
    }
}

/// Goes on to points within a hairbreadth, as if they were one upright line.
template <bool forwards>
void ColumnCover::climb(Way& way, Piece const& piece, ValueRange const& range) {
    if (range.low > way.levels.high || range.high < way.levels.low) {
        std::size_t const nearest = forwards ? piece.first : piece.past - 1;
        reach(way, row_place(place_before<forwards>(piece, nearest)), {piece.number, nearest});
    }
    double const x = (across(piece.stretch, piece.first) + across(piece.stretch, piece.past - 1)) / 2;
    way.is_out_of_reach |= std::abs(x) >= reach_;
    if (way.is_out_of_reach) return;
    if (range.high > way.levels.high) {
        climb(way.high, {x, way.high.row}, {x, row_of_(range.high)});
        way.levels.high = range.high;
    }
    if (range.low < way.levels.low) {
        climb(way.low, {x, way.low.row}, {x, row_of_(range.low)});
        way.levels.low = range.low;
    }
}

/// Goes on to a point outside the levels reached.
void ColumnCover::reach(Way& way, RowPlace from, Place to) {
    way.is_out_of_reach = std::abs(from.x) >= reach_;
    if (way.is_out_of_reach) return;
    double const level = stretches_[to.stretch].y[to.point];
    bool const is_higher = level > way.levels.high;
    climb(is_higher ? way.high : way.low, from, row_place(to));
    (is_higher ? way.levels.high : way.levels.low) = level;
}

/// Goes on from the rows reached to another. What reaches no further row waits: most likely something soon
/// reaches one, and is nearer to it.
void ColumnCover::climb(Edge& edge, RowPlace from, RowPlace to) {
    draw_climb(edge, from, to);
    edge.row = to.y;
}

void ColumnCover::draw_climb(Edge& edge, RowPlace from, RowPlace to) {
    constexpr double steepest = 64;
    int const row = next_row(edge.row, edge.step);
    bool const is_upright =
        std::abs(to.x - from.x) <= std::max(hairbreadth, std::abs(to.y - from.y) / steepest);
    if (is_upright && (row - to.y) * edge.step > 0) return wait(edge, to, row);
    is_upright ? pass_waiting(edge, std::abs(to.x)) : draw_waiting(edge);
    from.x == to.x ? approach_upright(edge, to.x, from.y, to.y) : approach(edge, from, to);
}

void ColumnCover::wait(Edge& edge, RowPlace place, int row) {
    auto const squared = [&](RowPlace from, double to) {
        return from.x * from.x + (to - from.y) * (to - from.y);
    };
    double const here = squared(place, row);
    bool const is_nearer = edge.squared < 0 || here <= edge.squared;
    if (!is_nearer) {
        // Of what is further away from this row only that counts which is nearer to one behind it.
        double const last = row + edge.step * std::ceil(reach_);
        if (reach_ <= 1 || squared(place, last) >= squared(edge.waiting, last)) return;
        draw_waiting(edge);
    }
    edge.waiting = place;
    edge.squared = here;
}

/// Goes on to a row without drawing what leads there; it has this distance.
void ColumnCover::pass(Edge& edge, double row, double near) {
    if (next_row(row, edge.step) != next_row(edge.row, edge.step)) pass_waiting(edge, near);
    edge.row = row;
}

/// The next row is reached at this distance, or was before.
void ColumnCover::pass_waiting(Edge& edge, double near) {
    if (edge.squared < near * near) draw_waiting(edge);
    edge.squared = -1;
}

void ColumnCover::draw_waiting(Edge& edge) {
    if (edge.squared >= 0) approach_upright(edge, edge.waiting.x, edge.waiting.y, edge.waiting.y);
    edge.squared = -1;
}

/// Whether a line no nearer than this brings any row nearer. Between the distances it is their squares'
/// difference that is compared.
bool ColumnCover::brings_nearer(Edge const& edge, double goal, double near) const {
    auto const limit = [&](double squared) { return squared + 2 * nothing * near; };
    auto const is_farther = [&](int first, int past, double squared) {
        return nearest_.is_any_farther(std::max(first, 0), std::min(past, rows_.count),
                                       std::max(covered_squared_, static_cast<float>(limit(squared))));
    };
    int const next = next_row(edge.row, edge.step), beyond = next_row(goal, edge.step);
    if (next != beyond
        && is_farther(edge.step > 0 ? next : beyond + 1, edge.step > 0 ? beyond : next + 1, near * near))
        return true;
    // Rows that it does not reach, but comes near to.
    for (int row = beyond;; row += edge.step) {
        double const away = std::abs(row - goal), squared = near * near + away * away;
        if (squared >= reach_ * reach_) return false;
        bool const is_hidden = row == next && edge.squared >= 0 && edge.squared <= limit(squared);
        if (!is_hidden && is_farther(row, row + 1, squared)) return true;
    }
}

/// Brings rows beyond the edge nearer, to an upright line of one column.
void ColumnCover::approach_upright(Edge const& edge, double x, double from, double to) {
    int const next = next_row(edge.row, edge.step);
    bool const down = edge.step > 0;
    int const first = std::max(0, down ? next : row_above(to - reach_));
    int const past = std::min(rows_.count, (down ? row_below(to + reach_) : next) + 1);
    if (first < past) nearest_.approach(x, down ? from : to, down ? to : from, first, past);
}

/// Brings rows beyond the edge nearer.
void ColumnCover::approach(Edge const& edge, RowPlace from, RowPlace to) {
    int const next = next_row(edge.row, edge.step);
    int const last = edge.step > 0 ? row_below(to.y + reach_) : row_above(to.y - reach_);
    approach(from, to, std::min(next, last), std::max(next, last) + 1);
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
    first = std::max({first, 0, row_above(top - reach_)});
    past = std::min({past, rows_.count, row_below(bottom + reach_) + 1});
    if (first < past) nearest_.approach(from, to, 0, first, past);
}

} // namespace qv::render
