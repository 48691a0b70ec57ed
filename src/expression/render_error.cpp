#include "qvgraph/render_error.h"

#include "base/text.h"
#include "expression/characters.h"
#include "expression/tokenizer.h"
#include "qvgraph/qvExpression.h"

#include <algorithm>

namespace qv {
namespace {

using expression::character_count;
using expression::skip_characters;

constexpr std::size_t shown_before = 60; // characters left and right of the caret
constexpr std::size_t shown_after = 20;
constexpr std::string_view left_out = "...";

// One line whatever the text holds, so that the caret stays under its character.
std::string on_one_line(std::string_view text) {
    std::string line(text);
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    return line;
}

// What lies around the caret, and how many columns stand before the caret.
struct Excerpt {
    std::string text;
    std::size_t column = 0;
};

Excerpt excerpt_around(std::string_view text, std::size_t caret) {
    const std::size_t length = character_count(text);
    const std::size_t first = caret > shown_before ? caret - shown_before : 0;
    const std::size_t last = std::min(length, caret + shown_after);
    const std::size_t begin = skip_characters(text, first);
    const std::size_t end = skip_characters(text, last - first, begin);
    Excerpt excerpt{on_one_line(text.substr(begin, end - begin)), caret - first};
    if (last < length) excerpt.text += left_out;
    if (first == 0) return excerpt;
    return {std::string(left_out) + excerpt.text, excerpt.column + left_out.size()};
}

// The engine's messages may run over two lines.
std::string message_lines(std::string_view message) {
    return replace_all(message, "\r\n", "\n");
}

std::string body_of(std::string const& definition) {
    auto const equals = definition.find('=');
    return equals == std::string::npos ? definition
                                       : std::string(trim(std::string_view(definition).substr(equals + 1)));
}

} // namespace

std::string render_error(std::string_view text, std::int32_t position, std::string_view message) {
    const std::size_t length = character_count(text);
    const std::size_t caret = position < 1 ? 0 : std::min(length, static_cast<std::size_t>(position - 1));
    const Excerpt excerpt = excerpt_around(text, caret);
    std::string lines = excerpt.text + "\n";
    if (position > 0) lines += std::string(excerpt.column, ' ') + "^\n";
    return lines + message_lines(message);
}

std::string render_definition_error(std::string_view definition, qvExpression const& engine) {
    std::string text(definition);
    return render_error(expression::StripComments(text), engine.DefinitionErrorPos(),
                        engine.ErrorDescription());
}

std::string render_error(qvExpression& engine) {
    if (engine.ErrorCode() == 0) return {};
    const std::int32_t source = engine.ErrorSource();
    const std::string text =
        source < 0 ? body_of(engine.UserFuncText(-source)) : engine.ExpressionText(source);
    return render_error(text, engine.ErrorPos(), engine.ErrorDescription());
}

} // namespace qv
