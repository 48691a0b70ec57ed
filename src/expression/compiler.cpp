#include "expression/compiler.h"

#include "base/convert.h"
#include "base/text.h"
#include "expression/arithmetic.h"
#include "expression/arrays.h"
#include "expression/characters.h"
#include "expression/tokenizer.h"

#include <utility>

namespace qv::expression {
namespace {

enum class Progress { Going, Done, Stopped };

// One compilation: an operator stack, a stack of arguments still expected and the place in the text.
class Compilation {
public:
    Compilation(Engine& engine, Slot& slot) : engine_(engine), slot_(slot), text_(slot.text) {}
    void run();

private:
    Progress read_operator();
    Progress read_operand();
    Progress end_argument(OpcodeNumber number);
    Progress finish();
    Progress close_parenthesis();
    bool pop_tighter(OpcodeNumber number);
    void read_number();
    Progress read_text();
    Progress read_name();
    Progress read_array(OpcodeNumber number);
    Progress read_variable(std::string_view name);
    Progress read_function(OpcodeNumber number);
    Progress open_arguments(OpcodeNumber number);
    Progress push_prefix(OpcodeNumber number);

    void push(OpcodeNumber number);
    void expect_arguments(std::int16_t count);
    void append(OpcodeNumber number, Operand operand = {});
    void append_operand(OpcodeNumber number, Operand operand = {});
    void AppendToCompiled(Step step);
    Progress stop(ErrorNumber code, std::string description);
    Progress syntax_error(std::string_view detail = {});
    Progress wrong_arguments();

    OpcodeNumber top() const { return operators_[static_cast<std::size_t>(sp_)]; }
    std::int16_t& counter() { return arguments_[static_cast<std::size_t>(ap_)]; }
    OpcodeRow const& row(OpcodeNumber number) const {
        return engine_.opcodes[static_cast<std::size_t>(number)];
    }
    std::string name_of(OpcodeNumber number) const;
    char current() const { return char_at(text_, offset_); }
    void publish_position(std::size_t offset);

