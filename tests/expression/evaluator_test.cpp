#include "evaluate.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

using namespace qv;
using namespace qv::test;

namespace {

Variant i16(int value) {
    return static_cast<std::int16_t>(value);
}

struct Row {
    std::string text;
    Variant value;
};

void check_values(std::span<Row const> rows) {
    for (Row const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        const Variant value = value_of(engine, row.text);
        CHECK(error_of(engine) == "");
        CHECK(text_of(value) == text_of(row.value));
        CHECK(value == row.value);
    }
}

} // namespace

TEST_CASE("numbers: value and kind") {
    const Row rows[] = {
        {"1 + 2", 3},
        {"1 + 2.0", 3.0},
        {"2147483647 + 1", 2147483648.0},
        {"-2147483647 - 2", -2147483649.0},
        {"65536 * 65536", 4294967296.0},
        {"-(-2147483647 - 1)", 2147483648.0},
        {"(1 < 2) + (1 < 2)", i16(2)},
        {"(1 < 2) * 3", 3},
        {"7 / 2", 3.5},
        {"6 / 2", 3.0},
        {"7 \\ 2", 3},
        {"-7 \\ 2", -3},
        {"2.5 \\ 1", 2},
        {"3.5 \\ 1", 4},
        {"7 \\ 1.5", 3},
        {"7 MOD 3", 1},
        {"-7 MOD 3", -1},
        {"7 MOD -3", 1},
        {"2.5 MOD 2", 0},
        {"-4 MOD 2", 0},
        {"2 ^ 10", 1024.0},
        {"(-2) ^ 3", -8.0},
        {"(-2) ^ -3", -0.125},
        {"(-2) ^ 2", 4.0},
        {"(-1) ^ 100", 1.0},
        {"0 ^ 0", 1.0},
        {"2^3^2", 64.0},
        {"-2^2", 4.0},
        {"PI", 3.14159265358979},
        {"DEG", 0.017453292519943295},
        {"ABS(-3)", 3},
        {"ABS(-3.5)", 3.5},
        {"INT(-2.5)", -3.0},
        {"FIX(-2.5)", -2.0},
        {"INT(-3)", -3},
        {"SGN(-2.5)", i16(-1)},
        {"SGN(0)", i16(0)},
        {"SQR(9)", 3.0},
        {"LOG(100)", 2.0},
        {"LN(1)", 0.0},
        {"EXP(0)", 1.0},
        {"ASIN(1)", 1.570796326794895},
        {"ASIN(-1)", -1.570796326794895},
        {"ACOS(1)", 0.0},
        {"ACOS(-1)", 3.14159265358979},
        {"ATN(1)", std::atan(1.0)},
        {"ASIN(0.5)", std::atan(0.5 / std::sqrt(0.75))},
        {"SINH(1)", (std::exp(1.0) - std::exp(-1.0)) / 2},
        {"ACOSH(1)", 0.0},
        {"ATANH(0)", 0.0},
        {"FACT(3.5)", 24.0},
        {"FACT(2.5)", 2.0},
        {"FACT(0)", 1.0},
        {"NCR(5, 2)", 10.0},
        {"NPR(5, 2)", 20.0},
        {"MIN(2, 1.5)", 1.5},
        {"MAX(2, 1.5)", 2},
        {"IIF(2 > 1, 10, 20.5)", 10},
        {"IIF(0, 10, 20.5)", 20.5},
    };
    check_values(rows);
}

TEST_CASE("truth: greater than 0, given as 16-bit 1 and 0") {
    const Row rows[] = {
        {"1 < 2", i16(1)},         {"2 <= 1", i16(0)},     {"2 >= 2.0", i16(1)},
        {"1 <> 1", i16(0)},        {"NOT 0", i16(1)},      {"NOT 0.5", i16(0)},
        {"NOT -1", i16(1)},        {"2 AND -1", i16(0)},   {"-1 OR 0", i16(0)},
        {"1 XOR 2", i16(0)},       {"1 XOR 0", i16(1)},    {"\"abc\" = \"ABC\"", i16(1)},
        {"\"a\" < \"B\"", i16(1)}, {"99 < \"1\"", i16(1)}, {"\"1\" = 1", i16(0)},
        {"\"\" > 5", i16(1)},      {"NOT \"x\"", i16(0)},  {"\"-1\" AND 1", i16(1)},
    };
    check_values(rows);
}

