// The expression engine as its users see it: compiled formulas with variables, arrays and user functions.
#pragma once

#include "expression/arrays.h"
#include "expression/characters.h"
#include "expression/engine.h"
#include "expression/evaluator.h"
#include "expression/user_functions.h"
#include "expression/variables.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qv {

template <class T>
concept is_character = std::is_same_v<T, char> || std::is_same_v<T, wchar_t> || std::is_same_v<
    T, char8_t> || std::is_same_v<T, char16_t> || std::is_same_v<T, char32_t>;

/// A variable's name, or a number (also as text) where a name is allowed to be one.
class NameOrNumber {
public:
    NameOrNumber(char const* name) : text_(name) {}
    NameOrNumber(std::string_view name) : text_(name) {}
    NameOrNumber(std::string const& name) : text_(name) {}
    NameOrNumber(Variant const& value);
    template <class T>
    requires(std::is_arithmetic_v<T> && !is_character<T>) NameOrNumber(T value)
        : NameOrNumber(Variant(static_cast<double>(value))) {}
    /// A character is neither: a name of one letter is a text, "x".
    template <class T>
    requires is_character<T> NameOrNumber(T)
    = delete;

    /// The name, or the number in its general text form.
    std::string_view text() const { return owned_.empty() ? text_ : owned_; }
    /// The number, also one that the text reads as.
    std::optional<double> number() const;

private:
    std::string_view text_;
    std::string owned_;
    std::optional<double> number_;
};

/// An independent engine. No member but `RPNExpression` throws: failures are left in `ErrorCode`,
/// `ErrorDescription`, `ErrorPos` and `ErrorSource`. One thread at a time.
class qvExpression : private expression::Engine {
public:
    qvExpression() = default;
    qvExpression(qvExpression const&) = delete;
    qvExpression& operator=(qvExpression const&) = delete;

    using Engine::AutoCreateVariables;    ///< an unknown name creates a variable (true)
    using Engine::CaseSensitiveVariables; ///< spellings that differ in case are different variables (false)
    using Engine::DefaultValue;           ///< the value of an evaluation that ends early (empty)
    using Engine::m_Variables;            ///< the variables in order of creation
    using Engine::NumArrays;
    using Engine::NumUserFunctions;
    using Engine::RaiseErrors; ///< true: a fault skips its operation; false: it ends the evaluation

    /// Compiles a text (an apostrophe starts a comment) into slot `Index`; 0 or less asks for a new slot,
    /// whose number `Index` receives.
    void Compile(std::string Expression, std::int16_t& Index);
    void Compile(std::string Expression, std::int16_t const& Index = 0);

    /// The value of a slot; below 0 the highest slot, whose number `ExprIndex` receives. Empty while an
    /// error is pending.
    Variant Value(std::int32_t& ExprIndex);
    Variant Value(std::int32_t const& ExprIndex = -1) {
        std::int32_t index = ExprIndex;
        return expression::evaluate(*this, index);
    }

    /// Evaluates a slot once for each of `X`, put into the variable, and stores the values as doubles in
    /// `Y`, which has the same length. Each sample starts from a cleared error; one that fails gives
    /// not-a-number, and the first failure is left in `ErrorCode`: what `Value` gives early, a fault without
    /// RaiseErrors, a text that reads as no number. The variable keeps the last of `X`. A name that is a
    /// number or empty is an error.
    void ValueOver(std::string_view VarName, std::span<double const> X, std::span<double> Y,
                   std::int32_t ExprIndex = -1);
    void ValueOver(qvVariable& Variable, std::span<double const> X, std::span<double> Y,
                   std::int32_t ExprIndex = -1);

    /// The current slot's postfix program as text; throws a Fault when it holds an array element.
    std::string RPNExpression() { return expression::RPNExpression(*this); }

    std::int32_t ErrorCode() const { return static_cast<std::int32_t>(error.code); }
    std::string const& ErrorDescription() const { return error.description; }
    /// Position in the compiled text, in characters from 1; 0 for none.
    std::int32_t ErrorPos() const { return error.position; }
    /// Position of the mistake in the whole text that `UserFunc` refused, its comment cut off; 0 for none.
    std::int32_t DefinitionErrorPos() const { return error.definition_position; }
    /// The slot, or -k for the body of user function k.
    std::int32_t ErrorSource() const { return error.source; }
    void ClearError() { error = {}; }
    /// True when the name is taken by the language; this sets error 10 with a text that begins with PreText.
    bool ReservedName(std::string_view Name, std::string_view PreText);

    /// Sets a variable, created when missing. A numeric name sets nothing and puts its number into VarValue;
    /// an empty one is error 11.
    void Variable(NameOrNumber const& VarName, double& VarValue);
    void Variable(NameOrNumber const& VarName, double const& VarValue);
    void Variable(char const* VarName, double& VarValue) { set_named(VarName, VarValue); }
    void Variable(char const* VarName, double const& VarValue) {
        // A curve sets the one variable of its formula again and again; a number never begins with a letter.
        std::string_view const name = VarName;
        qvVariable* const first = m_Variables.first_if_named(name);
        if (first && !name.empty() && expression::is_letter(name.front()))
            first->Value = VarValue;
        else
            set_known(name, VarValue);
    }
    /// The value as a double, the number itself for a numeric name, 0 for an unknown one.
    double VariableValue(NameOrNumber const& VarName);
    std::int32_t NumVariables() const { return m_Variables.size(); }
    std::int16_t VariablesCount();
    std::string VariableName(Variant const& Index);

    /// Defines an array from a text such as "A(10, 5)"; indices run from 0 to the bound.
    void DefineArray(std::string Ary) { expression::DefineArray(*this, std::move(Ary)); }
    void SetArrayValues(NameOrNumber const& VarName, std::uint8_t NumDims, qvArray const& Ary);
    void ArrayValue(std::int16_t Index, Variant const& Value, std::int16_t Dim1, std::int16_t Dim2 = 0,
                    std::int16_t Dim3 = 0, std::int16_t Dim4 = 0);
    Variant GetArrayValue(std::int16_t Index, std::int16_t Dim1, std::int16_t Dim2 = 0, std::int16_t Dim3 = 0,
                          std::int16_t Dim4 = 0);
    void GetArrayDetails(std::string_view Name, std::int16_t& Index, std::int16_t& NumDims,
                         std::vector<std::int16_t>& Dims);
    std::string ArrayName(Variant const& Index);
    std::int16_t ArraysCount() const { return NumArrays; }

    std::int32_t NumExpressions() const;
    std::string ExpressionText(Variant const& Index);

    /// Defines a function from a text such as "hyp(a, b) = SQR(a^2 + b^2)"; the text loses a comment.
    void UserFunc(std::string& UserFunction);
    void UserFunc(std::string const& UserFunction);
    std::string UserFuncText(Variant const& Index);

    void ResetCompiledExpressions() { expression::ResetCompiledExpressions(*this); }
    void ResetVariables() { expression::ResetVariables(*this); }
    void ResetUserFuncs() { expression::ResetUserFuncs(*this); }
    /// Back to a new engine, except for DefaultValue, RaiseErrors and AutoCreateVariables.
    void Reset();

private:
    void set_named(std::string_view name, double& value);
    void set_known(std::string_view name, double value);
};

} // namespace qv
