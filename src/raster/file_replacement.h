// Files written whole: beside the target first, then moved onto it, so that a failure leaves what was there.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace qv::raster {

/// Writes the file, replacing one of that name, which leaves it its permissions; of a link, the file that it
/// leads to. Failures are faults (53 to 76) that name file and reason; a file that may not be written is 70.
void replace_file(std::string const& path, std::span<std::uint8_t const> bytes);

} // namespace qv::raster
