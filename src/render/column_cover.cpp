#include "render/column_cover.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::RangeSummary;
using document::ValueRange;

constexpr std::size_t chunk = 32;         // points between two looks at how far they are
constexpr double hairbreadth = 1.0 / 128; // pixels; across so little, points are one upright line

bool holds(ValueRange const& range, ValueRange const& other) {
    return other.low >= range.low && other.high <= range.high;
}

void include(ValueRange& range, ValueRange const& other) {
    range.low = std::min(range.low, other.low);
    range.high = std::max(range.high, other.high);
}

// Rows as whole numbers, however far away.
int row_number(double row) {
    return static_cast<int>(std::clamp(row, -1e8, 1e8));
}

} // namespace

ColumnCover::ColumnCover(ColumnGrid const& grid, double pixel_width, double pixel_height, int first_row,
                         int rows, double reach)
    : grid_(grid), columns_per_twip_(1 / pixel_width), rows_per_twip_(1 / pixel_height),
      first_row_(first_row), rows_(rows), reach_(reach),
      beside_(static_cast<int>(std::ceil(reach + 0.5)) - 1),
      nearest_(static_cast<std::size_t>(2 * beside_ + 1)) {
    for (NearestRows& nearest : nearest_) nearest.resize(rows);
}

void ColumnCover::draw(ColumnPoints const& points, CoveredColumns& covered) {
    points_ = &points;
    middle_ = grid_.centre(points.column);
    double count = 0;
    for (PointStretch const& stretch : points.stretches) count += static_cast<double>(stretch.count);
    points_that_meet_ = static_cast<std::size_t>(2 * hairbreadth * count);
    draw_middle();
    draw_side(false);
    draw_side(true);
    for (int k = -beside_; k <= beside_; ++k) {
        NearestRows& nearest = nearest_[static_cast<std::size_t>(k + beside_)];
        if (nearest.empty()) continue;
        covered.columns.push_back({static_cast<std::int32_t>(points.column + k), first_row_ + nearest.first(),
                                   nearest.past() - nearest.first()});
        nearest.take_coverage(reach_, covered.coverage);
    }
}

double ColumnCover::x_of(PointStretch const& stretch, std::size_t i) const {
    double const x = points_->x_map ? (*points_->x_map)(stretch.x[i]) : stretch.x[i];
    return (x - middle_) * columns_per_twip_;
}

double ColumnCover::row_of(double level) const {
    return (points_->y_map ? (*points_->y_map)(level) : level) * rows_per_twip_ - first_row_;
}

RowPlace ColumnCover::place(PointStretch const& stretch, std::size_t i) const {
    return {x_of(stretch, i), row_of(stretch.y[i])};
}

// The first point behind the middle of the column.
ColumnCover::Place ColumnCover::find_middle() const {
    auto const& stretches = points_->stretches;
    auto const is_before = [&](PointStretch const& stretch, std::size_t i) {
        double const x = x_of(stretch, i);
        return points_->rises ? x <= 0 : x >= 0;
    };
    std::size_t k = 0;
    while (k < stretches.size() && is_before(stretches[k], stretches[k].count - 1)) ++k;
    if (k == stretches.size()) return {k, 0};
    // Mostly points lie evenly, and few are looked at on the way from half of them on.
    PointStretch const& stretch = stretches[k];
    std::size_t first = 0, past = stretch.count - 1, step = 1, probe = past / 2;
    while (first < past) {
        bool const before = is_before(stretch, probe);
        before ? first = probe + 1 : past = probe;
        probe = before ? first + std::min(step - 1, (past - first) / 2)
                       : past - std::min(step, (past - first + 1) / 2);
        step *= 2;
    }
    return {k, first};
}

ColumnCover::Way ColumnCover::begin_way(Place start, int first, int past, double from) const {
    double const level = points_->stretches[start.stretch].y[start.point];
    double const row = row_of(level);
    return {{level, level}, row, row, first, past, from, reach_};
}

void ColumnCover::draw_middle() {
    auto const& stretches = points_->stretches;
    const Place ahead = find_middle();
    bool const has_ahead = ahead.stretch < stretches.size();
    bool const has_back = ahead.stretch > 0 || ahead.point > 0;
    Place back = ahead;
    if (has_back)
        back = ahead.point > 0 ? Place{ahead.stretch, ahead.point - 1}
                               : Place{ahead.stretch - 1, stretches[ahead.stretch - 1].count - 1};
    Way way_ahead{}, way_back{};
    if (has_ahead) way_ahead = begin_way(ahead, 0, 1, 0);
    if (has_back) way_back = begin_way(back, 0, 1, 0);
    if (has_ahead && has_back) {
        const RowPlace from = place(stretches[back.stretch], back.point);
        const RowPlace to = place(stretches[ahead.stretch], ahead.point);
        auto const [top, bottom] = std::minmax(from.y, to.y);
        approach(from, to, 0, 1, top - reach_, bottom + reach_);
        // The one further away comes after what leads across the middle.
        Way& later = std::abs(to.x) <= std::abs(from.x) ? way_back : way_ahead;
        include(later.levels, {way_ahead.levels.low, way_ahead.levels.low});
        include(later.levels, {way_back.levels.low, way_back.levels.low});
        later.row_of_low = row_of(later.levels.low);
        later.row_of_high = row_of(later.levels.high);
    }
    if (has_ahead) follow<true>(way_ahead, ahead);
    if (has_back) follow<false>(way_back, back);
}

