#include "pictures.h"
#include "raster/polygon.h"
#include "raster/symbol_sprites.h"

#include <doctest/doctest.h>

#include <array>
#include <functional>
#include <numbers>
#include <random>

using namespace qv;
using namespace qv::raster;
using namespace qv::raster::test;

namespace {

struct Operation {
    char const* name;
    std::function<void(RasterSurface&)> draw;
};

std::vector<Operation> operations() {
    return {
        {"segment", [](auto& s) { s.Line(at(3, 4), at(50, 31), LineShape::Segment, 0); }},
        {"box", [](auto& s) { s.Line(at(3, 4), at(50, 31), LineShape::Box, 0); }},
        {"filled box", [](auto& s) { s.Line(at(3, 4), at(50, 31), LineShape::FilledBox, 0); }},
        {"polyline",
         [](auto& s) {
             s.Polyline(std::array{at(3, 4), at(50, 31), at(9, 50), at(9, 2), at(50, 30)});
         }},
        {"dot", [](auto& s) { s.PSet(at(20, 20)); }},
        {"circle", [](auto& s) { s.Circle(at(30, 30), 200); }},
        {"polygon",
         [](auto& s) {
             s.Polygon(
                 std::array{PixelPoint{5, 5}, PixelPoint{50, 9}, PixelPoint{8, 44}, PixelPoint{40, 50}});
         }},
        {"rectangle",
         [](auto& s) {
             s.Rectangle({5, 5}, {40, 30});
         }},
        {"ellipse",
         [](auto& s) {
             s.Ellipse({5, 5}, {40, 30});
         }},
        {"device line",
         [](auto& s) {
             s.LineTo({5, 5}, {40, 30}, 0);
         }},
        {"symbols",
         [](auto& s) {
             s.Symbols({SymbolShape::Diamond, 100, std::array{at(20, 20), at(24, 22)}});
         }},
        {"text",
         [](auto& s) {
             s.TextOutA({5, 20}, 0, "W\xC3\x85j");
         }},
        {"turned text",
         [](auto& s) {
             s.TextOutA({25, 50}, 40, "W\xC3\x85j");
         }},
    };
}

constexpr std::array every_shape{SymbolShape::Dot,           SymbolShape::Circle,
                                 SymbolShape::Square,        SymbolShape::Diamond,
                                 SymbolShape::TriangleUp,    SymbolShape::TriangleDown,
                                 SymbolShape::WideRectangle, SymbolShape::TallRectangle,
                                 SymbolShape::Plus,          SymbolShape::Cross};

} // namespace

TEST_CASE("inverting twice restores every pixel, and once changes each touched pixel fully") {
    for (Operation const& operation : operations())
        for (int const width : {1, 4})
            for (const FillStyle fill : {FillStyle::Solid, FillStyle::Transparent}) {
                CAPTURE(operation.name);
                RasterSurface surface = surface_of(60, 60);
                surface.Line(at(0, 0), at(30, 60), LineShape::FilledBox, rgb(10, 200, 77));
                const Picture before = picture_of(surface);
                surface.state.draw_mode = DrawMode::Invert;
                surface.state.DrawWidth = width;
                surface.state.fill_style = fill;
                operation.draw(surface);
                const Picture inverted = picture_of(surface);
                CHECK(inverted != before);
                for (std::size_t i = 0; i < before.size(); ++i)
                    CHECK((inverted[i] == before[i] || inverted[i] == (before[i] ^ 0x00FFFFFF)));
                operation.draw(surface);
                CHECK(picture_of(surface) == before);
            }
}

TEST_CASE("with Smooth off every operation paints whole pixels") {
    for (Operation const& operation : operations()) {
        CAPTURE(operation.name);
        RasterSurface surface = surface_of(60, 60);
        surface.state.Smooth = false;
        surface.state.fill_style = FillStyle::Solid;
        operation.draw(surface);
        CHECK(ink_count(surface) > 0);
        for (const std::uint32_t value : surface.pixels()) CHECK((value == white || value == black));
    }
}

