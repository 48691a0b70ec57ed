#include "control/members_by_name.h"

#include "base/text.h"
#include "qvgraph/fault.h"
#include "qvgraph/qvGraph.h"

#include <algorithm>
#include <numeric>

namespace qv::control {
namespace {

template <class Row>
Row const* find_row(std::span<Row const> rows, std::string_view name) {
    auto const found =
        std::ranges::find_if(rows, [&](Row const& row) { return equals_ignoring_case(row.name, name); });
    return found == rows.end() ? nullptr : &*found;
}

/// How many characters must be added, removed or exchanged to turn one name into the other, whatever the
/// case.
std::size_t edit_distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            bool const same = equals_ignoring_case(a.substr(i, 1), b.substr(j, 1));
            const std::size_t exchanged = diagonal + (same ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

template <class Row>
std::string suggestion(std::span<Row const> rows, std::string_view name) {
    auto const nearest =
        std::ranges::min_element(rows, {}, [&](Row const& row) { return edit_distance(row.name, name); });
    if (edit_distance(nearest->name, name) > 3) return "";
    return " Did you mean \"" + std::string(nearest->name) + "\"?";
}

template <class Row, class OtherRow>
Row const& row_named(std::span<Row const> rows, std::span<OtherRow const> others, std::string_view name,
                     std::string const& what, std::string const& instead) {
    if (Row const* row = find_row(rows, name)) return *row;
    const std::string quoted = "\"" + std::string(name) + "\"";
    if (find_row(others, name))
        raise_fault(FaultNumber::UnknownMember, quoted + " is not a " + what + instead);
    raise_fault(FaultNumber::UnknownMember,
                "qvGraph has no " + what + " named " + quoted + "." + suggestion(rows, name));
}

MethodRow const& method_named(std::string_view name) {
    return row_named(method_table(), property_table(), name, "method", " but a property: use Get or Let.");
}

/// What kinds of value are called, in the order of `Accepts`.
constexpr std::string_view accepted_kinds[] = {"a number", "a text", "a number or a text", "a list of texts",
                                               "a list of numbers"};

Accepts kind_of(Variant const& value) {
    if (std::holds_alternative<std::string>(value)) return Accepts::Text;
    if (std::holds_alternative<TextList>(value)) return Accepts::Texts;
    return std::holds_alternative<NumberList>(value) ? Accepts::Numbers : Accepts::Number;
}

std::string signature(MethodRow const& method) {
    std::string text = std::string(method.name) + "(";
    for (ParameterRow const& parameter : method.parameters) {
        if (text.back() != '(') text += ", ";
        text += parameter.required ? std::string(parameter.name) : "[" + std::string(parameter.name) + "]";
    }
    return text + ")";
}

void check_count(MethodRow const& method, std::size_t given) {
    auto const is_required = [](ParameterRow const& parameter) { return parameter.required; };
    auto const required = static_cast<std::size_t>(std::ranges::count_if(method.parameters, is_required));
    if (given >= required && given <= method.parameters.size()) return;
    raise_fault(FaultNumber::WrongArgumentCount, "The arguments of " + signature(method) + " are at least "
                                                     + std::to_string(required) + " and at most "
                                                     + std::to_string(method.parameters.size()) + ", but "
                                                     + std::to_string(given) + " were given.");
}

/// One argument a parameter: what was given, else the default.
std::vector<Variant> completed(MethodRow const& method, std::span<Variant const> given) {
    check_count(method, given.size());
    std::vector<Variant> all;
    all.reserve(method.parameters.size());
    for (ParameterRow const& parameter : method.parameters) {
        const std::size_t i = all.size();
        bool const use_default = i >= given.size() || given[i].is_empty();
        all.push_back(use_default ? parameter.default_value : given[i]);
        check_kind(std::string(method.name) + ": " + std::string(parameter.name), parameter.accepts, all[i]);
    }
    return all;
}

} // namespace

PropertyRow const& property_named(std::string_view name) {
    return row_named(property_table(), method_table(), name, "property", " but a method: use Call.");
}

void check_kind(std::string_view what, Accepts accepts, Variant const& value) {
    if (value.is_empty()) return;
    Accepts const kind = kind_of(value);
    bool const is_single = kind == Accepts::Number || kind == Accepts::Text;
    if (accepts == Accepts::Anything ? is_single : kind == accepts) return;
    auto const name = [](Accepts which) {
        return std::string(accepted_kinds[static_cast<std::size_t>(which)]);
    };
    raise_fault(FaultNumber::TypeMismatch,
                std::string(what) + " takes " + name(accepts) + ", but was given " + name(kind) + ".");
}

std::span<PropertyRow const> property_table() {
    static const PropertyRow rows[] = {
        {"Version", "text", "control", "", "plain", "", Accepts::Text,
         [](qvGraph const& g) -> Variant { return g.Version(); }, nullptr},
#define QV_GETTER(name) [](qvGraph const& g) -> Variant { return g.name(); }
#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                     \
    {#name, #kind_, #target_, #field_, #conversion_, "", kind::kind_::accepts, QV_GETTER(name), nullptr},
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_)                                        \
    {#name,                                                                                                  \
     #kind_,                                                                                                 \
     #target_,                                                                                               \
     #field_,                                                                                                \
     #conversion_,                                                                                           \
     #then_,                                                                                                 \
     kind::kind_::accepts,                                                                                   \
     QV_GETTER(name),                                                                                        \
     [](qvGraph& g, Variant const& value) { g.name(kind::kind_::from(value)); }},
#include "control/properties.def"
#undef QV_GETTER
    };
    return rows;
}

Variant get_property(qvGraph const& graph, std::string_view name) {
    return property_named(name).get(graph);
}

void let_property(qvGraph& graph, std::string_view name, Variant const& value) {
    PropertyRow const& row = property_named(name);
    if (!row.let)
        raise_fault(FaultNumber::UnknownMember, std::string(row.name) + " can be read but not set.");
    check_kind(row.name, row.accepts, value);
    row.let(graph, value);
}

Variant call_method(qvGraph& graph, std::string_view name, std::span<Variant> arguments) {
    MethodRow const& method = method_named(name);
    std::vector<Variant> all = completed(method, arguments);
    Variant result = method.call(graph, all);
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (method.parameters[i].by_reference) arguments[i] = std::move(all[i]);
    return result;
}

} // namespace qv::control
