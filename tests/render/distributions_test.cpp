#include "render/kinds/distributions.h"

#include "TestControl.h"
#include "render/data_sets.h"
#include "render/symbols.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace qv;
using namespace qv::render;
using document::DataSet;
using testing::TestControl;

namespace {

using Log = std::vector<std::string>;

/// Several lines of a log as one text, which a failing test shows.
std::string text(Log const& log) {
    std::string lines;
    for (std::string const& line : log) lines += line + "\n";
    return lines;
}
constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// Axes 0..10 on 10000 twips either way, from (1000, 11000) upwards.
struct Distribution : TestControl {
    document::Graph& graph = add_graph();

    DataSet& add(DataKind kind, std::vector<Point> const& points) {
        DataSet& set = add_data_set(graph, points);
        set.DataKind = static_cast<std::uint8_t>(kind);
        set.DataSymbolSize = 50;
        set.DataSymbolFill.Color1 = 0x0000FF;
        set.DataLineThickness = 1;
        return set;
    }
    DataSet& add_values(DataKind kind, std::vector<double> const& values, double x = 5) {
        std::vector<Point> points;
        for (double const value : values) points.push_back({x, value});
        return add(kind, points);
    }
    Log draw(std::string_view what) {
        page().log.clear();
        PlotDataSets(state, page());
        CHECK(events.errors.empty());
        return page().lines(what);
    }
    std::optional<std::size_t> item_at(Point place) {
        return series_kind(graph.DataSets[0])
            ->item_at(SeriesScope(state, graph, 0, SeriesScope::Maps::BeingDrawn).view(), place);
    }
    std::string facts(std::size_t item) {
        std::string text;
        for (Fact const& fact : series_kind(graph.DataSets[0])->item_facts(graph.DataSets[0], item))
            text += (text.empty() ? "" : ", ") + fact.name + " " + std::to_string(fact.value).substr(0, 5);
        return text;
    }
    void range(std::size_t axis, double from, double to) {
        for (double* const end : {&graph.Axes[axis].AxisValue1, &graph.Axes[axis].ScaleMin}) *end = from;
        for (double* const end : {&graph.Axes[axis].AxisValue2, &graph.Axes[axis].ScaleMax}) *end = to;
    }
};

} // namespace

TEST_CASE("a histogram draws bars from 0 over its bins, upright or lying, either way round") {
    Distribution page;
    DataSet& set = page.add_values(DataKind::Histogram, {1, 1.5, missing, 3, HUGE_VAL, 3.5, 3.7});
    set.histogram_edges = {1, 2, 3, 4};
    // Bins 1..2 with two values and 3..4 with three; nothing stands for the empty one.
    CHECK(text(page.draw("fill"))
          == text(Log{"fill 2000,9000 3000,11000 #0000FF w1", "fill 4000,8000 5000,11000 #0000FF w1"}));
    set.BarHoriz = true;
    CHECK(text(page.draw("fill"))
          == text(Log{"fill 1000,9000 3000,10000 #0000FF w1", "fill 1000,7000 4000,8000 #0000FF w1"}));
    set.BarHoriz = false;
    page.graph.Axes[0].AxisReverse = true;
    CHECK(page.draw("fill")[1] == "fill 7000,8000 8000,11000 #0000FF w1");
    page.graph.Axes[0].AxisReverse = false;
    page.range(0, 10, 0); // from high to low
    CHECK(page.draw("fill").size() == 2);
    page.range(0, 1, 100);
    page.graph.Axes[0].AxisLog = true;
    CHECK(page.draw("fill")[0] == "fill 1000,9000 2505.15,11000 #0000FF w1");
    set.DataSymbolFill.EdgeThickness = 1;
    CHECK(page.draw("box").size() == 2);
    set.DataSymbolFill.Transparent = true;
    CHECK(page.draw("fill").empty());
    page.range(0, 0, 10);
    page.graph.Axes[0].AxisLog = false;
    CHECK(text(page.draw("line"))
          == text(Log{"line 2000,11000 2000,9000 #000000 w1", "line 2000,9000 3000,9000 #000000 w1",
                      "line 3000,9000 3000,11000 #000000 w1", "line 4000,11000 4000,8000 #000000 w1",
                      "line 4000,8000 5000,8000 #000000 w1", "line 5000,8000 5000,11000 #000000 w1"}));
    page.range(0, 3.2, 3.3); // inside a bar
    CHECK(page.draw("line").size() == 3);
}

