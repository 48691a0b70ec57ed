#include "qvplot/series.h"

#include "base/text.h"
#include "qvplot/plot_error.h"
#include "table/csv_reader.h"
#include "table/dates.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace qv::plot {
namespace {

using table::CsvReader;
using table::TableError;

constexpr std::size_t rows_between_reports = 1000000;
constexpr std::string_view a_date =
    "a date from 0100-01-01 to 9999-12-31, such as 2010-01-31 or 2010-01-31T12:30";

// Day numbers of the dates that labels can show.
double const first_day = *table::iso_date("0100-01-01");

std::optional<double> shown_date(std::string_view text) {
    auto const days = table::iso_date(text);
    return days && *days >= first_day ? days : std::nullopt;
}

enum class XKind { Unknown, Number, Date };

// The kind of an x column is that of its first field that is not empty, in all files together.
struct XColumn {
    XKind kind = XKind::Unknown;

    double value(CsvReader const& csv, std::size_t column) {
        const std::string_view text = trim(csv.field(column));
        if (kind == XKind::Unknown && !text.empty())
            kind = table::iso_date(text) ? XKind::Date : XKind::Number;
        if (kind != XKind::Date) return csv.number(column);
        if (text.empty()) return std::nan("");
        auto const days = shown_date(text);
        if (!days) csv.fail(column, a_date);
        return *days;
    }
};

struct Wanted {
    std::size_t column;
    std::size_t series;
};

// The columns to read from one file, and the series that get them.
struct FilePlan {
    std::size_t x = 0;
    std::vector<Wanted> columns;
};

bool begins_with_number(CsvReader const& csv, std::size_t column) {
    try {
        return std::isfinite(csv.number(column));
    } catch (TableError const&) {
        return false;
    }
}

// Every column but x whose field in the first row is a number.
std::vector<std::string> columns_of_numbers(std::filesystem::path const& file, std::string const& x) {
    CsvReader csv(file);
    const std::size_t x_column = x.empty() ? 0 : csv.column(x);
    std::vector<std::string> names;
    if (!csv.next_row()) return names;
    for (std::size_t i = 0; i < csv.header().size(); ++i)
        if (i != x_column && begins_with_number(csv, i)) names.push_back(csv.header()[i]);
    return names;
}

class SeriesReader {
public:
    SeriesReader(PlotOptions const& options, ProgressReport const& report)
        : options_(options), report_(report), y_(options.y) {
        if (y_.empty() && options.y2.empty()) y_ = columns_of_numbers(options.files.front(), options.x);
        if (y_.empty() && options.y2.empty())
            throw PlotError(options.files.front().string()
                            + ": has no column of numbers beside x; name one with --y");
    }

    PlotData read() {
        for (auto const& file : options_.files) read_file(file);
        data_.x_is_date = x_.kind == XKind::Date;
        name_files_apart();
        return std::move(data_);
    }

private:
    void read_file(std::filesystem::path const& file) {
        CsvReader csv(file);
        const FilePlan plan = plan_file(csv, file);
        std::size_t rows = 0;
        while (csv.next_row()) {
            read_row(csv, plan);
            if (++rows % rows_between_reports == 0 && report_)
                report_({csv.name(), rows, csv.progress(), false});
        }
        if (rows >= rows_between_reports && report_) report_({csv.name(), rows, 1, true});
        for (Wanted const& wanted : plan.columns)
            if (data_.series[wanted.series].x.empty())
                throw TableError(csv.name() + ": column \"" + csv.header()[wanted.column]
                                 + "\" holds no number beside an x");
    }

    FilePlan plan_file(CsvReader const& csv, std::filesystem::path const& file) {
        FilePlan plan{options_.x.empty() ? 0 : csv.column(options_.x), {}};
        if (data_.x_name.empty()) data_.x_name = csv.header()[plan.x];
        add_columns(csv, file, plan, y_, false);
        add_columns(csv, file, plan, options_.y2, true);
        return plan;
    }

    // With several files each may have some of the columns.
    void add_columns(CsvReader const& csv, std::filesystem::path const& file, FilePlan& plan,
                     std::vector<std::string> const& names, bool second) {
        for (std::string const& name : names) {
            if (csv.count(name) == 0 && in_another_file(name, file)) continue;
            plan.columns.push_back({csv.column(name), data_.series.size()});
            data_.series.push_back({name, {}, {}, second});
            stems_.push_back(file.stem().string());
        }
    }

    bool in_another_file(std::string const& column, std::filesystem::path const& file) const {
        return std::ranges::any_of(options_.files, [&](std::filesystem::path const& other) {
            return other != file && CsvReader(other).count(column) > 0;
        });
    }

    void read_row(CsvReader const& csv, FilePlan const& plan) {
        double const x = x_.value(csv, plan.x);
        for (Wanted const& wanted : plan.columns) {
            // Read even where x is empty, so that what is no number does not pass unseen.
            double const y = csv.number(wanted.column);
            if (std::isnan(x) || std::isnan(y)) continue;
            data_.series[wanted.series].x.push_back(x);
            data_.series[wanted.series].y.push_back(y);
        }
    }

    void name_files_apart() {
        std::vector<std::string> columns;
        for (Series const& series : data_.series) columns.push_back(series.name);
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (std::ranges::count(columns, columns[i]) > 1) data_.series[i].name += " in " + stems_[i];
    }

    PlotOptions const& options_;
    ProgressReport const& report_;
    std::vector<std::string> y_;
    std::vector<std::string> stems_; // file of each series, without its extension
    XColumn x_;
    PlotData data_;
};

// Removes the points at which `keep` is false, keeping the order of the others; returns how many.
std::size_t remove_points(Series& series, auto const& keep) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        if (!keep(series.x[i], series.y[i])) continue;
        series.x[kept] = series.x[i];
        series.y[kept++] = series.y[i];
    }
    const std::size_t removed = series.x.size() - kept;
    series.x.resize(kept);
    series.y.resize(kept);
    return removed;
}

} // namespace

PlotData read_series(PlotOptions const& options, ProgressReport const& report) {
    if (options.files.empty()) return {};
    return SeriesReader(options, report).read();
}

std::vector<std::string> drop_points_without_logarithm(PlotData& data, LogAxes const& log) {
    if (log.x && data.x_is_date) throw PlotError("--log-x: column \"" + data.x_name + "\" holds dates");
    std::vector<std::string> notes;
    for (Series& series : data.series) {
        bool const log_y = series.on_second_axis ? log.y2 : log.y;
        const std::size_t removed =
            remove_points(series, [&](double x, double y) { return (!log.x || x > 0) && (!log_y || y > 0); });
        if (series.x.empty())
            throw PlotError("column \"" + series.name + "\" has no positive value for a logarithmic axis");
        if (removed > 0)
            notes.push_back("left out of \"" + series.name
                            + "\" on a logarithmic axis: " + std::to_string(removed)
                            + (removed == 1 ? " point" : " points") + " without a positive value");
    }
    return notes;
}

} // namespace qv::plot
