// Grid: a matrix of values on cells, as a host gives it or as points were counted in it.
#pragma once

#include "document/PointStore.h"

#include <cstddef>
#include <span>
#include <vector>

namespace qv::document {

/// Where the value of a cell is not-a-number, there is none. Edges rise or fall, all of them, and are finite.
struct Grid {
    std::vector<double> values;  // row by row, the first one between the first two edges
    std::vector<double> x_edges; // one more than there are columns
    std::vector<double> y_edges; // one more than there are rows
    Extent extent;               // of the finite values
    Extent positive;             // of the finite values above 0

    std::size_t columns() const { return x_edges.empty() ? 0 : x_edges.size() - 1; }
    std::size_t rows() const { return y_edges.empty() ? 0 : y_edges.size() - 1; }
    std::span<double const> row(std::size_t index) const {
        return std::span(values).subspan(index * columns(), columns());
    }
    Extent const& extent_on(bool is_log) const { return is_log ? positive : extent; }

    /// Finds the extents of the values.
    void measure();
};

} // namespace qv::document
