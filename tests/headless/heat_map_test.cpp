// Heat maps and contours on a page: what is seen is what the cells say, on every axis and at every zoom.
#include "Person.h"
#include "base/convert.h"
#include "qvgraph/Outline.h"
#include "render/grids/color_map.h"
#include "scale/mapping.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>

using namespace qv;
using namespace qv::testing;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

struct MapPage : Person {
    GraphHandle graph_handle;

    MapPage() {
        page.UseLook("light");
        page.Smooth(false);
        graph_handle = page.graph("map");
        graph_handle.x_axis({.title = "x"});
        graph_handle.y_axis({.title = "y"});
    }

    Color pixel_at(Point place) const {
        auto const& picture = host.picture();
        auto const x = static_cast<std::size_t>(std::floor(place.x / 15 + 0.5));
        auto const y = static_cast<std::size_t>(std::floor(place.y / 15 + 0.5));
        std::uint32_t const pixel = picture.pixels()[y * static_cast<std::size_t>(picture.stride()) + x];
        return rgb(static_cast<int>(pixel >> 16 & 0xFF), static_cast<int>(pixel >> 8 & 0xFF),
                   static_cast<int>(pixel & 0xFF));
    }
    Point place_of(double x, double y) {
        return {scale::shown_map(graph(), x_axis())(x), scale::shown_map(graph(), y_axis())(y)};
    }
    document::Axis& bar() { return graph().Axes[2]; }
    std::string saved(char const* ending) {
        std::filesystem::path const file = std::string("heat_map_test") + ending;
        host.save(file);
        std::ifstream stream(file, std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(stream), {}};
        std::filesystem::remove(file);
        return text;
    }
};

Color color_of_share(double share, char const* map = "") {
    auto const level = static_cast<int>(share * 256);
    return render::color_map(map).colors[static_cast<std::size_t>(std::clamp(level, 0, 255))];
}

std::size_t count_of(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

} // namespace

TEST_CASE("cells have the colours of their values on linear, logarithmic, reversed and falling axes") {
    const std::vector<double> x_edges{1, 2, 5, 10, 100}, y_edges{0.1, 1, 3, 20};
    std::vector<double> values;
    for (int i = 0; i < 12; ++i) values.push_back(i);
    for (bool const is_log : {false, true})
        for (bool const reversed : {false, true})
            for (bool const falling : {false, true}) {
                CAPTURE(is_log);
                CAPTURE(reversed);
                CAPTURE(falling);
                MapPage map;
                map.graph_handle.heat_map("", {}).grid(values, x_edges, y_edges);
                map.graph_handle.x_axis({.log = is_log, .reverse = reversed});
                map.graph_handle.y_axis({.log = is_log, .reverse = reversed});
                if (falling) map.graph_handle.x_axis({.from = 100, .to = 1});
                map.page.Refresh();
                CHECK(map.heard.errors.empty());
                CHECK(map.x_axis().AxisValue1 == (falling ? 100 : 1));
                CHECK(map.y_axis().AxisValue2 == 20);
                for (std::size_t row = 0; row < 3; ++row)
                    for (std::size_t column = 0; column < 4; ++column) {
                        CAPTURE(row);
                        CAPTURE(column);
                        const Point low = map.place_of(x_edges[column], y_edges[row]),
                                    high = map.place_of(x_edges[column + 1], y_edges[row + 1]);
                        if (std::abs(high.x - low.x) < 60 || std::abs(high.y - low.y) < 60) continue;
                        Color const color = color_of_share(values[row * 4 + column] / 11);
                        // Next to its corners too: edges are exact to the pixel.
                        for (double const share : {0.5, 0.0, 1.0}) {
                            double const inset_x = high.x > low.x ? 22 : -22,
                                         inset_y = high.y > low.y ? 22 : -22;
                            CHECK(map.pixel_at({std::lerp(low.x + inset_x, high.x - inset_x, share),
                                                std::lerp(low.y + inset_y, high.y - inset_y, share)})
                                  == color);
                        }
                    }
            }
}

