#include "failing_allocation.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

bool counting = false;
std::size_t allocations = 0;
std::size_t failing = 0;

void* allocate(std::size_t size, std::size_t alignment) {
    if (counting && ++allocations == failing) return nullptr;
    if (alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__) return std::malloc(std::max<std::size_t>(size, 1));
    return std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}

void* allocate_or_throw(std::size_t size, std::size_t alignment) {
    if (void* const memory = allocate(size, alignment)) return memory;
    throw std::bad_alloc();
}

} // namespace

namespace qv::testing {

FailingAllocation::FailingAllocation(std::size_t number) {
    allocations = 0;
    failing = number;
    counting = true;
}

FailingAllocation::~FailingAllocation() {
    counting = false;
}

std::size_t FailingAllocation::count() {
    return allocations;
}

bool FailingAllocation::has_failed() {
    return failing != 0 && allocations >= failing;
}

} // namespace qv::testing

void* operator new(std::size_t size) {
    return allocate_or_throw(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return allocate(size, 0);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::nothrow_t const&) noexcept {
    std::free(memory);
}
