#include "qvgraph/fault.h"
#include "vector/VectorSurface.h"
#include "vector/svg.h"

#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <set>
#include <utility>

using namespace qv;
using namespace qv::vector;

namespace {

auto const fonts = std::make_shared<raster::FontLibrary>();

/// 100 x 80 pixels of 15 twips.
VectorSurface blank() {
    VectorSurface surface(15, 15, fonts);
    surface.Move(1500, 1200);
    return surface;
}

/// Kinds and clips of what is visible, the background left out.
std::vector<std::string> visible(VectorSurface const& surface) {
    std::vector<std::string> found;
    for_each_shape(surface.nodes(), {0, 0, 100, 80}, [&](Shape const& shape, Placed const& placed) {
        constexpr std::array names{"boxes", "fill", "stroke", "oval", "text", "picture", "copy"};
        std::string line = names[shape.index()];
        if (placed.dx != 0 || placed.dy != 0)
            line += " by " + std::to_string(placed.dx) + "," + std::to_string(placed.dy);
        if (placed.is_cut)
            line += " in " + std::to_string(placed.clip.left) + "," + std::to_string(placed.clip.top) + " "
                    + std::to_string(placed.clip.right) + "," + std::to_string(placed.clip.bottom);
        found.push_back(line);
    });
    if (!found.empty()) found.erase(found.begin());
    return found;
}

using Lines = std::vector<std::string>;

} // namespace

TEST_CASE("only what can be seen is kept, and cut where it reaches beyond its clip") {
    VectorSurface surface = blank();
    surface.SelectClipPath({150, 150, 600, 450});
    surface.Line({0, 0}, {100, 100}, LineShape::Segment, 0);           // beside it
    surface.Line({-1e12, -1e12}, {1e12, 1e12}, LineShape::Segment, 0); // through it
    surface.Line({-1e12, 200}, {1e12, 200}, LineShape::Segment, 0);    // whole pixels
    surface.Line({0, 0}, {15000, 140}, LineShape::FilledBox, 0);       // above it
    surface.Circle({300, 300}, 75);                                    // within
    surface.Circle({150, 300}, 75);                                    // across the edge
    surface.Circle({NAN, 300}, 75);
    surface.Polyline(std::array{Point{200, 200}, Point{NAN, 0}, Point{300, 250}, Point{350, 260}});
    CHECK(visible(surface)
          == Lines{"stroke in 10,10 51,41", "boxes", "oval", "oval in 10,10 51,41", "stroke"});
    Node const& line = surface.nodes().at(1);
    auto const& stroke = std::get<Stroke>(*line.shape);
    REQUIRE(stroke.lines.size() == 1);
    for (const PixelPoint end : stroke.lines[0]) CHECK(std::abs(end.x) < 100);
}

TEST_CASE("shapes have the widths that pixels of the page's density have") {
    struct Row {
        double twips, slanted;
        int level;
    };
    for (Row const& row : {Row{15, 1, 1}, Row{7.5, 2, 2}, Row{10, 1.5, 1}, Row{5, 3, 3}}) {
        CAPTURE(row.twips);
        VectorSurface surface(row.twips, row.twips, fonts);
        surface.Move(100 * row.twips, 80 * row.twips);
        auto const at = [&](double x, double y) { return Point{x * row.twips, y * row.twips}; };
        surface.Line(at(10, 10), at(40, 40), LineShape::Segment, 0);
        surface.state.fill_style = FillStyle::Solid;
        surface.Circle(at(50, 40), 100);
        surface.Line(at(10, 60), at(40, 60), LineShape::Segment, 0);
        surface.state.draw_style = DrawStyle::Dot;
        surface.Line(at(10, 70), at(40, 70), LineShape::Segment, 0);
        REQUIRE(surface.nodes().size() == 5);
        CHECK(std::get<Stroke>(*surface.nodes()[1].shape).width == row.slanted);
        CHECK(std::get<Oval>(*surface.nodes()[2].shape).width == row.slanted);
        CHECK(std::get<Boxes>(*surface.nodes()[3].shape).boxes[0].height() == row.level);
        CHECK(std::get<Stroke>(*surface.nodes()[4].shape).width == row.level);
    }
}

