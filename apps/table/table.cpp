#include "table/table.h"

#include "table/text.h"
#include "table/text_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

namespace qv::table {
namespace {

constexpr std::size_t looked_at = 1 << 16;

// What people have that is no text, and what to do about it.
struct Foreign {
    std::string_view start;
    std::string_view what;
};
constexpr std::array foreign{
    Foreign{"PK\x03\x04", "a spreadsheet or another packed file; save the table as .csv"},
    Foreign{"\xD0\xCF\x11\xE0", "a spreadsheet; save the table as .csv"},
    Foreign{"PAR1", "a Parquet file; write the table as .csv"},
    Foreign{"\x89HDF", "an HDF5 file; write the table as .csv"},
    Foreign{"\x89PNG", "a picture; name a file of numbers"},
    Foreign{"%PDF", "a PDF document; name a file of numbers"},
    Foreign{"SQLite format 3", "a database; write the table as .csv"},
    Foreign{"BZh", "packed by bzip2; unpack it, or pipe what bzip2 -dc writes to qvplot -"},
    Foreign{"\xFD"
            "7zXZ",
            "packed by xz; unpack it, or pipe what xz -dc writes to qvplot -"},
    Foreign{"\x7F"
            "ELF",
            "a program; name a file of numbers"}};

void refuse_foreign(std::string_view start, std::string const& name) {
    for (Foreign const& row : foreign)
        if (start.starts_with(row.start)) throw TableError(name + ": is " + std::string(row.what));
}

// An object, or an array of anything that JSON has: a row of text does not begin like that.
bool is_json(std::string_view start) {
    const std::string_view text = trimmed(start);
    if (text.starts_with('{')) return true;
    if (!text.starts_with('[')) return false;
    const std::string_view inside = trimmed(text.substr(1));
    return !inside.empty() && std::string_view("{[-0123456789\"").find(inside[0]) != std::string_view::npos;
}

} // namespace

void Table::keep(std::vector<Wanted> const& wanted) {
    columns_.clear();
    for (Wanted const& one : wanted) columns_.emplace_back().wanted = one;
}

std::vector<std::size_t> Table::columns_named(std::string_view text) const {
    std::vector<std::size_t> matches;
    for (auto const name : {&FoundColumn::name, &FoundColumn::title}) {
        for (std::size_t i = 0; i < found_.size(); ++i)
            if (found_[i].*name == text) matches.push_back(i);
        if (!matches.empty()) return matches;
    }
    std::size_t number = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc() && result.ptr == text.data() + text.size() && number >= 1
        && number <= found_.size())
        matches.push_back(number - 1);
    return matches;
}

void Table::name_columns() {
    std::map<std::string_view, std::size_t> uses;
    for (FoundColumn const& column : found_) ++uses[column.title];
    for (std::size_t i = 0; i < found_.size(); ++i) {
        const std::string place = "column " + std::to_string(i + 1);
        FoundColumn& column = found_[i];
        column.name = column.title.empty() ? place : column.title;
        if (uses[column.title] > 1 && !column.title.empty())
            column.name.append(" (").append(place).append(")");
    }
}

std::vector<std::string> Table::left_out() const {
    std::vector<std::string> parts;
    auto const [wide, first_wide, preamble, keys] = left_out_;
    if (preamble > 0) parts.push_back(counted(preamble, "line") + " above the table");
    if (wide > 0)
        parts.push_back(counted(wide, "row") + " with more cells than there are columns, the first in line "
                        + std::to_string(first_wide));
    if (keys > 0) parts.push_back(counted(keys, "value") + " under names that no earlier row has");
    return parts;
}

std::unique_ptr<Table> open_table(std::string const& file, ReadOptions const& options) {
    return open_table(open_bytes(file), file == "-" ? "standard input" : file, options);
}

std::unique_ptr<Table> open_table(std::unique_ptr<ByteSource> bytes, std::string const& name,
                                  ReadOptions const& options) {
    auto content = std::make_unique<PeekedBytes>(unpacked(std::move(bytes), name));
    constexpr std::size_t longest_mark = 16;
    const std::size_t wanted = options.early ? longest_mark : looked_at;
    refuse_foreign(content->peek(longest_mark), name);
    if (content->peek(longest_mark).starts_with("\x93NUMPY")) return open_numpy(std::move(content), name);
    const Encoding encoding = options.encoding.value_or(find_encoding(content->peek(wanted)));
    auto text = std::make_unique<PeekedBytes>(decoded(std::move(content), encoding));
    const std::string_view start = text->peek(wanted);
    if (start.find('\0') != std::string_view::npos)
        throw TableError(
            name
            + ": is no text; qvplot reads tables of text, JSON and .npy arrays, packed by gzip or "
              "zstd or not");
    if (is_json(start)) return open_json(std::move(text), name, options);
    return open_delimited(std::move(text), name, options, encoding);
}

void read_whole(Table& table) {
    std::vector<Wanted> all;
    for (std::size_t i = 0; i < table.found().size(); ++i) {
        FoundColumn const& found = table.found()[i];
        all.push_back(
            {.column = i, .kind = found.kind, .order = found.order, .time_column = found.time_column});
    }
    table.keep(all);
    while (table.read()) {
    }
    table.finish();
}

} // namespace qv::table
