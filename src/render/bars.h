// Bars: flat or shaded like a cylinder, upright or lying, with or without a shadow.
#pragma once

#include "graph/model/ControlState.h"
#include "render/symbols.h"

#include <vector>

namespace qv::render {

/// Draws the bar of a data point, or a sample of it, with the brush and pen that are set.
void Bar(graph::ControlState& state, DrawSurface& surface, DataPointPlace const& point);

/// Two opposite corners of a bar, twips.
struct BarBox {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
};

struct BarShade {
    bool horizontal = false;
    Color edge = 0;
    Color face = 0;
};
/// Shades a bar along its length, from the edge colour at both sides to the face colour in the middle.
void Draw3DBar(graph::ControlState& state, DrawSurface& surface, BarBox const& box, BarShade const& shade);

/// `count` colours (at least 2) from one colour to another, evenly by channel.
std::vector<Color> BlendColors(graph::ControlState& state, Color from, Color to, int count);

} // namespace qv::render
