// Pies, rings and polar graphs as a person has them: what is named under the pointer, what zooming does, how
// they are listed, dragged and saved.
#include "Person.h"
#include "qvgraph/looks.h"
#include "render/polar/polar_map.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>

using namespace qv;
using namespace qv::testing;

namespace {

struct PersonWithPie : Person {
    GraphHandle drawn;
    DataHandle pie;

    PersonWithPie() {
        drawn = page.graph("energy");
        pie = drawn.pie("energy");
        pie.add_slice("oil", 50);
        pie.add_slice("gas", 25);
        pie.add_slice("sun", 25);
        pie.set({.pie_labels = 5});
        page.Refresh();
    }
    /// Share of the pixels of the plot area in a colour.
    double share_of(Color color) {
        auto const c = static_cast<std::uint32_t>(color);
        std::uint32_t const wanted = (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
        auto const all = pixels();
        auto const count =
            std::ranges::count_if(all, [&](std::uint32_t pixel) { return (pixel & 0xFFFFFF) == wanted; });
        return static_cast<double>(count) / (plot().width * plot().height / 225);
    }
    Point from_middle(double degrees_clockwise, double share_of_radius) {
        const Box box = plot();
        double const radius = share_of_radius * std::min(box.width, box.height) / 2;
        double const angle = degrees_clockwise * 3.14159265358979 / 180;
        return {box.left + box.width / 2 + radius * std::sin(angle),
                box.top + box.height / 2 - radius * std::cos(angle)};
    }
};

struct PersonAtPolar : Person {
    GraphHandle drawn;

