#include "render/text.h"

#include "TestControl.h"
#include "render/rich_text.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::render;
using qv::testing::RecordingSurface;
using qv::testing::TestControl;

TEST_CASE("font specifications") {
    TestControl control;
    struct Row {
        char const* specification;
        char const* name;
        double size;
        bool bold, italic, has_color;
        Color color;
    };
    for (auto const& row : {
             Row{"", "Arial", 9, false, false, false, 0},
             Row{"Font=Times New Roman|12|Bold", "Times New Roman", 12, true, false, false, 0},
             Row{"Italic|#255", "Arial", 9, false, true, true, 255},
             Row{"font=arial|bold", "arial", 9, true, false, false, 0},
             Row{"14.6|BOLDFACE|Font=", "", 15, true, false, false, 0},
             Row{"-3|0|x12|#", "Arial", 9, false, false, true, 0},
             Row{"8|10", "Arial", 10, false, false, false, 0},
         }) {
        CAPTURE(row.specification);
        const FontDetails details = GetFontDetails(control.state, row.specification);
        CHECK(details.font.name == row.name);
        CHECK(details.font.size_points == row.size);
        CHECK(details.font.bold == row.bold);
        CHECK(details.font.italic == row.italic);
        CHECK(details.has_color == row.has_color);
        CHECK(details.color == row.color);
    }
    CHECK(control.events.errors.empty());
}

TEST_CASE("a number too large is reported and what stood before it counts") {
    TestControl control;
    RecordingSurface surface;
    PrintText(control.state, surface, "A", {{0, 0}}, {"Bold|99999|Italic", 0});
    CHECK(control.events.errors
          == std::vector<std::string>{"Error 6 has occured in qvGraph.ocx, GetFontDetails: Overflow"});
    CHECK(surface.state.font.bold);
    CHECK_FALSE(surface.state.font.italic);
    CHECK(surface.lines("text").size() == 1);
}

TEST_CASE("alignment, lines and colours") {
    TestControl control;
    RecordingSurface surface;
    surface.state.ForeColor = 0x123456;
    auto const print = [&](TextPlace const& place, TextStyle const& style) {
        surface.log.clear();
        PrintText(control.state, surface, "AB\r\nC", place, style);
        return surface.log;
    };
    // Each line is centred by its own width; lines follow at the first line's height.
    CHECK(print({{1000, 1000}, Align::Centre, Align::Centre}, {"", 255})
          == std::vector<std::string>{"text 900,900 \"AB\" #0000FF Arial 9",
                                      "text 950,1100 \"C\" #0000FF Arial 9"});
    CHECK(print({{1000, 1000}, Align::End, Align::End}, {"", -1})[0]
          == "text 800,800 \"AB\" #123456 Arial 9");
    CHECK(surface.state.ForeColor == 0x123456);
    // A colour in the font wins and stays.
    CHECK(print({{0, 0}}, {"#7|10", 255})[0] == "text 0,0 \"AB\" #000007 Arial 10");
    CHECK(surface.state.ForeColor == 7);
    // Turned upward, the next line stands one text height to the right.
    auto const turned = print({{1000, 1000}, Align::Start, Align::Start, 90}, {"", 0});
    REQUIRE(turned.size() == 2);
    CHECK(turned[0] == "turned 1000,1000 \"AB\" at 90");
    CHECK(turned[1] == "turned 1200,1000.06 \"C\" at 90");
}

TEST_CASE("an angle whose tenths overflow stops at the first turned line") {
    TestControl control;
    RecordingSurface surface;
    PrintText(control.state, surface, "A\r\nB", {{0, 0}, Align::Start, Align::Start, 3277}, {"", 0});
    CHECK(surface.log.empty());
    CHECK(control.events.errors
          == std::vector<std::string>{"Error 6 has occured in qvGraph.ocx, PrintText: Overflow"});
}

TEST_CASE("lines printed as a block are centred on one another and aligned together") {
    TestControl control;
    RecordingSurface surface;
    auto const print = [&](TextPlace const& place) {
        surface.log.clear();
        PrintText(control.state, surface, "ABCD\nEF\r\nG", place, {"", 0});
        return surface.log;
    };
    auto const at_start = print({{1000, 1000}, Align::Start, Align::Start, 0, true});
    REQUIRE(at_start.size() == 3);
    CHECK(at_start[0].starts_with("text 1000,1000 \"ABCD\""));
    CHECK(at_start[1].starts_with("text 1100,1200 \"EF\""));
    CHECK(at_start[2].starts_with("text 1150,1400 \"G\""));
    auto const at_end = print({{1000, 1000}, Align::End, Align::End, 0, true});
    CHECK(at_end[0].starts_with("text 600,400 \"ABCD\""));
    CHECK(at_end[2].starts_with("text 750,800 \"G\""));
    CHECK(print({{1000, 1000}, Align::Centre, Align::Centre, 0, true})[1].starts_with("text 900,900"));
}

