#include "raster/unicode.h"

#include <array>
#include <cstddef>

namespace qv::raster {
namespace {

// First bytes of a kind of sequence, the bits they hold, how many bytes follow, and the range of the second
// byte; it excludes overlong forms, surrogates and numbers above U+10FFFF.
struct SequenceKind {
    unsigned char first, last;
    unsigned char mask;
    int following;
    unsigned char second_low, second_high;
};

constexpr std::array kinds{
    SequenceKind{0xC2, 0xDF, 0x1F, 1, 0x80, 0xBF}, SequenceKind{0xE0, 0xE0, 0x0F, 2, 0xA0, 0xBF},
    SequenceKind{0xE1, 0xEC, 0x0F, 2, 0x80, 0xBF}, SequenceKind{0xED, 0xED, 0x0F, 2, 0x80, 0x9F},
    SequenceKind{0xEE, 0xEF, 0x0F, 2, 0x80, 0xBF}, SequenceKind{0xF0, 0xF0, 0x07, 3, 0x90, 0xBF},
    SequenceKind{0xF1, 0xF3, 0x07, 3, 0x80, 0xBF}, SequenceKind{0xF4, 0xF4, 0x07, 3, 0x80, 0x8F},
};

SequenceKind const* kind_of(unsigned char lead) {
    for (SequenceKind const& kind : kinds)
        if (lead >= kind.first && lead <= kind.last) return &kind;
    return nullptr;
}

// The character that begins at `position`, which moves past it.
char32_t next_character(std::string_view text, std::size_t& position) {
    auto const lead = static_cast<unsigned char>(text[position++]);
    if (lead < 0x80) return lead < 0x20 || lead == 0x7F ? U' ' : lead;
    SequenceKind const* const kind = kind_of(lead);
    if (kind == nullptr) return replacement_character;
    auto character = static_cast<char32_t>(lead & kind->mask);
    for (int i = 0; i < kind->following; ++i) {
        if (position == text.size()) return replacement_character;
        auto const byte = static_cast<unsigned char>(text[position]);
        unsigned char const low = i == 0 ? kind->second_low : 0x80;
        unsigned char const high = i == 0 ? kind->second_high : 0xBF;
        if (byte < low || byte > high) return replacement_character;
        character = character << 6 | (byte & 0x3F);
        ++position;
    }
    return character < 0xA0 ? U' ' : character;
}

} // namespace

std::u32string decode_utf8(std::string_view text) {
    std::u32string characters;
    characters.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) characters += next_character(text, position);
    return characters;
}

} // namespace qv::raster
