#include "render/axes/axes.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <random>
#include <set>

using namespace qv;
using namespace qv::render;
using document::Axis;
using qv::testing::TestControl;

namespace {

struct AxisPage : TestControl {
    document::Graph& graph = add_graph();
    Axis& x = graph.Axes[0];
    Axis& y = graph.Axes[1];

    AxisPage() {
        for (Axis* axis : {&x, &y}) {
            axis->AxisMajorDivs = 2;
            axis->AxisRescale = false;
        }
    }
    std::vector<std::string> draw() {
        GraphAxes(state, page(), AxesPass::WithoutMarks);
        page().log.clear();
        GraphAxes(state, page(), AxesPass::MarksOnly);
        return page().log;
    }
};

/// From a place out of the plot area, twips.
struct Reach {
    double from = 1e9;
    double to = -1e9;
    void take(double value) {
        from = std::min(from, value);
        to = std::max(to, value);
    }
};

/// How far a place lies out of a side of the plot area.
double outward(Axis const& axis, Point place) {
    if (axis.AxisXY == document::AxisKind::X) return axis.AxisFarSide ? 1000 - place.y : place.y - 11000;
    return axis.AxisFarSide ? place.x - 11000 : 1000 - place.x;
}

/// Where the texts that `is_meant` lie beside an axis, whatever their angle.
Reach reach_of_texts(std::vector<std::string> const& log, Axis const& axis, auto is_meant) {
    Reach reach;
    for (std::string const& line : log) {
        bool const turned = line.starts_with("turned ");
        if (!turned && !line.starts_with("text ")) continue;
        Point start;
        REQUIRE(std::sscanf(line.c_str() + (turned ? 7 : 5), "%lf,%lf", &start.x, &start.y) == 2);
        auto const quote = line.find('"'), end = line.rfind('"');
        const std::string text = line.substr(quote + 1, end - quote - 1);
        if (!is_meant(text)) continue;
        double const angle = turned ? std::atof(line.c_str() + end + 5) * std::numbers::pi / 180 : 0;
        for (double const along : {0.0, 100.0 * static_cast<double>(text.size())})
            for (double const down : {0.0, 200.0})
                reach.take(outward(axis, {start.x + along * std::cos(angle) + down * std::sin(angle),
                                          start.y - along * std::sin(angle) + down * std::cos(angle)}));
    }
    return reach;
}

Reach reach_of_ticks(std::vector<std::string> const& log, Axis const& axis) {
    Reach reach;
    for (std::string const& line : log) {
        Point from, to;
        if (std::sscanf(line.c_str(), "line %lf,%lf %lf,%lf", &from.x, &from.y, &to.x, &to.y) != 4) continue;
        bool const is_x = axis.AxisXY == document::AxisKind::X;
        if (is_x ? from.x != to.x : from.y != to.y) continue;
        reach.take(outward(axis, from));
        reach.take(outward(axis, to));
    }
    return reach;
}

bool is_number(std::string const& text) {
    return text.find_first_not_of("-.e0123456789") == std::string::npos;
}

std::vector<std::string> numbers(std::vector<std::string> const& log) {
    std::vector<std::string> found;
    for (std::string const& line : log) {
        if (!line.starts_with("text ") && !line.starts_with("turned ")) continue;
        auto const quote = line.find('"');
        const std::string text = line.substr(quote + 1, line.rfind('"') - quote - 1);
        if (is_number(text)) found.push_back(text);
    }
    return found;
}

void set_range(Axis& axis, double first, double last, std::int16_t divisions) {
    axis.AxisScale = 1;
    axis.AxisValue1 = axis.ScaleMin = first;
    axis.AxisValue2 = axis.ScaleMax = last;
    axis.AxisMajorDivs = divisions;
}

} // namespace

