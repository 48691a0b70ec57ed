// A pie on the page: its slices filled and edged, however many there are.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/DrawSurface.h"
#include "render/kinds/pie.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace qv::render {

/// Where a pie lies, and which way its slices follow each other.
struct PieFrame {
    static constexpr double whole_turn = 2 * std::numbers::pi;

    Point centre;
    double outer = 0; // radii, twips
    double inner = 0;
    double start = 0; // radians clockwise from the top
    double sense = 1; // 1 clockwise

    double angle(double share) const { return start + sense * whole_turn * share; }
    Point at(double angle, double radius) const {
        return {centre.x + radius * std::sin(angle), centre.y - radius * std::cos(angle)};
    }
    /// The share of the whole before a direction, 0 to 1.
    double share_at(Point place) const {
        double const clockwise = std::atan2(place.x - centre.x, centre.y - place.y);
        double const turns = sense * (clockwise - start) / whole_turn;
        return turns - std::floor(turns);
    }
};

/// The outline of what lies between two shares.
std::vector<Point> slice_outline(PieFrame const& frame, double from, double to, double twips_per_pixel);

/// The colour of a slice: those of the look, or the classic six, in turn.
Color slice_color(document::ControlState const& state, std::size_t slice, std::size_t count);

/// Fills all slices. Of very many, each pixel has the mean colour of those in it, in linear light; in a file
/// of shapes those that no pixel tells apart are drawn with the next.
void fill_slices(document::ControlState const& state, DrawSurface& surface, PieFrame const& frame,
                 std::vector<Slice> const& slices);

/// Draws the edges of slices that pixels tell apart.
void edge_slices(DrawSurface& surface, PieFrame const& frame, std::vector<Slice> const& slices,
                 document::FillSpec const& fill);

} // namespace qv::render
