// The shapes of gradients, compared with plain drawings of what each shape is.
#include "pictures.h"
#include "plain_drawing.h"
#include "qvgraph/clsGradient.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cmath>

using namespace qv;
using namespace qv::raster;
using namespace qv::raster::test;
using render::clsGradient;

namespace {

constexpr Color first_color = rgb(250, 10, 0), last_color = rgb(5, 240, 200);
constexpr Color outside_every_table = rgb(0, 0, 255);

constexpr std::array sizes{PixelSize{2, 2}, PixelSize{3, 7},   PixelSize{7, 3},
                           PixelSize{5, 2}, PixelSize{60, 40}, PixelSize{31, 64}};

clsGradient gradient_of(int style, double angle, double shift = 0) {
    clsGradient gradient;
    gradient.Color1(first_color);
    gradient.Color2(last_color);
    gradient.Style(static_cast<std::int16_t>(style));
    gradient.Angle(static_cast<float>(angle));
    gradient.Shift(static_cast<float>(shift));
    return gradient;
}

RasterSurface painted(clsGradient const& gradient, PixelSize size) {
    RasterSurface surface = surface_of(size.width, size.height);
    surface.state.BackColor = outside_every_table;
    surface.Cls();
    CHECK(gradient.Draw(surface));
    return surface;
}

// Calls check(gradient, size) for every angle, shift and size in both signs of a style.
template <class Check>
void for_each_gradient(int style, Check check) {
    for (PixelSize const size : sizes)
        for (int angle = 0; angle < 360; angle += 15)
            for (double const shift : {-1.0, 0.0, 1.0})
                for (int const sign : {1, -1}) {
                    CAPTURE(size.width);
                    CAPTURE(size.height);
                    CAPTURE(angle);
                    CAPTURE(shift);
                    CAPTURE(sign);
                    check(gradient_of(sign * style, angle, shift), size);
                }
}

std::vector<Color> table_of(clsGradient const& gradient, int count) {
    return gradient.BlendColors(first_color, last_color, count);
}

int quarter(double turns) {
    return static_cast<int>(std::nearbyint(turns)) % 4;
}

// How many of a gradient's pixels differ from a plain drawing in a table of `count` entries.
int differences(clsGradient const& gradient, PixelSize size, PlainDrawing const& drawing, int count) {
    Picture const actual = picture_of(painted(gradient, size));
    Picture const expected = drawing.in_colors(table_of(gradient, count));
    int different = 0;
    for (std::size_t i = 0; i < actual.size(); ++i) different += actual[i] != expected[i];
    return different;
}

} // namespace

TEST_CASE("a linear gradient has at every pixel the entry of the line there, give or take one") {
    for_each_gradient(1, [](clsGradient const& gradient, PixelSize size) {
        const RasterSurface surface = painted(gradient, size);
        const LinePlaces lines(gradient.Angle(), size);
        // The rounded slope may make a line more or less.
        int const count = static_cast<int>(std::lround(lines.count()));
        const std::array tables{table_of(gradient, count - 1), table_of(gradient, count),
                                table_of(gradient, count + 1)};
        int different = 0;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) {
                int const entry = static_cast<int>(std::lround(lines.at(x, y)));
                auto const has_pixel = [&](std::vector<Color> const& table) {
                    auto const near = [&](int k) {
                        return table.begin() + std::clamp(k, 0, static_cast<int>(table.size()));
                    };
                    return std::any_of(near(entry - 1), near(entry + 2),
                                       [&](Color c) { return pixel_value(c) == pixel(surface, x, y); });
                };
                different += std::ranges::none_of(tables, has_pixel);
            }
        CHECK(different == 0);
    });
}

TEST_CASE("styles that name no shape are linear") {
    Picture const linear = picture_of(painted(gradient_of(1, 70), {31, 24}));
    CHECK(picture_of(painted(gradient_of(7, 70), {31, 24})) == linear);
    CHECK(picture_of(painted(gradient_of(0, 70), {31, 24})) != linear);
    CHECK(picture_of(painted(gradient_of(0, 70), {31, 24}))
          == picture_of(painted(gradient_of(-32768, 70), {31, 24})));
}

TEST_CASE("rectangles about the centre: each over the one around it") {
    for_each_gradient(2, [](clsGradient const& gradient, PixelSize size) {
        PlainDrawing drawing(size);
        int const last = static_cast<int>(std::nearbyint(std::max(size.width, size.height) / 2.0 + 2));
        for (int k = 0; k <= last; ++k) {
            double const f = k / (2.0 * last);
            drawing.rectangle(f * size.width, f * size.height, (1 - f) * size.width, (1 - f) * size.height,
                              k);
        }
        CHECK(differences(gradient, size, drawing, last + 3) == 0);
    });
}

