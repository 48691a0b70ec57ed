#include "expression/user_functions.h"

#include "base/convert.h"
#include "base/text.h"
#include "expression/characters.h"
#include "expression/compiler.h"
#include "expression/decimal.h"
#include "expression/evaluation.h"
#include "expression/evaluator.h"
#include "expression/tokenizer.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace qv::expression {
namespace {

constexpr std::size_t max_parameters = 20;
constexpr std::string_view reserved_pre_text = "(User-defined Functions) ";

struct Definition {
    std::string_view name;
    std::vector<std::string_view> parameters;
    std::string_view body;
};

// Reads a definition; nothing when it is not well-formed, the error then being set.
class DefinitionReader {
public:
    DefinitionReader(Engine& engine, std::string_view text) : engine_(engine), text_(text) {}
    std::optional<Definition> read();
    /// The place of the mistake when there is one.
    std::size_t offset() const { return offset_; }

private:
    bool read_name();
    bool read_parameters();
    bool read_parameter();
    bool read_body();
    bool invalid();
    bool is_free(std::string_view name);
    char current() const { return char_at(text_, offset_); }

    Engine& engine_;
    std::string_view text_;
    std::size_t offset_ = 0;
    Definition definition_;
};

std::optional<Definition> DefinitionReader::read() {
    if (read_name() && read_parameters() && read_body()) return std::move(definition_);
    return std::nullopt;
}

bool DefinitionReader::invalid() {
    set_error(engine_, ErrorNumber::InvalidDefinition,
              "Invalid User Function Definition: " + std::string(definition_.name));
    return false;
}

bool DefinitionReader::is_free(std::string_view name) {
    if (!ReservedName(engine_, name, reserved_pre_text)) return true;
    offset_ = static_cast<std::size_t>(name.data() - text_.data());
    return false;
}

bool DefinitionReader::read_name() {
    SkipBlanks(text_, offset_);
    definition_.name = GetName(text_, offset_);
    if (!is_free(definition_.name)) return false;
    return current() == '(' || invalid();
}

bool DefinitionReader::read_parameters() {
    while (current() != ')' && offset_ + 1 < text_.size() && definition_.parameters.size() < max_parameters)
        if (!read_parameter()) return false;
    return true;
}

bool DefinitionReader::read_parameter() {
    ++offset_; // the "(" or "," before it
    SkipBlanks(text_, offset_);
    definition_.parameters.push_back(GetName(text_, offset_));
    if (!is_free(definition_.parameters.back())) return false;
    return current() == ',' || current() == ')' || invalid();
}

bool DefinitionReader::read_body() {
    ++offset_; // the ")", or the "," after the last parameter there is room for
    if (offset_ < text_.size()) SkipBlanks(text_, offset_);
    if (current() != '=') return invalid();
    definition_.body = trim(text_.substr(offset_ + 1));
    return true;
}

std::string in_function(std::string_view name) {
    return " in User Function '" + std::string(name) + "'";
}

std::int32_t position_at(std::string_view text, std::size_t offset) {
    return static_cast<std::int32_t>(character_count(text.substr(0, std::min(offset, text.size()))) + 1);
}

// Creates the parameters as the first variables. A name that is a number creates none.
void declare_parameters(Engine& function, std::vector<std::string_view> const& parameters) {
    ResetCompiledExpressions(function);
    ResetVariables(function);
    for (const std::string_view parameter : parameters)
        if (!numeric_text(parameter)) set_variable(function, parameter, -1);
}

void compile_body(Engine& engine, Engine& function, Definition const& definition) {
    std::int16_t index = 0;
    Compile(function, std::string(definition.body), index);
    if (function.error.code == ErrorNumber::None) return;
    set_error(engine, function.error.code, function.error.description + in_function(definition.name));
    engine.error.position = function.error.position;
}

void define(Engine& engine, std::string const& text, Definition const& definition) {
    int const k = engine.NumUserFunctions + 1;
    resume_after([&] { at(engine.user_functions, k - 1).definition = text; });
    engine.error.source = -k;
    if (k > max_user_functions)
        return set_error(engine, ErrorNumber::TooManyUserFunctions, "Too Many User Functions");
    Engine& function = user_engine(engine, k);
    engine.NumUserFunctions = static_cast<std::int16_t>(k);
    auto const parameters = static_cast<std::int16_t>(definition.parameters.size());
    add_opcode(engine.opcodes, opcode::first_user + k - 1,
               {std::string(definition.name), function_precedence, parameters});
    function.AutoCreateVariables = engine.AutoCreateVariables;
    function.error = {};
    declare_parameters(function, definition.parameters);
    compile_body(engine, function, definition);
    if (function.error.code == ErrorNumber::None) return;
    auto const body = static_cast<std::size_t>(definition.body.data() - text.data());
    engine.error.definition_position = position_at(text, body) + function.error.position - 1;
}

} // namespace

