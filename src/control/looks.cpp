#include "control/looks.h"

#include "control/data_entry.h"
#include "control/members_by_name.h"
#include "control/property_access.h"
#include "document/selection.h"
#include "qvgraph/looks.h"
#include "render/kinds/series_kind.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace qv::control {
namespace {

/// What data sets take in turn, made without memory: a data set is added whole or not at all.
struct SeriesValue {
    std::string_view property;
    std::optional<int> value; // none where the look says nothing of it
};
using SeriesValues = std::array<SeriesValue, 6>;

SeriesValues series_values(Look const& look, std::size_t index, bool filled) {
    auto const next = [index](auto const& cycle) {
        return cycle.empty() ? std::nullopt : std::optional<int>(cycle[index % cycle.size()]);
    };
    auto const color = next(look.palette);
    return {{{"DataLineColor", color},
             {"DataSymbolColor", filled && !look.fills.empty() ? next(look.fills) : color},
             {"DataSymbolEdgeColor", color},
             {"ErrorBarColor", color},
             {"DataLineDash", next(look.dashes)},
             {"DataSymbol", next(look.symbols)}}};
}

bool is_taken_in_turn(std::string_view property) {
    const SeriesValues values = series_values({}, 0, false);
    return std::ranges::find(values, property, &SeriesValue::property) != values.end();
}

bool speaks_of(Look const& look, std::string_view property) {
    auto const has = [&](LookValues const& values) { return values.contains(property); };
    return has(look.values) || has(look.unnamed_axes) || has(look.further_axes) || has(look.filled)
           || is_taken_in_turn(property);
}

bool is_open(RecordRow const& row, std::string_view target, Records const& records) {
    return row.target == target && !is_given(row.given(records), row.row);
}

/// Writes what the host has not set of the records' properties.
void give(Records const& records, std::string_view target, LookValues const& values) {
    if (values.empty()) return;
    for (RecordRow const& row : record_rows()) {
        if (!is_open(row, target, records)) continue;
        auto const found = values.find(row.name);
        if (found != values.end()) row.store(records, found->second);
    }
}

void give(Records const& records, SeriesValues const& values) {
    for (RecordRow const& row : record_rows()) {
        if (!is_open(row, "data", records)) continue;
        auto const found = std::ranges::find(values, row.name, &SeriesValue::property);
        if (found != values.end() && found->value) row.store(records, *found->value);
    }
}

/// Takes back what a look may have written.
void take_back(Look const& look, std::string_view target, Records const& records, Records const& fresh) {
    for (RecordRow const& row : record_rows())
        if (is_open(row, target, records) && speaks_of(look, row.name)) row.copy(records, fresh);
}

bool is_filled(DataSet const& set) {
    constexpr std::int16_t bar = 1, area = 4, outlined_area = 5;
    auto const kind = static_cast<render::DataKind>(set.DataKind);
    if (kind == render::DataKind::Histogram || kind == render::DataKind::Boxes) return true;
    return set.DataSymbol == bar || set.DataLineStyle == area || set.DataLineStyle == outlined_area;
}

/// A look that draws lines draws none through bars and symbols that the host has asked for, and symbols where
/// the host wants no line.
void choose_line_or_symbols(Look const& look, DataSet& set, std::int16_t index) {
    if (!look.values.contains("DataLineStyle") || !set.MathFunc.empty()) return;
    bool const symbol_given = is_given(set.given, Row::DataSymbol);
    bool const line_given = is_given(set.given, Row::DataLineStyle);
    if (symbol_given && !line_given && set.DataSymbol != 0) set.DataLineStyle = 0;
    if (line_given && !symbol_given && set.DataLineStyle == 0 && set.DataSymbol == 0)
        set.DataSymbol = cycled_shape(index);
}

void put_on(Look const& look, ControlState& state, DataSet& set, std::int16_t index) {
    const Records records{.control = &state, .data = &set};
    auto const number = static_cast<std::size_t>(index);
    give(records, "data", look.values);
    give(records, series_values(look, number, false));
    if (!set.MathFunc.empty() && !is_given(set.given, Row::DataSymbol)) set.DataSymbol = 0;
    choose_line_or_symbols(look, set, index);
    if (!is_filled(set)) return;
    give(records, series_values(look, number, true));
    give(records, "data", look.filled);
}

bool is_first_of_its_kind(Graph const& graph, Axis const& axis) {
    for (Axis const& other : graph.Axes)
        if (other.AxisXY == axis.AxisXY) return &other == &axis;
    return true;
}

void put_on(Look const& look, ControlState& state, Graph const& graph, Axis& axis) {
    const Records records{.control = &state, .axis = &axis};
    give(records, "axis", look.values);
    if (!is_given(axis.given, Row::AxisTitle)) give(records, "axis", look.unnamed_axes);
    if (!is_first_of_its_kind(graph, axis)) give(records, "axis", look.further_axes);
}

void put_on(Look const& look, ControlState& state, Graph& graph) {
    give({.control = &state, .graph = &graph}, "graph", look.values);
    for (Axis& axis : graph.Axes) put_on(look, state, graph, axis);
    std::int16_t index = 0;
    for (DataSet& set : graph.DataSets) put_on(look, state, set, index++);
}

void put_on_page(Look const& look, ControlState& state) {
    const Records records{.control = &state};
    give(records, "control", look.values);
    give(records, "page", look.values);
}

/// What a Let does after storing, for all that the look has written or taken back.
void follow_page_values(Look const& look, ControlState& state) {
    for (RecordRow const& row : record_rows())
        if ((row.target == "control" || row.target == "page") && speaks_of(look, row.name))
            row.then({.control = &state});
}

// What a person has dragged is as good as set by the host.
void keep_what_was_dragged(Graph& graph) {
    if (graph.margins_by_hand)
        for (const Row row : {Row::BorderLeft, Row::BorderTop, Row::BorderRight, Row::BorderBottom})
            mark_given(graph.given, row);
    if (graph.legend_by_hand)
        for (const Row row : {Row::LegendPlace, Row::LegendTableLeft, Row::LegendTableTop})
            mark_given(graph.given, row);
}

void take_off(Look const& look, ControlState& state, Axis& axis) {
    Axis fresh = fresh_axis(state, axis.AxisTitle, axis.AxisXY, 0, 0);
    take_back(look, "axis", {.control = &state, .axis = &axis}, {.control = &state, .axis = &fresh});
}

void take_off(Look const& look, ControlState& state, Graph const& graph, DataSet& set, std::int16_t index) {
    DataSet fresh;
    static_cast<DataSetSettings&>(fresh) = automatic_style(state, graph, index);
    take_back(look, "data", {.control = &state, .data = &set}, {.control = &state, .data = &fresh});
}

void take_off(Look const& look, ControlState& state, Graph& graph) {
    Graph fresh = fresh_graph(state.UnitsPerMmX, state.UnitsPerMmY);
    take_back(look, "graph", {.control = &state, .graph = &graph}, {.control = &state, .graph = &fresh});
    for (Axis& axis : graph.Axes) take_off(look, state, axis);
    std::int16_t index = 0;
    for (DataSet& set : graph.DataSets) take_off(look, state, graph, set, index++);
}

void take_off_page(Look const& look, ControlState& state) {
    ControlState fresh(*state.host);
    fresh.PageFill = fresh_page_fill();
    for (char const* const target : {"control", "page"})
        take_back(look, target, {.control = &state}, {.control = &fresh});
}

void check_property(PropertyRow const& row) {
    auto const rows = record_rows();
    auto const found = std::ranges::find(rows, row.name, &RecordRow::name);
    if (found == rows.end())
        raise_fault(FaultNumber::UnknownMember, std::string(row.name) + " can be read but not set.");
    if (!found->only_stores)
        raise_fault(FaultNumber::InvalidProcedureCall,
                    std::string(row.name) + " is no matter of a look: leave it out of its values.");
}

LookValues checked_values(LookValues const& given) {
    LookValues values;
    for (auto const& [name, value] : given) {
        PropertyRow const& row = property_named(name);
        check_property(row);
        check_kind(row.name, row.accepts, value);
        values.insert_or_assign(std::string(row.name), value);
    }
    return values;
}

// Puts a look on records that nobody sees, so that a value that does not fit is found before anything
// changes.
void try_on(Look const& look, ControlState const& state) {
    ControlState nobody(*state.host);
    Graph graph = fresh_graph(state.UnitsPerMmX, state.UnitsPerMmY);
    for (int count = 0; count < 2; ++count) graph.Axes.push_back(fresh_axis(state, "", AxisKind::X, 0, 0));
    put_on_page(look, nobody);
    put_on(look, nobody, graph);
    const std::size_t longest =
        std::max({look.palette.size(), look.fills.size(), look.dashes.size(), look.symbols.size()});
    for (std::size_t i = 0; i <= longest; ++i)
        for (const std::int16_t line_style : {std::int16_t{1}, std::int16_t{4}}) {
            DataSet set;
            set.DataLineStyle = line_style;
            mark_given(set.given, Row::DataLineStyle);
            put_on(look, nobody, set, static_cast<std::int16_t>(i));
        }
}

std::shared_ptr<Look const> ready_to_wear(Look const& given, ControlState const& state) {
    auto look = std::make_shared<Look>(given);
    look->values = checked_values(given.values);
    look->unnamed_axes = checked_values(given.unnamed_axes);
    look->further_axes = checked_values(given.further_axes);
    look->filled = checked_values(given.filled);
    LookValues switched_on;
    for (std::string const& name : given.switches) switched_on.insert_or_assign(name, true);
    for (auto& [name, value] : checked_values(switched_on)) look->values.insert_or_assign(name, value);
    try_on(*look, state);
    return look;
}

std::int16_t index_of(Graph const& graph, DataSet const& set) {
    std::int16_t index = 0;
    while (&graph.DataSets[static_cast<std::size_t>(index)] != &set) ++index;
    return index;
}

} // namespace