TEST_CASE("a symbol of a batch has the corners of a single one") {
    for (int i = 0; i <= static_cast<int>(SymbolShape::Cross); ++i) {
        CAPTURE(i);
        auto const shape = static_cast<SymbolShape>(i);
        // The corners of fills, the boxes' corners, the ends of lines.
        auto const corners = [](VectorSurface const& surface) {
            std::set<std::pair<double, double>> found;
            auto const add = [&](PixelPoint place) { found.insert({place.x, place.y}); };
            for (std::size_t n = 1; n < surface.nodes().size(); ++n) {
                Shape const& drawn = *surface.nodes()[n].shape;
                if (auto const* fill = std::get_if<Fill>(&drawn))
                    for (Contour const& contour : fill->contours) std::ranges::for_each(contour, add);
                if (auto const* stroke = std::get_if<Stroke>(&drawn))
                    for (Contour const& line : stroke->lines) std::ranges::for_each(line, add);
                if (auto const* oval = std::get_if<Oval>(&drawn)) add(oval->centre);
                if (auto const* boxes = std::get_if<Boxes>(&drawn))
                    for (PixelBox const& box : boxes->boxes)
                        add({1.0 * box.left, 1.0 * box.top}), add({1.0 * box.right, 1.0 * box.bottom});
            }
            return found;
        };
        VectorSurface single = blank(), batch = blank();
        for (VectorSurface* surface : {&single, &batch}) {
            surface->state.fill_style = FillStyle::Solid;
            surface->state.DrawWidth = shape == SymbolShape::Dot ? 3 : 1;
        }
        const Point centre{750, 600};
        draw_symbol(single, shape, centre, 120);
        batch.Symbols({shape, 120, std::array{centre}});
        if (shape == SymbolShape::Cross) { // of single ones the last pixel belongs to each line
            CHECK(corners(batch)
                  == std::set<std::pair<double, double>>{
                      {42.5, 32.5}, {42.5, 48.5}, {58.5, 32.5}, {58.5, 48.5}});
            continue;
        }
        auto const one = corners(single), many = corners(batch);
        REQUIRE(!one.empty());
        CHECK(*one.begin() == *many.begin());
        CHECK(*one.rbegin() == *many.rbegin());
        // The outline of a single rectangle is made of boxes of its own.
        bool const is_box = shape == SymbolShape::Square || shape == SymbolShape::WideRectangle
                            || shape == SymbolShape::TallRectangle;
        if (!is_box) CHECK(one == many);
    }
}

TEST_CASE("inverting leaves no shape") {
    VectorSurface surface = blank();
    surface.state.draw_mode = DrawMode::Invert;
    surface.Line({0, 0}, {900, 800}, LineShape::Segment, 0);
    surface.Line({0, 0}, {1500, 1200}, LineShape::FilledBox, 0);
    CHECK(visible(surface).empty());
}

TEST_CASE("copies show what the source held then, moved and cut; whole ones hide what was there") {
    VectorSurface source = blank(), target = blank();
    source.Circle({450, 450}, 150);
    target.Circle({300, 300}, 75);
    target.BitBlt({10, 0}, {20, 40}, source, {20, 5});
    source.Circle({450, 450}, 100);
    CHECK(visible(target) == Lines{"oval", "boxes by -10,-5 in 10,0 30,40", "oval by -10,-5 in 10,0 30,40"});
    target.BitBlt({0, 0}, target.GetClientRect(), source, {0, 0});
    CHECK(visible(target) == Lines{"boxes", "oval", "oval"}); // the source's background and its circles
    target.BitBlt({5, 5}, {50, 50}, target, {0, 0});          // onto itself
    CHECK(visible(target).size() == 7);
    target.Cls();
    CHECK(visible(target).empty());
    CHECK_THROWS_AS(target.BitBlt({0, 0}, {9, 9}, raster::RasterSurface(15, 15, fonts), {0, 0}), Fault);
}

