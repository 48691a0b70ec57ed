#include "render/lines/bar_walk.h"

#include <algorithm>

namespace qv::render {
namespace {

using document::RangeSummary;
using document::ValueRange;
using Stretch = LineInPixels::Stretch;

constexpr std::size_t few = 16; // points of which the range is found by looking at them
constexpr std::size_t most = RangeSummary::span(RangeSummary::levels - 1);

/// Groups of points that lie close together, and to the point before, are one range; others are segments.
class BarWalk {
public:
    BarWalk(LineInPixels const& line, FineColumns& bars) : line_(line), bars_(bars) {}

    void walk(Stretch const& stretch, std::size_t first, std::size_t past) {
        if (first < past && is_even_at(stretch, first))
            walk_evenly(stretch, first, past);
        else
            walk_searching(stretch, first, past);
    }

private:
    // Evenly spaced, and not further from the last point than its own points are from one another.
    bool is_even_at(Stretch const& stretch, std::size_t first) const {
        return stretch.is_even && line_.x(stretch, first) - last_x(stretch, first) <= 1.5 * stretch.step;
    }

    void walk_evenly(Stretch const& stretch, std::size_t first, std::size_t past) {
        double const points = FineColumns::narrow / stretch.step;
        size_ = points < most ? static_cast<std::size_t>(points) : most;
        if (size_ < 2) return add_points(stretch, first, past - first);
        while (first < past) {
            std::size_t const group = group_at(stretch, first, past - first);
            first = group < RangeSummary::span(0) ? add_even_groups(stretch, first, group, past)
                                                  : add_even_ranges(stretch, first, group, past);
        }
    }

    // Groups of a few points, up to where a range of the summary begins that may be one.
    std::size_t add_even_groups(Stretch const& stretch, std::size_t first, std::size_t group,
                                std::size_t past) {
        constexpr std::size_t finest = RangeSummary::span(0);
        bool const has_ranges = stretch.summary && size_ >= finest;
        std::size_t const place = stretch.summary_place + first;
        std::size_t const end = has_ranges ? std::min(past, first + finest - place % finest) : past;
        for (; first < end; first += group) {
            group = std::min(group, end - first);
            add_even_group(stretch, first, group, document::range_of(stretch.y.data() + first, group));
        }
        return end;
    }

    // Ranges of one level, up to where one of the next may begin.
    std::size_t add_even_ranges(Stretch const& stretch, std::size_t first, std::size_t group,
                                std::size_t past) {
        std::size_t const level = RangeSummary::level_of(group), place = stretch.summary_place + first;
        bool const has_larger = level + 1 < RangeSummary::levels && size_ >= RangeSummary::span(level + 1);
        std::size_t const larger = has_larger ? RangeSummary::span(level + 1) : most;
        std::size_t const known = stretch.summary->end(level) - place;
        std::size_t const rest = std::min({past - first, known, larger - place % larger}) / group;
        ValueRange const* const ranges = &stretch.summary->at(level, place);
        for (std::size_t k = 0; k < rest; ++k) add_even_group(stretch, first + k * group, group, ranges[k]);
        return first + rest * group;
    }

    void add_even_group(Stretch const& stretch, std::size_t first, std::size_t count,
                        ValueRange const& values) {
        double const middle = static_cast<double>(first) + 0.5 * static_cast<double>(count) - 1;
        auto const [low, high] = std::minmax({line_.y(values.low), line_.y(values.high)});
        bars_.add_range(stretch.start + middle * stretch.step, low, high);
        came_to(stretch, first + count - 1);
    }

    void came_to(Stretch const& stretch, std::size_t point) {
        last_stretch_ = &stretch;
        last_point_ = point;
        last_x_ = line_.x(stretch, point);
        has_last_ = true;
    }

    void walk_searching(Stretch const& stretch, std::size_t first, std::size_t past) {
        size_ = most;
        for (std::size_t i = first; i < past;) {
            std::size_t const group = group_at(stretch, i, past - i);
            if (group == 1) {
                // Where points are far apart, so are the next.
                std::size_t const singles = std::min(few, past - i);
                add_points(stretch, i, singles);
                i += singles;
                size_ = 2;
            } else if (line_.x(stretch, i + group - 1) - last_x(stretch, i) > FineColumns::narrow) {
                size_ = group / 2;
            } else {
                add_group(stretch, i, group);
                i += group;
                size_ = std::min(2 * size_, most);
            }
        }
    }

    double last_x(Stretch const& stretch, std::size_t first) const {
        return has_last_ ? last_x_ : line_.x(stretch, first);
    }

    // As many points as the last ones suggest: a range of the summary, or a few.
    std::size_t group_at(Stretch const& stretch, std::size_t first, std::size_t rest) const {
        std::size_t const size = std::min(size_, rest), finest = RangeSummary::span(0);
        if (!stretch.summary || size < 2) return std::min(size, few);
        std::size_t const place = stretch.summary_place + first;
        for (std::size_t level = RangeSummary::levels; level-- > 0;)
            if (RangeSummary::span(level) <= size && stretch.summary->has(level, place))
                return RangeSummary::span(level);
        return std::min({size, few, finest - place % finest});
    }

    static ValueRange range_of(Stretch const& stretch, std::size_t first, std::size_t count) {
        if (count < RangeSummary::span(0)) return document::range_of(stretch.y.data() + first, count);
        return stretch.summary->at(RangeSummary::level_of(count), stretch.summary_place + first);
    }

    void add_group(Stretch const& stretch, std::size_t first, std::size_t count) {
        const ValueRange values = range_of(stretch, first, count);
        auto const [low, high] = std::minmax({line_.y(values.low), line_.y(values.high)});
        double const begin = last_x(stretch, first);
        came_to(stretch, first + count - 1);
        bars_.add_range((begin + last_x_) / 2, low, high);
    }

    void add_points(Stretch const& stretch, std::size_t first, std::size_t count) {
        for (std::size_t k = 0; k < count; ++k) add_point(line_.place(stretch, first + k));
    }

    void add_point(RowPlace place) {
        if (last_stretch_) last_ = line_.place(*last_stretch_, last_point_);
        last_stretch_ = nullptr;
        bars_.add_segment(has_last_ ? last_ : place, place);
        last_ = place;
        last_x_ = place.x;
        has_last_ = true;
    }

    LineInPixels const& line_;
    FineColumns& bars_;
    std::size_t size_ = most;
    // The point that the line came to; of a group it is not looked up before it is needed.
    bool has_last_ = false;
    double last_x_ = 0;
    RowPlace last_{};
    Stretch const* last_stretch_ = nullptr;
    std::size_t last_point_ = 0;
};

} // namespace

void walk_into_bars(LineInPixels const& line, PointIndex from, PointIndex to, FineColumns& bars) {
    BarWalk walk(line, bars);
    line.for_each_part(from, to, [&](Stretch const& stretch, std::size_t first, std::size_t past) {
        walk.walk(stretch, first, past);
    });
    bars.finish();
}

} // namespace qv::render
