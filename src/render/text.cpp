#include "render/text.h"

#include "base/convert.h"
#include "base/text.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/rich_text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qv::render {
namespace {

using document::trapped;

// Degrees to radians as the layout of turned text has always used it; not quite pi / 180.
constexpr double radians_per_degree = 0.01745;

// Of common typefaces, from the top of a line to its baseline.
constexpr double ascent_of_height = 0.8;

void read_token(std::string_view token, FontDetails& details) {
    constexpr std::string_view name_key = "Font=";
    if (starts_with_ignoring_case(token, name_key)) details.font.name = token.substr(name_key.size());
    if (starts_with_ignoring_case(token, "Bold")) details.font.bold = true;
    if (starts_with_ignoring_case(token, "Italic")) details.font.italic = true;
    if (token.starts_with('#')) {
        details.color = to_i32(leading_number(token.substr(1)));
        details.has_color = true;
    }
    if (double const size = leading_number(token); size > 0) details.font.size_points = to_i16(size);
}

// How far an alignment moves the start of a line of this extent back from its anchor.
double shift(Align align, double extent) {
    if (align == Align::Centre) return extent / 2;
    return align == Align::End ? extent : 0;
}

double whole_shift(Align align, double extent) {
    return round_half_even(shift(align, extent));
}

struct Turn {
    double sine = 0;
    double cosine = 1;
};

Point line_start(Point anchor, double along, double across, Turn turn) {
    return {anchor.x - along * turn.cosine - across * turn.sine,
            anchor.y + along * turn.sine - across * turn.cosine};
}

// Calls `act(run)` for each run of a line, in its size.
void for_each_run(DrawSurface& surface, std::string_view line, auto act) {
    double const size = surface.state.font.size_points;
    const document::RestoreScope restored(surface.state.font.size_points, size);
    for (TextRun const& run : text_runs(line)) {
        surface.state.font.size_points = size * run.size;
        act(run);
    }
}

struct PlacedLine {
    std::string_view text;
    Point start; // top left, before it is turned
    double height = 0;
    Turn turn;
    double angle_degrees = 0;
};

void print_line(DrawSurface& surface, PlacedLine const& line, Markup markup) {
    if (markup == Markup::Ignored) return surface.Text({line.text, line.start, line.angle_degrees});
    double along = 0;
    for_each_run(surface, line.text, [&](TextRun const& run) {
        // Down to the line's baseline, up by the rise and by the run's own ascent.
        double const down = line.height * (ascent_of_height * (1 - run.size) - run.rise);
        surface.Text({run.text, line_start(line.start, -along, -down, line.turn), line.angle_degrees});
        along += surface.TextWidth(run.text);
    });
}

void print_lines(DrawSurface& surface, std::string_view text, TextPlace const& place, Markup markup) {
    double const angle = place.angle_degrees * radians_per_degree;
    const Turn turn = place.angle_degrees == 0 ? Turn{} : Turn{std::sin(angle), std::cos(angle)};
    bool const widths_count = place.as_block || place.horizontal != Align::Start;
    const TextBlock block = place.as_block ? text_block(surface, text, markup) : TextBlock{};
    Point anchor = place.anchor;
    double line_height = -1;
    for (const std::string_view line : lines_of(text)) {
        const TextBlock own{widths_count ? line_width(surface, line, markup) : 0, surface.TextHeight(line)};
        if (line_height < 0) line_height = own.height;
        TextBlock const& placed = place.as_block ? block : own;
        double const along = shift(place.horizontal, placed.width) - (placed.width - own.width) / 2;
        double const across = whole_shift(place.vertical, placed.height);
        // The device turns text in tenths of a degree held in 16 bits.
        double const tenths = to_i16(place.angle_degrees * 10);
        print_line(surface, {line, line_start(anchor, along, across, turn), own.height, turn, tenths / 10},
                   markup);
        anchor = {anchor.x + line_height * turn.sine, anchor.y + line_height * turn.cosine};
    }
}

// The words of a line; a space between braces ends none.
std::vector<std::string_view> words_of(std::string_view line, Markup markup) {
    std::vector<std::string_view> words;
    std::size_t begin = 0;
    int braces = 0;
    for (std::size_t i = 0; i <= line.size(); ++i) {
        bool const ends = i == line.size() || (line[i] == ' ' && braces == 0);
        if (ends && i > begin) words.push_back(line.substr(begin, i - begin));
        if (ends) begin = i + 1;
        if (i < line.size() && markup == Markup::Read) braces += (line[i] == '{') - (line[i] == '}');
    }
    return words;
}

/// What a line may end behind: a word, or a part of one that is too long for a line. Such a word begins a
/// line.
struct LinePart {
    enum class Before { Space, Nothing, EndOfLine };
    std::string_view text;
    Before before = Before::Space;
};

// Continues a character of several bytes, or is an accent over the one before (U+0300 to U+036F).
bool goes_on(std::string_view text, std::size_t i) {
    auto const byte = [&](std::size_t at) { return at < text.size() ? text[at] & 0xFF : 0; };
    return (byte(i) & 0xC0) == 0x80 || byte(i) == 0xCC || (byte(i) == 0xCD && byte(i + 1) < 0xB0);
}

// The places within a word where it may be parted: between characters, but not within markup or beside it.
std::vector<std::size_t> places_to_part(std::string_view word, Markup markup) {
    constexpr std::string_view marks = "^_{}\\";
    auto const is_mark = [&](std::size_t i) { return marks.find(word[i]) != std::string_view::npos; };
    std::vector<std::size_t> places;
    int braces = 0;
    for (std::size_t i = 1; i < word.size(); ++i) {
        bool const in_markup = markup == Markup::Read && (is_mark(i - 1) || is_mark(i));
        braces += (word[i - 1] == '{') - (word[i - 1] == '}');
        if (!goes_on(word, i) && !in_markup && (markup == Markup::Ignored || braces == 0))
            places.push_back(i);
    }
    return places;
}

// Parts of a word that are no longer than the width: where it has hyphens, slashes and the like behind those,
// else between characters.
void part_word(DrawSurface& surface, std::string_view word, double width, Markup markup,
               std::vector<LinePart>& parts) {
    constexpr std::string_view separators = "-/\\_.,:;=+&|)";
    auto before = LinePart::Before::EndOfLine;
    auto const take = [&](std::size_t from, std::size_t to) {
        parts.push_back({word.substr(from, to - from), std::exchange(before, LinePart::Before::Nothing)});
    };
    auto const places = places_to_part(word, markup);
    auto const take_characters = [&](std::size_t from, std::size_t to) {
        for (std::size_t const place : places)
            if (place > from && place < to) take(std::exchange(from, place), place);
        take(from, to);
    };
    std::size_t begin = 0;
    for (std::size_t i = 0; i <= places.size(); ++i) {
        std::size_t const end = i < places.size() ? places[i] : word.size();
        bool const separates = separators.find(word[end - 1]) != std::string_view::npos;
        if (end < word.size() && !separates) continue;
        bool const fits = line_width(surface, word.substr(begin, end - begin), markup) <= width;
        fits ? take(begin, end) : take_characters(begin, end);
        begin = end;
    }
}

std::vector<LinePart> parts_of(DrawSurface& surface, std::string_view line, double width, Markup markup) {
    std::vector<LinePart> parts;
    for (const std::string_view word : words_of(line, markup))
        if (line_width(surface, word, markup) <= width)
            parts.push_back({word});
        else
            part_word(surface, word, width, markup, parts);
    return parts;
}

// As few lines as the width allows, none much longer than the others.
std::string broken_line(DrawSurface& surface, std::string_view line, double width, Markup markup) {
    auto const parts = parts_of(surface, line, width, markup);
    auto const filled = [&](double most) {
        std::vector<std::string> lines;
        for (LinePart const& part : parts) {
            bool const begins = lines.empty() || part.before == LinePart::Before::EndOfLine;
            std::string longer = begins ? "" : lines.back();
            if (!begins && part.before == LinePart::Before::Space) longer += ' ';
            longer += part.text;
            if (begins || line_width(surface, longer, markup) > most)
                lines.emplace_back(part.text);
            else
                lines.back() = std::move(longer);
        }
        return lines;
    };
    auto lines = filled(width);
    constexpr int steps = 6; // of the search for the narrowest text of as many lines
    double low = width / 2, high = width;
    for (int step = 0; step < steps; ++step) {
        double const middle = (low + high) / 2;
        auto narrower = filled(middle);
        bool const fits = narrower.size() == lines.size();
        (fits ? high : low) = middle;
        if (fits) lines = std::move(narrower);
    }
    std::string broken;
    for (std::string const& part : lines) broken += (broken.empty() ? "" : "\n") + part;
    return broken;
}

} // namespace

