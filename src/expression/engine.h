// The whole state of one expression engine as plain data, and how it keeps errors. What works on it lives in
// the headers of the subjects: compiler, evaluator, arrays, user functions.
#pragma once

#include "base/fault_report.h"
#include "expression/numeric_form.h"
#include "expression/opcodes.h"
#include "expression/operand.h"
#include "qvgraph/variables.h"
#include "qvgraph/variant.h"

#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace qv::expression {

constexpr std::size_t max_steps = 300;
constexpr int max_nesting = 40; ///< entries of the compiler's stacks
constexpr int max_stack = 40;   ///< entries of the evaluator's stack
constexpr int max_dimensions = 4;

// What bounds the memory of an engine to less than a gigabyte, its arrays of 256 MiB included.
constexpr std::size_t max_formula_bytes = std::size_t{16} << 20;
constexpr std::size_t max_definition_bytes = std::size_t{256} << 10; ///< of a user function or an array
constexpr std::size_t max_compiled_bytes = std::size_t{96} << 20;    ///< all slots
constexpr std::size_t max_variable_bytes = std::size_t{64} << 20;
/// Texts that one evaluation may read and write, every time counted: that many take about half a second.
constexpr std::size_t max_text_bytes = std::size_t{144} << 20;

/// Error codes that callers see in `ErrorCode`.
enum class ErrorNumber : std::int32_t {
    None = 0,
    Syntax = 1,
    UnknownFunction = 2,
    UndefinedVariable = 3,
    UnknownOperator = 4,
    ArgumentsOrBounds = 5,
    Domain = 6,
    TooManyUserFunctions = 8,
    InvalidDefinition = 9,
    ReservedName = 10,
    Fault = 11,
    InvalidArray = 12,
};

struct ErrorState {
    ErrorNumber code = ErrorNumber::None;
    std::string description;
    std::int32_t position = 0;            ///< in characters, from 1
    std::int32_t source = 0;              ///< slot, or -k for user function k
    std::int32_t definition_position = 0; ///< in the text of a user function, in characters from 1
};

/// How an evaluation ended: with the last step, with an error, or, without RaiseErrors, with a fault.
enum class Ending { Complete, Error, Fault };

/// One step of a postfix program; the operand belongs to `opcode::push` alone.
struct Step {
    OpcodeNumber number = opcode::none;
    Operand operand;
};

/// A compiled expression. `variables` keeps alive what the steps refer to.
struct Slot {
    std::string text;
    std::vector<Step> steps;
    std::vector<std::shared_ptr<qvVariable>> variables;
    std::unique_ptr<NumericForm> numeric;
    std::size_t bytes = 0; ///< that the compilation took
};

/// Element (i, j, ...) lies at the place counted with the last index running fastest.
struct ArrayRecord {
    std::string name;
    std::vector<double> values;
    std::array<std::int16_t, max_dimensions + 1> upper_bounds{}; ///< positions 1 to 4
    std::int16_t dimensions = 0;
};

/// The fields that any holder may read and write.
struct PublicFields {
    bool CaseSensitiveVariables = false;
    std::int16_t NumUserFunctions = 0;
    std::int16_t NumArrays = 0;
    Variant DefaultValue;
    bool RaiseErrors = true;
    bool AutoCreateVariables = true;
    VariableTable m_Variables;
};

struct Engine;

struct UserFunctionRecord {
    std::string definition;
    std::unique_ptr<Engine> engine; ///< created on first use
};

struct Engine : PublicFields {
    /// That of a user function has the engine that calls it.
    explicit Engine(Engine* calling = nullptr) : caller(calling) {}
    Engine(Engine const&) = delete;
    Engine& operator=(Engine const&) = delete;

    OpcodeTable opcodes = new_opcode_table();
    std::vector<Slot> compiled = std::vector<Slot>(1);
    std::int32_t current_slot = 0;
    /// The slot that was last evaluated by its numeric form, and that form; 0 when slots have changed since.
    std::int32_t ready_slot = 0;
    NumericForm* ready_form = nullptr;
    std::vector<ArrayRecord> arrays = std::vector<ArrayRecord>(1); ///< record 0 holds no array
    std::array<UserFunctionRecord, max_user_functions> user_functions;
    ErrorState error;
    std::uint64_t random_state = 0;
    Engine* const caller = nullptr; ///< whose user function this engine is
    Ending ending = Ending::Complete;
    std::string ended_by;            ///< what a fault that ended the evaluation was
    std::size_t compiled_bytes = 0;  ///< all slots
    std::size_t text_bytes_used = 0; ///< by the running evaluation; counted in the outermost caller

    Engine& outermost() { return caller ? *caller : *this; }
    bool passes_over_faults() const { return caller ? caller->RaiseErrors : RaiseErrors; }
    NameMatch name_match() const { return CaseSensitiveVariables ? NameMatch::SameCase : NameMatch::AnyCase; }
    std::int32_t highest_slot() const { return static_cast<std::int32_t>(compiled.size()) - 1; }
};

/// Sets code and description; position and source stay.
void set_error(Engine& engine, ErrorNumber code, std::string description);
/// Records a fault in the procedure of this name as error 11; number 94 is passed over.
void record_fault(Engine& engine, Fault const& fault, std::string_view procedure);
void record_fault(Engine& engine, FaultNumber number, std::string_view procedure);

/// Runs `body`; a fault in it ends it and is recorded under the procedure's name. The result is then empty.
/// Where memory ends, which recording takes too, the caller is told by std::bad_alloc.
template <class Body>
auto trapped(Engine& engine, std::string_view procedure, Body body) -> decltype(body()) {
    try {
        return body();
    } catch (std::bad_alloc const&) {
        throw;
    } catch (...) {
        record_fault(engine, as_fault(std::current_exception()), procedure);
    }
    return decltype(body())();
}

/// Runs one statement whose fault is passed over.
template <class Statement>
void resume_after(Statement statement) {
    try {
        statement();
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const&) { // the statement leaves its target as it was
    }
}

/// Makes the slot current; one below 1 or above the highest stands for the highest.
inline Slot& select_slot(Engine& engine, std::int32_t number) {
    // The current slot is a known one; asking for it again needs no counting of slots.
    if (number != engine.current_slot || number < 1) {
        bool const known = number >= 1 && number <= engine.highest_slot();
        engine.current_slot = known ? number : engine.highest_slot();
    }
    engine.error.source = engine.current_slot;
    return engine.compiled[static_cast<std::size_t>(engine.current_slot)];
}

/// Sets the error when the name is taken by a function, a constant, a user function or "NOT".
bool ReservedName(Engine& engine, std::string_view name, std::string_view pre_text);

/// The variable of this name, created with a 16-bit 0 when that is asked for and it is missing.
enum class WhenMissing { Create, Leave };
VariableTable::Entry find_variable(Engine& engine, std::string_view name, WhenMissing when_missing);
/// Sets the variable, created when it is missing.
void append_variable(Engine& engine, std::string_view name, double value);
inline void set_variable(Engine& engine, std::string_view name, double value) {
    if (qvVariable* const variable = engine.m_Variables.known(name, engine.name_match()))
        variable->Value = value;
    else
        append_variable(engine, name, value);
}

void ResetCompiledExpressions(Engine& engine);
void ResetVariables(Engine& engine);

/// The number as error texts show it: at most four decimals, exponent form outside 0.001 to 1,000,000.
std::string FormatReal(double x);

} // namespace qv::expression
