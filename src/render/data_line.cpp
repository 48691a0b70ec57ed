#include "render/data_line.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using graph::PointBlock;
using graph::PointStore;

constexpr std::size_t polyline_chunk = 1 << 16; // points handed over at a time
constexpr std::size_t worth_searching = 8;      // points a column must hold for a search to pay

struct Range {
    double low, high;
};

// Smallest and largest of a run; four at a time, because each comparison waits for the one before it.
Range range_of(double const* values, std::size_t count) {
    constexpr std::size_t lanes = 4;
    double low[lanes], high[lanes];
    std::fill_n(low, lanes, values[0]);
    std::fill_n(high, lanes, values[0]);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            low[lane] = std::min(low[lane], values[i + lane]);
            high[lane] = std::max(high[lane], values[i + lane]);
        }
    for (; i < count; ++i) {
        low[0] = std::min(low[0], values[i]);
        high[0] = std::max(high[0], values[i]);
    }
    return {*std::min_element(low, low + lanes), *std::max_element(high, high + lanes)};
}

// First index from `begin` whose x lies at or beyond `limit`, looking near `begin` first.
std::size_t run_end(std::span<double const> x, std::size_t begin, double limit) {
    std::size_t step = 1;
    std::size_t low = begin;
    while (low + step < x.size() && x[low + step] < limit) {
        low += step;
        step *= 2;
    }
    auto const from = x.begin() + static_cast<std::ptrdiff_t>(low);
    auto const to = x.begin() + static_cast<std::ptrdiff_t>(std::min(low + step, x.size()));
    return static_cast<std::size_t>(std::lower_bound(from, to, limit) - x.begin());
}

class DataLine {
public:
    DataLine(DrawSurface& surface, LineMapping const& mapping)
        : surface_(surface), mapping_(mapping),
          thinner_({surface.TwipsPerPixelX(), mapping.visible.left, mapping.visible.right()}, thinned_) {}

    void add(PointBlock const& block) {
        if (!block.all_finite())
            add_with_gaps(block);
        else if (is_out_of_sight(block))
            add_ends(block);
        else if (can_search(block))
            add_rising(block);
        else
            add_all(block);
        if (thinned_.size() >= polyline_chunk) hand_over();
    }

    void finish() {
        thinner_.flush();
        surface_.Polyline(thinned_);
        thinned_.clear();
    }

private:
    Point place(PointBlock const& block, std::size_t i) const {
        return {mapping_.x(block.x()[i]), mapping_.y(block.y()[i])};
    }

    // A long line goes out in pieces that share an end.
    void hand_over() {
        surface_.Polyline(thinned_);
        thinned_.erase(thinned_.begin(), thinned_.end() - 1);
    }

    static bool wholly_beyond(scale::AxisMap const& map, graph::Extent const& extent, double low,
                              double high) {
        if (!map.valid || (map.is_log && extent.low <= 0)) return false;
        auto const [from, to] = std::minmax({map(extent.low), map(extent.high)});
        return to < low || from > high;
    }

    bool is_out_of_sight(PointBlock const& block) const {
        Box const& box = mapping_.visible;
        return wholly_beyond(mapping_.x, block.x_extent(), box.left, box.right())
               || wholly_beyond(mapping_.y, block.y_extent(), box.top, box.bottom());
    }

    bool can_search(PointBlock const& block) const {
        scale::AxisMap const& x = mapping_.x;
        scale::AxisMap const& y = mapping_.y;
        if (!block.x_rising() || !x.valid || x.factor == 0 || !y.valid) return false;
        if ((x.is_log && block.x_extent().low <= 0) || (y.is_log && block.y_extent().low <= 0)) return false;
        double const columns = std::abs(static_cast<double>(thinner_.column(x(block.x_extent().high))
                                                            - thinner_.column(x(block.x_extent().low))));
        return static_cast<double>(block.size()) > static_cast<double>(worth_searching) * (columns + 1);
    }

    void add_ends(PointBlock const& block) {
        thinner_.add(place(block, 0));
        if (block.size() > 1) thinner_.add(place(block, block.size() - 1));
    }

    void add_all(PointBlock const& block) {
        for (std::size_t i = 0; i < block.size(); ++i) thinner_.add(place(block, i));
    }

    void add_with_gaps(PointBlock const& block) {
        for (std::size_t i = 0; i < block.size(); ++i) {
            if (std::isfinite(block.x()[i]) && std::isfinite(block.y()[i]))
                thinner_.add(place(block, i));
            else
                finish();
        }
    }

    // The x at which the columns end that the point's column is the last of, going the way x rises.
    double column_limit(Point point) const {
        bool const rightward = mapping_.x.factor > 0;
        return mapping_.x.value_at(thinner_.column_start(thinner_.column(point.x) + (rightward ? 1 : 0)));
    }

    void add_rising(PointBlock const& block) {
        auto const x = block.x();
        for (std::size_t begin = 0; begin < x.size();) {
            const Point first = place(block, begin);
            const std::size_t end = std::max(begin + 1, run_end(x, begin, column_limit(first)));
            if (end - begin <= worth_searching) {
                for (std::size_t i = begin; i < end; ++i) thinner_.add(place(block, i));
            } else {
                const Range y = range_of(block.y().data() + begin, end - begin);
                auto const [low, high] = std::minmax({mapping_.y(y.low), mapping_.y(y.high)});
                thinner_.add_run({first, place(block, end - 1), low, high, end - begin});
            }
            begin = end;
        }
    }

    DrawSurface& surface_;
    LineMapping const& mapping_;
    std::vector<Point> thinned_;
    ColumnThinner thinner_;
};

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

void draw_data_line(DrawSurface& surface, PointStore const& points, LineMapping const& mapping) {
    const ShapeScope one_shape(surface);
    DataLine line(surface, mapping);
    for (PointBlock const& block : points.blocks()) line.add(block);
    line.finish();
}

} // namespace qv::render
