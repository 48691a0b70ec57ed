// Tables of text: rows that stand one after the other.
#pragma once

#include "table/column_reader.h"
#include "table/table.h"

#include <vector>

namespace qv::table {

/// Reads text into a buffer and lets whoever knows its rows take them from there.
class TextTable : public Table {
public:
    TextTable(std::unique_ptr<ByteSource> text, std::string name, ReadOptions options);

    static constexpr std::size_t longest_row = 64'000'000; // bytes
    static constexpr std::size_t most_columns = 1'000'000;

    void keep(std::vector<Wanted> const& wanted) override;
    bool read() override;
    void finish() override;
    double progress() const override { return source_->progress(); }

protected:
    /// Takes the rows there are off the front of the text; returns how many bytes that were.
    virtual std::size_t take_rows(std::string_view text, bool at_end) = 0;
    /// Called when a file has been cut and begins anew.
    virtual void begin_anew() {}

    std::string_view waiting() const { return std::string_view(buffer_).substr(begin_); }
    /// Reads on until so many bytes wait or the source has none; false then.
    bool read_ahead(std::size_t bytes);
    void pass(std::size_t bytes) { begin_ += bytes; }
    /// Adds a row of cells, the first of the table's columns at `first_cell`.
    void add_row(Cells const& cells, std::size_t first_cell);
    [[noreturn]] void fail(std::string const& what) const;

    ReadOptions options_;
    Dialect dialect_;
    std::vector<ColumnReader> readers_; // of columns_
    std::size_t line_ = 1;              // on which the next row begins

private:
    bool refill();
    bool repeats_titles(Cells const& cells, std::size_t first_cell) const;

    std::unique_ptr<ByteSource> source_;
    std::string buffer_;
    std::size_t begin_ = 0;
    std::vector<std::optional<double>> row_; // of add_row
};

/// A table of rows and separators, whatever they are.
std::unique_ptr<Table> open_delimited(std::unique_ptr<ByteSource> text, std::string const& name,
                                      ReadOptions const& options, Encoding encoding);
/// Lines of JSON, each an object or an array; or one array of them; or one object of arrays.
std::unique_ptr<Table> open_json(std::unique_ptr<PeekedBytes> text, std::string const& name,
                                 ReadOptions const& options);
/// An array as numpy saves it.
std::unique_ptr<Table> open_numpy(std::unique_ptr<ByteSource> bytes, std::string const& name);

} // namespace qv::table
