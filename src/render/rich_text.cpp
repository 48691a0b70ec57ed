#include "render/rich_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace qv::render {
namespace {

// Share of the line's font size, level by level; smaller letters could not be read.
constexpr std::array<double, 3> sizes{1, 0.7, 0.55};
constexpr double rise_of_raised = 0.3;
constexpr double rise_of_lowered = -0.15;
constexpr std::size_t most_levels = 3;

struct Level {
    double rise = 0;
    std::size_t depth = 0;

    double size() const { return sizes[std::min(depth, sizes.size() - 1)]; }

    Level inner(char mark) const {
        if (depth == most_levels) return *this;
        double const step = mark == '^' ? rise_of_raised : rise_of_lowered;
        return {rise + step * size(), depth + 1};
    }
};

bool is_mark(char c) {
    return c == '^' || c == '_';
}

std::size_t character_length(std::string_view text, std::size_t place) {
    std::size_t end = place + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) ++end;
    return end - place;
}

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool is_capital(char c) {
    return c >= 'A' && c <= 'Z';
}

// Whether a text ends in what has an index: a closing parenthesis, a letter alone, symbols of chemical
// elements. The last word of sensor_1 is none of these.
bool takes_index(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0 && is_letter(text[begin - 1])) --begin;
    const std::string_view word = text.substr(begin);
    if (word.empty())
        return !text.empty() && (text.back() == ')' || static_cast<unsigned char>(text.back()) > 0x7F);
    bool const stands_behind_name = begin > 0 && text[begin - 1] == '_';
    if (word.size() == 1) return !stands_behind_name;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (!is_capital(word[i]) && (i == 0 || !is_capital(word[i - 1]))) return false;
    return !stands_behind_name;
}

bool is_balanced(std::string_view text) {
    int open = 0;
    for (std::size_t i = 0; i < text.size() && open >= 0; ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '{')
            ++open;
        else if (text[i] == '}')
            --open;
    }
    return open == 0;
}

class Reader {
public:
    explicit Reader(std::string_view line) : line_(line) {}

    std::vector<TextRun> runs() {
        read(Level{}, false);
        if (runs_.empty()) runs_.push_back({});
        return std::move(runs_);
    }

private:
    // Up to the brace that closes the group, or the end.
    void read(Level level, bool in_group) {
        int plain_braces = 0;
        while (place_ < line_.size()) {
            char const c = line_[place_];
            if (in_group && c == '}' && plain_braces == 0) return;
            if (is_mark(c) && read_marked(level)) continue;
            plain_braces += c == '{' ? 1 : c == '}' ? -1 : 0;
            if (c == '\\' && place_ + 1 < line_.size()) ++place_;
            take_character(level);
        }
    }

    // What a mark raises or lowers; false where it is a character like any other.
    bool read_marked(Level level) {
        char const mark = line_[place_];
        char const next = place_ + 1 < line_.size() ? line_[place_ + 1] : ' ';
        bool const one = mark == '^' ? next != ' ' && !is_mark(next) && next != '}' && next != '\\'
                                     : next >= '0' && next <= '9' && takes_index(line_.substr(0, place_));
        if (next != '{' && !one) return false;
        place_ += next == '{' ? 2 : 1;
        if (next == '{') {
            read(level.inner(mark), true);
            ++place_; // past the closing brace
        } else {
            take_character(level.inner(mark));
        }
        return true;
    }

    void take_character(Level level) {
        std::size_t const length = character_length(line_, place_);
        if (runs_.empty() || runs_.back().size != level.size() || runs_.back().rise != level.rise)
            runs_.push_back({{}, level.size(), level.rise});
        runs_.back().text += line_.substr(place_, length);
        place_ += length;
    }

    std::string_view line_;
    std::size_t place_ = 0;
    std::vector<TextRun> runs_;
};

// Raised, where there is a character for each of them.
std::string raised_characters(std::string const& text) {
    constexpr std::array<std::string_view, 10> digits{"\u2070", "\u00B9", "\u00B2", "\u00B3", "\u2074",
                                                      "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
    constexpr std::string_view minus = "\u2212";
    std::string raised;
    for (std::size_t i = 0; i < text.size(); i += character_length(text, i)) {
        const std::string_view character(text.data() + i, character_length(text, i));
        char const first = character[0];
        if (first >= '0' && first <= '9')
            raised += digits[static_cast<std::size_t>(first - '0')];
        else if (first == '+')
            raised += "\u207A";
        else if (first == '-' || character == minus)
            raised += "\u207B";
        else
            return text;
    }
    return raised;
}

} // namespace

std::vector<TextRun> text_runs(std::string_view line) {
    if (!is_balanced(line)) return {{std::string(line)}};
    return Reader(line).runs();
}

std::string escaped(std::string_view text) {
    std::string result;
    for (char const c : text) {
        if (is_mark(c) || c == '{' || c == '}' || c == '\\') result += '\\';
        result += c;
    }
    return result;
}

std::string read_text(std::string_view text) {
    std::string read;
    while (true) {
        auto const end = text.find('\n');
        for (TextRun const& run : text_runs(text.substr(0, end)))
            read += run.rise > 0 ? raised_characters(run.text) : run.text;
        if (end == std::string_view::npos) return read;
        read += '\n';
        text.remove_prefix(end + 1);
    }
}

} // namespace qv::render