TEST_CASE("a histogram zoomed to anything costs what it shows") {
    Distribution page;
    std::vector<double> values;
    for (int i = 0; i < 20000; ++i) values.push_back(i / 2000.0);
    DataSet& set = page.add_values(DataKind::Histogram, values);
    set.HistogramBins = 10000;
    page.range(1, 0, 4);
    // More bins than pixels across: one bar for each column of pixels, without edges that would hide them.
    set.DataSymbolFill.EdgeThickness = 1;
    CHECK(page.draw("fill").size() <= 668);
    CHECK(page.draw("box").empty());
    page.range(0, 5, 5.0045);
    CHECK(page.draw("fill").size() >= 4);
    CHECK(page.draw("fill").size() <= 600);
    CHECK_FALSE(page.draw("box").empty());
    for (auto const& [from, to] : {std::pair{20.0, 30.0}, {-30.0, -20.0}}) {
        page.range(0, from, to);
        CHECK(page.draw("fill").size() <= 1); // the bar beside the plot area, which the clip cuts
    }
    page.range(0, 5, 5); // no range at all
    CHECK(page.draw("fill").empty());
}

TEST_CASE("bins are those of the points and properties there are now") {
    Distribution page;
    std::mt19937 random(3);
    DataSet& set = page.add_values(DataKind::Histogram, {});
    for (int round = 0; round < 200; ++round) {
        switch (random() % 6) {
        case 0: set.points.drop_oldest(random() % 20); break;
        case 1: set.HistogramBins = static_cast<std::int32_t>(random() % 7); break;
        case 2: set.HistogramBinWidth = static_cast<double>(random() % 3) / 2; break;
        case 3:
            set.histogram_edges = random() % 2 ? std::vector<double>{0, 2, 5} : std::vector<double>();
            break;
        default:
            for (auto more = random() % 40; more > 0; --more)
                set.points.append({0, static_cast<double>(random() % 1000) / 100, 0, {}});
        }
        Log const kept = page.draw("fill");
        set.derived.reset();
        CHECK(kept == page.draw("fill"));
    }
    // The same count of points, others.
    set.points.drop_oldest(set.points.size());
    set.histogram_edges = {0, 1, 2};
    for (int round = 0; round < 3; ++round) set.points.append({0, 0.5, 0, {}});
    CHECK(page.facts(0) == "from 0.000, to 1.000, count 3.000");
    for (int round = 0; round < 3; ++round) set.points.append({0, 1.5, 0, {}});
    set.points.drop_oldest(3);
    CHECK(page.facts(0) == "from 0.000, to 1.000, count 0.000");
    set.HistogramMeasure = 1;
    set.HistogramCumulative = true;
    CHECK(page.facts(1) == "from 1.000, to 2.000, count 3.000, cumulative share 1.000");
}

TEST_CASE("a bin is found on its bar, an empty or low one beside its base") {
    Distribution page;
    page.add_values(DataKind::Histogram, {1, 1.5, 3}).histogram_edges = {1, 2, 3, 4};
    CHECK(page.item_at({2500, 9500}) == 0);
    CHECK_FALSE(page.item_at({2500, 8000}));
    CHECK(page.item_at({3500, 10980}) == 1);
    CHECK_FALSE(page.item_at({3500, 10500}));
    CHECK(page.item_at({4000, 10500}) == 2); // from its lower edge on
    CHECK_FALSE(page.item_at({8000, 10990}));
}

TEST_CASE("a box shows quartiles, whiskers and outliers") {
    Distribution page;
    // Quartiles 2, 3, 4; whiskers 1 and 5, and 9 beyond 4 + 1.5 * 2.
    DataSet& set = page.add_values(DataKind::Boxes, {3, 1, missing, 2, 4, 3, 9, 2, 5, 2, 4});
    set.DataLineColor = 0x0000FF; // the face is paler
    CHECK(page.facts(0)
          == " 5.000, lower whisker 1.000, lower quartile 2.000, median 3.000, upper quartile 4.000, upper "
             "whisker "
             "5.000, count 10.00, outliers 1.000");
    CHECK(text(page.draw("line"))
          == text(Log{"line 6000,9000 6000,10000 #0000FF w1", "line 5875,10000 6125,10000 #0000FF w1",
                      "line 6000,7000 6000,6000 #0000FF w1", "line 5875,6000 6125,6000 #0000FF w1",
                      "line 5750,8000 6250,8000 #0000FF w2"}));
    CHECK(text(page.draw("box")) == text(Log{"box 5750,7000 6250,9000 #0000FF w1"}));
    REQUIRE(page.draw("fill").size() == 1);
    CHECK(page.draw("fill")[0].find("#0000FF") == std::string::npos);
    CHECK(page.draw("circle").size() == 1);
    CHECK(page.item_at({5800, 8000}) == 0);
    CHECK_FALSE(page.item_at({5600, 8000}));
    set.BoxWhiskers = 3;
    CHECK(page.draw("circle").empty());
    set.BoxNotches = true;
    CHECK(page.draw("polygon").size() == 2); // face and outline
    CHECK(page.draw("line")[4] == "line 5875,8000 6125,8000 #0000FF w2");
    set.BoxNotches = false;
    page.graph.Axes[1].AxisReverse = true;
    CHECK(text(page.draw("box")) == text(Log{"box 5750,3000 6250,5000 #0000FF w1"}));
}