TEST_CASE("device lines on an empty surface are a picture, elsewhere they are lines") {
    VectorSurface scratch = blank(), page = blank();
    scratch.state.BackColor = rgb(9, 8, 7);
    scratch.Cls();
    for (double x = 0; x < 50; ++x) scratch.LineTo({x, 0}, {x, 79}, rgb(static_cast<int>(x), 0, 0));
    page.BitBlt({30, 0}, {60, 60}, scratch, {0, 0});
    page.LineTo({0, 0}, {9, 9}, 0);
    CHECK(visible(page) == Lines{"picture in 30,0 90,60", "stroke"});
    auto const& picture = std::get<Picture>(*page.nodes().at(1).shape);
    CHECK(picture.pixels->width() < 70); // not all of the scratch surface
    CHECK(picture.pixels->pixels()[49] == 0xFF310000);
    CHECK(picture.pixels->pixels()[50] == 0xFF090807);
}

TEST_CASE("what looks alike is joined: lines of one pen, symbols of one look, the pieces of one shape") {
    VectorSurface surface = blank();
    for (double y = 100; y < 500; y += 30) surface.Line({100, y}, {700, y}, LineShape::Segment, rgb(1, 2, 3));
    CHECK(visible(surface) == Lines{"boxes"});
    for (double y = 100; y < 500; y += 30) surface.Line({100, y}, {700, y + 7}, LineShape::Segment, 0);
    CHECK(visible(surface) == Lines{"boxes", "stroke"});
    const std::array triangle{PixelPoint{10, 10}, PixelPoint{20, 10}, PixelPoint{15, 20}};
    surface.state.fill_style = FillStyle::Solid;
    {
        const ShapeScope one_shape(surface);
        surface.Polygon(triangle);
        surface.Polygon(std::array{triangle[2], triangle[1], triangle[0]}); // the other way round
        const std::array<Point, 2> centres{Point{300, 300}, Point{400, 300}};
        for (int i = 0; i < 5; ++i) surface.Symbols({SymbolShape::Circle, 40, centres});
    }
    CHECK(visible(surface) == Lines{"boxes", "stroke", "fill", "stroke"});
}

TEST_CASE("text becomes text that any reader can take") {
    VectorSurface surface = blank();
    surface.state.font = {"Times New Roman", 12, true, true};
    surface.Print("a < b & \"c\"\x01\xFF \xC2\xB5");
    surface.TextOutA({50, 40}, 90, "up");
    const std::string svg = svg_of(surface);
    CHECK(svg.find(">a &lt; b &amp; &quot;c&quot; \xEF\xBF\xBD \xC2\xB5</text>") != std::string::npos);
    CHECK(svg.find("font-family=\"'Times New Roman',serif\" font-size=\"16\" font-weight=\"bold\" "
                   "font-style=\"italic\"")
          != std::string::npos);
    CHECK(svg.find("rotate(-90)") != std::string::npos);
    VectorSurface odd = blank();
    odd.state.font.name = "It's \\ \"Sons\"";
    odd.Print("text");
    CHECK(svg_of(odd).find("font-family=\"'It\\'s \\\\ &quot;Sons&quot;',sans-serif\"") != std::string::npos);
    raster::RasterSurface pixels(15, 15, fonts);
    pixels.state.font = surface.state.font;
    CHECK(surface.TextWidth("some text") == pixels.TextWidth("some text"));
    CHECK(surface.TextHeight("some text") == pixels.TextHeight("some text"));
}