    PersonAtPolar() {
        drawn = page.graph("wind", {.polar = true});
        auto const y = drawn.y_axis({.from = 0, .to = 10});
        auto const line = drawn.line("speed", {.symbol = 3});
        line.add(0, 5);
        line.add(90, 5);
        line.add(180, 10);
        page.Refresh();
    }
    Point at(double angle, double y) {
        return (*render::place_map(graph(), render::SeriesScope::Maps::AsShown).polar)(angle, y);
    }
};

} // namespace

TEST_CASE("a pie's slices have the areas of their values, in colours of their own") {
    PersonWithPie person;
    person.page.UseLook("light");
    person.drawn.legend({.show = false});
    person.page.Refresh();
    auto const colors = look("light").palette;
    double const oil = person.share_of(colors[0]), gas = person.share_of(colors[1]),
                 sun = person.share_of(colors[2]);
    double const whole = oil + gas + sun;
    CHECK(oil / whole == doctest::Approx(0.5).epsilon(0.01));
    CHECK(gas / whole == doctest::Approx(0.25).epsilon(0.01));
    CHECK(sun / whole == doctest::Approx(0.25).epsilon(0.01));
    // A ring of half the radius lacks a quarter.
    person.pie.pie_hole(50);
    person.page.Refresh();
    CHECK(person.share_of(colors[0]) / oil == doctest::Approx(0.75).epsilon(0.02));
    // One slice alone is whole, also as a ring.
    person.pie.clear();
    person.pie.add_slice("all", 3);
    person.page.Refresh();
    CHECK(person.share_of(colors[0]) / whole == doctest::Approx(0.75).epsilon(0.02));
}

TEST_CASE("slices are named under the pointer, read by keys, and listed in the legend") {
    PersonWithPie person;
    person.move(person.from_middle(90, 0.5));
    CHECK(person.state.PointTooltip == "energy: oil, 50, 50 %");
    CHECK(person.state.Label1.Caption.empty()); // no coordinates: there are none
    person.move(person.from_middle(300, 0.5));
    CHECK(person.state.PointTooltip == "energy: sun, 25, 25 %");
    person.move(person.from_middle(300, 1.2));
    CHECK(person.state.PointTooltip.empty());
    person.host.input(host::KeyInput{0, host::ctrl_key, host::Key::Right});
    person.host.input(host::KeyInput{0, host::ctrl_key, host::Key::Right});
    CHECK(person.state.Label1.Caption == "energy: gas, 25, 25 %");
    auto const three_rows = person.graph().LegendHeight;
    person.pie.add_slice("coal", 10);
    person.page.Refresh();
    CHECK(person.graph().LegendHeight * 3.8 == doctest::Approx(three_rows * 4.8).epsilon(0.01));
}

TEST_CASE("a pie has no axes and is not zoomed; a drag of it moves its graph") {
    PersonWithPie person;
    person.drawn.set({.left = 10, .width = 50});
    person.page.Refresh();
    auto const before = person.graph().Axes[1].ranges();
    auto const picture = person.pixels();
    person.host.input(host::WheelInput{2, 0, 0, person.from_middle(0, 0.2)});
    person.host.input(host::KeyInput{0, 0, host::Key::Plus});
    CHECK(person.graph().Axes[1].ranges() == before);
    CHECK(person.pixels() == picture);
    auto const left = person.graph().FrameLeft;
    const Point from = person.from_middle(0, 0.1);
    person.drag(from, {from.x + 1500, from.y});
    CHECK(person.graph().FrameLeft == doctest::Approx(left + 1500).epsilon(0.02));
    CHECK(person.graph().Axes[1].ranges() == before);
    // With a line beside it the axes are the line's.
    auto const line = person.drawn.line("line");
    line.add(1, 2);
    line.add(2, 3);
    CHECK(render::shows_axes(person.graph()));
}

TEST_CASE("a polar graph tells angle and distance, names its points, and is not zoomed") {
    PersonAtPolar person;
    person.move(person.at(30, 5));
    CHECK(person.state.PointerX == doctest::Approx(30).epsilon(1e-6));
    CHECK(person.state.PointerY == doctest::Approx(5).epsilon(1e-6));
    CHECK(!person.state.Label1.Caption.empty());
    person.move(person.at(90, 5));
    CHECK(person.state.PointTooltip.starts_with("speed: 90"));
    const Box plot = person.plot();
    person.move({plot.left + 300, plot.top + 300});
    CHECK(person.state.Label1.Caption.empty()); // beyond the outermost circle nothing has values
    auto const ranges = person.y_axis().ranges();
    auto const picture = person.pixels();
    person.host.input(host::WheelInput{3, 0, 0, person.at(10, 2)});
    person.host.input(host::KeyInput{0, 0, host::Key::Left});
    CHECK(person.y_axis().ranges() == ranges);
    person.drag(person.at(200, 3), person.at(250, 6));
    CHECK(person.y_axis().ranges() == ranges);
    // Marks of straight axes and other kinds are not there.
    person.page.Refresh();
    auto const alone = person.pixels();
    person.drawn.horizontal_line(5, {.mark_dragging = true});
    person.page.Refresh();
    CHECK(person.pixels() == alone);
}

TEST_CASE(
    "a function of the angle goes a whole turn, or as far as it is given, and widens an automatic axis") {
    Person person;
    auto const graph = person.page.graph("rose", {.polar = true});
    auto const rose = graph.function("rose", "3 * abs(cos(x / 57.29577951308232))");
    person.page.AutoFit(true);
    person.page.Refresh();
    CHECK(person.y_axis().AxisValue2 >= 3);
    CHECK(person.y_axis().AxisValue2 < 4);
    rose.set({.formula = "x / 360", .formula_from = 0, .formula_to = 1080});
    person.page.Refresh();
    CHECK(person.y_axis().AxisValue2 >= 3);
    CHECK(person.heard.errors.empty());
}

TEST_CASE("round graphs are saved as shapes, and drawing them again draws the same") {
    PersonWithPie person;
    person.pie.set({.pie_hole = 40, .pie_labels = 0});
    auto const wind = person.page.graph("wind", {.polar = true, .left = 50, .width = 50});
    wind.area("speed").add(std::vector<double>{0, 120, 240, 360}, std::vector<double>{3, 4, 5, 3});
    person.page.Refresh();
    auto const first = person.pixels();
    person.page.Refresh();
    CHECK(person.pixels() == first);
    auto const file = std::filesystem::temp_directory_path() / "qv_round_graphs.svg";
    person.host.save(file);
    std::ifstream stream(file);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::filesystem::remove(file);
    CHECK(text.find("oil 50") != std::string::npos);
    CHECK(text.find("<image") == std::string::npos);
    CHECK(person.pixels() == first);
    CHECK(person.heard.errors.empty());
}

TEST_CASE("where very many slices share a pixel it has the mean of their colours") {
    PersonWithPie person;
    person.page.UseLook("light");
    person.drawn.legend({.show = false});
    person.pie.clear();
    // A half of one colour, a half of very many slices that no pixel tells apart.
    person.pie.add_slice("large", 60000);
    std::vector<double> numbers(60000), ones(60000, 1);
    person.pie.add(numbers, ones);
    person.page.Refresh();
    auto const colors = look("light").palette;
    auto const pixel_at = [&](Point place) {
        auto const all = person.pixels();
        auto const width = static_cast<std::size_t>(person.host.picture().GetClientRect().width);
        return all[static_cast<std::size_t>(place.y / 15) * width + static_cast<std::size_t>(place.x / 15)]
               & 0xFFFFFF;
    };
    auto const c = static_cast<std::uint32_t>(colors[0]);
    CHECK(pixel_at(person.from_middle(90, 0.5)) == ((c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF)));
    // The mean is the same all round, whatever comes last.
    auto const first = pixel_at(person.from_middle(200, 0.5)), other = pixel_at(person.from_middle(330, 0.8));
    for (int shift : {0, 8, 16}) {
        int const one = static_cast<int>(first >> shift & 0xFF),
                  two = static_cast<int>(other >> shift & 0xFF);
        CHECK(std::abs(one - two) <= 6);
    }
}