TEST_CASE("boxes stand at each x and lie at each y, as wide as their neighbours let them") {
    Distribution page;
    DataSet& set =
        page.add(DataKind::Boxes, {{6, 4}, {2, 4}, {2, 6}, {4, 3}, {missing, 7}, {3, missing}, {4, 4}});
    CHECK(page.draw("box").size() == 3);
    CHECK(page.facts(0).starts_with(" 2.000, lower whisker 4.000"));
    CHECK(page.facts(2).ends_with("count 1.000, outliers 0.000"));
    CHECK(page.draw("box")[0] == "box 2500,5500 3500,6500 #000000 w1"); // half of the distance 2 wide
    set.GroupWidth = 1;
    CHECK(page.draw("box")[0] == "box 2000,5500 4000,6500 #000000 w1");
    set.BarHoriz = true; // y 3, 4 and 6; at 4 there are 2, 4 and 6
    CHECK(page.draw("box")[1] == "box 4000,6500 6000,7500 #000000 w1");
    set.BarHoriz = false;
    page.range(0, 1, 100);
    page.graph.Axes[0].AxisLog = true; // neighbours are apart by their ratio: 4 to 6 is the smallest
    auto const log = page.draw("box");
    REQUIRE(log.size() == 3);
    CHECK(log[0] == "box 2064.92,5500 2945.38,6500 #000000 w1");
    page.range(0, 20, 100);
    CHECK(page.draw("box").empty());
}

TEST_CASE("boxes of numbers that are given need their quartiles, not their whiskers") {
    Distribution page;
    DataSet& set = page.add(DataKind::Boxes, {});
    std::vector<double> const x{1, 2, 3, 4}, median{5, 5, 5, 5}, low{1, missing, 1, missing},
        lower{3, 3, missing, missing}, upper{6, 6, 6, missing}, high{9, 9, 9, missing};
    set.points.append(x, median, {}, {low, lower, upper, high});
    CHECK(page.draw("box").size() == 3); // at 4 a value alone
    CHECK(page.facts(0)
          == " 1.000, lower whisker 1.000, lower quartile 3.000, median 5.000, upper quartile 6.000, upper "
             "whisker 9.000");
    CHECK(page.facts(1)
          == " 2.000, lower quartile 3.000, median 5.000, upper quartile 6.000, upper whisker 9.000");
    CHECK(page.facts(2).ends_with("count 1.000, outliers 0.000"));
}

TEST_CASE("very many boxes are as many lines as there are columns of pixels") {
    Distribution page;
    std::vector<Point> points;
    for (int i = 0; i < 40000; ++i) points.push_back({(i / 2) / 2000.0, 3.0 + i % 2});
    page.add(DataKind::Boxes, points);
    CHECK(page.draw("fill").size() <= 668);
    CHECK(page.page().log.size() < 1000);
}

TEST_CASE("points of a strip stay within its width, where they are, and apart") {
    Distribution page;
    std::vector<Point> points(1000, Point{5, 5});
    DataSet& set = page.add(DataKind::Strip, points);
    set.GroupWidth = 1;
    auto const places = [&] {
        std::vector<double> found;
        for (std::size_t i = 0; i < set.points.size(); ++i) {
            const SeriesScope scope(page.state, page.graph, 0, SeriesScope::Maps::BeingDrawn);
            Box const box = strip_kind().item_box(scope.view(), i);
            found.push_back(box.left + box.width / 2);
        }
        return found;
    };
    auto const first = places();
    auto const [least, largest] = std::ranges::minmax(first);
    CHECK(least >= 5500);
    CHECK(least < 5520);
    CHECK(largest <= 6500);
    CHECK(largest > 6480);
    int in_quarter[4]{};
    for (double const place : first) ++in_quarter[std::min(3, static_cast<int>((place - 5500) / 250))];
    for (int const count : in_quarter) CHECK(std::abs(count - 250) < 50);
    set.points.drop_oldest(400); // the others keep their places
    CHECK(std::ranges::equal(places(), std::span(first).subspan(400)));
    set.GroupWidth = 0;
    CHECK(std::ranges::count(places(), 6000) == 600);
}

TEST_CASE("a strip draws and finds the points that have a place") {
    Distribution page;
    DataSet& set = page.add(DataKind::Strip,
                            {{2, 1}, {missing, 3}, {2, missing}, {4, 50}, {6, 7}, {8, -3}, {8, HUGE_VAL}});
    set.GroupWidth = 0;
    CHECK(page.draw("circle").size() == 2);
    CHECK(strip_kind().item_count(set) == 4);
    CHECK(page.item_at({7020, 4020}) == 2);
    CHECK(page.facts(2) == " 6.000,  7.000");
    set.BarHoriz = true;
    CHECK(page.item_at({7020, 4020}) == 2);
    page.range(1, 1, 100);
    page.graph.Axes[1].AxisLog = true;
    CHECK(page.draw("circle").size() == 3);
    set.DataSymbolFill.EdgeThickness = 1; // one by one
    CHECK(page.draw("circle").size() == 3);
    set.DataSymbol = symbol_number;
    CHECK(page.draw("print").size() + page.draw("text").size() == 3);
}
