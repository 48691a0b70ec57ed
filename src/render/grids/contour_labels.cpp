#include "render/grids/contour_labels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace qv::render {
namespace {

constexpr double spacing_lines = 30; // from label to label along a line, in line heights
constexpr double line_beside = 3; // that is left of a line with a label, at least, in labels with their room
constexpr double least_straight = 0.93; // the chord of what a label covers, as a share of it
constexpr double padding_lines = 0.35;  // of a gap beside its label, in line heights

bool is_number(Point place) {
    return std::isfinite(place.x) && std::isfinite(place.y);
}

/// A line by the way along it.
class Way {
public:
    explicit Way(std::span<Point const> line) : line_(line) {
        for (std::size_t i = 1; i < line.size(); ++i)
            lengths_.push_back(lengths_.back()
                               + std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y));
    }
    double length() const { return lengths_.back(); }
    std::size_t next_after(double way) const {
        auto const next =
            static_cast<std::size_t>(std::ranges::upper_bound(lengths_, way) - lengths_.begin());
        return std::clamp<std::size_t>(next, 1, lengths_.size() - 1);
    }
    Point at(double way) const {
        std::size_t const next = next_after(way);
        double const span = lengths_[next] - lengths_[next - 1];
        double const share = span > 0 ? std::clamp((way - lengths_[next - 1]) / span, 0.0, 1.0) : 0;
        return {std::lerp(line_[next - 1].x, line_[next].x, share),
                std::lerp(line_[next - 1].y, line_[next].y, share)};
    }
    void append_part(double from, double to, std::vector<Point>& out) const {
        if (!(from < to)) return;
        out.push_back(at(from));
        for (std::size_t i = 0; i < line_.size(); ++i)
            if (lengths_[i] > from && lengths_[i] < to) out.push_back(line_[i]);
        out.push_back(at(to));
    }

private:
    std::span<Point const> line_;
    std::vector<double> lengths_{0};
};

std::int16_t upright_angle(Point from, Point to) {
    double angle = std::atan2(-(to.y - from.y), to.x - from.x) * 180 / std::numbers::pi;
    if (angle > 90) angle -= 180;
    if (angle <= -90) angle += 180;
    return static_cast<std::int16_t>(std::lround(angle));
}

} // namespace

bool LabelPlaces::has_room(Point middle, double width) const {
    double const across = std::max(width, line_height_) / 2 + line_height_ / 2;
    if (middle.x - across < plot_.left || middle.x + across > plot_.right() || middle.y - across < plot_.top
        || middle.y + across > plot_.bottom())
        return false;
    for (std::size_t i = 0; i < taken_.size(); ++i) {
        double const apart = (width + taken_widths_[i]) / 2 + line_height_;
        if (std::hypot(middle.x - taken_[i].middle.x, middle.y - taken_[i].middle.y) < apart) return false;
    }
    return true;
}

void LabelPlaces::put_on_one(std::span<Point const> line, std::size_t level, double width,
                             std::vector<ContourLabel>& labels, std::vector<Point>& cut) {
    const Way way(line);
    double const length = way.length();
    std::vector<Gap> gaps;
    double const shortest = (line_beside + 1) * (width + line_height_);
    // Each stretch of the line gets a label where it is straightest there.
    double const wanted =
        std::max(1.0, std::floor(length / std::max(spacing_lines * line_height_, 2 * width)));
    double const step = std::max(width / 2, line_height_ / 2);
    constexpr double most = 1000; // however far a line goes on beside the page
    double const stretch = length / std::min(wanted, most);
    for (double start = 0; length >= shortest && start + stretch <= length * (1 + 1e-9); start += stretch) {
        double best = least_straight;
        Gap gap;
        double const first = std::max(start, width), last = std::min(start + stretch, length - width);
        double const pace = std::max(step, (last - first) / most);
        for (double middle = first; middle <= last; middle += pace) {
            const Point from = way.at(middle - width / 2), to = way.at(middle + width / 2);
            double const straight = std::hypot(to.x - from.x, to.y - from.y) / width;
            if (straight <= best || !has_room(way.at(middle), width)) continue;
            best = straight;
            gap = {middle - width / 2, middle + width / 2};
        }
        if (gap.to == 0) continue;
        const Point from = way.at(gap.from), to = way.at(gap.to);
        // Midway between chord and line, so that a slight bend leads through the text's middle.
        labels.push_back({level, way.at((gap.from + gap.to) / 2), upright_angle(from, to)});
        taken_.push_back(labels.back());
        taken_widths_.push_back(width);
        double const padding = padding_lines * line_height_;
        gaps.push_back({gap.from - padding, gap.to + padding});
    }
    double from = 0;
    auto const append = [&](double to) {
        if (!cut.empty())
            cut.push_back(
                {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN()});
        way.append_part(from, to, cut);
    };
    for (Gap const& gap : gaps) {
        append(gap.from);
        from = gap.to;
    }
    append(length);
}

void LabelPlaces::put(std::vector<Point>& lines, std::size_t level, double width,
                      std::vector<ContourLabel>& labels) {
    std::vector<Point> cut;
    cut.reserve(lines.size());
    for (std::size_t i = 0; i < lines.size();) {
        std::size_t end = i;
        while (end < lines.size() && is_number(lines[end])) ++end;
        if (end - i >= 2) put_on_one(std::span(lines).subspan(i, end - i), level, width, labels, cut);
        i = end + 1;
    }
    lines = std::move(cut);
}

} // namespace qv::render
