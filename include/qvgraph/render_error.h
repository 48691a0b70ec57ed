// Errors for people: the text, a caret under the place of the error, and the message.
#pragma once

#include "qvgraph/export.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qv {

class qvExpression;

/// Three lines: the text (a stretch of it when it is long), a caret under the character at `position`
/// (counted from 1, one past the end allowed), and the message. Without a position (0) there is no caret
/// line. Control characters show as blanks. No line feed at the end.
QV_EXPORT std::string render_error(std::string_view text, std::int32_t position, std::string_view message);

/// The engine's pending error with the text it belongs to: the slot's, or the body of a user function.
/// Empty when there is no error.
QV_EXPORT std::string render_error(qvExpression& engine);

/// The engine's pending error with the definition that `UserFunc` refused, a caret under the mistake.
QV_EXPORT std::string render_definition_error(std::string_view definition, qvExpression const& engine);

} // namespace qv
