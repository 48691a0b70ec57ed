// Files written whole: beside the target first, then moved onto it, so that a failure leaves what was there.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace qv::raster {

/// Writes the file, replacing one of that name, which leaves it its permissions; of a link, the file that it
/// leads to. Failures are faults (53 to 76) that name file and reason; a file that may not be written is 70.
void replace_file(std::string const& path, std::span<std::uint8_t const> bytes);

/// The whole content of a file; failures are faults like those of writing.
std::vector<std::uint8_t> read_file(std::string const& path);

} // namespace qv::raster
