// Compiling expression text into the postfix program of a slot: operator precedence parsing in one pass.
#pragma once

#include "expression/engine.h"

#include <string>

namespace qv::expression {

/// Strips a comment, stores the text in a slot and compiles it. An index of 0 or less asks for a new slot
/// and receives its number. Errors are left in the engine's error state.
void Compile(Engine& engine, std::string text, std::int16_t& index);
/// Compiles the current slot.
void CompileExpression(Engine& engine);

} // namespace qv::expression
