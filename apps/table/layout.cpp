#include "table/layout.h"

#include "table/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

namespace qv::table {
namespace {

constexpr std::size_t rows_for_dialect = 200;
constexpr std::string_view candidates = "\t;|, ";

bool is_rule(std::string_view cell) {
    return !cell.empty() && cell.find_first_not_of("-:=+") == std::string_view::npos;
}

// A line of dashes below a header, as in tables drawn with letters.
bool is_rule_row(Cells const& cells) {
    bool any = false;
    for (std::string_view const cell : cells) {
        if (!cell.empty() && !is_rule(cell)) return false;
        any = any || cell.size() > 2;
    }
    return any;
}

bool is_text(std::string_view cell, Dialect const& dialect, ReadOptions const& options) {
    return read_number(cell, dialect.numbers).kind == CellKind::Other && !moment_in(cell, options, {});
}

bool is_value(std::string_view cell, Dialect const& dialect, ReadOptions const& options) {
    return read_number(cell, dialect.numbers).kind == CellKind::Number || moment_in(cell, options, {});
}

// The number of cells that most rows have; of equals the larger.
std::size_t usual_width(Sample const& sample) {
    std::map<std::size_t, std::size_t> counts;
    for (SampleRow const& row : sample.rows)
        if (!row.is_comment) ++counts[row.cells.size()];
    std::size_t best = 0, most = 0;
    for (auto const& [width, count] : counts)
        if (count >= most) {
            best = width;
            most = count;
        }
    return best;
}

struct Fit {
    double score = -1;
    NumberForm numbers;
};

// How often a cell is a number under either decimal mark.
NumberForm better_numbers(Sample const& sample, std::size_t width, char separator,
                          ReadOptions const& options) {
    if (options.decimal) return {*options.decimal, options.thousands};
    if (options.thousands == '.' || options.thousands == ',')
        return {options.thousands == '.' ? ',' : '.', options.thousands};
    std::size_t points = 0, commas = 0;
    for (SampleRow const& row : sample.rows) {
        if (row.is_comment || row.cells.size() != width) continue;
        for (std::string_view const cell : row.cells) {
            points += read_number(cell, {'.', options.thousands}).kind == CellKind::Number;
            // Between commas 1,234 is more likely a thousand, and nobody is to be told a thousandth of it.
            bool const may_be_grouped = separator == ',' && is_grouped_by(cell, ',');
            commas += !may_be_grouped && read_number(cell, {',', options.thousands}).kind == CellKind::Number;
        }
    }
    return {commas > points ? ',' : '.', options.thousands};
}

Fit fit_of(std::string_view text, bool at_end, char separator, ReadOptions const& options) {
    Dialect dialect{separator, {}, options.comment};
    Sample const sample = sample_of(text, at_end, dialect, rows_for_dialect);
    std::size_t const width = usual_width(sample);
    if (width < 2) return {};
    Fit fit;
    fit.numbers = dialect.numbers = better_numbers(sample, width, separator, options);
    std::size_t rows = 0, usual = 0, cells = 0, values = 0;
    for (SampleRow const& row : sample.rows) {
        if (row.is_comment) continue;
        bool const is_usual = row.cells.size() == width;
        if (usual == 0 && !is_usual) continue; // lines above the table
        ++rows;
        usual += is_usual;
        if (usual < 2) continue; // the header
        for (std::string_view const cell : row.cells) {
            ++cells;
            values += !is_text(cell, dialect, options);
        }
    }
    double const share_of_values = cells == 0 ? 0 : static_cast<double>(values) / static_cast<double>(cells);
    fit.score = static_cast<double>(usual) / static_cast<double>(rows) + share_of_values;
    return fit;
}

std::string without_brackets(std::string_view text) {
    constexpr std::array<std::string_view, 3> pairs{"()", "[]", "{}"};
    for (std::string_view const pair : pairs)
        if (text.size() > 2 && text.front() == pair[0] && text.back() == pair[1])
            return std::string(text.substr(1, text.size() - 2));
    return std::string(text);
}

// Finds the parts of a table from the top down.
class LayoutFinder {
public:
    LayoutFinder(Sample const& sample, Dialect const& dialect, ReadOptions const& options)
        : sample_(sample), dialect_(dialect), options_(options) {
        for (std::size_t i = 0; i < sample.rows.size(); ++i)
            if (!sample.rows[i].is_comment) rows_.push_back(i);
    }

