#include "raster/text_shaping.h"

#include <hb.h>

namespace qv::raster {
namespace {

// Consecutive characters with one face and one script.
struct Run {
    Typeface const* typeface = nullptr;
    hb_script_t script = HB_SCRIPT_COMMON;
    std::size_t begin = 0;
    std::size_t end = 0;
};

bool belongs_to_the_one_before(char32_t character) {
    switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), character)) {
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_FORMAT: return true;
    default: return false;
    }
}

bool is_neutral(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

std::vector<Run> runs_of(std::u32string const& characters, FaceChoice const& choose_face) {
    std::vector<Run> runs;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        char32_t const character = characters[i];
        bool const follows = i > 0 && belongs_to_the_one_before(character);
        Typeface const* const typeface = follows ? runs.back().typeface : choose_face(character);
        const hb_script_t script = hb_unicode_script(hb_unicode_funcs_get_default(), character);
        bool const joins = !runs.empty() && runs.back().typeface == typeface
                           && (follows || is_neutral(script) || is_neutral(runs.back().script)
                               || runs.back().script == script);
        if (!joins) runs.push_back({typeface, script, i, i});
        Run& run = runs.back();
        run.end = i + 1;
        if (is_neutral(run.script)) run.script = script;
    }
    return runs;
}

struct BufferRelease {
    void operator()(hb_buffer_t* buffer) const { hb_buffer_destroy(buffer); }
};

void shape_run(std::u32string const& characters, Run const& run, ShapedLine& line) {
    const std::unique_ptr<hb_buffer_t, BufferRelease> buffer(hb_buffer_create());
    hb_buffer_add_utf32(buffer.get(), reinterpret_cast<std::uint32_t const*>(characters.data()),
                        static_cast<int>(characters.size()), static_cast<unsigned>(run.begin),
                        static_cast<int>(run.end - run.begin));
    hb_buffer_set_script(buffer.get(), run.script);
    const hb_direction_t direction = hb_script_get_horizontal_direction(run.script);
    hb_buffer_set_direction(buffer.get(),
                            direction == HB_DIRECTION_RTL ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_language(buffer.get(), hb_language_from_string("en", 2));
    hb_shape(run.typeface->shaper(), buffer.get(), nullptr, 0);

    unsigned count = 0;
    hb_glyph_info_t const* const infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
    hb_glyph_position_t const* const places = hb_buffer_get_glyph_positions(buffer.get(), &count);
    double const em = run.typeface->units_per_em();
    for (unsigned i = 0; i < count; ++i) {
        line.glyphs.push_back({run.typeface, infos[i].codepoint,
                               static_cast<float>(line.width + places[i].x_offset / em),
                               static_cast<float>(-places[i].y_offset / em)});
        // Marks without an advance stay without one.
        double const extra = places[i].x_advance != 0 ? run.typeface->extra_advance() : 0;
        line.width += places[i].x_advance / em + extra;
    }
}

} // namespace

ShapedLine shape_line(std::u32string const& characters, FaceChoice const& choose_face) {
    ShapedLine line;
    for (Run const& run : runs_of(characters, choose_face)) shape_run(characters, run, line);
    return line;
}

} // namespace qv::raster
