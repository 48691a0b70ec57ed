// One evaluation: the stack, the accumulator on top of it, and what a step may do to them.
#pragma once

#include "expression/engine.h"
#include "expression/operand.h"

#include <array>

namespace qv::expression {

struct Evaluation {
    Engine& engine;
    Operand top{};                              ///< the accumulator
    std::array<Operand, max_stack + 1> stack{}; ///< entries 1 to 40, under the accumulator
    int sp = 0;
    bool has_long_texts = false; ///< one has been there; programs of numbers and short texts count nothing
    bool ended = false; ///< by an error or, without RaiseErrors, by a fault: the default value is returned

    /// The entry `depth` places below the accumulator's neighbour; faulted outside the stack.
    Operand const& below(int depth = 0) const;
    /// Moves the accumulator onto the stack and puts `value` in its place. A full stack is a fault that
    /// loses the accumulator.
    void push(Operand const& value);
    /// Puts a result into the accumulator; a faulted one is a fault and leaves it as it was.
    void store(Operand result);
    /// A fault ends the evaluation or is passed over.
    void fault() { ended = ended || !engine.passes_over_faults(); }
    /// Counts the bytes of texts that are read or written; more than an evaluation may take is fault 7,
    /// which is recorded as an error and ends it.
    void count_text(std::size_t bytes);
    /// Records an error of a value outside a function's domain.
    void domain_error(std::string description) {
        set_error(engine, ErrorNumber::Domain, std::move(description));
    }
    void end_with_domain_error(std::string description) {
        domain_error(std::move(description));
        ended = true;
    }
};

/// Runs one step.
void run_step(Evaluation& state, Step const& step);
/// The steps of their own kinds.
void run_user_function(Evaluation& state, OpcodeNumber number);
void run_array_element(Evaluation& state, int array);

} // namespace qv::expression