    Layout find() {
        width_ = usual_width(sample_);
        first_ = first_row();
        drop_empty_edges();
        layout_.columns.resize(width_);
        find_header();
        find_units();
        layout_.data = next_ < rows_.size() ? rows_[next_] : sample_.rows.size();
        for (std::size_t c = 0; c < width_; ++c) {
            std::vector<std::string_view> cells;
            for (std::size_t i = next_; i < rows_.size(); ++i) cells.push_back(cell(i, c));
            find_kind(layout_.columns[c], cells, dialect_, options_);
        }
        return std::move(layout_);
    }

private:
    Cells const& cells(std::size_t i) const { return sample_.rows[rows_[i]].cells; }
    // Of the i-th row and the c-th column.
    std::string_view cell(std::size_t i, std::size_t c) const {
        bool const row_names = i == first_ && lacks_first_title_;
        if (row_names) return c == 0 ? std::string_view() : cells(i)[c - 1];
        return cells(i)[c + layout_.first_cell];
    }
    bool is_text_at(std::size_t i, std::size_t c) const { return is_text(cell(i, c), dialect_, options_); }
    bool is_value_at(std::size_t i, std::size_t c) const { return is_value(cell(i, c), dialect_, options_); }
    bool all_text(std::size_t i) const {
        return std::ranges::all_of(cells(i),
                                   [&](std::string_view text) { return is_text(text, dialect_, options_); });
    }

    // The first row as wide as the table; what stands above it is no part of it.
    std::size_t first_row() {
        if (width_ < 2) return 0;
        std::size_t i = 0;
        while (i < rows_.size() && cells(i).size() < width_) ++i;
        if (i == rows_.size()) return 0;
        // A header wider than the rows, whose last cells are empty, and one without a title for the names of
        // rows.
        if (cells(i).size() > width_ && all_text(i)) width_ = cells(i).size();
        if (i == 1 && width_ > 2 && cells(0).size() == width_ - 1 && all_text(0)) {
            lacks_first_title_ = true;
            return 0;
        }
        layout_.preamble_lines = i;
        return i;
    }

    void drop_empty_edges() {
        auto const is_empty = [&](std::size_t c) {
            for (std::size_t i = first_; i < rows_.size(); ++i)
                if (!is_rule_row(cells(i)) && !cell(i, c).empty()) return false;
            return true;
        };
        if (lacks_first_title_) return;
        while (width_ > 1 && is_empty(width_ - 1)) --width_;
        if (width_ > 1 && is_empty(0)) {
            layout_.first_cell = 1;
            --width_;
        }
    }

    // How often a column has values below the header.
    bool has_values_below(std::size_t i, std::size_t c) const {
        std::size_t values = 0, texts = 0;
        for (std::size_t k = i + 1; k < rows_.size(); ++k) {
            values += is_value_at(k, c);
            texts += is_text_at(k, c);
        }
        return values > 0 && values >= texts;
    }

    // Such as 1990, 1991, 1992 behind "country".
    bool looks_like_years(std::size_t i) const {
        double before = 0;
        bool any_text = false;
        for (std::size_t c = 0; c < width_; ++c) {
            const NumberCell number = read_number(cell(i, c), dialect_.numbers);
            if (number.kind != CellKind::Number) {
                any_text = any_text || !cell(i, c).empty();
                continue;
            }
            if (number.value != std::floor(number.value) || number.value < 1500 || number.value > 2200
                || number.value <= before)
                return false;
            before = number.value;
        }
        return any_text && before > 0;
    }

    // Titles are texts above values; a first row with a value above values is one of the data.
    bool is_header(std::size_t i) const {
        if (options_.header) return *options_.header;
        bool any_text = false, any_value = false;
        for (std::size_t c = 0; c < width_; ++c) {
            bool const text = is_text_at(i, c);
            if (text && has_values_below(i, c)) return true;
            any_text = any_text || text;
            any_value = any_value || is_value_at(i, c);
        }
        return looks_like_years(i) || (any_text && !any_value);
    }

    void find_header() {
        next_ = first_;
        if (next_ == rows_.size()) return;
        if (is_header(next_)) {
            layout_.header = rows_[next_];
            for (std::size_t c = 0; c < width_; ++c) layout_.columns[c].title = cell(next_, c);
            ++next_;
        } else {
            find_header_in_comment();
        }
        if (next_ < rows_.size() && is_rule_row(cells(next_))) ++next_;
    }

