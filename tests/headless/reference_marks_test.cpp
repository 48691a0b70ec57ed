// Reference lines, bands, arrows and rectangles: where they are drawn, where their labels stand, and what a
// person who drags them does.
#include "Person.h"
#include "render/kinds/series_kind.h"

#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <set>

using namespace qv;
using namespace qv::testing;
using host::PointerShape;

namespace {

constexpr Color red = rgb(255, 0, 0), blue = rgb(0, 0, 255);
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double missing = std::numeric_limits<double>::quiet_NaN();

std::uint32_t in_picture(Color color) {
    auto const c = static_cast<std::uint32_t>(color);
    return (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
}

struct Moved {
    std::int16_t graph = 0, data_set = 0;
    std::array<double, 4> values{};
};

struct Hearing : HeardEvents {
    std::vector<Moved> moved;
    void MarkMoved(std::int16_t& graph, std::int16_t& set, double& x1, double& y1, double& x2,
                   double& y2) override {
        moved.push_back({graph, set, {x1, y1, x2, y2}});
    }
};

struct Pixels {
    int count = 0;
    std::optional<Box> box; // in pixels, both ends included
};

/// One graph with fixed axes 0..10 on a page whose marks are the only red.
struct PersonWithMarks : Person {
    Hearing hearing;
    GraphHandle drawn;

    PersonWithMarks() {
        page.set_events(&hearing);
        drawn = page.graph("graph");
        drawn.x_axis({.from = 0, .to = 10});
        drawn.y_axis({.from = 0, .to = 10});
        page.Refresh();
    }
    Pixels pixels_of(Color color) {
        auto const& picture = host.picture();
        Pixels found;
        PixelPoint low{HUGE_VAL, HUGE_VAL}, high{-1, -1};
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                auto const index = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width())
                                   + static_cast<std::size_t>(x);
                if ((picture.pixels()[index] & 0xFFFFFF) != in_picture(color)) continue;
                ++found.count;
                low = {std::min<double>(low.x, x), std::min<double>(low.y, y)};
                high = {std::max<double>(high.x, x), std::max<double>(high.y, y)};
            }
        if (found.count > 0) found.box = Box{low.x, low.y, high.x - low.x, high.y - low.y};
        return found;
    }
    Point at(double x, double y) {
        render::SeriesScope const scope(state, graph(), 0, render::SeriesScope::Maps::AsShown);
        return {scope.view().x(x), scope.view().y(y)};
    }
    document::DataSet& mark(std::size_t index = 0) { return graph().DataSets[index]; }
    std::array<double, 4> values(std::size_t index = 0) {
        auto const& set = mark(index);
        return {set.MarkX1, set.MarkY1, set.MarkX2, set.MarkY2};
    }
};

double pixel(double twips) {
    return std::floor(twips / 15 + 0.5);
}

} // namespace

TEST_CASE("reference lines and bands lie at their values, whatever the axis") {
    struct Scale {
        double from, to;
        bool log, reverse;
    };
    for (Scale const& scale :
         {Scale{0, 10, false, false}, {10, 0, false, false}, {1, 1000, true, false}, {1, 1000, true, true}}) {
        CAPTURE(scale.from);
        CAPTURE(scale.log);
        CAPTURE(scale.reverse);
        PersonWithMarks person;
        person.drawn.y_axis({.from = scale.from, .to = scale.to, .log = scale.log, .reverse = scale.reverse});
        person.drawn.horizontal_line(7, {.color = red});
        person.page.Refresh();
        const Point line = person.at(0, 7);
        const Pixels seen = person.pixels_of(red);
        REQUIRE(seen.box);
        CHECK(seen.box->height == 0);
        CHECK(seen.box->top == pixel(line.y));
        CHECK(seen.box->width + 1 >= pixel(person.plot().width) - 1);

        // An edge without a place, or infinitely far away, leaves the band open to that side.
        person.drawn.horizontal_band(scale.log ? -5.0 : -infinity, 7, {.color = blue, .fill_alpha = 255});
        person.page.Refresh();
        const Pixels band = person.pixels_of(blue);
        REQUIRE(band.box);
        bool const low_is_below = (scale.from < scale.to) != scale.reverse;
        double const edge = low_is_below ? band.box->top : band.box->bottom();
        CHECK(std::abs(edge - pixel(line.y)) <= 1);
        double const open = low_is_below ? band.box->bottom() : band.box->top;
        double const limit = low_is_below ? person.plot().bottom() : person.plot().top;
        CHECK(std::abs(open - pixel(limit)) <= 1);
    }
}