TEST_CASE("pieces of one shape do not darken each other") {
    for (Operation const& operation : operations()) {
        CAPTURE(operation.name);
        RasterSurface once = surface_of(60, 60), twice = surface_of(60, 60);
        {
            const ShapeScope shape(once);
            operation.draw(once);
        }
        {
            const ShapeScope shape(twice);
            operation.draw(twice);
            {
                const ShapeScope inner(twice);
                operation.draw(twice);
            }
            CHECK(ink_count(twice) == 0); // nothing shows before the outer shape ends
        }
        CHECK(picture_of(once) == picture_of(twice));
    }
}

TEST_CASE("a polyline drawn in two halves within a shape equals the whole") {
    std::vector<Point> points;
    for (int i = 0; i < 200; ++i) points.push_back(at(5 + i * 0.4, 45 + 40 * std::sin(i * 0.9)));
    RasterSurface whole = surface_of(90, 90), halves = surface_of(90, 90);
    whole.Polyline(points);
    {
        const ShapeScope shape(halves);
        halves.Polyline(std::span(points).first(101));
        halves.state.ForeColor = rgb(0, 200, 0); // another colour between is another shape
        halves.Line(at(0, 89), at(89, 89), LineShape::Segment, halves.state.ForeColor);
        halves.state.ForeColor = 0;
        halves.Polyline(std::span(points).subspan(100));
    }
    whole.Line(at(0, 89), at(89, 89), LineShape::Segment, rgb(0, 200, 0));
    CHECK(picture_of(whole) == picture_of(halves));
}

TEST_CASE("polygons cover their area, by the even-odd rule") {
    auto const area_of = [](std::span<PixelPoint const> corners, Edge edge) {
        CoverageMask mask;
        mask.resize(100, 100);
        PolygonFiller().fill(mask, {0, 0, 100, 100}, corners, edge);
        double sum = 0;
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 100; ++x) sum += mask.row(y)[x] / 255.0;
        return sum;
    };
    std::mt19937 random(11);
    std::uniform_real_distribution<> place(2, 97);
    for (int round = 0; round < 50; ++round) {
        const std::array<PixelPoint, 3> triangle{PixelPoint{place(random), place(random)},
                                                 PixelPoint{place(random), place(random)},
                                                 PixelPoint{place(random), place(random)}};
        auto const [a, b, c] = triangle;
        double const area = std::abs((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) / 2;
        CHECK(area_of(triangle, Edge::Smooth) == doctest::Approx(area).epsilon(0.002).scale(200));
        CHECK(area_of(triangle, Edge::Whole) == doctest::Approx(area).epsilon(0.03).scale(2000));
    }
    // Seen from within, borders left and right of the surface change nothing; a square in a square is a hole.
    CHECK(area_of(std::array{PixelPoint{-900, 9.5}, PixelPoint{900, 9.5}, PixelPoint{1e7, 29.5},
                             PixelPoint{-1e7, 29.5}},
                  Edge::Smooth)
          == doctest::Approx(2000).epsilon(0.001));
    CHECK(area_of(std::array{PixelPoint{9.5, 9.5}, PixelPoint{49.5, 9.5}, PixelPoint{49.5, 49.5},
                             PixelPoint{9.5, 49.5}, PixelPoint{9.5, 9.5}, PixelPoint{19.5, 19.5},
                             PixelPoint{29.5, 19.5}, PixelPoint{29.5, 29.5}, PixelPoint{19.5, 29.5},
                             PixelPoint{19.5, 19.5}},
                  Edge::Smooth)
          == doctest::Approx(1500).epsilon(0.001));
}

