#include "expression/tokenizer.h"

#include "base/text.h"
#include "expression/characters.h"
#include "expression/decimal.h"

#include <charconv>

namespace qv::expression {

std::string StripComments(std::string& text) {
    auto const mark = text.find('\'');
    if (mark != std::string::npos) text = std::string(trim(std::string_view(text).substr(0, mark)));
    return text;
}

void SkipBlanks(std::string_view text, std::size_t& offset) {
    while (char_at(text, offset) == ' ') ++offset;
}

Operand GetNumber(Engine& engine, std::string_view text, std::size_t& offset) {
    const std::string_view literal = text.substr(offset, literal_end(text, offset) - offset);
    offset += literal.size();
    if (literal.find_first_not_of("0123456789") != std::string_view::npos) {
        if (auto const value = literal_value(literal)) return double_operand(*value);
    } else {
        std::int32_t value = 0;
        auto const result = std::from_chars(literal.data(), literal.data() + literal.size(), value);
        if (result.ec == std::errc()) return int32_operand(value);
    }
    record_fault(engine, FaultNumber::Overflow, "GetNumber");
    return {};
}

std::string_view GetName(std::string_view text, std::size_t& offset) {
    const std::size_t start = offset;
    while (offset < text.size()) {
        const Character character = character_at(text, offset);
        if (!is_name_character(character.code)) break;
        offset += character.bytes;
    }
    const std::string_view name = text.substr(start, offset - start);
    SkipBlanks(text, offset);
    return name;
}

std::optional<std::string> GetString(std::string_view text, std::size_t& offset) {
    char const delimiter = text[offset];
    std::string value;
    for (std::size_t start = offset + 1;;) {
        auto const end = text.find(delimiter, start);
        if (end == std::string_view::npos) return std::nullopt;
        value += text.substr(start, end - start);
        offset = end + 1;
        if (char_at(text, offset) != delimiter) return value;
        value += delimiter;
        start = offset + 1;
    }
}

} // namespace qv::expression
