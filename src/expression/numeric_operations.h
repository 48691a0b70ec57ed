// The operations of the numeric form: for each opcode the code that runs it on one value and on a block of
// values, and how the kind of the result follows from the kinds of the operands.
#pragma once

#include "expression/numeric_form.h"
#include "expression/opcodes.h"

#include <array>

namespace qv::expression {

/// How the kind of a result follows from the operands.
enum class KindRule : std::uint8_t {
    Double, ///< always a double
    Truth,  ///< 16-bit 0 or 1
    Sign,   ///< 16-bit -1, 0 or 1
    Whole,  ///< a 32-bit integer
    Sum,
    Difference,
    Product,
    Negation, ///< the wider kind, widened when the result does not fit
    Kept,     ///< the operand's kind
    Either,   ///< the kind of one of the last two operands
};

/// The ways an instruction is joined to its neighbours, as bits.
constexpr std::size_t first_is_previous = 1;  ///< the first operand is the result of the instruction before
constexpr std::size_t second_is_previous = 2; ///< the second operand is
constexpr std::size_t is_kept = 4;            ///< the result goes into its cell too
constexpr std::size_t is_last = 8;            ///< the result is the formula's
constexpr std::size_t joints = 16;

/// What a costly function takes along in its loop over a block: an operation that gives its operand, and a
/// factor of its result. The processor does these while it waits for the function.
enum class Before : std::uint8_t { Nothing, Product, Quotient, Magnitude };
enum class After : std::uint8_t { Nothing, Product };
constexpr std::size_t companions = 8;
constexpr std::size_t companion(Before before, After after) {
    return 2 * static_cast<std::size_t>(before) + static_cast<std::size_t>(after);
}

struct NumericRow {
    OpcodeNumber number = opcode::none;
    std::uint8_t operands = 0;
    KindRule rule = KindRule::Double;
    double (*on_values)(double first, double second, double third) = nullptr;
    std::array<InstructionCode, joints> on_cells{};
    BlockCode on_columns = nullptr;
    /// Operands `first` and `second` go into what comes before, `third` is the factor that comes after.
    /// None for functions that are not costly.
    std::array<BlockCode, companions> with_companions{};
};

/// The row of an opcode, or none for one that the numeric form does not have.
NumericRow const* numeric_row(OpcodeNumber number);

/// Rows that stand in for an opcode's own where the operands allow or ask for it.
extern const NumericRow square_row;           ///< power of 2
extern const NumericRow integer_product_row;  ///< no negative zero
extern const NumericRow integer_negation_row; ///< no negative zero
/// A product and the sum or difference it goes into, in one instruction.
extern const NumericRow product_plus_row;
extern const NumericRow product_minus_row;
extern const NumericRow minus_product_row;

/// Sine and cosine of one operand in one instruction: `target` is the sine's cell, `second` the cosine's.
extern const NumericRow sine_and_cosine_row;
/// The end of code whose last instruction does not compute the result: gives the first cell.
double return_cell(Instruction const* instruction, double* cells, double previous);

} // namespace qv::expression
