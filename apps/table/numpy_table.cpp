// Arrays as numpy saves them: a line of text that says type and shape, and the bytes.
#include "table/text.h"
#include "table/text_table.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace qv::table {
namespace {

constexpr std::size_t longest_header = 1 << 20;
constexpr std::size_t most_numpy_columns = 100'000;

// How one field of an element is read.
struct Field {
    std::string name;
    char kind = 'f'; // f, i, u, b, M (moments)
    std::size_t size = 8;
    std::size_t offset = 0;
    bool swapped = false;
    double scale = 1; // seconds in a count of M
};

template <typename Number>
double number_of(char const* bytes, bool swapped) {
    std::array<char, sizeof(Number)> own;
    std::memcpy(own.data(), bytes, own.size());
    if (swapped) std::reverse(own.begin(), own.end());
    return static_cast<double>(std::bit_cast<Number>(own));
}

double half_of(std::uint16_t bits) {
    int const exponent = bits >> 10 & 31, mantissa = bits & 1023;
    double const size = exponent == 31  ? (mantissa ? NAN : HUGE_VAL)
                        : exponent == 0 ? std::ldexp(mantissa, -24)
                                        : std::ldexp(mantissa + 1024, exponent - 25);
    return bits >> 15 ? -size : size;
}

double value_of(Field const& field, char const* element) {
    char const* const bytes = element + field.offset;
    bool const swapped = field.swapped;
    switch (field.kind) {
    case 'b': return *bytes != 0;
    case 'f':
        if (field.size == 2)
            return half_of(static_cast<std::uint16_t>(number_of<std::uint16_t>(bytes, swapped)));
        return field.size == 4 ? number_of<float>(bytes, swapped) : number_of<double>(bytes, swapped);
    case 'M': {
        double const count = number_of<std::int64_t>(bytes, swapped);
        bool const is_none = count <= -9223372036854775807.0; // "not a time"
        return is_none ? NAN : count * field.scale;
    }
    case 'i':
        return field.size == 1   ? number_of<std::int8_t>(bytes, swapped)
               : field.size == 2 ? number_of<std::int16_t>(bytes, swapped)
               : field.size == 4 ? number_of<std::int32_t>(bytes, swapped)
                                 : number_of<std::int64_t>(bytes, swapped);
    default:
        return field.size == 1   ? number_of<std::uint8_t>(bytes, swapped)
               : field.size == 2 ? number_of<std::uint16_t>(bytes, swapped)
               : field.size == 4 ? number_of<std::uint32_t>(bytes, swapped)
                                 : number_of<std::uint64_t>(bytes, swapped);
    }
}

// Reads the dictionary of the header, a small part of Python's texts.
class HeaderReader {
public:
    HeaderReader(std::string_view text, std::string const& name) : text_(text), name_(name) {}

    struct Header {
        std::vector<Field> fields;
        std::size_t element = 0; // bytes
        bool by_columns = false; // columns lie one after the other
        std::vector<std::size_t> shape;
    };

