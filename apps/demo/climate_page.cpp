#include "demo/climate_page.h"

#include "demo/theme.h"
#include "table/csv_reader.h"
#include "table/dates.h"

#include <chrono>
#include <vector>

namespace qv::demo {
namespace {

using table::CsvReader;

constexpr char const* months = "Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec";

struct Columns {
    std::vector<double> x;
    std::vector<std::vector<double>> y;
};

// Columns of numbers over a column of dates that `place` turns into x, for the rows whose date it accepts.
Columns read_dated(CsvReader&& csv, std::string_view date, std::vector<std::string_view> const& values,
                   std::string_view prefix, double (*place)(double days)) {
    Columns columns;
    columns.y.resize(values.size());
    const std::size_t date_column = csv.column(date);
    while (csv.next_row()) {
        const std::string_view text = csv.field(date_column);
        if (!text.starts_with(prefix)) continue;
        auto const days = table::iso_date(text);
        if (!days) csv.fail(date_column, "a date such as 1958-03-01");
        columns.x.push_back(place(*days));
        for (std::size_t i = 0; i < values.size(); ++i)
            columns.y[i].push_back(csv.number(csv.column(values[i])));
    }
    return columns;
}

void draw_carbon_dioxide(qvGraph& page, std::filesystem::path const& data) {
    const Columns series = read_dated(CsvReader(data / "co2-concentration.csv"), "Date",
                                      {"CO2", "adjusted CO2"}, "", table::decimal_year);
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
    CsvReader csv(data / "global-temp.csv");
    struct {
        std::vector<double> years, degrees;
    } warm, cold;
    while (csv.next_row()) {
        double const degrees = csv.number(csv.column("temp"));
        auto& side = degrees < 0 ? cold : warm;
        side.years.push_back(csv.number(csv.column("year")));
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
double month_of_year(double days) {
    using namespace std::chrono;
    const sys_days date = sys_days{year{1899} / December / 30} + std::chrono::days{static_cast<int>(days)};
    const year_month_day day{date};
    double const length = static_cast<unsigned>(year_month_day_last{day.year() / day.month() / last}.day());
    return static_cast<unsigned>(day.month()) - 1.0
           + (static_cast<unsigned>(day.day()) - 1.0 + days - static_cast<int>(days)) / length;
}

void draw_seattle(qvGraph& page, std::filesystem::path const& data) {
    const Columns year = read_dated(CsvReader(data / "seattle-weather.csv"), "date",
                                    {"precipitation", "temp_max", "temp_min"}, "2015-", month_of_year);
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
    const Columns hours = read_dated(CsvReader(data / "seattle-weather-hourly-normals.csv"), "date",
                                     {"temperature"}, "", month_of_year);
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
