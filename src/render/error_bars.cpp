#include "render/error_bars.h"

#include "document/selection.h"
#include "document/trap.h"
#include "render/pen.h"
#include "surface/whole_pixel.h"

namespace qv::render {
namespace {

using document::ControlState;
using document::trapped;

double on_whole_pixel(double twips, double twips_per_pixel) {
    return whole_pixel(twips / twips_per_pixel) * twips_per_pixel;
}

void draw_bar(DrawSurface& surface, Color color, Point from, Point to, Point cap) {
    surface.state.ForeColor = color;
    const PenScope pen(surface, 1);
    auto const line = [&](Point a, Point b) { surface.Line(a, b, LineShape::Segment, color); };
    line(from, to);
    for (const Point end : {from, to}) line({end.x - cap.x, end.y - cap.y}, {end.x + cap.x, end.y + cap.y});
}

document::DataSet const& data_set_of(ControlState& state, std::int16_t data_set) {
    return at(document::current_graph(state).DataSets, data_set);
}

} // namespace

void ErrorBar(ControlState& state, DrawSurface& surface, std::int16_t data_set, ErrorBarPlace place) {
    trapped(state, "ErrorBar", [&] {
        const double pixel = surface.TwipsPerPixelX();
        const double x = on_whole_pixel(place.across, pixel);
        const double cap = on_whole_pixel(state.UnitsPerMmX, pixel);
        draw_bar(surface, data_set_of(state, data_set).ErrorBarColor, {x, place.low}, {x, place.high},
                 {cap, 0});
    });
}

void HorizErrorBar(ControlState& state, DrawSurface& surface, std::int16_t data_set, ErrorBarPlace place) {
    trapped(state, "HorizErrorBar", [&] {
        draw_bar(surface, data_set_of(state, data_set).DataSymbolFill.EdgeColor, {place.low, place.across},
                 {place.high, place.across}, {0, state.UnitsPerMmY});
    });
}

} // namespace qv::render
