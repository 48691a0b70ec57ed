#include "render/legend.h"

#include "base/convert.h"
#include "base/text.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/dashes.h"
#include "render/data_sets.h"
#include "render/error_bars.h"
#include "render/gradient.h"
#include "render/kinds/series_kind.h"
#include "render/legend_place.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/symbols.h"
#include "render/text.h"
#include "scale/numeric.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::FillSpec;
using document::Graph;
using document::trapped;

// Across the table, millimetres: the samples before the texts, and all that is not text.
constexpr double text_start_mm = 10;
constexpr double beside_text_mm = 12;
constexpr double half_line_sample_mm = 3;
constexpr double sample_to_text_twips = 250; // from the middle of a sample

// Down the table, in lines of text.
constexpr double margins_in_lines = 0.8; // above the first and below the last row together
constexpr double first_row_centre = 0.9;

// A sample's symbol is large enough to show its colour, and a triangle, the tallest shape for its size, keeps
// within its row: its top is one and a half half sizes above its centre.
constexpr double least_half_symbol_mm = 0.5;
constexpr double most_half_symbol_in_lines = 1.0 / 3;

// The sample of a kind with one of its own, in lines of text.
constexpr double sample_lines = 0.7;

constexpr std::int16_t square_symbol = 4;
constexpr int thickest_edge = 255; // pixels

struct Row {
    std::int16_t data_set = 0;
    int first_line = 0;   // from 0; texts may have several
    std::size_t item = 0; // of the rows of one data set
    std::string text;
};

struct Table {
    std::vector<Row> rows;
    int lines = 0;
    double line_height = 0; // twips
    double widest_text = 0;
};

std::vector<std::string> texts_of(DataSet const& set) {
    if (set.DataHide || !set.DataInLegendTable) return {};
    if (SeriesKind const* const kind = series_kind(set)) return kind->legend_texts(set);
    return set.DataLegend.empty() ? std::vector<std::string>() : std::vector{set.DataLegend};
}

Table measure(ControlState& state, DrawSurface& surface, Graph const& graph) {
    // A copy, because a font that cannot be read raises ErrorMsg, whose handler may change it.
    SetGraphFont(state, surface, std::string(graph.LegendFont));
    Table table;
    table.line_height = surface.TextHeight("A");
    for (std::int16_t i = 0; i < graph.NumDataSets(); ++i) {
        std::size_t item = 0;
        for (std::string& text : texts_of(at(graph.DataSets, i))) {
            Row const& row = table.rows.emplace_back(Row{i, table.lines, item++, std::move(text)});
            for (const std::string_view line : lines_of(row.text)) {
                table.widest_text =
                    std::max(table.widest_text, line_width(surface, line, markup_of_host_texts(state)));
                ++table.lines;
            }
        }
    }
    return table;
}

struct Span {
    std::int64_t start = 0;
    std::int64_t length = 0;
};

// What is longer than the frame begins where the frame does.
std::int32_t start_inside(Span part, Span frame) {
    return to_i32(scale::MinMax(part.start, frame.start, frame.start + frame.length - part.length));
}

LegendSize size_of(ControlState const& state, Table const& table) {
    if (table.rows.empty()) return {};
    return {table.widest_text + beside_text_mm * state.UnitsPerMmX,
            (table.lines + margins_in_lines) * table.line_height};
}

void find_place(ControlState& state, Graph& graph, LegendSize size) {
    const Point corner = legend_corner(state, graph, size);
    graph.LegendLeft = to_i32(corner.x);
    graph.LegendTop = to_i32(corner.y);
}

/// Sets the table's size and moves it inside the frame; false when there is nothing to draw.
bool place(ControlState& state, Graph& graph, Table const& table) {
    bool const fits = !graph.fitting.legend_left_out
                      && graph.FrameWidth - table.widest_text > text_start_mm * state.UnitsPerMmX;
    auto const [width, height] = fits ? size_of(state, table) : LegendSize{};
    graph.LegendWidth = to_i32(width);
    graph.LegendHeight = to_i32(height);
    if (graph.LegendWidth == 0) return false;
    if (graph.finds_legend_place()) find_place(state, graph, {width, height});
    graph.LegendLeft =
        start_inside({graph.LegendLeft, graph.LegendWidth}, {graph.FrameLeft, graph.FrameWidth});
    graph.LegendTop =
        start_inside({graph.LegendTop, graph.LegendHeight}, {graph.FrameTop, graph.FrameHeight});
    return true;
}

