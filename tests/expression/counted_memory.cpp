// In a source of its own, so that no caller sees through a replaced function.
#include "counted_memory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace qv::test {

std::size_t allocations = 0;
std::size_t bytes_held = 0;
std::size_t most_bytes_held = 0;

} // namespace qv::test

using namespace qv::test;

void* operator new(std::size_t size) {
    ++allocations;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (!memory) throw std::bad_alloc();
    bytes_held += malloc_usable_size(memory);
    most_bytes_held = std::max(most_bytes_held, bytes_held);
    return memory;
}
void operator delete(void* memory) noexcept {
    bytes_held -= malloc_usable_size(memory);
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