TEST_CASE("an x axis: line, ticks on both edges, labels below, title below them") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.draw();
    auto const& page = axes.page();
    CHECK(page.has("line 1000,11000 11000,11000 #000000 w1"));
    CHECK(page.has("line 6000,10800 6000,11000 #000000 w1")); // own edge, inward
    CHECK(page.has("line 6000,1200 6000,1000 #000000 w1"));   // opposite edge, inward
    CHECK(page.has("text 5950,11000 \"5\" #000000 Arial 9"));
    CHECK(page.has("text 5950,11200 \"x\" #000000 Arial 9"));
    CHECK(axes.events.errors.empty());
}

TEST_CASE("outward ticks push labels and title away by their length") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisTicksInside = axes.x.AxisTicksBothEnds = false;
    axes.x.AxisTicksOutside = true;
    axes.draw();
    CHECK(axes.page().has("line 6000,11000 6000,11200 #000000 w1"));
    CHECK(axes.page().has("text 5950,11200 \"5\" #000000 Arial 9"));
    CHECK(axes.page().has("text 5950,11400 \"x\" #000000 Arial 9"));
}

TEST_CASE("a far-side x axis stands on top, its title above its labels, and moves the graph title up") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisFarSide = true;
    axes.draw();
    CHECK(axes.page().has("line 1000,1000 11000,1000 #000000 w1"));
    CHECK(axes.page().has("text 5950,800 \"5\" #000000 Arial 9"));
    CHECK(axes.page().has("text 5950,600 \"x\" #000000 Arial 9"));
    CHECK(axes.graph.TopAxesHeight == 600);
}

TEST_CASE("axes on one side stand one outside the other") {
    AxisPage axes;
    axes.graph.Axes.push_back(axes.x);
    axes.graph.Axes.push_back(axes.y);
    axes.draw();
    auto const lines = axes.page().lines("line");
    CHECK(axes.page().has("line 1000,11000 11000,11000 #000000 w1"));
    CHECK(axes.page().has("line 1000,11600 11000,11600 #000000 w1"));
    CHECK(axes.page().has("line 1000,1000 1000,11000 #000000 w1"));
    CHECK(axes.page().has("line 400,1000 400,11000 #000000 w1"));
}

TEST_CASE("a y axis's title lies outside its widest label") {
    AxisPage axes;
    axes.x.AxisHide = true;
    axes.y.AxisLabelsHoriz = 0;
    axes.y.AxisValue2 = axes.y.ScaleMax = 20000; // five characters, 500 twips
    axes.draw();
    CHECK(axes.page().has("text 500,900 \"20000\" #000000 Arial 9"));
    auto const title = axes.page().lines("turned");
    REQUIRE(title.size() == 1);
    // Centred on 1000 - 500 - half a line, so that its inner edge meets the label.
    CHECK(title[0].starts_with("turned 300,"));
}

TEST_CASE("text labels: one a step, also for steps out of range, empty when they run out") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisScale = 2;
    axes.x.AxisMajorDivs = 4;
    axes.x.AxisTextLabels = "a,b,c";
    axes.x.AxisShowTitle = false;
    axes.x.AxisValue1 = 2; // the first step, at 0, lies outside
    axes.draw();
    auto const texts = axes.page().lines("text");
    REQUIRE(texts.size() == 2);
    CHECK(texts[0].find("\"b\"") != std::string::npos);
    std::string_view rest = "x,,y";
    CHECK(NextToken(rest) == "x");
    CHECK(NextToken(rest) == "");
    CHECK(NextToken(rest) == "y");
    CHECK(NextToken(rest) == "");
}

TEST_CASE("a rescaled range is stored and announced once; a log axis not wholly positive turns linear") {
    AxisPage axes;
    axes.events.scale_changes = 0;
    axes.x.AxisScale = 0;
    axes.x.AxisRescale = true;
    axes.x.AxisNoData = false;
    axes.x.DataMin = 0;
    axes.x.DataMax = 7.3;
    axes.y.AxisLog = true;
    axes.draw();
    CHECK(axes.x.AxisValue2 == 8);
    CHECK(axes.x.ScaleMax == 8);
    CHECK_FALSE(axes.x.AxisRescale);
    CHECK(axes.events.scale_changes == 1);
    CHECK_FALSE(axes.y.AxisLog);
    axes.draw();
    CHECK(axes.events.scale_changes == 1);
}

