// Rows of cells with separators between them.
#include "table/layout.h"
#include "table/text.h"
#include "table/text_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace qv::table {
namespace {

constexpr std::size_t looked_at = 1 << 16;           // bytes, to find out what the text is
constexpr std::size_t looked_at_for_dates = 1 << 24; // where the order of dates is open
constexpr std::size_t most_sample_rows = 1000;
constexpr std::size_t most_sample_cells = 100'000;

std::string separator_name(char separator) {
    switch (separator) {
    case '\0': return "one column";
    case ' ': return "separated by blanks";
    case '\t': return "separated by tabs";
    default: return std::string("separated by \"") + separator + "\"";
    }
}

// A row of plain numbers needs no taking apart: they are read where they stand.
class PlainRows {
public:
    PlainRows(std::vector<ColumnReader>& readers, Dialect const& dialect, std::size_t width,
              std::size_t first_cell)
        : readers_(readers), separator_(dialect.separator), comment_(dialect.comment),
          width_(width + first_cell) {
        for (std::size_t i = 0; i < readers.size(); ++i) {
            Wanted const& wanted = readers[i].wanted();
            steps_.push_back({wanted.column + first_cell, i, wanted.kind == ColumnKind::Number});
            possible_ = possible_ && !wanted.time_column;
        }
        std::ranges::sort(steps_, {}, &Step::cell);
        for (std::size_t i = 1; i < steps_.size(); ++i)
            possible_ = possible_ && steps_[i].cell != steps_[i - 1].cell;
        possible_ = possible_ && separator_ != ' ' && dialect.numbers == NumberForm{};
        values_.resize(steps_.size());
    }
    bool possible() const { return possible_; }
    double value(std::size_t reader) const { return values_[reader]; }

    /// The end of the row at `p`, behind its line end, when it is plain; else nullptr. There is a line end
    /// before `limit`, and no quote.
    char const* take(char const* p, char const* limit) {
        if (!comment_.empty() && *p == comment_[0]) return nullptr;
        std::size_t cell = 0;
        for (Step const& step : steps_) {
            for (; cell < step.cell; ++cell) {
                while (*p != separator_ && *p != '\n') ++p;
                if (*p++ == '\n') return nullptr;
            }
            p = step.is_number ? take_number(p, limit, step.reader) : take_other(p, step.reader);
            if (!p) return nullptr;
            if (*p == separator_ && separator_) {
                ++p;
                ++cell;
            } else {
                if (*p == '\r' && p[1] == '\n') ++p;
                if (*p != '\n') return nullptr;
                // Cells that are missing at the end are for the other way to count.
                return &step == &steps_.back() ? p + 1 : nullptr;
            }
        }
        for (; *p != '\n'; ++p) cell += *p == separator_;
        return cell < width_ ? p + 1 : nullptr;
    }

private:
    struct Step {
        std::size_t cell, reader;
        bool is_number;
    };

    char const* take_number(char const* p, char const* limit, std::size_t reader) {
        double number = 0;
        if (!is_digit(*p) && *p != '-') return nullptr;
        auto const [end, error] = std::from_chars(p, limit, number);
        if (error != std::errc() || !std::isfinite(number)) return nullptr;
        auto const value = readers_[reader].value_of_number(number);
        if (!value) return nullptr;
        values_[reader] = *value;
        return end;
    }

    char const* take_other(char const* p, std::size_t reader) {
        char const* const begin = p;
        while (*p != separator_ && *p != '\n') ++p;
        auto const value = readers_[reader].value(trimmed({begin, p}));
        if (!value || std::isnan(*value)) return nullptr;
        values_[reader] = *value;
        return p > begin && p[-1] == '\r' ? p - 1 : p;
    }

    std::vector<ColumnReader>& readers_;
    std::vector<Step> steps_; // in the order of the cells
    std::vector<double> values_;
    char separator_;
    std::string comment_;
    std::size_t width_;
    bool possible_ = true;
};

class DelimitedTable : public TextTable {
public:
    DelimitedTable(std::unique_ptr<ByteSource> text, std::string const& name, ReadOptions const& options,
                   Encoding encoding)
        : TextTable(std::move(text), name, options), encoding_(encoding) {
        look();
    }
    void keep(std::vector<Wanted> const& wanted) override {
        TextTable::keep(wanted);
        plain_.emplace(readers_, dialect_, found_.size(), first_cell_);
    }

private:
    void look() {
        bool more = read_for_sample(looked_at);
        skip_lines();
        find(!more);
        for (std::size_t bytes = 4 * looked_at; more && is_order_open() && bytes <= looked_at_for_dates;
             bytes *= 4) {
            more = read_ahead(bytes);
            find(!more, most_sample_cells * 100);
        }
        pass_to_data();
        name_columns();
        describe();
    }

    // While a text is being written, its first few lines have to do.
    bool read_for_sample(std::size_t bytes) {
        if (!options_.early) return read_ahead(bytes);
        constexpr std::ptrdiff_t enough = 3;
        while (std::ranges::count(waiting(), '\n') < enough)
            if (!read_ahead(waiting().size() + 1)) return false;
        return true;
    }

    void skip_lines() {
        for (std::size_t i = 0; i < options_.skip; ++i, ++line_) {
            auto const end = waiting().find('\n');
            if (end == std::string_view::npos)
                fail("has no line behind the " + std::to_string(options_.skip) + " to skip");
            pass(end + 1);
        }
    }

