#include "pictures.h"
#include "qvgraph/fault.h"
#include "raster/unicode.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace qv;
using namespace qv::raster;
using namespace qv::raster::test;

namespace {

PixelBox text_box(std::string_view text, double angle, Font const& font = {}) {
    RasterSurface surface = surface_of(400, 400);
    surface.state.font = font;
    surface.TextOutA({200, 200}, angle, text);
    return ink_box(surface);
}

// Sets an environment variable for as long as it lives.
class Environment {
public:
    Environment(char const* name, std::string const& value) : name_(name) {
        if (char const* const before = std::getenv(name)) before_ = before;
        setenv(name, value.c_str(), 1);
    }
    ~Environment() {
        if (before_.empty())
            unsetenv(name_);
        else
            setenv(name_, before_.c_str(), 1);
    }
    Environment(Environment const&) = delete;
    Environment& operator=(Environment const&) = delete;

private:
    char const* name_;
    std::string before_;
};

} // namespace

TEST_CASE("invalid UTF-8 becomes replacement characters, one a maximal piece") {
    struct Row {
        char const* text;
        std::u32string characters;
    };
    for (Row const& row : {
             Row{"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", U"a\u00E9\u20AC\U0001F600"},
             Row{"\xFF\x80z", U"\uFFFD\uFFFDz"},
             Row{"\xE2\x82", U"\uFFFD"},
             Row{"\xE2\x82x", U"\uFFFDx"},
             Row{"\xC0\xAF", U"\uFFFD\uFFFD"},                     // overlong
             Row{"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},           // surrogate
             Row{"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"}, // above U+10FFFF
             Row{"a\tb\n\xC2\x85", U"a b  "},
         })
        CHECK(decode_utf8(row.text) == row.characters);
}

TEST_CASE("every byte string can be printed") {
    RasterSurface surface = surface_of(100, 40);
    for (int first = 0; first < 256; ++first) {
        const std::string text{static_cast<char>(first), static_cast<char>(first * 7 + 3),
                               static_cast<char>(first ^ 0x55), 'x'};
        surface.TextOutA({2, 2}, first, text);
        CHECK(surface.TextWidth(text) > 0);
    }
}

TEST_CASE("widths of texts add up, and the ink stays within them") {
    RasterSurface surface = surface_of(10, 10);
    for (double const points : {7.0, 9.0, 24.0}) {
        surface.state.font.size_points = points;
        double const whole = surface.TextWidth("0123456789");
        CHECK(whole == doctest::Approx(surface.TextWidth("01234") + surface.TextWidth("56789")));
        // Arial's digits are 0.556 em wide.
        CHECK(whole == doctest::Approx(10 * 0.556 * points * 20).epsilon(0.01));
        CHECK(surface.TextWidth("AV") <= 2 * surface.TextWidth("A"));
        CHECK(surface.TextWidth("") == 0);
        const PixelBox ink = text_box("0123456789", 0, {"Arial", points});
        CHECK(ink.width() <= whole / 15 + 2);
        CHECK(ink.width() >= whole / 15 - 0.15 * points - 2);
        CHECK(ink.left >= 200);
        CHECK(ink.top >= 200);
        CHECK(ink.bottom <= 200 + surface.TextHeight("") / 15);
    }
}

TEST_CASE("text height is whole pixels and follows the size at any scale") {
    for (double const twips : {15.0, 7.5, 12.34})
        for (double const points : {6.0, 9.0, 36.0}) {
            RasterSurface surface = surface_of(10, 10, twips, twips);
            surface.state.font.size_points = points;
            double const pixels = surface.TextHeight("x") / twips;
            CHECK(pixels == doctest::Approx(std::round(pixels)));
            CHECK(pixels * twips == doctest::Approx(1.15 * points * 20).epsilon(0.1));
        }
}

TEST_CASE("a quarter turn shows the upright picture turned about the top-left point") {
    for (char const* text : {"Volt", "x\xCC\x81y\xC2\xB2", "\xF3\xB0\x80\x80"}) {
        const PixelBox upright = text_box(text, 0);
        int const left = upright.left - 200, top = upright.top - 200;
        int const right = upright.right - 200, bottom = upright.bottom - 200;
        CHECK(text_box(text, 90) == PixelBox{200 + top, 201 - right, 200 + bottom, 201 - left});
        CHECK(text_box(text, 180) == PixelBox{201 - right, 201 - bottom, 201 - left, 201 - top});
        CHECK(text_box(text, 270) == PixelBox{201 - bottom, 200 + left, 201 - top, 200 + right});
        CHECK(text_box(text, -90) == text_box(text, 270));
        CHECK(text_box(text, 720) == upright);
        // Just beside a quarter turn the glyphs are drawn in another way, at nearly the same place.
        const PixelBox beside = text_box(text, 89.9);
        const PixelBox turned = text_box(text, 90);
        CHECK(std::abs(beside.top - turned.top) <= 1);
        CHECK(std::abs(beside.left - turned.left) <= 1);
    }
}

TEST_CASE("bold is wider, italic leans, families differ, accents combine") {
    RasterSurface surface = surface_of(10, 10);
    auto const width = [&](Font const& font, char const* text) {
        surface.state.font = font;
        return surface.TextWidth(text);
    };
    CHECK(width({"Arial", 12, true}, "seasons") > width({"Arial", 12}, "seasons"));
    CHECK(width({"Courier New", 12}, "iii") == doctest::Approx(width({"Courier New", 12}, "WWW")));
    CHECK(width({"Times New Roman", 12}, "seasons") < width({"Arial", 12}, "seasons"));
    CHECK(width({"Arial", 12}, "e\xCC\x81") == doctest::Approx(width({"Arial", 12}, "\xC3\xA9")));
    CHECK(width({"No such font anywhere", 12}, "x") > 0);
    CHECK(text_box("III", 0, {"Arial", 24, false, true}).width() > text_box("III", 0, {"Arial", 24}).width());
}

TEST_CASE("a character that no font has is shown as a box, one that a fallback has is not") {
    RasterSurface surface = surface_of(60, 60);
    surface.state.font.size_points = 24;
    surface.TextOutA({10, 5}, 0, "\xF3\xB0\x80\x80"); // private use
    const PixelBox box = ink_box(surface);
    REQUIRE(!box.empty());
    int const middle_x = (box.left + box.right) / 2, middle_y = (box.top + box.bottom) / 2;
    CHECK(pixel(surface, middle_x, middle_y) == white);
    CHECK(pixel(surface, middle_x, box.bottom - 1) != white);
    CHECK(pixel(surface, middle_x, box.top + 1) != white);
    // Superscript four is in the fallback font only.
    CHECK(text_box("\xE2\x81\xB4", 0) != text_box("\xF3\xB0\x80\x80", 0));
}

TEST_CASE("absurd font sizes are drawn as sensible ones") {
    for (double const points : {0.0, -5.0, std::nan(""), 1e-9, 32767.0, 1e300}) {
        RasterSurface surface = surface_of(50, 50);
        surface.state.font.size_points = points;
        surface.TextOutA({5, 5}, 0, "Ag");
        surface.TextOutA({5, 5}, 33, "Ag");
        CHECK(std::isfinite(surface.TextWidth("Ag")));
        CHECK(surface.TextHeight("Ag") >= 15);
    }
}

TEST_CASE("without any font, printing fails once, and nothing else does") {
    auto const folder = std::filesystem::temp_directory_path() / "qvgraph_no_fonts";
    std::filesystem::create_directories(folder / "fonts");
    std::ofstream(folder / "fonts.conf")
        << "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
        << "<fontconfig><dir>" << (folder / "fonts").string() << "</dir><cachedir>"
        << (folder / "cache").string() << "</cachedir></fontconfig>";
    const Environment file("FONTCONFIG_FILE", (folder / "fonts.conf").string());
    auto const fonts = std::make_shared<FontLibrary>();
    RasterSurface first(15, 15, fonts), second(15, 15, fonts);
    second.Move(1500, 1500);
    CHECK(first.TextWidth("abcd") == doctest::Approx(4 * 0.55 * 180));
    CHECK(first.TextHeight("x") > 150);
    try {
        first.Print("text");
        FAIL("no fault");
    } catch (Fault const& fault) {
        CHECK(fault.number == 53);
        CHECK(fault.description.find("fonts-liberation") != std::string::npos);
    }
    second.Print("text");
    second.TextOutA({5, 5}, 30, "text");
    CHECK(ink_count(second) == 0);
    second.Line({0, 0}, {300, 300}, LineShape::Box, 0);
    CHECK(ink_count(second) > 0);
    std::filesystem::remove_all(folder);
}
