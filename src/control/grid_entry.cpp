#include "control/grid_entry.h"

#include "control/data_entry.h"
#include "document/selection.h"
#include "document/trap.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace qv::control {
namespace {

using document::Grid;
using document::trapped;

constexpr double most_cells = 1 << 28;

void check_count(std::size_t values, std::size_t columns, std::size_t rows) {
    if (static_cast<double>(columns) * static_cast<double>(rows) > most_cells)
        raise_fault(FaultNumber::OutOfMemory);
    if (values == columns * rows && values > 0) return;
    raise_fault(FaultNumber::InvalidProcedureCall,
                "A grid needs one value a cell and at least one cell, but there are " + std::to_string(values)
                    + " values for " + std::to_string(columns) + " columns and " + std::to_string(rows)
                    + " rows. Nothing was changed.");
}

void check_edges(char const* axis, std::span<double const> edges) {
    bool const finite = std::ranges::all_of(edges, [](double edge) { return std::isfinite(edge); });
    auto const is_turn = [&](auto const& order) {
        return std::ranges::adjacent_find(edges, order) == edges.end();
    };
    if (finite && edges.size() >= 2 && (is_turn(std::greater_equal()) || is_turn(std::less_equal()))) return;
    raise_fault(FaultNumber::InvalidProcedureCall,
                std::string("The ") + axis
                    + " edges of a grid's cells must be at least two finite numbers that all rise or all "
                      "fall. Nothing was changed.");
}

std::vector<double> even_edges(char const* axis, double first, double last, std::int32_t count) {
    if (count < 1)
        raise_fault(FaultNumber::InvalidProcedureCall,
                    std::string("A grid needs at least one cell along ") + axis + ". Nothing was changed.");
    if (count > most_cells) raise_fault(FaultNumber::OutOfMemory);
    if (first == 0 && last == 0) {
        first = -0.5;
        last = count - 0.5;
    }
    std::vector<double> edges(static_cast<std::size_t>(count) + 1);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        double const share = static_cast<double>(i) / count;
        edges[i] = first * (1 - share) + last * share;
    }
    return edges;
}

void give(DataSet& set, std::span<double const> values, std::vector<double> x_edges,
          std::vector<double> y_edges) {
    check_edges("x", x_edges);
    check_edges("y", y_edges);
    check_count(values.size(), x_edges.size() - 1, y_edges.size() - 1);
    auto grid = std::make_shared<Grid>();
    grid->values.assign(values.begin(), values.end());
    grid->x_edges = std::move(x_edges);
    grid->y_edges = std::move(y_edges);
    grid->measure();
    set.grid = std::move(grid);
}

template <class Give>
void give_selected(ControlState& state, std::string_view procedure, std::int16_t number,
                   Give const& give_to) {
    trapped(state, procedure, [&] {
        Graph* const graph = graph_with_data(state);
        if (!graph) return;
        bool const named = number >= 1 && number <= graph->NumDataSets();
        give_to(named ? at(graph->DataSets, static_cast<std::int16_t>(number - 1)) : graph->DataSets.back());
    });
}

} // namespace

void give_grid(DataSet& set, std::span<double const> values, EvenCells const& cells) {
    give(set, values, even_edges("x", cells.x1, cells.x2, cells.columns),
         even_edges("y", cells.y1, cells.y2, cells.rows));
}

void give_grid(DataSet& set, GridColumns const& grid) {
    give(set, grid.values, {grid.x_edges.begin(), grid.x_edges.end()},
         {grid.y_edges.begin(), grid.y_edges.end()});
}

void SetGrid(ControlState& state, std::span<double const> values, EvenCells const& cells,
             std::int16_t data_set) {
    give_selected(state, "SetGrid", data_set, [&](DataSet& set) { give_grid(set, values, cells); });
}

void SetGridEdges(ControlState& state, GridColumns const& grid, std::int16_t data_set) {
    give_selected(state, "SetGridEdges", data_set, [&](DataSet& set) { give_grid(set, grid); });
}

} // namespace qv::control
