#include "raster/segment.h"

namespace qv::raster {
namespace {

// The endless line through a segment. It is kept by where it crosses the axes, computed from a cross product
// without cancellation, so that it stays in place however far away the ends of the segment lie.
class EndlessLine {
public:
    explicit EndlessLine(Segment const& segment) {
        // Products of the largest numbers must neither overflow nor vanish.
        constexpr double large = 0x1p400, factor = 0x1p-600;
        double const size = std::max({std::abs(segment.from.x), std::abs(segment.from.y),
                                      std::abs(segment.to.x), std::abs(segment.to.y)});
        double const scale = size > large ? factor : 1;
        const PixelPoint from{segment.from.x * scale, segment.from.y * scale};
        const PixelPoint to{segment.to.x * scale, segment.to.y * scale};
        double const dx = to.x - from.x, dy = to.y - from.y;
        double const cross = difference_of_products(from.x, to.y, from.y, to.x);
        // Of an upright or lying line every place is known exactly.
        x_at_zero_ = dx == 0 ? segment.from.x : cross / dy / scale;
        y_at_zero_ = dy == 0 ? segment.from.y : -cross / dx / scale;
        across_ = dx / dy;
        down_ = dy / dx;
    }
    // Asked only for a y (an x) that the segment crosses.
    double x_at(double y) const { return x_at_zero_ + y * across_; }
    double y_at(double x) const { return y_at_zero_ + x * down_; }

private:
    // a * b - c * d, accurate to the last bits where both are nearly the same (Kahan).
    static double difference_of_products(double a, double b, double c, double d) {
        double const second = c * d;
        return std::fma(a, b, -second) - std::fma(c, d, -second);
    }

    double x_at_zero_, y_at_zero_; // where it crosses y = 0, x = 0
    double across_, down_;         // for a step down, for a step to the right
};

/// A box of places, its edges included.
struct Frame {
    double left, top, right, bottom;

    bool holds_x(double x) const { return x >= left && x <= right; }
    bool holds_y(double y) const { return y >= top && y <= bottom; }
    bool holds(PixelPoint p) const { return holds_x(p.x) && holds_y(p.y); }
    // Both beyond one side, so that nothing between them is inside.
    bool parts(PixelPoint p, PixelPoint q) const {
        return (p.x < left && q.x < left) || (p.x > right && q.x > right) || (p.y < top && q.y < top)
               || (p.y > bottom && q.y > bottom);
    }
};

// Where the line comes in from an end: on one of the sides that the end lies beyond.
std::optional<PixelPoint> entered(PixelPoint end, EndlessLine const& line, Frame const& frame) {
    if (frame.holds(end)) return end;
    if (!frame.holds_x(end.x)) {
        double const x = end.x < frame.left ? frame.left : frame.right;
        if (double const y = line.y_at(x); frame.holds_y(y)) return PixelPoint{x, y};
    }
    if (!frame.holds_y(end.y)) {
        double const y = end.y < frame.top ? frame.top : frame.bottom;
        if (double const x = line.x_at(y); frame.holds_x(x)) return PixelPoint{x, y};
    }
    return std::nullopt;
}

} // namespace

std::optional<Segment> clipped(Segment const& segment, PixelBox const& box) {
    const Frame frame{static_cast<double>(box.left), static_cast<double>(box.top), box.right - 1.0,
                      box.bottom - 1.0};
    if (frame.holds(segment.from) && frame.holds(segment.to)) return segment;
    if (frame.parts(segment.from, segment.to)) return std::nullopt;
    const EndlessLine line(segment);
    auto const from = entered(segment.from, line, frame), to = entered(segment.to, line, frame);
    if (!from || !to) return std::nullopt;
    return Segment{*from, *to};
}

std::optional<Segment> clipped_for_pen(Segment const& segment, PixelBox const& box, double width) {
    if (box.empty()) return std::nullopt;
    return clipped(segment, grown(box, static_cast<int>(std::ceil(width / 2)) + 3));
}

} // namespace qv::raster
