// Reading the tokens of an expression. Every function advances the byte offset past what it read.
#pragma once

#include "expression/engine.h"

#include <optional>
#include <string>
#include <string_view>

namespace qv::expression {

/// The character at an offset, or the end marker (code 0) behind the text.
constexpr char char_at(std::string_view text, std::size_t offset) {
    return offset < text.size() ? text[offset] : '\0';
}

/// Cuts an apostrophe comment and the blanks around the rest; a text without comment stays as it is.
std::string StripComments(std::string& text);

/// Skips spaces; tabs are no blanks.
void SkipBlanks(std::string_view text, std::size_t& offset);
/// A number: a double when it has a point or an exponent, else a 32-bit integer. One that is too large is a
/// recorded overflow and empty.
Operand GetNumber(Engine& engine, std::string_view text, std::size_t& offset);
/// A name and the blanks after it.
std::string_view GetName(std::string_view text, std::size_t& offset);
/// A text between quotes of its first character, doubled ones standing for one; nothing when it does not end.
std::optional<std::string> GetString(std::string_view text, std::size_t& offset);

} // namespace qv::expression
