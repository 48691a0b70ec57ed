// The expression engine as its users see it: compiled formulas with variables, arrays and user functions.
#pragma once

#include "qvgraph/checked.h"
#include "qvgraph/export.h"
#include "qvgraph/owned.h"
#include "qvgraph/variables.h"
#include "qvgraph/variant.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace qv {

template <class T>
concept is_character = std::is_same_v<T, char> || std::is_same_v<T, wchar_t> || std::is_same_v<
    T, char8_t> || std::is_same_v<T, char16_t> || std::is_same_v<T, char32_t>;

namespace expression {
struct Engine;
}

/// Doubles in one to four dimensions, dimension k indexed 0 to UpperBounds[k - 1], last index fastest.
struct qvArray {
    std::vector<std::int16_t> UpperBounds;
    std::vector<double> Values;
};

/// A variable's name, or a number (also as text) where a name is allowed to be one.
class QV_EXPORT NameOrNumber {
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
class QV_EXPORT qvExpression {
    Owned<expression::Engine> engine_;

public:
    qvExpression();
    qvExpression(qvExpression const&) = delete;
    qvExpression& operator=(qvExpression const&) = delete;
    ~qvExpression();

    bool& AutoCreateVariables;              ///< an unknown name creates a variable (true)
    bool& CaseSensitiveVariables;           ///< spellings that differ in case are different variables (false)
    Variant& DefaultValue;                  ///< the value of an evaluation that ends early (empty)
    expression::VariableTable& m_Variables; ///< the variables in order of creation
    std::int16_t& NumArrays;
    std::int16_t& NumUserFunctions;
    bool& RaiseErrors; ///< true: a fault skips its operation; false: it ends the evaluation

    /// Compiles a text (an apostrophe starts a comment) into slot `Index`; 0 or less asks for a new slot,
    /// whose number `Index` receives.
    void Compile(std::string Expression, std::int16_t& Index);
    void Compile(std::string Expression, Checked<std::int16_t> Index = 0);
    /// A variable of another type could not receive the number.
    template <std::integral Other>
    requires(!std::is_const_v<Other> && !std::same_as<Other, std::int16_t>)
    void Compile(std::string Expression, Other& Index) = delete;

    /// The value of a slot; below 0 the highest slot, whose number `ExprIndex` receives. Empty while an
    /// error is pending.
    Variant Value(std::int32_t& ExprIndex);
    Variant Value(Checked<std::int32_t> ExprIndex = -1);

    /// Evaluates a slot once for each of `X`, put into the variable, and stores the values as doubles in
    /// `Y`, which has the same length. Each sample starts from a cleared error; one that fails gives
    /// not-a-number, and the first failure is left in `ErrorCode`: what `Value` gives early, a fault without
    /// RaiseErrors, a text that reads as no number. The variable keeps the last of `X`. A name that is a
    /// number or empty is an error.
    void ValueOver(std::string_view VarName, std::span<double const> X, std::span<double> Y,
                   Checked<std::int32_t> ExprIndex = -1);
    void ValueOver(qvVariable& Variable, std::span<double const> X, std::span<double> Y,
                   Checked<std::int32_t> ExprIndex = -1);

    /// The current slot's postfix program as text; throws a Fault when it holds an array element.
    std::string RPNExpression();

    std::int32_t ErrorCode() const;
    std::string const& ErrorDescription() const;
    /// Position in the compiled text, in characters from 1; 0 for none.
    std::int32_t ErrorPos() const;
    /// Position of the mistake in the whole text that `UserFunc` refused, its comment cut off; 0 for none.
    std::int32_t DefinitionErrorPos() const;
    /// The slot, or -k for the body of user function k.
    std::int32_t ErrorSource() const;
    void ClearError();
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
        if (first && begins_with_letter(name))
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
    void DefineArray(std::string Ary);
    void SetArrayValues(NameOrNumber const& VarName, Checked<std::uint8_t> NumDims, qvArray const& Ary);
    void ArrayValue(Checked<std::int16_t> Index, Variant const& Value, Checked<std::int16_t> Dim1, Checked<std::int16_t> Dim2 = 0,
                    Checked<std::int16_t> Dim3 = 0, Checked<std::int16_t> Dim4 = 0);
    Variant GetArrayValue(Checked<std::int16_t> Index, Checked<std::int16_t> Dim1, Checked<std::int16_t> Dim2 = 0, Checked<std::int16_t> Dim3 = 0,
                          Checked<std::int16_t> Dim4 = 0);
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

    void ResetCompiledExpressions();
    void ResetVariables();
    void ResetUserFuncs();
    /// Back to a new engine, except for DefaultValue, RaiseErrors and AutoCreateVariables.
    void Reset();

private:
    static bool begins_with_letter(std::string_view name) {
        char const first = name.empty() ? '\0' : name.front();
        return (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z');
    }
    void set_named(std::string_view name, double& value);
    void set_known(std::string_view name, double value);
};

} // namespace qv
