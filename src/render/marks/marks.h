// Marks: reference lines and bands across the plot area, arrows and rectangles, with a label, where the host
// puts them or a person drags them.
#pragma once

#include "render/kinds/series_kind.h"

#include <array>
#include <cstdint>

namespace qv::render {

/// What MarkShape says; other values mean the first.
enum class MarkShape : std::uint8_t {
    LevelLine = 0,
    UprightLine = 1,
    LevelBand = 2,
    UprightBand = 3,
    Arrow = 4,
    Rectangle = 5
};

/// The values of a mark, in the order of MarkX1, MarkY1, MarkX2, MarkY2, and a bit for each.
using MarkValues = std::array<double, 4>;
namespace MarkPart {
constexpr std::uint8_t none = 0, x1 = 1, y1 = 2, x2 = 4, y2 = 8;
constexpr std::uint8_t along_x = x1 | x2, along_y = y1 | y2, all = along_x | along_y;
} // namespace MarkPart

/// The kind of marks.
SeriesKind const* mark_kind();

inline bool is_mark(document::DataSet const& set) {
    return set.DataKind == static_cast<std::uint8_t>(DataKind::Mark);
}
/// Whether the text of a data set is its mark's label.
inline bool is_label(document::DataSet const& set) {
    return is_mark(set);
}

MarkValues mark_values(document::DataSet const& set);
void set_mark_values(document::DataSet& set, MarkValues const& values);

/// Which values a person would move who takes the mark at a place: a line's or an edge's one, an end's or a
/// corner's two, or all that the shape has; none beside the mark.
std::uint8_t mark_part_at(SeriesView const& view, Point place);

/// Values moved by a way on the page, twips; those that the bits do not name, or that have no place, stay.
MarkValues moved_mark(SeriesView const& view, MarkValues const& values, std::uint8_t moves, Point way);

} // namespace qv::render
