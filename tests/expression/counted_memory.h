// What the test program takes from the global allocation functions.
#pragma once

#include <cstddef>

namespace qv::test {

extern std::size_t allocations;
extern std::size_t bytes_held;
extern std::size_t most_bytes_held;

} // namespace qv::test
