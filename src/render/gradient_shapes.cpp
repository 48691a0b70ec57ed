#include "render/gradient_shapes.h"

#include "base/convert.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace qv::render {
namespace {

std::vector<Color> entries(clsGradient const& gradient, int count) {
    return gradient.BlendColors(gradient.Color1(), gradient.Color2(), count);
}

// A number of quarter turns, 0 to 3.
int quarter(double turns) {
    return to_i32(turns) % 4;
}

void closed_line(DrawSurface& target, std::array<PixelPoint, 4> corners, Color color) {
    for (PixelPoint& corner : corners) corner = {round_half_even(corner.x), round_half_even(corner.y)};
    for (std::size_t i = 0; i < corners.size(); ++i)
        target.LineTo(corners[i], corners[(i + 1) % corners.size()], color);
}

// The outline of a device rectangle, whose right and bottom pixels lie inside its corner.
void rectangle(DrawSurface& target, PixelPoint left_top, PixelPoint right_bottom, Color color) {
    double const left = round_half_even(left_top.x), top = round_half_even(left_top.y);
    double const right = round_half_even(right_bottom.x) - 1, bottom = round_half_even(right_bottom.y) - 1;
    if (right < left || bottom < top) return;
    closed_line(target, {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}}, color);
}

// The corner that a corner shape is drawn about, the one that the angle points at.
struct Corner {
    bool right = false;
    bool bottom = false;

    explicit Corner(clsGradient const& gradient) {
        int const q = quarter(gradient.Angle() / 90.0 - 0.5);
        right = q == 0 || q == 3;
        bottom = q >= 2;
    }
    /// The pixel this far from the corner.
    PixelPoint inward(PixelSize size, int across, int down) const {
        return {static_cast<double>(right ? size.width - across : across),
                static_cast<double>(bottom ? size.height - down : down)};
    }
};

// Parallel lines, each a pixel further than the one before, so that neighbours have the same steps and leave
// nothing between them. The first touches the surface with one end, the last has just left it.
void linear(clsGradient const& gradient, DrawSurface& target) {
    const PixelSize size = target.GetClientRect();
    double const longer = std::max(size.width, size.height);
    double const length = std::sqrt(2 * longer * longer) + 2;
    double const angle = gradient.Angle() * std::numbers::pi / 180;
    // The vector from end to end is rounded, not the ends: at right angles both fall on the same half.
    int const across = to_i32(-length * std::sin(angle)), down = to_i32(-length * std::cos(angle));

    bool const sideways = std::abs(across) < std::abs(down); // where the lines move
    bool const forward = sideways ? down < 0 : across > 0;
    int const lead = sideways ? across : down, run = sideways ? down : across;
    int const side = sideways ? size.width : size.height, other = sideways ? size.height : size.width;
    int const first = forward ? -std::max(0, lead) : side - 1 - std::min(0, lead);
    int const start = (other - run) / 2;

    auto const colors = entries(gradient, side + std::abs(lead) + 1);
    double place = first;
    for (Color const color : colors) {
        PixelPoint from{place, static_cast<double>(start)};
        PixelPoint to{place + lead, static_cast<double>(start + run)};
        if (!sideways) std::swap(from.x, from.y), std::swap(to.x, to.y);
        target.LineTo(from, to, color);
        place += forward ? 1 : -1;
    }
}

void rectangles_about_centre(clsGradient const& gradient, DrawSurface& target) {
    auto const [width, height] = target.GetClientRect();
    int const last = to_i32(std::max(width, height) / 2.0 + 2);
    auto const colors = entries(gradient, last + 3);
    for (int k = 0; k <= last; ++k) {
        double const f = k / (2.0 * last);
        rectangle(target, {f * width, f * height}, {(1 - f) * width, (1 - f) * height}, at(colors, k));
    }
}

// The first rhombus reaches a tenth beyond the surface; the last is its centre.
void rhombi(clsGradient const& gradient, DrawSurface& target) {
    auto const [width, height] = target.GetClientRect();
    double const w = width, h = height;
    int const last = std::max(width, height) + 2;
    auto const colors = entries(gradient, last + 3);
    for (int i = 0; i <= last; ++i) {
        double const in_x = i * 0.6 * w / last - w / 10, in_y = i * 0.6 * h / last - h / 10;
        closed_line(target, {{{w / 2, in_y}, {w - in_x, h / 2}, {w / 2, h - in_y}, {in_x, h / 2}}},
                    at(colors, i));
    }
}

// Pairs of lines that open from the middle of one edge and close at the middle of the opposite one.
void fan_from_centre(clsGradient const& gradient, DrawSurface& target) {
    const PixelSize size = target.GetClientRect();
    const PixelPoint centre{round_half_even(size.width / 2.0), round_half_even(size.height / 2.0)};
    int const start = quarter(gradient.Angle() / 90.0); // 0 left, 1 bottom, 2 right, 3 top
    bool const level = start % 2 == 0, from_far_end = start == 1 || start == 2;
    int const along = level ? size.width : size.height, across = level ? size.height : size.width;
    auto const colors = entries(gradient, size.width + size.height + 4);
    int entry = 0;
    auto const pair = [&](int a, int b) {
        double const place = from_far_end ? along - a : a;
        for (double const side : {b, across - b})
            target.LineTo(centre, level ? PixelPoint{place, side} : PixelPoint{side, place},
                          at(colors, entry));
        ++entry;
    };
    int const middle = to_i32(across / 2.0);
    for (int b = middle; b >= 0; --b) pair(0, b);
    for (int a = 0; a <= along; ++a) pair(a, 0);
    for (int b = 0; b <= across / 2; ++b) pair(along, b); // a pair more could have the last entry
}

void rectangles_about_corner(clsGradient const& gradient, DrawSurface& target) {
    const PixelSize size = target.GetClientRect();
    const PixelPoint corner = Corner(gradient).inward(size, 0, 0);
    int const last = std::max(size.width, size.height) + 2;
    auto const colors = entries(gradient, last + 2);
    for (int i = 0; i <= last; ++i) {
        double const x = size.width - static_cast<double>(i) * size.width / last;
        double const y = size.height - static_cast<double>(i) * size.height / last;
        rectangle(target, {corner.x - x, corner.y - y}, {corner.x + x, corner.y + y}, at(colors, i));
    }
}

// A line to every pixel of the two edges that do not touch the corner, always from the top of the surface
// downwards.
void fan_from_corner(clsGradient const& gradient, DrawSurface& target) {
    const PixelSize size = target.GetClientRect();
    const Corner corner(gradient);
    auto const colors = entries(gradient, size.width + size.height + 4);
    int const count = size.width + size.height + 2;
    for (int i = 0; i < count; ++i) {
        int const place = corner.bottom ? count - 1 - i : i;
        int const across = std::min(size.width, count - 1 - place), down = std::min(size.height, place);
        target.LineTo(corner.inward(size, 0, 0), corner.inward(size, across, down), at(colors, i));
    }
}

using Shape = void (*)(clsGradient const&, DrawSurface&);
constexpr std::array<Shape, 7> shapes{linear,         linear,          rectangles_about_centre,
                                      rhombi,         fan_from_centre, rectangles_about_corner,
                                      fan_from_corner};

} // namespace

void paint_shape(int shape, clsGradient const& gradient, DrawSurface& target) {
    auto const index = static_cast<std::size_t>(shape);
    (index < shapes.size() ? shapes[index] : linear)(gradient, target);
}

} // namespace qv::render
