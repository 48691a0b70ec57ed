#include "expression/evaluator.h"

#include "base/text.h"
#include "expression/arrays.h"
#include "expression/evaluation.h"
#include "expression/mathematics.h"

#include <cmath>

namespace qv::expression {
namespace {

// The slot to evaluate, or none when there is nothing to do.
Slot* slot_to_run(Engine& engine, std::int32_t& number) {
    if (number < 0) number = engine.highest_slot();
    Slot& slot = select_slot(engine, number);
    return slot.text.empty() || engine.error.code != ErrorNumber::None ? nullptr : &slot;
}

// What a fault in a step was: the step's operation or what ended the user function that it calls.
std::string description_of_fault(Engine& engine, Step const& step) {
    if (is_user_function(step.number)) return engine.ended_by;
    if (step.number == opcode::push) return "more than " + std::to_string(max_stack) + " values are pending";
    std::string const name =
        step.number < 0 ? ArrayNameWithDims(engine, -step.number) : at(engine.opcodes, step.number).name;
    return name
           + " has no value here: an operand is outside its domain or no number, or the result is too large";
}

Variant end_early(Engine& engine, Step const& step) {
    bool const is_fault = engine.error.code == ErrorNumber::None;
    engine.ending = is_fault ? Ending::Fault : Ending::Error;
    if (is_fault) engine.ended_by = description_of_fault(engine, step);
    return engine.DefaultValue;
}

Variant run_program(Engine& engine, Slot const& slot) {
    Evaluation state{engine};
    for (Step const& step : slot.steps) {
        run_step(state, step);
        if (state.ended) return end_early(engine, step);
    }
    engine.ending = Ending::Complete;
    return variant_of(std::move(state.top));
}

Variant trapped_program(Engine& engine, Slot const& slot) {
    return trapped(engine, "Value", [&] { return run_program(engine, slot); });
}

// A quoted text, with the quotes that need no doubling if there are such.
std::string quoted(std::string const& text) {
    if (text.find('"') == std::string::npos) return '"' + text + '"';
    if (text.find('\'') == std::string::npos) return '\'' + text + '\'';
    return '"' + replace_all(text, "\"", "\"\"") + '"';
}

std::string step_text(Engine const& engine, Step const& step) {
    if (step.number != opcode::push) return at(engine.opcodes, step.number).name;
    if (step.operand.kind == Kind::Variable) return step.operand.variable->Name;
    return step.operand.kind == Kind::Text ? quoted(step.operand.text) : text_in(step.operand);
}

} // namespace

NumericForm* made_ready(Engine& engine, std::int32_t& number) {
    Slot const* const slot = slot_to_run(engine, number);
    NumericForm* const form = slot ? slot->numeric.get() : nullptr;
    if (!form || form->result_kind == Kind::Empty) return nullptr;
    engine.ready_slot = engine.current_slot;
    engine.ready_form = form;
    return form;
}

Variant evaluate_generally(Engine& engine, std::int32_t& number) {
    Slot const* const slot = slot_to_run(engine, number);
    engine.ending = Ending::Error; // until the program has come to its end
    if (!engine.caller) engine.text_bytes_used = 0;
    return slot ? trapped_program(engine, *slot) : Variant();
}

std::string RPNExpression(Engine& engine) {
    Slot const& slot = select_slot(engine, engine.current_slot);
    std::string text;
    if (slot.text.empty() || engine.error.code != ErrorNumber::None) return text;
    for (Step const& step : slot.steps) {
        text += ' ';
        text += step_text(engine, step);
    }
    return text;
}

} // namespace qv::expression
