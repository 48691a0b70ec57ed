#include "demo/carbon_dioxide.h"

#include "table/csv_table.h"
#include "table/dates.h"

#include <vector>

namespace qv::demo {
namespace {

constexpr Color ink = rgb(45, 52, 64);
constexpr Color faint_ink = rgb(110, 118, 132);
constexpr Color grid = rgb(228, 231, 236);
constexpr Color white = rgb(255, 255, 255);
constexpr Color monthly_color = rgb(122, 170, 220);
constexpr Color adjusted_color = rgb(196, 62, 44);

struct Series {
    std::vector<double> years;
    std::vector<double> monthly;
    std::vector<double> adjusted;
};

Series read_series(std::filesystem::path const& file) {
    const table::CsvTable csv(file);
    const std::size_t date = csv.column("Date");
    const std::size_t monthly = csv.column("CO2");
    const std::size_t adjusted = csv.column("adjusted CO2");
    Series series;
    for (std::size_t row = 0; row < csv.rows(); ++row) {
        auto const day = table::iso_date(csv.field(row, date));
        if (!day) csv.fail(row, date, "a date such as 1958-03-01");
        series.years.push_back(table::decimal_year(*day));
        series.monthly.push_back(table::number_at(csv, row, monthly));
        series.adjusted.push_back(table::number_at(csv, row, adjusted));
    }
    return series;
}

struct AxisPlan {
    const char* title;
    double low, high;
    std::int16_t divisions;
    std::int32_t label_shift; // millimetres; negative is away from the axis
};

void style_axis(qvGraph& page, AxisPlan const& plan) {
    page.AxisScaleStyle({.Value1 = plan.low, .Value2 = plan.high, .MajorDivs = plan.divisions, .MinorDivs = 2});
    page.AxisStyle({.LineColor = ink});
    page.AxisTitleStyle({.Title = plan.title, .Font = "Font=Arial|11", .FontColor = ink, .Shift = -2});
    page.AxisLabelStyle({.Font = "Font=Arial|10", .FontColor = ink, .Shift = plan.label_shift});
    page.AxisGridStyle({.MajorGridColor = grid, .MinorGridShow = false});
    page.AxisTickStyle({.Length = 1.5F});
}

void style_graph(qvGraph& page) {
    page.PageColors({.Color1 = white});
    page.BorderStyle({.Color1 = white, .Left = 24, .Top = 20, .Right = 12, .Bottom = 20});
    page.BorderEdgeThickness(0);
    page.PlotAreaColors({.Color1 = white});
    page.GraphTitleStyle({.Font = "Font=Arial|16|Bold", .FontColor = ink, .VerticalShift = 3});
    page.SetSelectedAxis(0);
    style_axis(page, {"Year", 1955, 2025, 7, -2});
    page.SetSelectedAxis(1);
    style_axis(page, {"CO\u2082 in dry air (ppm)", 300, 420, 6, -1});
}

struct LineStyle {
    char const* name;
    Color color;
    std::int16_t thickness;
};

void add_line(qvGraph& page, std::vector<double> const& x, std::vector<double> const& y,
              LineStyle const& style) {
    page.NewDataSet(style.name);
    page.AddDataPoints(x, y);
    page.DataSymbol(0);
    page.DataLine({.Color = style.color, .Thickness = style.thickness});
}

// A text at a place of the plot area in percent, y from the bottom.
void add_note(qvGraph& page, char const* text, Point percent, Color color) {
    constexpr std::uint8_t left_middle = 3;
    page.AddText(text, percent.x, percent.y, left_middle, "Font=Arial|10", color, 0, true);
}

} // namespace

void draw_carbon_dioxide(qvGraph& page, std::filesystem::path const& data) {
    const Series series = read_series(data / "co2-concentration.csv");
    page.Reset();
    page.NewGraph("Carbon dioxide at Mauna Loa, 1958 to 2020");
    add_line(page, series.years, series.monthly, {"monthly mean", monthly_color, 1});
    add_note(page, "monthly mean", {23, 32}, rgb(70, 120, 175));
    add_line(page, series.years, series.adjusted, {"seasonal cycle removed", adjusted_color, 2});
    add_note(page, "seasonal cycle removed", {64, 50}, adjusted_color);
    page.NewDataSet("source", false);
    add_note(page, "Data: Scripps CO\u2082 Program, Mauna Loa Observatory (CC BY 4.0)", {2, 95.5}, faint_ink);
    style_graph(page);
    page.Refresh();
}

} // namespace qv::demo
