// Tables: columns with names and kinds, read from whatever people have.
#pragma once

#include "table/bytes.h"
#include "table/cells.h"
#include "table/dates.h"
#include "table/encoding.h"
#include "table/table_error.h"
#include "table/values.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qv::table {

/// What is told about a file; what is left out is found by looking.
struct ReadOptions {
    std::optional<char> separator = {};
    std::optional<char> decimal = {};
    char thousands = '\0';
    std::string comment = "#";
    std::optional<Encoding> encoding = {};
    std::optional<bool> header = {};
    std::size_t skip = 0; // lines at the front
    std::optional<DateOrder> date_order = {};
    std::string date_format = {}; // a pattern of read_moment_by
    std::string time_zone = {};   // of times that say none; empty: UTC
    bool early = false; // begin with the first lines there are, since the text is still being written
};

enum class ColumnKind { Number, Time, TimeOfDay, Text };

/// A column as it was found, from the first part of the file.
struct FoundColumn {
    std::string name = {};  // another for each column: of a title that several have "n (column 3)"
    std::string title = {}; // as the file has it
    std::string unit = {};
    ColumnKind kind = ColumnKind::Number;
    bool has_values = false; // some cell looked at is not missing
    DateOrder order = DateOrder::DayFirst;
    char grouped_by = '\0';        // of a column of texts: the mark that groups the digits of most of them
    bool is_grouping_open = false; // numbers among which such marks stand where a decimal one is expected
    bool order_matters = false;    // its dates are others with another order
    bool is_order_open = false;    // its dates can be read with either number as the day
    std::string open_example = {};
    bool are_dates_alone = false;                // without times of day
    std::optional<std::size_t> time_column = {}; // where those stand, the next column
};

/// A column to keep, and as what.
struct Wanted {
    std::size_t column = 0;
    ColumnKind kind = ColumnKind::Number;
    DateOrder order = DateOrder::DayFirst;
    std::optional<std::size_t> time_column = {};
    bool unix_time = false;                 // numbers are counts from 1970
    std::optional<UnixUnit> unix_unit = {}; // found by their size, where it is not said
};

/// Cells that are not what their column is.
struct Strays {
    std::size_t count = 0;
    std::size_t first_line = 0;
    std::string first = {};
};

/// A column that was kept: numbers, seconds since 1970 (of times of day since midnight, going on past it) or
/// the numbers of its texts from 0 on. Not-a-number stands where there is none.
struct Column {
    Wanted wanted = {};
    Values values = {};
    std::vector<std::string> texts = {};
    std::size_t missing = 0;
    std::size_t infinite = 0;
    Strays strays = {};
};

/// A table that is being read. Its columns are known from the start; then it is said which to keep, and the
/// rows are read piece by piece, so that it may be larger than the memory.
class Table {
public:
    explicit Table(std::string name) : name_(std::move(name)) {}
    virtual ~Table() = default;
    Table(Table const&) = delete;
    Table& operator=(Table const&) = delete;

    std::string const& name() const { return name_; }
    std::vector<FoundColumn> const& found() const { return found_; }
    /// The columns of that name, or of that title in the file, or with that number, counted from 1.
    std::vector<std::size_t> columns_named(std::string_view text) const;

    virtual void keep(std::vector<Wanted> const& wanted);
    std::vector<Column>& columns() { return columns_; }

    /// Reads some rows; false when there are none (now).
    virtual bool read() = 0;
    /// After the last read: takes a last line without an end.
    virtual void finish() {}
    virtual double progress() const { return 0; }

    std::size_t rows() const { return rows_; } // read so far
    /// What of the file is in no column: a part of a sentence for each kind of thing.
    std::vector<std::string> left_out() const;
    /// How the file was read, such as: UTF-8, separated by ";", decimal ",", header in line 3.
    std::string const& description() const { return description_; }
    /// What a person should hear of how it was read although they have not asked.
    std::vector<std::string> const& remarks() const { return remarks_; }

protected:
    void name_columns();
    struct LeftOut {
        std::size_t wide_rows = 0, first_wide = 0; // with more cells than columns
        std::size_t preamble_lines = 0;
        std::size_t unknown_keys = 0;
    };

    std::string name_;
    std::vector<FoundColumn> found_;
    std::vector<Column> columns_;
    std::size_t rows_ = 0;
    LeftOut left_out_;
    std::string description_;
    std::vector<std::string> remarks_;
};

/// Opens a file, "-" for standard input, packed or not: text in rows and cells, JSON, or an array of .npy.
std::unique_ptr<Table> open_table(std::string const& file, ReadOptions const& options = {});
/// The same with bytes from anywhere; `name` is for errors.
std::unique_ptr<Table> open_table(std::unique_ptr<ByteSource> bytes, std::string const& name,
                                  ReadOptions const& options);

/// Keeps all columns as they were found and reads the whole table.
void read_whole(Table& table);

} // namespace qv::table
