#include "expression/engine.h"

#include "base/convert.h"
#include "base/text.h"

namespace qv::expression {

void set_error(Engine& engine, ErrorNumber code, std::string description) {
    engine.error.code = code;
    engine.error.description = std::move(description);
}

void record_fault(Engine& engine, Fault const& fault, std::string_view procedure) {
    if (fault.number == static_cast<std::int32_t>(FaultNumber::InvalidUseOfNull)) return;
    std::string text = "Error " + std::to_string(fault.number) + " has occured in qvMathExprE:";
    text += procedure;
    set_error(engine, ErrorNumber::Fault, text + "\r\n" + fault.description);
}

void record_fault(Engine& engine, FaultNumber number, std::string_view procedure) {
    record_fault(engine, Fault(number, std::string(fault_text(number))), procedure);
}

bool ReservedName(Engine& engine, std::string_view name, std::string_view pre_text) {
    const OpcodeNumber number = function_opcode(engine.opcodes, name);
    if (number == opcode::none) return false;
    std::string text(pre_text);
    text += " ";
    text += name;
    text += "(...)";
    text +=
        is_user_function(number) ? " has already been reserved as a User Function." : " is a Reserved Name.";
    set_error(engine, ErrorNumber::ReservedName, std::move(text));
    return true;
}

namespace {

void require_room_for(Engine& engine, std::string_view name) {
    if (engine.m_Variables.bytes() + VariableTable::bytes_of(name) <= max_variable_bytes) return;
    raise_fault(FaultNumber::OutOfMemory,
                "Out of memory: " + std::to_string(engine.m_Variables.size())
                    + " variables fill the 64 MiB that there are for them; ResetVariables removes them");
}

} // namespace

VariableTable::Entry find_variable(Engine& engine, std::string_view name, WhenMissing when_missing) {
    VariableTable::Entry variable = engine.m_Variables.find(name, engine.name_match());
    if (variable || when_missing == WhenMissing::Leave) return variable;
    require_room_for(engine, name);
    variable = std::make_shared<qvVariable>(qvVariable{std::string(name), std::int16_t{0}});
    engine.m_Variables.append(variable);
    return variable;
}

void append_variable(Engine& engine, std::string_view name, double value) {
    require_room_for(engine, name);
    engine.m_Variables.append(std::make_shared<qvVariable>(qvVariable{std::string(name), value}));
}

void ResetCompiledExpressions(Engine& engine) {
    engine.ready_slot = 0;
    engine.compiled_bytes = 0;
    engine.compiled.clear();
    engine.compiled.resize(1);
    engine.current_slot = 0;
}

void ResetVariables(Engine& engine) {
    engine.m_Variables.clear();
    engine.NumArrays = 0;
    engine.arrays.clear();
    engine.arrays.resize(1);
}

} // namespace qv::expression
