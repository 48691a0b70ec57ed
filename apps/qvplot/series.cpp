#include "qvplot/series.h"

#include "qvplot/file_columns.h"
#include "qvplot/plot_error.h"
#include "qvplot/shown_range.h"
#include "table/text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>

namespace qv::plot {
namespace {

using table::ColumnKind;
using table::counted;
using table::TableError;

constexpr std::size_t rows_between_reports = 1000000;
constexpr std::size_t most_series = 10000;
constexpr std::size_t most_texts = 100'000; // of an axis

/// A file that is being read, with what is taken of it.
struct OpenFile {
    std::unique_ptr<table::Table> table;
    ChosenColumns chosen;

    table::Column* x() { return chosen.x ? &table->columns()[0] : nullptr; }
    table::Column& y(std::size_t i) { return table->columns()[i + (chosen.x ? 1 : 0)]; }
    table::FoundColumn const& found(std::size_t i) const { return table->found()[chosen.y[i].column]; }

    void keep(PlotOptions const& options) {
        std::vector<table::Wanted> wanted;
        if (chosen.x) wanted.push_back(wanted_column(*table, *chosen.x, true, options));
        for (ChosenColumn const& one : chosen.y)
            wanted.push_back(wanted_column(*table, one.column, false, options));
        table->keep(wanted);
    }
};

AxisContent content_of(ColumnKind kind, bool unix_time) {
    AxisContent content;
    content.is_time_of_day = kind == ColumnKind::TimeOfDay;
    content.is_time = kind == ColumnKind::Time || content.is_time_of_day || unix_time;
    return content;
}

char const* name_of(AxisContent const& content) {
    return !content.texts.empty()   ? "texts"
           : content.is_time_of_day ? "times of day"
           : content.is_time        ? "dates"
                                    : "numbers";
}

bool is_alike(AxisContent const& first, AxisContent const& second) {
    return first.is_time == second.is_time && first.is_time_of_day == second.is_time_of_day
           && first.texts.empty() == second.texts.empty();
}

/// The columns that meet on one axis have one kind; their texts are numbered together.
class SharedAxis {
public:
    void add(AxisContent& axis, table::Column& column, std::string const& where) {
        AxisContent own = content_of(column.wanted.kind, column.wanted.unix_time);
        own.texts = column.texts;
        if (own.texts.size() > most_texts)
            throw PlotError(where + " holds more than " + std::to_string(most_texts)
                            + " texts; name another with --x");
        if (!begun_) {
            begun_ = true;
            axis = own;
            for (std::string const& text : axis.texts)
                numbers_.try_emplace(text, static_cast<double>(numbers_.size()));
            return;
        }
        if (!is_alike(axis, own))
            throw PlotError(where + " holds " + name_of(own) + " where the columns before hold "
                            + name_of(axis) + "; draw them one by one, or as --panels");
        if (!own.texts.empty()) renumber(axis, column);
    }

private:
    void renumber(AxisContent& axis, table::Column& column) {
        std::vector<double> numbers;
        for (std::string const& text : column.texts) {
            auto const [place, is_new] = numbers_.try_emplace(text, static_cast<double>(numbers_.size()));
            if (is_new) axis.texts.push_back(text);
            numbers.push_back(place->second);
        }
        for (std::size_t i = 0; i < column.values.size(); ++i)
            if (double const value = column.values[i]; !std::isnan(value))
                column.values.set(i, numbers[static_cast<std::size_t>(value)]);
    }

