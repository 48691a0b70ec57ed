#include "expression/characters.h"

#include <algorithm>
#include <array>

namespace qv::expression {
namespace {

struct SequenceForm {
    unsigned char lead_mask, lead_bits;
    std::size_t bytes;
    char32_t smallest;
};

// The smallest code of each length excludes overlong spellings.
constexpr std::array sequence_forms{
    SequenceForm{0xE0, 0xC0, 2, 0x80},
    SequenceForm{0xF0, 0xE0, 3, 0x800},
    SequenceForm{0xF8, 0xF0, 4, 0x10000},
};

bool is_code_point(char32_t code) {
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// The sequence of this form at the start of `text`, or one of no bytes.
Character sequence(std::string_view text, SequenceForm const& form) {
    auto const lead = static_cast<unsigned char>(text[0]);
    if ((lead & form.lead_mask) != form.lead_bits || text.size() < form.bytes) return {};
    char32_t code = lead & static_cast<unsigned char>(~form.lead_mask);
    for (char const c : text.substr(1, form.bytes - 1)) {
        auto const byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80) return {};
        code = code << 6 | (byte & 0x3FU);
    }
    return code >= form.smallest && is_code_point(code) ? Character{code, form.bytes} : Character{};
}

} // namespace

Character character_at(std::string_view text, std::size_t offset) {
    auto const lead = static_cast<unsigned char>(text[offset]);
    if (lead >= 0x80)
        for (SequenceForm const& form : sequence_forms)
            if (const Character found = sequence(text.substr(offset), form); found.bytes > 0) return found;
    return {lead, 1};
}

std::size_t character_count(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t offset = 0; offset < text.size(); ++count) offset += character_at(text, offset).bytes;
    return count;
}

std::size_t skip_characters(std::string_view text, std::size_t count, std::size_t start) {
    std::size_t offset = start;
    for (; count > 0 && offset < text.size(); --count) offset += character_at(text, offset).bytes;
    return offset;
}

std::string latin1_text(unsigned char code) {
    if (code < 0x80) return {static_cast<char>(code)};
    return {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
}

bool is_name_character(char32_t code) {
    if (code >= 0x80) return code <= 0xFF;
    char const c = static_cast<char>(code);
    return is_digit(c) || is_letter(c) || c == '_';
}

} // namespace qv::expression
