// The operators and functions of the language, each with its opcode, precedence and argument count.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace qv::expression {

using OpcodeNumber = std::int16_t;

/// Opcodes by name. Negative opcodes are elements of arrays: -k of array k.
namespace opcode {
enum : OpcodeNumber {
    none = 0,
    push,
    start,
    open,
    negate,
    logical_not,
    end,
    comma,
    close,
    power,
    multiply,
    divide,
    integer_divide,
    add,
    subtract,
    equal,
    not_equal,
    less_or_equal,
    less,
    greater_or_equal,
    greater,
    modulo,
    logical_and,
    logical_or,
    logical_xor,
    concatenate,
    pi,
    degree,
    absolute,
    floor,
    truncate,
    sign,
    random,
    square_root,
    log10,
    ln,
    exponential,
    sine,
    arcsine,
    cosine,
    arccosine,
    tangent,
    arctangent,
    hyperbolic_sine,
    hyperbolic_cosine,
    hyperbolic_tangent,
    area_sine,
    area_cosine,
    area_tangent,
    factorial,
    minimum,
    maximum,
    combinations,
    permutations,
    choose,
    array,
    first_user,
    last_user = 75,
    length,
    character_code,
    spaces,
    repeat,
    left,
    right,
    middle,
    position,
    last = position
};
} // namespace opcode

constexpr std::int16_t max_user_functions = 20;
constexpr std::uint8_t opener_precedence = 255;
constexpr std::uint8_t function_precedence = 30;

struct OpcodeRow {
    std::string name;
    std::uint8_t precedence = 0;
    std::int16_t arguments = 0; ///< -1 for what ends an argument
};

using OpcodeTable = std::array<OpcodeRow, opcode::last + 1>;

/// The table of a new engine, its user-function slots free.
OpcodeTable new_opcode_table();
/// Stores one row; an opcode outside the table is fault 9.
void add_opcode(OpcodeTable& table, int number, OpcodeRow row);
/// Names the slots "USER1" to "USER_20" and gives them no arguments.
void free_user_opcodes(OpcodeTable& table);

/// The first operator or separator (opcodes 6 to 25) whose name stands at `offset` of `text`, letter case
/// ignored; `offset` moves past it. 0 when there is none.
OpcodeNumber operator_opcode(OpcodeTable const& table, std::string_view text, std::size_t& offset);
/// The function or constant of this name, or "NOT"; 0 when there is none.
OpcodeNumber function_opcode(OpcodeTable const& table, std::string_view name);

constexpr bool is_user_function(OpcodeNumber number) {
    return number >= opcode::first_user && number <= opcode::last_user;
}

} // namespace qv::expression
