// Looks put on the records of the document. A look writes what the host has not set, and nothing else.
#pragma once

#include "control/document_names.h"

#include <string_view>

namespace qv {
struct Look;
}

namespace qv::control {

/// Gives a look to everything there and to everything to come. Fault 5 for an unknown name, 438 for a
/// property that there is not, 5 for one that is no matter of looks, 13 and 6 for a value that it does not
/// take; then nothing has changed.
void UseLook(ControlState& state, std::string_view name);
void UseLook(ControlState& state, Look const& look);

/// Puts the current look on what has just been made with its defaults.
void dress_page(ControlState& state);
void dress(ControlState& state, Graph& graph);
void dress(ControlState& state, Graph& graph, Axis& axis);
void dress(ControlState& state, Graph& graph, DataSet& set);

/// Puts it on anew where what the look says depends on what the host has set.
void redress(ControlState& state, Graph& graph, Axis& axis);
void redress(ControlState& state, Graph& graph, DataSet& set);

} // namespace qv::control