void ColumnCover::draw_side(bool right) {
    if (beside_ == 0) return;
    auto const& stretches = points_->stretches;
    bool const forwards = points_->rises != right;
    const Place start = forwards ? Place{0, 0} : Place{stretches.size() - 1, stretches.back().count - 1};
    Way way = right ? begin_way(start, 1, beside_ + 1, 1) : begin_way(start, -beside_, 0, -1);
    if (auto const& known = points_->known_beside[right]) {
        include(way.levels, *known);
        way.row_of_low = row_of(way.levels.low);
        way.row_of_high = row_of(way.levels.high);
    }
    forwards ? follow<true>(way, start) : follow<false>(way, start);
}

// Rows from `above` to `below`, as far as they can be seen.
void ColumnCover::approach(RowPlace from, RowPlace to, int first_column, int past_column, double above,
                           double below) {
    int const first = std::max(0, row_number(std::ceil(above)));
    int const past = std::min(rows_, row_number(std::floor(below)) + 1);
    if (first >= past) return;
    for (int k = first_column; k < past_column; ++k)
        nearest_[static_cast<std::size_t>(k + beside_)].approach(from, to, k, first, past);
}

// Draws a segment beyond the levels reached, which its end is.
void ColumnCover::reach(Way& way, RowPlace from, RowPlace to, double level) {
    bool const is_higher = level > way.levels.high;
    double& edge = is_higher ? way.row_of_high : way.row_of_low;
    if (to.y > edge)
        approach(from, to, way.first, way.past, std::floor(edge) + 1, to.y + reach_);
    else
        approach(from, to, way.first, way.past, to.y - reach_, std::ceil(edge) - 1);
    edge = to.y;
    (is_higher ? way.levels.high : way.levels.low) = level;
}

template <bool forwards>
void ColumnCover::follow(Way& way, Place start) {
    auto const& stretches = points_->stretches;
    RowPlace last{};
    for (std::size_t k = start.stretch; k < stretches.size();
         k += forwards ? 1 : static_cast<std::size_t>(-1)) {
        PointStretch const& stretch = stretches[k];
        bool const is_start = k == start.stretch;
        std::size_t const first = forwards && is_start ? start.point : 0;
        std::size_t const past = !forwards && is_start ? start.point + 1 : stretch.count;
        if (!follow_stretch<forwards>(way, stretch, first, past, is_start ? nullptr : &last)) return;
        last = place(stretch, forwards ? stretch.count - 1 : 0);
    }
}

// Passes over points from an end on that lead nowhere, or are an upright line; returns their number.
template <bool forwards>
std::size_t ColumnCover::pass_over(Way& way, PointStretch const& stretch, std::size_t first,
                                   std::size_t past) {
    for (std::size_t level = RangeSummary::levels; level-- > 0;) {
        std::size_t const span = RangeSummary::span(level);
        if (past - first < span) continue;
        std::size_t const begin = forwards ? first : past - span;
        std::size_t const summary_place = stretch.summary_place + begin;
        if (!stretch.summary->has(level, summary_place)) continue;
        ValueRange const& range = stretch.summary->at(level, summary_place);
        if (holds(way.levels, range)) return span;
        if (span > points_that_meet_) continue;
        // With the way there from the point before.
        if (forwards ? begin == 0 : begin + span == stretch.count) continue;
        double const from = x_of(stretch, forwards ? begin - 1 : begin + span);
        double const to = x_of(stretch, forwards ? begin + span - 1 : begin);
        if (std::abs(to - from) > hairbreadth) continue;
        double const x = (from + to) / 2;
        if (range.high > way.levels.high)
            reach(way, {x, way.row_of_high}, {x, row_of(range.high)}, range.high);
        if (range.low < way.levels.low) reach(way, {x, way.row_of_low}, {x, row_of(range.low)}, range.low);
        return span;
    }
    return 0;
}

template <bool forwards>
bool ColumnCover::follow_stretch(Way& way, PointStretch const& stretch, std::size_t first, std::size_t past,
                                 RowPlace const* before) {
    std::size_t const begin = first, end = past;
    while (first < past) {
        if (std::size_t const passed = stretch.summary ? pass_over<forwards>(way, stretch, first, past) : 0) {
            forwards ? first += passed : past -= passed;
            continue;
        }
        bool const at_start = forwards ? first == begin : past == end;
        if (!at_start && std::abs(x_of(stretch, forwards ? first - 1 : past) - way.from) >= way.ends)
            return false;
        // Up to where the summary can go on.
        std::size_t const edge = stretch.summary_place + (forwards ? first : past);
        std::size_t const count =
            std::min(past - first, forwards ? chunk - edge % chunk : (edge + chunk - 1) % chunk + 1);
        for (std::size_t k = 0; k < count; ++k) {
            std::size_t const i = forwards ? first + k : past - 1 - k;
            double const level = stretch.y[i];
            if (level >= way.levels.low && level <= way.levels.high) continue;
            bool const is_first = forwards ? i == begin : i + 1 == end;
            if (is_first && !before) continue;
            reach(way, is_first ? *before : place(stretch, forwards ? i - 1 : i + 1), place(stretch, i),
                  level);
        }
        forwards ? first += count : past -= count;
    }
    return true;
}

} // namespace qv::render
