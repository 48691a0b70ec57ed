#include "render/lines/column_thinner.h"

#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

constexpr std::size_t longest_polyline = 1 << 16; // points handed over at a time
constexpr std::size_t most_parts = 1 << 10;       // and parts, so few that their memory stays near

constexpr std::size_t few = 8; // points of a run that are looked at one by one

bool has_whole_edges(DrawState const& state) {
    return !state.Smooth || state.draw_mode == DrawMode::Invert;
}

bool is_solid(DrawState const& state) {
    return state.draw_style == DrawStyle::Solid || state.draw_style == DrawStyle::InsideSolid;
}

// The width of the pen that lines are drawn with, pixels.
double width_of_pen(DrawSurface const& surface) {
    double const width = surface.pen_pixels(surface.state.DrawWidth);
    return has_whole_edges(surface.state) ? whole_pen(width) : width;
}

// One whole pixel across, without gaps, the extremes cover what all points do. In shapes a column of extremes
// looks like all points, and is short.
bool draws_in_parts(DrawSurface const& surface) {
    bool const extremes_suffice =
        has_whole_edges(surface.state) && is_solid(surface.state) && width_of_pen(surface) <= 1;
    return surface.ShowsPixels() && !extremes_suffice;
}

LinePen line_pen(DrawSurface const& surface) {
    double const width = width_of_pen(surface);
    return {surface.TwipsPerPixelX(), surface.TwipsPerPixelY(), width / 2 + 0.5, !is_solid(surface.state),
            width > 1 || !has_whole_edges(surface.state)};
}

SeenRows seen_rows(DrawSurface const& surface, Box const& visible) {
    constexpr int most = 1 << 15; // as many as a page can have
    auto const row = [&](double y) {
        return std::clamp(whole_pixel(y / surface.TwipsPerPixelY()), -most, most);
    };
    int const first = row(visible.top) - 1;
    return {first, std::max(0, row(visible.bottom()) + 2 - first)};
}

} // namespace

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
    std::int64_t const column = grid_.column(point.x);
    if (column != current_) flush();
    current_ = column;
    run_.add(point, point.y, point.y);
    if (run_.count == 2) second_ = point;
    if (run_.count == 3) third_ = point;
}

void ColumnThinner::add_run(PointRun const& run) {
    if (run.size() <= few) {
        for (std::size_t i = 0; i < run.size(); ++i) add(run.place(i));
        return;
    }
    const Point first = run.place(0), last = run.place(run.size() - 1);
    std::int64_t const column = grid_.column(first.x);
    if (column != current_) flush();
    current_ = column;
    const document::ValueRange y = document::range_of(run.y.data(), run.y.size());
    auto const [low, high] = std::minmax({(*run.y_map)(y.low), (*run.y_map)(y.high)});
    run_.add(first, low, high);
    run_.add(last, low, high);
    // Values that neither only climb nor only fall do both.
    bool const turns = !std::ranges::is_sorted(run.y) && !std::ranges::is_sorted(run.y, std::greater<>());
    run_.climbs |= turns;
    run_.falls |= turns;
    run_.count += 5; // more than are kept one by one
}

void ColumnThinner::flush() {
    if (run_.count == 0) return;
    thinned_.push_back(run_.first);
    if (run_.count == 3) thinned_.push_back(second_);
    if (run_.count == 4) thinned_.insert(thinned_.end(), {second_, third_});
    // What merely climbs or falls has its extremes at its ends and stays a slope.
    if (run_.count > 4 && run_.climbs && run_.falls) {
        // So many points fill the column, so the extremes stand in its middle, which smooth drawing covers
        // wholly. A column beside the visible box has no middle.
        double const middle = (grid_.start(current_) + grid_.start(current_ + 1)) / 2;
        double const x = std::isfinite(middle) ? middle : (run_.first.x + run_.last.x) / 2;
        bool const rising = run_.last.y >= run_.first.y;
        thinned_.push_back({x, rising ? run_.lowest_y : run_.highest_y});
        thinned_.push_back({x, rising ? run_.highest_y : run_.lowest_y});
    }
    if (run_.count > 1) thinned_.push_back(run_.last);
    run_ = {};
}

ThinnedPolyline::ThinnedPolyline(DrawSurface& surface, Box const& visible)
    : surface_(surface), grid_(surface.TwipsPerPixelX(), visible.left, visible.right()),
      in_parts_(draws_in_parts(surface)), thinner_(grid_, thinned_),
      columns_(grid_, line_pen(surface), thinned_, parts_) {
    double const reach = line_pen(surface).reach;
    if (in_parts_ && is_solid(surface.state) && !has_whole_edges(surface.state)
        && reach <= ColumnCover::widest_reach)
        smooth_.emplace(surface, grid_, seen_rows(surface, visible), reach);
}

void ThinnedPolyline::finish() {
    smooth_ ? smooth_->finish() : in_parts_ ? columns_.finish() : thinner_.flush();
    surface_.Polyline(thinned_);
    thinned_.clear();
    hand_over_parts();
}

void ThinnedPolyline::hand_over_parts() {
    if (!parts_.empty()) surface_.LineParts(parts_);
    parts_.clear();
}

void ThinnedPolyline::hand_over_when_long() {
    if (parts_.size() >= most_parts) hand_over_parts();
    if (thinned_.size() < longest_polyline) return;
    surface_.Polyline(thinned_);
    thinned_.erase(thinned_.begin(), thinned_.end() - 1); // the pieces share an end
}

} // namespace qv::render