    bool begun_ = false;
    std::map<std::string, double> numbers_;
};

// What a person may do about a column that is no number.
std::string hint_of(table::FoundColumn const& column) {
    if (!column.grouped_by) return {};
    return std::string("; --thousands \"") + column.grouped_by + "\" reads its numbers";
}

std::string stray_note(table::Strays const& strays) {
    return "line " + std::to_string(strays.first_line) + ": " + table::one_line(strays.first);
}

// "2 cells that are no dates, the first in line 3: ..."
std::string stray_cells(table::Strays const& strays, AxisContent const& content) {
    bool const one = strays.count == 1;
    char const* const noun = content.is_time_of_day ? "time of day" : content.is_time ? "date" : "number";
    std::string nouns = content.is_time_of_day ? "times of day" : noun + std::string("s");
    return counted(strays.count, "cell") + (one ? " that is no " : " that are no ") + (one ? noun : nouns)
           + (one ? ", in " : ", the first in ") + stray_note(strays);
}

void count_left_out(Series& series, table::Column const& column) {
    LeftOut& left = series.left_out;
    left.infinite = column.infinite;
    left.strays = column.strays.count;
    if (left.strays > 0)
        left.note_of_strays =
            stray_cells(column.strays, content_of(column.wanted.kind, column.wanted.unix_time));
    if (series.number_of_points() == series.y.size()) return;
    for (std::size_t i = 0; i < series.y.size(); ++i) {
        left.without_value += std::isnan(series.y[i]) && !std::isnan(series.x[i]);
        left.without_x += std::isnan(series.x[i]) && !std::isnan(series.y[i]);
    }
    left.without_value -= std::min(left.without_value, left.infinite + left.strays);
}

bool has_any(Series const& series) {
    for (std::size_t i = 0; i < series.y.size(); ++i)
        if (series.has_point(i)) return true;
    return false;
}

/// Chooses the columns of files and makes series of them.
class SeriesReader {
public:
    SeriesReader(PlotOptions const& options, ProgressReport const& report)
        : options_(options), report_(report) {}

    PlotData read() {
        for (std::size_t i = 0; i < options_.files.size(); ++i) {
            OpenFile file = open(options_.files[i], i + 1 == options_.files.size());
            read_rows(*file.table);
            take(file, options_.files[i]);
        }
        check_styles();
        data_.x_is_date = data_.x.is_time;
        name_files_apart();
        return std::move(data_);
    }

    OpenFile open(std::filesystem::path const& path, bool is_last) {
        OpenFile file{table::open_table(path.string(), options_.reading), {}};
        file.chosen.x = x_column(*file.table, options_);
        if (data_.x_name.empty()) {
            data_.x_name = file.chosen.x ? file.table->found()[*file.chosen.x].name : "row";
            if (file.chosen.x) data_.x_unit = file.table->found()[*file.chosen.x].unit;
        }
        file.chosen.y = names_columns() ? named_columns(*file.table, file.chosen.x)
                                        : columns_of_numbers(*file.table, file.chosen.x);
        if (file.chosen.y.size() > most_series)
            throw PlotError(file.table->name() + ": has " + std::to_string(file.chosen.y.size())
                            + " columns; name those to draw with --y");
        // Before the rows are read, which may take long.
        if (is_last && !missing_.empty()) throw TableError(missing_.begin()->second);
        if (options_.explain)
            for (std::string& line : explained(*file.table, file.chosen, options_))
                data_.explanation.push_back(std::move(line));
        if (file.chosen.y.empty()) throw_nothing_to_draw(*file.table);
        file.keep(options_);
        return file;
    }

    Series series_of(OpenFile& file, std::size_t i) {
        table::FoundColumn const& found = file.found(i);
        Series series{found.name, {}, {}, file.chosen.y[i].on_second_axis};
        series.unit = found.unit;
        for (StyleRule const& rule : options_.styles) {
            const std::vector<std::size_t> columns = columns_in(*file.table, rule.column);
            if (std::ranges::find(columns, file.chosen.y[i].column) != columns.end()) use_style(series, rule);
        }
        return series;
    }
    PlotData take_data() { return std::move(data_); }
    SharedAxis& x_axis() { return x_; }

private:
    static void add_style(Series& series, SeriesStyle const& style) {
        SeriesStyle& own = series.style;
        auto const take = [](auto& target, auto const& given) {
            if (given) target = given;
        };
        take(own.kind, style.kind);
        take(own.symbols, style.symbols);
        take(own.dash, style.dash);
        take(own.line_width, style.line_width);
        take(own.color, style.color);
        take(own.symbol, style.symbol);
        own.symbols_alone = own.symbols_alone || style.symbols_alone;
        if (style.on_second_axis) series.on_second_axis = *style.on_second_axis;
    }

    void use_style(Series& series, StyleRule const& rule) {
        styled_.insert(rule.column);
        add_style(series, rule.style);
    }
    void check_styles() const {
        for (StyleRule const& rule : options_.styles)
            if (!styled_.contains(rule.column))
                throw PlotError("--style: no column " + table::one_line(rule.column) + " is drawn");
    }

    bool names_columns() const { return !options_.y.empty() || !options_.y2.empty(); }

