// The cells of one column become numbers.
#pragma once

#include "table/layout.h"
#include "table/table.h"

#include <span>
#include <string_view>
#include <unordered_map>

namespace qv::table {

/// Reads cells into a column by what is wanted of it.
class ColumnReader {
public:
    ColumnReader(Wanted const& wanted, Dialect const& dialect, ReadOptions const& options);

    Wanted const& wanted() const { return wanted_; }
    /// The value of a cell; nothing where the cell is not what its column is. Missing ones are not-a-number.
    std::optional<double> value(std::string_view cell, std::string_view time_cell = {});
    std::optional<double> value_of_number(double number) const;
    /// Adds what was read to the column.
    void add(Column& column, double value);
    /// The same for many that are finite.
    void add_plain(Column& column, std::span<double const> values);
    void add_stray(Column& column, std::string_view cell, std::size_t line) const;

private:
    void add_texts(Column& column);
    std::optional<double> moment(std::string_view cell, std::string_view time_cell);
    double category(std::string_view cell);

    Wanted wanted_;
    NumberForm numbers_;
    ReadOptions const& options_;
    DateForm form_;
    std::unordered_map<std::string, double> categories_;
    std::vector<std::string> new_texts_;
    double last_time_ = -1; // of the day, going on past midnight
};

} // namespace qv::table
