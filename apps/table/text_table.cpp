#include "table/text_table.h"

#include "table/text.h"

#include <algorithm>
#include <cmath>

namespace qv::table {
namespace {

constexpr std::size_t block_bytes = 1 << 18;

} // namespace

TextTable::TextTable(std::unique_ptr<ByteSource> text, std::string name, ReadOptions options)
    : Table(std::move(name)), options_(std::move(options)), source_(std::move(text)) {}

void TextTable::fail(std::string const& what) const {
    throw TableError(name_ + ":" + std::to_string(line_) + ": " + what);
}

bool TextTable::refill() {
    if (begin_ > 0) {
        buffer_.erase(0, begin_);
        begin_ = 0;
    }
    const std::size_t before = buffer_.size();
    if (before > longest_row)
        fail("the row is longer than " + std::to_string(longest_row / 1'000'000)
             + " MB; is it a table with all quotes closed?");
    buffer_.resize(before + std::max(block_bytes, before));
    const std::size_t count = source_->read(std::span(buffer_).subspan(before));
    buffer_.resize(before + count);
    if (source_->begun_anew()) {
        buffer_.erase(0, before); // half a row, whose rest will not come
        begin_anew();
    }
    return count > 0;
}

bool TextTable::read_ahead(std::size_t bytes) {
    while (waiting().size() < bytes)
        if (!refill()) return false;
    return true;
}

void TextTable::keep(std::vector<Wanted> const& wanted) {
    Table::keep(wanted);
    readers_.clear();
    for (Wanted const& one : wanted) readers_.emplace_back(one, dialect_, options_);
}

bool TextTable::read() {
    // What was read ahead comes first.
    if (const std::size_t taken = take_rows(waiting(), false); taken > 0) {
        pass(taken);
        return true;
    }
    if (!refill()) return false;
    pass(take_rows(waiting(), false));
    return true;
}

void TextTable::finish() {
    pass(take_rows(waiting(), true));
}

bool TextTable::repeats_titles(Cells const& cells, std::size_t first_cell) const {
    bool any = false;
    for (std::size_t i = 0; i < found_.size(); ++i) {
        if (cells[i + first_cell] != found_[i].title) return false;
        any = any || !found_[i].title.empty();
    }
    return any;
}

// Files put one behind the other have their header again.
void TextTable::add_row(Cells const& cells, std::size_t first_cell) {
    auto const cell = [&](std::optional<std::size_t> column) {
        return column ? cells[*column + first_cell] : std::string_view();
    };
    row_.resize(readers_.size());
    bool any_stray = false;
    for (std::size_t i = 0; i < readers_.size(); ++i) {
        Wanted const& wanted = readers_[i].wanted();
        row_[i] = readers_[i].value(cell(wanted.column), cell(wanted.time_column));
        any_stray = any_stray || !row_[i];
    }
    if (any_stray && repeats_titles(cells, first_cell)) return;
    for (std::size_t i = 0; i < readers_.size(); ++i) {
        if (row_[i])
            readers_[i].add(columns_[i], *row_[i]);
        else
            readers_[i].add_stray(columns_[i], cell(readers_[i].wanted().column), line_);
    }
    ++rows_;
}

} // namespace qv::table