    // With several files each may have some of the columns.
    std::vector<ChosenColumn> named_columns(table::Table const& file, std::optional<std::size_t> x) {
        std::vector<ChosenColumn> chosen;
        for (bool const second : {false, true})
            for (std::string const& name : second ? options_.y2 : options_.y) {
                std::vector<std::size_t> columns = columns_in(file, name);
                if (columns.size() > 1 && x) std::erase(columns, *x);
                note_if_missing(file, name, columns.empty());
                for (std::size_t const column : columns) chosen.push_back({column, second});
            }
        return chosen;
    }

    void note_if_missing(table::Table const& file, std::string const& name, bool is_missing) {
        if (!is_missing) {
            found_.insert(name);
            missing_.erase(name);
        } else if (!found_.contains(name)) {
            missing_.try_emplace(name, no_column(file, name));
        }
    }

    [[noreturn]] void throw_nothing_to_draw(table::Table const& file) const {
        if (names_columns()) {
            std::vector<std::string> asked = options_.y, names;
            asked.insert(asked.end(), options_.y2.begin(), options_.y2.end());
            for (auto const& column : file.found()) names.push_back(column.name);
            throw TableError(file.name() + ": has "
                             + (asked.size() == 1 ? "no column " : "none of the columns ")
                             + table::quoted_list(asked) + "; its columns are " + table::quoted_list(names));
        }
        std::string hint;
        for (auto const& column : file.found())
            if (hint.empty()) hint = hint_of(column);
        throw PlotError(file.name() + ": has no column of numbers beside x"
                        + (hint.empty() ? "; name one with --y, or see --explain" : hint));
    }

    void read_rows(table::Table& file) {
        std::size_t told = 0;
        while (file.read())
            for (; report_ && file.rows() >= told + rows_between_reports;)
                report_({file.name(), told += rows_between_reports, file.progress(), false});
        file.finish();
        if (told > 0) report_({file.name(), file.rows(), 1, true});
    }

    void take(OpenFile& file, std::filesystem::path const& path) {
        table::Values x;
        if (table::Column* const column = file.x()) {
            x_.add(data_.x, *column,
                   file.table->name() + ": column "
                       + table::one_line(file.table->found()[*file.chosen.x].name));
            x = column->values;
            if (column->strays.count > 0)
                data_.columns_left_out.push_back("left out of " + table::one_line(data_.x_name) + ": "
                                                 + stray_cells(column->strays, data_.x));
        } else {
            for (std::size_t row = 1; row <= file.table->rows(); ++row) x.push_back(static_cast<double>(row));
        }
        std::size_t kept = 0;
        for (std::size_t i = 0; i < file.chosen.y.size(); ++i) kept += take_column(file, i, x, path);
        if (kept == 0)
            throw PlotError(file.table->name()
                            + ": has no column of numbers beside x; name one with --y, or see --explain");
        note_left_out(*file.table, file.chosen);
    }

    // False for a column without any value that nobody has named.
    bool take_column(OpenFile& file, std::size_t i, table::Values const& x,
                     std::filesystem::path const& path) {
        Series series = series_of(file, i);
        table::Column& column = file.y(i);
        const std::string where = file.table->name() + ": column " + table::one_line(series.name);
        if (column.missing == column.values.size() && !names_columns() && column.values.size() > 0)
            return false;
        y_[series.on_second_axis].add(data_.y[series.on_second_axis], column, where);
        series.x = x;
        series.y = column.values;
        count_left_out(series, column);
        if (!has_any(series)) {
            if (column.strays.count > 0)
                throw TableError(where + " holds no number beside an x; " + stray_note(column.strays)
                                 + " is none");
            throw TableError(where + " holds no number beside an x");
        }
        if (data_.series.size() == most_series)
            throw PlotError("there are more than " + std::to_string(most_series)
                            + " columns to draw; name some with --y");
        data_.series.push_back(std::move(series));
        files_.push_back(path);
        return true;
    }