    void find(bool at_end, std::size_t most_cells = most_sample_cells) {
        const std::string_view text = waiting();
        // A text whose first row is longer than what was looked at.
        if (!at_end && text.find('\n') == std::string_view::npos) at_end = !read_ahead(longest_row / 4);
        dialect_ = find_dialect(waiting(), at_end, options_);
        Sample first = sample_of(waiting(), at_end, dialect_, 1);
        const std::size_t width =
            first.rows.empty() ? 1 : std::max<std::size_t>(1, first.rows[0].cells.size());
        sample_ = sample_of(waiting(), at_end, dialect_,
                            std::clamp(most_cells / width, std::size_t{20},
                                       most_cells == most_sample_cells ? most_sample_rows : most_cells));
        if (std::ranges::all_of(sample_.rows, &SampleRow::is_comment)) raise_without_rows();
        layout_ = find_layout(sample_, dialect_, options_);
        found_ = layout_.columns;
        if (found_.size() > most_columns) fail("has more than " + std::to_string(most_columns) + " columns");
        first_cell_ = layout_.first_cell;
    }

    bool is_order_open() const { return std::ranges::any_of(found_, &FoundColumn::is_order_open); }

    [[noreturn]] void raise_without_rows() const {
        if (trimmed(waiting()).find('"') != std::string_view::npos)
            fail("the row has a quote that is never closed");
        throw TableError(name_ + ": is empty; rows of numbers are expected, with or without a header");
    }

    void pass_to_data() {
        bool const any = layout_.data < sample_.rows.size();
        const std::size_t first_line = line_;
        header_line_ = layout_.header ? first_line - 1 + sample_.rows[*layout_.header].line : 0;
        units_line_ = layout_.units ? first_line - 1 + sample_.rows[*layout_.units].line : 0;
        line_ += (any ? sample_.rows[layout_.data].line : sample_.end_line) - 1;
        pass(any ? sample_.rows[layout_.data].begin : sample_.end);
        left_out_.preamble_lines = layout_.preamble_lines;
        for (FoundColumn& column : found_)
            if (!is_utf8(column.title)) column.title = utf8_of_latin1(column.title);
        join_times(found_);
        sample_ = {};
    }

    void describe() {
        description_ = std::string(name_of(encoding_)) + ", " + separator_name(dialect_.separator);
        if (dialect_.numbers.decimal == ',') description_ += ", decimal \",\"";
        if (dialect_.numbers.thousands)
            description_ += std::string(", thousands \"") + dialect_.numbers.thousands + "\"";
        description_ += header_line_ ? ", header in line " + std::to_string(header_line_) : ", no header";
        if (units_line_) description_ += ", units in line " + std::to_string(units_line_);
        if (encoding_ == Encoding::Latin1 && !options_.encoding)
            remarks_.push_back(name_ + ": is not UTF-8 and read as Latin-1; --encoding names another");
    }

    std::size_t take_rows(std::string_view text, bool at_end) override {
        // Up to the last line end every row without quotes is whole.
        const std::size_t last = text.rfind('\n');
        std::string_view rest = text;
        if (last != std::string_view::npos && plain_ && plain_->possible()
            && text.substr(0, last).find('"') == std::string_view::npos) {
            rest.remove_prefix(take_lines(text.data(), text.data() + last + 1));
        }
        while (!rest.empty()) {
            const std::size_t taken = take_one(rest, at_end);
            if (taken == 0) break;
            rest.remove_prefix(taken);
        }
        return text.size() - rest.size();
    }

    std::size_t take_lines(char const* const begin, char const* const end) {
        char const* p = begin;
        while (p < end) {
            p = take_plain_lines(p, end);
            if (p < end) p += take_one({p, end}, true);
        }
        return static_cast<std::size_t>(p - begin);
    }

    // As long as the rows are plain; their values are gathered, since a column grows cheaper by many.
    char const* take_plain_lines(char const* p, char const* end) {
        constexpr std::size_t most = 1024;
        gathered_.resize(readers_.size() * most);
        char const* behind = p;
        while (behind && p < end) {
            std::size_t rows = 0;
            while (rows < most && p < end && (behind = plain_->take(p, end))) {
                for (std::size_t i = 0; i < readers_.size(); ++i)
                    gathered_[i * most + rows] = plain_->value(i);
                p = behind;
                ++rows;
            }
            for (std::size_t i = 0; i < readers_.size(); ++i)
                readers_[i].add_plain(columns_[i], std::span(gathered_).subspan(i * most, rows));
            rows_ += rows;
            line_ += rows;
        }
        return p;
    }

    // One row in the slow way; 0 when it is not whole.
    std::size_t take_one(std::string_view text, bool at_end) {
        const TakenRow taken = take_row(text, at_end, dialect_, cells_);
        if (taken.kind == RowKind::OpenQuote) fail("the row has a quote that is never closed");
        if (taken.kind == RowKind::Incomplete) return 0;
        if (taken.kind == RowKind::Row) add_or_count();
        line_ += taken.lines;
        return taken.bytes;
    }

    void add_or_count() {
        const std::size_t width = found_.size() + first_cell_;
        for (std::size_t i = width; i < cells_.size(); ++i)
            if (!cells_[i].empty()) {
                if (left_out_.wide_rows++ == 0) left_out_.first_wide = line_;
                return;
            }
        add_row(cells_, first_cell_);
    }

    void begin_anew() override { line_ = 1; }

    Encoding encoding_;
    Sample sample_;
    Layout layout_;
    std::size_t first_cell_ = 0;
    std::size_t header_line_ = 0, units_line_ = 0; // 0: there is none
    Cells cells_;
    std::optional<PlainRows> plain_;
    std::vector<double> gathered_; // column by column
};

} // namespace

std::unique_ptr<Table> open_delimited(std::unique_ptr<ByteSource> text, std::string const& name,
                                      ReadOptions const& options, Encoding encoding) {
    return std::make_unique<DelimitedTable>(std::move(text), name, options, encoding);
}

} // namespace qv::table
