#include "table/number_text.h"

#include "table/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>

namespace qv::table {
namespace {

constexpr std::size_t longest_number = 400; // characters; a double needs at most 310 before its point
constexpr std::string_view minus_sign = "\xE2\x88\x92";

constexpr std::array<std::string_view, 14> missing_marks{
    "na", "n/a", "#n/a", "null", "none", "nil", "nan", "-", "--", "---", ".", "?", "missing", "<na>"};
constexpr std::array<std::string_view, 4> infinite_marks{"inf", "infinity", "#div/0!", "\xE2\x88\x9E"};

bool is_one_of(std::span<std::string_view const> marks, std::string_view text) {
    return std::ranges::any_of(marks, [&](std::string_view mark) { return equal_letters(mark, text); });
}

// The number as from_chars reads it; empty where the marks do not stand as they should.
std::string_view plain_digits(std::string_view text, NumberForm const& form,
                              std::array<char, longest_number>& buffer) {
    std::size_t size = 0;
    bool after_decimal = false;
    if (form.thousands && text.find(form.thousands) != std::string_view::npos
        && !is_grouped_by(text.substr(0, text.find(form.decimal)), form.thousands))
        return {};
    for (char const c : text) {
        if (c == form.decimal) {
            if (after_decimal) return {};
            after_decimal = true;
            buffer[size++] = '.';
        } else if (c == form.thousands && c != '\0') {
            if (after_decimal) return {};
        } else if (c == '.') {
            return {}; // a point that is neither
        } else {
            buffer[size++] = c;
        }
    }
    return {buffer.data(), size};
}

NumberCell parsed(std::string_view text) {
    double value = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::invalid_argument || result.ptr != text.data() + text.size())
        return {CellKind::Other};
    if (result.ec != std::errc()) {
        // Too small for a double is 0, too large is infinite.
        bool const is_small =
            text.find("e-") != std::string_view::npos || text.find("E-") != std::string_view::npos;
        return is_small ? NumberCell{CellKind::Number, 0} : NumberCell{CellKind::Infinite};
    }
    if (std::isnan(value)) return {CellKind::Missing};
    if (std::isinf(value)) return {CellKind::Infinite};
    return {CellKind::Number, value};
}

NumberCell read_signed(std::string_view text, NumberForm const& form) {
    if (text.size() > longest_number - 2) return {CellKind::Other};
    std::array<char, longest_number> buffer;
    if (form.decimal != '.' || form.thousands) {
        text = plain_digits(text, form, buffer);
        if (text.empty()) return {CellKind::Other};
    }
    return parsed(text);
}

} // namespace

bool is_grouped_by(std::string_view text, char mark) {
    std::size_t in_group = 0, groups = 0;
    for (char const c : text) {
        if (c == mark) {
            if (groups == 0 ? in_group < 1 || in_group > 3 : in_group != 3) return false;
            ++groups;
            in_group = 0;
        } else if (is_digit(c)) {
            ++in_group;
        } else if (in_group > 0 || groups > 0 || (c != '-' && c != '+')) {
            return false;
        }
    }
    return groups > 0 && in_group == 3;
}

NumberCell read_number(std::string_view text, NumberForm const& form) {
    text = trimmed(text);
    if (text.empty()) return {};
    if (text.back() == '%' && text.size() > 1) text = trimmed(text.substr(0, text.size() - 1));
    bool negative = false;
    std::string_view digits = text;
    if (digits.starts_with(minus_sign)) {
        negative = true;
        digits.remove_prefix(minus_sign.size());
    } else if (digits.starts_with('+')) {
        digits.remove_prefix(1);
        if (digits.starts_with('-')) return {CellKind::Other};
    }
    if (digits.empty()) return {CellKind::Other};
    bool const may_be_number = is_digit(digits[0]) || digits[0] == '-' || digits[0] == form.decimal;
    if (is_digit(digits[0]) || (may_be_number && digits.size() > 1)) {
        NumberCell cell = read_signed(digits, form);
        if (negative) cell.value = -cell.value;
        if (cell.kind == CellKind::Number || cell.kind == CellKind::Infinite) return cell;
    }
    if (is_one_of(missing_marks, text)) return {};
    if (is_one_of(infinite_marks, digits.starts_with('-') ? digits.substr(1) : digits))
        return {CellKind::Infinite};
    return {CellKind::Other};
}

} // namespace qv::table
