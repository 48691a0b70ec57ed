#include "raster/round_shapes.h"

#include <cstring>

namespace qv::raster {
namespace {

// The distance of a place from the ellipse around the origin, negative inside: exact for a circle, to first
// order for an ellipse, F / |grad F| with F = sqrt((x/a)^2 + (y/b)^2) - 1.
struct OvalDistance {
    double a, b;

    double operator()(double x, double y) const {
        double const u = x / a, v = y / b;
        double const q = std::sqrt(u * u + v * v);
        double const p = u / a, r = v / b;
        double const gradient = std::sqrt(p * p + r * r);
        return gradient > 0 ? (q - 1) * q / gradient : -std::min(a, b);
    }
    // Whether the outline runs rather across than down near this place.
    bool flat_at(double x, double y) const { return std::abs(y / (b * b)) >= std::abs(x / (a * a)); }
};

// Half the length of the row `y` within an ellipse; negative outside.
double half_chord(double radius_x, double radius_y, double y) {
    if (radius_x <= 0 || radius_y <= 0 || std::abs(y) > radius_y) return -1;
    return radius_x * std::sqrt(std::max(0.0, 1 - (y / radius_y) * (y / radius_y)));
}

// Radii below and above these are a point, and straight across any surface.
Oval drawable(Oval oval, Edge edge) {
    auto const far = [](double v) { return std::clamp(v, -farthest_pixel, farthest_pixel); };
    oval.centre = {far(oval.centre.x), far(oval.centre.y)};
    if (edge == Edge::Whole) {
        oval.centre = {std::floor(2 * oval.centre.x + 0.5) / 2, std::floor(2 * oval.centre.y + 0.5) / 2};
        oval.radius_x = std::floor(2 * oval.radius_x + 0.5) / 2;
        oval.radius_y = std::floor(2 * oval.radius_y + 0.5) / 2;
    }
    oval.radius_x = std::clamp(oval.radius_x, 1e-6, 1e8);
    oval.radius_y = std::clamp(oval.radius_y, 1e-6, 1e8);
    return oval;
}

std::uint8_t coverage_byte(double part, Edge edge) {
    if (edge == Edge::Whole) return part >= 0.5 ? 255 : 0;
    return static_cast<std::uint8_t>(floor_int(std::clamp(part, 0.0, 1.0) * 255 + 0.5));
}

// Visits the rows of the oval grown by `margin`: visit(y, dy, left, right).
template <class Visit>
void for_each_row(Oval const& oval, PixelBox const& clip, double margin, Visit visit) {
    double const reach = oval.radius_y + margin;
    int const top = std::max(clip.top, whole_pixel(oval.centre.y - reach));
    int const bottom = std::min(clip.bottom, whole_pixel(oval.centre.y + reach) + 1);
    for (int y = top; y < bottom; ++y) {
        double const dy = y - oval.centre.y;
        double const half = std::max(0.0, half_chord(oval.radius_x + margin, reach, dy));
        int const left = std::max(clip.left, whole_pixel(oval.centre.x - half) - 1);
        int const right = std::min(clip.right, whole_pixel(oval.centre.x + half) + 2);
        if (left < right) visit(y, dy, left, right);
    }
}

// The pixels from the first surely within `half` of the middle to the one past the last.
PixelBox middle_of(double centre, double half, int left, int right) {
    if (half < 0) return {right, 0, right, 0};
    return {std::clamp(whole_pixel(centre - half) + 1, left, right), 0,
            std::clamp(whole_pixel(centre + half), left, right), 0};
}

} // namespace

void fill_oval(CoverageMask& mask, PixelBox const& clip, Oval const& shape, Edge edge) {
    const Oval oval = drawable(shape, edge);
    const OvalDistance distance{oval.radius_x, oval.radius_y};
    for_each_row(oval, clip, 1, [&](int y, double dy, int left, int right) {
        std::uint8_t* const row = mask.row(y);
        const auto raise = [&](int from, int to) {
            for (int x = from; x < to; ++x)
                row[x] = std::max(row[x], coverage_byte(0.5 - distance(x - oval.centre.x, dy), edge));
        };
        const PixelBox inner =
            middle_of(oval.centre.x, half_chord(oval.radius_x - 1, oval.radius_y - 1, dy), left, right);
        if (inner.left >= inner.right) {
            raise(left, right);
        } else {
            raise(left, inner.left);
            std::memset(row + inner.left, 255, static_cast<std::size_t>(inner.right - inner.left));
            raise(inner.right, right);
        }
        mask.touch(y, left, right);
    });
}

void stroke_oval(CoverageMask& mask, PixelBox const& clip, Oval const& shape, Pen const& pen) {
    if (pen.style == DrawStyle::None) return;
    const Oval oval = drawable(shape, pen.edge);
    const OvalDistance distance{oval.radius_x, oval.radius_y};
    bool const dashed = is_dashed(pen.style);
    double const half_width = pen.width / 2;
    double const margin = half_width + 1;
    for_each_row(oval, clip, margin, [&](int y, double dy, int left, int right) {
        std::uint8_t* const row = mask.row(y);
        const auto raise = [&](int from, int to) {
            for (int x = from; x < to; ++x) {
                const double dx = x - oval.centre.x;
                if (dashed && !dash_shows(pen.style, pen.width, distance.flat_at(dx, dy) ? x : y)) continue;
                const double part = half_width + 0.5 - std::abs(distance(dx, dy));
                row[x] = std::max(row[x], coverage_byte(part, pen.edge));
            }
        };
        const PixelBox hole = middle_of(
            oval.centre.x, half_chord(oval.radius_x - margin, oval.radius_y - margin, dy), left, right);
        raise(left, std::min(hole.left, right));
        raise(std::max(hole.right, hole.left), right);
        mask.touch(y, left, right);
    });
}

} // namespace qv::raster