TEST_CASE("marked-up lines as runs") {
    auto const shown = [](std::string_view line) {
        std::string text;
        for (TextRun const& run : text_runs(line)) {
            CHECK((run.size < 1) == (run.rise != 0));
            text += run.rise > 0 ? "^" : run.rise < 0 ? "_" : "";
            text += run.size < 0.6 ? "^(" + run.text + ")" : run.size < 1 ? "(" + run.text + ")" : run.text;
        }
        return text;
    };
    std::pair<char const*, char const*> const cases[]{
        {"", ""},
        {"plain", "plain"},
        {"x^{2}", "x^(2)"},
        {"x^2y", "x^(2)y"},
        {"CO_{2}", "CO_(2)"},
        {"CO_2 + H_2O", "CO_(2) + H_(2)O"},
        {"CaCl_2, (OH)_2, x_1, \u03B1_0", "CaCl_(2), (OH)_(2), x_(1), \u03B1_(0)"},
        {"max_temp, sensor_1, Run_2, _3, a_b_4", "max_temp, sensor_1, Run_2, _3, a_b_4"}, // names
        {"e^\u03BBt", "e^(\u03BB)t"},
        {"10^{\u22123}", "10^(\u22123)"},
        {"e^{x^2}z", "e^(x)^^(2)z"},
        {"x_{a_{b}}", "x_(a)_^(b)"},
        {"x^{}y", "xy"},
        {"2^{{a}}{b}", "2^({a}){b}"},
        {"x\\^2 \\{ \\\\", "x^2 { \\"},
        {"x^{a\\}}", "x^(a})"},
        {"x^{2", "x^{2"}, // unbalanced braces: as it is
        {"x}^{2}{", "x}^{2}{"},
        {"a ^ b_", "a ^ b_"},
        {"^", "^"},
        {"\\", "\\"},
        {"x^^2", "x^^(2)"},
    };
    for (auto const& row : cases) {
        CHECK_MESSAGE(shown(row.first) == row.second, row.first);
        // What is escaped stands for itself.
        CHECK_MESSAGE(text_runs(escaped(row.first))[0].text == row.first, row.first);
    }
    CHECK(read_text("CO_{2}, x^{2}\ny^{\u22121} z^{n}") == "CO2, x\u00B2\ny\u207B\u00B9 zn");
}

TEST_CASE("raised and lowered text: smaller, on its level, as wide as it is drawn, at any angle") {
    TestControl control;
    RecordingSurface surface;
    auto const print = [&](std::string_view text, TextPlace const& place) {
        surface.log.clear();
        PrintText(control.state, surface, text, place, {"Arial|10", 0});
        return surface.log;
    };
    CHECK(print("x^{2}y", {{1000, 1000}})
          == std::vector<std::string>{"text 1000,1000 \"x^{2}y\" #000000 Arial 10"});
    control.state.RichText = true;
    CHECK(print("x^{2}y", {{1000, 1000}})
          == std::vector<std::string>{"text 1000,1000 \"x\" #000000 Arial 10",
                                      "text 1100,988 \"2\" #000000 Arial 7",
                                      "text 1200,1000 \"y\" #000000 Arial 10"});
    CHECK(surface.state.font.size_points == 10);
    CHECK(print("a_{b}", {{1000, 1000}, Align::End})
          == std::vector<std::string>{"text 800,1000 \"a\" #000000 Arial 10",
                                      "text 900,1078 \"b\" #000000 Arial 7"});
    CHECK(print("a_{b}", {{1000, 1000}, Align::Start, Align::Start, 90})
          == std::vector<std::string>{"turned 1000,1000 \"a\" at 90", "turned 1078.03,900.02 \"b\" at 90"});
    CHECK(text_block(surface, "x^{2}\nabc", Markup::Read).width == 300);
    CHECK(text_block(surface, "x^{2}\nabc", Markup::Ignored).width == 500);
}

TEST_CASE("text broken into lines of a width") {
    RecordingSurface surface;
    double const room = surface.TextWidth("twelve chars");
    struct Row {
        char const* text;
        Markup markup;
        char const* broken;
    };
    for (auto const& row : {
             Row{"short", Markup::Read, "short"},
             Row{"one two three four", Markup::Read, "one two\nthree four"},
             Row{"twelve chars and more", Markup::Read, "twelve chars\nand more"},
             Row{"/srv/data/x_1/detector-two.csv", Markup::Ignored, "/srv/data/x_\n1/detector-\ntwo.csv"},
             Row{"Feinstaubmessstation", Markup::Read, "Feinstaubm\nessstation"},
             Row{"of Feinstaubmessstationen", Markup::Read, "of\nFeinstaubme\nssstationen"},
             Row{"ääääääääääääääää", Markup::Read, "ääääää\nääääää\nääää"},
             Row{"aaaaaaaaaae\u0301e\u0301e\u0301", Markup::Read, "aaaaaaaaaa\ne\u0301e\u0301e\u0301"},
             Row{"abcdefghij^{klmno}pqrst", Markup::Read, "abcdefghi\nj^{klmno}pqrst"},
         }) {
        CAPTURE(row.text);
        CHECK(broken_text(surface, row.text, room, row.markup) == row.broken);
    }
    CHECK(broken_text(surface, "wide", 1, Markup::Read) == "w\ni\nd\ne");
}
