#include "render/polar/polar_grid.h"

#include "document/selection.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_map.h"
#include "render/text.h"
#include "scale/number_format.h"
#include "scale/round_ticks.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

namespace qv::render {
namespace {

using document::Axis;
using document::ControlState;
using document::Graph;

constexpr double label_gap_mm = 1;
constexpr double label_direction = 22.5; // degrees on the page, in which the labels of circles stand
constexpr double circle_spacing = 2.2;   // line heights
constexpr double least_share = 0.01;     // of the radius; smaller circles are the centre
constexpr double spoke_spacing = 1.3;    // labels

/// The smaller of these steps at which labels keep apart.
constexpr std::array<int, 4> spoke_steps{30, 45, 90, 180}; // degrees

struct PolarGrid {
    ControlState& state;
    DrawSurface& surface;
    Graph& graph;
    Axis x, y; // copies: a handler of ErrorMsg may drop the axes
    PolarMap map;
};

// A part of a turn in radians: 0, π/6, 3π/2.
std::string part_of_turn(int degrees) {
    if (degrees == 0) return "0";
    int const common = std::gcd(degrees, 180), above = degrees / common, below = 180 / common;
    return (above == 1 ? "" : std::to_string(above)) + "π" + (below == 1 ? "" : "/" + std::to_string(below));
}

std::string spoke_label(Graph const& graph, int degrees) {
    return graph.PolarRadians ? part_of_turn(degrees) : std::to_string(degrees) + "°";
}

bool has_labels(Axis const& axis) {
    return !axis.AxisHide && axis.AxisShowLabels;
}

TextBlock largest_spoke_label(DrawSurface& surface, Graph const& graph) {
    TextBlock largest;
    for (int degrees = 0; degrees < 360; degrees += spoke_steps.front()) {
        const TextBlock label = text_block(surface, spoke_label(graph, degrees), Markup::Ignored);
        largest = {std::max(largest.width, label.width), std::max(largest.height, label.height)};
    }
    return largest;
}

void take_map(PolarGrid& grid) {
    grid.map = polar_map(grid.graph, grid.y, scale::y_map(grid.graph, grid.y));
}

void take_room(PolarGrid& grid, TextBlock const& label) {
    const Box plot = plot_box(grid.graph);
    double const gap = label_gap_mm * grid.state.UnitsPerMmX;
    bool const labelled = has_labels(grid.x);
    double const across = plot.width / 2 - gap - (labelled ? label.width + gap : 0);
    double const down = plot.height / 2 - gap - (labelled ? label.height + gap : 0);
    grid.graph.polar_room =
        static_cast<float>(std::min(plot.width, plot.height) / 2 - std::min(across, down));
    take_map(grid);
}

int spoke_step(PolarGrid const& grid, TextBlock const& label) {
    double const wanted = spoke_spacing * std::max(label.width, label.height);
    for (int const step : spoke_steps)
        if (grid.map.radius * step * std::numbers::pi / 180 >= wanted) return step;
    return spoke_steps.back();
}

// A label stands outside the circle on its side of it.
Align beside(double way) {
    constexpr double straight = 0.3;
    if (std::abs(way) < straight) return Align::Centre;
    return way > 0 ? Align::Start : Align::End;
}

void draw_spokes(PolarGrid const& grid, TextBlock const& label) {
    double const gap = label_gap_mm * grid.state.UnitsPerMmX;
    for (int degrees = 0; degrees < 360; degrees += spoke_step(grid, label)) {
        double const direction = grid.map.direction(grid.map.whole_turn * degrees / 360);
        {
            const PenScope pen(grid.surface, 1);
            grid.surface.state.ForeColor = grid.x.AxisMajGridColor;
            grid.surface.Polyline(
                std::array<Point, 2>{grid.map.centre, grid.map.at(direction, grid.map.radius)});
        }
        if (!has_labels(grid.x)) continue;
        PrintText(grid.state, grid.surface, spoke_label(grid.graph, degrees),
                  {grid.map.at(direction, grid.map.radius + gap), beside(std::cos(direction)),
                   beside(-std::sin(direction)), 0, true},
                  {grid.x.AxisLabelFont, grid.x.AxisLabelColor});
    }
}

void draw_circle(PolarGrid const& grid, double distance, Color color, int thickness) {
    const PenScope pen(grid.surface, thickness);
    grid.surface.state.ForeColor = color;
    grid.surface.state.fill_style = FillStyle::Transparent;
    grid.surface.Circle(grid.map.centre, distance);
}

scale::RoundTicks circles(PolarGrid const& grid) {
    double const line = grid.surface.TextHeight("A");
    scale::NumberStyle style{grid.y.AxisSIPrefix, false, {}};
    if (!grid.y.AxisTextLabels.empty() && grid.y.has_mode(document::AxisMode::Automatic))
        style.text = [&](double value) { return scale::EasyFormat(value, 0, grid.y.AxisTextLabels); };
    return round_ticks({grid.map.along.first, grid.map.along.last, grid.map.along.is_log},
                       {.length = grid.map.radius,
                        .before_low = line,
                        .beyond_high = line,
                        .line_height = line,
                        .gap = line / 4,
                        .spacing = line * circle_spacing,
                        .extent = [line](std::string_view) { return line; }},
                       style);
}

void draw_circles(PolarGrid const& grid) {
    SetGraphFont(grid.state, grid.surface, std::string(grid.y.AxisLabelFont));
    const scale::RoundTicks ticks = circles(grid);
    for (scale::RoundTick const& tick : ticks.ticks) {
        double const distance = grid.map.along(tick.value);
        if (!(distance > least_share * grid.map.radius) || (!tick.is_major && !grid.y.AxisGridMinor))
            continue;
        draw_circle(grid, distance, tick.is_major ? grid.y.AxisMajGridColor : grid.y.AxisMinGridColor, 1);
    }
}

// Over the data, which would hide them.
void draw_circle_labels(PolarGrid const& grid) {
    SetGraphFont(grid.state, grid.surface, std::string(grid.y.AxisLabelFont));
    const scale::RoundTicks ticks = circles(grid);
    double const direction = label_direction * std::numbers::pi / 180;
    for (scale::RoundTick const& tick : ticks.ticks) {
        double const distance = grid.map.along(tick.value);
        if (!(distance > least_share * grid.map.radius) || tick.label.empty()) continue;
        PrintText(grid.state, grid.surface, tick.label,
                  {grid.map.at(direction, distance), Align::Centre, Align::Centre, 0, true},
                  {grid.y.AxisLabelFont, grid.y.AxisLabelColor, ticks.marked_up});
    }
}

/// Calls `draw(grid)` for the current graph on its first axes.
void with_grid(ControlState& state, DrawSurface& surface, auto draw) {
    Graph& graph = document::current_graph(state);
    const document::SelectedAxesScope selection(graph);
    graph.SelectedXAxis = AxisLevelIndex(graph, document::AxisKind::X, 1);
    graph.SelectedYAxis = AxisLevelIndex(graph, document::AxisKind::Y, 1);
    PolarGrid grid{state, surface, graph, selected_x_axis(graph), selected_y_axis(graph), {}};
    take_map(grid);
    draw(grid);
    surface.state.ForeColor = 0;
}

void draw_lines(PolarGrid& grid, AxesPass pass) {
    ControlState& state = grid.state;
    DrawSurface& surface = grid.surface;
    Graph& graph = grid.graph;
    SetGraphFont(state, surface, std::string(grid.x.AxisLabelFont));
    const TextBlock label = largest_spoke_label(surface, graph);
    take_room(grid, label);
    bool const paints = pass == AxesPass::Full || pass == AxesPass::MarksOnly;
    if (!paints || !(grid.map.radius > 0)) return;
    if (!grid.y.AxisHide && grid.map.along.valid) draw_circles(grid);
    if (!grid.x.AxisHide) {
        draw_spokes(grid, label);
        draw_circle(grid, grid.map.radius, grid.x.AxisColor, grid.x.AxisThickness);
    }
}

} // namespace

void draw_polar_grid(ControlState& state, DrawSurface& surface, AxesPass pass) {
    with_grid(state, surface, [&](PolarGrid& grid) { draw_lines(grid, pass); });
}

void draw_polar_labels(ControlState& state, DrawSurface& surface) {
    with_grid(state, surface, [&](PolarGrid& grid) {
        if (has_labels(grid.y) && grid.map.along.valid) draw_circle_labels(grid);
    });
}

} // namespace qv::render