TEST_CASE("a page is overfull when its shapes, those of copies included, make too long a text") {
    VectorSurface page = blank(), copy = blank();
    for (int i = 0; i < 100000; ++i) page.PSet({15.0 * (i % 100), 15.0 * (i / 100 % 80)}); // joined: short
    CHECK_FALSE(page.is_overfull());
    for (int i = 0; i < 100000; ++i) page.Circle({15.0 * (i % 100), 15.0 * (i / 100 % 80)}, 60);
    CHECK(page.is_overfull());
    copy.BitBlt({0, 0}, {50, 50}, page, {0, 0});
    CHECK(copy.is_overfull());
    copy.Cls();
    CHECK_FALSE(copy.is_overfull());
    copy.TextOutA({5, 5}, 0, std::string(4000000, 'x'));
    CHECK(copy.is_overfull());
}

TEST_CASE("neighbours of one look share a group of the file") {
    VectorSurface surface = blank();
    for (int i = 1; i < 5; ++i) surface.Circle({300.0 * i, 300}, 75);
    surface.state.ForeColor = rgb(255, 0, 0);
    surface.Circle({300, 600}, 75);
    const std::string svg = svg_of(surface);
    auto const count = [&svg](std::string_view text) {
        int found = 0;
        for (std::size_t at = 0; (at = svg.find(text, at)) != std::string::npos; ++at) ++found;
        return found;
    };
    CHECK(count("<circle ") == 5);
    CHECK(count("<g ") == 2);
    CHECK(count("</g>") == 2);
}

TEST_CASE("translucent shapes have their opacity, as one paint where fill and outline are of one colour") {
    VectorSurface surface = blank();
    surface.state.alpha = 128;
    surface.state.fill_style = FillStyle::Solid;
    surface.state.FillColor = surface.state.ForeColor = 0;
    // A picture mixes black and white to 187 of 255 at a half in linear light, a viewer of files as they are
    // stored.
    auto const last_element = [&] {
        const std::string svg = svg_of(surface);
        std::size_t const end = svg.rfind("/>");
        return svg.substr(svg.rfind('<', end), end - svg.rfind('<', end));
    };
    auto const count = [](std::string const& text, std::string_view what) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; ++at) ++found;
        return found;
    };
    const std::array triangle{PixelPoint{10, 10}, PixelPoint{40, 10}, PixelPoint{10, 40}};
    surface.Polygon(triangle);
    CHECK(count(last_element(), " opacity=\".267\"") == 1);
    surface.Circle({600, 600}, 150);
    CHECK(count(last_element(), " opacity=\".267\"") == 1);
    surface.Polyline(std::array{Point{0, 0}, Point{500, 300}});
    CHECK(count(last_element(), " opacity=\".267\"") == 1);
    surface.state.FillColor = rgb(255, 0, 0);
    surface.Circle({600, 600}, 150);
    const std::string svg = svg_of(surface);
    CHECK(count(svg, "fill-opacity=\".267\"") == 1);
    CHECK(count(svg, "stroke-opacity=\".267\"") == 1);
    // Pieces of one shape are painted once, others one upon the other. What covers the page hides nothing.
    std::size_t const before = visible(surface).size();
    for (int i = 0; i < 2; ++i) surface.Line({0, 0}, {1000, 1000}, LineShape::FilledBox, 0);
    CHECK(visible(surface).size() == before + 2);
    {
        const ShapeScope one_shape(surface);
        for (int i = 0; i < 2; ++i) surface.Line({0, 0}, {1000, 900}, LineShape::FilledBox, 0);
    }
    CHECK(visible(surface).size() == before + 3);
    surface.Line({0, 0}, {1500, 1200}, LineShape::FilledBox, 0);
    CHECK(visible(surface).size() == before + 4);
    surface.state.alpha = 255;
    surface.Line({0, 0}, {1500, 1200}, LineShape::FilledBox, 0);
    CHECK(visible(surface).empty());
    CHECK(svg_of(surface).find("opacity") == std::string::npos);
}
