// The series of points that a page shows, read from columns of files.
#pragma once

#include "qvplot/options.h"

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace qv::plot {

/// What the picture of a series does not show.
struct LeftOut {
    std::size_t without_value = 0; // rows
    std::size_t without_x = 0;     // values
    std::size_t without_logarithm = 0;
    std::size_t outside_range = 0;
};

/// Points of one column of one file, in the file's order. A point that is not a number stands where some are
/// missing: a line breaks there.
struct Series {
    std::string name; // the column, with the file where several files have it
    std::vector<double> x;
    std::vector<double> y;
    bool on_second_axis = false;
    std::string function = {}; // the formula whose curve it is, with samples of it as x and y; else empty
    XRange function_range = {};
    LeftOut left_out = {};

    bool has_point(std::size_t i) const { return std::isfinite(x[i]) && std::isfinite(y[i]); }
    std::size_t number_of_points() const;
};

struct PlotData {
    std::string x_name;     // empty without files
    bool x_is_date = false; // x in seconds since 1970 in UTC
    std::vector<Series> series;
    std::vector<std::string> columns_left_out = {}; // a line for each file that has such
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

/// Takes the points that have no place on a logarithmic axis, and counts those outside the range of x that is
/// asked for. A series of which nothing is left to see is a PlotError.
void leave_out_points(PlotData& data, PlotOptions const& options);

/// A line for each file and each series of which something is left out.
std::vector<std::string> notes_of_what_is_left_out(PlotData const& data);

} // namespace qv::plot
