// Symbols as shapes: each kind made of a few convex pieces, which also cover a run of symbols in a row.
#pragma once

#include "vector/shapes.h"
#include "vector/symbol_cloud.h"

#include <vector>

namespace qv::vector {

struct SymbolLook {
    SymbolShape shape = SymbolShape::Circle;
    double half_width = 0; // pixels
    double half_height = 0;
    double pen_width = 1;
    std::uint32_t color = 0;
    bool smooth = true;
    bool operator==(SymbolLook const&) const = default;

    /// Whole pixels around a centre that a symbol may touch.
    int reach() const;
    /// How far runs can stand for such symbols without being seen to.
    RunLimits run_limits() const;
    std::vector<Shape> shapes(std::vector<SymbolRun> const& runs) const;
};

} // namespace qv::vector
