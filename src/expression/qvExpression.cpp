#include "qvgraph/qvExpression.h"

#include "base/convert.h"
#include "base/text.h"
#include "expression/arrays.h"
#include "expression/characters.h"
#include "expression/compiler.h"
#include "expression/decimal.h"
#include "expression/evaluator.h"
#include "expression/mathematics.h"
#include "expression/user_functions.h"

#include <algorithm>

namespace qv {
namespace {

double number_of_variant(Variant const& value) {
    const expression::Number number = number_in(expression::operand_of(value));
    if (number.faulted()) raise_fault(FaultNumber::TypeMismatch);
    return number.value;
}

void require_name(std::string_view name) {
    if (name.empty()) raise_fault(FaultNumber::InvalidProcedureCall, "the name of a variable is empty");
}

// The entry that an index names, halves to even; nothing above the last or below the first.
std::optional<std::int32_t> entry(double index, std::int32_t last) {
    if (!(index <= last)) return std::nullopt;
    return to_i32(index);
}

// Entries that count from 1 are tried for any index above 0.
std::optional<std::int32_t> counted_entry(Variant const& index, std::int32_t count) {
    double const number = number_of_variant(index);
    return number > 0 ? entry(number, count) : std::nullopt;
}

} // namespace

NameOrNumber::NameOrNumber(Variant const& value) {
    const expression::Operand operand = expression::operand_of(value);
    owned_ = text_in(operand);
    if (is_number(operand.kind)) number_ = operand.number;
}

std::optional<double> NameOrNumber::number() const {
    return number_ ? number_ : expression::numeric_text(text());
}

qvExpression::qvExpression()
    : engine_(new expression::Engine), AutoCreateVariables(engine_->AutoCreateVariables),
      CaseSensitiveVariables(engine_->CaseSensitiveVariables), DefaultValue(engine_->DefaultValue),
      m_Variables(engine_->m_Variables), NumArrays(engine_->NumArrays),
      NumUserFunctions(engine_->NumUserFunctions), RaiseErrors(engine_->RaiseErrors) {}

qvExpression::~qvExpression() = default;

void qvExpression::Compile(std::string Expression, std::int16_t& Index) {
    expression::Compile(*engine_, std::move(Expression), Index);
}

void qvExpression::Compile(std::string Expression, Checked<std::int16_t> Index) {
    std::int16_t index = Index;
    Compile(std::move(Expression), index);
}

Variant qvExpression::Value(std::int32_t& ExprIndex) {
    return expression::evaluate(*engine_, ExprIndex);
}

Variant qvExpression::Value(Checked<std::int32_t> ExprIndex) {
    std::int32_t index = ExprIndex;
    return expression::evaluate(*engine_, index);
}

std::string qvExpression::RPNExpression() {
    return expression::RPNExpression(*engine_);
}

std::int32_t qvExpression::ErrorCode() const {
    return static_cast<std::int32_t>(engine_->error.code);
}

std::string const& qvExpression::ErrorDescription() const {
    return engine_->error.description;
}

std::int32_t qvExpression::ErrorPos() const {
    return engine_->error.position;
}

std::int32_t qvExpression::DefinitionErrorPos() const {
    return engine_->error.definition_position;
}

std::int32_t qvExpression::ErrorSource() const {
    return engine_->error.source;
}

void qvExpression::ClearError() {
    engine_->error = {};
}

void qvExpression::DefineArray(std::string Ary) {
    expression::DefineArray(*engine_, std::move(Ary));
}

void qvExpression::ResetCompiledExpressions() {
    expression::ResetCompiledExpressions(*engine_);
}

void qvExpression::ResetVariables() {
    expression::ResetVariables(*engine_);
}

void qvExpression::ResetUserFuncs() {
    expression::ResetUserFuncs(*engine_);
}

void qvExpression::ValueOver(std::string_view VarName, std::span<double const> X, std::span<double> Y,
                             Checked<std::int32_t> ExprIndex) {
    auto const variable =
        expression::trapped(*engine_, "ValueOver", [&]() -> expression::VariableTable::Entry {
            require_name(VarName);
            if (expression::numeric_text(VarName))
                raise_fault(FaultNumber::InvalidProcedureCall,
                            "\"" + std::string(VarName) + "\" is a number; the name of a variable is needed");
            return find_variable(*engine_, VarName, expression::WhenMissing::Create);
        });
    if (variable) return ValueOver(*variable, X, Y, ExprIndex);
    std::ranges::fill(Y, expression::mathematics::undefined);
}

void qvExpression::ValueOver(qvVariable& Variable, std::span<double const> X, std::span<double> Y,
                             Checked<std::int32_t> ExprIndex) {
    std::int32_t index = ExprIndex;
    expression::evaluate_over(*engine_, Variable, X, Y, index);
}

bool qvExpression::ReservedName(std::string_view Name, std::string_view PreText) {
    return expression::ReservedName(*engine_, Name, PreText);
}

// A number never begins with a letter, which settles nearly every name at once.
void qvExpression::set_named(std::string_view name, double& value) {
    if (name.empty() || !expression::is_letter(name.front()))
        if (auto const number = expression::numeric_text(name)) return void(value = *number);
    expression::trapped(*engine_, "Variable", [&] {
        require_name(name);
        set_variable(*engine_, name, value);
    });
}

void qvExpression::Variable(NameOrNumber const& VarName, double& VarValue) {
    if (auto const number = VarName.number())
        VarValue = *number;
    else
        set_named(VarName.text(), VarValue);
}

void qvExpression::Variable(NameOrNumber const& VarName, double const& VarValue) {
    double value = VarValue;
    Variable(VarName, value);
}

void qvExpression::set_known(std::string_view name, double value) {
    set_named(name, value);
}

double qvExpression::VariableValue(NameOrNumber const& VarName) {
    return expression::trapped(*engine_, "VariableValue", [&] {
        if (const auto number = VarName.number()) return *number;
        const auto variable = m_Variables.find(VarName.text(), engine_->name_match());
        return variable ? number_of_variant(variable->Value) : 0.0;
    });
}

std::int16_t qvExpression::VariablesCount() {
    return expression::trapped(*engine_, "VariablesCount", [&] { return to_i16(m_Variables.size()); });
}

std::string qvExpression::VariableName(Variant const& Index) {
    return expression::trapped(*engine_, "VariableName", [&] {
        const auto position = counted_entry(Index, m_Variables.size());
        return position ? m_Variables.item(*position)->Name : std::string();
    });
}

void qvExpression::SetArrayValues(NameOrNumber const& VarName, Checked<std::uint8_t> NumDims,
                                  qvArray const& Ary) {
    expression::SetArrayValues(*engine_, VarName.text(), NumDims, Ary);
}

void qvExpression::ArrayValue(Checked<std::int16_t> Index, Variant const& Value, Checked<std::int16_t> Dim1,
                              Checked<std::int16_t> Dim2, Checked<std::int16_t> Dim3,
                              Checked<std::int16_t> Dim4) {
    expression::trapped(*engine_, "ArrayValue", [&] {
        if (double* const place = array_place(*engine_, Index, {Dim1, Dim2, Dim3, Dim4}))
            *place = number_of_variant(Value);
    });
}

Variant qvExpression::GetArrayValue(Checked<std::int16_t> Index, Checked<std::int16_t> Dim1,
                                    Checked<std::int16_t> Dim2, Checked<std::int16_t> Dim3,
                                    Checked<std::int16_t> Dim4) {
    Variant result = std::int16_t{0};
    expression::trapped(*engine_, "GetArrayValue", [&] {
        result = expression::GetArrayValue(*engine_, Index, {Dim1, Dim2, Dim3, Dim4});
    });
    return result;
}

void qvExpression::GetArrayDetails(std::string_view Name, std::int16_t& Index, std::int16_t& NumDims,
                                   std::vector<std::int16_t>& Dims) {
    Index = static_cast<std::int16_t>(-array_opcode(*engine_, Name));
    if (Index == 0) return;
    expression::ArrayRecord const& record = array_record(*engine_, Index);
    NumDims = record.dimensions;
    Dims.assign(record.upper_bounds.begin(), record.upper_bounds.end());
}

std::string qvExpression::ArrayName(Variant const& Index) {
    return expression::trapped(*engine_, "ArrayName", [&] {
        const auto number = counted_entry(Index, NumArrays);
        return number ? array_record(*engine_, *number).name : std::string();
    });
}

std::int32_t qvExpression::NumExpressions() const {
    bool const used = !engine_->compiled.front().text.empty() || engine_->highest_slot() > 0;
    return used ? engine_->highest_slot() + 1 : 0;
}

std::string qvExpression::ExpressionText(Variant const& Index) {
    return expression::trapped(*engine_, "ExpressionText", [&] {
        const double number = number_of_variant(Index);
        const auto slot = number >= 0 ? entry(number, engine_->highest_slot()) : std::nullopt;
        return slot ? at(engine_->compiled, *slot).text : std::string();
    });
}

void qvExpression::UserFunc(std::string& UserFunction) {
    expression::UserFunc(*engine_, UserFunction);
}

void qvExpression::UserFunc(std::string const& UserFunction) {
    std::string text = UserFunction;
    expression::UserFunc(*engine_, text);
}

std::string qvExpression::UserFuncText(Variant const& Index) {
    return expression::trapped(*engine_, "UserFuncText", [&] {
        const auto number = counted_entry(Index, NumUserFunctions);
        return number ? at(engine_->user_functions, *number - 1).definition : std::string();
    });
}

void qvExpression::Reset() {
    ClearError();
    CaseSensitiveVariables = false;
    ResetCompiledExpressions();
    ResetUserFuncs();
    ResetVariables();
}

} // namespace qv
