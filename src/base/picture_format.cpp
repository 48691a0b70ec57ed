#include "base/picture_format.h"

#include "base/picture.h"
#include "base/text.h"

#include <algorithm>
#include <cmath>

namespace qv {
namespace {

Picture read_picture(std::string_view pattern) {
    Picture picture;
    picture.reserve(pattern.size());
    bool quoted = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char const character = pattern[i];
        if (character == '"')
            quoted = !quoted;
        else if (character == '\\' && !quoted && i + 1 < pattern.size())
            picture.push_back({.character = pattern[++i], .literal = true});
        else
            picture.push_back({.character = character, .literal = quoted});
    }
    return picture;
}

std::string literal_text(Picture const& picture) {
    std::string text;
    for (const Symbol symbol : picture) text += symbol.character;
    return text;
}

} // namespace

std::string picture_format(double value, std::string_view pattern) {
    if (pattern.empty() || !std::isfinite(value)) return number_text(value);
    const Picture picture = read_picture(pattern);
    auto const code = std::ranges::find_if(
        picture, [](Symbol symbol) { return symbol.is_placeholder() || is_time_code(symbol); });
    if (code == picture.end()) return literal_text(picture);
    if (code->is_placeholder()) return number_picture_text(value, picture);
    return is_calendar_value(value) ? time_picture_text(value, picture) : number_text(value);
}

} // namespace qv
