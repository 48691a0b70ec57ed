// Which columns of a file become x and y.
#pragma once

#include "qvplot/options.h"
#include "table/table.h"

#include <string>
#include <vector>

namespace qv::plot {

struct ChosenColumn {
    std::size_t column = 0;
    bool on_second_axis = false;
};

/// Of one file; `x` is nothing where points are numbered by their rows.
struct ChosenColumns {
    std::optional<std::size_t> x;
    std::vector<ChosenColumn> y;
};

/// The columns of `text`: one by its name or number, or several of them as "a,b" and "3,5-7"; none for
/// another text.
std::vector<std::size_t> columns_in(table::Table const& file, std::string const& text);

/// The column of x; a TableError where there is none of that name, or several.
std::optional<std::size_t> x_column(table::Table const& file, PlotOptions const& options);

/// All columns of numbers but x.
std::vector<ChosenColumn> columns_of_numbers(table::Table const& file, std::optional<std::size_t> x);

/// As tables are to be read for it; a TableError where dates can be read in two ways.
table::Wanted wanted_column(table::Table const& file, std::size_t column, bool is_x,
                            PlotOptions const& options);

/// A line for the file and one for each of its columns, with what it was taken for.
std::vector<std::string> explained(table::Table const& file, ChosenColumns const& chosen,
                                   PlotOptions const& options);

/// "has no column ...", with those there are.
std::string no_column(table::Table const& file, std::string const& text);

} // namespace qv::plot
