#include "evaluate.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdlib>
#include <new>

namespace {
std::size_t allocations = 0;
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

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
    CHECK(error_of(engine) == "11 Error 13 has occured in qvMathExprE:ValueOver\r\nType mismatch");
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
