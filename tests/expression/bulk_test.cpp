#include "counted_memory.h"
#include "evaluate.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstddef>

using namespace qv;
using namespace qv::test;

TEST_CASE("evaluating a numeric program allocates nothing") {
    for (char const* text : {"x^2*SIN(x)+3*x-1", "IIF(x > 1, x, 2) + FACT(3)", "A(1) + x", "SQR(-x) + x"}) {
        CAPTURE(text);
        qvExpression engine;
        engine.DefineArray("A(2)");
        compile(engine, text);
        double const x = 3;
        engine.Variable("x", x);
        engine.Value(1);
        std::size_t const before = allocations;
        for (int i = 0; i < 100; ++i) {
            engine.Variable("x", x);
            engine.Value(1);
        }
        CHECK(allocations == before);
    }
}

TEST_CASE("failing samples are not-a-number and the first error is kept") {
    qvExpression engine;
    compile(engine, "1 / (x - 2) + LN(x)");
    double const x[] = {1, 2, 3, -1, 4};
    double y[5];
    engine.ValueOver("x", x, y);
    CHECK(y[0] == -1);
    CHECK(std::isnan(y[1]));
    CHECK(y[2] == 1 + std::log(3.0));
    CHECK(std::isnan(y[3]));
    CHECK(std::isfinite(y[4]));
    CHECK(error_of(engine) == "6 Div by zero");
    CHECK(engine.VariableValue("x") == 4);

    engine.ValueOver("x", x, y); // nothing is evaluated while an error is pending
    CHECK(std::isnan(y[0]));
    engine.ClearError();
    engine.ValueOver("x", std::span(x).first(1), std::span(y).first(1));
    CHECK(y[0] == -1);
    CHECK(engine.ErrorCode() == 0);
}

TEST_CASE("programs of texts and constants run over arrays too") {
    qvExpression engine;
    double const x[] = {1, 2, 3};
    double y[3];
    compile(engine, "LEN(STRING(x, \"a\")) + x");
    engine.ValueOver("x", x, y);
    CHECK(y[2] == 6);
    compile(engine, "2 * PI * z");
    engine.Variable("z", 2);
    engine.ValueOver("x", x, y);
    CHECK(y[1] == 2 * 3.14159265358979 * 2);
    compile(engine, "\"abc\"");
    engine.ValueOver("x", x, y);
    CHECK(std::isnan(y[1]));
    CHECK(error_of(engine)
          == "11 Error 13 has occured in qvMathExprE:ValueOver\r\nType mismatch: the value is a text that "
             "reads as no number");
    engine.ClearError();
    engine.ValueOver("x", x, std::span(y).first(2));
    CHECK(error_of(engine)
          == "11 Error 5 has occured in qvMathExprE:ValueOver\r\nInvalid procedure call or argument");
}

TEST_CASE("values may replace their samples") {
    qvExpression engine;
    compile(engine, "1 / x");
    std::vector<double> values(300, 4);
    values[200] = 0;
    engine.ValueOver("x", values, values);
    CHECK(values[299] == 0.25);
    CHECK(std::isnan(values[200]));
    CHECK(engine.VariableValue("x") == 4);
}

TEST_CASE("every sample starts anew, in user functions too, and the first failure is told") {
    qvExpression engine;
    engine.UserFunc("f(a) = 1/(a-1)");
    double const x[] = {0, 1, 2, 3};
    double y[4];
    compile(engine, "f(x)");
    engine.ValueOver("x", x, y);
    CHECK(y[0] == -1);
    CHECK(std::isnan(y[1]));
    CHECK(y[2] == 1);
    CHECK(y[3] == 0.5);
    CHECK(error_of(engine) == "6 Div by zero in User Function 'f'");

    // What the early end gives is no value, whatever it is.
    for (Variant const& early : {Variant("text"), Variant(7)}) {
        engine.DefaultValue = early;
        compile(engine, "1/(x - 2)");
        engine.ValueOver("x", x, y);
        CHECK(std::isnan(y[2]));
        CHECK(error_of(engine) == "6 Div by zero");
    }

    // A fault leaves the operand, or, without RaiseErrors, fails.
    engine.UserFunc("root(a) = SQR(a - 2)");
    for (char const* text : {"SQR(x - 2)", "root(x)"}) {
        CAPTURE(text);
        compile(engine, text);
        engine.RaiseErrors = true;
        engine.ValueOver("x", x, y);
        CHECK(y[0] == -2);
        CHECK(engine.ErrorCode() == 0);
        engine.RaiseErrors = false;
        engine.ValueOver("x", x, y);
        CHECK(std::isnan(y[0]));
        CHECK(y[3] == 1);
        CHECK(engine.ErrorDescription().find("SQR has no value here") != std::string::npos);
    }
}

