// The public members by name: tables of all properties and methods, and access through them. Bindings,
// scripts and the reference page are made from these tables.
#pragma once

#include "control/kinds.h"
#include "qvgraph/variant.h"

#include <span>
#include <string_view>
#include <vector>

namespace qv {
class qvGraph;
}

namespace qv::control {

/// A row of properties.def. The texts are its columns, letter for letter.
struct PropertyRow {
    std::string_view name, kind, target, field, conversion, then;
    Accepts accepts;
    Variant (*get)(qvGraph const& graph);
    void (*let)(qvGraph& graph, Variant const& value); // nullptr: read only
};
std::span<PropertyRow const> property_table();

/// A property's row, whatever the case of its name; fault 438 where there is none.
PropertyRow const& property_named(std::string_view name);
/// Fault 13 for a value of a kind that is not taken. An empty one stands for 0, "" or an empty list.
void check_kind(std::string_view what, Accepts accepts, Variant const& value);

struct ParameterRow {
    std::string_view name;
    bool required = true;
    Variant default_value = {};
    Accepts accepts = Accepts::Number;
    bool by_reference = false; // the method writes its result here
};

struct MethodRow {
    std::string_view name;
    std::vector<ParameterRow> parameters;
    /// Takes one argument a parameter, and leaves in them what the method wrote.
    Variant (*call)(qvGraph& graph, std::span<Variant> arguments);
};
std::span<MethodRow const> method_table();

Variant get_property(qvGraph const& graph, std::string_view name);
void let_property(qvGraph& graph, std::string_view name, Variant const& value);
Variant call_method(qvGraph& graph, std::string_view name, std::span<Variant> arguments);

} // namespace qv::control
