#include "evaluate.h"

#include <doctest/doctest.h>

#include <numeric>

using namespace qv;
using namespace qv::test;

namespace {

std::vector<std::int16_t> bounds_of(qvExpression& engine, std::string const& name) {
    std::int16_t index = 0;
    std::int16_t dimensions = 0;
    std::vector<std::int16_t> bounds;
    engine.GetArrayDetails(name, index, dimensions, bounds);
    if (index == 0) return {};
    return {bounds.begin() + 1, bounds.begin() + 1 + dimensions};
}

using Bounds = std::vector<std::int16_t>;

} // namespace

TEST_CASE("array definitions") {
    const struct {
        std::string text, name, error;
        Bounds bounds;
    } rows[] = {
        {"A(3, 2)", "a", "", {3, 2}},
        {" B b ( 1 0 ) ' ten", "B b", "", {10}},
        {"C(2.5, 3.5, 1e2)", "C", "", {2, 4, 100}},
        {"D()", "D", "", {0}},
        {"E(99999, 2)", "E", "", {0, 2}},
        {"F(4", "F", "", {4}},
        {"A 3", "A", "12 A 3: '(' expected for array definition.", {}},
        {"A(1, 2, 3, 4, 5)", "A", "12 A: Too many dimensions for array ", {}},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        engine.DefineArray(row.text);
        CHECK(error_of(engine) == row.error);
        CHECK(bounds_of(engine, row.name) == row.bounds);
        CHECK(engine.ArraysCount() == (row.error.empty() ? 1 : 0));
    }
}

TEST_CASE("an array is redefined in place") {
    qvExpression engine;
    engine.DefineArray("A(2)");
    engine.DefineArray("B(2)");
    engine.ArrayValue(1, 5, 2);
    engine.DefineArray("a(1, 1)");
    CHECK(engine.ArraysCount() == 2);
    CHECK(engine.ArrayName(1) == "a");
    CHECK(engine.ArrayName(3) == "");
    CHECK(engine.GetArrayValue(1, 1, 1) == Variant(0.0));
}

TEST_CASE("elements are stored and read by index, from outside and in formulas") {
    qvExpression engine;
    engine.DefineArray("A(10, 5)");
    for (std::int16_t i = 0; i <= 10; ++i)
        for (std::int16_t j = 0; j <= 5; ++j) engine.ArrayValue(1, 10 * i + j, i, j);
    CHECK(engine.GetArrayValue(1, 7, 3) == Variant(73.0));
    CHECK(value_of(engine, "A(7, 3) + a(1 + 1, 2.5)") == Variant(73.0 + 22.0));
    CHECK(engine.GetArrayValue(1, 11, 0) == Variant(std::int16_t{0}));
    CHECK(engine.GetArrayValue(2, 0) == Variant(std::int16_t{0}));
    engine.ArrayValue(1, 1, 11, 0);
    CHECK(engine.ErrorCode() == 0);
    CHECK(engine.GetArrayValue(1, -1, 0) == Variant(std::int16_t{0}));
    CHECK(error_of(engine)
          == "11 Error 9 has occured in qvMathExprE:GetArrayValue\r\nSubscript out of range: index -1 was "
             "asked for, there are 0 to 10");
    engine.ClearError();
    // A value that is stored nowhere need not be a number.
    engine.ArrayValue(2, "text", 0);
    engine.ArrayValue(1, "text", 11, 0);
    CHECK(engine.ErrorCode() == 0);
    engine.ArrayValue(1, "text", 1, 1);
    CHECK(error_of(engine) == "11 Error 13 has occured in qvMathExprE:ArrayValue\r\nType mismatch");
    CHECK(engine.GetArrayValue(1, 1, 1) == Variant(11.0));
    engine.ClearError();
    engine.ArrayValue(1, "five", 1, 1);
    CHECK(error_of(engine) == "11 Error 13 has occured in qvMathExprE:ArrayValue\r\nType mismatch");
}

TEST_CASE("an index out of bounds in a formula is an error, and the evaluation goes on") {
    const struct {
        std::string text, error;
        Variant value;
    } rows[] = {
        {"A(3)", "5 A(2):  Array element1 is out of bounds, value =3", 3},
        {"A(3) + 1", "5 A(2):  Array element1 is out of bounds, value =3", 4},
        {"A(-0.25)", "5 A(2):  Array element1 is out of bounds, value =-0.25", 7.0},
        {"B(1, 9)", "5 B(1, 1):  Array element2 is out of bounds, value =9", 9},
        {"A(1E10)", "5 A(2):  Array element1 is out of bounds, value =10000000000", 1e10},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        engine.DefineArray("A(2)");
        engine.DefineArray("B(1, 1)");
        engine.ArrayValue(1, 7, 0);
        CHECK(value_of(engine, row.text) == row.value);
        CHECK(error_of(engine) == row.error);
    }
}

TEST_CASE("values set as a whole keep their places in one to four dimensions") {
    for (std::uint8_t dimensions = 1; dimensions <= 4; ++dimensions) {
        qvArray values{Bounds(dimensions, 1), std::vector<double>(std::size_t{1} << dimensions)};
        std::iota(values.Values.begin(), values.Values.end(), 1.0);
        qvExpression engine;
        engine.SetArrayValues("A", dimensions, values);
        CHECK(bounds_of(engine, "A") == values.UpperBounds);
        CHECK(engine.GetArrayValue(1, 1, 1, 1, 1) == Variant(values.Values.back()));
        CHECK(engine.GetArrayValue(1, dimensions == 1, dimensions == 2, dimensions == 3, dimensions == 4)
              == Variant(2.0));
    }
    qvExpression engine;
    engine.SetArrayValues("A", 5, {});
    CHECK(error_of(engine) == "10 A: Too many dimensions for array ");
    CHECK(engine.ArraysCount() == 0);
    engine.SetArrayValues("A", 0, {});
    CHECK(engine.ArrayName(1) == "A");
    compile(engine, "A(1)");
    CHECK(error_of(engine) == "5 Wrong number of arguments for A()");
}

TEST_CASE("an array too large for the engine has no elements") {
    qvExpression engine;
    engine.DefineArray("A(32767, 32767, 32767, 32767)");
    CHECK(engine.ErrorCode() == 0);
    CHECK(engine.GetArrayValue(1, 0) == Variant(std::int16_t{0}));
    CHECK(engine.ErrorCode() == 11);
    CHECK(value_of(engine, "A(1, 2, 3, 4)") == Variant(4)); // a fault
}

TEST_CASE("programs outlive the arrays they were compiled with") {
    qvExpression engine;
    engine.DefineArray("A(2)");
    compile(engine, "A(1) + A(2)");
    engine.DefineArray("A(2, 2, 2)");
    engine.Value();
    CHECK(engine.ErrorCode() == 0);
    engine.ResetVariables();
    CHECK(engine.Value() == Variant(3)); // the elements are faults, the sum is not
    CHECK_THROWS_AS(engine.RPNExpression(), Fault);
}