TEST_CASE("rhombi: from a tenth outside to the centre, the corners in the first colour") {
    for_each_gradient(3, [](clsGradient const& gradient, PixelSize size) {
        PlainDrawing drawing(size);
        double const w = size.width, h = size.height;
        int const last = std::max(size.width, size.height) + 2;
        for (int i = 0; i <= last; ++i) {
            double const x = i * 0.6 * w / last - w / 10, y = i * 0.6 * h / last - h / 10;
            drawing.closed({{{w / 2, y}, {w - x, h / 2}, {w / 2, h - y}, {x, h / 2}}}, i);
        }
        CHECK(differences(gradient, size, drawing, last + 3) == 0);
    });
}

TEST_CASE("a fan from the centre: pairs of lines from one edge's middle to the other's") {
    for_each_gradient(4, [](clsGradient const& gradient, PixelSize size) {
        PlainDrawing drawing(size);
        int const w = size.width, h = size.height;
        double const cx = std::nearbyint(w / 2.0), cy = std::nearbyint(h / 2.0);
        int entry = 0;
        auto const pair = [&](int x0, int y0, int x1, int y1) {
            drawing.line(cx, cy, x0, y0, entry);
            drawing.line(cx, cy, x1, y1, entry++);
        };
        int const left = quarter(gradient.Angle() / 90.0) == 2 ? w : 0;
        int const top = quarter(gradient.Angle() / 90.0) == 1 ? h : 0;
        if (quarter(gradient.Angle() / 90.0) % 2 == 0) {
            for (int y = static_cast<int>(cy); y >= 0; --y) pair(left, y, left, h - y);
            for (int x = 0; x <= w; ++x) pair(std::abs(left - x), 0, std::abs(left - x), h);
            for (int y = 0; y <= h / 2; ++y) pair(w - left, y, w - left, h - y);
        } else {
            for (int x = static_cast<int>(cx); x >= 0; --x) pair(x, top, w - x, top);
            for (int y = 0; y <= h; ++y) pair(0, std::abs(top - y), w, std::abs(top - y));
            for (int x = 0; x <= w / 2; ++x) pair(x, h - top, w - x, h - top);
        }
        CHECK(differences(gradient, size, drawing, w + h + 4) == 0);
    });
}

TEST_CASE("rectangles about a corner") {
    for_each_gradient(5, [](clsGradient const& gradient, PixelSize size) {
        PlainDrawing drawing(size);
        double const w = size.width, h = size.height;
        constexpr std::array<PixelPoint, 4> corners{{{1, 0}, {0, 0}, {0, 1}, {1, 1}}};
        PixelPoint const corner = corners.at(static_cast<std::size_t>(quarter(gradient.Angle() / 90 - 0.5)));
        double const cx = corner.x * w, cy = corner.y * h;
        int const last = std::max(size.width, size.height) + 2;
        for (int i = 0; i <= last; ++i) {
            double const x = w - i * w / last, y = h - i * h / last;
            drawing.rectangle(cx - x, cy - y, cx + x, cy + y, i);
        }
        CHECK(differences(gradient, size, drawing, last + 2) == 0);
    });
}

TEST_CASE("a fan from a corner sweeps the two edges that do not touch it") {
    for_each_gradient(6, [](clsGradient const& gradient, PixelSize size) {
        PlainDrawing drawing(size);
        int const w = size.width, h = size.height;
        int const q = quarter(gradient.Angle() / 90 - 0.5);
        int entry = 0;
        if (q == 0) {
            for (int y = 0; y <= h; ++y) drawing.line(w, 0, 0, y, entry++);
            for (int x = 0; x <= w; ++x) drawing.line(w, 0, x, h, entry++);
        } else if (q == 1) {
            for (int y = 0; y <= h; ++y) drawing.line(0, 0, w, y, entry++);
            for (int x = w; x >= 0; --x) drawing.line(0, 0, x, h, entry++);
        } else if (q == 2) {
            for (int x = 0; x <= w; ++x) drawing.line(0, h, x, 0, entry++);
            for (int y = 0; y <= h; ++y) drawing.line(0, h, w, y, entry++);
        } else {
            for (int x = w; x >= 0; --x) drawing.line(w, h, x, 0, entry++);
            for (int y = 0; y <= h; ++y) drawing.line(w, h, 0, y, entry++);
        }
        CHECK(differences(gradient, size, drawing, w + h + 4) == 0);
    });
}

