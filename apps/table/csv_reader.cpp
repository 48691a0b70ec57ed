#include "table/csv_reader.h"

#include "table/dates.h"
#include "table/text.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

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

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Of the first row, in which a separator between quotes separates nothing. Where there are others, commas
// that all stand between digits are decimal ones.
char separator_of(std::string_view text) {
    std::array<std::size_t, separators.size()> counts{};
    bool quoted = false, decimal_commas = true;
    for (std::size_t i = 0; i < text.size() && (quoted || !ends_line(text[i])); ++i) {
        if (text[i] == '"') quoted = !quoted;
        auto const found = quoted ? std::string_view::npos : separators.find(text[i]);
        if (found == std::string_view::npos) continue;
        ++counts[found];
        if (found == 0)
            decimal_commas &= i > 0 && is_digit(text[i - 1]) && i + 1 < text.size() && is_digit(text[i + 1]);
    }
    if (decimal_commas && counts[1] + counts[2] > 0) counts[0] = 0;
    return separators[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

// Texts in a column of numbers that say that there is none.
bool is_missing(std::string_view text) {
    if (text.empty()) return true;
    if (text.size() > 4 || (text.front() != 'n' && text.front() != 'N')) return false;
    std::string mark(text);
    for (char& letter : mark)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return mark == "NA" || mark == "N/A" || mark == "NULL";
}

enum class NumberError { None, NoNumber, OutOfRange };

struct ParsedNumber {
    double value = std::numeric_limits<double>::quiet_NaN(); // where there is none
    NumberError error = NumberError::None;
};

ParsedNumber parse_number(std::string_view text) {
    text = trimmed(text);
    if (is_missing(text)) return {};
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::invalid_argument || result.ptr != text.data() + text.size())
        return {.error = NumberError::NoNumber};
    if (result.ec != std::errc() || std::isinf(value)) return {.error = NumberError::OutOfRange};
    return {.value = value};
}

void free_parser(csv_parser* parser) {
    csv_free(parser);
    delete parser;
}

} // namespace

std::string quoted_list(std::vector<std::string> const& names) {
    constexpr std::size_t most = 30;
    std::string list;
    for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
        list += (list.empty() ? "" : ", ") + one_line(names[i]);
    return names.size() <= most ? list : list + " and " + std::to_string(names.size() - most) + " more";
}

CsvReader::CsvReader(std::filesystem::path const& file)
    : name_(file.string()), stream_(file, std::ios::binary), block_(block_bytes),
      parser_(new csv_parser(), free_parser) {
    if (name_.find('\0') != std::string::npos)
        throw TableError(one_line(name_) + ": a file's name cannot hold a zero character");
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
    first_row_waits_ = is_row_of_values();
    for (std::size_t i = 0; i < ends_.size(); ++i)
        titles_.emplace_back(first_row_waits_ ? std::string_view() : field(i));
    name_columns();
}

// Missing ones among them, but not alone.
bool CsvReader::is_row_of_values() const {
    bool any = false;
    for (std::size_t i = 0; i < ends_.size(); ++i) {
        const ParsedNumber number = parse_number(field(i));
        bool const is_date = iso_date(trimmed(field(i))).has_value();
        if (number.error != NumberError::None && !is_date) return false;
        any = any || is_date || std::isfinite(number.value);
    }
    return any;
}

void CsvReader::name_columns() {
    std::map<std::string_view, std::size_t> uses;
    for (std::string const& title : titles_) ++uses[title];
    for (std::size_t i = 0; i < titles_.size(); ++i) {
        const std::string place = "column " + std::to_string(i + 1);
        header_.push_back(titles_[i].empty()     ? place
                          : uses[titles_[i]] > 1 ? titles_[i] + " (" + place + ")"
                                                 : titles_[i]);
    }
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
    row_bytes_ += size;
    check_length();
}

void CsvReader::check_length() const {
    if (row_bytes_ > longest_row && row_begun_)
        throw TableError(name_ + ":" + std::to_string(row_line_) + ": the row is longer than "
                         + std::to_string(longest_row / 1'000'000)
                         + " MB; is it a CSV file with all quotes closed?");
    if (ends_.size() > most_columns)
        throw TableError(name_ + ":" + std::to_string(row_line_) + ": has more than "
                         + std::to_string(most_columns) + " fields");
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
    if (std::exchange(first_row_waits_, false)) return true;
    text_.clear();
    ends_.clear();
    row_complete_ = false;
    row_begun_ = false;
    do {
        if (!row_begun_) {
            row_line_ = line_;
            row_bytes_ = 0;
        }
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

std::vector<std::size_t> CsvReader::columns(std::string_view title) const {
    std::vector<std::size_t> found;
    for (auto const* names : {&header_, &titles_}) {
        for (std::size_t i = 0; i < names->size(); ++i)
            if ((*names)[i] == title) found.push_back(i);
        if (!found.empty()) break;
    }
    return found;
}

std::size_t CsvReader::column(std::string_view title) const {
    const std::vector<std::size_t> found = columns(title);
    if (found.size() == 1) return found.front();
    throw TableError(name_ + ": has "
                     + (found.empty() ? "no column " : std::to_string(found.size()) + " columns ")
                     + one_line(title) + "; its columns are " + quoted_list(header_));
}

std::string_view CsvReader::field(std::size_t column) const {
    if (column >= ends_.size()) return {};
    const std::size_t begin = column == 0 ? 0 : ends_[column - 1];
    return std::string_view(text_).substr(begin, ends_[column] - begin);
}

double CsvReader::number(std::size_t column) const {
    auto const [value, error] = parse_number(field(column));
    if (error == NumberError::NoNumber) fail(column, "a number");
    if (error == NumberError::OutOfRange) fail(column, "a finite number of double precision");
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
