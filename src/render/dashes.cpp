#include "render/dashes.h"

#include "document/selection.h"
#include "qvgraph/fault.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <numeric>

namespace qv::render {
namespace {

constexpr std::size_t most_lengths = 16;
constexpr double longest = 1000, shortest_period = 1; // line widths
constexpr Point gap{std::numeric_limits<double>::quiet_NaN(), 0};

bool separates(char c) {
    return c == ' ' || c == ',' || c == '\t';
}

[[noreturn]] void raise_no_pattern(std::string_view text) {
    raise_fault(
        FaultNumber::InvalidProcedureCall,
        "\"" + std::string(text)
            + "\" is no pattern of dashes: give the lengths of dashes and gaps in turn, such as \"6 2\".");
}

bool is_pattern(DashPattern const& lengths) {
    return lengths.size() <= most_lengths
           && std::ranges::all_of(lengths, [](double length) { return length >= 0 && length <= longest; })
           && std::accumulate(lengths.begin(), lengths.end(), 0.0) >= shortest_period;
}

/// How much of a segment, as shares of its length, lies in a box.
struct Part {
    double first = 0, last = 1;
    void cut(double from, double way, double low, double high) {
        if (way == 0) {
            if (from < low || from > high) last = -1;
            return;
        }
        auto const [enters, leaves] = std::minmax({(low - from) / way, (high - from) / way});
        first = std::max(first, enters);
        last = std::min(last, leaves);
    }
};

Part part_within(Box const& box, Point from, Point to) {
    Part part;
    part.cut(from.x, to.x - from.x, box.left, box.right());
    part.cut(from.y, to.y - from.y, box.top, box.bottom());
    return part;
}

bool is_finite(Point point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

Point between(Point from, Point to, double share) {
    return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
}

} // namespace

DashPattern dash_pattern(std::string_view text) {
    DashPattern lengths;
    char const* const end = text.data() + text.size();
    for (char const* next = text.data();;) {
        next = std::find_if_not(next, end, separates);
        if (next == end) break;
        double length = 0;
        auto const [past, error] = std::from_chars(next, end, length);
        if (error != std::errc() || (past != end && !separates(*past))) raise_no_pattern(text);
        lengths.push_back(length);
        next = past;
    }
    if (lengths.empty()) return {};
    if (!is_pattern(lengths)) raise_no_pattern(text);
    if (lengths.size() % 2 == 1) {
        const DashPattern once = lengths;
        lengths.insert(lengths.end(), once.begin(), once.end());
    }
    return lengths;
}

DashPattern dashes_of(document::DataSet const& set) {
    static const std::array<DashPattern, 5> named{
        DashPattern{}, {6, 3}, {2, 2}, {6, 2, 2, 2}, {6, 2, 2, 2, 2, 2}};
    if (!set.DataLinePattern.empty()) return dash_pattern(set.DataLinePattern);
    return set.DataLineDash < named.size() ? named[set.DataLineDash] : DashPattern{};
}

// Round ends add half a width at either end of a dash, which is that much shorter without them. One that is
// shorter than wide is a dot; it keeps a little length, because a line without any may be nothing.
DashedLines::DashedLines(DrawSurface& surface, DashPattern const& pattern, Box const& visible)
    : surface_(surface), visible_(visible) {
    state = surface.state;
    constexpr double dot = 0.02;
    double const width = surface.pen_pixels(state.DrawWidth) * std::sqrt(TwipsPerPixelX() * TwipsPerPixelY());
    double owed = 0; // by the gap before a dash to its round end
    for (std::size_t i = 0; i + 1 < pattern.size(); i += 2) {
        double const drawn = std::max(pattern[i] - 1, dot), taken = std::max(0.0, pattern[i] - drawn) / 2;
        stretches_.push_back({(owed + taken) * width, false});
        stretches_.push_back({drawn * width, true});
        owed = taken + pattern[i + 1];
    }
    // The line begins at the pattern's begin, so what the last gap has left over stands behind the last dash.
    stretches_.push_back({owed * width, false});
    for (Stretch const& stretch : stretches_) period_ += stretch.length;
    left_ = stretches_[0].length;
}

void DashedLines::next_stretch() {
    stretch_ = (stretch_ + 1) % stretches_.size();
    left_ = stretches_[stretch_].length;
}

void DashedLines::skip(double length) {
    for (length = std::fmod(length, period_); length >= left_;) {
        length -= left_;
        next_stretch();
    }
    left_ -= length;
}

void DashedLines::show(Point from, Point to) {
    if (dashes_.empty() || dashes_.back() != from) {
        if (!dashes_.empty()) dashes_.push_back(gap);
        dashes_.push_back(from);
    }
    dashes_.push_back(to);
}

void DashedLines::cut(Point from, Point to) {
    double const length = std::hypot(to.x - from.x, to.y - from.y);
    const Part part = part_within(visible_, from, to);
    if (!(length > 0) || !std::isfinite(length) || !(part.first < part.last)) {
        if (std::isfinite(length)) skip(length);
        return;
    }
    skip(part.first * length);
    // Reckoned from where the line comes into sight, as far from there a dash may be less than a rounding.
    const Point begin = part.first == 0 ? from : between(from, to, part.first);
    const Point end = part.last == 1 ? to : between(from, to, part.last);
    double const visible = (part.last - part.first) * length;
    Point here = begin;
    for (double at = 0; at < visible;) {
        bool const ends_first = at + left_ < visible;
        double const next = ends_first ? at + left_ : visible;
        const Point there = ends_first ? between(begin, end, next / visible) : end;
        if (stretches_[stretch_].shows) show(here, there);
        if (ends_first)
            next_stretch(); // not by its length, of which roundings would leave a rest
        else
            left_ -= next - at;
        at = next;
        here = there;
    }
    skip((1 - part.last) * length);
}

// A level or upright segment lies on the pixels that one without gaps lies on.
void DashedLines::Line(Point from, Point to, LineShape shape, Color color) {
    if (shape != LineShape::Segment) return surface_.Line(from, to, shape, color);
    auto const snapped = [](double twips, double per_pixel) {
        return whole_pixel(twips / per_pixel) * per_pixel;
    };
    if (from.y == to.y) from.y = to.y = snapped(from.y, TwipsPerPixelY());
    if (from.x == to.x) from.x = to.x = snapped(from.x, TwipsPerPixelX());
    const document::RestoreScope fore(surface_.state.ForeColor, color);
    end_.reset();
    Polyline(std::array{from, to});
}

void DashedLines::Polyline(std::span<Point const> points) {
    if (points.empty()) return;
    auto const start_anew = [this] {
        stretch_ = 0;
        left_ = stretches_[0].length;
    };
    if (end_ != points[0]) start_anew();
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (is_finite(points[i - 1]) && is_finite(points[i]))
            cut(points[i - 1], points[i]);
        else
            start_anew();
    }
    end_ = points.back();
    surface_.Polyline(dashes_);
    dashes_.clear();
}

} // namespace qv::render
