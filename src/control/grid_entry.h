// Grid entry: giving data sets matrices of values.
#pragma once

#include "control/document_names.h"

#include <memory>
#include <span>

namespace qv::control {

/// A matrix as a host gives it: values row by row, and where its cells are.
struct GridColumns {
    std::span<double const> values;
    std::span<double const> x_edges;
    std::span<double const> y_edges;
};

/// The ends of evenly divided cells; equal ones, both 0, put the middles of the cells at 0, 1, 2, ...
struct EvenCells {
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    double x1 = 0, x2 = 0;
    double y1 = 0, y2 = 0;
};

/// Gives a data set a matrix in place of the one it has. Fault 5, and nothing is changed, where there is not
/// one value a cell or edges are not finite, or do not rise or fall; fault 7 beyond 2^28 cells.
void give_grid(DataSet& set, std::span<double const> values, EvenCells const& cells);
void give_grid(DataSet& set, GridColumns const& grid);

/// The same on a data set of the current graph, counted from 1; any other number means the newest one.
/// Failures are reported through ErrorMsg. Without a data set nothing happens.
void SetGrid(ControlState& state, std::span<double const> values, EvenCells const& cells,
             std::int16_t data_set);
void SetGridEdges(ControlState& state, GridColumns const& grid, std::int16_t data_set);

} // namespace qv::control
