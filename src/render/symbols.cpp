#include "render/symbols.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/bars/bars.h"
#include "render/error_bars.h"
#include "render/pen.h"
#include "render/polar/polar_map.h"
#include "render/text.h"
#include "scale/drawn_range.h"
#include "scale/mapping.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace qv::render {
namespace {

using document::Axis;
using document::ControlState;
using document::current_graph;
using document::DataSet;
using document::FillSpec;
using document::Graph;
using document::trapped;

constexpr int range_tolerance = 1000; // a point this share of the range outside it is still drawn

// A character code below 256 is a Latin-1 character, as UTF-8.
std::string character(int code) {
    auto const byte = static_cast<unsigned>(code);
    if (byte < 0x80) return {static_cast<char>(byte)};
    if (byte < 0x800) return {static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
    return {static_cast<char>(0xE0 | byte >> 12), static_cast<char>(0x80 | (byte >> 6 & 0x3F)),
            static_cast<char>(0x80 | (byte & 0x3F))};
}

std::string letter_label(std::int32_t counter) {
    const std::int32_t index = std::max(counter - 1, 0);
    const std::int32_t round = index / 26;
    return static_cast<char>('A' + index % 26) + (round > 0 ? std::to_string(round) : "");
}

void set_colors(DrawSurface& surface, FillSpec const& fill) {
    surface.state.FillColor = fill.Color1;
    surface.state.ForeColor = fill.EdgeThickness < 1 ? fill.Color1 : fill.EdgeColor;
    surface.state.fill_style = FillStyle::Solid;
}

void draw_symbol_of(ControlState& state, DrawSurface& surface, DataPointPlace const& point,
                    DataSet const& set) {
    if (point.symbol == symbol_bar) return Bar(state, surface, point);
    if (auto const shape = symbol_shape(point.symbol))
        return draw_symbol(surface, *shape, point.place, point.half_size);
    if (point.symbol == symbol_none) return;
    PrintText(state, surface, symbol_text(point.symbol, state.PointCounter),
              {point.place, Align::Centre, Align::Centre, 0}, {set.DataTextFont, -1});
}

void draw_error_bar(ControlState& state, DrawSurface& surface, DataPointValues const& values, Point place) {
    Graph& graph = current_graph(state);
    auto const& [x, y, e, id] = values.point;
    if (e > 0) {
        const scale::AxisMap map = scale::y_map(graph, selected_y_axis(graph));
        ErrorBar(state, surface, values.data_set, {place.x, map(y - e), map(y + e)});
    } else if (e < 0) {
        const scale::AxisMap map = scale::x_map(graph, selected_x_axis(graph));
        HorizErrorBar(state, surface, values.data_set, {place.y, map(x + e), map(x - e)});
    }
}

} // namespace

std::optional<SymbolShape> symbol_shape(std::int16_t code) {
    constexpr std::array shapes{SymbolShape::Dot,           SymbolShape::Circle,
                                SymbolShape::Square,        SymbolShape::Diamond,
                                SymbolShape::TriangleUp,    SymbolShape::TriangleDown,
                                SymbolShape::WideRectangle, SymbolShape::TallRectangle,
                                SymbolShape::Plus,          SymbolShape::Cross};
    if (code < 2 || code > 11) return std::nullopt;
    return shapes[static_cast<std::size_t>(code - 2)];
}

std::string symbol_text(std::int16_t code, std::int32_t point_counter) {
    if (code == symbol_number) return std::to_string(point_counter);
    if (code == symbol_letter) return letter_label(point_counter);
    if (code >= 12 || code <= -3) return character(std::abs(code));
    return {};
}

VisibleRange visible_range(Axis const& axis) {
    const scale::DrawnRange range = scale::drawn_range(axis);
    double const tolerance = (axis.AxisLog ? range.first : range.high() - range.low()) / range_tolerance;
    return {range.low() - tolerance, range.high() + tolerance};
}

void DataPointXY(ControlState& state, DrawSurface& surface, DataPointValues const& values) {
    trapped(state, "DataPointXY", [&] {
        Graph& graph = current_graph(state);
        DataSet const& set = at(graph.DataSets, values.data_set);
        Axis const& x_axis = selected_x_axis(graph);
        Axis const& y_axis = selected_y_axis(graph);
        auto const& point = values.point;
        if (!std::isfinite(point.X) || !std::isfinite(point.Y)) return;
        if (graph.GraphPolar) {
            const PolarMap map = *place_map(graph, SeriesScope::Maps::BeingDrawn).polar;
            const Point place = map(point.X, point.Y);
            const std::string own_id(point.DataID);
            // Neither bars nor error bars have a shape there.
            if (set.DataSymbol == symbol_bar || !map.holds(place)) return;
            return DataPoint(
                state, surface,
                {values.data_set, set.DataSymbol, place, own_id, set.DataSymbolSize, false, {}, {}});
        }
        if (set.DataSymbol != symbol_bar
            && !(visible_range(x_axis).contains(point.X) && visible_range(y_axis).contains(point.Y)))
            return;
        const Point place{scale::x_map(graph, x_axis)(point.X), scale::y_map(graph, y_axis)(point.Y)};
        const std::string data_id(point.DataID); // a copy, which outlives what a handler of ErrorMsg drops
        if (set.ShowErrorBar && values.has_error_bar) draw_error_bar(state, surface, values, place);
        DataPoint(state, surface,
                  {values.data_set,
                   values.has_symbol ? set.DataSymbol : symbol_none,
                   place,
                   data_id,
                   set.DataSymbolSize,
                   false,
                   values.base,
                   {point.X, point.Y}});
    });
}

void DataPoint(ControlState& state, DrawSurface& surface, DataPointPlace const& requested) {
    trapped(state, "DataPoint", [&] {
        Graph& graph = current_graph(state);
        DataSet const& set = at(graph.DataSets, requested.data_set);
        if (set.DataSymbolFill.Transparent) return;
        DataPointPlace point = requested;
        point.place = whole_twips(point.place);
        set_colors(surface, set.DataSymbolFill);
        const PenScope pen(surface, set.DataSymbolFill.EdgeThickness);
        {
            const document::RestoreScope alpha(surface.state.alpha, set.DataFillAlpha);
            draw_symbol_of(state, surface, point, set);
        }
        if (!point.data_id.empty() && graph.ShowDataID)
            PrintText(state, surface, point.data_id,
                      {{point.place.x, point.place.y - point.half_size}, Align::Centre, Align::End, 0},
                      {set.DataTextFont, graph.LegendFontColor});
        surface.state.fill_style = FillStyle::Transparent;
    });
}

void SetLineColor(ControlState& state, DrawSurface& surface, std::int32_t code) {
    trapped(state, "SetLineColor", [&] {
        constexpr std::array colors{0x000000, 0xFF0000, 0x0000FF, 0x00FF00,
                                    0x00FFFF, 0xFF00FF, 0xFFFF00, 0xFFFFFF};
        const bool is_code = code >= 0 && static_cast<std::size_t>(code) < colors.size();
        surface.state.ForeColor = is_code ? colors[static_cast<std::size_t>(code)] : code;
    });
}

} // namespace qv::render
