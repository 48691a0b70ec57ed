// Characters of a text: UTF-8 sequences, and every byte that belongs to none as a Latin-1 character of its
// own, so that any byte string has characters, positions and a length.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qv::expression {

struct Character {
    char32_t code = 0;
    std::size_t bytes = 0;
};

/// The character that starts at byte `offset`, which must lie inside the text.
Character character_at(std::string_view text, std::size_t offset);
std::size_t character_count(std::string_view text);
/// The byte offset `count` characters after byte `start`, at most the text's length.
std::size_t skip_characters(std::string_view text, std::size_t count, std::size_t start = 0);
/// The character with this Latin-1 code (0 to 255) as UTF-8.
std::string latin1_text(unsigned char code);

/// Characters of names after the first: digits, letters, "_" and the codes 128 to 255.
bool is_name_character(char32_t code);
constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool is_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace qv::expression
