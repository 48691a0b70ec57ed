#include "platform/raster/segment.h"

namespace qv::raster {
namespace {

// The stretch of the segment, 0 to 1, that remains; each side of the box shortens it (Liang and Barsky).
struct Stretch {
    double first = 0;
    double last = 1;

    void keep_between(double from, double to, double low, double high) {
        // Quarters, because the difference of two finite doubles may be infinite.
        double const length = to / 4 - from / 4;
        if (length == 0) {
            if (from < low || from > high) last = -1;
            return;
        }
        double const at_low = (low / 4 - from / 4) / length;
        double const at_high = (high / 4 - from / 4) / length;
        first = std::max(first, std::min(at_low, at_high));
        last = std::min(last, std::max(at_low, at_high));
    }
};

double between(double from, double to, double part, double low, double high) {
    if (part == 0) return from;
    if (part == 1) return to;
    return std::clamp(from * (1 - part) + to * part, low, high);
}

} // namespace

std::optional<Segment> clipped(Segment const& segment, PixelBox const& box) {
    double const left = box.left, right = box.right - 1, top = box.top, bottom = box.bottom - 1;
    auto const inside = [&](PixelPoint p) {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    };
    if (inside(segment.from) && inside(segment.to)) return segment;
    Stretch rest;
    rest.keep_between(segment.from.x, segment.to.x, left, right);
    rest.keep_between(segment.from.y, segment.to.y, top, bottom);
    if (!(rest.first <= rest.last)) return std::nullopt;
    auto const at = [&](double part) {
        return PixelPoint{between(segment.from.x, segment.to.x, part, left, right),
                          between(segment.from.y, segment.to.y, part, top, bottom)};
    };
    return Segment{at(rest.first), at(rest.last)};
}

std::optional<Segment> clipped_for_pen(Segment const& segment, PixelBox const& box, double width) {
    if (box.empty()) return std::nullopt;
    return clipped(segment, grown(box, static_cast<int>(std::ceil(width / 2)) + 3));
}

} // namespace qv::raster