    Header read() {
        Header header;
        expect('{');
        while (!take('}')) {
            const std::string key = quoted();
            expect(':');
            if (key == "descr")
                read_type(header);
            else if (key == "fortran_order")
                header.by_columns = word() == "True";
            else if (key == "shape")
                header.shape = numbers();
            else
                fail();
            take(',');
        }
        return header;
    }

private:
    [[noreturn]] void fail() const {
        throw TableError(name_ + ": has a header that is none of an array of numbers; save it as .csv");
    }
    void skip() {
        while (!text_.empty() && (text_[0] == ' ' || text_[0] == '\n')) text_.remove_prefix(1);
    }
    bool take(char wanted) {
        skip();
        if (text_.empty() || text_[0] != wanted) return false;
        text_.remove_prefix(1);
        return true;
    }
    void expect(char wanted) {
        if (!take(wanted)) fail();
    }
    std::string quoted() {
        expect('\'');
        const std::size_t end = text_.find('\'');
        if (end == std::string_view::npos) fail();
        std::string found(text_.substr(0, end));
        text_.remove_prefix(end + 1);
        return found;
    }
    std::string word() {
        skip();
        const std::size_t end = std::min(text_.find_first_of(",} "), text_.size());
        std::string found(text_.substr(0, end));
        text_.remove_prefix(end);
        return found;
    }
    std::vector<std::size_t> numbers() {
        std::vector<std::size_t> found;
        expect('(');
        while (!take(')')) {
            skip();
            std::size_t number = 0;
            auto const result = std::from_chars(text_.data(), text_.data() + text_.size(), number);
            if (result.ec != std::errc()) fail();
            text_.remove_prefix(static_cast<std::size_t>(result.ptr - text_.data()));
            found.push_back(number);
            take(',');
        }
        return found;
    }
    void read_type(Header& header) {
        if (!take('[')) {
            header.fields.push_back(field_of(quoted(), ""));
            header.element = header.fields[0].size;
            return;
        }
        while (!take(']')) {
            expect('(');
            const std::string name = quoted();
            expect(',');
            Field field = field_of(quoted(), name);
            field.offset = header.element;
            header.element += field.size;
            if (field.kind != 'V') header.fields.push_back(std::move(field));
            expect(')');
            take(',');
        }
    }
    // "<f8", "|b1", ">i4", "<M8[ns]"; texts are passed over.
    Field field_of(std::string const& type, std::string const& name) const {
        if (type.size() < 3) fail();
        Field field{name, type[1]};
        field.swapped = type[0] == '>' && std::endian::native == std::endian::little;
        std::size_t size = 0;
        auto const result = std::from_chars(type.data() + 2, type.data() + type.size(), size);
        if (result.ec != std::errc() || size == 0 || size > longest_header) fail();
        field.size = type[1] == 'U' ? 4 * size : size;
        constexpr std::string_view kinds = "fiubM", texts = "USV";
        if (texts.find(type[1]) != std::string_view::npos) {
            if (name.empty()) fail();
            field.kind = 'V';
            return field;
        }
        bool const fits = size == 8 || (type[1] == 'f' && (size == 2 || size == 4))
                          || (type[1] == 'b' && size == 1)
                          || ((type[1] == 'i' || type[1] == 'u') && (size == 1 || size == 2 || size == 4));
        if (kinds.find(type[1]) == std::string_view::npos || !fits) fail();
        if (type[1] == 'M')
            field.scale = scale_of(type.substr(static_cast<std::size_t>(result.ptr - type.data())));
        return field;
    }
    double scale_of(std::string const& unit) const {
        struct Row {
            std::string_view unit;
            double seconds;
        };
        constexpr std::array rows{Row{"[W]", 604800}, Row{"[D]", 86400}, Row{"[h]", 3600},
                                  Row{"[m]", 60},     Row{"[s]", 1},     Row{"[ms]", 1e-3},
                                  Row{"[us]", 1e-6},  Row{"[ns]", 1e-9}};
        for (Row const& row : rows)
            if (row.unit == unit) return row.seconds;
        fail();
    }

    std::string_view text_;
    std::string const& name_;
};

class NumpyTable : public Table {
public:
    NumpyTable(std::unique_ptr<ByteSource> bytes, std::string const& name)
        : Table(name), source_(std::move(bytes)) {
        read_header();
        for (std::size_t i = 0; i < header_.fields.size() * across_; ++i) {
            Field const& field = header_.fields[i % header_.fields.size()];
            found_.push_back({.title = field.name,
                              .kind = field.kind == 'M' ? ColumnKind::Time : ColumnKind::Number,
                              .has_values = true});
        }
        name_columns();
        description_ = "an array of " + std::to_string(down_) + " rows";
    }

