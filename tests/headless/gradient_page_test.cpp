// Gradients on a page: which pixels each fill reaches.
#include "control/state_of.h"
#include "qvgraph/HeadlessHost.h"
#include "render/gradient.h"
#include "render/plot_geometry.h"

#include <doctest/doctest.h>

#include <cmath>

using namespace qv;
using headless::HeadlessHost;
using raster::RasterSurface;

namespace {

constexpr Color white = rgb(255, 255, 255);
constexpr Color green = rgb(0, 128, 0), bright_green = rgb(0, 255, 0);

// A page with a graph that does not touch its edges, and a place for the legend.
struct GradientPage {
    HeadlessHost host;
    qvGraph& page = host.control();
    document::ControlState& state = control::state_of(page);

    explicit GradientPage(double dots_per_inch = 96) : host({300, 200}, dots_per_inch) {
        page.NewGraph("");
        page.PageColors({.Color1 = white});
        page.PageEdgeThickness(0);
        page.GraphPosition({.Left = 11, .Top = 13, .Width = 77, .Height = 71});
        page.BorderEdgeThickness(0);
        document::Graph& graph = *state.Graphs.front();
        page.Refresh();
        graph.LegendLeft = 1003;
        graph.LegendTop = 711;
        graph.LegendWidth = 400;
        graph.LegendHeight = 222;
    }
    RasterSurface& image() { return static_cast<RasterSurface&>(*state.GraphImage); }
};

bool is_green(RasterSurface const& surface, int x, int y) {
    auto const value = surface.pixels()[static_cast<std::size_t>(y * surface.stride() + x)];
    return (value & 0xFF00FF) == 0 && (value & 0xFF00) >= 0x8000;
}

// Pixels that are green outside a box in twips, or not green inside; the box ends with its corners' pixels.
int misplaced(RasterSurface const& surface, Box const& box) {
    auto const pixel = [&](double twips) { return std::floor(twips / surface.TwipsPerPixelX() + 0.5); };
    double const left = pixel(box.left), right = pixel(box.right());
    double const top = pixel(box.top), bottom = pixel(box.bottom());
    int count = 0;
    for (int y = 0; y < surface.height(); ++y)
        for (int x = 0; x < surface.width(); ++x) {
            bool const inside = x >= left && x <= right && y >= top && y <= bottom;
            count += inside != is_green(surface, x, y);
        }
    return count;
}

} // namespace

TEST_CASE("a gradient reaches all pixels of its area and no other") {
    using render::Area;
    for (double const dots_per_inch : {96.0, 131.0})
        for (std::int16_t style = -1; style <= 6; ++style)
            for (Area const area : {Area::Page, Area::GraphFrame, Area::PlotArea, Area::LegendTable}) {
                CAPTURE(dots_per_inch);
                CAPTURE(style);
                CAPTURE(static_cast<int>(area));
                GradientPage page(dots_per_inch);
                RasterSurface& image = page.image();
                image.SelectClipPath({0, 0, image.Width(), image.Height()});
                image.state.BackColor = white;
                image.Cls();
                render::DrawGradient(page.state, image, area,
                                     {.Color1 = green, .Color2 = bright_green, .gStyle = style});
                CHECK(misplaced(image, render::area_box(page.state, area)) == 0);
            }
}

TEST_CASE("inside a gradient border a transparent plot area shows the page") {
    GradientPage page;
    page.page.BorderStyle({.Color1 = green, .Color2 = bright_green});
    page.page.PlotAreaColors({.Transparent = true});
    for (int const axis : {0, 1}) {
        page.page.SetSelectedAxis(axis);
        page.page.AxisHide(true);
    }
    page.page.Refresh();
    Box const plot = render::area_box(page.state, render::Area::PlotArea);
    int const x = static_cast<int>(plot.left / 15) + 5, y = static_cast<int>(plot.top / 15) + 5;
    CHECK(page.host.picture().pixels()[static_cast<std::size_t>(y * page.host.picture().stride() + x)]
          == 0xFFFFFFFF);
    CHECK(is_green(page.host.picture(), x - 10, y));
}
