// Marked-up lines: parts that are raised (x^{2}, x^2) or lowered (CO_{2}, CO_2).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qv::render {

/// A part of a line in one size on one level.
struct TextRun {
    std::string text;
    double size = 1; // share of the line's font size
    double rise = 0; // of its baseline over the line's, in heights of the line

    bool operator==(TextRun const&) const = default;
};

/// The runs of a marked-up line. "^" and "_" before braces raise and lower what stands between them, parts of
/// which may be raised and lowered again; "^" before a character, and "_" before a digit behind a letter
/// alone or symbols of chemical elements, do so with that alone. A backslash takes the next character as it
/// is. A line whose braces are not balanced is one run, as it stands.
std::vector<TextRun> text_runs(std::string_view line);

/// A text whose characters stand for themselves when it is read as marked up.
std::string escaped(std::string_view text);

/// A marked-up text as it is read aloud: without markup, raised digits as the characters for them (x²).
std::string read_text(std::string_view text);

} // namespace qv::render
