#include "render/column_thinner.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

constexpr std::size_t longest_polyline = 1 << 16; // points handed over at a time

struct Range {
    double low, high;
};

// Smallest and largest of a run; four at a time, because each comparison waits for the one before it.
Range range_of(std::span<double const> values) {
    constexpr std::size_t lanes = 4;
    double low[lanes], high[lanes];
    std::fill_n(low, lanes, values[0]);
    std::fill_n(high, lanes, values[0]);
    std::size_t i = 0;
    for (; i + lanes <= values.size(); i += lanes)
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            low[lane] = std::min(low[lane], values[i + lane]);
            high[lane] = std::max(high[lane], values[i + lane]);
        }
    for (; i < values.size(); ++i) {
        low[0] = std::min(low[0], values[i]);
        high[0] = std::max(high[0], values[i]);
    }
    return {*std::min_element(low, low + lanes), *std::max_element(high, high + lanes)};
}

constexpr scale::AxisMap on_the_page{.factor = 1, .valid = true};

// One whole pixel across, the extremes cover what all points do. Smooth lines are drawn with them too: their
// pieces are too many to be drawn while a person waits. Of lines with gaps a piece shows what its direction
// says.
Detail detail_for(DrawSurface const& surface) {
    DrawState const& state = surface.state;
    bool const is_solid = state.draw_style == DrawStyle::Solid || state.draw_style == DrawStyle::InsideSolid;
    bool const is_whole = !state.Smooth || state.draw_mode == DrawMode::Invert;
    bool const is_wide = whole_pen(surface.pen_pixels(state.DrawWidth)) > 1;
    return surface.ShowsPixels() && is_solid && is_whole && is_wide ? Detail::Pieces : Detail::Extremes;
}

} // namespace

ColumnThinner::ColumnThinner(Grid const& grid, std::vector<Point>& thinned)
    : detail_(grid.detail), twips_per_pixel_(grid.twips_per_pixel), thinned_(thinned), dense_(thinned) {
    auto const edge = [&](double x) -> std::int64_t {
        if (std::isnan(x)) return 0;
        return static_cast<std::int64_t>(std::floor(std::clamp(x / twips_per_pixel_ + 0.5, -1e15, 1e15)));
    };
    first_column_ = edge(grid.low) - 1;
    last_column_ = edge(grid.high) + 1;
}

std::int64_t ColumnThinner::column(double x) const {
    // A pixel's column begins half a pixel before its centre, as the rounding to whole pixels has it.
    double const place = std::floor(x / twips_per_pixel_ + 0.5);
    if (std::isnan(place)) return first_column_;
    return static_cast<std::int64_t>(
        std::clamp(place, static_cast<double>(first_column_), static_cast<double>(last_column_)));
}

double ColumnThinner::column_start(std::int64_t column) const {
    if (column <= first_column_) return -HUGE_VAL;
    if (column > last_column_) return HUGE_VAL;
    return (static_cast<double>(column) - 0.5) * twips_per_pixel_;
}

void ColumnThinner::Run::add(Point point, double lowest, double highest) {
    if (count == 0) {
        first = point;
        lowest_y = lowest;
        highest_y = highest;
    } else {
        climbs |= point.y > last.y;
        falls |= point.y < last.y;
        lowest_y = std::min(lowest_y, lowest);
        highest_y = std::max(highest_y, highest);
    }
    last = point;
    ++count;
}

void ColumnThinner::add(Point point) {
    std::int64_t const column = this->column(point.x);
    if (column != current_) end_column();
    current_ = column;
    if (detail_ == Detail::Pieces) return keep(point);
    run_.add(point, point.y, point.y);
    if (run_.count == 2) second_ = point;
    if (run_.count == 3) third_ = point;
}

// Beside the visible box only the way in and out is of interest.
void ColumnThinner::keep(Point point) {
    if (!is_visible(current_) && x_.size() == 2) {
        x_.pop_back();
        y_.pop_back();
    }
    x_.push_back(point.x);
    y_.push_back(point.y);
}

void ColumnThinner::add_run(PointRun const& run) {
    if (run.size() == 0) return;
    const Point first = run.place(0), last = run.place(run.size() - 1);
    std::int64_t const column = this->column(first.x);
    if (column != current_) end_column();
    current_ = column;
    if (detail_ == Detail::Pieces) {
        if (!is_visible(column)) return keep(first), keep(last);
        hand_over_pieces();
        return dense_.add(run, {column, static_cast<double>(column) * twips_per_pixel_});
    }
    const Range y = range_of(run.y);
    auto const [low, high] = std::minmax({run.y_map(y.low), run.y_map(y.high)});
    run_.add(first, low, high);
    run_.add(last, low, high);
    // Values that neither only climb nor only fall do both.
    bool const turns = !std::ranges::is_sorted(run.y) && !std::ranges::is_sorted(run.y, std::greater<>());
    run_.climbs |= turns;
    run_.falls |= turns;
    run_.count += 5; // more than are kept one by one
}

void ColumnThinner::flush() {
    end_column();
    if (detail_ == Detail::Pieces) dense_.finish();
}

void ColumnThinner::end_column() {
    if (detail_ == Detail::Pieces)
        hand_over_pieces();
    else
        hand_over_extremes();
}

// In stretches of which x runs one way.
void ColumnThinner::hand_over_pieces() {
    const PixelColumn column{current_, static_cast<double>(current_) * twips_per_pixel_};
    const PointRun run{x_, y_, on_the_page, on_the_page};
    for (std::size_t first = 0, past = 0; first < x_.size(); first = past) {
        bool rises = false, falls = false;
        for (past = first + 1; past < x_.size(); ++past) {
            rises |= x_[past] > x_[past - 1];
            falls |= x_[past] < x_[past - 1];
            if (rises && falls) break;
        }
        dense_.add(run.part(first, past), column);
    }
    x_.clear();
    y_.clear();
}

void ColumnThinner::hand_over_extremes() {
    if (run_.count == 0) return;
    thinned_.push_back(run_.first);
    if (run_.count == 3) thinned_.push_back(second_);
    if (run_.count == 4) thinned_.insert(thinned_.end(), {second_, third_});
    // What merely climbs or falls has its extremes at its ends and stays a slope.
    if (run_.count > 4 && run_.climbs && run_.falls) {
        // So many points fill the column, so the extremes stand in its middle, which smooth drawing covers
        // wholly. A column beside the visible box has no middle.
        double const middle = (column_start(current_) + column_start(current_ + 1)) / 2;
        double const x = std::isfinite(middle) ? middle : (run_.first.x + run_.last.x) / 2;
        bool const rising = run_.last.y >= run_.first.y;
        thinned_.push_back({x, rising ? run_.lowest_y : run_.highest_y});
        thinned_.push_back({x, rising ? run_.highest_y : run_.lowest_y});
    }
    if (run_.count > 1) thinned_.push_back(run_.last);
    run_ = {};
}

ThinnedPolyline::ThinnedPolyline(DrawSurface& surface, Box const& visible)
    : surface_(surface),
      thinner_({surface.TwipsPerPixelX(), visible.left, visible.right(), detail_for(surface)}, thinned_) {}

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