    // "# x y z" above rows of three cells.
    void find_header_in_comment() {
        if (options_.header && !*options_.header) return;
        for (std::size_t i = rows_[next_]; i-- > 0 && sample_.rows[i].is_comment;) {
            std::string_view text = trimmed(sample_.rows[i].text.substr(dialect_.comment.size()));
            Cells titles;
            take_row(text, true, {dialect_.separator, dialect_.numbers, ""}, titles);
            if (titles.size() != width_
                || !std::ranges::all_of(titles, [&](auto t) { return is_text(t, dialect_, options_); }))
                continue;
            layout_.header = i;
            layout_.header_in_comment = true;
            for (std::size_t c = 0; c < width_; ++c) layout_.columns[c].title = titles[c];
            return;
        }
    }

    // A row of texts below the header where the rows that follow have values.
    void find_units() {
        if (!layout_.header || layout_.header_in_comment || next_ + 1 >= rows_.size()) return;
        bool any = false;
        for (std::size_t c = 0; c < width_; ++c) {
            if (is_value_at(next_, c)) return;
            if (!is_text_at(next_, c)) continue;
            // A text above texts is a cell like them, but for one in brackets.
            if (!has_values_below(next_, c) && without_brackets(cell(next_, c)) == cell(next_, c)) return;
            any = true;
        }
        if (!any) return;
        layout_.units = rows_[next_];
        for (std::size_t c = 0; c < width_; ++c) layout_.columns[c].unit = without_brackets(cell(next_, c));
        ++next_;
    }