FontDetails GetFontDetails(document::ControlState& state, std::string_view specification) {
    FontDetails details;
    trapped(state, "GetFontDetails", [&] {
        for (const std::string_view token : split(specification, "|")) read_token(token, details);
    });
    return details;
}

void SetGraphFont(document::ControlState& state, DrawSurface& surface, std::string_view specification) {
    trapped(state, "SetGraphFont", [&] {
        const FontDetails details = GetFontDetails(state, specification);
        if (details.font.name.empty()) return;
        surface.state.font = details.font;
        if (details.has_color) surface.state.ForeColor = details.color;
    });
}

std::string as_read(document::PageSettings const& page, std::string_view text) {
    return page.RichText ? read_text(text) : std::string(text);
}

TextBlock text_block(DrawSurface& surface, std::string_view text, Markup markup) {
    auto const lines = lines_of(text);
    // Every line stands one height of the first below the one before.
    TextBlock block{0, surface.TextHeight(lines[0]) * static_cast<double>(lines.size())};
    for (const std::string_view line : lines)
        block.width = std::max(block.width, line_width(surface, line, markup));
    return block;
}

double line_width(DrawSurface& surface, std::string_view line, Markup markup) {
    if (markup == Markup::Ignored) return surface.TextWidth(line);
    double width = 0;
    for_each_run(surface, line, [&](TextRun const& run) { width += surface.TextWidth(run.text); });
    return width;
}

std::string broken_text(DrawSurface& surface, std::string_view text, double width, Markup markup) {
    std::string broken;
    for (const std::string_view line : lines_of(text))
        broken += (line_width(surface, line, markup) <= width ? std::string(line)
                                                              : broken_line(surface, line, width, markup))
                  + '\n';
    broken.pop_back();
    return broken;
}

void PrintText(document::ControlState& state, DrawSurface& surface, std::string_view text,
               TextPlace const& place, TextStyle const& style) {
    trapped(state, "PrintText", [&] {
        // Copies, because a font that cannot be read raises ErrorMsg, whose handler may change the document
        // that the texts belong to.
        const std::string own_text(text);
        bool const color_in_font = style.font.find('#') != std::string_view::npos;
        SetGraphFont(state, surface, std::string(style.font));
        const document::RestoreScope fore_color(surface.state.ForeColor);
        if (!color_in_font && style.color != -1) surface.state.ForeColor = style.color;
        print_lines(surface, own_text, place, style.is_ours ? Markup::Read : markup_of_host_texts(state));
    });
}

} // namespace qv::render
