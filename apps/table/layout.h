// How a text is a table, found by looking at its first rows: separator, decimals, where the header and the
// data are, what the columns hold.
#pragma once

#include "table/table.h"

#include <string_view>
#include <vector>

namespace qv::table {

/// A row looked at, with where it stands in the text.
struct SampleRow {
    Cells cells;
    std::size_t line = 1;  // on which it begins
    std::size_t begin = 0; // of its first byte
    bool is_comment = false;
    std::string_view text; // of a comment
};

struct Sample {
    std::vector<SampleRow> rows; // comments among them
    std::size_t end = 0;         // of the last row
    std::size_t end_line = 1;
};

/// The rows of a text. The last is taken only if it is whole or nothing follows.
Sample sample_of(std::string_view text, bool at_end, Dialect const& dialect, std::size_t most_rows);

/// The dialect under which most rows have as many cells as the others and most cells are numbers or dates.
Dialect find_dialect(std::string_view text, bool at_end, ReadOptions const& options);

/// Where a table stands among the rows of a text.
struct Layout {
    std::vector<FoundColumn> columns; // without names
    std::size_t first_cell = 0; // of the rows, that belongs to a column: rows may begin with a separator
    std::optional<std::size_t> header, units;
    bool header_in_comment = false;
    std::size_t data = 0;           // first row of the data; the number of rows where there is none
    std::size_t preamble_lines = 0; // above the header
};

Layout find_layout(Sample const& sample, Dialect const& dialect, ReadOptions const& options);

/// Kind, order of dates and the rest of a column by its cells.
void find_kind(FoundColumn& column, std::vector<std::string_view> const& cells, Dialect const& dialect,
               ReadOptions const& options);

/// Dates and the times of day in the next column become one.
void join_times(std::vector<FoundColumn>& columns);

/// The cell's moment as options and order say.
std::optional<Moment> moment_in(std::string_view cell, ReadOptions const& options, DateForm const& form);

} // namespace qv::table
