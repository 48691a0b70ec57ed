// The series of points that a page shows, read from columns of files.
#pragma once

#include "qvplot/options.h"
#include "table/values.h"

#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qv::plot {

/// What the picture of a series does not show.
struct LeftOut {
    std::size_t without_value = 0; // rows
    std::size_t without_x = 0;     // values
    std::size_t without_logarithm = 0;
    std::size_t outside_range = 0;
    std::size_t infinite = 0; // values
    std::size_t strays = 0;   // cells that are not what their column is
    std::string note_of_strays = {};
};

/// Points of one column of one file, in the file's order. A point that is not a number stands where some are
/// missing: a line breaks there. Columns of one file share their x.
struct Series {
    std::string name; // the column, with the file where several files have it
    table::Values x;
    table::Values y;
    bool on_second_axis = false;
    std::string function = {}; // the formula whose curve it is, with samples of it as x and y; else empty
    XRange function_range = {};
    LeftOut left_out = {};
    std::string unit = {};
    SeriesStyle style = {};

    bool has_point(std::size_t i) const { return std::isfinite(x[i]) && std::isfinite(y[i]); }
    std::size_t number_of_points() const;
};

/// What the values of an axis are beside numbers.
struct AxisContent {
    bool is_time = false;                // seconds since 1970 in UTC
    bool is_time_of_day = false;         // since midnight
    std::vector<std::string> texts = {}; // value n is the n-th of them
};

struct PlotData {
    std::string x_name;     // empty without files
    bool x_is_date = false; // x in seconds since 1970 in UTC
    std::vector<Series> series;
    std::vector<std::string> columns_left_out = {}; // a line for each file that has such
    std::string x_unit = {};
    AxisContent x = {};
    std::array<AxisContent, 2> y = {}; // of the axis at the left, at the right
    std::vector<std::string> explanation = {};
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

/// Columns of one file that is still being written.
class GrowingSeries {
public:
    /// Waits for the first lines.
    explicit GrowingSeries(PlotOptions const& options);
    ~GrowingSeries();
    /// What the page is made of: the series without points.
    PlotData const& data() const { return data_; }
    /// Reads what has come since; the new points are in `data().series` until the next call. False when there
    /// was nothing.
    bool read();
    /// Takes a last line without an end.
    void finish();

private:
    void collect();
    struct Parts;
    std::unique_ptr<Parts> parts_;
    PlotData data_;
};

/// Takes the points that have no place on a logarithmic axis, and counts those outside the range of x that is
/// asked for. A series of which nothing is left to see is a PlotError.
void leave_out_points(PlotData& data, PlotOptions const& options);

/// A line for each file and each series of which something is left out.
std::vector<std::string> notes_of_what_is_left_out(PlotData const& data);

} // namespace qv::plot
