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
constexpr double symbol_mm = 6 * 25.4 / 96; // six pixels at 96 dots per inch

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