TEST_CASE("the name of a variable is neither empty nor a number nor a character") {
    static_assert(!std::is_constructible_v<NameOrNumber, char>);
    static_assert(!std::is_constructible_v<NameOrNumber, char8_t>);
    static_assert(std::is_constructible_v<NameOrNumber, std::uint8_t>);
    qvExpression engine;
    for (int i = 0; i < 2; ++i) {
        engine.Variable("", 1.0);
        CHECK(error_of(engine)
              == "11 Error 5 has occured in qvMathExprE:Variable\r\nthe name of a variable is empty");
        engine.ClearError();
        engine.Variable(std::string(), 1.0);
        CHECK(engine.ErrorCode() == 11);
        engine.ClearError();
    }
    compile(engine, "x");
    double const x[] = {3};
    for (char const* name : {"2.5", "", " 1e3"}) {
        double y[] = {0};
        engine.ValueOver(name, x, y);
        CHECK(std::isnan(y[0]));
        CHECK(error_of(engine).starts_with("11 Error 5 has occured in qvMathExprE:ValueOver"));
        engine.ClearError();
    }
    CHECK(engine.NumVariables() == 1);
}

TEST_CASE("no calls make an engine take a gigabyte") {
    constexpr std::size_t gigabyte = 1000000000;
    qvExpression engine;
    auto const fails_within = [&](std::string const& text) {
        CAPTURE(text.substr(0, 60));
        most_bytes_held = bytes_held;
        value_of(engine, text);
        CHECK(error_of(engine).starts_with("11 Error 7 has occured in qvMathExprE:"));
        CHECK(error_of(engine).find("Out of memory: ") != std::string::npos);
        CHECK(most_bytes_held < gigabyte);
        engine.ClearError();
    };
    const std::string large = "STRING(16777216, \"\xF0\x9F\x98\x80\")"; // 64 MiB
    std::string nested = large;
    for (int i = 0; i < 17; ++i) nested = large + " & (" + nested + ")";
    fails_within(nested);
    fails_within("SPACE(20000000)");

    // Twenty functions of twenty parameters that keep nothing.
    engine.UserFunc("f(a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p,q,r,s,t) = LEN(t)");
    fails_within("f(" + repeated(large + ",", 19) + large + ")");
    std::size_t const before = bytes_held;
    CHECK(value_of(engine, "f(" + repeated("1,", 19) + "SPACE(1000000))") == Variant(1000000));
    CHECK(bytes_held < before + 100000);

    // Formulas and variables that are kept.
    const std::string literal = "LEN(\"" + std::string(std::size_t{4} << 20, 'a') + "\")";
    int kept = 0;
    while (kept < 100 && engine.ErrorCode() == 0) compile(engine, literal), ++kept;
    CHECK(engine.ErrorDescription().find("ResetCompiledExpressions") != std::string::npos);
    CHECK(kept > 10);
    engine.ResetCompiledExpressions();
    CHECK(value_of(engine, literal) == Variant(4 << 20));
    const std::string name(std::size_t{1} << 20, 'v');
    for (int i = 0; i < 100; ++i) engine.Variable(name + std::to_string(i), 1);
    CHECK(engine.ErrorDescription().find("ResetVariables") != std::string::npos);
    CHECK(most_bytes_held < gigabyte);
    engine.Reset();
    engine.Variable(name, 1);
    CHECK(engine.VariableValue(name) == 1);
}

TEST_CASE("a sample reads and writes a bounded number of characters") {
    qvExpression engine;
    // Every search reads the whole text again.
    std::string text = "0";
    for (int i = 0; i < 40; ++i) text += " + INSTR(1, t, \"b\")";
    compile(engine, text);
    engine.m_Variables.find("t")->Value = std::string(4000000, 'a');
    CHECK(engine.Value().is_empty());
    CHECK(error_of(engine).starts_with("11 Error 7 has occured in qvMathExprE:Value\r\nOut of memory: "));
    engine.ClearError();
    engine.UserFunc("f(t) = " + text);
    CHECK(value_of(engine, "f(SPACE(4000000))").is_empty());
    CHECK(engine.ErrorCode() == 11);
    // Reading a number out of a text takes longest.
    engine.UserFunc("g(t) = " + repeated("t * t + ", 30) + "1");
    CHECK(value_of(engine, "g(STRING(100000, \"0\"))") == Variant(1.0));
    CHECK(value_of(engine, "g(STRING(400000, \"0\"))").is_empty());
    CHECK(error_of(engine).find("144 MiB") != std::string::npos);
    // A sample after one that took too much has the whole room again.
    double const x[] = {0, 1};
    double y[2];
    compile(engine, "LEN(SPACE(9000000 + 16777216 * x))");
    engine.ValueOver("x", x, y);
    CHECK(y[0] == 9000000);
    CHECK(std::isnan(y[1]));
    CHECK(engine.ErrorDescription().find("16 Mi characters") != std::string::npos);
}