TEST_CASE("texts") {
    const Row rows[] = {
        {"\"ab\" & \"cd\"", "abcd"},
        {"1 & 2.50", "12.5"},
        {"1E20 & \"\"", "1E+20"},
        {"\"a\" + \"b\"", "ab"},
        {"\"2\" + 3", 5.0},
        {"\" 2.5e1 \" * 2", 50.0},
        {"\"3\" - \"1\"", 2.0},
        {"-\"2\"", -2.0},
        {"SQR(\"9\")", 3.0},
        {"LEN(\"h\xC3\xA9!\")", 3},
        {"LEN(12.5)", 4},
        {"ASC(\"A\")", i16(65)},
        {"ASC(\"\xC3\xA9\")", i16(233)},
        {"\"<\" & SPACE(3) & \">\"", "<   >"},
        {"STRING(3, \"ab\")", "aaa"},
        {"STRING(2, 233)", "\xC3\xA9\xC3\xA9"},
        {"LEFT(\"abc\", 5)", "abc"},
        {"LEFT(\"\xC3\xA9z\", 1)", "\xC3\xA9"},
        {"RIGHT(\"abc\", 2)", "bc"},
        {"MID(\"abcdef\", 2, 3)", "bcd"},
        {"MID(\"abc\", 9, 3)", ""},
        {"INSTR(1, \"abc\", \"B\")", 2},
        {"INSTR(3, \"abcabc\", \"ab\")", 4},
        {"INSTR(1, \"aaab\", \"aab\")", 2},
        {"INSTR(1, \"\xC3\xA9z\", \"Z\")", 2},
        {"INSTR(1, \"abc\", \"x\")", 0},
        {"INSTR(9, \"abc\", \"a\")", 0},
        {"\"b\"\"c\"", "b\"c"},
    };
    check_values(rows);
}

TEST_CASE("errors end the evaluation with the default value and block the engine until cleared") {
    const struct {
        std::string text, error;
    } rows[] = {
        {"1/0", "6 Div by zero"},
        {"0/0.0", "6 Div by zero"},
        {"1 \\ 0", "6 Div by zero"},
        {"(-8) ^ (1/3)", "6 (-8) ^ 0.333"},
        {"(-2) ^ 101", "6 (-2) ^ 101"},
        {"LOG(0)", "6 LOG(0)"},
        {"LN(-1234567)", "6 LN(-1.235E+6)"},
        {"ASIN(1.5)", "6 ASIN(1.5)"},
        {"ACOS(2)", "6 ACOS(2)"},
        {"ACOSH(0.5)", "6 ACOSH(0.5)"},
        {"ATANH(-1)", "6 ATANH(-1)"},
        {"ATANH(2)", "6 ATANH(2)"},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        engine.DefaultValue = -7.5;
        CHECK(value_of(engine, row.text) == Variant(-7.5));
        CHECK(error_of(engine) == row.error);
        CHECK(engine.Value().is_empty());
        engine.ClearError();
        CHECK(engine.Value() == Variant(-7.5));
    }
}

TEST_CASE("errors of factorials let the evaluation go on") {
    const struct {
        std::string text, error;
        Variant value;
    } rows[] = {
        {"FACT(170) + 1", "6 FACT(170)", 1.0},
        {"FACT(-1)", "6 FACT(-1)", 0.0},
        {"NCR(3, 5)", "6 nCr(3,5)", 5},
        {"NPR(170, 2.5)", "6 nPr(170,2.5)", 2.5},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        CHECK(value_of(engine, row.text) == row.value);
        CHECK(error_of(engine) == row.error);
    }
}

