// Colour maps: the colours that stand for values, from the first to the last of a range.
#pragma once

#include "render/grids/oklab.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qv::render {

/// What the colours of a map say: more and more, away from a middle, or round and round.
enum class ColorOrder : std::uint8_t { Sequential, Diverging, Cyclic };

struct ColorMap {
    static constexpr std::size_t size = 256;
    ColorOrder order = ColorOrder::Sequential;
    std::array<Oklab, size> seen{}; // from the first value to the last, before they are rounded to bytes
    std::array<Color, size> colors{};
};

/// The map of a name or of a list of colours, and with "-" before that the same turned round. Names:
/// "night", "ember" and "meadow" become lighter and lighter, "tide" and "moor" darker on both sides of a
/// light middle, "dial" goes round through all hues at one lightness; "" is "night". A list is two or more of
/// #RRGGBB, separated by ";" or ",", each with the same share of the range. All steps of a map with a name
/// look equally far. Anything else is fault 5.
ColorMap color_map(std::string_view text);

} // namespace qv::render