    Engine& engine_;
    Slot& slot_;
    std::string_view text_;
    std::size_t offset_ = 0;
    std::array<OpcodeNumber, max_nesting + 1> operators_{};
    std::array<std::int16_t, max_nesting + 1> arguments_{};
    int sp_ = 0;
    int ap_ = 0;
    int depth_ = 0; // values the program would leave so far
    bool expect_operator_ = false;
    std::size_t steps_ = 0; // those that found no room included
};

void Compilation::run() {
    push(opcode::start);
    std::size_t token = 0;
    std::size_t first_fault = std::string_view::npos;
    Progress progress = Progress::Going;
    try {
        while (progress == Progress::Going) {
            SkipBlanks(text_, offset_);
            token = offset_;
            progress = expect_operator_ ? read_operator() : read_operand();
            if (engine_.error.code == ErrorNumber::Fault && first_fault == std::string_view::npos)
                first_fault = token;
        }
    } catch (...) {
        publish_position(token);
        throw;
    }
    if (progress == Progress::Stopped)
        publish_position(token);
    else if (first_fault != std::string_view::npos)
        publish_position(first_fault);
    else
        engine_.error.position = 0;
}

void Compilation::publish_position(std::size_t offset) {
    engine_.error.position = static_cast<std::int32_t>(character_count(text_.substr(0, offset)) + 1);
}

bool is_word(OpcodeNumber number) {
    return number >= opcode::modulo && number <= opcode::logical_xor;
}

Progress Compilation::read_operator() {
    char const before = text_[offset_ - 1];
    const std::size_t start = offset_;
    bool const at_end = offset_ == text_.size();
    auto const number = at_end ? OpcodeNumber{opcode::end} : operator_opcode(engine_.opcodes, text_, offset_);
    if (number == opcode::none) {
        const std::string shown(text_.substr(start, character_at(text_, start).bytes));
        return stop(ErrorNumber::UnknownOperator, "Unknown operator '" + shown + "' ");
    }
    if (is_word(number)) {
        bool const separated = (before == ' ' || before == ')') && (current() == ' ' || current() == '(');
        if (!separated) return syntax_error();
    }
    if (number != opcode::close) expect_operator_ = false;
    if (!pop_tighter(number)) return syntax_error();
    if (row(number).arguments == -1) return end_argument(number);
    push(number);
    return Progress::Going;
}

// Appends every operator on the stack that binds at least as tightly. False when a value is missing.
bool Compilation::pop_tighter(OpcodeNumber number) {
    auto const precedence = [this](OpcodeNumber each) {
        return each < 0 ? row(opcode::array).precedence : row(each).precedence;
    };
    while (precedence(top()) >= precedence(number) && precedence(top()) < opener_precedence) {
        const OpcodeNumber popped = top();
        append(popped);
        if (popped < 0)
            depth_ += 1 - array_dimensions(engine_, -popped);
        else if (row(popped).arguments >= 1)
            depth_ += 1 - row(popped).arguments;
        else if (popped >= opcode::power)
            depth_ -= 1;
        if (--sp_ < 0 || depth_ < 1) return false;
    }
    return true;
}

Progress Compilation::end_argument(OpcodeNumber number) {
    if (--counter() < 0) return wrong_arguments();
    if (number == opcode::end) return finish();
    if (number == opcode::close) return close_parenthesis();
    return counter() == 0 ? wrong_arguments() : Progress::Going;
}

Progress Compilation::finish() {
    if (sp_ != 1) return syntax_error();
    return counter() == 0 ? Progress::Done : wrong_arguments();
}

Progress Compilation::close_parenthesis() {
    if (top() != opcode::open) return syntax_error();
    if (counter() != 0) return wrong_arguments();
    --sp_;
    --ap_;
    return Progress::Going;
}

Progress Compilation::read_operand() {
    char const c = current();
    if (is_digit(c) || c == '.') {
        read_number();
        return Progress::Going;
    }
    if (is_letter(c)) return read_name();
    switch (c) {
    case '"':
    case '\'': return read_text();
    case '+': ++offset_; return Progress::Going;
    case '-': ++offset_; return push_prefix(opcode::negate);
    case '(': ++offset_; return push_prefix(opcode::open);
    case '\0': return syntax_error(": Unexpected end of expression");
    default: return syntax_error(": Unknown symbol");
    }
}

// A minus directly before a number belongs to the number: "-2^2" is 4.
void Compilation::read_number() {
    Operand value = GetNumber(engine_, text_, offset_);
    if (top() == opcode::negate) {
        value = negated(value);
        --sp_;
    }
    append_operand(opcode::push, std::move(value));
}

Progress Compilation::read_text() {
    std::optional<std::string> value = GetString(text_, offset_);
    if (!value) return syntax_error(": Missing string delimiter");
    append_operand(opcode::push, text_operand(std::move(*value)));
    return Progress::Going;
}

Progress Compilation::read_name() {
    const std::string_view name = GetName(text_, offset_);
    const OpcodeNumber function = function_opcode(engine_.opcodes, name);
    if (function == opcode::logical_not) return push_prefix(opcode::logical_not);
    if (function != opcode::none) return read_function(function);
    const OpcodeNumber array = array_opcode(engine_, name);
    return array < 0 ? read_array(array) : read_variable(name);
}

Progress Compilation::read_array(OpcodeNumber number) {
    if (current() != '(') return syntax_error(": Array expected, " + ArrayNameWithDims(engine_, -number));
    return open_arguments(number);
}

Progress Compilation::read_variable(std::string_view name) {
    if (current() == '(') return stop(ErrorNumber::UnknownFunction, "Unknown function: " + std::string(name));
    const WhenMissing when_missing = engine_.AutoCreateVariables ? WhenMissing::Create : WhenMissing::Leave;
    VariableTable::Entry variable = find_variable(engine_, name, when_missing);
    if (!variable) return stop(ErrorNumber::UndefinedVariable, "Undefined variable: " + std::string(name));
    qvVariable const* const named = variable.get();
    if (slot_.steps.size() < max_steps) slot_.variables.push_back(std::move(variable));
    append_operand(opcode::push, variable_operand(named));
    return Progress::Going;
}

Progress Compilation::read_function(OpcodeNumber number) {
    if (row(number).arguments != 0)
        return current() == '(' ? open_arguments(number) : syntax_error(": Missing brackets");
    append_operand(number);
    if (text_.substr(offset_).starts_with("()")) offset_ += 2;
    return Progress::Going;
}

// The parenthesis shares the counter of the function or array that stands before it.
Progress Compilation::open_arguments(OpcodeNumber number) {
    push(number);
    push(opcode::open);
    ++offset_;
    --ap_;
    return Progress::Going;
}

Progress Compilation::push_prefix(OpcodeNumber number) {
    push(number);
    return Progress::Going;
}

template <class Stack>
auto& nested_entry(Stack& stack, int place) {
    if (place > max_nesting)
        raise_fault(FaultNumber::SubscriptOutOfRange,
                    "Subscript out of range: brackets, functions and signs are nested "
                        + std::to_string(place) + " deep, the formula itself counted; there is room for "
                        + std::to_string(max_nesting));
    return at(stack, place);
}

void Compilation::push(OpcodeNumber number) {
    nested_entry(operators_, ++sp_) = number;
    if (number < 0)
        expect_arguments(array_dimensions(engine_, -number));
    else if (row(number).arguments > 0)
        expect_arguments(row(number).arguments);
}

void Compilation::expect_arguments(std::int16_t count) {
    nested_entry(arguments_, ++ap_) = count;
    expect_operator_ = false;
}

void Compilation::append(OpcodeNumber number, Operand operand) {
    AppendToCompiled({number, std::move(operand)});
}

void Compilation::append_operand(OpcodeNumber number, Operand operand) {
    append(number, std::move(operand));
    ++depth_;
    expect_operator_ = true;
}

void Compilation::AppendToCompiled(Step step) {
    ++steps_;
    if (slot_.steps.size() < max_steps) return slot_.steps.push_back(std::move(step));
    std::string text = "Subscript out of range: the formula takes " + std::to_string(steps_)
                       + " steps, there is room for " + std::to_string(max_steps);
    record_fault(engine_, Fault(FaultNumber::SubscriptOutOfRange, std::move(text)), "AppendToCompiled");
}

Progress Compilation::stop(ErrorNumber code, std::string description) {
    set_error(engine_, code, std::move(description));
    return Progress::Stopped;
}

Progress Compilation::syntax_error(std::string_view detail) {
    return stop(ErrorNumber::Syntax, "Syntax Error" + std::string(detail));
}

Progress Compilation::wrong_arguments() {
    return stop(ErrorNumber::ArgumentsOrBounds,
                "Wrong number of arguments for " + name_of(at(operators_, sp_ - 1)));
}

std::string Compilation::name_of(OpcodeNumber number) const {
    return number < 0 ? ArrayNameWithDims(engine_, -number) : row(number).name;
}

// About the memory of a compiled slot. Its variables may have left the table and live by the slot alone.
std::size_t bytes_of(Slot const& slot) {
    std::size_t bytes = slot.text.capacity() + slot.steps.capacity() * sizeof(Step);
    for (Step const& step : slot.steps) bytes += step.operand.text.size();
    for (auto const& variable : slot.variables) bytes += VariableTable::bytes_of(variable->Name);
    if (slot.numeric)
        bytes += slot.numeric->nodes.size() * (sizeof(NumericNode) + sizeof(double))
                 + slot.numeric->code.size() * sizeof(Instruction);
    return bytes;
}

void require_room_for_formula(Engine const& engine, std::size_t length) {
    if (length > max_formula_bytes)
        raise_fault(FaultNumber::OutOfMemory,
                    "Out of memory: a formula of " + std::to_string(length) + " bytes; it may have 16 MiB");
    if (engine.compiled_bytes + length > max_compiled_bytes)
        raise_fault(FaultNumber::OutOfMemory,
                    "Out of memory: the formulas compiled so far fill the 96 MiB that there are for them; "
                    "ResetCompiledExpressions removes them");
}

// The slot that a compilation is to fill, created when it lies above the highest.
Slot& slot_for(Engine& engine, std::int16_t& index) {
    if (index <= 0) index = to_i16(engine.highest_slot() + 1);
    if (index > engine.highest_slot()) engine.compiled.resize(static_cast<std::size_t>(index) + 1);
    engine.current_slot = index;
    return engine.compiled[static_cast<std::size_t>(index)];
}

} // namespace

void CompileExpression(Engine& engine) {
    Slot& slot = select_slot(engine, engine.current_slot);
    engine.compiled_bytes -= std::exchange(slot.bytes, 0);
    slot.steps.clear();
    slot.variables.clear();
    slot.numeric.reset();
    engine.ready_slot = 0;
    set_error(engine, ErrorNumber::None, {});
    trapped(engine, "CompileExpression", [&] {
        slot.steps.reserve(std::min<std::size_t>(max_steps, slot.text.size()));
        Compilation(engine, slot).run();
        if (slot.steps.capacity() > 2 * slot.steps.size() + 16) slot.steps.shrink_to_fit();
        if (engine.error.code == ErrorNumber::None) slot.numeric = numeric_form(slot.steps);
    });
    slot.bytes = bytes_of(slot);
    engine.compiled_bytes += slot.bytes;
}

void Compile(Engine& engine, std::string text, std::int16_t& index) {
    trapped(engine, "Compile", [&] {
        require_room_for_formula(engine, text.size());
        text = StripComments(text);
        slot_for(engine, index).text = text.empty() ? "0" : std::move(text);
        CompileExpression(engine);
    });
}

} // namespace qv::expression
