#include "render/lines/column_cover.h"

#include "render/lines/bar_walk.h"

#include <algorithm>
#include <bit>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qv::render {
namespace {

constexpr double dense = 280;          // points a column; more are bars
constexpr int window = 32;             // columns cut into bars at a time, so few that their memory stays near
constexpr std::size_t large = 1 << 14; // pixels handed over at a time

constexpr std::size_t several = 8;

// Of several levels those outside a range, a bit each.
unsigned outside(double const* levels, double low, double high) {
    unsigned bits = 0;
#ifdef __SSE2__
    const __m128d lows = _mm_set1_pd(low), highs = _mm_set1_pd(high);
    for (std::size_t k = 0; k < several; k += 2) {
        const __m128d two = _mm_loadu_pd(levels + k);
        const __m128d beyond = _mm_or_pd(_mm_cmplt_pd(two, lows), _mm_cmpgt_pd(two, highs));
        bits |= static_cast<unsigned>(_mm_movemask_pd(beyond)) << k;
    }
#else
    for (std::size_t k = 0; k < several; ++k)
        bits |= static_cast<unsigned>((levels[k] < low) | (levels[k] > high)) << k;
#endif
    return bits;
}

// How many of several levels lie within a range before the first that does not, from the front or the back.
int first_within(double const* levels, double low, double high) {
    return std::min<int>(several, std::countr_zero(outside(levels, low, high)));
}
int last_within(double const* levels, double low, double high) {
    return std::countl_zero(static_cast<std::uint8_t>(outside(levels, low, high)));
}

} // namespace

ColumnCover::ColumnCover(DrawSurface& surface, ColumnGrid const& grid, SeenRows rows, double reach)
    : surface_(surface),
      grid_(grid), pixels_{1 / surface.TwipsPerPixelX(), 1 / surface.TwipsPerPixelY(), rows.first},
      reach_(reach), nearest_(rows.count, reach) {}

ColumnCover::Columns ColumnCover::columns_of(LineInPixels const& line) const {
    double const low = line.first_x() - reach_, high = line.last_x() + reach_;
    if (line.is_mirrored()) return {-grid_.nearest_visible(-low), -grid_.nearest_visible(-high) + 1};
    return {grid_.nearest_visible(low), grid_.nearest_visible(high) + 1};
}

void ColumnCover::draw(RisingLine const& rising) {
    const LineInPixels line(rising, pixels_);
    auto const [begin, end] = columns_of(line);
    PointIndex from{};
    for (std::int64_t first = begin; first < end; first += window) {
        const Columns columns{first, std::min(first + window, end)};
        from = line.first_at(static_cast<double>(columns.first) - reach_, from);
        PointIndex to = line.first_at(static_cast<double>(columns.past - 1) + reach_, from);
        // The segments that lead out of reach count too.
        if (from != PointIndex{}) from = line.before(from);
        if (!line.is_end(to)) to = line.after(to);
        auto const points = static_cast<double>(line.count(from, to));
        if (points > dense * static_cast<double>(columns.past - columns.first))
            draw_bars(line, columns, from, to);
        else
            draw_points(line, columns, from, to);
    }
    hand_over_all();
}

void ColumnCover::draw_points(LineInPixels const& line, Columns const& columns, PointIndex from,
                              PointIndex to) {
    across_.clear();
    down_.clear();
    line.for_each_part(from, to,
                       [&](LineInPixels::Stretch const& stretch, std::size_t first, std::size_t past) {
                           line.append_places(stretch, first, past, across_, down_);
                       });
    std::size_t ahead = 0;
    for (std::int64_t column = columns.first; column < columns.past; ++column) {
        auto const middle = static_cast<double>(column);
        while (ahead < across_.size() && across_[ahead] < middle) ++ahead;
        follow(ahead, middle);
        hand_over(line.is_mirrored() ? -column : column);
    }
}

/// From the segment across the middle of a column, of which `ahead` is the end, to both sides. What a side
/// has reached with its last segment counts when it is the nearer one again.
void ColumnCover::follow(std::size_t ahead, double middle) {
    constexpr double nowhere = HUGE_VAL;
    auto const place = [&](std::size_t point) { return RowPlace{across_[point] - middle, down_[point]}; };
    std::size_t const count = across_.size();
    std::size_t next_back = ahead, next_front = ahead + 1; // the next point back lies before
    RowPlace front = ahead < count ? place(ahead) : RowPlace{nowhere, 0};
    RowPlace back = ahead > 0 ? place(--next_back) : RowPlace{-nowhere, 0};
    const RowPlace from = ahead > 0 ? back : front, to = ahead < count ? front : back;
    nearest_.approach(from, to);
    double const crossing = from.x < to.x ? from.y - from.x * ((to.y - from.y) / (to.x - from.x)) : from.y;
    double low = std::isfinite(crossing) ? crossing : from.y, high = low;
    for (;;) {
        bool const is_front = front.x <= -back.x;
        RowPlace& at = is_front ? front : back;
        if (std::abs(at.x) >= reach_) return;
        low = std::min(low, at.y);
        high = std::max(high, at.y);
        if (is_front ? next_front >= count : next_back == 0) {
            at.x = is_front ? nowhere : -nowhere;
            continue;
        }
        // Points within the levels reached are passed over, several at a time.
        if (is_front && next_front + several <= count) {
            int const within = first_within(down_.data() + next_front, low, high);
            next_front += static_cast<std::size_t>(within);
            if (within > 0) at = place(next_front - 1);
            if (within > 0) continue;
        } else if (!is_front && next_back >= several) {
            int const within = last_within(down_.data() + next_back - several, low, high);
            next_back -= static_cast<std::size_t>(within);
            if (within > 0) at = place(next_back);
            if (within > 0) continue;
        }
        const RowPlace next = place(is_front ? next_front++ : --next_back);
        if (next.y > high) nearest_.approach_below(high, at, next);
        if (next.y < low) nearest_.approach_above(low, at, next);
        at = next;
    }
}

void ColumnCover::draw_bars(LineInPixels const& line, Columns const& columns, PointIndex from,
                            PointIndex to) {
    auto const margin = static_cast<int>(std::ceil(reach_));
    bars_.start(static_cast<double>(columns.first) - margin,
                static_cast<int>(columns.past - columns.first) - 1 + 2 * margin);
    walk_into_bars(line, from, to, bars_);
    for (std::int64_t column = columns.first; column < columns.past; ++column) {
        bars_.approach(nearest_, static_cast<double>(column), reach_);
        hand_over(line.is_mirrored() ? -column : column);
    }
}

void ColumnCover::hand_over(std::int64_t column) {
    if (!nearest_.empty()) {
        columns_.push_back({static_cast<std::int32_t>(column), pixels_.first_row + nearest_.first(),
                            nearest_.past() - nearest_.first()});
        nearest_.take_coverage(coverage_);
    }
    if (coverage_.size() >= large) hand_over_all();
}

void ColumnCover::hand_over_all() {
    surface_.CoverColumns(columns_, coverage_);
    columns_.clear();
    coverage_.clear();
}

} // namespace qv::render