TEST_CASE("circles have the light of their area") {
    for (double const radius : {0.5, 3.0, 4.37, 20.0}) {
        RasterSurface surface = surface_of(60, 60);
        surface.state.fill_style = FillStyle::Solid;
        surface.Circle(at(29.3, 30.8), radius * 15);
        // The pen is one pixel wide and black as the inside.
        double const outer = radius + 0.5;
        CHECK(darkness(surface) == doctest::Approx(std::numbers::pi * outer * outer).epsilon(0.05));
        surface.Cls();
        surface.state.fill_style = FillStyle::Transparent;
        surface.Circle(at(29.3, 30.8), radius * 15);
        if (radius > 1)
            CHECK(darkness(surface) == doctest::Approx(2 * std::numbers::pi * radius).epsilon(0.05));
    }
}

TEST_CASE("a batch of symbols shows what drawing each shows") {
    for (const SymbolShape shape : every_shape)
        for (bool const smooth : {true, false}) {
            CAPTURE(static_cast<int>(shape));
            CAPTURE(smooth);
            RasterSurface batch = surface_of(80, 80), single = surface_of(80, 80);
            for (RasterSurface* surface : {&batch, &single}) {
                surface->state.Smooth = smooth;
                surface->state.fill_style = FillStyle::Solid;
            }
            // On pixels and, when smooth, quarters of them, where sprites stand exactly, and cut by every
            // edge.
            const std::vector<Point> centres{at(20, 20), at(smooth ? 40.25 : 40, smooth ? 20.5 : 21),
                                             at(22, 21), at(0, 40),
                                             at(79, 2),  at(50, 79)};
            batch.Symbols({shape, 70, centres});
            {
                const ShapeScope scope(single);
                for (Point const centre : centres) draw_symbol(single, shape, centre, 70);
            }
            int different = 0;
            for (int y = 0; y < 80; ++y)
                for (int x = 0; x < 80; ++x)
                    different += largest_difference({pixel(batch, x, y)}, {pixel(single, x, y)}) > 48;
            // A box between two pixels may be rounded either way.
            CHECK(different <= ink_count(single) / 5);
            CHECK(ink_count(batch) == doctest::Approx(ink_count(single)).epsilon(0.12));
        }
}

TEST_CASE("a crowd of symbols shows what its symbols show, in any colour and clip, again and again") {
    std::vector<Point> ring;
    for (int i = 0; i < 20000; ++i)
        ring.push_back({700 + (480 + i % 30) * std::cos(0.01 * i), 600 + 500 * std::sin(0.01 * i)});
    auto const draw = [&ring](RasterSurface& surface, Color color, std::size_t batch) {
        surface.state.FillColor = color;
        for (std::size_t i = 0; i < ring.size(); i += batch)
            surface.Symbols({SymbolShape::Circle, 40,
                             std::span(ring).subspan(i).first(std::min(batch, ring.size() - i))});
    };
    RasterSurface few = surface_of(80, 80), crowd = surface_of(80, 80);
    for (RasterSurface* const surface : {&few, &crowd}) surface->state.Smooth = false;
    const Box left_half{0, 0, 39 * 15, 79 * 15}, all{0, 0, 79 * 15, 79 * 15};
    for (int time = 0; time < 2; ++time) {
        for (RasterSurface* const surface : {&few, &crowd}) surface->Cls();
        few.SelectClipPath(all);
        draw(few, rgb(0, 0, 255), 50); // each batch a shape of its own
        few.SelectClipPath(left_half);
        draw(few, rgb(255, 0, 0), 50);
        const ShapeScope one_shape(crowd);
        crowd.SelectClipPath(left_half);
        draw(crowd, rgb(0, 0, 255), 3000);
        crowd.SelectClipPath(all);
        draw(crowd, rgb(0, 0, 255), 3000);
        crowd.SelectClipPath(left_half);
        draw(crowd, rgb(255, 0, 0), ring.size());
    }
    CHECK(ink_count(few) > 500);
    CHECK(ink_count(few) < 80 * 80 / 2);
    CHECK(picture_of(few) == picture_of(crowd));
}

