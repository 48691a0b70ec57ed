#include "qvplot/series.h"

#include "qvplot/plot_error.h"
#include "qvplot/shown_range.h"
#include "table/csv_reader.h"
#include "table/dates.h"
#include "table/text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>

namespace qv::plot {
namespace {

using table::CsvReader;
using table::TableError;

constexpr std::size_t rows_between_reports = 1000000;
constexpr std::size_t most_series = 10000;
constexpr std::string_view a_date =
    "a date from 0000-01-01 to 9999-12-31, such as 2010-01-31 or 2010-01-31T12:30";

enum class XKind { Unknown, Number, Date };

// The kind of an x column is that of its first field that is not empty, in all files together.
struct XColumn {
    XKind kind = XKind::Unknown;

    double value(CsvReader const& csv, std::size_t column) {
        const std::string_view text = table::trimmed(csv.field(column));
        if (kind == XKind::Unknown && !text.empty())
            kind = table::iso_date(text) ? XKind::Date : XKind::Number;
        if (kind != XKind::Date) return csv.number(column);
        if (text.empty()) return std::nan("");
        auto const seconds = table::utc_seconds(text);
        if (!seconds) csv.fail(column, a_date);
        return *seconds;
    }
};

// A column that is being read.
struct Reading {
    enum class Kind { Unknown, Numbers, Text };

    std::size_t column = 0;
    Kind kind = Kind::Numbers; // Unknown until the first field that is not missing, of a column nobody named
    Series series = {};
};

bool is_number(CsvReader const& csv, std::size_t column) {
    try {
        csv.number(column);
        return true;
    } catch (TableError const&) {
        return false;
    }
}

// One break is enough, however many points are missing.
void add_break(Series& series) {
    if (series.x.empty() || !series.has_point(series.x.size() - 1)) return;
    series.x.push_back(std::nan(""));
    series.y.push_back(std::nan(""));
}

void add_row(Series& series, double x, double y) {
    if (!std::isnan(x) && !std::isnan(y)) {
        series.x.push_back(x);
        series.y.push_back(y);
        return;
    }
    add_break(series);
    if (!std::isnan(x)) ++series.left_out.without_value;
    if (!std::isnan(y)) ++series.left_out.without_x;
}

std::string counted(std::size_t count, std::string const& things) {
    return std::to_string(count) + " " + things + (count == 1 ? "" : "s");
}

class SeriesReader {
public:
    SeriesReader(PlotOptions const& options, ProgressReport const& report)
        : options_(options), report_(report) {}

    PlotData read() {
        for (std::size_t i = 0; i < options_.files.size(); ++i)
            read_file(options_.files[i], i + 1 == options_.files.size());
        data_.x_is_date = x_.kind == XKind::Date;
        name_files_apart();
        return std::move(data_);
    }

private:
    bool names_columns() const { return !options_.y.empty() || !options_.y2.empty(); }

    void read_file(std::filesystem::path const& file, bool is_last) {
        CsvReader csv(file);
        const std::size_t x = options_.x.empty() ? 0 : csv.column(options_.x);
        if (data_.x_name.empty()) data_.x_name = csv.header()[x];
        std::vector<Reading> readings = names_columns() ? named_columns(csv, x) : all_columns(csv, x);
        // Before the rows are read, which may take long.
        if (is_last && !missing_.empty()) throw TableError(missing_.begin()->second);
        if (names_columns() && readings.empty()) throw TableError(nothing_found(csv));
        read_rows(csv, x, readings);
        keep(csv, file, readings);
    }

    // With several files each may have some of the columns.
    std::vector<Reading> named_columns(CsvReader const& csv, std::size_t x) {
        std::vector<Reading> readings;
        for (bool const second : {false, true})
            for (std::string const& name : second ? options_.y2 : options_.y) {
                std::vector<std::size_t> columns = csv.columns(name);
                if (columns.size() > 1) std::erase(columns, x);
                note_if_missing(csv, name, columns.empty());
                for (std::size_t const column : columns)
                    readings.push_back({.column = column, .series = {csv.header()[column], {}, {}, second}});
            }
        return readings;
    }

    void note_if_missing(CsvReader const& csv, std::string const& name, bool is_missing) {
        if (!is_missing) {
            found_.insert(name);
            missing_.erase(name);
        } else if (!found_.contains(name)) {
            missing_.try_emplace(name, message_of([&] { csv.column(name); }));
        }
    }

    static std::string message_of(auto const& failing) {
        try {
            failing();
        } catch (TableError const& error) {
            return error.what();
        }
        return {};
    }

    std::string nothing_found(CsvReader const& csv) const {
        std::vector<std::string> asked = options_.y;
        asked.insert(asked.end(), options_.y2.begin(), options_.y2.end());
        return csv.name() + ": has " + (asked.size() == 1 ? "no column " : "none of the columns ")
               + table::quoted_list(asked) + "; its columns are " + table::quoted_list(csv.header());
    }