TEST_CASE("a hidden axis settles its range, and takes no space") {
    AxisPage axes;
    for (Axis* axis : {&axes.x, &axes.y}) {
        axis->AxisHide = axis->AxisRescale = true;
        axis->AxisScale = 0;
        axis->AxisNoData = false;
        axis->DataMin = 0;
        axis->DataMax = 7.3;
    }
    axes.events.scale_changes = 0;
    CHECK(axes.draw().empty());
    CHECK(axes.x.AxisValue2 == 8);
    CHECK(axes.y.ScaleMax == 8);
    CHECK(axes.events.scale_changes == 2);
    CHECK(axes.state.AxisStackOffsets.near == 0);
    CHECK(axes.state.AxisStackOffsets.left == 0);
}

TEST_CASE("axes are painted in one pass, at the same places whichever it is") {
    AxisPage axes;
    Axis& right = axes.graph.Axes.emplace_back(axes.y);
    right.AxisFarSide = right.AxisTicksBothEnds = true;
    auto const drawn = [&](AxesPass pass) {
        axes.page().log.clear();
        GraphAxes(axes.state, axes.page(), pass);
        return axes.page().log;
    };
    auto const whole = drawn(AxesPass::Full), below = drawn(AxesPass::WithoutMarks);
    auto const marks = drawn(AxesPass::MarksOnly);
    CHECK(whole.size() == below.size() + marks.size());
    for (std::string const& line : marks) {
        CAPTURE(line);
        CHECK(std::ranges::count(whole, line) == std::ranges::count(marks, line));
        if (line.starts_with("text")) CHECK(std::ranges::count(below, line) == 0);
    }
}

TEST_CASE("grid lines follow the switches and colours of the axis being drawn") {
    AxisPage axes;
    axes.x.AxisGridMajor = axes.y.AxisGridMinor = true;
    axes.x.AxisMajGridColor = 0x00CC00;
    axes.y.AxisMinorDivs = 2;
    axes.draw();
    CHECK(axes.page().has("line 6000,1000 6000,11000 #00CC00 w1"));
    CHECK(axes.page().has("line 1000,8500 11000,8500 #E1E1E1 w1"));
    CHECK_FALSE(axes.page().has("line 1000,6000 11000,6000 #D2D2D2 w1"));
}

TEST_CASE("thinned labels never overlap and keep every second, third, ... one") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisMajorDivs = 100; // 100 twips apart, labels up to 400 wide
    axes.state.ThinTickLabels = true;
    axes.x.AxisShowTitle = false;
    axes.draw();
    auto const texts = axes.page().lines("text");
    CHECK(texts.size() > 15);
    CHECK(texts.size() <= 26);
    CHECK(texts[0].find("\"0\"") != std::string::npos);
}

TEST_CASE("given ticks take the place of the even ones and are labelled by the axis's format or texts") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisTicksBothEnds = false;
    axes.x.major_tick_values = {1, 4, 12}; // the last lies beyond the axis
    axes.x.minor_tick_values = {2.5};
    axes.x.AxisTextLabels = "0.0";
    axes.draw();
    CHECK(axes.page().has("line 2000,10800 2000,11000 #000000 w1"));
    CHECK(axes.page().has("line 3500,10860 3500,11000 #000000 w1"));
    CHECK(axes.page().has("text 1850,11000 \"1.0\" #000000 Arial 9"));
    CHECK(axes.page().has("text 4850,11000 \"4.0\" #000000 Arial 9"));
    CHECK(axes.page().lines("text").size() == 3); // two labels and the title
    axes.x.AxisScale = 2;
    axes.x.AxisTextLabels = "a,b,c";
    axes.draw();
    CHECK(axes.page().has("text 4950,11000 \"b\" #000000 Arial 9"));
    axes.x.major_tick_values.clear();
    axes.draw();
    CHECK(axes.page().has("text 5950,11000 \"b\" #000000 Arial 9")); // divided evenly again
}