TEST_CASE("no pixel is left as it was, at any angle and any size") {
    for (int const style : {1, 2, 4, 5, 6})
        for (int width = 2; width <= 14; ++width)
            for (int height = 2; height <= 14; ++height)
                for (double angle = 0.5; angle < 360; angle += 31.7) {
                    const RasterSurface surface = painted(gradient_of(style, angle), {width, height});
                    CAPTURE(style);
                    CAPTURE(width);
                    CAPTURE(height);
                    CAPTURE(angle);
                    CHECK(std::ranges::count(surface.pixels(), pixel_value(outside_every_table)) == 0);
                }
}

TEST_CASE("where a shape begins and ends") {
    struct Row {
        int style;
        double angle;
        PixelPoint first, last;
    };
    constexpr PixelPoint left{0, 20}, right{59, 20}, top{30, 0}, bottom{30, 39}, middle{30, 20};
    constexpr PixelPoint left_top{0, 0}, right_top{59, 0}, left_bottom{0, 39}, right_bottom{59, 39};
    for (const Row row : {Row{1, 0, left, right},
                          {1, 90, bottom, top},
                          {0, 180, right, middle},
                          {1, 270, top, bottom},
                          {1, 315, left_top, right_bottom},
                          {1, 135, right_bottom, left_top},
                          {2, 70, left, middle},
                          {-2, 70, left, PixelPoint{15, 20}},
                          {3, 0, left_top, middle},
                          {4, 0, left, right},
                          {4, 90, bottom, top},
                          {4, 180, right, left},
                          {4, 270, top, bottom},
                          {4, 340, left, right},
                          {5, 45, left_bottom, right_top},
                          {5, 135, right_bottom, left_top},
                          {5, 225, right_top, left_bottom},
                          {5, 315, left_top, right_bottom},
                          {6, 45, left_top, right_bottom},
                          {6, 135, right_top, left_bottom},
                          {6, 225, left_top, right_bottom},
                          {6, 315, right_top, left_bottom}}) {
        CAPTURE(row.style);
        CAPTURE(row.angle);
        const RasterSurface surface = painted(gradient_of(row.style, row.angle), {60, 40});
        // Red falls from 250 to 5.
        auto const red = [&](PixelPoint p) {
            return pixel(surface, static_cast<int>(p.x), static_cast<int>(p.y)) >> 16 & 0xFF;
        };
        CHECK(red(row.first) > 210);
        CHECK(red(row.last) < 45);
    }
}

TEST_CASE("a gradient runs the same way in both directions, and there and back is the same on both sides") {
    for (double const angle : {0.0, 90.0}) {
        Picture const there = picture_of(painted(gradient_of(1, angle), {31, 24}));
        Picture back = picture_of(painted(gradient_of(1, angle + 180), {31, 24}));
        std::ranges::reverse(back);
        CHECK(there == back);
    }
    Picture const both_ways = picture_of(painted(gradient_of(-1, 0), {60, 40}));
    Picture mirrored = both_ways;
    std::ranges::reverse(mirrored);
    CHECK(largest_difference(both_ways, mirrored) < 10); // an entry of 60
}

TEST_CASE("there and back, nothing shows the second colour that a table ends in") {
    for (int const style : {0, -1, -2, -3, -4, -5, -6})
        for (const PixelSize size : {PixelSize{60, 40}, {61, 43}, {60, 41}, {43, 42}})
            for (double const angle : {0.0, 45.0, 90.0, 200.0, 280.0}) {
                CAPTURE(style);
                CAPTURE(size.width);
                CAPTURE(size.height);
                CAPTURE(angle);
                const RasterSurface surface = painted(gradient_of(style, angle), size);
                CHECK(std::ranges::count(surface.pixels(), pixel_value(last_color)) == 0);
            }
}

TEST_CASE("a surface of one pixel in a direction is not painted, and the clip is kept") {
    clsGradient const gradient = gradient_of(1, 0);
    RasterSurface line = surface_of(1, 50), dot = surface_of(1, 1), row = surface_of(50, 1);
    for (RasterSurface* const surface : {&line, &dot, &row}) {
        CHECK_FALSE(gradient.Draw(*surface));
        CHECK(ink_count(*surface) == 0);
    }
    for (int const style : {1, 2, 4, 5, 6}) {
        RasterSurface surface = surface_of(40, 40);
        surface.SelectClipPath({10 * 15, 12 * 15, 7 * 15, 5 * 15});
        CHECK(gradient_of(style, 33).Draw(surface));
        CHECK(ink_box(surface) == PixelBox{10, 12, 18, 18});
        CHECK(ink_count(surface) == 48);
    }
}
