#include "table/csv_reader.h"

#include "base/text.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace qv::table {
namespace {

constexpr std::size_t block_bytes = 1 << 20;
constexpr std::string_view separators = ",;\t";
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

bool ends_line(char c) {
    return c == '\n' || c == '\r';
}

bool is_blank(char c) {
    return c == ' ' || c == '\t' || ends_line(c);
}

// As it can stand in a message of one line: not too long, without control characters.
std::string one_line(std::string_view text) {
    constexpr std::size_t most = 60;
    std::string shown(text.substr(0, most));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    return "\"" + shown + (text.size() > most ? "...\"" : "\"");
}

// Of the header row, in which a separator between quotes separates nothing.
char separator_of(std::string_view text) {
    std::array<std::size_t, separators.size()> counts{};
    bool quoted = false;
    for (char const c : text) {
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (ends_line(c)) break;
        auto const found = separators.find(c);
        if (found != std::string_view::npos) ++counts[found];
    }
    return separators[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

void free_parser(csv_parser* parser) {
    csv_free(parser);
    delete parser;
}

} // namespace

std::string quoted_list(std::vector<std::string> const& names) {
    std::string list;
    for (std::string const& name : names) list += (list.empty() ? "" : ", ") + one_line(name);
    return list;
}

CsvReader::CsvReader(std::filesystem::path const& file)
    : name_(file.string()), stream_(file, std::ios::binary), block_(block_bytes),
      parser_(new csv_parser(), free_parser) {
    if (!stream_) throw TableError(name_ + ": cannot be opened; check the name and its permissions");
    std::error_code unknown;
    file_size_ = std::filesystem::file_size(file, unknown);
    if (unknown) file_size_ = 0;
    if (csv_init(parser_.get(), 0) != 0) throw TableError(name_ + ": out of memory");
    read_header();
}

CsvReader::~CsvReader() = default;

void CsvReader::read_header() {
    refill();
    const std::string_view start(block_.data(), block_size_);
    if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF"))
        throw TableError(name_ + ": is UTF-16 text; save it as UTF-8");
    if (start.starts_with(byte_order_mark)) position_ = byte_order_mark.size();
    csv_set_delim(parser_.get(), static_cast<unsigned char>(separator_of(start)));
    if (!next_row()) throw TableError(name_ + ": is empty; a header row is expected");
    for (std::size_t i = 0; i < ends_.size(); ++i) header_.emplace_back(field(i));
}

bool CsvReader::refill() {
    stream_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
    if (stream_.bad()) throw TableError(name_ + ": cannot be read; is it a folder?");
    block_size_ = static_cast<std::size_t>(stream_.gcount());
    bytes_read_ += block_size_;
    position_ = 0;
    return block_size_ > 0;
}

void CsvReader::on_field(void* text, std::size_t size, void* self) {
    auto& reader = *static_cast<CsvReader*>(self);
    reader.text_.append(static_cast<char const*>(text), size);
    reader.ends_.push_back(reader.text_.size());
}

void CsvReader::on_row(int, void* self) {
    static_cast<CsvReader*>(self)->row_complete_ = true;
}

void CsvReader::parse(char const* begin, std::size_t size) {
    if (csv_parse(parser_.get(), begin, size, on_field, on_row, this) != size)
        throw TableError(name_ + ":" + std::to_string(line_) + ": " + csv_strerror(csv_error(parser_.get())));
}

// Up to a line's end and no further, so that at most one row is completed and each knows where it begins.
bool CsvReader::feed_line() {
    if (position_ == block_size_ && !refill()) return false;
    char const* const begin = block_.data() + position_;
    char const* const limit = block_.data() + block_size_;
    if (after_carriage_return_ && *begin == '\n') {
        after_carriage_return_ = false;
        parse(begin, 1);
        ++position_;
        return true;
    }
    char const* const end = std::find_if(begin, limit, ends_line);
    bool const complete = end != limit;
    const std::size_t size = static_cast<std::size_t>(end - begin) + (complete ? 1 : 0);
    row_begun_ = row_begun_ || !std::all_of(begin, begin + size, is_blank);
    parse(begin, size);
    position_ += size;
    if (complete) ++line_;
    after_carriage_return_ = complete && *end == '\r';
    return true;
}

bool CsvReader::next_row() {
    text_.clear();
    ends_.clear();
    row_complete_ = false;
    row_begun_ = false;
    do {
        if (!row_begun_) row_line_ = line_;
    } while (feed_line() && !row_complete_);
    if (!row_complete_ && !at_end_) {
        at_end_ = true;
        // Only now, since a quote within a field is no mistake.
        csv_set_opts(parser_.get(), CSV_STRICT | CSV_STRICT_FINI);
        if (csv_fini(parser_.get(), on_field, on_row, this) != 0)
            throw TableError(name_ + ":" + std::to_string(row_line_)
                             + ": the row has a quote that is never closed");
    }
    if (row_complete_) check_width();
    return row_complete_;
}

void CsvReader::check_width() const {
    if (header_.empty()) return;
    for (std::size_t i = header_.size(); i < ends_.size(); ++i)
        if (!field(i).empty())
            throw TableError(name_ + ":" + std::to_string(row_line_) + ": has " + std::to_string(ends_.size())
                             + " fields where the header names " + std::to_string(header_.size()));
}

std::size_t CsvReader::count(std::string_view title) const {
    return static_cast<std::size_t>(std::ranges::count(header_, title));
}

std::size_t CsvReader::column(std::string_view title) const {
    auto const found = std::ranges::find(header_, title);
    if (found != header_.end()) return static_cast<std::size_t>(found - header_.begin());
    throw TableError(name_ + ": has no column " + one_line(title) + "; its columns are "
                     + quoted_list(header_));
}

std::string_view CsvReader::field(std::size_t column) const {
    if (column >= ends_.size()) return {};
    const std::size_t begin = column == 0 ? 0 : ends_[column - 1];
    return std::string_view(text_).substr(begin, ends_[column] - begin);
}

double CsvReader::number(std::size_t column) const {
    std::string_view text = trim(field(column));
    if (text.empty()) return std::numeric_limits<double>::quiet_NaN();
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::invalid_argument || result.ptr != text.data() + text.size())
        fail(column, "a number");
    if (result.ec != std::errc() || std::isinf(value)) fail(column, "a finite number of double precision");
    return value;
}

void CsvReader::fail(std::size_t column, std::string_view expected) const {
    throw TableError(name_ + ":" + std::to_string(row_line_) + ": column " + one_line(header_.at(column))
                     + ": " + one_line(field(column)) + " is not " + std::string(expected));
}

double CsvReader::progress() const {
    if (file_size_ == 0) return 0;
    const std::uintmax_t left = block_size_ - position_;
    return static_cast<double>(bytes_read_ - left) / static_cast<double>(file_size_);
}

} // namespace qv::table
