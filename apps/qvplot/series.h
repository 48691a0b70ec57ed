// The series of points that a page shows, read from columns of files.
#pragma once

#include "qvplot/options.h"

#include <functional>
#include <string>
#include <vector>

namespace qv::plot {

/// Points of one column of one file, in the file's order. Rows with an empty x or y are not among them.
struct Series {
    std::string name; // the column, with the file where several files have it
    std::vector<double> x;
    std::vector<double> y;
    bool on_second_axis = false;
    std::string function = {}; // the formula whose curve it is, with samples of it as x and y; else empty
    XRange function_range = {};
};

struct PlotData {
    std::string x_name;     // empty without files
    bool x_is_date = false; // x in days since 1899-12-30
    std::vector<Series> series;
};

/// Where reading stands.
struct Progress {
    std::string const& file;
    std::size_t rows = 0;
    double part = 0; // of the file, 0 to 1
    bool done = false;
};
/// Called for each full million of rows of a file, and once when such a file has been read.
using ProgressReport = std::function<void(Progress const&)>;

/// Reads what the options ask for, nothing where they name no file. What is wrong with a file, a column or a
/// field is a table::TableError that names it; options that do not fit the files are a PlotError.
PlotData read_series(PlotOptions const& options, ProgressReport const& report = {});

/// Takes points that have no place on a logarithmic axis out of their series. Returns a line for each series
/// that lost some; a series that lost all is a PlotError.
std::vector<std::string> drop_points_without_logarithm(PlotData& data, LogAxes const& log);

} // namespace qv::plot
