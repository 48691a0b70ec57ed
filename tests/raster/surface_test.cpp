#include "fault_of.h"
#include "pictures.h"

#include <doctest/doctest.h>

#include <array>
#include <limits>

using namespace qv;
using namespace qv::raster;
using namespace qv::raster::test;

namespace {

// A surface in which every pixel has its own colour.
RasterSurface numbered_surface(int width, int height) {
    RasterSurface surface = surface_of(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            surface.LineTo({double(x), double(y)}, {double(x), double(y)}, rgb(x, y, 7));
    return surface;
}

// Every operation that uses a pen, `k` times as large in twips.
void draw_with_pen(RasterSurface& surface, double k) {
    auto const at = [k](double x, double y) { return Point{k * x, k * y}; };
    surface.Line(at(40, 70), at(333, 210), LineShape::Segment, 0);
    surface.Line(at(40, 300), at(500, 300), LineShape::Segment, 0);
    surface.Line(at(30, 20), at(560, 420), LineShape::Box, 0);
    surface.Polyline(std::array{at(11, 40), at(200, 390), at(300, 33), at(300, 200), at(555, 120)});
    surface.PSet(at(520, 200));
    surface.Circle(at(400, 200), 60 * k);
    surface.Polygon(std::array{PixelPoint{50, 10}, PixelPoint{70, 14}, PixelPoint{62.5, 30}});
    surface.Rectangle({10, 30}, {20, 44});
    surface.Ellipse({24, 30}, {41, 44});
    for (int shape = 0; shape <= static_cast<int>(SymbolShape::Cross); ++shape)
        surface.Symbols({static_cast<SymbolShape>(shape), static_cast<std::int32_t>(20 * k),
                         std::array{at(50 + 50 * shape, 350)}});
}

} // namespace

TEST_CASE("boxes, lines, copies and clips at one place meet, whatever the scale") {
    for (double const twips : {15.0, 7.5, 12.34, 20.0, 0.9, 31.7}) {
        CAPTURE(twips);
        RasterSurface surface = surface_of(64, 64, twips, twips);
        const RasterSurface red = [&] {
            RasterSurface made = surface_of(64, 64, twips, twips);
            made.Line({0, 0}, {64 * twips, 64 * twips}, LineShape::FilledBox, rgb(255, 0, 0));
            return made;
        }();
        for (double split = 5 * twips; split < 50 * twips; split += twips * 1.37) {
            // A filled box left of the split, a line on it, a copy right of it; each from its own rounding.
            surface.Cls();
            int const column = static_cast<int>(std::floor(split / twips + 0.5));
            int const line = column - whole_pen(15 / twips) / 2; // its first pixel
            surface.Line({0, 0}, {split, 64 * twips}, LineShape::FilledBox, rgb(0, 255, 0));
            surface.Line({split, 0}, {split, 64 * twips}, LineShape::Segment, rgb(0, 0, 255));
            surface.BitBlt({split / twips + 1, 0}, {64, 64}, red, {0, 0});
            surface.SelectClipPath({split, 20 * twips, 0, 0});
            surface.Line({0, 0}, {64 * twips, 64 * twips}, LineShape::FilledBox, 0);
            surface.SelectClipPath({0, 0, 1e9, 1e9});
            for (int x = 0; x < 64; ++x)
                CHECK(pixel(surface, x, 10)
                      == (x < line      ? 0xFF00FF00U
                          : x <= column ? 0xFF0000FFU
                                        : 0xFFFF0000U));
            CHECK(pixel(surface, column, 20) == black);
        }
    }
}

TEST_CASE("widths count at 96 to the inch: pixels half as wide take twice as many") {
    for (bool const smooth : {true, false})
        for (DrawStyle const style : {DrawStyle::Solid, DrawStyle::Dot, DrawStyle::InsideSolid})
            for (int const width : {1, 2, 5}) {
                CAPTURE(smooth);
                CAPTURE(static_cast<int>(style));
                CAPTURE(width);
                RasterSurface plain = surface_of(80, 60), dense = surface_of(80, 60, 7.5, 7.5);
                for (RasterSurface* surface : {&plain, &dense}) {
                    surface->state.Smooth = smooth;
                    surface->state.draw_style = style;
                }
                plain.state.DrawWidth = 2 * width;
                dense.state.DrawWidth = width;
                draw_with_pen(plain, 2);
                draw_with_pen(dense, 1);
                CHECK(picture_of(dense) == picture_of(plain));
            }
}

TEST_CASE("between whole densities slanted lines keep their width and level ones lie on whole pixels") {
    struct Row {
        double twips;
        int width, whole; // of the pen, and of the line in pixels
        double exact;
    };
    for (Row const& row :
         {Row{12, 1, 1, 1.25}, Row{10, 1, 1, 1.5}, Row{60 / 7.0, 1, 2, 1.75}, Row{10, 2, 3, 3},
          Row{12, 2, 2, 2.5}, Row{6, 1, 2, 2.5}, Row{5, 1, 3, 3}, Row{30, 1, 1, 1}, Row{30, 5, 2, 2.5}}) {
        CAPTURE(row.twips);
        CAPTURE(row.width);
        RasterSurface surface = surface_of(80, 60, row.twips, row.twips);
        surface.state.DrawWidth = row.width;
        surface.Line({10 * row.twips, 20 * row.twips}, {60 * row.twips, 20 * row.twips}, LineShape::Segment,
                     0);
        CHECK(ink_box(surface).height() == row.whole);
        CHECK(ink_count(surface) == ink_box(surface).width() * row.whole);
        surface.Cls();
        surface.Line({10 * row.twips, 10 * row.twips}, {50 * row.twips, 40 * row.twips}, LineShape::Segment,
                     0);
        double const ends = row.exact * row.exact * 0.785; // round
        CHECK(darkness(surface) == doctest::Approx(50 * row.exact + ends).epsilon(0.03));
    }
}

TEST_CASE("wide lines and boxes are as wide as said, and corners are closed") {
    for (int width = 1; width <= 6; ++width) {
        RasterSurface surface = surface_of(60, 60);
        surface.state.DrawWidth = width;
        surface.Line(at(20, 30), at(40, 30), LineShape::Segment, 0);
        CHECK(ink_box(surface).height() == width);
        surface.Cls();
        surface.Line(at(20, 20), at(40, 35), LineShape::Box, 0);
        const PixelBox box = ink_box(surface);
        CHECK(box.width() == 20 + width);
        CHECK(box.height() == 15 + width);
        CHECK(ink_count(surface) == box.width() * box.height() - (20 - width) * (15 - width));
        surface.Cls();
        surface.state.draw_style = DrawStyle::InsideSolid;
        surface.Line(at(20, 20), at(40, 35), LineShape::Box, 0);
        CHECK(ink_box(surface) == PixelBox{20, 20, 41, 36});
    }
}

TEST_CASE("rectangles and ellipses exclude their right and bottom pixel") {
    RasterSurface surface = surface_of(40, 40);
    surface.Rectangle({5, 6}, {20, 30});
    CHECK(ink_box(surface) == PixelBox{5, 6, 20, 30});
    CHECK(ink_count(surface) == 2 * 15 + 2 * 22);
    surface.Cls();
    surface.state.Smooth = false;
    surface.Ellipse({5, 6}, {20, 30});
    CHECK(ink_box(surface) == PixelBox{5, 6, 20, 30});
    surface.Cls();
    surface.state.fill_style = FillStyle::Solid;
    surface.Rectangle({5, 5}, {5, 5});
    CHECK(ink_count(surface) == 0);
}

TEST_CASE("copies are cut at both surfaces and the clip, and overlap safely") {
    const RasterSurface source = numbered_surface(30, 20);
    struct Row {
        PixelPoint target;
        PixelSize size;
        PixelPoint origin;
    };
    for (Row const& row :
         {Row{{3, 4}, {10, 10}, {5, 6}}, Row{{-4, -3}, {20, 20}, {0, 0}}, Row{{25, 15}, {99, 99}, {2, 2}},
          Row{{5, 5}, {10, 10}, {-3, -4}}, Row{{0, 0}, {40, 40}, {25, 18}}, Row{{5, 5}, {-1, 5}, {0, 0}},
          Row{{2, 3}, {25, 15}, {1, 1}}, Row{{1, 1}, {25, 15}, {2, 3}}, Row{{0, 5}, {29, 10}, {1, 5}}})
        for (bool const same : {false, true}) {
            RasterSurface target = numbered_surface(30, 20);
            if (!same) target.Cls();
            const PixelBox clip{1, 1, 28, 18};
            target.SelectClipPath({15, 15, 26 * 15.0, 16 * 15.0});
            const Picture before = picture_of(target);
            target.BitBlt(row.target, row.size, same ? target : source, row.origin);
            for (int y = 0; y < 20; ++y)
                for (int x = 0; x < 30; ++x) {
                    int const from_x = x - int(row.target.x) + int(row.origin.x);
                    int const from_y = y - int(row.target.y) + int(row.origin.y);
                    const PixelBox block{int(row.target.x), int(row.target.y),
                                         int(row.target.x) + row.size.width,
                                         int(row.target.y) + row.size.height};
                    bool const copied = clip.contains(x, y) && block.contains(x, y)
                                        && PixelBox{0, 0, 30, 20}.contains(from_x, from_y);
                    const std::uint32_t expected =
                        copied ? pixel(source, from_x, from_y) : before[static_cast<std::size_t>(y * 30 + x)];
                    CHECK(pixel(target, x, y) == expected);
                }
        }
}

TEST_CASE("resizing keeps the picture, refuses absurd sizes and lifts the clip") {
    RasterSurface surface = numbered_surface(10, 8);
    surface.SelectClipPath({0, 0, 15, 15});
    surface.state.BackColor = rgb(1, 2, 3);
    surface.Move(12 * 15, 5 * 15);
    CHECK(surface.GetClientRect() == PixelSize{12, 5});
    CHECK(surface.Width() == 180);
    CHECK(pixel(surface, 9, 4) == pixel_value(rgb(9, 4, 7)));
    CHECK(pixel(surface, 10, 0) == 0xFF010203);
    surface.Line(at(11, 4), at(11, 4), LineShape::FilledBox, 0);
    CHECK(pixel(surface, 11, 4) == black);
    surface.Move(-5, 0);
    CHECK(surface.GetClientRect() == PixelSize{1, 1});
    double const infinity = std::numeric_limits<double>::infinity();
    CHECK(qv::test::fault_number([&] { surface.Move(32768 * 15.0, 15); }) == 7);
    CHECK(qv::test::fault_number([&] { surface.Move(32767 * 15.0, 32767 * 15.0); }) == 7);
    CHECK(qv::test::fault_number([&] { surface.Move(15, infinity); }) == 7);
    CHECK(qv::test::fault_number([&] { surface.Move(std::nan(""), 15); }) == 5);
    CHECK(surface.GetClientRect() == PixelSize{1, 1});
    for (double const bad : {0.0, -15.0, infinity, std::nan("")})
        CHECK(qv::test::fault_number([&] { surface.set_twips_per_pixel(15, bad); }) == 5);
    surface.set_twips_per_pixel(10, 20);
    surface.Move(300, 300);
    CHECK(surface.GetClientRect() == PixelSize{30, 15});
}

TEST_CASE("colours: channels, system colours, unknown numbers") {
    struct Row {
        Color color;
        std::uint32_t value;
    };
    for (Row const& row : {Row{rgb(1, 2, 3), 0xFF010203}, Row{system_color(24), 0xFFFFFFE1},
                           Row{system_color(5), white}, Row{system_color(15), 0xFFF0F0F0},
                           Row{system_color(25), black}, Row{-1, black}, Row{0x7F030201, 0xFF010203}}) {
        RasterSurface surface = surface_of(2, 2);
        surface.state.BackColor = row.color;
        surface.Cls();
        CHECK(pixel(surface, 1, 1) == row.value);
    }
}

TEST_CASE("drawing one colour over itself leaves it, at any coverage") {
    for (int const level : {0, 1, 2, 40, 128, 254, 255}) {
        RasterSurface surface = surface_of(40, 40);
        surface.state.BackColor = surface.state.ForeColor = rgb(level, 255 - level, level / 2);
        surface.Cls();
        const Picture before = picture_of(surface);
        surface.Polyline(std::array{at(2, 3), at(30, 17), at(5, 36)});
        surface.TextOutA({3, 3}, 20, "text");
        // Dark values have few steps of light between them.
        CHECK(largest_difference(before, picture_of(surface)) <= 1);
    }
}

TEST_CASE("surfaces that were copied whole, and snapshots, keep their own picture") {
    RasterSurface first = numbered_surface(20, 10), second = surface_of(20, 10), third = surface_of(20, 10);
    auto const before = picture_of(first);
    second.BitBlt({0, 0}, {20, 10}, first, {0, 0});
    third.BitBlt({0, 0}, {20, 10}, second, {0, 0});
    auto const kept = first.snapshot();
    first.Line({0, 0}, {150, 75}, LineShape::FilledBox, rgb(255, 0, 0));
    CHECK(picture_of(second) == before);
    CHECK(std::equal(before.begin(), before.end(), kept.get()));
    second.Cls();
    CHECK(picture_of(third) == before);
    CHECK(picture_of(second) == std::vector<std::uint32_t>(before.size(), 0xFFFFFFFF));
    third.Print("x");
    third.BitBlt({0, 0}, {20, 10}, first, {0, 0});
    first.Line({0, 0}, {300, 150}, LineShape::Segment, 0);
    CHECK(picture_of(third) != picture_of(first));
    CHECK(picture_of(third)[0] == 0xFFFF0000);
    CHECK(std::equal(before.begin(), before.end(), kept.get()));
}
