#include "demo/climate_page.h"

#include "demo/theme.h"
#include "table/dates.h"
#include "table/table.h"

#include <chrono>
#include <memory>
#include <vector>

namespace qv::demo {
namespace {

constexpr char const* months = "Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec";
constexpr double seconds_a_day = 86400;

struct Columns {
    std::vector<double> x;
    std::vector<std::vector<double>> y;
};

/// A file read whole, its columns by their names.
class DataFile {
public:
    explicit DataFile(std::filesystem::path const& file) : table_(table::open_table(file.string())) {
        table::read_whole(*table_);
    }
    table::Values const& operator[](std::string_view name) const {
        return table_->columns().at(table_->columns_named(name).at(0)).values;
    }

private:
    std::unique_ptr<table::Table> table_;
};

// Columns of numbers over a column of dates that `place` turns into x, for the years from the first up to the
// last.
Columns read_dated(DataFile const& file, char const* date, std::vector<char const*> const& values,
                   double (*place)(double seconds), double first_year = 0, double last_year = 9999) {
    Columns columns;
    columns.y.resize(values.size());
    table::Values const& dates = file[date];
    for (std::size_t row = 0; row < dates.size(); ++row) {
        double const year = table::decimal_year(dates[row]);
        if (year < first_year || year >= last_year + 1) continue;
        columns.x.push_back(place(dates[row]));
        for (std::size_t i = 0; i < values.size(); ++i) columns.y[i].push_back(file[values[i]][row]);
    }
    return columns;
}

void draw_carbon_dioxide(qvGraph& page, std::filesystem::path const& data) {
    const Columns series = read_dated(DataFile(data / "co2-concentration.csv"), "Date",
                                      {"CO2", "adjusted CO2"}, table::decimal_year);
    start_panel(page, {"Carbon dioxide at Mauna Loa", 0, 0, 50, 50});
    page.SelectXaxis();
    plan_axis(page, {"", 1955, 2025, 7});
    page.SelectYaxis();
    plan_axis(page, {"CO\u2082 in dry air (ppm)", 300, 420, 6});
    add_line(page, {"monthly mean", series.x, series.y[0]}, light_blue, 1);
    add_line(page, {"seasonal cycle removed", series.x, series.y[1]}, red, 2);
    show_legend(page, {61.4, 73.7});
    add_note(page, "Data: Scripps CO\u2082 Program (CC BY 4.0)", {3, 94});
}

void draw_anomalies(qvGraph& page, std::filesystem::path const& data) {
    const DataFile file(data / "global-temp.csv");
    struct {
        std::vector<double> years, degrees;
    } warm, cold;
    for (std::size_t row = 0; row < file["year"].size(); ++row) {
        double const degrees = file["temp"][row];
        auto& side = degrees < 0 ? cold : warm;
        side.years.push_back(file["year"][row]);
        side.degrees.push_back(degrees);
    }
    start_panel(page, {"Global temperature against 1951 to 1980", 50, 0, 50, 50});
    page.SelectXaxis();
    plan_axis(page, {"", 1870, 2030, 8});
    page.SelectYaxis();
    plan_axis(page, {"Anomaly (\u00b0C)", -0.6, 1.2, 6});
    add_bars(page, {"colder years", cold.years, cold.degrees}, blue, 0.3F);
    add_bars(page, {"warmer years", warm.years, warm.degrees}, red, 0.3F);
    show_legend(page, {71, 74.7});
    add_note(page, "Data: NASA GISS", {3, 94});
}

// Months of the year as numbers, the day as a share of its month: 0 is 1 January, 1.5 mid February.
double month_of_year(double seconds) {
    using namespace std::chrono;
    double const days = seconds / seconds_a_day;
    const sys_days date{std::chrono::days{static_cast<int>(days)}};
    const year_month_day day{date};
    double const length = static_cast<unsigned>(year_month_day_last{day.year() / day.month() / last}.day());
    return static_cast<unsigned>(day.month()) - 1.0
           + (static_cast<unsigned>(day.day()) - 1.0 + days - static_cast<int>(days)) / length;
}

void draw_seattle(qvGraph& page, std::filesystem::path const& data) {
    const Columns year = read_dated(DataFile(data / "seattle-weather.csv"), "date",
                                    {"precipitation", "temp_max", "temp_min"}, month_of_year, 2015, 2015);
    start_panel(page, {"Seattle 2015: temperature and rain", 0, 50, 50, 50, 18});
    page.SelectXaxis();
    plan_axis(page, {"", 0, 12, 12, false, months});
    page.SelectYaxis();
    plan_axis(page, {"Daily high and low (\u00b0C)", -10, 40, 5});
    page.NewYAxis("rain");
    page.SelectYaxis(2);
    plan_axis(page, {"Rain (mm)", 0, 100, 5, true});
    page.AxisColor(blue);
    page.AxisLabelColor(blue);
    page.AxisTitleColor(blue);
    add_bars(page, {"rain", year.x, year.y[0]}, light_blue, 0.32F);
    page.SelectYaxis(1);
    add_line(page, {"daily high", year.x, year.y[1]}, red, 1);
    add_line(page, {"daily low", year.x, year.y[2]}, orange, 1);
    show_legend(page, {69.7, 17});
    add_note(page, "Data: NOAA NCDC", {3, 94});
}

void draw_hourly_normals(qvGraph& page, std::filesystem::path const& data) {
    const Columns hours = read_dated(DataFile(data / "seattle-weather-hourly-normals.csv"), "date",
                                     {"temperature"}, month_of_year);
    start_panel(page, {"Seattle: normal temperature of each hour", 50, 50, 50, 50});
    page.SelectXaxis();
    plan_axis(page, {"", 0, 12, 12, false, months});
    page.SelectYaxis();
    plan_axis(page, {"Temperature (\u00b0C)", 0, 30, 6});
    add_dots(page, {"temperature", hours.x, hours.y[0]}, teal, 0.5F);
    add_note(page, "Data: NOAA climate normals 1981 to 2010", {3, 94});
}

} // namespace

void draw_climate_page(qvGraph& page, std::filesystem::path const& data) {
    page.Reset();
    page.UseLook("light");
    draw_carbon_dioxide(page, data);
    draw_anomalies(page, data);
    draw_seattle(page, data);
    draw_hourly_normals(page, data);
    page.Refresh();
}

} // namespace qv::demo
