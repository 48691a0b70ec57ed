#include "evaluate.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;

TEST_CASE("a function computes from its parameters alone") {
    qvExpression engine;
    engine.Variable("k", 3);
    engine.UserFunc("  hyp (a, b) = SQR(a^2 + b^2)");
    engine.UserFunc("g(x) = x * k");
    engine.UserFunc("sub(a,b,c) = a - b - c");
    engine.UserFunc("empty() = 2");
    CHECK(engine.ErrorCode() == 0);
    CHECK(engine.NumUserFunctions == 4);
    const struct {
        std::string text;
        Variant value;
    } rows[] = {
        {"hyp(3, 4)", 5.0},      {"HYP(k, hyp(0, 4)) + 1", 6.0}, {"g(5)", 0}, {"1 + sub(10, 2, 3) * 2", 11},
        {"sub(\"a\", 1, 1)", 0}, // faults in the body are passed over like others
        {"empty(1)", 2},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        CHECK(value_of(engine, row.text) == row.value);
        CHECK(error_of(engine) == "");
    }
    compile(engine, "hyp(3)");
    CHECK(error_of(engine) == "5 Wrong number of arguments for hyp");
    compile(engine, "empty()");
    CHECK(engine.ErrorCode() == 1);
    compile(engine, "hyp(3, 4)");
    CHECK(engine.RPNExpression() == " 3 4 hyp");
}

TEST_CASE("definitions that are none") {
    const struct {
        std::string text, error;
    } rows[] = {
        {"", ""},
        {"f x = x", "9 Invalid User Function Definition: f"},
        {"f(x = x", "9 Invalid User Function Definition: f"},
        {"f(x) x", "9 Invalid User Function Definition: f"},
        {"f(", "9 Invalid User Function Definition: f"},
        {"f(x)", "9 Invalid User Function Definition: f"},
        {"sin(x) = x", "10 (User-defined Functions)  sin(...) is a Reserved Name."},
        {"f(cos) = 1", "10 (User-defined Functions)  cos(...) is a Reserved Name."},
        {"Hyp(x) = x", "10 (User-defined Functions)  Hyp(...) has already been reserved as a User Function."},
        {"f(x) = x +", "1 Syntax Error: Unexpected end of expression in User Function 'f'"},
        {"f(x) = hyp(x, 1)", "2 Unknown function: hyp in User Function 'f'"},
        {"f(" + repeated("a,", 20) + "b) = 1", "9 Invalid User Function Definition: f"},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        engine.UserFunc("hyp(a, b) = SQR(a^2 + b^2)");
        engine.UserFunc(row.text);
        CHECK(error_of(engine) == row.error);
    }
}

TEST_CASE("a body that does not compile leaves its position and a function that yields empty") {
    qvExpression engine;
    engine.UserFunc("f(x) = x +");
    CHECK(engine.ErrorSource() == -1);
    CHECK(engine.ErrorPos() == 4);
    CHECK(engine.NumUserFunctions == 1);
    for (int call = 0; call < 2; ++call) {
        CHECK(value_of(engine, "f(1) + 1").is_empty());
        CHECK(error_of(engine) == "1 Syntax Error: Unexpected end of expression in User Function 'f'");
    }
}

TEST_CASE("a failure inside a body counts like any other, and the next call starts anew") {
    qvExpression engine;
    engine.DefaultValue = "early";
    engine.UserFunc("inverse(x) = 1 / x");
    engine.UserFunc("many(x) = FACT(x)");
    engine.UserFunc("root(x) = SQR(x)");
    CHECK(value_of(engine, "inverse(0) + 1") == Variant("early"));
    CHECK(error_of(engine) == "6 Div by zero in User Function 'inverse'");
    engine.ClearError();
    CHECK(value_of(engine, "inverse(2)") == Variant(0.5));
    // An error after which an evaluation goes on does so across the call.
    CHECK(value_of(engine, "many(170) + 1") == Variant(1.0));
    CHECK(error_of(engine) == "6 FACT(170) in User Function 'many'");
    // A fault follows the caller's mode.
    CHECK(value_of(engine, "root(-4) + 1") == Variant(-3));
    engine.RaiseErrors = false;
    CHECK(value_of(engine, "root(-4) + 1") == Variant("early"));
    CHECK(engine.ErrorCode() == 0);
    CHECK(value_of(engine, "root(4) + 1") == Variant(3.0));
}

TEST_CASE("a body creates variables where its engine may") {
    qvExpression engine;
    engine.AutoCreateVariables = false;
    engine.UserFunc("f(a) = a * speed");
    CHECK(error_of(engine) == "3 Undefined variable: speed in User Function 'f'");
    engine.Reset();
    engine.UserFunc("f(a) = a * speed");
    CHECK(engine.ErrorCode() == 3);
}

TEST_CASE("the place of a mistake in a definition") {
    const struct {
        std::string text;
        int position;
    } rows[] = {
        {"f(a) = 1/(a-)", 13},  {"  f( a )=  1 +", 15}, {"f(a) = \"\xC3\xA9\" + ?", 14},
        {"f x = x", 3},         {"f(a, sin) = a", 6},   {"not(a) = a", 1},
        {"f(a; b) = a", 4},     {"f(a) a", 6},          {"f(a) = 1/(1-a)", 0},
        {" f(a) = ? ' why", 8},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        engine.UserFunc(row.text);
        CHECK(engine.DefinitionErrorPos() == row.position);
    }
}

TEST_CASE("twenty functions, and again after a reset") {
    qvExpression engine;
    for (int k = 1; k <= 20; ++k) engine.UserFunc("f" + std::to_string(k) + "(x) = x + " + std::to_string(k));
    CHECK(value_of(engine, "f1(f20(0))") == Variant(21));
    engine.UserFunc("f21(x) = x");
    CHECK(error_of(engine) == "8 Too Many User Functions");
    CHECK(engine.ErrorSource() == -21);
    CHECK(engine.NumUserFunctions == 20);
    engine.ClearError();

    compile(engine, "1 + f3(2)");
    engine.ResetUserFuncs();
    engine.Value(); // the slot is free now; its value is open, the call harmless
    CHECK(engine.UserFuncText(1) == "");
    std::string text = "f(x) = x*2 ' double";
    engine.UserFunc(text);
    CHECK(text == "f(x) = x*2");
    CHECK(engine.UserFuncText(1) == "f(x) = x*2");
    CHECK(engine.UserFuncText(2) == "");
    CHECK(value_of(engine, "f(4)") == Variant(8));
    CHECK(value_of(engine, "USER2").is_empty());
}

TEST_CASE("two parameters of one name are one variable and a fault at the call") {
    qvExpression engine;
    engine.UserFunc("f(x, x) = x");
    CHECK(value_of(engine, "f(1, 2)") == Variant(1));
    engine.RaiseErrors = false;
    CHECK(value_of(engine, "f(1, 2)").is_empty());
    CHECK(engine.ErrorCode() == 0);
    double const x[] = {1};
    double y[1];
    engine.ValueOver("x", x, y);
    CHECK(error_of(engine).find("a parameter of the user function") != std::string::npos);
}