TEST_CASE("divisions of any number draw in under a second") {
    AxisPage axes;
    axes.x.AxisMajorDivs = axes.x.AxisMinorDivs = 32767;
    axes.y.AxisMajorDivs = axes.y.AxisMinorDivs = -32768;
    auto const start = std::chrono::steady_clock::now();
    axes.draw();
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(20)); // sanitizers included
    CHECK(axes.events.errors.empty());
}

TEST_CASE("labels lie outside line and ticks, titles outside labels: any angle, side, thickness, lines") {
    constexpr double rounding = 3; // twips: turned texts are placed with a rounded angle
    for (auto const kind : {document::AxisKind::X, document::AxisKind::Y})
        for (bool const far_side : {false, true})
            for (int const thickness : {1, 9})
                for (bool const ticks_across : {false, true})
                    for (int angle = -180; angle <= 360; angle += 15) {
                        CAPTURE(kind);
                        CAPTURE(far_side);
                        CAPTURE(thickness);
                        CAPTURE(ticks_across);
                        CAPTURE(angle);
                        AxisPage axes;
                        Axis& axis = kind == document::AxisKind::X ? axes.x : axes.y;
                        Axis& other = kind == document::AxisKind::X ? axes.y : axes.x;
                        set_range(axis, 0, 20000, 2);
                        axis.AxisFarSide = far_side;
                        axis.AxisThickness = static_cast<std::uint8_t>(thickness);
                        axis.AxisLabelsHoriz = static_cast<std::int16_t>(angle);
                        axis.AxisTicksOutside = !ticks_across;
                        axis.AxisTitle = "one\ntwo\r\nthree";
                        // The other axis of this kind has ticks that reach over to this side.
                        other = axis;
                        other.AxisHide = !ticks_across;
                        other.AxisFarSide = !far_side;
                        other.AxisTickLength = 300;
                        other.AxisTicksOutside = other.AxisTicksBothEnds = true;
                        other.AxisShowTitle = other.AxisShowLabels = false;
                        auto const log = axes.draw();
                        Reach const ticks = reach_of_ticks(log, axis);
                        Reach const labels = reach_of_texts(log, axis, is_number);
                        Reach const title =
                            reach_of_texts(log, axis, [](auto const& text) { return !is_number(text); });
                        CHECK(ticks.to >= 200);
                        CHECK(labels.from >= (ticks_across ? ticks.to : thickness / 2 * 15) - rounding);
                        CHECK(labels.to > labels.from);
                        CHECK(title.from >= std::max(labels.to, ticks.to) - rounding);
                        CHECK(title.to - title.from == doctest::Approx(600).epsilon(0.01));
                        CHECK(axes.events.errors.empty());
                    }
}

TEST_CASE("the title of a graph stands above the ticks that the x axis has on the far edge") {
    AxisPage axes;
    axes.x.AxisTicksOutside = axes.x.AxisTicksBothEnds = true;
    axes.x.AxisTickLength = 300;
    axes.x.AxisThickness = 5;
    axes.state.GraphTitles[0] = "one\ntwo";
    axes.page().log.clear();
    GraphAxes(axes.state, axes.page(), AxesPass::Full);
    Axis top = axes.x;
    top.AxisFarSide = true;
    Reach const title =
        reach_of_texts(axes.page().log, top, [](auto const& text) { return text == "one" || text == "two"; });
    CHECK(title.from >= 300 + 2 * 15);
    CHECK(title.to - title.from == 400);
}