void UserFunc(Engine& engine, std::string& definition_text) {
    if (definition_text.size() > max_definition_bytes)
        return set_error(engine, ErrorNumber::InvalidDefinition,
                         "Invalid User Function Definition: it may have 256 KiB");
    const std::string text = StripComments(definition_text);
    engine.error.definition_position = 0;
    if (text.empty()) return;
    DefinitionReader reader(engine, text);
    if (auto const definition = reader.read())
        resume_after([&] { define(engine, text, *definition); });
    else
        engine.error.definition_position = position_at(text, reader.offset());
}

void ResetUserFuncs(Engine& engine) {
    engine.NumUserFunctions = 0;
    free_user_opcodes(engine.opcodes);
}

Engine& user_engine(Engine& engine, int k) {
    std::unique_ptr<Engine>& function = at(engine.user_functions, k - 1).engine;
    if (!function) {
        function = std::make_unique<Engine>(&engine);
        function->random_state = engine.random_state + static_cast<std::uint64_t>(k);
    }
    return *function;
}

namespace {

// Arguments go from left to right to the first variables of the function's engine.
void assign_arguments(Evaluation& state, Engine& function, int arguments) {
    for (int position = arguments; position >= 1; --position) {
        Operand const& argument = position == arguments ? state.top : state.below(arguments - 1 - position);
        if (argument.kind == Kind::Faulted || position > function.m_Variables.size()) {
            state.engine.ended_by = "a parameter of the user function has no variable of its own";
            state.fault();
        } else
            function.m_Variables.item(position)->Value = variant_of(argument);
    }
}

// Twenty functions with twenty texts each would outlive the evaluation otherwise.
void release_texts(Engine& function) {
    for (std::int32_t position = 1; position <= function.m_Variables.size(); ++position) {
        Variant& value = function.m_Variables.item(position)->Value;
        if (std::holds_alternative<std::string>(value)) value = Variant();
    }
}

// A failure inside the function is one of its caller. The function itself starts anew at its next call.
void adopt_failure(Evaluation& state, Engine& function, std::string_view name) {
    if (function.error.code != ErrorNumber::None)
        set_error(state.engine, function.error.code, function.error.description + in_function(name));
    function.error = {};
    if (function.ending == Ending::Fault) state.engine.ended_by = function.ended_by + in_function(name);
    state.ended = function.ending != Ending::Complete;
}

} // namespace

void run_user_function(Evaluation& state, OpcodeNumber number) {
    OpcodeRow const& row = state.engine.opcodes[static_cast<std::size_t>(number)];
    int const arguments = row.arguments;
    if (arguments == 0) return state.push({}); // a free slot: empty
    Engine& function = user_engine(state.engine, number - opcode::first_user + 1);
    if (function.error.code != ErrorNumber::None) { // its body has not been compiled
        set_error(state.engine, function.error.code, function.error.description + in_function(row.name));
        state.ended = true;
        return;
    }
    assign_arguments(state, function, arguments);
    if (state.ended) return;
    std::int32_t slot = 0;
    function.ending = Ending::Complete;
    Operand value = operand_of(evaluate(function, slot));
    release_texts(function);
    adopt_failure(state, function, row.name);
    if (!state.ended) state.store(std::move(value));
    state.sp -= arguments - 1;
}

} // namespace qv::expression
