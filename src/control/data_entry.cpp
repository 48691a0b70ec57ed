#include "control/data_entry.h"

#include "base/convert.h"
#include "control/looks.h"
#include "control/property_access.h"
#include "document/selection.h"
#include "document/trap.h"

#include <algorithm>
#include <array>

namespace qv::control {
namespace {

constexpr std::array<Color, 6> automatic_colors{0xFF0000, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF00FF, 0xFFFF00};
constexpr std::int16_t bar_symbol = 1;
constexpr std::int16_t first_shape = 3;
constexpr int last_shape = 11;
constexpr std::int16_t first_character = 33;
constexpr int last_character = 126;
constexpr double symbol_radius_mm = 0.8;

std::int16_t symbol_after(std::int16_t symbol) {
    int const next = symbol + 1;
    if (next > last_character) return first_character;
    if (next > last_shape && next < first_character) return first_shape;
    return static_cast<std::int16_t>(next);
}

void start_series(ControlState const& state, DataSetSettings& set) {
    set.DataSymbolSize = to_i16(symbol_radius_mm * state.UnitsPerMmX);
    set.DataSymbol = first_shape;
    set.DataLineStyle = 0;
    set.DataLineThickness = 1;
    set.BarShadowColor = rgb(100, 100, 100);
    set.ShowErrorBar = true;
}

// What the host has set of a data set counts for the next one too, as far as it is inherited. That one has
// bars does not mean that the next one has dots.
GivenProperties inherited_by_next(DataSet const& previous) {
    GivenProperties inherited;
    for (const Row row :
         {Row::DataSymbolSize, Row::DataSymbol, Row::DataLineStyle, Row::DataLineThickness, Row::ShowErrorBar,
          Row::BarHoriz, Row::Bar3D, Row::BarStacked, Row::BarBase, Row::BarBaseValue, Row::BarOffset,
          Row::BarWidth, Row::BarShadow, Row::BarShadowColor, Row::DataTextColor})
        mark_given(inherited, row);
    if (previous.DataSymbol == bar_symbol) unmark_given(inherited, Row::DataSymbol);
    return inherited & previous.given;
}

void continue_series(DataSet const& previous, DataSet& set) {
    set.DataSymbolSize = previous.DataSymbolSize;
    set.DataSymbol = symbol_after(previous.DataSymbol);
    set.DataLineStyle = previous.DataLineStyle;
    set.DataLineThickness = previous.DataLineThickness;
    set.ShowErrorBar = previous.ShowErrorBar;
    set.BarHoriz = previous.BarHoriz;
    set.Bar3D = previous.Bar3D;
    set.BarStacked = previous.BarStacked;
    set.BarBase = previous.BarBase;
    set.BarBaseValue = previous.BarBaseValue;
    set.BarOffset = previous.BarOffset;
    set.BarWidth = previous.BarWidth;
    set.BarShadow = previous.BarShadow;
    set.BarShadowColor = previous.BarShadowColor;
    set.MathFunc.clear();
    set.MathFuncX1 = set.MathFuncX2 = 0;
    GraphText no_text;
    no_text.DataTextColor = previous.DataTextColor;
    static_cast<GraphText&>(set) = no_text;
    set.given = inherited_by_next(previous);
}

void color_data_set(DataSetSettings& set, std::int16_t index) {
    const Color color = automatic_colors[static_cast<std::size_t>(index) % automatic_colors.size()];
    set.DataHide = false;
    set.DataLineColor = color;
    set.DataSymbolFill.Color1 = color;
    set.DataSymbolFill.EdgeColor = 0;
    set.DataSymbolFill.EdgeThickness = 0;
    set.DataSymbolFill.Transparent = false;
}

void show_function(DataSetSettings& set) {
    set.DataSymbol = 0;
    set.ShowErrorBar = false;
    if (set.DataLineStyle == 0 || set.DataLineStyle == 2) set.DataLineStyle = 1;
}

bool has_shape(DataSet const& set) {
    return set.DataSymbol >= first_shape && set.DataSymbol <= last_shape;
}

} // namespace

std::int16_t cycled_shape(std::int16_t index) {
    return static_cast<std::int16_t>(first_shape + index % (last_shape - first_shape + 1));
}

DataSetSettings automatic_style(ControlState const& state, Graph const& graph, std::int16_t index) {
    DataSetSettings style;
    start_series(state, style);
    for (std::int16_t i = 0; i <= index; ++i) {
        if (i > 0) style.DataSymbol = symbol_after(style.DataSymbol);
        if (!at(graph.DataSets, i).MathFunc.empty()) show_function(style);
    }
    color_data_set(style, index);
    return style;
}

std::int16_t next_shape(Graph const& graph) {
    std::int16_t shape = first_shape;
    for (DataSet const& set : graph.DataSets)
        if (has_shape(set)) shape = symbol_after(set.DataSymbol);
    return shape;
}

DataSet& append_data_set(ControlState& state, Graph& graph) {
    auto const index = static_cast<std::int16_t>(to_i16(graph.DataSets.size() + 1) - 1);
    DataSet& set = graph.DataSets.emplace_back();
    set.points = PointStore(&state.column_pool);
    start_series(state, set);
    color_data_set(set, index);
    dress(state, graph, set);
    return set;
}

Graph* graph_with_data(ControlState& state) {
    if (state.NumGraphs() == 0) return nullptr;
    Graph& graph = current_graph(state);
    return graph.DataSets.empty() ? nullptr : &graph;
}

void AutoDataStyle(ControlState& state, std::int16_t graph_index, std::int16_t data_index) {
    trapped(state, "AutoDataStyle", [&] {
        Graph& graph = *at(state.Graphs, graph_index, "graph");
        const std::int16_t index = std::max<std::int16_t>(data_index, 0);
        DataSet& set = at(graph.DataSets, index, "data set");
        if (index == 0)
            start_series(state, set);
        else
            continue_series(at(graph.DataSets, index - 1), set);
        color_data_set(set, index);
    });
}

void NewDataSet(ControlState& state, std::string_view legend, bool in_legend_table) {
    trapped(state, "NewDataSet", [&] {
        if (state.NumGraphs() == 0) return;
        Graph& graph = current_graph(state);
        const auto index = static_cast<std::int16_t>(to_i16(graph.DataSets.size() + 1) - 1);
        std::string text(legend);
        DataSet& set = graph.DataSets.emplace_back();
        set.points = PointStore(&state.column_pool);
        graph.SelectedDataSet = index;
        set.DataInLegendTable = in_legend_table;
        AutoDataStyle(state, state.CurrentGraph, index);
        set.DataLegend = std::move(text);
        set.xAxisIndex = graph.SelectedXAxis;
        set.yAxisIndex = graph.SelectedYAxis;
        dress(state, graph, set);
    });
}

void AddMathFunc(ControlState& state, std::string_view expression, double from_x, double to_x) {
    trapped(state, "AddMathFunc", [&] {
        Graph* const graph = graph_with_data(state);
        if (!graph) return;
        DataSet& set = graph->DataSets.back();
        set.MathFunc = expression;
        set.MathFuncX1 = from_x;
        set.MathFuncX2 = to_x;
        show_function(set);
        redress(state, *graph, set);
    });
}

void AddText(ControlState& state, GraphText text) {
    trapped(state, "AddText", [&] {
        if (text.DataText.empty()) return;
        if (Graph* const graph = graph_with_data(state)) {
            DataSet& set = graph->DataSets.back();
            static_cast<GraphText&>(set) = std::move(text);
            if (set.DataTextColor != -1) mark_given(set.given, Row::DataTextColor);
            if (!set.DataTextFont.empty()) mark_given(set.given, Row::DataTextFont);
            dress(state, *graph, set);
        }
    });
}

} // namespace qv::control
