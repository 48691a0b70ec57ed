// Bars that share the room of their values, and the labels on them. The plot area is 10000 twips wide and
// high at (1000, 1000); characters are 100 twips wide and 200 high.
#include "render/bars/bar_places.h"

#include "TestControl.h"
#include "render/data_sets.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdio>

using namespace qv;
using namespace qv::render;
using document::BarArranging;
using qv::testing::TestControl;

namespace {

struct BarPage : TestControl {
    document::Graph& graph = add_graph();

    document::DataSet& add(std::vector<Point> const& points, bool lies = false) {
        document::DataSet& set = add_data_set(graph, points);
        set.DataSymbol = 1;
        set.DataSymbolSize = 90;
        set.BarBase = true;
        set.BarHoriz = lies;
        return set;
    }
    void arrange(BarArranging arranging, double share) {
        graph.BarArrangement = static_cast<std::uint8_t>(arranging);
        graph.BarWidthShare = share;
    }
    std::vector<Box> boxes(std::int16_t set) {
        const SeriesScope scope(state, graph, set, SeriesScope::Maps::BeingDrawn);
        BarStack stack;
        std::vector<Box> found;
        for_each_bar(scope.view(), BarPlan(graph), stack,
                     [&](PlacedBar const& bar) { found.push_back(extent_of(bar.box)); });
        return found;
    }
    /// Top left corners of the labels, in the order of drawing.
    std::vector<std::pair<std::string, Point>> labels() {
        page().log.clear();
        PlotDataSets(state, page());
        std::vector<std::pair<std::string, Point>> found;
        for (std::string const& line : page().lines("text ")) {
            Point at;
            REQUIRE(std::sscanf(line.c_str(), "text %lf,%lf", &at.x, &at.y) == 2);
            auto const quote = line.find('"');
            found.emplace_back(line.substr(quote + 1, line.rfind('"') - quote - 1), at);
        }
        return found;
    }
};

bool is(Box const& box, double left, double top, double width, double height) {
    bool const same = std::abs(box.left - left) + std::abs(box.top - top) + std::abs(box.width - width)
                          + std::abs(box.height - height)
                      < 1e-6;
    if (!same) MESSAGE(box.left, " ", box.top, " ", box.width, " ", box.height);
    return same;
}

} // namespace

TEST_CASE("grouped bars share a category, hidden sets and other axes take no room, widths follow the zoom") {
    BarPage page;
    page.graph.Axes[0].AxisCategories = true;
    page.add({{2, 3}, {4, 5}});
    page.add({{2, 1}}).DataHide = true;
    page.add({{2, 2}});
    page.arrange(BarArranging::Grouped, 0.8);
    CHECK(is(page.boxes(0)[0], 2600, 8000, 400, 3000));
    CHECK(is(page.boxes(0)[1], 4600, 6000, 400, 5000));
    CHECK(is(page.boxes(2)[0], 3000, 9000, 400, 2000));
    page.graph.Axes[0].AxisValue2 = 5; // a category is twice as wide
    CHECK(is(page.boxes(2)[0], 5000, 9000, 800, 2000));
    page.graph.Axes[0].AxisReverse = true;
    CHECK(is(page.boxes(2)[0], 6200, 9000, 800, 2000));
    page.arrange(BarArranging::AsSet, 0.8);
    CHECK(page.boxes(2)[0].width == doctest::Approx(2 * half_width_of_bars(90)));
}

TEST_CASE("without categories the room of a value is the way to the nearest one, on the axis's own scale") {
    BarPage page;
    page.add({{1, 1}, {4, 1}});
    page.add({{2, 1}, {NAN, 1}, {INFINITY, 2}});
    page.arrange(BarArranging::Grouped, 1);
    CHECK(is(page.boxes(0)[0], 1500, 10000, 500, 1000));
    CHECK(page.boxes(1).size() == 1);
    document::Axis& x = page.graph.Axes[0];
    x.AxisLog = true;
    x.AxisValue1 = 1;
    x.AxisValue2 = 16;
    CHECK(is(page.boxes(1)[0], 3500, 10000, 1250, 1000)); // from 2 to the square root of 2 above it
}

TEST_CASE("bars stand upon each other by value, those below 0 downwards, missing ones take no height") {
    BarPage page;
    page.graph.Axes[1].AxisValue1 = -10;
    page.add({{1, 4}, {2, -3}, {3, NAN}});
    page.add({{3, 5}, {2, -1}, {1, 2}}); // another order
    page.add({{1, -2}, {2, 6}, {2, 2}}); // two at one value
    page.arrange(BarArranging::Stacked, 1);
    const BarPlan plan(page.graph);
    auto const ends = [&](std::int16_t set, std::size_t i) {
        const BarEnds bar = plan.ends(set, i, 0);
        return std::pair(bar.from, bar.to);
    };
    using Pair = std::pair<double, double>;
    CHECK(ends(0, 0) == Pair{0, 4});
    CHECK(ends(0, 1) == Pair{0, -3});
    CHECK(ends(1, 0) == Pair{0, 5});
    CHECK(ends(1, 1) == Pair{-3, -4});
    CHECK(ends(1, 2) == Pair{4, 6});
    CHECK(ends(2, 0) == Pair{0, -2});
    CHECK(ends(2, 2) == Pair{6, 8});
    CHECK(page.boxes(0).size() == 2);
    page.arrange(BarArranging::Percent, 1);
    const BarPlan percent(page.graph);
    CHECK(percent.ends(1, 2, 0).to == doctest::Approx(75));
    CHECK(percent.ends(2, 0, 0).to == doctest::Approx(-25));
    CHECK(percent.ends(2, 2, 0).to == doctest::Approx(100.0 * 8 / 12));
}