TEST_CASE("a mark's line has its dashes") {
    PersonWithMarks person;
    person.drawn.horizontal_line(5, {.line_dash = 1, .line_color = red});
    person.page.Refresh();
    const Pixels seen = person.pixels_of(red);
    REQUIRE(seen.box);
    CHECK(seen.box->height == 0);
    CHECK(static_cast<double>(seen.count) < 0.8 * seen.box->width);
    CHECK(static_cast<double>(seen.count) > 0.3 * seen.box->width);
}

TEST_CASE("marks without a place, or beside what is shown, are not there") {
    PersonWithMarks person;
    double const far = 1e300;
    person.drawn.horizontal_line(missing, {.color = red});
    person.drawn.horizontal_line(11, {.color = red});
    person.drawn.vertical_line(infinity, {.color = red});
    person.drawn.vertical_band(missing, 3, {.color = red, .fill_alpha = 255});
    person.drawn.horizontal_band(20, 30,
                                 {.color = red, .line_style = 1, .fill_alpha = 255, .text = "beside"});
    person.drawn.arrow({missing, 1}, {2, 2}, {.color = red});
    person.drawn.arrow({far, far}, {far, 0}, {.color = red, .text = "far"});
    person.drawn.rectangle({20, 20}, {far, far}, {.color = red, .line_style = 1, .fill_alpha = 255});
    person.page.Refresh();
    CHECK(person.pixels_of(red).count == 0);
    // What reaches from afar through the plot area is seen there, and ends.
    person.drawn.arrow({-far, 5}, {far, 5}, {.color = red, .line_thickness = 4});
    person.drawn.rectangle({-far, 2}, {far, 3}, {.color = blue, .line_style = 1, .fill_alpha = 255});
    person.page.Refresh();
    CHECK(person.pixels_of(red).count > 100);
    CHECK(person.pixels_of(blue).count > 1000);
}

TEST_CASE("percent count from the plot area's left and bottom, also on a logarithmic axis") {
    PersonWithMarks person;
    person.drawn.y_axis({.from = 1, .to = 1000, .log = true});
    person.drawn.rectangle({25, 50}, {50, 75}, {.color = red, .fill_alpha = 255, .mark_percent = true});
    person.page.Refresh();
    const Box plot = person.plot(), seen = person.pixels_of(red).box.value();
    CHECK(std::abs(seen.left - pixel(plot.left + plot.width / 4)) <= 1);
    CHECK(std::abs(seen.right() - pixel(plot.left + plot.width / 2)) <= 1);
    CHECK(std::abs(seen.top - pixel(plot.top + plot.height / 4)) <= 1);
    CHECK(std::abs(seen.bottom() - pixel(plot.top + plot.height / 2)) <= 1);
}

TEST_CASE("marks leave automatic axes and the legend alone, unless they have a legend text") {
    Person person;
    auto const graph = person.page.graph("graph");
    auto const line = graph.line("data");
    for (int i = 0; i <= 10; ++i) line.add(i, i);
    person.page.Refresh();
    auto const range = person.y_axis().ranges();
    auto const height = person.graph().LegendHeight;
    auto const limit = graph.horizontal_line(1000);
    person.page.Refresh();
    CHECK(person.y_axis().ranges() == range);
    CHECK(person.graph().LegendHeight == height);
    limit.legend("limit");
    person.page.Refresh();
    CHECK(person.graph().LegendHeight > height);
    CHECK(person.y_axis().ranges() == range);
}