    bool read() override {
        if (header_.by_columns && across_ > 1) return read_columns();
        const std::size_t row_bytes = header_.element * across_;
        const std::size_t count = std::min(rows_at_once, down_ - rows_);
        if (count == 0 || row_bytes == 0) return false;
        block_.resize(count * row_bytes);
        fill(block_);
        for (std::size_t row = 0; row < count; ++row)
            for (Column& column : columns_) add(column, block_.data() + row * row_bytes);
        rows_ += count;
        return true;
    }
    double progress() const override { return source_->progress(); }

private:
    void fill(std::span<char> target) {
        while (!target.empty()) {
            const std::size_t count = source_->read(target);
            if (count == 0) throw TableError(name_ + ": ends before its array does; it is cut off");
            target = target.subspan(count);
        }
    }

    void read_header() {
        std::array<char, 8> start{};
        fill(start);
        bool const is_long = start[6] >= 2;
        std::array<char, 4> length{};
        fill(std::span(length).first(is_long ? 4 : 2));
        std::size_t size = 0;
        for (std::size_t i = 4; i-- > 0;) size = size << 8 | static_cast<unsigned char>(length[i]);
        if (size > longest_header)
            throw TableError(name_ + ": has a header that is none of an array of numbers; save it as .csv");
        std::string text(size, '\0');
        fill(text);
        header_ = HeaderReader(text, name_).read();
        if (header_.shape.empty() || header_.shape.size() > 2 || header_.fields.empty())
            throw TableError(name_ + ": is an array of " + std::to_string(header_.shape.size())
                             + " dimensions; one or two can be drawn");
        down_ = header_.shape[0];
        across_ = header_.shape.size() == 2 ? header_.shape[1] : 1;
        if (across_ * header_.fields.size() > most_numpy_columns || across_ > most_numpy_columns)
            throw TableError(name_ + ": has more than " + std::to_string(most_numpy_columns)
                             + " columns; is it the other way round?");
        constexpr std::size_t longest_record = 1 << 24;
        if (header_.element * across_ > longest_record)
            throw TableError(name_ + ": has rows of more than 16 MB; is it the other way round?");
        if (header_.by_columns && header_.fields.size() > 1 && across_ > 1)
            throw TableError(name_ + ": is an array of records in columns; save it with order='C'");
    }

    void add(Column& column, char const* row) {
        const std::size_t fields = header_.fields.size();
        const std::size_t element = column.wanted.column / fields, field = column.wanted.column % fields;
        store(column, value_of(header_.fields[field], row + element * header_.element));
    }
    void store(Column& column, double value) const {
        if (column.wanted.unix_time)
            value *= seconds_in(column.wanted.unix_unit.value_or(unix_unit_of(value)));
        column.missing += std::isnan(value);
        column.infinite += std::isinf(value);
        column.values.push_back(std::isfinite(value) ? value : NAN);
    }

    // One column after the other, each in pieces.
    bool read_columns() {
        if (rows_ == down_) return false;
        for (std::size_t c = 0; c < across_; ++c)
            for (std::size_t row = 0; row < down_;) {
                const std::size_t count = std::min(rows_at_once, down_ - row);
                block_.resize(count * header_.element);
                fill(block_);
                for (Column& column : columns_)
                    for (std::size_t i = 0; column.wanted.column == c && i < count; ++i)
                        store(column, value_of(header_.fields[0], block_.data() + i * header_.element));
                row += count;
            }
        rows_ = down_;
        return true;
    }

    static constexpr std::size_t rows_at_once = 4096;
    std::unique_ptr<ByteSource> source_;
    HeaderReader::Header header_;
    std::size_t down_ = 0, across_ = 1;
    std::vector<char> block_;
};

} // namespace

std::unique_ptr<Table> open_numpy(std::unique_ptr<ByteSource> bytes, std::string const& name) {
    return std::make_unique<NumpyTable>(std::move(bytes), name);
}

} // namespace qv::table
