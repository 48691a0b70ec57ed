#include "expression/opcodes.h"

#include "base/convert.h"
#include "base/text.h"

#include <span>

namespace qv::expression {
namespace {

struct BuiltIn {
    OpcodeNumber number;
    std::string_view name;
    std::uint8_t precedence;
    std::int16_t arguments;
};

// The end of a text is the character of code 0.
constexpr std::string_view end_name("\0", 1);

// A larger precedence binds tighter.
constexpr BuiltIn operators_and_functions[] = {
    {opcode::start, "", opener_precedence, 1},
    {opcode::open, "(", opener_precedence, 1},
    {opcode::negate, "-", 18, 0},
    {opcode::logical_not, "NOT", 8, 0},
    {opcode::end, end_name, 0, -1},
    {opcode::comma, ",", 0, -1},
    {opcode::close, ")", 0, -1},
    {opcode::power, "^", 20, 0},
    {opcode::multiply, "*", 17, 0},
    {opcode::divide, "/", 17, 0},
    {opcode::integer_divide, "\\", 16, 0},
    {opcode::modulo, "MOD", 15, 0},
    {opcode::add, "+", 14, 0},
    {opcode::subtract, "-", 14, 0},
    {opcode::equal, "=", 10, 0},
    {opcode::less, "<", 10, 0},
    {opcode::less_or_equal, "<=", 10, 0},
    {opcode::greater, ">", 10, 0},
    {opcode::greater_or_equal, ">=", 10, 0},
    {opcode::not_equal, "<>", 10, 0},
    {opcode::logical_and, "AND", 7, 0},
    {opcode::logical_or, "OR", 6, 0},
    {opcode::logical_xor, "XOR", 6, 0},
    {opcode::pi, "PI", 0, 0},
    {opcode::degree, "DEG", 0, 0},
    {opcode::absolute, "ABS", function_precedence, 1},
    {opcode::floor, "INT", function_precedence, 1},
    {opcode::truncate, "FIX", function_precedence, 1},
    {opcode::sign, "SGN", function_precedence, 1},
    {opcode::random, "RND", function_precedence, 1},
    {opcode::square_root, "SQR", function_precedence, 1},
    {opcode::log10, "LOG", function_precedence, 1},
    {opcode::ln, "LN", function_precedence, 1},
    {opcode::exponential, "EXP", function_precedence, 1},
    {opcode::sine, "SIN", function_precedence, 1},
    {opcode::arcsine, "ASIN", function_precedence, 1},
    {opcode::cosine, "COS", function_precedence, 1},
    {opcode::arccosine, "ACOS", function_precedence, 1},
    {opcode::tangent, "TAN", function_precedence, 1},
    {opcode::arctangent, "ATN", function_precedence, 1},
    {opcode::hyperbolic_sine, "SINH", function_precedence, 1},
    {opcode::area_sine, "ASINH", function_precedence, 1},
    {opcode::hyperbolic_cosine, "COSH", function_precedence, 1},
    {opcode::area_cosine, "ACOSH", function_precedence, 1},
    {opcode::hyperbolic_tangent, "TANH", function_precedence, 1},
    {opcode::area_tangent, "ATANH", function_precedence, 1},
    {opcode::factorial, "FACT", function_precedence, 1},
    {opcode::minimum, "MIN", function_precedence, 2},
    {opcode::maximum, "MAX", function_precedence, 2},
    {opcode::combinations, "NCR", function_precedence, 2},
    {opcode::permutations, "NPR", function_precedence, 2},
    {opcode::choose, "IIF", function_precedence, 3},
    {opcode::array, "ARRAY", function_precedence, 3},
};

constexpr BuiltIn text_operators[] = {
    {opcode::concatenate, "&", 4, 0},
    {opcode::length, "LEN", function_precedence, 1},
    {opcode::character_code, "ASC", function_precedence, 1},
    {opcode::spaces, "SPACE", function_precedence, 1},
    {opcode::repeat, "STRING", function_precedence, 2},
    {opcode::left, "LEFT", function_precedence, 2},
    {opcode::right, "RIGHT", function_precedence, 2},
    {opcode::middle, "MID", function_precedence, 3},
    {opcode::position, "INSTR", function_precedence, 3},
};

void add_opcodes(OpcodeTable& table, std::span<BuiltIn const> rows) {
    for (BuiltIn const& row : rows)
        add_opcode(table, row.number, {std::string(row.name), row.precedence, row.arguments});
}

} // namespace

void add_opcode(OpcodeTable& table, int number, OpcodeRow row) {
    at(table, number) = std::move(row);
}

void free_user_opcodes(OpcodeTable& table) {
    for (int k = 1; k <= max_user_functions; ++k)
        add_opcode(table, opcode::first_user + k - 1,
                   {(k <= 9 ? "USER" : "USER_") + std::to_string(k), function_precedence, 0});
}

OpcodeTable new_opcode_table() {
    OpcodeTable table;
    add_opcodes(table, operators_and_functions);
    free_user_opcodes(table);
    add_opcodes(table, text_operators);
    return table;
}

OpcodeNumber operator_opcode(OpcodeTable const& table, std::string_view text, std::size_t& offset) {
    const std::string_view rest = text.substr(offset);
    for (OpcodeNumber number = opcode::end; number <= opcode::concatenate; ++number) {
        std::string const& name = table[static_cast<std::size_t>(number)].name;
        if (!starts_with_ignoring_case(rest, name)) continue;
        offset += name.size();
        return number;
    }
    return opcode::none;
}

OpcodeNumber function_opcode(OpcodeTable const& table, std::string_view name) {
    for (OpcodeNumber number = opcode::pi; number <= opcode::last; ++number)
        if (equals_ignoring_case(table[static_cast<std::size_t>(number)].name, name)) return number;
    return equals_ignoring_case(name, "NOT") ? opcode::logical_not : opcode::none;
}

} // namespace qv::expression