    // What a person would miss: columns of texts and dates, lines that are no part of the table.
    void note_left_out(table::Table const& file, ChosenColumns const& chosen) {
        std::vector<std::string> texts;
        std::string hint;
        for (std::size_t i = 0; i < file.found().size(); ++i) {
            table::FoundColumn const& column = file.found()[i];
            bool const is_joined = chosen.x && file.found()[*chosen.x].time_column == i;
            if (names_columns() || i == chosen.x || is_joined || column.kind == ColumnKind::Number) continue;
            texts.push_back(column.name);
            if (hint.empty()) hint = hint_of(column);
        }
        if (!texts.empty())
            data_.columns_left_out.push_back("left out of " + file.name() + ": "
                                             + counted(texts.size(), "column")
                                             + (texts.size() == 1 ? " that holds" : " that hold")
                                             + " no numbers, " + table::quoted_list(texts) + hint);
        for (std::string const& part : file.left_out())
            data_.columns_left_out.push_back("left out of " + file.name() + ": " + part);
        for (std::string const& remark : file.remarks()) data_.columns_left_out.push_back(remark);
    }

    // By the file's name where that tells them apart, else by its path and at last by a number.
    void name_files_apart() {
        std::map<std::string, std::size_t> of_name, of_stem, uses;
        auto const by_stem = [&](std::size_t i) {
            return data_.series[i].name + " in " + files_[i].stem().string();
        };
        for (std::size_t i = 0; i < files_.size(); ++i) {
            ++of_name[data_.series[i].name];
            ++of_stem[by_stem(i)];
        }
        for (std::size_t i = 0; i < files_.size(); ++i) {
            std::string name = data_.series[i].name;
            if (of_name[name] > 1)
                name = of_stem[by_stem(i)] > 1 ? name.append(" in ").append(files_[i].string()) : by_stem(i);
            const std::size_t use = ++uses[name];
            data_.series[i].name = use == 1 ? name : name + " (" + std::to_string(use) + ")";
        }
    }

    PlotOptions const& options_;
    ProgressReport const& report_;
    std::vector<std::filesystem::path> files_;   // of the series
    std::set<std::string> found_;                // columns asked for
    std::set<std::string> styled_;               // columns whose styles were taken
    std::map<std::string, std::string> missing_; // columns found in no file so far, and what to say of them
    SharedAxis x_;
    std::array<SharedAxis, 2> y_;
    PlotData data_;
};

// Makes points missing at which `keep` is false; returns how many.
std::size_t take_out(Series& series, auto const& keep) {
    std::size_t removed = 0;
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        if (!series.has_point(i) || keep(series.x[i], series.y[i])) continue;
        series.y.set(i, std::nan(""));
        ++removed;
    }
    return removed;
}

std::size_t take_out_without_logarithm(Series& series, LogAxes const& log) {
    bool const log_y = series.on_second_axis ? log.y2 : log.y;
    if (!log.x && !log_y) return 0;
    return take_out(series, [&](double x, double y) { return (!log.x || x > 0) && (!log_y || y > 0); });
}

void check_range(XRange const& range, PlotData const& data, LogAxes const& log) {
    if (range.is_date != data.x_is_date)
        throw PlotError("--x-range: \"" + data.x_name + "\" holds "
                        + (data.x_is_date ? "dates; give two such as 2010-01-01:2010-12-31"
                                          : "numbers; give two such as 0:10"));
    if (log.x && !(range.from > 0)) throw PlotError("--x-range: a logarithmic axis begins above 0");
}

// Beyond it no place on an axis can be worked out.
void require_finite_span(PlotData const& data, table::Values Series::*values, bool second) {
    Extent extent;
    table::Values const* before = nullptr; // columns of one file share their x
    for (Series const& series : data.series) {
        table::Values const& own = series.*values;
        if (values != &Series::x && series.on_second_axis != second) continue;
        if (before && before->is_shared_with(own)) continue;
        before = &own;
        for (std::size_t b = 0; b < own.blocks(); ++b)
            for (double const value : own.block(b)) extent.include(value);
    }
    if (extent.high >= extent.low && !std::isfinite(extent.span()))
        throw PlotError("the values of one axis reach from " + table::shortest(extent.low) + " to "
                        + table::shortest(extent.high) + ", too far apart to be drawn");
}

std::size_t count_outside(Series const& series, XRange const& range) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < series.x.size(); ++i)
        count += series.has_point(i) && (series.x[i] < range.from || series.x[i] > range.to);
    return count;
}

} // namespace

std::size_t Series::number_of_points() const {
    std::size_t count = 0;
    for (std::size_t b = 0; b < y.blocks(); ++b) {
        auto const xs = x.block(b), ys = y.block(b);
        for (std::size_t i = 0; i < ys.size(); ++i) count += std::isfinite(xs[i]) && std::isfinite(ys[i]);
    }
    return count;
}

