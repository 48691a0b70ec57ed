// Functions that the user defines by a line of text: name(parameters) = body. Each has an engine of its own
// whose variables are the parameters, in order, and whose one expression is the body.
#pragma once

#include "expression/engine.h"

#include <string>

namespace qv::expression {

/// Defines the next function; the text loses its comment. Errors are left in the engine's error state.
void UserFunc(Engine& engine, std::string& definition);
/// Forgets every function.
void ResetUserFuncs(Engine& engine);
/// The engine of function k (1 to 20), created on first use; fault 9 outside that range.
Engine& user_engine(Engine& engine, int k);

} // namespace qv::expression