TEST_CASE("labels keep inside the plot area, whole") {
    constexpr Color ink = rgb(255, 0, 255);
    for (int const angle : {0, 90}) {
        // Flat, so that every pixel of a letter has its colour.
        PersonWithMarks person;
        person.page.Smooth(false);
        auto const label = person.drawn.horizontal_line(
            5, {.line_color = red, .text = "limit", .text_color = ink, .text_angle = angle});
        person.page.Refresh();
        const Pixels whole = person.pixels_of(ink);
        REQUIRE(whole.box);
        const Box plot = person.plot();
        for (int shape = 0; shape <= 5; ++shape)
            for (int ori = 0; ori < 9; ++ori)
                for (double const place : {0.0, 0.3, 5.0, 9.9, 10.0}) {
                    label.set({.mark_shape = shape,
                               .mark_x1 = place,
                               .mark_y1 = place,
                               .mark_x2 = 5,
                               .mark_y2 = 5,
                               .text_ori = ori});
                    label.transparent(true);
                    label.line_color(ColorValue(person.graph().PlotAreaFill.Color1)); // hides nothing of it
                    person.page.Refresh();
                    CAPTURE(shape);
                    CAPTURE(ori);
                    CAPTURE(place);
                    CAPTURE(angle);
                    auto const seen = person.pixels_of(ink).box;
                    REQUIRE(seen);
                    CHECK(std::abs(seen->width - whole.box->width) <= 1);
                    CHECK(std::abs(seen->height - whole.box->height) <= 1);
                    CHECK(seen->left >= pixel(plot.left) - 1);
                    CHECK(seen->bottom() <= pixel(plot.bottom()) + 1);
                }
    }
}

TEST_CASE("a person drags lines, edges, bands, ends and corners; the host hears the values") {
    struct Case {
        int shape;
        Point from;
        PointerShape pointer;
        std::array<int, 4> moves; // which values go along
    };
    // The mark has the corners 2, 3 and 6, 8 and is taken two to the right and one up.
    Case const cases[] = {
        {0, {5, 3}, PointerShape::NorthSouth, {0, 1, 0, 0}}, // level line
        {1, {2, 5}, PointerShape::WestEast, {1, 0, 0, 0}},   // upright line
        {2, {5, 3}, PointerShape::NorthSouth, {0, 1, 0, 0}}, // an edge of a band
        {2, {5, 8}, PointerShape::NorthSouth, {0, 0, 0, 1}}, // the other
        {2, {5, 5}, PointerShape::NorthSouth, {0, 1, 0, 1}}, // the whole band
        {3, {6, 5}, PointerShape::WestEast, {0, 0, 1, 0}},   // upright
        {3, {4, 5}, PointerShape::WestEast, {1, 0, 1, 0}},
        {4, {2, 3}, PointerShape::FourWay, {1, 1, 0, 0}},   // an arrow's end
        {4, {6, 8}, PointerShape::FourWay, {0, 0, 1, 1}},   // its tip
        {4, {4, 5.5}, PointerShape::FourWay, {1, 1, 1, 1}}, // its shaft
        {5, {2, 8}, PointerShape::FourWay, {1, 0, 0, 1}},   // a rectangle's corner
        {5, {6, 5}, PointerShape::FourWay, {1, 1, 1, 1}},   // its edge: all of it
        {5, {4, 5}, PointerShape::FourWay, {1, 1, 1, 1}},
    };
    constexpr std::array<double, 4> before{2, 3, 6, 8}, way{2, 1, 2, 1};
    for (Case const& drag : cases) {
        CAPTURE(drag.shape);
        CAPTURE(drag.from.x);
        CAPTURE(drag.from.y);
        PersonWithMarks person;
        person.drawn.rectangle({2, 3}, {6, 8},
                               {.color = red, .mark_shape = drag.shape, .mark_dragging = true});
        person.page.Refresh();
        const Point from = person.at(drag.from.x, drag.from.y);
        const Point to = person.at(drag.from.x + 2, drag.from.y + 1);
        person.move(from);
        CHECK(person.state.MousePointer == drag.pointer);
        person.press(from);
        person.move(to, host::left_button);
        auto const anew = person.pixels();
        person.page.Refresh();
        CHECK(anew == person.pixels());
        person.release(to);
        REQUIRE(person.hearing.moved.size() == 1);
        auto const& heard = person.hearing.moved[0];
        CHECK(heard.graph == 0);
        CHECK(heard.data_set == 0);
        CHECK(heard.values == person.values());
        for (std::size_t i = 0; i < 4; ++i) {
            if (drag.moves[i] == 0) CHECK(heard.values[i] == before[i]);
            if (drag.moves[i] != 0)
                CHECK(heard.values[i] == doctest::Approx(before[i] + way[i]).epsilon(1e-9));
        }
        CHECK(person.x_axis().AxisValue2 == 10); // nothing was zoomed
        person.move(person.at(9.5, 9.5));
        CHECK(person.values() == heard.values); // let go
    }
}

