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
    std::vector<std::int16_t> UpperBounds; ///< one for each dimension, 0 or more
    std::vector<double> Values;            ///< of all elements
};

/// A variable's name, or a number (also as text) where a name is allowed to be one.
class QV_EXPORT NameOrNumber {
public:
    NameOrNumber(char const* name) : text_(name) {}        ///< a text that lives longer
    NameOrNumber(std::string_view name) : text_(name) {}   ///< a text that lives longer
    NameOrNumber(std::string const& name) : text_(name) {} ///< a text that lives longer
    NameOrNumber(Variant const& value);                    ///< a text or a number; a list is fault 13
    /// A number.
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
    std::int16_t& NumArrays;                ///< how many arrays there are
    std::int16_t& NumUserFunctions;         ///< how many user functions there are
    bool& RaiseErrors; ///< true: a fault skips its operation; false: it ends the evaluation

    /// Compiles a text (an apostrophe starts a comment) into slot `Index`; 0 or less asks for a new slot,
    /// whose number `Index` receives.
    void Compile(std::string Expression, std::int16_t& Index);
    void Compile(std::string Expression, Checked<std::int16_t> Index = 0); ///< the same without an answer
    /// A variable of another type could not receive the number.
    template <std::integral Other>
    requires(!std::is_const_v<Other> && !std::same_as<Other, std::int16_t>) void Compile(
        std::string Expression, Other& Index) = delete;

    /// The value of a slot; below 0 the highest slot, whose number `ExprIndex` receives. Empty while an
    /// error is pending.
    Variant Value(std::int32_t& ExprIndex);
    Variant Value(Checked<std::int32_t> ExprIndex = -1); ///< the same without an answer

    /// Evaluates a slot once for each of `X`, put into the variable, and stores the values as doubles in
    /// `Y`, which has the same length. Each sample starts from a cleared error; one that fails gives
    /// not-a-number, and the first failure is left in `ErrorCode`: what `Value` gives early, a fault without
    /// RaiseErrors, a text that reads as no number. The variable keeps the last of `X`. A name that is a
    /// number or empty is an error.
    void ValueOver(std::string_view VarName, std::span<double const> X, std::span<double> Y,
                   Checked<std::int32_t> ExprIndex = -1);
    /// The same with a variable that was found already.
    void ValueOver(qvVariable& Variable, std::span<double const> X, std::span<double> Y,
                   Checked<std::int32_t> ExprIndex = -1);

    /// The current slot's postfix program as text; throws a Fault when it holds an array element.
    std::string RPNExpression();

    std::int32_t ErrorCode() const;              ///< 0 while there is no error
    std::string const& ErrorDescription() const; ///< what was wrong; empty for none
    /// Position in the compiled text, in characters from 1; 0 for none.
    std::int32_t ErrorPos() const;
    /// Position of the mistake in the whole text that `UserFunc` refused, its comment cut off; 0 for none.
    std::int32_t DefinitionErrorPos() const;
    /// The slot, or -k for the body of user function k.
    std::int32_t ErrorSource() const;
    void ClearError(); ///< forgets the pending error
    /// True when the name is taken by the language; this sets error 10 with a text that begins with PreText.
    bool ReservedName(std::string_view Name, std::string_view PreText);

    /// Sets a variable, created when missing. A numeric name sets nothing and puts its number into VarValue;
    /// an empty one is error 11.
    void Variable(NameOrNumber const& VarName, double& VarValue);
    void Variable(NameOrNumber const& VarName, double const& VarValue); ///< the same without an answer
    /// The same for a name that is a literal.
    void Variable(char const* VarName, double& VarValue) { set_named(VarName, VarValue); }
    /// The same without an answer.
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
    std::int32_t NumVariables() const { return m_Variables.size(); } ///< how many variables there are
    /// The same in 16 bits; error 11 beyond them.
    std::int16_t VariablesCount();
    /// The name at this place in order of creation, from 1; empty where there is none.
    std::string VariableName(Variant const& Index);

    /// Defines an array from a text such as "A(10, 5)"; indices run from 0 to the bound.
    void DefineArray(std::string Ary);
    /// Sets all elements of an array, which is defined when missing.
    void SetArrayValues(NameOrNumber const& VarName, Checked<std::uint8_t> NumDims, qvArray const& Ary);
    /// Sets an element of array `Index`, counted from 1; as many indices as it has dimensions, each 0 to its
    /// bound.
    void ArrayValue(Checked<std::int16_t> Index, Variant const& Value, Checked<std::int16_t> Dim1,
                    Checked<std::int16_t> Dim2 = 0, Checked<std::int16_t> Dim3 = 0,
                    Checked<std::int16_t> Dim4 = 0);
    /// An element, found in the same way; 0 where there is none.
    Variant GetArrayValue(Checked<std::int16_t> Index, Checked<std::int16_t> Dim1,
                          Checked<std::int16_t> Dim2 = 0, Checked<std::int16_t> Dim3 = 0,
                          Checked<std::int16_t> Dim4 = 0);
    /// An array's number, dimensions and upper bounds, these from entry 1 on; number 0 when there is none.
    void GetArrayDetails(std::string_view Name, std::int16_t& Index, std::int16_t& NumDims,
                         std::vector<std::int16_t>& Dims);
    /// The array's name, counted from 1; empty where there is none.
    std::string ArrayName(Variant const& Index);
    std::int16_t ArraysCount() const { return NumArrays; } ///< how many arrays there are

    std::int32_t NumExpressions() const;              ///< how many slots there are, slot 0 included
    std::string ExpressionText(Variant const& Index); ///< a slot's text; empty where there is none

    /// Defines a function from a text such as "hyp(a, b) = SQR(a^2 + b^2)"; the text loses a comment.
    void UserFunc(std::string& UserFunction);
    void UserFunc(std::string const& UserFunction); ///< the same without an answer
    /// A user function's definition, counted from 1; empty where there is none.
    std::string UserFuncText(Variant const& Index);

    void ResetCompiledExpressions(); ///< empties all slots
    void ResetVariables();           ///< removes variables and arrays
    void ResetUserFuncs();           ///< removes user functions
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
