#include "pages.h"
#include "control/state_of.h"

#include "series.h"

#include <algorithm>
#include <cmath>

namespace qv::bench {
namespace {

constexpr PixelSize page_size{1200, 800};
constexpr Color blue = rgb(0, 0, 255);
constexpr Color white = rgb(255, 255, 255);
constexpr std::int16_t filled_circle = 3;
constexpr std::uint8_t heat_map = 4, contours = 5; // kinds of data sets
constexpr double symbol_mm = 6 * 25.4 / 96;        // six pixels at 96 dots per inch

Page empty_page(Drawing drawing) {
    auto page = std::make_unique<headless::HeadlessHost>(page_size);
    control::state_of(page->control()).Smooth = drawing == Drawing::Smooth;
    return page;
}

void add_graph(qvGraph& graph) {
    graph.NewGraph("");
    graph.PageColors({.Color1 = white});
    graph.PageEdgeThickness(0);
    graph.BorderStyle({.Color1 = white});
    graph.BorderEdgeThickness(0);
    graph.PlotAreaColors({.Color1 = white});
    graph.SetSelectedAxis(0);
    graph.AxisTitle("x");
    graph.SetSelectedAxis(1);
    graph.AxisTitle("y");
}

void add_line(qvGraph& graph, Series const& series, Color color) {
    graph.NewDataSet("", false);
    graph.DataSymbol(0);
    graph.DataLine({.Color = color});
    graph.AddDataPoints(series.x, series.y);
}

// Hues from red round to red, at full saturation and a brightness of 200.
Color color_of_set(std::size_t index) {
    double const hue = 6 * static_cast<double>(index) / set_count;
    auto const channel = [&](double peak) {
        double const distance = std::abs(std::remainder(hue - peak, 6));
        return static_cast<std::uint8_t>(200 * std::clamp(2 - distance, 0.0, 1.0));
    };
    return rgb(channel(0), channel(2), channel(4));
}

} // namespace

Page line_page(std::size_t count, Drawing drawing) {
    Page page = empty_page(drawing);
    add_graph(page->control());
    add_line(page->control(), noisy_sine(count), blue);
    return page;
}

Page symbols_page(std::size_t count, Drawing drawing) {
    Page page = empty_page(drawing);
    qvGraph& graph = page->control();
    add_graph(graph);
    graph.NewDataSet("", false);
    graph.SymbolStyle({.Symbol = filled_circle, .Size = symbol_mm, .Color1 = blue, .EdgeThickness = 0});
    graph.DataLineStyle(0);
    Series const series = noisy_sine(count);
    graph.AddDataPoints(series.x, series.y);
    return page;
}

Page area_page(std::size_t count, Drawing drawing) {
    constexpr std::int16_t filled_area = 4;
    Page page = line_page(count, drawing);
    page->control().DataLineStyle(filled_area);
    page->control().DataSymbolColor(rgb(200, 215, 255));
    return page;
}

Page spline_page(std::size_t count, Drawing drawing) {
    constexpr std::int16_t smooth_curve = 3;
    Page page = line_page(count, drawing);
    page->control().DataLineStyle(smooth_curve);
    return page;
}

Page step_page(std::size_t count, Drawing drawing) {
    constexpr int after = 2;
    Page page = line_page(count, drawing);
    page->control().DataSteps(after);
    return page;
}

Page dashed_page(std::size_t count, Drawing drawing) {
    Page page = line_page(count, drawing);
    page->control().DataLinePattern("6 2 1 2");
    return page;
}

namespace {

Page page_of_errors(std::size_t count, Drawing drawing, int error_style) {
    Page page = empty_page(drawing);
    add_graph(page->control());
    const Series series = noisy_sine(count);
    const std::vector<double> below(count, 0.1), above(count, 0.2);
    auto const line = page->control().graphs().front().line("errors", {.error_style = error_style});
    line.add_columns(series.x, series.y, below, above);
    return page;
}

} // namespace

Page error_bars_page(std::size_t count, Drawing drawing) {
    return page_of_errors(count, drawing, 0);
}

Page error_band_page(std::size_t count, Drawing drawing) {
    return page_of_errors(count, drawing, 1);
}

Page two_color_area_page(std::size_t count, Drawing drawing) {
    Page page = area_page(count, drawing);
    page->control().AreaBase(true);
    page->control().AreaBelowColor(rgb(255, 210, 200));
    return page;
}

Page stacked_areas_page(std::size_t count, Drawing drawing) {
    constexpr std::int16_t filled_area = 4;
    Page page = empty_page(drawing);
    qvGraph& graph = page->control();
    add_graph(graph);
    for (double const offset : {2.0, 3.0}) {
        add_line(graph, noisy_sine(count / 2, first_seed, offset), blue);
        graph.DataLineStyle(filled_area);
        graph.AreaStacked(1);
    }
    return page;
}

Page stacked_bars_page(std::size_t count, Drawing drawing) {
    constexpr std::int16_t bars = 1;
    Page page = empty_page(drawing);
    qvGraph& graph = page->control();
    add_graph(graph);
    Series const series = noisy_sine(count / 2);
    for (bool const stacked : {false, true}) {
        graph.NewDataSet("", false);
        graph.DataLineStyle(0);
        graph.SymbolStyle({.Symbol = bars,
                           .Size = symbol_mm,
                           .Color1 = stacked ? blue : rgb(200, 215, 255),
                           .EdgeThickness = 0,
                           .Stacked = stacked,
                           .BarBase = true});
        graph.AddDataPoints(series.x, series.y);
    }
    return page;
}

Page grouped_bars_page(std::size_t count, Drawing drawing) {
    Page page = stacked_bars_page(count, drawing);
    page->control().BarArrangement(1);
    return page;
}

Page candles_page(std::size_t count, Drawing drawing) {
    Page page = empty_page(drawing);
    add_graph(page->control());
    Series const series = noisy_sine(count);
    std::vector<double> times, open, high, low, volume;
    for (std::size_t i = 0; i < count; ++i) {
        double const close = series.y[i], before = series.y[i == 0 ? 0 : i - 1];
        times.push_back(60.0 * static_cast<double>(i));
        open.push_back(before);
        high.push_back(std::max(before, close) + 0.01);
        low.push_back(std::min(before, close) - 0.01);
        volume.push_back(1000 * std::abs(close - before));
    }
    GraphHandle const graph = page->control().graphs().front();
    graph.x_axis({.time = true, .categories = true});
    auto const candles = graph.candles("");
    candles.show_volume();
    candles.add_candles(times, open, high, low, series.y, volume);
    return page;
}

namespace {

Page distribution_page(std::size_t count, Drawing drawing, std::uint8_t kind) {
    Page page = empty_page(drawing);
    qvGraph& graph = page->control();
    add_graph(graph);
    graph.NewDataSet("", false);
    graph.DataKind(kind);
    graph.SymbolStyle({.Symbol = filled_circle, .Size = symbol_mm, .Color1 = blue, .EdgeThickness = 0});
    Series series = noisy_sine(count);
    for (double& x : series.x) x = std::floor(x / 10);
    graph.AddDataPoints(series.x, series.y);
    return page;
}

// A wave with noise.
Page grid_page(std::size_t count, Drawing drawing, std::uint8_t kind) {
    Page page = empty_page(drawing);
    add_graph(page->control());
    auto const side = static_cast<std::size_t>(std::lround(std::sqrt(static_cast<double>(count))));
    const Series noise = noisy_sine(side * side);
    std::vector<double> values(side * side);
    for (std::size_t i = 0; i < values.size(); ++i) {
        double const x = 6.0 * static_cast<double>(i % side) / static_cast<double>(side);
        double const y = 6.0 * static_cast<double>(i / side) / static_cast<double>(side);
        values[i] = std::sin(x) * std::cos(y) + (kind == heat_map ? noise.y[i] : 0);
    }
    page->control().NewDataSet("", false);
    page->control().DataKind(kind);
    page->control().SetGrid(values, static_cast<std::int32_t>(side), static_cast<std::int32_t>(side));
    return page;
}

} // namespace

Page histogram_page(std::size_t count, Drawing drawing) {
    return distribution_page(count, drawing, 1);
}

Page boxes_page(std::size_t count, Drawing drawing) {
    return distribution_page(count, drawing, 2);
}

Page strip_page(std::size_t count, Drawing drawing) {
    return distribution_page(count, drawing, 3);
}

Page pie_page(std::size_t count, Drawing drawing) {
    Page page = empty_page(drawing);
    auto const pie = page->control().graph("graph").pie("pie");
    pie.in_legend_table(false);
    Series const series = noisy_sine(count);
    std::vector<double> values;
    for (double const y : series.y) values.push_back(y * y + 0.1);
    pie.add(series.x, values);
    return page;
}

Page polar_page(std::size_t count, Drawing drawing) {
    constexpr double turns = 10;
    Page page = empty_page(drawing);
    auto const graph = page->control().graph("graph", {.polar = true});
    Series const series = noisy_sine(count);
    std::vector<double> angles, radii;
    for (std::size_t i = 0; i < count; ++i) {
        double const share = static_cast<double>(i) / static_cast<double>(count);
        angles.push_back(share * turns * 360);
        radii.push_back(share * 10 + std::abs(series.y[i]));
    }
    graph.line("line").add(angles, radii);
    return page;
}

Page marks_page(std::size_t count, Drawing drawing) {
    Page page = empty_page(drawing);
    auto const graph = page->control().graph("graph");
    graph.y_axis({.from = 0, .to = 1});
    for (std::size_t i = 0; i < count; ++i)
        graph.horizontal_line(static_cast<double>(i) / static_cast<double>(count));
    return page;
}

Page heat_map_page(std::size_t count, Drawing drawing) {
    return grid_page(count, drawing, heat_map);
}

Page contours_page(std::size_t count, Drawing drawing) {
    return grid_page(count, drawing, contours);
}

Page binned_page(std::size_t count, Drawing drawing) {
    Page page = empty_page(drawing);
    add_graph(page->control());
    const Series series = noisy_sine(count);
    page->control().NewDataSet("", false);
    page->control().DataKind(heat_map);
    page->control().AddDataPoints(series.x, series.y);
    return page;
}

Page many_sets_page(Drawing drawing) {
    Page page = empty_page(drawing);
    add_graph(page->control());
    for (std::size_t k = 0; k < set_count; ++k)
        add_line(page->control(), noisy_sine(points_per_set, first_seed + k, 0.05 * static_cast<double>(k)),
                 color_of_set(k));
    return page;
}

Page zoomed_page(std::size_t count, Drawing drawing) {
    Page page = line_page(count, drawing);
    page->control().SetSelectedAxis(0);
    page->control().AxisScaleStyle(
        {.Value1 = 49.5, .Value2 = 50.5, .MajorDivs = 10, .MinorDivs = 2, .ScaleStyle = 1});
    return page;
}

Page twelve_graphs_page(Drawing drawing) {
    constexpr std::size_t columns = 4, rows = 3;
    constexpr double width = 100.0 / columns, height = 100.0 / rows; // percent of the page
    Page page = empty_page(drawing);
    qvGraph& graph = page->control();
    for (std::size_t k = 0; k < columns * rows; ++k) {
        add_graph(graph);
        graph.GraphPosition({.Left = width * static_cast<double>(k % columns),
                             .Top = height * static_cast<double>(k / columns),
                             .Width = width,
                             .Height = height});
        add_line(graph, noisy_sine(points_per_graph, first_seed + k), blue);
    }
    return page;
}

} // namespace qv::bench
