#include "evaluate.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;

TEST_CASE("postfix programs follow precedence, left association and folded signs") {
    const struct {
        std::string text, program;
    } rows[] = {
        {"2*(x+1)", " 2 x 1 + *"},
        {"2*-3", " 2 -3 *"},
        {"2--3", " 2 -3 -"},
        {"-x^2", " x 2 ^ -"},
        {"-2^2", " -2 2 ^"},
        {"- + 2", " -2"},
        {"--2", " -2 -"},
        {"-(2)", " 2 -"},
        {"2^-x^2", " 2 x 2 ^ - ^"},
        {"2^3^2", " 2 3 ^ 2 ^"},
        {"1 + 2 * 3 ^ 2", " 1 2 3 2 ^ * +"},
        {"7 MOD 3\\2*5", " 7 3 2 5 * \\ MOD"},
        {"a - b - c", " a b - c -"},
        {"NOT a = b AND c", " a b = NOT c AND"},
        {"a OR b XOR c AND d", " a b OR c d AND XOR"},
        {"a & b = c", " a b c = &"},
        {"1<=2<>3>=4", " 1 2 <= 3 <> 4 >="},
        {"MIN(1, 2)", " 1 2 MIN"},
        {"MAX(MIN(1,2), IIF(a,b,c)) + 1", " 1 2 MIN a b c IIF MAX 1 +"},
        {"sin (x)^2", " x SIN 2 ^"},
        {"PI()*pi + Deg", " PI PI * DEG +"},
        {"1 AND(2)", " 1 2 AND"},
        {"(1)AND (2)", " 1 2 AND"},
        {"1 mod 2", " 1 2 MOD"},
        {"1e3 + 1.5e3 + 1d-3 + .5 + 5. + 1e", " 1000 1500 + 0.001 + 0.5 + 5 + 1 +"},
        {"\"ab\"\"c\" & \"d\"", " 'ab\"c' \"d\" &"},
        {"USER1 + user_20()", " USER1 USER_20 +"},
        {"2 ' comment", " 2"},
        {"'only a comment", " 0"},
        {"x_1\xC3\xA9 + 1", " x_1\xC3\xA9 1 +"},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        compile(engine, row.text);
        CHECK(error_of(engine) == "");
        CHECK(engine.ErrorPos() == 0);
        CHECK(engine.RPNExpression() == row.program);
    }
}

TEST_CASE("what does not compile leaves code, text and position") {
    const struct {
        std::string text, error;
        int position;
    } rows[] = {
        {"MIN(1)", "5 Wrong number of arguments for MIN", 6},
        {"SIN(1, 2)", "5 Wrong number of arguments for SIN", 6},
        {"MIN(1, 2, 3)", "5 Wrong number of arguments for MIN", 9},
        {"(1, 2)", "5 Wrong number of arguments for ", 3},
        {"1, 2", "5 Wrong number of arguments for ", 2},
        {"1,", "5 Wrong number of arguments for ", 2},
        {"SIN x", "1 Syntax Error: Missing brackets", 1},
        {"2 + sin", "1 Syntax Error: Missing brackets", 5},
        {"1AND 2", "1 Syntax Error", 2},
        {"2 ANDb", "1 Syntax Error", 3},
        {"2 AND", "1 Syntax Error", 3},
        {"3 4", "4 Unknown operator '4' ", 3},
        {"3  # 4", "4 Unknown operator '#' ", 4},
        {"1 \xC3\xA9", "4 Unknown operator '\xC3\xA9' ", 3},
        {"\"\xC3\xA9\" + \xFF", "1 Syntax Error: Unknown symbol", 7},
        {"1 +", "1 Syntax Error: Unexpected end of expression", 4},
        {"1 + ", "1 Syntax Error: Unexpected end of expression", 5},
        {"   ", "1 Syntax Error: Unexpected end of expression", 4},
        {"1 + * 2", "1 Syntax Error: Unknown symbol", 5},
        {"1 + ?", "1 Syntax Error: Unknown symbol", 5},
        {"()", "1 Syntax Error: Unknown symbol", 2},
        {"1\t+ 2", "4 Unknown operator '\t' ", 2},
        {"(1 + 2", "1 Syntax Error", 7},
        {"MIN(1, 2", "1 Syntax Error", 9},
        {"1 + 2)", "1 Syntax Error", 6},
        {"foo(1)", "2 Unknown function: foo", 1},
        {"1 + foo (1)", "2 Unknown function: foo", 5},
        {"\"abc", "1 Syntax Error: Missing string delimiter", 1},
        {"1 & \"abc\"\"", "1 Syntax Error: Missing string delimiter", 5},
        {"A + 1", "1 Syntax Error: Array expected, A(10, 5)", 1},
        {"A(1)", "5 Wrong number of arguments for A(10, 5)", 4},
        {"A(1, 2, 3)", "5 Wrong number of arguments for A(10, 5)", 7},
        {"2147483648", "11 Error 6 has occured in qvMathExprE:GetNumber\r\nOverflow", 1},
        {"1 + 1e999", "11 Error 6 has occured in qvMathExprE:GetNumber\r\nOverflow", 5},
        {"99999999999 + ?", "1 Syntax Error: Unknown symbol", 15},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        qvExpression engine;
        engine.DefineArray("A(10, 5)");
        compile(engine, row.text);
        CHECK(error_of(engine) == row.error);
        CHECK(engine.ErrorPos() == row.position);
        CHECK(engine.ErrorSource() == 1);
        CHECK(engine.Value().is_empty());
        CHECK(engine.RPNExpression() == "");
    }
}

