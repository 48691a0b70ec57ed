#include "render/gradient.h"

#include "document/trap.h"
#include "qvgraph/clsGradient.h"
#include "render/plot_geometry.h"
#include "surface/whole_pixel.h"

namespace qv::render {
namespace {

// The scratch surface is larger than the area by a millimetre and this many twips, and so is the gradient.
constexpr double scratch_margin = 100;

clsGradient painter_of(document::FillSpec const& fill) {
    clsGradient painter;
    painter.Color1(fill.Color1);
    painter.Color2(fill.Color2);
    painter.Angle(fill.GradientAngle);
    painter.Shift(fill.gShift);
    painter.Style(fill.gStyle);
    return painter;
}

void paint_scratch(document::ControlState& state, Box const& area, document::FillSpec const& fill) {
    DrawSurface& scratch = *state.ScratchPic1;
    scratch.Move(area.width + state.UnitsPerMmX + scratch_margin,
                 area.height + state.UnitsPerMmY + scratch_margin);
    scratch.SelectClipPath({0, 0, scratch.Width(), scratch.Height()});
    bool painted = false;
    if (fill.Color1 != fill.Color2)
        document::trapped(state, clsGradient::error_source,
                          [&] { painted = painter_of(fill).Draw(scratch); });
    if (painted) return;
    scratch.state.BackColor = fill.Color1;
    scratch.Cls();
}

// Exactly the area's pixels: the legend table has no clip of its own that would cut the larger scratch.
void copy_scratch(document::ControlState const& state, DrawSurface& surface, Box const& area) {
    const PixelPoint left_top = pixel_at(surface, {area.left, area.top});
    const PixelPoint right_bottom = pixel_at(surface, {area.right(), area.bottom()});
    const PixelSize size{static_cast<std::int32_t>(right_bottom.x - left_top.x) + 1,
                         static_cast<std::int32_t>(right_bottom.y - left_top.y) + 1};
    surface.BitBlt(left_top, size, *state.ScratchPic1, {0, 0});
}

} // namespace

void DrawGradient(document::ControlState& state, DrawSurface& surface, Area area,
                  document::FillSpec const& fill, std::span<Box const> parts) {
    document::trapped(state, "DrawGradient", [&] {
        if (state.Graphs.empty() || fill.Transparent) return;
        ClipGraphArea(state, surface, area);
        const Box box = area_box(state, area);
        paint_scratch(state, box, fill);
        if (parts.empty()) copy_scratch(state, surface, box);
        for (Box const& part : parts) {
            surface.SelectClipPath(part);
            copy_scratch(state, surface, box);
        }
        ClipGraphArea(state, surface, Area::GraphFrame);
    });
}

} // namespace qv::render
