// The text functions of the language. Lengths and positions count characters, positions from 1. A negative
// length and a position below 1 are faulted; a result above 16 Mi characters throws fault 7.
#pragma once

#include "expression/operand.h"

#include <string_view>

namespace qv::expression {

constexpr std::size_t max_text_characters = std::size_t{16} * 1024 * 1024;

Operand joined_text(std::string_view first, std::string_view second);
Operand text_length(Operand const& text);
/// Code of the first character as a single byte, 63 ("?") for one that has none; faulted for "".
Operand character_code(Operand const& text);
Operand spaces(Operand const& count);
/// `count` copies of a character: of the code `character` (taken modulo 256), or the first one of a text.
Operand repeated(Operand const& count, Operand const& character);
Operand left_part(Operand const& text, Operand const& count);
Operand right_part(Operand const& text, Operand const& count);
Operand middle_part(Operand const& text, Operand const& start, Operand const& count);
/// Where `sought` stands in `text` from `start` on, letter case ignored; 0 when absent.
Operand position_of_text(Operand const& start, Operand const& text, Operand const& sought);

} // namespace qv::expression
