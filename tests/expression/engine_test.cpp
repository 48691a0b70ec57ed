#include "evaluate.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;

TEST_CASE("a new engine is empty") {
    qvExpression engine;
    CHECK(engine.NumExpressions() == 0);
    CHECK(engine.NumVariables() == 0);
    CHECK(engine.ArraysCount() == 0);
    CHECK(engine.ErrorCode() == 0);
    CHECK(engine.RaiseErrors);
    CHECK(engine.AutoCreateVariables);
    CHECK_FALSE(engine.CaseSensitiveVariables);
    CHECK(engine.DefaultValue.is_empty());
    CHECK(engine.Value().is_empty());
    CHECK(engine.RPNExpression() == "");
}

TEST_CASE("slots count up, or take the number they are given") {
    qvExpression engine;
    std::int16_t index = 0;
    engine.Compile("x+1", index);
    CHECK(index == 1);
    index = -3;
    engine.Compile("x+2", index);
    CHECK(index == 2);
    CHECK(engine.NumExpressions() == 3);
    engine.Compile("", 5);
    CHECK(engine.ExpressionText(5) == "0");
    CHECK(engine.ExpressionText(3) == "");
    CHECK(engine.ExpressionText(6) == "");
    CHECK(engine.ExpressionText("1") == "x+1");
    CHECK(engine.Value(3).is_empty());
    std::int32_t highest = -1;
    CHECK(engine.Value(highest) == Variant(0));
    CHECK(highest == 5);
    CHECK(engine.Value(2) == Variant(2));
    CHECK(engine.ErrorSource() == 2);
    CHECK(engine.Value(99) == Variant(0)); // above the highest: the highest
    CHECK(engine.Value(0) == Variant(0));

    engine.ResetCompiledExpressions();
    CHECK(engine.NumExpressions() == 0);
    engine.Compile("1", 32767);
    index = 0;
    engine.Compile("1", index);
    CHECK(error_of(engine) == "11 Error 6 has occured in qvMathExprE:Compile\r\nOverflow");
}

TEST_CASE("a compilation clears the error before it") {
    qvExpression engine;
    compile(engine, "1 +");
    CHECK(engine.ErrorCode() == 1);
    CHECK(value_of(engine, "1 + 1") == Variant(2));
    CHECK(engine.ErrorPos() == 0);
}

TEST_CASE("variables by name and by number") {
    qvExpression engine;
    double value = 7;
    engine.Variable("2.5", value);
    CHECK(value == 2.5);
    engine.Variable(Variant(4), value);
    CHECK(value == 4);
    CHECK(engine.NumVariables() == 0);
    CHECK(engine.VariableValue("abc") == 0);
    CHECK(engine.VariableValue(" -1e2 ") == -100);
    CHECK(engine.VariableValue("1e") == 0);
    engine.Variable("X", 3);
    CHECK(engine.VariableValue("x") == 3);
    CHECK(engine.VariablesCount() == 1);
    CHECK(engine.VariableName(1) == "X");
    CHECK(engine.VariableName(0) == "");
    CHECK(engine.VariableName(2) == "");
    engine.m_Variables.find("x")->Value = "abc";
    CHECK(engine.VariableValue("x") == 0);
    CHECK(error_of(engine) == "11 Error 13 has occured in qvMathExprE:VariableValue\r\nType mismatch");
}

TEST_CASE("spellings are variables of their own when case matters") {
    qvExpression engine;
    engine.CaseSensitiveVariables = true;
    engine.Variable("x", 1);
    engine.Variable("X", 2);
    CHECK(engine.NumVariables() == 2);
    CHECK(value_of(engine, "X - x") == Variant(1.0));
    engine.CaseSensitiveVariables = false;
    CHECK(engine.VariableValue("X") == 1); // the first that matches
}

TEST_CASE("many variables are found like few") {
    qvExpression engine;
    for (int i = 0; i < 1000; ++i) engine.Variable("Name" + std::to_string(i), i);
    for (int i = 0; i < 1000; ++i) engine.Variable("nAme" + std::to_string(i), i + 1);
    CHECK(engine.NumVariables() == 1000);
    for (int const i : {0, 11, 12, 999}) CHECK(engine.VariableValue("NAME" + std::to_string(i)) == i + 1);
    engine.m_Variables.remove(1);
    CHECK(engine.VariableValue("name0") == 0);
    CHECK(engine.VariableValue("name999") == 1000);
}

TEST_CASE("reserved names") {
    qvExpression engine;
    for (char const* name : {"sin", "Pi", "not", "ARRAY", "user1", "Instr"})
        CHECK(engine.ReservedName(name, "P "));
    for (char const* name : {"and", "MOD", "or", "xor", "x", ""})
        CHECK_FALSE(engine.ReservedName(name, "P "));
    engine.ReservedName("sin", "P ");
    CHECK(error_of(engine) == "10 P  sin(...) is a Reserved Name.");
}

TEST_CASE("reset keeps the default value and the two modes") {
    qvExpression engine;
    engine.DefaultValue = 5;
    engine.RaiseErrors = false;
    engine.AutoCreateVariables = false;
    engine.CaseSensitiveVariables = true;
    engine.Variable("x", 1);
    engine.DefineArray("A(1)");
    engine.UserFunc("f(a) = a");
    compile(engine, "y");
    engine.Reset();
    CHECK(engine.ErrorCode() == 0);
    CHECK(engine.ErrorSource() == 0);
    CHECK(engine.NumVariables() == 0);
    CHECK(engine.ArraysCount() == 0);
    CHECK(engine.NumUserFunctions == 0);
    CHECK(engine.NumExpressions() == 0);
    CHECK_FALSE(engine.CaseSensitiveVariables);
    CHECK_FALSE(engine.RaiseErrors);
    CHECK_FALSE(engine.AutoCreateVariables);
    CHECK(engine.DefaultValue == Variant(5));
}