void UseLook(ControlState& state, Look const& given) {
    std::shared_ptr<Look const> look = ready_to_wear(given, state);
    std::string name = look->name;
    std::shared_ptr<Look const> const before = state.look;
    if (before) {
        take_off_page(*before, state);
        for (auto const& graph : state.Graphs) {
            keep_what_was_dragged(*graph);
            take_off(*before, state, *graph);
        }
    }
    state.look = look;
    state.LookName = std::move(name);
    state.slice_colors = look->fills.empty() ? look->palette : look->fills;
    put_on_page(*look, state);
    for (auto const& graph : state.Graphs) {
        keep_what_was_dragged(*graph);
        put_on(*look, state, *graph);
    }
    for (auto const& changed : {before, look})
        if (changed) follow_page_values(*changed, state);
}

void UseLook(ControlState& state, std::string_view name) {
    UseLook(state, look(name));
}

void dress_page(ControlState& state) {
    if (state.look) put_on_page(*state.look, state);
    color_page_surfaces(state);
}

void dress(ControlState& state, Graph& graph) {
    if (state.look) put_on(*state.look, state, graph);
}

void dress(ControlState& state, Graph& graph, Axis& axis) {
    if (state.look) put_on(*state.look, state, graph, axis);
}

void dress(ControlState& state, Graph& graph, DataSet& set) {
    if (state.look) put_on(*state.look, state, set, index_of(graph, set));
}

void redress(ControlState& state, Graph& graph, Axis& axis) {
    if (!state.look) return;
    take_off(*state.look, state, axis);
    dress(state, graph, axis);
}

void redress(ControlState& state, Graph& graph, DataSet& set) {
    if (!state.look) return;
    take_off(*state.look, state, graph, set, index_of(graph, set));
    dress(state, graph, set);
}

} // namespace qv::control
