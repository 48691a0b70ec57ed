#include "interact/read_out.h"

#include "base/text.h"
#include "document/selection.h"
#include "document/trap.h"
#include "interact/hit_test.h"
#include "interact/scroll_bars.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_map.h"
#include "scale/category_text.h"
#include "scale/mapping.h"
#include "scale/number_format.h"
#include "scale/time_text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace qv::interact {
namespace {

using document::Axis;
using document::AxisMode;
using document::ControlState;
using document::Graph;

constexpr double least_label_width = 1500; // twips
constexpr double label_room = 1.1;         // of the text's width

/// What a place stands for on a graph's selected axes; not a finite number where there is nothing.
Point values_at(Graph& graph, Point place) {
    return render::place_map(graph, render::SeriesScope::Maps::AsShown).values_at(place);
}

/// How far the values of a place are from those of the pixels beside it, on the side where that is less.
Point pixel_steps_at(DrawSurface const& page, Graph& graph, Point place, Point values) {
    double const right = page.TwipsPerPixelX(), down = page.TwipsPerPixelY();
    const Point after = values_at(graph, {place.x + right, place.y + down});
    const Point before = values_at(graph, {place.x - right, place.y - down});
    return {std::min(std::abs(after.x - values.x), std::abs(before.x - values.x)),
            std::min(std::abs(after.y - values.y), std::abs(before.y - values.y))};
}

std::string one_line(std::string_view text) {
    std::string line;
    for (std::string_view const part : lines_of(text)) line += (line.empty() ? "" : " ") + std::string(part);
    return std::string(trim(line));
}

double text_width(ControlState& state, std::string const& text) {
    if (auto const width = state.host->read_out_width(text)) return *width;
    DrawSurface& page = *state.Picture1;
    const document::RestoreScope font(page.state.font, Font{});
    return page.TextWidth(text);
}

void show_label(ControlState& state, std::string text) {
    host::Label& label = state.Label1;
    label.Visible = !text.empty();
    label.Width = std::max(least_label_width, std::trunc(text_width(state, text) * label_room));
    label.Caption = std::move(text);
    ResizeScrollBars(state);
}

/// Of an empty page the label keeps its place.
void show_pointer_text(ControlState& state, std::string const& text) {
    if (!state.Graphs.empty()) return show_read_out(state, text);
    state.Label1.Caption.clear();
    state.host->child_controls_changed();
}

// Nothing beyond the calendar.
std::optional<std::string> time_text(Axis const& axis, double value, double pixel_step) {
    std::string_view pattern = axis.AxisTextLabels;
    if (axis.has_mode(AxisMode::TextLabels)) pattern = {};
    return scale::time_at_pixel(value, pixel_step, scale::TimeZone::named(axis.AxisTimeZone), pattern);
}

} // namespace

std::string coordinate_text(Axis const& axis, double value, double pixel_step) {
    std::int16_t const digits = scale::AxisDPx(axis.AxisValue1, axis.AxisValue2);
    if (axis.AxisCategories)
        if (auto const text = scale::category_text(axis, value)) return *text;
    if (axis.AxisTime && !axis.AxisCategories)
        if (auto const text = time_text(axis, value, pixel_step)) return *text;
    bool const pattern =
        !axis.AxisTime && !axis.has_mode(AxisMode::TextLabels) && !axis.AxisTextLabels.empty();
    return pattern ? scale::EasyFormat(value, digits, axis.AxisTextLabels)
                   : scale::text_at_pixel(value, digits, pixel_step);
}

std::string coordinate_text(Axis const& axis, double value) {
    constexpr double pixel_twips = 15;
    return coordinate_text(axis, value, scale::step_at(axis, value, pixel_twips));
}

void take_values(ControlState& state, std::int16_t graph, Point place) {
    const Point values = values_at(*at(state.Graphs, graph), place);
    if (std::isfinite(values.x)) state.PointerX = values.x;
    if (std::isfinite(values.y)) state.PointerY = values.y;
}

std::string coordinates_at(ControlState& state, std::int16_t index, Point place) {
    Graph& graph = *at(state.Graphs, index);
    if (!graph.GraphShowXY || !holds(render::plot_box(graph), place)) return {};
    const Point values = values_at(graph, place);
    bool const has_values = graph.GraphPolar || render::shows_axes(graph);
    if (!has_values || !std::isfinite(values.x) || !std::isfinite(values.y)) return {};
    const Point step = pixel_steps_at(*state.Picture1, graph, place, values);
    return coordinate_text(selected_x_axis(graph), values.x, step.x) + ", "
           + coordinate_text(selected_y_axis(graph), values.y, step.y);
}

void show_read_out(ControlState& state, std::string_view text) {
    show_label(state, one_line(text));
}

void hide_coordinates(ControlState& state) {
    state.pointer.is_read = false;
    show_pointer_text(state, {});
}

void ShowGraphCoords(ControlState& state, std::uint8_t button, Point place) {
    trapped(state, "ShowGraphCoords", [&] {
        if (button != 0) return hide_coordinates(state);
        std::int16_t const index = PointingAt(state, 0, place, false);
        state.pointer.is_read = true;
        state.pointer.place = place;
        if (index >= 0) take_values(state, index, place);
        show_pointer_text(state, index >= 0 ? coordinates_at(state, index, place) : std::string());
    });
}

} // namespace qv::interact
