// Text: font specifications, and lines placed at an anchor with an alignment and an angle.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/DrawSurface.h"

#include <string>
#include <string_view>

namespace qv::render {

/// What a font specification such as "Font=Times New Roman|12|Bold|#255" says.
struct FontDetails {
    Font font;
    bool has_color = false;
    Color color = 0;
};

/// Reads a specification: tokens separated by "|", recognised without regard to case: "Font=" with a name,
/// "Bold", "Italic", "#" with a colour number, and a size in points. Default: Arial, 9 points. A number too
/// large for its field is reported; what was read before it counts.
FontDetails GetFontDetails(document::ControlState& state, std::string_view specification);

/// Applies a specification to a surface; an empty font name leaves the surface's font as it is.
void SetGraphFont(document::ControlState& state, DrawSurface& surface, std::string_view specification);

enum class Align : std::int16_t { Start = 0, Centre = 1, End = 2 };

/// The place of a text: its anchor in twips, which part of each line lies on it, and the angle in degrees,
/// counter-clockwise.
struct TextPlace {
    Point anchor;
    Align horizontal = Align::Start;
    Align vertical = Align::Start;
    std::int16_t angle_degrees = 0;
    bool as_block = false; // the lines, centred on one another, are placed together instead of one by one
};

/// Whether a text's raised and lowered parts are read as such (render/rich_text.h).
enum class Markup : bool { Ignored, Read };

inline Markup markup_of_host_texts(document::PageSettings const& page) {
    return page.RichText ? Markup::Read : Markup::Ignored;
}

/// A text of the host as it is read aloud.
std::string as_read(document::PageSettings const& page, std::string_view text);

/// Font specification and colour; colour -1 keeps the surface's own, a "#" in the font overrides it. A text
/// is the host's unless it `is_ours`, which is always marked up.
struct TextStyle {
    std::string_view font;
    Color color = -1;
    bool is_ours = false;
};

/// What a text of one or more lines takes in the surface's current font, twips.
struct TextBlock {
    double width = 0; // of the widest line
    double height = 0;
};
TextBlock text_block(DrawSurface& surface, std::string_view text, Markup markup);

/// The width of one line, twips.
double line_width(DrawSurface& surface, std::string_view line, Markup markup);

/// The text with lines broken at spaces where they are wider than that in the surface's current font. A word
/// that is wider is broken behind hyphens, slashes and the like, else between characters; not within markup.
std::string broken_text(DrawSurface& surface, std::string_view text, double width, Markup markup);

/// Prints a text whose lines are separated by "\n" or "\r\n".
void PrintText(document::ControlState& state, DrawSurface& surface, std::string_view text,
               TextPlace const& place, TextStyle const& style);

} // namespace qv::render
