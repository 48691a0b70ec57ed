// Memory that ends: the program's own operator new, which can be told to fail.
#pragma once

#include <cstddef>

namespace qv::testing {

/// Counts the allocations of a stretch of the program, one of which, counted from 1, fails; 0 lets all
/// succeed. Memory asked for by libraries in C is not counted. At most one lives at a time.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t number);
    ~FailingAllocation();
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;

    static std::size_t count();
    static bool has_failed();
};

} // namespace qv::testing
