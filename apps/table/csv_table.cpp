#include "table/csv_table.h"

#include "base/text.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>

namespace qv::table {
namespace {

constexpr std::string_view separators = ",;\t";

std::string read_file(std::filesystem::path const& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw TableError(file.string() + ": cannot be opened; check the name and its permissions");
    std::string text((std::istreambuf_iterator<char>(stream)), {});
    if (stream.bad()) throw TableError(file.string() + ": cannot be read; is it a directory?");
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.starts_with(byte_order_mark)) text.erase(0, byte_order_mark.size());
    return text;
}

char separator_of(std::string_view text) {
    const std::string_view header = text.substr(0, text.find('\n'));
    return *std::ranges::max_element(separators, {}, [&](char c) { return std::ranges::count(header, c); });
}

} // namespace

// Receives fields and rows from the parser.
struct CsvTable::Collector {
    CsvTable& table;
    std::size_t line = 1;
    std::vector<std::string> fields;

    static void on_field(void* data, std::size_t size, void* self) {
        static_cast<Collector*>(self)->fields.emplace_back(static_cast<char const*>(data), size);
    }
    static void on_row(int, void* self) { static_cast<Collector*>(self)->end_row(); }
    void end_row() {
        if (table.header_.empty())
            table.header_ = std::move(fields);
        else
            table.rows_.push_back({line, std::move(fields)});
        fields.clear();
    }
};

CsvTable::CsvTable(std::filesystem::path const& file) : name_(file.string()) {
    const std::string text = read_file(file);
    csv_parser parser;
    if (csv_init(&parser, CSV_APPEND_NULL) != 0) throw TableError(name_ + ": out of memory");
    const std::unique_ptr<csv_parser, void (*)(csv_parser*)> owner(&parser, csv_free);
    csv_set_delim(&parser, static_cast<unsigned char>(separator_of(text)));
    Collector rows{*this, 1, {}};
    // Line by line, so that a row knows where it began even if its fields span lines.
    std::size_t number = 1;
    for (std::size_t begin = 0; begin < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        if (rows.fields.empty()) rows.line = number;
        if (csv_parse(&parser, text.data() + begin, end - begin, Collector::on_field, Collector::on_row,
                      &rows)
            != end - begin)
            throw TableError(name_ + ":" + std::to_string(number) + ": " + csv_strerror(csv_error(&parser)));
        begin = end;
    }
    csv_fini(&parser, Collector::on_field, Collector::on_row, &rows);
    if (header_.empty()) throw TableError(name_ + ": is empty; a header row is expected");
}

std::size_t CsvTable::column(std::string_view title) const {
    auto const found = std::ranges::find(header_, title);
    if (found != header_.end()) return static_cast<std::size_t>(found - header_.begin());
    std::string there;
    for (std::string const& name : header_) there += (there.empty() ? "" : ", ") + ("\"" + name + "\"");
    throw TableError(name_ + ": has no column \"" + std::string(title) + "\"; its columns are " + there);
}

std::string_view CsvTable::field(std::size_t row, std::size_t column) const {
    auto const& fields = rows_.at(row).fields;
    return column < fields.size() ? std::string_view(fields[column]) : std::string_view();
}

void CsvTable::fail(std::size_t row, std::size_t column, std::string_view expected) const {
    throw TableError(name_ + ":" + std::to_string(line(row)) + ": column \"" + header_.at(column) + "\": \""
                     + std::string(field(row, column)) + "\" is not " + std::string(expected));
}

double number_at(CsvTable const& table, std::size_t row, std::size_t column) {
    std::string_view text = trim(table.field(row, column));
    if (text.empty()) return std::nan("");
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        table.fail(row, column, "a number");
    return value;
}

} // namespace qv::table