TEST_CASE("an embedded zero character ends the text where an operator may stand") {
    qvExpression engine;
    CHECK(value_of(engine, std::string("1\0 2", 4)) == Variant(1));
    compile(engine, std::string("1+\0", 3));
    CHECK(error_of(engine) == "1 Syntax Error: Unexpected end of expression");
}

TEST_CASE("names become variables only when that is allowed") {
    qvExpression engine;
    compile(engine, "y + 1");
    CHECK(engine.VariableName(1) == "y");
    CHECK(engine.m_Variables.item(1)->Value == Variant(std::int16_t{0}));
    engine.AutoCreateVariables = false;
    compile(engine, "1 + z");
    CHECK(error_of(engine) == "3 Undefined variable: z");
    CHECK(engine.ErrorPos() == 5);
    CHECK(value_of(engine, "Y + 1") == Variant(1));
}

TEST_CASE("the stacks bound the nesting and the steps") {
    qvExpression engine;
    auto const nested = [](int depth) { return repeated("(", depth) + "1" + repeated(")", depth); };
    CHECK(value_of(engine, nested(39)) == Variant(1)); // the start marker takes the fortieth entry
    compile(engine, nested(40));
    CHECK(error_of(engine)
          == "11 Error 9 has occured in qvMathExprE:CompileExpression\r\nSubscript out of range: brackets, "
             "functions and signs are nested 41 deep, the formula itself counted; there is room for 40");
    CHECK(engine.ErrorPos() == 40);

    compile(engine, "1" + repeated("+1", 149)); // 299 steps
    CHECK(engine.ErrorCode() == 0);
    compile(engine, "1" + repeated("+1", 150)); // 301 steps
    CHECK(error_of(engine)
          == "11 Error 9 has occured in qvMathExprE:AppendToCompiled\r\nSubscript out of range: the formula "
             "takes 301 steps, there is room for 300");
    CHECK(value_of(engine, "1" + repeated("+1", 149)) == Variant(150));
}

TEST_CASE("every variable that a step refers to lives as long as the step") {
    qvExpression engine;
    // Steps 1 to 299 are numbers and their sums, step 300 is the variable, 301 the last sum.
    compile(engine, "1" + repeated("+1", 149) + "+last");
    CHECK(engine.ErrorCode() == 11);
    std::weak_ptr<qvVariable> const last = engine.m_Variables.find("last");
    engine.ClearError();
    engine.ResetVariables();
    CHECK_FALSE(last.expired());
    engine.Value(-1);
    engine.ResetCompiledExpressions();
    CHECK(last.expired());
}
