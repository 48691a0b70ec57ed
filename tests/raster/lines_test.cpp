#include "pictures.h"
#include "raster/coverage_mask.h"
#include "raster/stroke.h"

#include <doctest/doctest.h>

#include <array>
#include <limits>
#include <numbers>
#include <random>

using namespace qv;
using namespace qv::raster;
using namespace qv::raster::test;

TEST_CASE("a smooth line is equally dark at every angle") {
    for (int const width : {1, 2, 5})
        for (int degrees = 0; degrees <= 90; degrees += 5) {
            CAPTURE(width);
            CAPTURE(degrees);
            RasterSurface surface = surface_of(220, 220);
            surface.state.DrawWidth = width;
            double const angle = degrees * std::numbers::pi / 180;
            auto const draw = [&](double length) {
                surface.Cls();
                const std::array points{at(10.3, 10.6),
                                        at(10.3 + length * std::cos(angle), 10.6 + length * std::sin(angle))};
                surface.Polyline(points);
                return darkness(surface);
            };
            // The difference of two lengths is free of what the ends add.
            CHECK((draw(200) - draw(100)) / 100 == doctest::Approx(width).epsilon(0.03));
        }
}

TEST_CASE("a smooth line covers what its distance from the pixels says") {
    std::mt19937 random(7);
    std::uniform_real_distribution<> place(-20, 60);
    for (int round = 0; round < 200; ++round) {
        double const width = 1 + round % 7;
        // Every other line is steep, which is drawn in another way.
        const PixelPoint from{place(random), place(random)};
        const PixelPoint to{round % 2 == 0 ? from.x + place(random) / 40 : place(random), place(random)};
        CoverageMask mask;
        mask.resize(40, 40);
        ColumnBand band;
        const PixelBox clip{3, 2, 38, 37};
        stroke_polyline(mask, clip, std::array{from, to}, {width, DrawStyle::Solid, Edge::Smooth}, band);
        double worst = 0;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x) {
                double const dx = to.x - from.x, dy = to.y - from.y;
                double const t =
                    std::clamp(((x - from.x) * dx + (y - from.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
                double const distance = std::hypot(x - from.x - t * dx, y - from.y - t * dy);
                double const part =
                    clip.contains(x, y) ? std::clamp(width / 2 + 0.5 - distance, 0.0, 1.0) : 0.0;
                worst = std::max(worst, std::abs(part * 255 - mask.row(y)[x]));
            }
        CAPTURE(round);
        CHECK(worst < 2);
    }
}

TEST_CASE("a steep curve across many columns is the same as its segments drawn one by one") {
    std::mt19937 random(3);
    std::uniform_real_distribution<> noise(-90, 90);
    std::vector<PixelPoint> points;
    for (int i = 0; i < 600; ++i) points.push_back({i / 3.0 - 5 + (i > 400 ? -150 : 0), 60 + noise(random)});
    const PixelBox clip{2, 3, 171, 117};
    const Pen pen;
    CoverageMask together, apart;
    together.resize(180, 120);
    apart.resize(180, 120);
    ColumnBand band;
    stroke_polyline(together, clip, points, pen, band);
    for (std::size_t i = 1; i < points.size(); ++i)
        stroke_segment(apart, clip, {points[i - 1], points[i]}, pen);
    int worst = 0;
    for (int y = 0; y < 120; ++y)
        for (int x = 0; x < 180; ++x) worst = std::max(worst, std::abs(together.row(y)[x] - apart.row(y)[x]));
    CHECK(worst <= 2);
}

TEST_CASE("splitting a dashed line changes no dot") {
    for (const DrawStyle style : {DrawStyle::Dash, DrawStyle::Dot, DrawStyle::DashDot, DrawStyle::DashDotDot})
        for (const Point end : {at(150, 20), at(20, 150), at(140, 120), at(8.5, 150), at(150, 90)})
            for (int const width : {1, 3}) {
                RasterSurface whole = surface_of(160, 160), split = surface_of(160, 160);
                whole.state.draw_style = split.state.draw_style = style;
                whole.state.DrawWidth = split.state.DrawWidth = width;
                const Point start = at(5.4, 6.2);
                const Point middle{start.x * 0.63 + end.x * 0.37, start.y * 0.63 + end.y * 0.37};
                whole.Polyline(std::array{start, end});
                split.Polyline(std::array{start, middle, end});
                CHECK(largest_difference(picture_of(whole), picture_of(split)) <= 4);
                CHECK(ink_count(whole) > 20);
                // A gap must be a gap.
                RasterSurface solid = surface_of(160, 160);
                solid.state.DrawWidth = width;
                solid.Polyline(std::array{start, end});
                CHECK(darkness(whole) < 0.85 * darkness(solid));
            }
}

TEST_CASE("whole-pixel lines are connected, one pixel a step, and the same in both directions") {
    for (const Point end : {at(90, 31), at(31, 90), at(90, 90), at(90, 10), at(3, 4)}) {
        RasterSurface there = surface_of(100, 100), back = surface_of(100, 100);
        there.state.Smooth = back.state.Smooth = false;
        there.Line(at(10, 10.01), end, LineShape::Segment, 0);
        back.Line(end, at(10, 10.01), LineShape::Segment, 0);
        CHECK(picture_of(there) == picture_of(back));
        const PixelBox box = ink_box(there);
        CHECK(ink_count(there) == std::max(box.width(), box.height()));
        for (const std::uint32_t value : there.pixels()) CHECK((value == white || value == black));
    }
}

TEST_CASE("without smooth edges a level line is as wide as its pen, where a straight line is") {
    for (int const width : {1, 2, 3, 4, 7})
        for (double const place : {12.0, 12.5, 12.3})
            for (const Point end : {at(30, place), at(place, 30)}) {
                CAPTURE(width);
                CAPTURE(place);
                RasterSurface surface = surface_of(50, 50), plain = surface_of(50, 50);
                surface.state.Smooth = plain.state.Smooth = false;
                surface.state.DrawWidth = plain.state.DrawWidth = width;
                const Point start = end.x > end.y ? at(20, place) : at(place, 20);
                surface.Polyline(std::array{start, end});
                plain.Line(start, end, LineShape::Segment, 0);
                const PixelBox box = ink_box(surface);
                CHECK(std::min(box.width(), box.height()) == width);
                if (place == 12) CHECK(box == ink_box(plain)); // else a straight line moves to whole pixels
            }
}

TEST_CASE("a clip leaves pixels out and changes none inside") {
    auto const draw = [](RasterSurface& surface) {
        surface.state.DrawWidth = 1;
        surface.LineTo({-30, 7}, {95, 61}, rgb(0, 0, 255));
        surface.Polyline(std::array{at(-400, 20), at(500, 33), at(20, 900), at(44, -700), at(3, 3)});
        surface.Line(at(1, 1), at(58, 47), LineShape::Box, rgb(255, 0, 0));
        surface.state.fill_style = FillStyle::Solid;
        surface.Circle(at(30, 30), 250);
        surface.Polygon(std::array{PixelPoint{-50, 50}, PixelPoint{70.5, 20}, PixelPoint{60, 200}});
        surface.Symbols({SymbolShape::Diamond, 80, std::array{at(12, 30), at(48, 32), at(30, 11)}});
        surface.state.CurrentX = 100;
        surface.state.CurrentY = 300;
        surface.Print("Clipped text");
        surface.TextOutA({40, 55}, 90, "Clipped text");
    };
    RasterSurface open = surface_of(60, 60), clipped = surface_of(60, 60);
    clipped.SelectClipPath({12 * 15.0, 10 * 15.0, 35 * 15.0, 36 * 15.0});
    draw(open);
    draw(clipped);
    const PixelBox clip{12, 10, 48, 47}; // both corners are included
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 60; ++x) {
            const std::uint32_t expected = clip.contains(x, y) ? pixel(open, x, y) : white;
            if (largest_difference({pixel(clipped, x, y)}, {expected}) > 3)
                FAIL_CHECK("pixel " << x << ", " << y);
        }
}

TEST_CASE("absurd coordinates do no harm, and what shows of a far line is straight") {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::array<double, 9> values{
        0, 300, -300, 1e9, 1e300, -1e300, std::numeric_limits<double>::max(), infinity, std::nan("")};
    for (bool const smooth : {true, false})
        for (const DrawMode mode : {DrawMode::Copy, DrawMode::Invert}) {
            RasterSurface surface = surface_of(30, 20);
            surface.state.Smooth = smooth;
            surface.state.draw_mode = mode;
            surface.state.fill_style = FillStyle::Solid;
            for (double const a : values)
                for (double const b : values) {
                    const Point p{a, b}, q{b, -a};
                    for (const LineShape shape : {LineShape::Segment, LineShape::Box, LineShape::FilledBox})
                        surface.Line(p, q, shape, 0);
                    surface.Polyline(std::array{p, q, Point{100, 100}, p});
                    surface.PSet(p);
                    surface.Circle(p, b);
                    surface.Polygon(std::array{PixelPoint{a, b}, PixelPoint{b, a}, PixelPoint{3, 4}});
                    surface.Rectangle({a, b}, {b, a});
                    surface.Ellipse({a, b}, {b, a});
                    surface.LineTo({a, b}, {5, 5}, 0);
                    surface.Symbols(
                        {SymbolShape::Circle, std::numeric_limits<std::int32_t>::max(), std::array{p}});
                    surface.Symbols({SymbolShape::TriangleUp, 60, std::array{p, q}});
                    surface.BitBlt({a, b}, {1 << 30, 1 << 30}, surface, {b, a});
                    surface.SelectClipPath({a, b, b, a});
                    surface.SelectClipPath({0, 0, 1e6, 1e6});
                    surface.TextOutA({a, b}, a, "text");
                }
        }
    RasterSurface surface = surface_of(40, 40);
    surface.Polyline(std::array{at(-1e7, -1e7), at(1e9, 1e9)});
    for (int i = 0; i < 40; ++i) CHECK(pixel(surface, i, i) == black);
}

TEST_CASE("a line through the box shows wherever its ends lie") {
    const PixelBox box{0, 0, 400, 300};
    for (double const far : {1e6, 1e15, 1e20, 1e81, 1e200, 1e307})
        for (double const direction : {1.0, -1.0}) {
            CAPTURE(far);
            struct Row {
                PixelPoint from, to, enters, leaves;
            };
            double const y = direction * far;
            double const first = direction > 0 ? 0 : 299, last = 299 - first;
            for (Row const& row :
                 {Row{{200, -y}, {230, y}, {215, first}, {215, last}},
                  Row{{200, -y}, {230, 150}, {230, first}, {230, 150}},
                  Row{{200, 150}, {230, y}, {200, 150}, {200, last}},
                  Row{{-y, 60}, {y, 90}, {first == 0 ? 0.0 : 399, 75}, {last == 0 ? 0.0 : 399, 75}},
                  Row{{-far, -far}, {far, far}, {0, 0}, {299, 299}},
                  Row{{far, far}, {100, 100}, {299, 299}, {100, 100}}}) {
                auto const shown = clipped({row.from, row.to}, box);
                REQUIRE(shown);
                auto const near = [](PixelPoint a, PixelPoint b) {
                    return std::abs(a.x - b.x) < 0.01 && std::abs(a.y - b.y) < 0.01;
                };
                // A million pixels away the slope is still to be seen.
                if (far > 1e6) CHECK(near(shown->from, row.enters));
                if (far > 1e6) CHECK(near(shown->to, row.leaves));
                auto const back = clipped({row.to, row.from}, box);
                REQUIRE(back);
                CHECK(near(back->from, shown->to));
                CHECK(near(back->to, shown->from));
            }
            CHECK_FALSE(clipped({{-far, 100}, {100, -far}}, {201, 201, 400, 300}));
            CHECK_FALSE(clipped({{far, 1}, {far, far}}, box));
        }
    for (bool const smooth : {true, false}) {
        RasterSurface surface = surface_of(40, 40);
        surface.state.Smooth = smooth;
        surface.Polyline(std::array{at(10, -1e20), at(12, 1e20), at(20, 20), at(30, -1e82)});
        CHECK(ink_count(surface) == 2 * 40);
    }
}

TEST_CASE("lines and boxes written at once are those of a shape") {
    for (LineShape const shape : {LineShape::Segment, LineShape::Box, LineShape::FilledBox})
        for (int style = 0; style <= static_cast<int>(DrawStyle::InsideSolid); ++style)
            for (int const width : {1, 2, 3, 6})
                for (auto const& [from, to] :
                     {std::pair{at(-4, 7), at(35, 7)}, std::pair{at(9, 38), at(9, 3)},
                      std::pair{at(5, 6), at(5, 6)}, std::pair{at(3, 4), at(60, 31)}}) {
                    CAPTURE(static_cast<int>(shape));
                    CAPTURE(style);
                    CAPTURE(width);
                    auto const drawn = [&](bool in_shape) {
                        RasterSurface surface = surface_of(40, 40);
                        surface.SelectClipPath({at(2, 2).x, at(2, 2).y, at(33, 0).x, at(0, 34).y});
                        surface.state.draw_style = static_cast<DrawStyle>(style);
                        surface.state.DrawWidth = width;
                        if (in_shape) surface.BeginShape();
                        surface.Line(from, to, shape, rgb(10, 120, 230));
                        if (in_shape) surface.EndShape();
                        return picture_of(surface);
                    };
                    CHECK(drawn(true) == drawn(false));
                }
}