    static std::vector<Reading> all_columns(CsvReader const& csv, std::size_t x) {
        if (csv.header().size() > most_series)
            throw PlotError(csv.name() + ": has " + std::to_string(csv.header().size())
                            + " columns; name those to draw with --y");
        std::vector<Reading> readings;
        for (std::size_t i = 0; i < csv.header().size(); ++i)
            if (i != x)
                readings.push_back({.column = i,
                                    .kind = Reading::Kind::Unknown,
                                    .series = {csv.header()[i], {}, {}, false}});
        return readings;
    }

    void read_rows(CsvReader& csv, std::size_t x, std::vector<Reading>& readings) {
        std::size_t rows = 0;
        while (csv.next_row()) {
            read_row(csv, x, readings);
            if (++rows % rows_between_reports == 0 && report_)
                report_({csv.name(), rows, csv.progress(), false});
        }
        if (rows >= rows_between_reports && report_) report_({csv.name(), rows, 1, true});
    }

    void read_row(CsvReader const& csv, std::size_t x_column, std::vector<Reading>& readings) {
        double const x = x_.value(csv, x_column);
        for (Reading& reading : readings) {
            using enum Reading::Kind;
            if (reading.kind == Unknown && !is_number(csv, reading.column)) reading.kind = Text;
            if (reading.kind == Text) continue;
            // Read even where x is empty, so that what is no number does not pass unseen.
            double const y = csv.number(reading.column);
            if (!std::isnan(y)) reading.kind = Numbers;
            add_row(reading.series, x, y);
        }
    }

    // The columns that hold numbers become series.
    void keep(CsvReader const& csv, std::filesystem::path const& file, std::vector<Reading>& readings) {
        std::vector<std::string> texts;
        std::size_t kept = 0;
        for (Reading& reading : readings) {
            if (reading.kind == Reading::Kind::Text) texts.push_back(reading.series.name);
            if (reading.kind != Reading::Kind::Numbers) continue;
            if (reading.series.x.empty())
                throw TableError(csv.name() + ": column \"" + reading.series.name
                                 + "\" holds no number beside an x");
            if (data_.series.size() == most_series)
                throw PlotError("there are more than " + std::to_string(most_series)
                                + " columns to draw; name some with --y");
            data_.series.push_back(std::move(reading.series));
            files_.push_back(file);
            ++kept;
        }
        if (kept == 0) throw PlotError(csv.name() + ": has no column of numbers beside x; name one with --y");
        if (!texts.empty())
            data_.columns_left_out.push_back("left out of " + csv.name() + ": "
                                             + counted(texts.size(), "column")
                                             + (texts.size() == 1 ? " that does" : " that do")
                                             + " not begin with a number, " + table::quoted_list(texts));
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
    std::map<std::string, std::string> missing_; // columns found in no file so far, and what to say of them
    XColumn x_;
    PlotData data_;
};

// Makes points missing at which `keep` is false; returns how many.
std::size_t take_out(Series& series, auto const& keep) {
    std::size_t removed = 0;
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        if (!series.has_point(i) || keep(series.x[i], series.y[i])) continue;
        series.x[i] = series.y[i] = std::nan("");
        ++removed;
    }
    return removed;
}

void check_range(XRange const& range, PlotData const& data, LogAxes const& log) {
    if (range.is_date != data.x_is_date)
        throw PlotError("--x-range: \"" + data.x_name + "\" holds "
                        + (data.x_is_date ? "dates; give two such as 2010-01-01:2010-12-31"
                                          : "numbers; give two such as 0:10"));
    if (log.x && !(range.from > 0)) throw PlotError("--x-range: a logarithmic axis begins above 0");
}

// Beyond it no place on an axis can be worked out.
void require_finite_span(PlotData const& data, std::vector<double> Series::*values, bool second) {
    Extent extent;
    for (Series const& series : data.series)
        if (values == &Series::x || series.on_second_axis == second)
            for (double const value : series.*values) extent.include(value);
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
    for (std::size_t i = 0; i < x.size(); ++i) count += has_point(i);
    return count;
}

PlotData read_series(PlotOptions const& options, ProgressReport const& report) {
    if (options.files.empty()) return {};
    return SeriesReader(options, report).read();
}

void leave_out_points(PlotData& data, PlotOptions const& options) {
    LogAxes const& log = options.log;
    if (log.x && data.x_is_date) throw PlotError("--log-x: column \"" + data.x_name + "\" holds dates");
    if (options.x_range) check_range(*options.x_range, data, log);
    for (Series& series : data.series) {
        bool const log_y = series.on_second_axis ? log.y2 : log.y;
        series.left_out.without_logarithm =
            take_out(series, [&](double x, double y) { return (!log.x || x > 0) && (!log_y || y > 0); });
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
        auto const [values, x, logarithms, outside] = series.left_out;
        std::string const point = series.function.empty() ? "point" : "sample";
        std::string parts;
        auto const add = [&](std::size_t count, std::string const& things, char const* why) {
            if (count > 0) parts += (parts.empty() ? "" : ", ") + counted(count, things) + why;
        };
        add(values, "row", " without a value");
        add(x, "value", " without an x");
        add(logarithms, point, " without a positive value for a logarithmic axis");
        add(outside, point, " outside --x-range");
        if (!parts.empty()) notes.push_back("left out of \"" + series.name + "\": " + parts);
    }
    return notes;
}

} // namespace qv::plot
