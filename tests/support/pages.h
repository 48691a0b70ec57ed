// Pages of every kind, small enough to be drawn thousands of times.
#pragma once

#include "qvgraph/qvGraph.h"

#include <array>

namespace qv::testing {

struct PageKind {
    char const* name;
    void (*fill)(qvGraph& page);
};

extern std::array<PageKind, 6> const page_kinds;

} // namespace qv::testing