TEST_CASE("lying bars have their categories on the y axis; bars of a full share touch and do not overlap") {
    BarPage page;
    page.graph.Axes[1].AxisCategories = true;
    page.add({{3, 1}, {7, 2}}, true);
    page.arrange(BarArranging::Grouped, 1);
    CHECK(is(page.boxes(0)[0], 1000, 9500, 3000, 1000));
    page.page().log.clear();
    PlotDataSets(page.state, page.page());
    CHECK(page.page().lines("fill ").size() == 2);
    CHECK(page.page().has("fill 1000,9500 4000,10485 #000000 w1"));
}

TEST_CASE("labels lie in the plot area and clear of bars and of each other, in any arrangement") {
    for (int arrangement = 0; arrangement <= 3; ++arrangement)
        for (bool const lies : {false, true})
            for (std::uint8_t const labels : {std::uint8_t{1}, std::uint8_t{2}})
                for (bool const reversed : {false, true}) {
                    CAPTURE(arrangement);
                    CAPTURE(lies);
                    CAPTURE(labels);
                    BarPage page;
                    document::Axis& across = page.graph.Axes[lies ? 1 : 0];
                    document::Axis& along = page.graph.Axes[lies ? 0 : 1];
                    across.AxisCategories = true;
                    along.AxisReverse = reversed;
                    along.AxisValue1 = arrangement == 3 ? -60 : -8;
                    along.AxisValue2 = arrangement == 3 ? 100 : 12;
                    for (int set = 0; set < 3; ++set) {
                        std::vector<Point> points;
                        for (int i = 0; i < 9; ++i) {
                            double const value = (i * 7 + set * 5) % 19 - 7.25;
                            points.push_back(lies ? Point{value, double(i)} : Point{double(i), value});
                        }
                        page.add(points, lies).BarLabels = labels;
                    }
                    page.arrange(static_cast<BarArranging>(arrangement), 0.9);
                    std::vector<Box> written;
                    for (auto const& [text, at] : page.labels()) {
                        const Box box{at.x, at.y, 100.0 * static_cast<double>(text.size()), 200};
                        CAPTURE(text);
                        CHECK((box.left >= 999 && box.right() <= 11001 && box.top >= 999
                               && box.bottom() <= 11001));
                        for (Box const& other : written)
                            CHECK_FALSE((box.left + 1 < other.right() && other.left + 1 < box.right()
                                         && box.top + 1 < other.bottom() && other.top + 1 < box.bottom()));
                        written.push_back(box);
                    }
                    // Bars that are narrower than texts have room for them at their ends alone.
                    if (labels == 2 || arrangement >= 2) CHECK(written.size() >= 8);
                }
}

TEST_CASE("labels tell the value of their bar, in a pattern, at its end, and contrast with it inside") {
    BarPage page;
    page.graph.Axes[0].AxisCategories = true;
    document::DataSet& set = page.add({{2, 3.25}, {4, 9.99}, {6, NAN}, {8, -2}});
    set.DataSymbolFill.Color1 = rgb(20, 20, 80);
    page.graph.LegendFontColor = rgb(1, 2, 3);
    page.graph.Axes[1].AxisValue1 = -5;
    page.arrange(BarArranging::Grouped, 0.9);
    CHECK(page.labels().empty());
    set.BarLabels = 2;
    auto const labels = page.labels();
    REQUIRE(labels.size() == 3);
    CHECK(labels[0].first == "3.25");
    CHECK(labels[0].second.y + 200 < 1000 + 10000.0 * (10 - 3.25) / 15); // above its bar
    CHECK(labels[1].second.y > 1000);                                    // no room above: inside
    CHECK(labels[2].second.y > 1000 + 10000.0 * 12 / 15);                // below the bar of -2
    CHECK(page.page().lines("text ")[0].find("#030201") != std::string::npos);
    CHECK(page.page().lines("text ")[1].find("#FFFFFF") != std::string::npos);
    set.BarLabelFormat = "0.0";
    CHECK(page.labels()[0].first == "3.3");
    set.DataSymbolFill.Color1 = rgb(250, 240, 90);
    set.BarLabels = 1;
    page.labels();
    CHECK(page.page().lines("text ")[0].find("#000000") != std::string::npos);
    page.graph.Axes[0].AxisValue2 = 10000; // bars of a pixel have no room for a label
    CHECK(page.labels().empty());
}
