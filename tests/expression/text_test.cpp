#include "evaluate.h"
#include "expression/characters.h"
#include "expression/decimal.h"
#include "expression/engine.h"
#include "qvgraph/render_error.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;
using namespace qv::expression;

TEST_CASE("numbers in error texts") {
    const struct {
        double value;
        char const* text;
    } rows[] = {
        {0, "0"},
        {0.5, "0.5"},
        {12.3456, "12.346"},
        {123.456, "123.46"},
        {2500, "2500"},
        {999999.94, "999999.9"},
        {-12.3456, "-12.346"},
        {-2500, "-2500"},
        {0.0005, "5.E-4"},
        {0.001, "1.E-3"},
        {2000000, "2.E+6"},
        {1234567, "1.235E+6"},
        {1000000, "1000000"},
    };
    for (auto const& row : rows) CHECK(FormatReal(row.value) == row.text);
}

TEST_CASE("numbers read from text") {
    const struct {
        std::string text;
        std::optional<double> value;
    } rows[] = {
        {"12", 12},
        {" 1.5 ", 1.5},
        {"-.5", -0.5},
        {"+5.", 5},
        {"1E2", 100},
        {"1d-2", 0.01},
        {"1e-999", 0},
        {"", {}},
        {".", {}},
        {"-", {}},
        {"1e", {}},
        {"1e+", {}},
        {"1 2", {}},
        {"1x", {}},
        {"inf", {}},
        {"nan", {}},
        {"0x10", {}},
        {"1e999", {}},
        {"0e999999999999999999999", 0},
        {repeated("9", 400), {}},
        {"0." + repeated("0", 400) + "1", 0},
        {"1" + repeated("0", 400) + "e-400", 1},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        CHECK(numeric_text(row.text) == row.value);
    }
}

TEST_CASE("characters: any bytes have a count, and stepping through them ends exactly") {
    const struct {
        std::string text;
        std::size_t count;
    } rows[] = {
        {"", 0},
        {"abc", 3},
        {"\xC3\xA9", 1},
        {"\xE2\x82\xAC", 1},
        {"\xF0\x9F\x98\x80", 1},
        {"\xC3", 1},
        {"\xE2\x82", 2},
        {"\xC0\x80", 2},         // overlong
        {"\xED\xA0\x80", 3},     // a surrogate
        {"\xF4\x90\x80\x80", 4}, // beyond the last code point
        {std::string("a\0b", 3), 3},
    };
    for (auto const& row : rows) {
        CHECK(character_count(row.text) == row.count);
        CHECK(skip_characters(row.text, row.count) == row.text.size());
    }
}

TEST_CASE("errors are shown with a caret under their place") {
    qvExpression engine;
    compile(engine, "1 + ?");
    CHECK(render_error(engine) == "1 + ?\n    ^\nSyntax Error: Unknown symbol");
    compile(engine, "\"\xC3\xA9\" + ");
    CHECK(render_error(engine) == "\"\xC3\xA9\" + \n      ^\nSyntax Error: Unexpected end of expression");
    compile(engine, "1\n2");
    CHECK(render_error(engine) == "1 2\n ^\nUnknown operator '\n' ");
    value_of(engine, "1/0");
    CHECK(render_error(engine) == "1/0\nDiv by zero");
    engine.ClearError();
    CHECK(render_error(engine) == "");
    engine.UserFunc("f(x) = x + )");
    CHECK(render_error(engine) == "x + )\n    ^\nSyntax Error: Unknown symbol in User Function 'f'");
    CHECK(render_definition_error("f(x) = x + )", engine)
          == "f(x) = x + )\n           ^\nSyntax Error: Unknown symbol in User Function 'f'");
    compile(engine, repeated("1+", 100) + "?" + repeated("+1", 100));
    const std::string shown = render_error(engine);
    CHECK(shown
          == "..." + repeated("1+", 30) + "?" + repeated("+1", 9) + "+...\n" + std::string(63, ' ')
                 + "^\nSyntax Error: Unknown symbol");
}
