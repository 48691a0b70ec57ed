#include "expression/text_functions.h"

#include "base/convert.h"
#include "base/text.h"
#include "expression/characters.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace qv::expression {
namespace {

constexpr char32_t largest_single_byte = 0xFF;
constexpr int question_mark = 63;

// The operand as a 32-bit integer, halves to even.
std::optional<std::int32_t> whole_number(Operand const& operand) {
    const Number number = number_in(operand);
    double const whole = round_half_even(number.value);
    bool const fits = whole >= std::numeric_limits<std::int32_t>::min()
                      && whole <= std::numeric_limits<std::int32_t>::max();
    if (number.faulted() || !fits) return std::nullopt;
    return static_cast<std::int32_t>(whole);
}

std::optional<std::size_t> count_of_characters(Operand const& operand) {
    auto const count = whole_number(operand);
    if (!count || *count < 0) return std::nullopt;
    return static_cast<std::size_t>(*count);
}

[[noreturn]] void raise_too_long() {
    raise_fault(FaultNumber::OutOfMemory, "Out of memory: a text may have 16 Mi characters");
}

Operand copies(std::string_view character, std::size_t count) {
    if (count > max_text_characters) raise_too_long();
    std::string text;
    text.reserve(count * character.size());
    for (std::size_t i = 0; i < count; ++i) text += character;
    return text_operand(std::move(text));
}

std::optional<std::string> character_to_repeat(Operand const& operand) {
    if (operand.kind == Kind::Text) {
        if (operand.text.empty()) return std::nullopt;
        return operand.text.substr(0, character_at(operand.text, 0).bytes);
    }
    auto const code = whole_number(operand);
    if (!code || *code < 0) return std::nullopt;
    return latin1_text(static_cast<unsigned char>(*code % 256));
}

// For each prefix of `sought`, the length of its longest proper border (Knuth, Morris, Pratt).
std::vector<std::uint32_t> borders(std::string_view sought) {
    std::vector<std::uint32_t> border(sought.size(), 0);
    std::uint32_t length = 0;
    for (std::size_t i = 1; i < sought.size(); ++i) {
        while (length > 0 && sought[i] != sought[length]) length = border[length - 1];
        if (sought[i] == sought[length]) ++length;
        border[i] = length;
    }
    return border;
}

// Linear whatever the texts: repetitive texts of millions of characters would take hours otherwise.
std::size_t find_text(std::string_view text, std::string_view sought, std::size_t start) {
    auto const border = borders(sought);
    std::size_t length = 0;
    for (std::size_t i = start; i < text.size(); ++i) {
        while (length > 0 && text[i] != sought[length]) length = border[length - 1];
        if (text[i] == sought[length]) ++length;
        if (length == sought.size()) return i + 1 - length;
    }
    return std::string_view::npos;
}

} // namespace

Operand joined_text(std::string_view first, std::string_view second) {
    bool const surely_fits = first.size() + second.size() <= max_text_characters;
    if (!surely_fits && character_count(first) + character_count(second) > max_text_characters)
        raise_too_long();
    std::string text;
    text.reserve(first.size() + second.size());
    text += first;
    text += second;
    return text_operand(std::move(text));
}

Operand text_length(Operand const& text) {
    std::string storage;
    return int32_operand(static_cast<std::int32_t>(character_count(text_view(text, storage))));
}

Operand character_code(Operand const& operand) {
    std::string storage;
    const std::string_view text = text_view(operand, storage);
    if (text.empty()) return faulted();
    char32_t const code = character_at(text, 0).code;
    return int16_operand(code <= largest_single_byte ? static_cast<int>(code) : question_mark);
}

Operand spaces(Operand const& count) {
    auto const number = count_of_characters(count);
    return number ? copies(" ", *number) : faulted();
}

Operand repeated(Operand const& count, Operand const& character) {
    auto const number = count_of_characters(count);
    auto const text = character_to_repeat(character);
    return number && text ? copies(*text, *number) : faulted();
}

Operand left_part(Operand const& text, Operand const& count) {
    auto const number = count_of_characters(count);
    if (!number) return faulted();
    std::string storage;
    const std::string_view whole = text_view(text, storage);
    return text_operand(std::string(whole.substr(0, skip_characters(whole, *number))));
}

Operand right_part(Operand const& text, Operand const& count) {
    auto const number = count_of_characters(count);
    if (!number) return faulted();
    std::string storage;
    const std::string_view whole = text_view(text, storage);
    const std::size_t length = character_count(whole);
    return text_operand(
        std::string(whole.substr(skip_characters(whole, length - std::min(length, *number)))));
}

Operand middle_part(Operand const& text, Operand const& start, Operand const& count) {
    auto const first = whole_number(start);
    auto const number = count_of_characters(count);
    if (!first || *first < 1 || !number) return faulted();
    std::string storage;
    const std::string_view whole = text_view(text, storage);
    const std::size_t begin = skip_characters(whole, static_cast<std::size_t>(*first - 1));
    return text_operand(std::string(whole.substr(begin, skip_characters(whole, *number, begin) - begin)));
}

Operand position_of_text(Operand const& start, Operand const& text, Operand const& sought) {
    auto const first = whole_number(start);
    if (!first || *first < 1) return faulted();
    std::string text_storage, sought_storage;
    const std::string whole = to_upper(text_view(text, text_storage));
    const std::string part = to_upper(text_view(sought, sought_storage));
    const std::size_t begin = skip_characters(whole, static_cast<std::size_t>(*first - 1));
    if (begin >= whole.size()) return int32_operand(0);
    if (part.empty()) return int32_operand(*first);
    if (part.size() > whole.size()) return int32_operand(0);
    const std::size_t found = find_text(whole, part, begin);
    if (found == std::string_view::npos) return int32_operand(0);
    return int32_operand(
        static_cast<std::int32_t>(character_count(std::string_view(whole).substr(0, found)) + 1));
}

} // namespace qv::expression
