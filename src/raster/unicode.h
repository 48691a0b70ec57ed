// Unicode: UTF-8 decoding, and which characters belong together.
#pragma once

#include <string>
#include <string_view>

namespace qv::raster {

constexpr char32_t replacement_character = 0xFFFD;

/// The characters of UTF-8 text. What is not valid UTF-8 becomes U+FFFD, one for each maximal piece of a
/// sequence; control characters become blanks.
std::u32string decode_utf8(std::string_view text);

} // namespace qv::raster
