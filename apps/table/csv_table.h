// CSV files as tables of named columns of text, and columns of numbers read from them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qv::table {

/// A file that cannot be read as asked; the text is one line that names the file and what to do.
struct TableError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Rows of fields below a header row. Quoted fields may hold separators and line ends.
class CsvTable {
public:
    /// Reads a file; the separator is the one of comma, semicolon and tab that the header row has most of.
    explicit CsvTable(std::filesystem::path const& file);

    std::string const& name() const { return name_; }
    std::vector<std::string> const& header() const { return header_; }
    std::size_t rows() const { return rows_.size(); }
    /// Index of a column; the error of an unknown one lists those there are.
    std::size_t column(std::string_view title) const;
    /// A field, empty where its row is short.
    std::string_view field(std::size_t row, std::size_t column) const;
    /// Line of the file on which a row begins, from 1.
    std::size_t line(std::size_t row) const { return rows_[row].line; }

    /// The error for a field that is not what it should be: file, line, column and text.
    [[noreturn]] void fail(std::size_t row, std::size_t column, std::string_view expected) const;

private:
    struct Row {
        std::size_t line = 0;
        std::vector<std::string> fields;
    };
    struct Collector;

    std::string name_;
    std::vector<std::string> header_;
    std::vector<Row> rows_;
};

/// The number a field holds; not a number where it is empty. Anything else is the table's error.
double number_at(CsvTable const& table, std::size_t row, std::size_t column);

} // namespace qv::table