void draw_fill(ControlState& state, DrawSurface& surface, Graph const& graph) {
    surface.state.FillColor = graph.LegendFill.Color1;
    DrawGradient(state, surface, Area::LegendTable, graph.LegendFill);
}

/// The line that stands for a data set: of its points where those make a line, else of its function.
std::optional<DrawStyle> sample_line(DataSet const& set) {
    bool const line_of_points = set.DataLineStyle > line_none && !is_area(set);
    auto const curve = curve_style(set);
    if (curve && !(line_of_points && set.DataSetPointCount() > 0)) return curve;
    if (!line_of_points) return std::nullopt;
    return point_line_style(set);
}

void draw_line_sample(DrawSurface& surface, DataSet const& set, DrawStyle style, Point centre,
                      double half_length) {
    const PenScope pen(surface, set.DataLineThickness, style);
    const document::RestoreScope alpha(surface.state.alpha, set.DataLineAlpha);
    const Point from{centre.x - half_length, centre.y}, to{centre.x + half_length, centre.y};
    const ShapeScope one_shape(surface);
    draw_with_dashes(
        surface, dashes_of(set), {from.x, centre.y - half_length, 2 * half_length, 2 * half_length},
        [&](DrawSurface& lines) { lines.Line(from, to, LineShape::Segment, set.DataLineColor); });
}

void draw_band_sample(DrawSurface& surface, DataSet const& set, Point centre, double half_length,
                      double line_height) {
    const document::RestoreScope alpha(surface.state.alpha, set.ErrorBandAlpha);
    double const half_height = sample_lines / 2 * line_height;
    fill_box(surface, {centre.x - half_length, centre.y - half_height, 2 * half_length, 2 * half_height},
             set.ErrorBarColor);
}

/// The lower half of an area's sample, where the area has two colours.
void draw_lower_sample(DrawSurface& surface, DataSet const& set, Point centre, double half_size) {
    const document::RestoreScope alpha(surface.state.alpha, set.DataFillAlpha);
    fill_box(surface, {centre.x - half_size, centre.y, 2 * half_size, half_size}, set.AreaBelowColor);
}

/// The symbol that stands for a data set. An area without one gets a square edged like its line, and keeps
/// that edge.
std::int16_t sample_symbol(DataSet& set) {
    if (is_area(set) && set.DataSymbol == symbol_none) {
        set.DataSymbolFill.EdgeColor = set.DataLineColor;
        set.DataSymbolFill.EdgeThickness = to_u8(std::clamp<int>(set.DataLineThickness, 1, thickest_edge));
        return square_symbol;
    }
    if (set.DataSymbol == symbol_number) return '1';
    if (set.DataSymbol == symbol_letter) return 'A';
    return set.DataSymbol;
}

std::int32_t sample_half_size(ControlState const& state, DataSet const& set, double line_height) {
    return to_i32(scale::MinMax<double>(set.DataSymbolSize, least_half_symbol_mm * state.UnitsPerMmX,
                                        most_half_symbol_in_lines * line_height));
}

// Where a row is drawn.
struct RowPlace {
    double text_x = 0;
    double middle_y = 0;
    double line_height = 0;
};