TEST_CASE("a fault skips its operation or, without RaiseErrors, ends the evaluation; neither is recorded") {
    const Row rows[] = {
        {"SQR(-4)", -4}, // the accumulator keeps what it held
        {"5 MOD 0", 0},
        {"5 \\ 0.3", 0.3},
        {"1 + EXP(1000)", 1001},
        {"10 ^ 400 + 1", 401},
        {"0 ^ -1", -1},
        {"ATANH(1)", 1},
        {"1 + \"x\"", "x"},
        {"1E308 * 10", 10},
        {"3000000000.0 MOD 7", 7},
        {"ASC(\"\")", ""},
        {"SPACE(-1)", -1},
        {"MID(\"abc\", 0, 1)", 1},
        {"ARRAY(1, 2, 3)", 3},
        {"ABS(-2147483647 - 1)", -2147483647 - 1},
    };
    check_values(rows);
    for (Row const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        engine.RaiseErrors = false;
        engine.DefaultValue = "default";
        CHECK(value_of(engine, row.text) == Variant("default"));
        CHECK(engine.ErrorCode() == 0);
    }
}

TEST_CASE("a forty-first stack entry is a fault that loses the entry") {
    qvExpression engine;
    engine.RaiseErrors = false;
    engine.UserFunc("f(a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p,q,r,s,t) = a + t");
    const std::string arguments = repeated("1,", 19);
    CHECK(value_of(engine, "f(" + arguments + "f(" + arguments + "1))") == Variant(3));
    CHECK(value_of(engine, "f(" + arguments + "f(" + arguments + "MAX(1, MAX(1, 1))))").is_empty());
    CHECK(engine.ErrorCode() == 0);
}

TEST_CASE("random numbers are below their factor and single for 16-bit factors") {
    qvExpression engine;
    compile(engine, "RND(100.0)");
    double low = 100;
    double high = 0;
    for (int i = 0; i < 1000; ++i) {
        double const value = number_of<double>(engine.Value());
        low = std::min(low, value);
        high = std::max(high, value);
    }
    CHECK(low >= 0);
    CHECK(low < 5);
    CHECK(high > 95);
    CHECK(high < 100);
    CHECK(std::holds_alternative<float>(value_of(engine, "RND(1 < 2)")));
    CHECK(std::holds_alternative<double>(value_of(engine, "RND(1)")));
}

TEST_CASE("variables are read when the program runs, whatever they hold") {
    qvExpression engine;
    compile(engine, "x^2");
    engine.Variable("x", 3);
    CHECK(engine.Value() == Variant(9.0));
    engine.Variable("X", 4);
    CHECK(engine.Value() == Variant(16.0));

    auto const x = engine.m_Variables.find("x");
    const Row rows[] = {{"x", "3"}, {"x + 1", 4.0}, {"x & \"!\"", "3!"}};
    for (Row const& row : rows) {
        x->Value = "3";
        CHECK(value_of(engine, row.text) == row.value);
    }
    x->Value = true;
    CHECK(value_of(engine, "x + 0.5") == Variant(-0.5));
    x->Value = TextList{"a"};
    CHECK(value_of(engine, "1 + x + 1") == Variant(1)); // both sums are faults
    x->Value = std::numeric_limits<double>::infinity();
    CHECK(value_of(engine, "x > 1") == i16(1));
    engine.ResetVariables();
    CHECK(engine.Value() == i16(1)); // the program keeps its variable alive
}

TEST_CASE("a program without its first steps runs after the error is cleared") {
    for (char const* text : {"1 + 2 * (3 + ?", "NOT ?", "1 + 2) + 3", "IIF(1, 2, ?)", "99999999999 * 2 "}) {
        qvExpression engine;
        compile(engine, text);
        CHECK(engine.ErrorCode() != 0);
        engine.ClearError();
        engine.Value();
        CHECK(engine.ErrorCode() == 0);
    }
}