PlotData read_series(PlotOptions const& options, ProgressReport const& report) {
    if (options.files.empty()) return {};
    return SeriesReader(options, report).read();
}

struct GrowingSeries::Parts {
    OpenFile file;
    SharedAxis x;
    std::array<SharedAxis, 2> y;
    std::size_t rows = 0; // handed on so far
};

GrowingSeries::GrowingSeries(PlotOptions const& options) : parts_(std::make_unique<Parts>()) {
    const ProgressReport none;
    SeriesReader reader(options, none);
    parts_->file = reader.open(options.files.front(), true);
    data_ = reader.take_data();
    OpenFile& file = parts_->file;
    if (table::Column* const x = file.x()) data_.x = content_of(x->wanted.kind, x->wanted.unix_time);
    data_.x_is_date = data_.x.is_time;
    for (std::size_t i = 0; i < file.chosen.y.size(); ++i) {
        if (file.y(i).wanted.kind == ColumnKind::Text) continue;
        data_.series.push_back(reader.series_of(file, i));
        data_.y[data_.series.back().on_second_axis] = content_of(file.y(i).wanted.kind, false);
    }
    bool const has_texts =
        (file.x() && file.x()->wanted.kind == ColumnKind::Text) || data_.series.size() < file.chosen.y.size();
    if (has_texts)
        throw PlotError("--follow: " + file.table->name()
                        + ": columns of texts cannot be followed; name others with --x and --y");
}

GrowingSeries::~GrowingSeries() = default;

bool GrowingSeries::read() {
    bool const any = parts_->file.table->read();
    collect();
    return any;
}

void GrowingSeries::finish() {
    parts_->file.table->finish();
    collect();
}

void GrowingSeries::collect() {
    OpenFile& file = parts_->file;
    table::Values x;
    if (table::Column* const column = file.x()) {
        std::swap(x, column->values);
    } else {
        while (parts_->rows < file.table->rows()) x.push_back(static_cast<double>(++parts_->rows));
    }
    for (std::size_t i = 0; i < data_.series.size(); ++i) {
        data_.series[i].x = x;
        data_.series[i].y.clear();
        std::swap(data_.series[i].y, file.y(i).values);
    }
}

void leave_out_points(PlotData& data, PlotOptions const& options) {
    LogAxes const& log = options.log;
    if (log.x && data.x_is_date) throw PlotError("--log-x: column \"" + data.x_name + "\" holds dates");
    if (log.x && !data.x.texts.empty())
        throw PlotError("--log-x: column \"" + data.x_name + "\" holds texts");
    if (options.x_range) check_range(*options.x_range, data, log);
    for (Series& series : data.series) {
        series.left_out.without_logarithm = take_out_without_logarithm(series, log);
        std::size_t const points = series.number_of_points();
        if (points == 0)
            throw PlotError("column \"" + series.name + "\" has no positive value for a logarithmic axis");
        if (!options.x_range) continue;
        series.left_out.outside_range = count_outside(series, *options.x_range);
        if (series.left_out.outside_range == points)
            throw PlotError("column \"" + series.name + "\" has no point within --x-range");
    }
    require_finite_span(data, &Series::x, false);
    require_finite_span(data, &Series::y, false);
    require_finite_span(data, &Series::y, true);
}

std::vector<std::string> notes_of_what_is_left_out(PlotData const& data) {
    std::vector<std::string> notes = data.columns_left_out;
    for (Series const& series : data.series) {
        LeftOut const& left = series.left_out;
        std::string const point = series.function.empty() ? "point" : "sample";
        std::string parts;
        auto const add = [&](std::size_t count, std::string const& things, std::string const& why) {
            if (count > 0) parts += (parts.empty() ? "" : ", ") + counted(count, things) + why;
        };
        add(left.without_value, "row", " without a value");
        add(left.without_x, "value", " without an x");
        add(left.infinite, "infinite value", "");
        if (left.strays > 0) parts += (parts.empty() ? "" : ", ") + left.note_of_strays;
        add(left.without_logarithm, point, " without a positive value for a logarithmic axis");
        add(left.outside_range, point, " outside --x-range");
        if (!parts.empty()) notes.push_back("left out of \"" + series.name + "\": " + parts);
    }
    return notes;
}

} // namespace qv::plot