void draw_samples(ControlState& state, DrawSurface& surface, DataSet& set, Row const& row,
                  RowPlace const& place) {
    std::int16_t const index = row.data_set;
    const Point middle{place.text_x - sample_to_text_twips, place.middle_y};
    if (SeriesKind const* const kind = series_kind(set)) {
        double const half = half_line_sample_mm * state.UnitsPerMmX, high = sample_lines * place.line_height;
        kind->draw_row_sample(
            SeriesScope(state, document::current_graph(state), index, SeriesScope::Maps::BeingDrawn).view(),
            surface, {middle.x - half, middle.y - high / 2, 2 * half, high}, row.item);
        return SetLineColor(state, surface, 0);
    }
    double const half_line = half_line_sample_mm * state.UnitsPerMmX;
    bool const has_points = set.DataSetPointCount() > 0;
    if (has_points && shows_error_band(set))
        draw_band_sample(surface, set, middle, half_line, place.line_height);
    if (auto const style = sample_line(set)) draw_line_sample(surface, set, *style, middle, half_line);
    std::int16_t const symbol = sample_symbol(set);
    std::int32_t const half_size = sample_half_size(state, set, place.line_height);
    bool const has_two_colors = is_area(set) && set.AreaBelowColor != -1 && symbol == square_symbol;
    if (has_points) DataPoint(state, surface, {index, symbol, middle, {}, half_size, true, {}, {}});
    if (has_points && has_two_colors) draw_lower_sample(surface, set, middle, half_size);
    SetLineColor(state, surface, 0);
}

void draw_row(ControlState& state, DrawSurface& surface, Graph& graph, Row const& row, double line_height) {
    const RowPlace place{graph.LegendLeft + round_half_even(text_start_mm * state.UnitsPerMmX),
                         graph.LegendTop + (row.first_line + first_row_centre) * line_height, line_height};
    PrintText(state, surface, row.text, {{place.text_x, place.middle_y}, Align::Start, Align::Centre, 0},
              {graph.LegendFont, graph.LegendFontColor});
    // Looked up anew: a font that cannot be read raises ErrorMsg, whose handler may drop the data.
    draw_samples(state, surface, at(graph.DataSets, row.data_set), row, place);
}

void draw_table(ControlState& state, DrawSurface& surface, Graph& graph, Table const& table) {
    draw_fill(state, surface, graph);
    // A thick line's sample stays inside the table, so that a drag can take the table away whole.
    clip_to_legend(surface, graph);
    draw_legend_edge(surface, graph);
    for (Row const& row : table.rows) draw_row(state, surface, graph, row, table.line_height);
    ClipGraphArea(state, surface, Area::GraphFrame);
}

} // namespace

void LegendTable(ControlState& state, DrawSurface& surface, std::int16_t index) {
    trapped(state, "LegendTable", [&] {
        Graph& graph = *at(state.Graphs, index);
        if (!graph.LegendShow) return;
        const document::CurrentGraphScope current(state, index); // fills and symbols are of the current graph
        ClipGraphArea(state, surface, Area::GraphFrame);
        const Table table = measure(state, surface, graph);
        if (place(state, graph, table)) draw_table(state, surface, graph, table);
    });
}

Box legend_reach(Graph const& graph, DrawSurface const& surface) {
    int const thickness = graph.LegendFill.EdgeThickness;
    int const edge = thickness == 0 ? 0 : (whole_pen(surface.pen_pixels(thickness)) + 1) / 2;
    double const across = edge * surface.TwipsPerPixelX(), down = edge * surface.TwipsPerPixelY();
    const Box box = legend_box(graph);
    return {box.left - across, box.top - down, box.width + 2 * across, box.height + 2 * down};
}

void clip_to_legend(DrawSurface& surface, Graph const& graph) {
    surface.SelectClipPath(common_part(legend_reach(graph, surface), frame_box(graph)));
}

void draw_legend_edge(DrawSurface& surface, Graph const& graph) {
    FillSpec const& fill = graph.LegendFill;
    if (fill.EdgeThickness == 0) return;
    const PenScope pen(surface, fill.EdgeThickness);
    outline_box(surface, legend_box(graph), fill.EdgeColor);
}

LegendSize legend_size(ControlState& state, DrawSurface& surface, Graph const& graph) {
    return size_of(state, measure(state, surface, graph));
}

void LegendPosition(ControlState& state, std::int16_t index, std::int32_t left, std::int32_t top) {
    trapped(state, "LegendPosition", [&] {
        Graph& graph = *at(state.Graphs, index);
        graph.LegendLeft = left;
        graph.LegendTop = top;
    });
}

} // namespace qv::render
