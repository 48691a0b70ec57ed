// Expression: the formula engine for Python.
#include "members.h"
#include "qvgraph/qvExpression.h"
#include "qvgraph/render_error.h"

namespace qv::python {
namespace {

struct Expression {
    qvExpression engine;
    std::recursive_mutex mutex;
};

/// Keeps other threads from an engine, as `PageLock` from a page.
class EngineLock {
public:
    explicit EngineLock(Expression& expression) : lock_(expression.mutex, std::try_to_lock) {
        if (lock_) return;
        const py::gil_scoped_release others_run;
        lock_.lock();
    }

private:
    std::unique_lock<std::recursive_mutex> lock_;
};

[[noreturn]] void raise_expression_error(qvExpression const& engine, std::string const& text,
                                         std::int32_t position) {
    const py::object type = py::module_::import("qvgraph._faults").attr("ExpressionError");
    PyErr_SetObject(type.ptr(), type(engine.ErrorCode(), position, engine.ErrorDescription(), text).ptr());
    throw py::error_already_set();
}

void check(qvExpression& engine) {
    if (engine.ErrorCode() != 0) raise_expression_error(engine, render_error(engine), engine.ErrorPos());
}

int compile(Expression& self, std::string const& text) {
    const EngineLock lock(self);
    self.engine.ClearError();
    std::int16_t slot = 0;
    self.engine.Compile(text, slot);
    check(self.engine);
    return slot;
}

void define(Expression& self, std::string const& text) {
    const EngineLock lock(self);
    qvExpression& engine = self.engine;
    engine.ClearError();
    engine.UserFunc(text);
    if (engine.ErrorCode() != 0)
        raise_expression_error(engine, render_definition_error(text, engine), engine.DefinitionErrorPos());
}

void set_variable(Expression& self, std::string const& name, py::handle value) {
    static std::string const member = "Expression";
    const EngineLock lock(self);
    double const number = number_of_python(value, {member, name.c_str()});
    self.engine.ClearError();
    self.engine.Variable(NameOrNumber(name), number);
    check(self.engine);
    if (!self.engine.m_Variables.find(name))
        throw py::value_error("Expression: " + name + " is no name of a variable");
}

double variable(Expression& self, std::string const& name) {
    const EngineLock lock(self);
    if (!self.engine.m_Variables.find(name)) throw py::key_error(name);
    return self.engine.VariableValue(NameOrNumber(name));
}

py::dict variables(Expression& self) {
    const EngineLock lock(self);
    py::dict all;
    for (std::int32_t i = 1; i <= self.engine.m_Variables.size(); ++i) {
        qvVariable const& variable = *self.engine.m_Variables.item(i);
        all[py::str(variable.Name)] = returned(variable.Value);
    }
    return all;
}

py::object value(Expression& self, int slot, py::kwargs const& given) {
    const EngineLock lock(self);
    for (auto const& [name, number] : given) set_variable(self, py::cast<std::string>(name), number);
    self.engine.ClearError();
    const Variant result = self.engine.Value(Checked<std::int32_t>(slot));
    check(self.engine);
    return returned(result);
}

py::object value_over(Expression& self, std::string const& name, py::handle values, int slot,
                      py::kwargs const& given) {
    static std::string const member = "Expression.value_over";
    const EngineLock lock(self);
    for (auto const& [other, number] : given) set_variable(self, py::cast<std::string>(other), number);
    const Numbers column(values, {member, "values"});
    py::array_t<double> results(static_cast<py::ssize_t>(column.values().size()));
    const std::span<double> places(results.mutable_data(), column.values().size());
    bool const is_name = !name.empty() && !NameOrNumber(name).number();
    if (!is_name) throw py::value_error(member + ": name must be that of a variable");
    self.engine.ClearError();
    {
        const py::gil_scoped_release others_run;
        self.engine.ValueOver(name, column.values(), places, slot);
    }
    return results;
}

std::string error(Expression& self) {
    const EngineLock lock(self);
    return render_error(self.engine);
}

/// A switch of the engine as a property; `of` leads to it.
template <class Of>
void add_switch(py::class_<Expression>& type, char const* name, Of of, char const* doc) {
    type.def_property(
        name, [of](Expression& self) { return of(self.engine); },
        [of](Expression& self, bool on) { of(self.engine) = on; }, doc);
}

} // namespace

void add_expression(py::module_& module) {
    using py::arg;
    py::class_<Expression> type(
        module, "Expression",
        "Formulas with variables and functions of one's own.\n\n"
        "Expression(\"a * sin(x)\") compiles at once. A mistake is an ExpressionError, whose text\n"
        "shows the formula with a caret under the place.");
    type.def(py::init([](std::string const& text) {
                 auto made = std::make_unique<Expression>();
                 if (!text.empty()) compile(*made, text);
                 return made;
             }),
             arg("text") = "", "__init__(self, text='')\n--\n\nAn engine of its own.");
    type.def("compile", &compile, arg("text"),
             "compile(self, text)\n--\n\nCompiles a formula and returns the number of its slot; value "
             "without one is about the newest.");
    type.def("value", &value, arg("slot") = -1,
             "value(self, slot=-1, **variables)\n--\n\nThe value of a formula; variables that are given keep "
             "their values.");
    type.def("value_over", &value_over, arg("name"), arg("values"), arg("slot") = -1,
             "value_over(self, name, values, slot=-1, **variables)\n--\n\n"
             "The values of a formula for each of many values of a variable, as an array. A contiguous array "
             "of doubles\n"
             "is read where it is. Where the formula fails the value is not-a-number, and error tells of the "
             "first\n"
             "failure. Other threads run meanwhile.");
    type.def("define", &define, arg("text"),
             "define(self, text)\n--\n\nDefines a function, such as \"hyp(a, b) = SQR(a^2 + b^2)\".");
    type.def("__getitem__", &variable, arg("name"),
             "__getitem__(self, name)\n--\n\nA variable's value; KeyError where there is none.");
    type.def("__setitem__", &set_variable, arg("name"), arg("value"),
             "__setitem__(self, name, value)\n--\n\nSets a variable.");
    type.def_property_readonly("variables", &variables, "All variables there are, a copy.");
    type.def_property_readonly(
        "error", &error,
        "The pending error: the formula, a caret under the place, the reason. Empty for none.");
    type.def(
        "reset",
        [](Expression& self) {
            const EngineLock lock(self);
            self.engine.Reset();
        },
        "reset(self)\n--\n\nForgets all formulas, variables and functions.");
    add_switch(
        type, "auto_create_variables",
        [](qvExpression& engine) -> bool& { return engine.AutoCreateVariables; },
        "Whether an unknown name creates a variable.");
    add_switch(
        type, "case_sensitive_variables",
        [](qvExpression& engine) -> bool& { return engine.CaseSensitiveVariables; },
        "Whether case tells variables apart.");
    add_switch(
        type, "raise_errors", [](qvExpression& engine) -> bool& { return engine.RaiseErrors; },
        "Whether a fault skips its operation, not the evaluation.");
}

} // namespace qv::python
