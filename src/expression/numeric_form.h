// The compact form of programs that hold nothing but numbers and numeric variables: straight-line code on
// doubles. It gives what the general evaluator gives or declines, and the general evaluator then runs.
//
// Every operation maps an operand that is not finite to a result that is not finite, and whatever is a
// fault or an error in the general evaluator gives such a result too. So the code runs without looking, and
// a result that is not finite means: declined.
#pragma once

#include "expression/operand.h"
#include "qvgraph/variables.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace qv::expression {

struct Step;
struct NumericRow;
struct Instruction;

/// Runs one instruction and, as its last act, the next one; `previous` is the result of the one before.
using InstructionCode = double (*)(Instruction const* instruction, double* cells, double previous);

constexpr std::size_t block_length = 128;

/// Where the values of each node stand while a block is computed, `block_length` of them: in a column of its
/// own, for the variable that varies in the samples, for the result in the array that takes it.
struct Columns {
    std::vector<double const*> read;
    std::vector<double*> write;
};

/// Runs one instruction on columns.
using BlockCode = void (*)(Instruction const& instruction, Columns const& columns);

/// An operation on cells, or on columns of the same numbers.
struct Instruction {
    InstructionCode run = nullptr;
    BlockCode run_block = nullptr;
    std::uint16_t target = 0;
    std::uint16_t first = 0, second = 0, third = 0;
};

/// A value of the formula: a constant, a variable or the result of an operation on earlier nodes.
struct NumericNode {
    NumericRow const* row = nullptr; ///< none for constants and variables
    std::uint16_t first = 0, second = 0, third = 0;
};

struct NumericInput {
    qvVariable const* variable = nullptr;
    std::uint16_t cell = 0;
};

struct NumericForm {
    std::vector<NumericNode> nodes;
    std::vector<Instruction> code;    ///< the operations in order; one without `run_block` only returns
    std::vector<NumericInput> inputs; ///< where variables are loaded
    /// One a node. Constants are there from the start, results only where a later instruction reads them.
    std::vector<double> cells;
    std::uint16_t result = 0; ///< the node whose value the formula has
    /// Kind of the result; empty when it depends on the values, which only the general evaluator tells.
    Kind result_kind = Kind::Empty;
};

/// The form of a compiled program, or none when the program is not purely numeric, could fault whatever the
/// values, or has nothing to compute.
std::unique_ptr<NumericForm> numeric_form(std::span<Step const> steps);

/// Copies a variable into its cell; false when it does not hold a double.
inline bool load_variable(NumericForm& form, NumericInput const& input) {
    double const* const value = std::get_if<double>(&input.variable->Value);
    if (!value) return false;
    form.cells[input.cell] = *value;
    return true;
}
inline bool load_variables(NumericForm& form) {
    for (NumericInput const& input : form.inputs)
        if (!load_variable(form, input)) return false;
    return true;
}
/// The formula's value for the loaded variables; not finite when declined.
inline double run(NumericForm& form) {
    return form.code.front().run(form.code.data(), form.cells.data(), 0);
}

/// A formula made ready to run over arrays, in columns of `block_length` values, one a node.
class NumericBlocks {
public:
    /// Prepares runs in which `x` varies and every other variable keeps its present value. False when one of
    /// those does not hold a double.
    bool prepare(NumericForm& form, qvVariable const& x);
    /// Values for up to `block_length` samples; false when a value is not finite, and `y` then tells which.
    /// The spans are of one length and do not overlap.
    bool run(std::span<double const> x, std::span<double> y);

private:
    void run_in_place(double const* x, double* y);
    void run_partly(std::span<double const> x, std::span<double> y);
    void lay_out_columns();

    NumericForm const* form_ = nullptr;
    std::vector<Instruction> varying_; // what depends on x, in order
    std::optional<std::uint16_t> x_cell_;
    std::vector<double> values_;
    Columns columns_;
};

} // namespace qv::expression