    Sample const& sample_;
    Dialect const& dialect_;
    ReadOptions const& options_;
    std::vector<std::size_t> rows_; // of the sample that are no comments
    Layout layout_;
    std::size_t width_ = 0;
    std::size_t first_ = 0;
    std::size_t next_ = 0;
    bool lacks_first_title_ = false;
};

// What the dates of a column are under one order.
struct OrderFit {
    std::size_t count = 0, times_alone = 0;
    bool is_sorted = true;
    std::vector<std::optional<double>> seconds;
};

OrderFit fit_order(std::vector<std::string_view> const& cells, DateOrder order, ReadOptions const& options) {
    OrderFit fit;
    bool rises = true, falls = true;
    std::optional<double> before;
    for (std::string_view const cell : cells) {
        auto const moment = moment_in(cell, options, {order});
        fit.seconds.push_back(moment ? std::optional(moment->seconds) : std::nullopt);
        if (!moment) continue;
        ++fit.count;
        fit.times_alone += moment->is_time_alone;
        if (before) {
            rises = rises && moment->seconds >= *before;
            falls = falls && moment->seconds <= *before;
        }
        before = moment->seconds;
    }
    fit.is_sorted = rises || falls;
    return fit;
}

// The order under which all are dates; where that is none or both, the one under which they are sorted.
void find_order(FoundColumn& column, std::vector<std::string_view> const& cells, ReadOptions const& options) {
    if (options.date_order) {
        column.order = *options.date_order;
        column.order_matters = true;
        return;
    }
    const OrderFit day = fit_order(cells, DateOrder::DayFirst, options),
                   month = fit_order(cells, DateOrder::MonthFirst, options),
                   year = fit_order(cells, DateOrder::YearFirst, options);
    column.order = month.count > day.count ? DateOrder::MonthFirst : DateOrder::DayFirst;
    column.order_matters = day.seconds != month.seconds;
    if (year.count > std::max(day.count, month.count)) column.order = DateOrder::YearFirst;
    if (column.order == DateOrder::YearFirst || day.count != month.count || day.seconds == month.seconds)
        return;
    if (day.is_sorted != month.is_sorted) {
        column.order = day.is_sorted ? DateOrder::DayFirst : DateOrder::MonthFirst;
        return;
    }
    column.is_order_open = true;
    for (std::size_t i = 0; i < cells.size() && column.open_example.empty(); ++i)
        if (day.seconds[i] != month.seconds[i]) column.open_example = cells[i];
}

// The mark that groups the digits of most cells; none where they are other texts.
char grouping_mark(std::vector<std::string_view> const& cells) {
    for (char const mark : {',', '.', '\'', ' '}) {
        auto const grouped =
            static_cast<std::size_t>(std::ranges::count_if(cells, [&](std::string_view cell) {
                char const decimal = mark == '.' ? ',' : '.';
                return is_grouped_by(cell.substr(0, cell.find(decimal)), mark);
            }));
        if (2 * grouped > cells.size()) return mark;
    }
    return '\0';
}

// 1.234.567 among 1.234: what was taken for a decimal point groups digits.
void find_grouping(FoundColumn& column, std::vector<std::string_view> const& cells, char decimal) {
    for (std::string_view const cell : cells) {
        if (!is_grouped_by(cell, decimal)) continue;
        column.grouped_by = decimal;
        column.is_grouping_open = true;
        column.open_example = cell;
        return;
    }
}

std::size_t most_dates(std::vector<std::string_view> const& cells, ReadOptions const& options) {
    std::size_t most = 0;
    for (DateOrder const order : {DateOrder::DayFirst, DateOrder::MonthFirst, DateOrder::YearFirst})
        most = std::max(most, fit_order(cells, options.date_order.value_or(order), options).count);
    return most;
}

} // namespace

std::optional<Moment> moment_in(std::string_view cell, ReadOptions const& options, DateForm const& form) {
    return options.date_format.empty() ? read_moment(cell, form)
                                       : read_moment_by(cell, options.date_format, form);
}

Sample sample_of(std::string_view text, bool at_end, Dialect const& dialect, std::size_t most_rows) {
    Sample sample;
    std::size_t position = 0, line = 1;
    while (position < text.size() && sample.rows.size() < most_rows) {
        SampleRow row;
        const std::string_view rest = text.substr(position);
        const TakenRow taken = take_row(rest, at_end, dialect, row.cells);
        if (taken.kind == RowKind::Incomplete || taken.kind == RowKind::OpenQuote) break;
        row.line = line;
        row.begin = position;
        row.text = trimmed(rest.substr(0, taken.bytes));
        row.is_comment = taken.kind == RowKind::Nothing;
        position += taken.bytes;
        line += taken.lines;
        bool const is_empty = row.is_comment && row.text.empty();
        if (!is_empty) sample.rows.push_back(std::move(row));
    }
    sample.end = position;
    sample.end_line = line;
    return sample;
}

Dialect find_dialect(std::string_view text, bool at_end, ReadOptions const& options) {
    constexpr double advantage = 0.02; // of a candidate over the next
    Dialect found{'\0', {}, options.comment};
    double best = -1, handicap = 0;
    for (char const candidate : candidates) {
        if (options.separator && *options.separator != candidate) continue;
        const Fit fit = fit_of(text, at_end, candidate, options);
        if (fit.score - handicap > best && fit.score >= 0) {
            best = fit.score - handicap;
            found.separator = candidate;
            found.numbers = fit.numbers;
        }
        handicap += advantage;
    }
    if (options.separator) found.separator = *options.separator;
    if (best < 0) {
        Sample const sample = sample_of(text, at_end, found, rows_for_dialect);
        found.numbers = better_numbers(sample, usual_width(sample), found.separator, options);
    }
    return found;
}

Layout find_layout(Sample const& sample, Dialect const& dialect, ReadOptions const& options) {
    return LayoutFinder(sample, dialect, options).find();
}

void find_kind(FoundColumn& column, std::vector<std::string_view> const& cells, Dialect const& dialect,
               ReadOptions const& options) {
    std::size_t numbers = 0, others = 0;
    std::vector<std::string_view> not_numbers;
    for (std::string_view const cell : cells) {
        const CellKind kind = read_number(cell, dialect.numbers).kind;
        numbers += kind == CellKind::Number || kind == CellKind::Infinite;
        others += kind == CellKind::Other;
        if (kind == CellKind::Other || (!options.date_format.empty() && kind == CellKind::Number))
            not_numbers.push_back(cell);
    }
    column.has_values = numbers + others > 0;
    if (numbers > 0) find_grouping(column, not_numbers, dialect.numbers.decimal);
    if (not_numbers.empty() && numbers >= others) return;
    const std::size_t dates = most_dates(not_numbers, options);
    if (dates > 0 && 2 * dates >= not_numbers.size() && (dates >= numbers || !options.date_format.empty())) {
        find_order(column, not_numbers, options);
        const OrderFit fit = fit_order(not_numbers, column.order, options);
        column.kind = 2 * fit.times_alone > fit.count ? ColumnKind::TimeOfDay : ColumnKind::Time;
        column.are_dates_alone = std::ranges::all_of(fit.seconds, [](auto const& seconds) {
            constexpr double a_day = 86400;
            return !seconds || std::fmod(*seconds, a_day) == 0;
        });
    } else if (others > numbers) {
        column.kind = ColumnKind::Text;
        column.grouped_by = grouping_mark(not_numbers);
    }
}

void join_times(std::vector<FoundColumn>& columns) {
    for (std::size_t i = 0; i + 1 < columns.size(); ++i)
        if (columns[i].are_dates_alone && columns[i].kind == ColumnKind::Time
            && columns[i + 1].kind == ColumnKind::TimeOfDay)
            columns[i].time_column = i + 1;
}

} // namespace qv::table