TEST_CASE("of more cells than pixels no peak vanishes, and a gap only where all are gaps") {
    constexpr int side = 2500;
    std::vector<double> values(static_cast<std::size_t>(side) * side, 1);
    std::vector<std::pair<int, int>> const peaks{{17, 3}, {1250, 1249}, {2499, 2499}, {0, 0}, {1717, 31}};
    for (auto const& [column, row] : peaks)
        values[static_cast<std::size_t>(row) * side + static_cast<std::size_t>(column)] = 100;
    values[200 * side + 200] = none;
    MapPage map;
    map.page.AxisMarksInFront(false);
    map.graph_handle.heat_map("", {.missing_color = 0x0000FF}).grid(values, side, side);
    map.page.Refresh();
    for (auto const& [column, row] : peaks) {
        const Point place = map.place_of(column, row);
        CAPTURE(place.x);
        bool found = false;
        for (double const dx : {-15, 0, 15})
            for (double const dy : {-15, 0, 15})
                found |= map.pixel_at({place.x + dx, place.y + dy}) == color_of_share(1);
        CHECK(found);
    }
    CHECK(map.pixel_at(map.place_of(200, 200)) == color_of_share(0));
    // Zoomed in, a cell is all that is seen, and the gap has its colour.
    map.graph_handle.x_axis({.from = 199.8, .to = 200.2});
    map.graph_handle.y_axis({.from = 200.2, .to = 199.8});
    map.page.Refresh();
    CHECK(map.pixel_at(map.in_plot(0.3, 0.6)) == 0x0000FF);
    map.graph_handle.x_axis({.from = 1e9, .to = 2e9});
    map.page.Refresh();
    CHECK(map.heard.errors.empty());
}

TEST_CASE("cells without a value show what is below them") {
    MapPage map;
    map.graph_handle.heat_map("").grid(std::vector{1.0, none, 2.0, 3.0}, 2, 2);
    map.page.Refresh();
    CHECK(map.pixel_at(map.place_of(1.13, 0.07)) == map.graph().PlotAreaFill.Color1);
    CHECK(map.pixel_at(map.place_of(0, 0)) == color_of_share(0));
    CHECK(map.pixel_at(map.place_of(0, 1)) == color_of_share(0.5));
}

TEST_CASE("the colour bar is an axis of its own: range, ticks, title and room beside the plot area") {
    MapPage map;
    auto const bar = map.graph_handle.color_axis({.title = "height of the land above the sea"});
    CHECK(bar.is_color_bar());
    CHECK_FALSE(bar.is_x());
    auto const set = map.graph_handle.heat_map("", {});
    set.grid(std::vector{2.0, 4.0, 8.0, 64.0}, 2, 2);
    map.page.Refresh();
    CHECK(bar.from() == 2);
    CHECK(bar.to() == 64);
    CHECK(set.color_axis_index() == 2);
    const Box plot = map.plot();
    document::Margins const& reach = map.state.axes_reach;
    CHECK(reach.right > 150); // strip, labels and title
    CHECK(plot.right() + reach.right <= map.graph().FrameWidth);
    // The strip has the colours of the values that its ticks have, from bottom to top.
    double const strip = plot.right() + 3 * map.state.UnitsPerMmX + 30;
    for (double const share : {0.1, 0.5, 0.9})
        CHECK(render::distance(render::oklab(map.pixel_at({strip, plot.bottom() - share * plot.height})),
                               render::oklab(color_of_share(share)))
              < 0.01);
    // Logarithmic, fixed and turned round, by the properties of any axis.
    bar.set({.from = 1, .to = 100, .log = true, .reverse = true});
    map.page.Refresh();
    CHECK(map.pixel_at(map.place_of(0, 0)) == color_of_share(std::log(2) / std::log(100)));
    CHECK(render::distance(render::oklab(map.pixel_at({strip, plot.top + 0.1 * plot.height})),
                           render::oklab(color_of_share(0.1)))
          < 0.01);
    // Zooming and panning leave it alone; hidden, it takes no room and gives its colours still.
    map.host.input(host::WheelInput{3, 0, 0, map.in_plot(0.5, 0.5)});
    CHECK(bar.from() == 1);
    map.page.show_everything();
    double const with_bar = map.plot().width;
    bar.hide(true);
    map.page.Refresh();
    CHECK(map.plot().width > with_bar);
    CHECK(map.heard.errors.empty());
}

TEST_CASE("colour bars of two graphs with one link share their range") {
    MapPage map;
    auto other = map.page.graph("other", {.left = 50, .width = 50});
    auto const one_bar = map.graph_handle.color_axis({.link = "colours"});
    auto const other_bar = other.color_axis({.link = "colours"});
    map.graph_handle.heat_map("").grid(std::vector{0.0, 1.0}, 2, 1);
    other.heat_map("").grid(std::vector{5.0, 9.0}, 2, 1);
    map.page.Refresh();
    for (auto const& bar : {one_bar, other_bar}) {
        CHECK(bar.from() == 0);
        CHECK(bar.to() == 9);
    }
}

