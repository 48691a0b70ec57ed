#include "render/column_thinner.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

constexpr std::size_t longest_polyline = 1 << 16; // points handed over at a time

} // namespace

ColumnThinner::ColumnThinner(Grid const& grid, std::vector<Point>& thinned)
    : columns_per_twip_(1 / grid.twips_per_pixel), offset_(0.5), thinned_(thinned) {
    auto const edge = [&](double x) -> std::int64_t {
        if (std::isnan(x)) return 0;
        return static_cast<std::int64_t>(
            std::floor(std::clamp(x * columns_per_twip_ + offset_, -1e15, 1e15)));
    };
    first_column_ = edge(grid.low) - 1;
    last_column_ = edge(grid.high) + 1;
}

std::int64_t ColumnThinner::column(double x) const {
    // A pixel's column begins half a pixel before its centre, where rounding to whole pixels changes.
    double const place = std::floor(x * columns_per_twip_ + offset_);
    if (std::isnan(place)) return first_column_;
    return static_cast<std::int64_t>(
        std::clamp(place, static_cast<double>(first_column_), static_cast<double>(last_column_)));
}

double ColumnThinner::column_start(std::int64_t column) const {
    if (column <= first_column_) return -HUGE_VAL;
    if (column > last_column_) return HUGE_VAL;
    return (static_cast<double>(column) - offset_) / columns_per_twip_;
}

void ColumnThinner::start(Point point) {
    current_ = column(point.x);
    run_ = {point, point, point.y, point.y, 1};
}

void ColumnThinner::add(Point point) {
    if (run_.count == 0) return start(point);
    if (column(point.x) != current_) {
        flush();
        return start(point);
    }
    ++run_.count;
    if (run_.count == 2) second_ = point;
    if (run_.count == 3) third_ = point;
    run_.last = point;
    run_.lowest_y = std::min(run_.lowest_y, point.y);
    run_.highest_y = std::max(run_.highest_y, point.y);
}

void ColumnThinner::add_run(Run const& run) {
    if (run.count == 0) return;
    if (run_.count > 0 && column(run.first.x) != current_) flush();
    if (run_.count == 0) {
        current_ = column(run.first.x);
        run_ = run;
        run_.count = std::max<std::size_t>(run.count, 5);
        return;
    }
    run_.last = run.last;
    run_.lowest_y = std::min(run_.lowest_y, run.lowest_y);
    run_.highest_y = std::max(run_.highest_y, run.highest_y);
    run_.count += std::max<std::size_t>(run.count, 5);
}

void ColumnThinner::flush() {
    if (run_.count == 0) return;
    thinned_.push_back(run_.first);
    if (run_.count == 3) thinned_.push_back(second_);
    if (run_.count == 4) thinned_.insert(thinned_.end(), {second_, third_});
    if (run_.count > 4) {
        // So many points fill the column, so the extremes stand in its middle, which smooth drawing covers
        // wholly. A column beside the visible box has no middle.
        double const middle = (column_start(current_) + column_start(current_ + 1)) / 2;
        double const x = std::isfinite(middle) ? middle : (run_.first.x + run_.last.x) / 2;
        // A run that merely climbs or falls has its extremes at its ends and stays a slope.
        auto const [low_end, high_end] = std::minmax(run_.first.y, run_.last.y);
        bool const rising = run_.last.y >= run_.first.y;
        if (rising && run_.lowest_y < low_end) thinned_.push_back({x, run_.lowest_y});
        if (run_.highest_y > high_end) thinned_.push_back({x, run_.highest_y});
        if (!rising && run_.lowest_y < low_end) thinned_.push_back({x, run_.lowest_y});
    }
    if (run_.count > 1) thinned_.push_back(run_.last);
    run_.count = 0;
}

ThinnedPolyline::ThinnedPolyline(DrawSurface& surface, Box const& visible)
    : surface_(surface), thinner_({surface.TwipsPerPixelX(), visible.left, visible.right()}, thinned_) {}

void ThinnedPolyline::finish() {
    thinner_.flush();
    surface_.Polyline(thinned_);
    thinned_.clear();
}

void ThinnedPolyline::hand_over_when_long() {
    if (thinned_.size() < longest_polyline) return;
    surface_.Polyline(thinned_);
    thinned_.erase(thinned_.begin(), thinned_.end() - 1); // the pieces share an end
}

} // namespace qv::render