TEST_CASE("on a logarithmic axis a band keeps the ratio of its ends, and an open end stays open") {
    PersonWithMarks person;
    person.drawn.y_axis({.from = 1, .to = 10000, .log = true});
    person.drawn.horizontal_band(10, 20, {.mark_dragging = true});
    person.page.Refresh();
    person.drag(person.at(5, 14.1), person.at(5, 141));
    CHECK(person.values()[1] == doctest::Approx(100).epsilon(1e-6));
    CHECK(person.values()[3] == doctest::Approx(200).epsilon(1e-6));
    person.mark().MarkY1 = -infinity;
    person.page.Refresh();
    person.drag(person.at(5, 14.1), person.at(5, 28.2));
    CHECK(person.values()[1] == -infinity);
    CHECK(person.values()[3] == doctest::Approx(400).epsilon(1e-6));
}

TEST_CASE("Escape takes a drag back, whose end the host hears too") {
    PersonWithMarks person;
    person.drawn.horizontal_line(0.1 + 0.2, {.color = red, .mark_dragging = true});
    person.page.Refresh();
    auto const before = person.pixels();
    person.press(person.at(5, 0.3));
    person.move(person.at(5, 4), host::left_button);
    CHECK(person.values()[1] == doctest::Approx(4));
    person.host.input(host::KeyInput{0, 0, host::Key::Escape});
    CHECK(person.values()[1] == 0.1 + 0.2);
    person.release(person.at(5, 4));
    person.move({-100, -100});
    CHECK(person.pixels() == before);
    REQUIRE(person.hearing.moved.size() == 2);
    CHECK(person.hearing.moved[1].values[1] == 0.1 + 0.2);
}

TEST_CASE(
    "a mark stays where the host does not allow it, is clicked like what lies behind it, and never leaves") {
    PersonWithMarks person;
    auto const line = person.drawn.horizontal_line(5);
    person.page.Refresh();
    person.drag(person.at(2, 5), person.at(8, 8));
    CHECK(person.values()[1] == 5);
    CHECK(person.x_axis().AxisValue2 == doctest::Approx(8)); // a rubber band
    person.press(person.at(5, 7), host::right_button);
    person.release(person.at(5, 7), host::right_button);
    line.mark_dragging(true);
    person.page.Refresh();
    person.take_events();
    person.hearing.names.clear();
    person.press(person.at(2, 5));
    person.release(person.at(2, 5));
    CHECK(person.hearing.names == std::vector<std::string>{"Click"});
    CHECK(person.hearing.x == doctest::Approx(2).epsilon(0.01));
    person.drag(person.at(2, 5), {-5000, 500000});
    CHECK(person.values()[1] == doctest::Approx(0));
    // Without a notice where the host has asked for none.
    person.page.SuppressRaisingEvents(true);
    auto const heard = person.hearing.moved.size();
    person.drag(person.at(2, 0.02), person.at(2, 6));
    CHECK(person.hearing.moved.size() == heard);
}

TEST_CASE("marks are named under the pointer and read by keys") {
    PersonWithMarks person;
    person.drawn.horizontal_line(4, {.legend = "limit", .text = "too hot"});
    person.drawn.arrow({20, 30}, {40, 60}, {.legend = "hint", .mark_percent = true});
    person.page.Refresh();
    person.move(person.at(8, 4));
    CHECK(person.state.PointTooltip == "limit: too hot, y 4");
    person.host.input(host::KeyInput{0, host::ctrl_key, host::Key::Right});
    CHECK(person.state.Label1.Caption == "limit: too hot, y 4");
    person.host.input(host::KeyInput{0, host::ctrl_key, host::Key::Down});
    CHECK(person.state.Label1.Caption == "hint: x 20 %, y 30 %, to x 40 %, to y 60 %");
}