TEST_CASE("each axis line has its own thickness, whatever axes and ticks were drawn before") {
    AxisPage axes;
    axes.graph.Axes.push_back(axes.x);
    axes.graph.Axes.push_back(axes.x);
    Axis &second = axes.graph.Axes[2], &far_axis = axes.graph.Axes[3];
    axes.x.AxisThickness = 3;
    axes.x.AxisTickThickness = 6;
    second.AxisThickness = 1;
    far_axis.AxisThickness = 5;
    far_axis.AxisFarSide = true;
    axes.draw();
    CHECK(axes.page().has("line 1000,11000 11000,11000 #000000 w3"));
    CHECK(axes.page().has("line 1000,1000 11000,1000 #000000 w5"));
    CHECK(axes.page().has("line 1000,1000 1000,11000 #000000 w1"));
    CHECK(axes.page().lines("line 1000,116").front().ends_with("w1"));
    // Ticks begin at the edge of the line they stand on, whosever it is.
    CHECK(axes.page().has("line 6000,10785 6000,11000 #000000 w6"));
    CHECK(axes.page().has("line 6000,1230 6000,1000 #000000 w6"));
    CHECK(axes.page().state.DrawWidth == 1);
}

TEST_CASE("labels of one axis differ and are within a hundredth of a division of their values") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisShowTitle = false;
    set_range(axes.x, 10000, 10002, 4);
    CHECK(numbers(axes.draw()) == std::vector<std::string>{"10000", "10000.5", "10001", "10001.5", "10002"});
    axes.x.AxisTextLabels = "0"; // the host's own format
    CHECK(numbers(axes.draw()) == std::vector<std::string>{"10000", "10001", "10001", "10002", "10002"});
    axes.x.AxisTextLabels.clear();
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> share(-1, 1), magnitude(-290, 290), narrowness(-12, 1);
    for (int i = 0; i < 2000; ++i) {
        double const low = share(random) * std::pow(10, magnitude(random));
        double const high = low + std::abs(low) * std::pow(10, narrowness(random));
        auto const divisions = static_cast<std::int16_t>(1 + i % 10);
        CAPTURE(low);
        CAPTURE(high);
        set_range(axes.x, low, high, divisions);
        axes.x.AxisReverse = i % 2 == 1;
        auto const labels = numbers(axes.draw());
        REQUIRE(labels.size() == static_cast<std::size_t>(divisions) + 1);
        REQUIRE(std::set<std::string>(labels.begin(), labels.end()).size() == labels.size());
        for (std::size_t k = 0; k < labels.size(); ++k) {
            double const value = low + (high - low) * (static_cast<double>(k) / divisions);
            REQUIRE(std::abs(std::strtod(labels[k].c_str(), nullptr) - value)
                    <= 0.0101 * (high - low) / divisions);
        }
    }
}

TEST_CASE("every logarithmic axis shows two numbers or more, and keeps its scale while it is zoomed") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisShowTitle = false;
    std::mt19937_64 random(8);
    std::uniform_real_distribution<double> magnitude(-290, 290), narrowness(-9, 2);
    for (int i = 0; i < 3000; ++i) {
        double const low = std::pow(10, magnitude(random));
        double const high = low * (1 + std::pow(10, narrowness(random)));
        set_range(axes.x, i % 2 == 0 ? low : high, i % 2 == 0 ? high : low, static_cast<std::int16_t>(i % 7));
        axes.x.AxisScale = i % 3 == 0 ? 0 : 1; // automatic, zoomed: no new data, no full range
        axes.x.ScaleMax *= 1000;
        axes.x.DataMin = low;
        axes.x.DataMax = high * 1000;
        axes.x.AxisNoData = false;
        axes.x.AxisLog = true;
        axes.x.AxisMinorDivs = 9;
        CAPTURE(low);
        CAPTURE(high);
        auto const labels = numbers(axes.draw());
        REQUIRE(axes.x.AxisLog);
        REQUIRE(labels.size() >= 2);
        REQUIRE(labels.size() <= 10);
        REQUIRE(std::set<std::string>(labels.begin(), labels.end()).size() == labels.size());
    }
    CHECK(axes.events.errors.empty());
    // New data may turn it linear.
    axes.x.AxisScale = 0;
    axes.x.AxisRescale = true;
    axes.x.DataMin = 10;
    axes.x.DataMax = 15;
    axes.draw();
    CHECK_FALSE(axes.x.AxisLog);
}

