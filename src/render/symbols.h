// What sits at one data point: its error bar, its symbol or bar, and its text.
#pragma once

#include "base/convert.h"
#include "document/ControlState.h"
#include "qvgraph/DrawSurface.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qv::render {

/// Symbol codes that are not a shape.
constexpr std::int16_t symbol_none = 0;
constexpr std::int16_t symbol_bar = 1;
constexpr std::int16_t symbol_number = -1; // the point's number
constexpr std::int16_t symbol_letter = -2; // A .. Z, A1 .. Z1, ...

/// The shape a symbol code (2 to 11) stands for.
std::optional<SymbolShape> symbol_shape(std::int16_t code);

/// The text a symbol code stands for: a number, a letter or the character whose code it is; empty for the
/// others.
std::string symbol_text(std::int16_t code, std::int32_t point_counter);

/// Where the bars of a stack begin, in data values.
struct BarBase {
    double x = 0;
    double y = 0;
};

/// A point in data values, to be drawn in the style of a data set of the current graph.
struct DataPointValues {
    std::int16_t data_set = 0;
    document::PointEntry point;
    BarBase base;
};

/// Draws a point that is visible on the graph's selected axes: error bar first, then symbol and text. Bars
/// are always drawn and left to the clip.
void DataPointXY(document::ControlState& state, DrawSurface& surface, DataPointValues const& values);

/// A point on the page.
struct DataPointPlace {
    std::int16_t data_set = 0;
    std::int16_t symbol = 0;
    Point place; // twips
    std::string_view data_id;
    std::int32_t half_size = 0; // twips
    bool legend_sample = false;
    BarBase base;
    Point value; // of a bar
};
void DataPoint(document::ControlState& state, DrawSurface& surface, DataPointPlace const& point);

/// A place on the page in whole twips, the grid on which symbols stand.
inline Point whole_twips(Point place) {
    // A bar's end may lie far outside a zoomed page; the clip cuts it, wherever beyond the page it is.
    static constexpr double farthest = 1e9;
    auto const whole = [](double twips) { return round_half_even(std::clamp(twips, -farthest, farthest)); };
    return {whole(place.x), whole(place.y)};
}

/// Sets the fore colour from a code: 0 black, 1 blue, 2 red, 3 green, 4 yellow, 5 magenta, 6 cyan, 7 white;
/// any other value is the colour itself.
void SetLineColor(document::ControlState& state, DrawSurface& surface, std::int32_t code);

/// The part of a data range, in data values, in which points are drawn: the range of an axis and a
/// thousandth more.
struct VisibleRange {
    double low = 0;
    double high = 0;
    bool contains(double value) const { return value >= low && value <= high; }
};
VisibleRange visible_range(document::Axis const& axis);

} // namespace qv::render
