// Plotting of data sets: lines, symbols, bars and texts.
#pragma once

#include "document/ControlState.h"

#include <cstdint>
#include <optional>

namespace qv::render {

/// Line styles of a data set. Points: other values above 0 are solid, those below 0 draw no line. Functions:
/// all but none and solid are dotted.
constexpr std::int16_t line_none = 0;
constexpr std::int16_t line_solid = 1;
constexpr std::int16_t line_dotted = 2;
constexpr std::int16_t line_smooth = 3;
constexpr std::int16_t line_area = 4;
constexpr std::int16_t line_outlined_area = 5;

inline bool is_area(document::DataSet const& set) {
    return set.DataLineStyle == line_area || set.DataLineStyle == line_outlined_area;
}

/// The pen of the line through a data set's points, beside its dashes.
DrawStyle point_line_style(document::DataSet const& set);

/// The pen of a data set's function, beside its dashes; none where no function is drawn.
std::optional<DrawStyle> curve_style(document::DataSet const& set);

/// Draws all data sets of the current graph, clipped to its plot area.
void PlotDataSets(document::ControlState& state, DrawSurface& surface);

} // namespace qv::render