TEST_CASE("points are counted anew when some come or go, and told by their cell's edges") {
    MapPage map;
    auto const set = map.graph_handle.heat_map("rain", {.grid_bins_x = 2, .grid_bins_y = 1});
    set.add(std::vector{0.0, 1.0, 4.0}, std::vector{0.0, 1.0, 2.0});
    map.page.Refresh();
    CHECK(map.graph_handle.color_axis().to() == 2);
    map.mouse(host::MouseKind::Move, 0, 0, map.place_of(1, 1));
    CHECK(map.state.PointTooltip == "rain: from 0, to 2, from 0, to 2, value 2");
    set.add(0.5, 0.5);
    map.page.Refresh();
    CHECK(map.graph_handle.color_axis().to() == 3);
    set.drop(3);
    map.page.Refresh();
    CHECK(map.graph().DataSets[0].derived != nullptr);
    CHECK(map.pixel_at(map.place_of(0.6, 0.6)) != map.graph().PlotAreaFill.Color1);
    CHECK(map.heard.errors.empty());
}

TEST_CASE("a cell is read under the pointer and by keys, and a contour line near it") {
    MapPage map;
    auto const cells = map.graph_handle.heat_map("heat");
    cells.grid(std::vector{1.0, 2.0, none, 4.0, 5.0, 6.0}, 3, 2, 10, 40, 0, 2);
    map.page.Refresh();
    map.mouse(host::MouseKind::Move, 0, 0, map.place_of(35, 1.9));
    CHECK(map.state.PointTooltip == "heat: 35, 1.5, value 6");
    map.mouse(host::MouseKind::Move, 0, 0, map.place_of(35, 0.5));
    CHECK(map.state.PointTooltip == "heat: 35, 0.5, no value");
    for (int i = 0; i < 2; ++i) map.host.input(host::KeyInput{0, host::ctrl_key, host::Key::Right});
    CHECK(map.state.Label1.Caption == "heat: 25, 0.5, value 2");
    auto const lines = map.graph_handle.contours("lines", {.contour_levels = "4.5;"});
    lines.grid(std::vector{4.0, 4.0, 5.0, 5.0}, 2, 2, 10, 40, 0, 2);
    map.page.Refresh();
    map.mouse(host::MouseKind::Move, 0, 0, map.place_of(20, 1.005));
    CHECK(map.state.PointTooltip == "lines: level 4.5");
    map.mouse(host::MouseKind::Move, 0, 0, map.place_of(20, 1.3));
    CHECK(map.state.PointTooltip == "heat: 25, 1.5, value 5");
    auto const outline = map.page.outline(0);
    REQUIRE(outline);
    CHECK(std::ranges::any_of(outline->parts,
                              [](auto const& part) { return part.name.starts_with("colour bar"); }));
}

TEST_CASE("values are written on cells that have room for them, in ink that can be read") {
    auto const inks = [](double bottom, bool written) {
        MapPage map;
        map.page.Smooth(false);
        map.graph_handle.heat_map("", {.cell_values = written}).grid(std::vector{bottom, 4.0, 9.0}, 3, 1);
        map.page.Refresh();
        std::set<Color> colors;
        const Point low = map.place_of(-0.4, 0.2), high = map.place_of(0.4, -0.2);
        for (double x = low.x; x < high.x; x += 15)
            for (double y = low.y; y < high.y; y += 15) colors.insert(map.pixel_at({x, y}));
        return colors;
    };
    CHECK(inks(0, false).size() == 1);
    CHECK(inks(0, true).contains(rgb(255, 255, 255)));
    CHECK(inks(100, true).contains(0));
    // No room: nothing, not a part of it.
    MapPage map;
    std::vector<double> many(10000, 1234);
    many[0] = 0;
    map.graph_handle.heat_map("", {.cell_values = true}).grid(many, 100, 100);
    map.page.Refresh();
    CHECK(map.saved(".svg").find(">1234<") == std::string::npos);
}

