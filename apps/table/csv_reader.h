// CSV files, read row by row into named columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct csv_parser;

namespace qv::table {

/// A file that cannot be read as asked; the text is one line that names the file and what to do.
struct TableError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A list of names for a message: "a", "b", "c".
std::string quoted_list(std::vector<std::string> const& names);

/// Reads a header row and then one row after the other. Quoted fields may hold separators and line ends; the
/// separator is the one of comma, semicolon and tab that the first row has most of. Lines without any
/// character are passed over. Nothing of the rows before is kept, so a file may be larger than the memory;
/// a row longer than `longest_row` is an error.
///
/// A first row of numbers and dates alone is no header: it is the first row of data.
class CsvReader {
public:
    explicit CsvReader(std::filesystem::path const& file);
    ~CsvReader();
    CsvReader(CsvReader const&) = delete;
    CsvReader& operator=(CsvReader const&) = delete;

    static constexpr std::size_t longest_row = 64'000'000; // bytes
    static constexpr std::size_t most_columns = 1'000'000;

    std::string const& name() const { return name_; }
    /// The names of the columns, each another: of a title that several have "n (column 3)", of a column
    /// without title "column 3".
    std::vector<std::string> const& header() const { return header_; }
    /// The columns of that name, or of that title in the file.
    std::vector<std::size_t> columns(std::string_view title) const;
    /// The only column of that name or title; the error of an unknown one lists those there are.
    std::size_t column(std::string_view title) const;

    /// Goes to the next row; false at the end of the file. A row with more fields than the header is an error
    /// unless those beyond are empty.
    bool next_row();
    /// A field of the row, empty where the row is short. Valid until the next row.
    std::string_view field(std::size_t column) const;
    /// The number a field holds; not a number where the field is empty or says "nan", "NA", "N/A" or "null".
    /// Anything else is an error.
    double number(std::size_t column) const;
    /// Line of the file on which the row begins, from 1.
    std::size_t line() const { return row_line_; }
    /// The error for a field that is not what it should be: file, line, column and text.
    [[noreturn]] void fail(std::size_t column, std::string_view expected) const;

    /// Part of the file read so far, 0 to 1.
    double progress() const;

private:
    bool refill();
    bool feed_line();
    void parse(char const* begin, std::size_t size);
    void check_length() const;
    void check_width() const;
    void read_header();
    bool is_row_of_values() const;
    void name_columns();
    static void on_field(void* text, std::size_t size, void* self);
    static void on_row(int terminator, void* self);

    std::string name_;
    std::ifstream stream_;
    std::uintmax_t file_size_ = 0;
    std::uintmax_t bytes_read_ = 0;
    std::vector<char> block_; // the part of the file being read
    std::size_t block_size_ = 0;
    std::size_t position_ = 0; // in the block
    std::unique_ptr<csv_parser, void (*)(csv_parser*)> parser_;
    std::vector<std::string> titles_; // as the file gives them
    std::vector<std::string> header_;

    std::string text_;              // of the row's fields, one after the other
    std::vector<std::size_t> ends_; // of the fields in the text
    bool row_begun_ = false;
    bool row_complete_ = false;
    bool first_row_waits_ = false; // it has been read already and is not a header
    std::size_t row_bytes_ = 0;
    bool at_end_ = false;
    bool after_carriage_return_ = false; // a line feed that follows ends the same line
    std::size_t line_ = 1;               // on which the next character stands
    std::size_t row_line_ = 1;
};

} // namespace qv::table
