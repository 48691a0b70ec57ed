// Texts of other encodings become UTF-8.
#pragma once

#include "table/bytes.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qv::table {

enum class Encoding { Utf8, Latin1, Utf16Little, Utf16Big };

/// The encoding of that name ("utf-8", "latin-1", "utf-16", "utf-16le", "utf-16be", ...), whatever its case.
std::optional<Encoding> encoding_named(std::string_view name);
std::string_view name_of(Encoding encoding);

/// The encoding of a text that begins with these bytes: by its byte order mark, by the zeros of UTF-16, or
/// Latin-1 where they are not UTF-8. A character cut at the end is no fault.
Encoding find_encoding(std::string_view start);

bool is_utf8(std::string_view text);

/// Bytes 80 to 9F as Windows has them.
std::string utf8_of_latin1(std::string_view text);

/// The source's text in UTF-8 with line feeds as line ends, without a byte order mark. UTF-8 stays as it is.
std::unique_ptr<ByteSource> decoded(std::unique_ptr<PeekedBytes> source, Encoding encoding);

} // namespace qv::table