TEST_CASE("in files few cells are shapes, very many a picture, and contours paths with their texts") {
    std::vector<double> values;
    for (int i = 0; i < 400; ++i) values.push_back(std::hypot(i % 20 - 9.5, i / 20 - 9.5));
    MapPage map;
    auto const cells = map.graph_handle.heat_map("");
    cells.grid(values, 20, 20);
    auto const lines = map.graph_handle.contours(
        "", {.line_color = 0x123456, .contour_levels = "3; 6", .contour_labels = true});
    lines.grid(cells);
    map.page.Refresh();
    std::string const few = map.saved(".svg");
    CHECK(count_of(few, "<image") == 0);
    CHECK(count_of(few, "#563412") >= 1);
    CHECK(few.find(">3<") != std::string::npos);
    CHECK(few.find(">6<") != std::string::npos);
    std::vector<double> many;
    for (int i = 0; i < 1000000; ++i) many.push_back(i % 1000);
    cells.grid(many, 1000, 1000);
    map.page.Refresh();
    CHECK(count_of(map.saved(".svg"), "<image") == 1);
    CHECK(map.heard.errors.empty());
}

TEST_CASE("contours break at cells without a value, and where a logarithmic axis has no place for them") {
    MapPage map;
    std::vector<double> values;
    for (int row = 0; row < 9; ++row)
        for (int column = 0; column < 9; ++column) values.push_back(row == 4 && column == 4 ? none : column);
    auto const lines = map.graph_handle.contours("", {.line_color = 0x0000FF, .contour_levels = "4.5;"});
    lines.grid(values, 9, 9);
    map.page.Refresh();
    auto const is_line = [&](double x, double y) {
        const Point place = map.place_of(x, y);
        return map.pixel_at(place) == 0x0000FF || map.pixel_at({place.x + 15, place.y}) == 0x0000FF
               || map.pixel_at({place.x - 15, place.y}) == 0x0000FF;
    };
    CHECK(is_line(4.5, 1));
    CHECK(is_line(4.5, 7));
    CHECK_FALSE(is_line(4.5, 4));
    CHECK(map.x_axis().AxisValue1 == 0); // the middles of the outermost cells
    CHECK(map.y_axis().AxisValue2 == 8);
    map.graph_handle.x_axis({.log = true});
    map.graph_handle.y_axis({.log = true, .reverse = true});
    map.page.Refresh();
    CHECK(map.heard.errors.empty());
    // Half the way between the middles of two cells, as it is seen.
    double const between = std::sqrt(std::sqrt(3.5 * 4.5) * std::sqrt(4.5 * 5.5));
    CHECK(is_line(between, 7));
    CHECK_FALSE(is_line(between, 4));
}

TEST_CASE("the classic members: a colour bar, a matrix by number of the set, and what is wrong with others") {
    Person person;
    qvGraph& page = person.page;
    page.NewGraph("map");
    page.NewColorAxis("degrees", 0, 40);
    CHECK(page.SelectColorAxis() == 2);
    CHECK(page.SetSelectedAxis(2) == 2);
    CHECK(page.GetSelectedAxisIndex(1) == 1);
    CHECK(page.AxisValue2() == 40);
    page.NewDataSet("first");
    page.NewDataSet("second");
    CHECK(page.ColorAxisIndex() == 2);
    page.DataKind(4);
    const NumberList values{1, 2, 3, 4, 5, 6};
    page.Call("SetGrid", {values, 3, 2, 0, 3, 10, 20, 2});
    page.Refresh();
    CHECK(person.heard.errors.empty());
    CHECK_FALSE(person.graph().DataSets[0].grid);
    REQUIRE(person.graph().DataSets[1].grid);
    auto const grid = person.graph().DataSets[1].grid;
    CHECK(grid->x_edges == std::vector{0.0, 1.0, 2.0, 3.0});
    CHECK(grid->y_edges == std::vector{10.0, 15.0, 20.0});
    CHECK(person.x_axis().AxisValue2 == 3);
    page.SetGrid(values, 4, 2);
    page.SetGrid(values, 0, 2);
    page.SetGrid(values, 3, 2, 5, 5);
    page.SetGridEdges(values, std::vector{0.0, 2.0, 1.0, 3.0}, std::vector{0.0, 1.0, 2.0});
    page.SetGridEdges(values, std::vector{0.0, 1.0, 2.0, HUGE_VAL}, std::vector{0.0, 1.0, 2.0});
    CHECK(person.heard.errors.size() == 5);
    CHECK(person.graph().DataSets[1].grid == grid);
    CHECK_THROWS_AS(page.AxisColors("rainbow"), Fault);
    CHECK_THROWS_AS(page.ContourLevels("some"), Fault);
    page.AxisColors("ember");
    CHECK(page.Get("AxisColors") == Variant("ember"));
    // Whatever number a host gives, nothing but a colour bar gives colours.
    for (int const index : {-1, 0, 1, 3, 32767}) {
        page.ColorAxisIndex(index);
        page.Refresh();
    }
    CHECK(person.heard.errors.size() == 5);
}