namespace {

std::vector<std::string> texts(std::vector<std::string> const& log) {
    std::vector<std::string> found;
    for (std::string const& line : log) {
        if (!line.starts_with("text ") && !line.starts_with("turned ")) continue;
        auto const quote = line.find('"');
        found.push_back(line.substr(quote + 1, line.rfind('"') - quote - 1));
    }
    return found;
}

} // namespace

TEST_CASE("round ticks: labels at round values of a fixed range, given ticks and texts as before") {
    AxisPage axes;
    axes.y.AxisHide = true;
    axes.x.AxisShowTitle = false;
    set_range(axes.x, 0.3, 9.7, 3);
    CHECK(texts(axes.draw()).front() == "0.3");
    axes.state.RoundTicks = true;
    CHECK(texts(axes.draw()) == std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7", "8", "9"});
    CHECK(axes.page().has("line 8553.19,10860 8553.19,11000 #000000 w1")); // a minor tick, at 7.3...
    axes.x.AxisReverse = true;
    CHECK(texts(axes.draw()) == std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7", "8", "9"});
    axes.x.major_tick_values = {3, 4};
    CHECK(texts(axes.draw()) == std::vector<std::string>{"3", "4"});
    axes.x.major_tick_values.clear();
    axes.x.AxisScale = 2;
    axes.x.AxisTextLabels = "a,b,c,d";
    CHECK(texts(axes.draw()) == std::vector<std::string>{"a", "b", "c", "d"});
    axes.x.AxisScale = 1;
    axes.x.AxisTextLabels = "0.00";
    CHECK(texts(axes.draw()).front() == "1.00");
}

TEST_CASE("round ticks: powers of ten with raised exponents, whether or not the host's texts have markup") {
    AxisPage axes;
    axes.state.RoundTicks = true;
    axes.y.AxisHide = true;
    axes.x.AxisTitle = "f^{2}";
    axes.x.AxisLog = true;
    set_range(axes.x, 1, 1000, 3);
    CHECK(texts(axes.draw())
          == std::vector<std::string>{"10", "0", "10", "1", "10", "2", "10", "3", "f^{2}"});
    CHECK(axes.page().has("text 1050,10988 \"0\" #000000 Arial 6.3"));
}

TEST_CASE("round ticks: what labels leave out stands in the title, or in its place") {
    AxisPage axes;
    axes.state.RoundTicks = true;
    axes.y.AxisHide = true;
    axes.x.AxisOffset = true;
    axes.x.AxisTitle = "p_{0}";
    set_range(axes.x, 101324.1, 101325.7, 5);
    CHECK(texts(axes.draw()).back() == "p_{0}  (+101\u2009320)");
    axes.x.AxisShowTitle = false;
    CHECK(texts(axes.draw()).back() == "+101\u2009320");
    axes.x.AxisShowLabels = false;
    CHECK(texts(axes.draw()).empty());
}

TEST_CASE(
    "round ticks: an automatic range is widened a little, unless it is zoomed, and when the rule changes") {
    AxisPage axes;
    axes.x.AxisScale = 0;
    axes.x.AxisNoData = false;
    axes.x.DataMin = 313;
    axes.x.DataMax = 417;
    auto const range = [&] {
        axes.draw();
        return std::pair(axes.x.AxisValue1, axes.x.AxisValue2);
    };
    axes.x.AxisRescale = true;
    CHECK(range() == std::pair(300.0, 500.0));
    axes.state.RoundTicks = true;
    CHECK(range() == std::pair(310.0, 420.0));
    CHECK(axes.x.ScaleMax == 420);
    axes.x.AxisValue1 = 351.3;
    CHECK(range() == std::pair(351.3, 420.0));
    axes.state.RoundTicks = false;
    CHECK(range() == std::pair(351.3, 420.0));
    axes.x.AxisValue1 = axes.x.ScaleMin;
    axes.x.DataMax = HUGE_VAL;
    axes.state.RoundTicks = axes.x.AxisRescale = true;
    range();
    REQUIRE(axes.events.errors.size() == 1);
    CHECK(axes.events.errors[0] == "Error 6 has occured in qvGraph.ocx, AutoScale: Overflow");
}
