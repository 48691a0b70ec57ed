#include "render/lines/data_line.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::PointBlock;
using document::PointStore;

constexpr std::size_t worth_searching = 8; // points a column must hold for a search to pay

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
        : mapping_(mapping), line_(surface, mapping.visible) {}

    void add(PointBlock const& block) {
        if (!block.all_finite())
            add_with_gaps(block);
        else if (line_.takes_stretches() && can_search(block))
            add_stretch(block);
        else if (is_out_of_sight(block))
            add_ends(block);
        else if (can_search(block))
            add_rising(block);
        else
            add_all(block);
        line_.hand_over_when_long();
    }

    void finish() { line_.finish(); }

private:
    Point place(PointBlock const& block, std::size_t i) const {
        return {mapping_.x(block.x()[i]), mapping_.y(block.y()[i])};
    }

    static bool wholly_beyond(scale::AxisMap const& map, document::Extent const& extent, double low,
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
        double const columns = std::abs(static_cast<double>(line_.grid().column(x(block.x_extent().high))
                                                            - line_.grid().column(x(block.x_extent().low))));
        return static_cast<double>(block.size()) > static_cast<double>(worth_searching) * (columns + 1);
    }

    void add_ends(PointBlock const& block) {
        line_.add(place(block, 0));
        if (block.size() > 1) line_.add(place(block, block.size() - 1));
    }

    void add_all(PointBlock const& block) {
        for (std::size_t i = 0; i < block.size(); ++i) line_.add(place(block, i));
    }

    void add_with_gaps(PointBlock const& block) {
        for (std::size_t i = 0; i < block.size(); ++i) {
            if (std::isfinite(block.x()[i]) && std::isfinite(block.y()[i]))
                line_.add(place(block, i));
            else
                finish();
        }
    }

    // The x at which the columns end that the point's column is the last of, going the way x rises.
    double column_limit(Point point) const {
        bool const rightward = mapping_.x.factor > 0;
        return mapping_.x.value_at(line_.grid().start(line_.grid().column(point.x) + (rightward ? 1 : 0)));
    }

    // The first point behind the column of the one at `begin`, by the rounding that each point would see.
    std::size_t column_end(std::span<double const> x, std::size_t begin, Point first) const {
        std::int64_t const column = line_.grid().column(first.x);
        auto const is_in = [&](std::size_t i) { return line_.grid().column(mapping_.x(x[i])) == column; };
        std::size_t end = std::max(begin + 1, run_end(x, begin, column_limit(first)));
        while (end > begin + 1 && !is_in(end - 1)) --end;
        while (end < x.size() && is_in(end)) ++end;
        return end;
    }

    void add_stretch(PointBlock const& block) {
        line_.add_stretch(
            {block.x(), block.y(), &block.y_summary(), block.summary_place(), block.x_spacing()}, mapping_.x,
            mapping_.y);
    }

    void add_rising(PointBlock const& block) {
        auto const x = block.x();
        document::RangeSummary const& summary = block.y_summary();
        for (std::size_t begin = 0; begin < x.size();) {
            const Point first = place(block, begin);
            const std::size_t end = column_end(x, begin, first);
            line_.add_run({x.subspan(begin, end - begin), block.y().subspan(begin, end - begin), &mapping_.x,
                           &mapping_.y, &summary, block.summary_place() + begin});
            begin = end;
        }
    }

    LineMapping const& mapping_;
    ThinnedPolyline line_;
};

} // namespace

void draw_data_line(DrawSurface& surface, PointStore const& points, LineMapping const& mapping) {
    const ShapeScope one_shape(surface);
    DataLine line(surface, mapping);
    for (PointBlock const& block : points.blocks()) line.add(block);
    line.finish();
}

} // namespace qv::render