TEST_CASE("symbols far too large for a sprite, and without a place, are handled") {
    RasterSurface surface = surface_of(50, 50);
    surface.state.FillColor = rgb(0, 0, 255);
    surface.Symbols({SymbolShape::Circle, 15 * 400, std::array{at(25, 25), Point{std::nan(""), 5}}});
    CHECK(pixel(surface, 0, 0) == 0xFF0000FF);
    CHECK(pixel(surface, 49, 49) == 0xFF0000FF);
}

TEST_CASE(
    "squares and rectangles of a series are equal in size wherever they stand, with an edge and without") {
    for (const SymbolShape shape :
         {SymbolShape::Square, SymbolShape::WideRectangle, SymbolShape::TallRectangle})
        for (bool const edged : {true, false}) {
            CAPTURE(static_cast<int>(shape));
            PixelBox first;
            for (int i = 0; i < 60; ++i) {
                RasterSurface surface = surface_of(60, 60);
                surface.state.fill_style = FillStyle::Solid;
                const Point centre{300.0 + i, 400.0 - 0.7 * i};
                if (edged)
                    draw_symbol(surface, shape, centre, 67);
                else
                    surface.Symbols({shape, 67, std::array{centre}});
                const PixelBox box = ink_box(surface);
                if (i == 0) first = box;
                CHECK(box.width() == first.width());
                CHECK(box.height() == first.height());
            }
        }
}

TEST_CASE("a translucent shape is mixed in linear light, once wherever its pieces lie over each other") {
    auto const half_light = [](double alpha) {
        double const light = 1 - alpha / 255; // black on white
        return static_cast<int>(std::lround((1.055 * std::pow(light, 1 / 2.4) - 0.055) * 255));
    };
    for (int const alpha : {1, 64, 128, 254}) {
        CAPTURE(alpha);
        RasterSurface surface = surface_of(60, 60);
        surface.state.alpha = static_cast<std::uint8_t>(alpha);
        surface.Line(at(3, 4), at(50, 31), LineShape::FilledBox, 0);
        int const mixed = static_cast<int>(pixel(surface, 20, 20) & 0xFF);
        CHECK(std::abs(mixed - half_light(alpha)) <= 1);
        RasterSurface together = surface_of(60, 60);
        together.state.alpha = surface.state.alpha;
        {
            const ShapeScope one_shape(together);
            together.Line(at(3, 4), at(50, 20), LineShape::FilledBox, 0);
            together.Line(at(3, 10), at(50, 31), LineShape::FilledBox, 0);
        }
        CHECK(picture_of(together) == picture_of(surface));
        if (alpha > 200) continue; // nearly black is told apart in few steps
        // Outside of a shape each piece lies upon the one before.
        surface.Line(at(3, 4), at(50, 31), LineShape::FilledBox, 0);
        CHECK(std::abs(static_cast<int>(pixel(surface, 20, 20) & 0xFF)
                       - half_light(255 - (255 - alpha) * (255 - alpha) / 255.0))
              <= 2);
    }
}

TEST_CASE("every operation but text and inversion obeys alpha") {
    for (Operation const& operation : operations()) {
        CAPTURE(operation.name);
        bool const is_text = std::string(operation.name).find("text") != std::string::npos;
        auto const drawn = [&](int alpha, DrawMode mode) {
            RasterSurface surface = surface_of(60, 60);
            surface.state.alpha = static_cast<std::uint8_t>(alpha);
            surface.state.draw_mode = mode;
            operation.draw(surface);
            return picture_of(surface);
        };
        auto const opaque_picture = drawn(255, DrawMode::Copy), faint = drawn(128, DrawMode::Copy);
        CHECK((faint == opaque_picture) == is_text);
        if (!is_text) {
            CHECK(drawn(0, DrawMode::Copy) == picture_of(surface_of(60, 60)));
            for (std::size_t i = 0; i < faint.size(); ++i) {
                if ((faint[i] & 0xFF) >= (opaque_picture[i] & 0xFF)) continue;
                FAIL("a translucent pixel is darker than the opaque one");
            }
        }
        CHECK(drawn(128, DrawMode::Invert) == drawn(255, DrawMode::Invert));
    }
}
