#include "base/decimal.h"
#include "base/picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace qv {
namespace {

enum class Role { Text, Whole, Point, Decimals, Exponent };

/// A character of the pattern and what it does; the Exponent mark stands for all of its placeholders.
struct Mark {
    Role role = Role::Text;
    char character = 0;
};

struct NumberPicture {
    std::vector<Mark> marks;
    std::ptrdiff_t whole_places = 0;
    std::ptrdiff_t least_whole = 0; // whole digits that are always shown
    std::ptrdiff_t decimal_places = 0;
    std::ptrdiff_t least_decimals = 0;
    std::ptrdiff_t percent_signs = 0;
    std::ptrdiff_t exponent_zeros = 0;
    bool exponent_plus = false;
    bool has_exponent = false;
    bool has_point = false;
    bool grouped = false;

    Role part() const { return has_point ? Role::Decimals : Role::Whole; }
    bool may_take_exponent() const { return !has_exponent && whole_places + decimal_places > 0; }
};

void add_placeholder(NumberPicture& result, char character) {
    bool const always = character == '0';
    if (result.has_point) {
        ++result.decimal_places;
        if (always) result.least_decimals = result.decimal_places;
    } else {
        ++result.whole_places;
        if (always || result.least_whole > 0) ++result.least_whole;
    }
    result.marks.push_back({result.part(), character});
}

bool begins_exponent(Picture const& picture, std::size_t i) {
    return i + 2 < picture.size() && (picture[i].is('e') || picture[i].is('E'))
           && (picture[i + 1].is('+') || picture[i + 1].is('-')) && picture[i + 2].is_placeholder();
}

// Returns the index of the last symbol that belongs to the exponent.
std::size_t add_exponent(NumberPicture& result, Picture const& picture, std::size_t i) {
    result.has_exponent = true;
    result.exponent_plus = picture[i + 1].is('+');
    result.marks.push_back({Role::Exponent, picture[i].character});
    for (i += 2; i < picture.size() && picture[i].is_placeholder(); ++i)
        if (picture[i].is('0')) ++result.exponent_zeros;
    return i - 1;
}

// Index past the last placeholder of the whole part: a comma before it groups, one after it is text.
std::size_t whole_part_end(Picture const& picture) {
    std::size_t end = 0;
    for (std::size_t i = 0; i < picture.size() && !picture[i].is('.') && !begins_exponent(picture, i); ++i)
        if (picture[i].is_placeholder()) end = i + 1;
    return end;
}

NumberPicture read_number_picture(Picture const& picture) {
    NumberPicture result;
    const std::size_t whole_end = whole_part_end(picture);
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const Symbol symbol = picture[i];
        if (symbol.is_placeholder() && !result.has_exponent) {
            add_placeholder(result, symbol.character);
        } else if (symbol.is('.') && !result.has_point && !result.has_exponent) {
            result.has_point = true;
            result.marks.push_back({Role::Point, '.'});
        } else if (result.may_take_exponent() && begins_exponent(picture, i)) {
            i = add_exponent(result, picture, i);
        } else if (symbol.is(',') && result.whole_places > 0 && i < whole_end) {
            result.grouped = true;
        } else {
            if (symbol.is('%')) ++result.percent_signs;
            result.marks.push_back({Role::Text, symbol.character});
        }
    }
    return result;
}

/// The digits to show and, in scientific form, the power of ten beside them.
struct Shown {
    Decimal number;
    std::ptrdiff_t power = 0;
};

Shown shown_digits(double value, NumberPicture const& picture) {
    Decimal number = shortest_decimal(std::abs(value));
    if (number.is_zero()) return {};
    number.exponent += 2 * picture.percent_signs;
    if (!picture.has_exponent) return {rounded(number, -picture.decimal_places)};
    number = rounded(number, number.exponent - picture.decimal_places);
    return {{number.digits, 0}, number.exponent};
}

// Writes one number into the marks of its picture, from left to right.
class NumberWriter {
public:
    NumberWriter(Shown const& shown, NumberPicture const& picture)
        : shown_(shown), picture_(picture), next_whole_(picture.whole_places - 1),
          whole_count_(std::max(shown.number.whole_count(), picture.least_whole)),
          decimal_count_(std::max(significant_decimals(), picture.least_decimals)) {}

    std::string text() {
        for (const Mark mark : picture_.marks) write(mark);
        return text_;
    }

private:
    std::ptrdiff_t significant_decimals() const {
        std::ptrdiff_t count = picture_.decimal_places;
        while (count > 0 && shown_.number.digit_at(-count) == '0') --count;
        return count;
    }

    void write(Mark mark) {
        switch (mark.role) {
        case Role::Text: text_ += mark.character; break;
        case Role::Whole: write_whole(next_whole_--); break;
        case Role::Point:
            if (picture_.whole_places == 0) write_whole(0);
            text_ += '.';
            break;
        case Role::Decimals:
            if (next_decimal_++ < decimal_count_) text_ += shown_.number.digit_at(-next_decimal_);
            break;
        case Role::Exponent: write_exponent(mark.character); break;
        }
    }

    // The leftmost placeholder also shows all digits that have no placeholder of their own.
    void write_whole(std::ptrdiff_t place) {
        bool const leftmost = place + 1 >= picture_.whole_places;
        for (std::ptrdiff_t p = leftmost ? whole_count_ - 1 : place; p >= place; --p) {
            if (p >= whole_count_) continue;
            text_ += shown_.number.digit_at(p);
            if (picture_.grouped && p > 0 && p % 3 == 0) text_ += ',';
        }
    }

    void write_exponent(char letter) {
        const std::string digits = std::to_string(std::abs(shown_.power));
        text_ += letter;
        if (shown_.power < 0)
            text_ += '-';
        else if (picture_.exponent_plus)
            text_ += '+';
        text_.append(static_cast<std::size_t>(
                         std::max<std::ptrdiff_t>(picture_.exponent_zeros - std::ssize(digits), 0)),
                     '0');
        text_ += digits;
    }

    Shown const& shown_;
    NumberPicture const& picture_;
    std::ptrdiff_t next_whole_;
    std::ptrdiff_t whole_count_;
    std::ptrdiff_t decimal_count_;
    std::ptrdiff_t next_decimal_ = 0;
    std::string text_;
};

} // namespace

std::string number_picture_text(double value, Picture const& picture) {
    const NumberPicture pattern = read_number_picture(picture);
    const Shown shown = shown_digits(value, pattern);
    const std::string text = NumberWriter(shown, pattern).text();
    return value < 0 && !shown.number.is_zero() ? "-" + text : text;
}

} // namespace qv
