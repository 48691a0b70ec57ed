// Rows of text taken apart into cells.
#pragma once

#include "table/number_text.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qv::table {

/// How a text is a table.
struct Dialect {
    char separator = ','; // '\0': each line is one cell; ' ': any run of blanks and tabs
    NumberForm numbers = {};
    std::string comment = "#"; // what a line begins with that is none of the table; empty: no line is
    bool operator==(Dialect const&) const = default;
};

/// The cells of one row. They lie in the text they were taken from, but for those that had quotes inside.
class Cells {
public:
    std::size_t size() const { return cells_.size(); }
    /// A cell without blanks around it; empty beyond the last one.
    std::string_view operator[](std::size_t i) const {
        return i < cells_.size() ? cells_[i] : std::string_view();
    }
    void clear() {
        cells_.clear();
        unquoted_.clear();
    }
    void add(std::string_view cell) { cells_.push_back(cell); }
    void add_own(std::string cell) {
        cells_.push_back(*unquoted_.emplace_back(std::make_unique<std::string>(std::move(cell))));
    }
    auto begin() const { return cells_.begin(); }
    auto end() const { return cells_.end(); }

private:
    std::vector<std::string_view> cells_;
    std::vector<std::unique_ptr<std::string>> unquoted_; // they stay where they are when cells are moved
};

enum class RowKind {
    Row,
    Nothing,    // a line without any cell, or a comment
    Incomplete, // the text ends before the row does
    OpenQuote,  // it ends within quotes
};

struct TakenRow {
    RowKind kind = RowKind::Incomplete;
    std::size_t bytes = 0; // of the row with its line end
    std::size_t lines = 0; // line ends in it
};

/// Takes the row at the front of a text apart. `at_end`: no more text comes, so the last line needs no end.
TakenRow take_row(std::string_view text, bool at_end, Dialect const& dialect, Cells& cells);

} // namespace qv::table
