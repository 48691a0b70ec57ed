// Errors of points: bars with a cap at either end, and bands.
#pragma once

#include "document/ControlState.h"
#include "render/lines/data_line.h"

#include <cstddef>

namespace qv::render {

/// The place of an error bar: the coordinate it stands on and its two ends, twips.
struct ErrorBarPlace {
    double across = 0;
    double low = 0;
    double high = 0;
};

/// An upright error bar in the data set's ErrorBarColor, snapped to whole pixels.
void ErrorBar(document::ControlState& state, DrawSurface& surface, std::int16_t data_set,
              ErrorBarPlace place);
/// A lying error bar in the symbol's edge colour.
void HorizErrorBar(document::ControlState& state, DrawSurface& surface, std::int16_t data_set,
                   ErrorBarPlace place);

/// How far the errors of a point reach, each 0 or more.
struct PointErrors {
    double below = 0;
    double above = 0;
    double left = 0;
    double right = 0;
    bool any() const { return below > 0 || above > 0 || left > 0 || right > 0; }
};

/// The errors of a point of a block: those of its extra columns, and where these give none, E to both sides,
/// upright or, where it is negative, lying. What is not a finite number above 0 is no error.
PointErrors errors_of(document::PointBlock const& block, std::size_t index);
/// The same by the point's number in order of arrival.
PointErrors errors_of(document::PointStore const& points, std::size_t index);
/// Whether any point of a block may have errors.
bool has_errors(document::PointBlock const& block);

/// What ErrorStyle says.
inline bool shows_error_band(document::DataSet const& set) {
    return set.ShowErrorBar && (set.ErrorStyle == 1 || set.ErrorStyle == 2);
}
inline bool shows_error_bars(document::DataSet const& set) {
    return set.ShowErrorBar && set.ErrorStyle != 1;
}
/// Whether the errors of all points are drawn together, not each with its point: where points have more than
/// an E, or a band.
bool draws_errors_together(document::DataSet const& set);

/// The band of a data set's errors and its error bars, around points of its own or where they are shown.
void draw_error_band(DrawSurface& surface, document::DataSet const& set, document::PointStore const& points,
                     LineMapping const& mapping);
/// `shift` is by how much the bars stand beside their points, twips.
void draw_error_bars(document::ControlState& state, DrawSurface& surface, document::DataSet const& set,
                     document::PointStore const& points, LineMapping const& mapping, Point shift);

} // namespace qv::render
