// Axes of time on the page. Characters are 100 twips wide and 200 high, the plot area is 10000 twips wide.
#include "TestControl.h"
#include "render/axes/axes.h"
#include "render/axes/axis_range.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdio>
#include <map>

using namespace qv;
using namespace qv::render;
using document::Axis;
using qv::testing::TestControl;

namespace {

constexpr double new_year = 1704067200; // 2024 in UTC
constexpr double day = 86400;

struct TimePage : TestControl {
    document::Graph& graph = add_graph();
    Axis& x = graph.Axes[0];
    Axis& y = graph.Axes[1];

    TimePage() {
        for (Axis* axis : {&x, &y}) {
            axis->AxisRescale = axis->AxisTicksBothEnds = axis->AxisShowTitle = axis->AxisShowLabels = false;
            axis->AxisMajorDivs = 1;
        }
        show(x, new_year, new_year + day);
        graph.GraphShowTitle = false;
    }
    /// Makes an axis one of time with this range.
    void show(Axis& axis, double first, double last) {
        axis.AxisTime = axis.AxisShowLabels = true;
        axis.AxisScale = 1;
        axis.AxisValue1 = axis.ScaleMin = first;
        axis.AxisValue2 = axis.ScaleMax = last;
    }
    void draw() {
        GraphAxes(state, page(), AxesPass::WithoutMarks);
        page().log.clear();
        GraphAxes(state, page(), AxesPass::MarksOnly);
    }
    /// Lines of text in the order of drawing, and their places.
    std::vector<std::pair<std::string, Point>> texts() {
        draw();
        std::vector<std::pair<std::string, Point>> found;
        for (std::string const& line : page().log) {
            bool const turned = line.starts_with("turned ");
            if (!turned && !line.starts_with("text ")) continue;
            Point at;
            REQUIRE(std::sscanf(line.c_str() + (turned ? 7 : 5), "%lf,%lf", &at.x, &at.y) == 2);
            auto const quote = line.find('"');
            found.emplace_back(line.substr(quote + 1, line.rfind('"') - quote - 1), at);
        }
        return found;
    }
    std::string joined() {
        std::string text;
        for (auto const& [line, at] : texts()) text += (text.empty() ? "" : ", ") + line;
        return text;
    }
    /// Number of ticks of the x axis.
    std::size_t ticks() {
        draw();
        const std::vector<std::string> lines = page().lines("line ");
        return static_cast<std::size_t>(std::ranges::count_if(lines, [](std::string const& line) {
            Point from, to;
            REQUIRE(std::sscanf(line.c_str(), "line %lf,%lf %lf,%lf", &from.x, &from.y, &to.x, &to.y) == 4);
            return from.x == to.x && to.y - from.y < 1000;
        }));
    }
};

} // namespace

TEST_CASE("labels of an x axis have their coarser part in a line of its own, away from the axis") {
    TimePage axes;
    CHECK(axes.joined()
          == "00:00, 1 Jan 2024, 03:00, 06:00, 09:00, 12:00, 15:00, 18:00, 21:00, 00:00, 2 Jan");
    for (bool const far_side : {false, true}) {
        axes.x.AxisFarSide = far_side;
        std::map<std::string, Point> places;
        for (auto const& [text, at] : axes.texts()) places.emplace(text, at);
        CHECK(places["00:00"].y == places["03:00"].y);
        CHECK(places["1 Jan 2024"].y - places["00:00"].y == (far_side ? -200 : 200));
        CHECK(places["1 Jan 2024"].x + 500 == doctest::Approx(places["00:00"].x + 250)); // one middle
    }
}

TEST_CASE("beside a y axis, and turned, labels are in one line") {
    TimePage axes;
    axes.x.AxisHide = true;
    axes.show(axes.y, new_year, new_year + day);
    axes.y.AxisLabelsHoriz = 0;
    std::string const all = axes.joined();
    CHECK(all.starts_with("1 Jan 2024 00:00, 03:00"));
    CHECK(all.ends_with("21:00, 2 Jan 00:00"));
    axes.y.AxisReverse = true;
    CHECK(axes.joined() == all);
    axes.y.AxisHide = true;
    axes.x.AxisHide = false;
    axes.x.AxisLabelsHoriz = 90;
    CHECK(axes.joined().starts_with("1 Jan 2024 00:00, "));
}

TEST_CASE("labels chosen by their size are not thinned, and stay on the graph") {
    TimePage axes;
    axes.state.ThinTickLabels = true;
    CHECK(axes.joined().find("03:00, 06:00, 09:00") != std::string::npos);
    axes.graph.BorderLeft = 300; // less than half a date
    axes.graph.FrameLeft = 700;
    CHECK(axes.joined().starts_with("00:00, 03:00, 1 Jan 2024, 06:00"));
}

TEST_CASE("what the host gives rules over the calendar") {
    TimePage axes;
    axes.x.major_tick_values = {new_year, new_year + 3600, new_year + day / 2};
    CHECK(axes.joined() == "1 Jan 2024 00:00, 1 Jan 2024 01:00, 1 Jan 2024 12:00");
    axes.x.AxisTextLabels = "hh:mm";
    CHECK(axes.joined() == "00:00, 01:00, 12:00");
    axes.x.AxisTimeZone = "Europe/Berlin";
    CHECK(axes.joined() == "01:00, 02:00, 13:00");
    axes.x.major_tick_values.clear();
    axes.x.AxisScale = 2;
    axes.x.AxisTextLabels = "early,late";
    CHECK(axes.joined() == "early, late");
    axes.x.AxisScale = 1;
    axes.x.AxisTextLabels = "d mmm yyyy";
    axes.show(axes.x, new_year, new_year + 4 * day);
    CHECK(axes.joined() == "2 Jan 2024, 3 Jan 2024, 4 Jan 2024, 5 Jan 2024");
    axes.x.AxisShowLabels = false;
    CHECK(axes.joined().empty());
    std::size_t const with_minors = axes.ticks();
    axes.x.AxisMajorDivs = 0;
    CHECK(axes.ticks() == 4);
    CHECK(with_minors > 8);
}

TEST_CASE("beyond the calendar, and below it, an axis of time shows numbers") {
    TimePage axes;
    axes.x.AxisTextLabels = "d mmm yyyy"; // is no pattern for numbers
    axes.show(axes.x, 0, 4e12);
    CHECK(axes.joined() == "0, 4e12");
    axes.show(axes.x, 1, 1 + 1e-6);
    CHECK(axes.texts().size() == 2);
    CHECK(axes.events.errors.empty());
}

TEST_CASE("an axis of time is never logarithmic, and its automatic range is one of the calendar") {
    TimePage axes;
    axes.x.AxisLog = true;
    axes.x.AxisScale = 0;
    axes.x.AxisNoData = false;
    axes.x.AxisTimeZone = "Europe/Berlin";
    axes.x.DataMin = new_year + 100;
    axes.x.DataMax = new_year + 3 * day - 50;
    axes.x.AxisRescale = true;
    axes.draw();
    CHECK_FALSE(axes.x.AxisLog);
    CHECK(axes.x.AxisValue1 == new_year - 3600);               // 1 January, 0:00 in Berlin
    CHECK(axes.x.AxisValue2 == new_year + 3 * day + 2 * 3600); // three hours are a twentieth at most
    // A part of it stays as it is shown.
    axes.x.AxisValue1 = new_year + 1234.5;
    axes.draw();
    CHECK(axes.x.AxisValue1 == new_year + 1234.5);
    CHECK(settled_axis_range(axes.x).low == new_year + 1234.5);
}
