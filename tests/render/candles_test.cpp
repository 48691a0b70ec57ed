// Candles. The plot area is 10000 twips wide and high at (1000, 1000), a pixel is 15 twips.
#include "render/kinds/candles.h"

#include "TestControl.h"
#include "render/data_sets.h"
#include "surface/whole_pixel.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <map>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr Color green = 0x00FF00, red = 0x0000FF;

struct Prices {
    double x, open, high, low, close, volume = none;
};

struct CandlePage : TestControl {
    document::Graph& graph = add_graph();
    document::DataSet& set = add_data_set(graph, {});

    CandlePage() {
        set.DataKind = static_cast<std::uint8_t>(DataKind::Candles);
        set.CandleRisingColor = green;
        set.CandleFallingColor = red;
    }
    void add(std::vector<Prices> const& candles) {
        std::vector<double> x, close, open, high, low, volume;
        for (Prices const& one : candles) {
            x.push_back(one.x), close.push_back(one.close), open.push_back(one.open);
            high.push_back(one.high), low.push_back(one.low), volume.push_back(one.volume);
        }
        set.points.append(x, close, {}, {open, high, low, volume});
    }
    std::vector<std::string> draw() {
        page().log.clear();
        PlotDataSets(state, page());
        std::vector<std::string> lines;
        for (std::string const& line : page().log)
            if (!line.starts_with("clip")) lines.push_back(line);
        return lines;
    }
    CandleKind const kind;
    std::optional<std::size_t> at(Point place) {
        const SeriesScope scope(state, graph, 0, SeriesScope::Maps::BeingDrawn);
        return kind.item_at(scope.view(), place);
    }
    Box box(std::size_t item) {
        const SeriesScope scope(state, graph, 0, SeriesScope::Maps::BeingDrawn);
        return kind.item_box(scope.view(), item);
    }
    std::vector<std::string> facts(std::size_t item) const {
        std::vector<std::string> texts;
        for (Fact const& fact : kind.item_facts(set, item))
            texts.push_back(fact.of == Fact::Of::Text ? fact.text : fact.name + std::to_string(fact.value));
        return texts;
    }
};

} // namespace

TEST_CASE("a candle is a wick and a body in the colour of its way, or a bar with two ticks") {
    CandlePage page;
    page.add({{2, 3, 6, 1, 5}, {4, 5, 5, 2, 2}});
    // Two units of 1000 twips are a candle's room; 46 of its 133 pixels lie beside the middle one either way.
    CHECK(page.draw()
          == std::vector<std::string>{
              "line 3000,5000 3000,10000 #00FF00 w1", "fill 2310,8000 3690,6000 #00FF00 w1",
              "line 4995,6000 4995,9000 #0000FF w1", "fill 4305,6000 5685,9000 #0000FF w1"});
    page.set.CandleStyle = 1;
    auto const bars = page.draw();
    CHECK(bars.size() == 6);
    CHECK(bars[1] == "line 2310,8000 3000,8000 #00FF00 w1"); // open at the left
    CHECK(bars[2] == "line 3000,6000 3690,6000 #00FF00 w1"); // close at the right
}

TEST_CASE("what is missing of a candle follows from the rest, and without a close there is none") {
    CandlePage page;
    page.graph.Axes[0].AxisCategories = true;
    page.add({{1, none, none, none, 4},
              {2, 3, 6, 1, none},
              {none, 3, 6, 1, 4},
              {4, 6, none, none, 3},
              {5, 3, 6, 1, INFINITY}});
    auto const drawn = page.draw();
    REQUIRE(drawn.size() == 4);
    CHECK(drawn[0] == "line 1995,7000 1995,7000 #00FF00 w1");
    CHECK(drawn[2] == "line 4995,5000 4995,8000 #0000FF w1");
    CHECK(page.facts(0) == std::vector<std::string>{"1.000000", "C4.000000"});
    CHECK(page.facts(1).back() == "no candle");
    CHECK_FALSE(is_finite(page.box(1)));
    CHECK_FALSE(page.at({3000, 7000}));
    CHECK(page.at({5000, 6000}) == 3);
}

TEST_CASE("pointing at a candle finds it, and its facts are told") {
    CandlePage page;
    page.add({{2, 3, 6, 1, 5, 1234}, {3, 5, 5, 2, 2}});
    CHECK(page.at({3010, 5050}) == 0); // at its wick
    CHECK(page.at({4000, 8500}) == 1);
    CHECK_FALSE(page.at({3000, 4000})); // above it
    CHECK_FALSE(page.at({8000, 7000}));
    CHECK(page.facts(0)
          == std::vector<std::string>{"2.000000", "O3.000000", "H6.000000", "L1.000000", "C5.000000",
                                      "V1234.000000"});
}

TEST_CASE("logarithmic and reversed axes, and axes from high to low") {
    CandlePage page;
    page.add({{1, 1, 100, 1, 10}, {10, 10, 100, 0, 1}});
    for (document::Axis& axis : page.graph.Axes) {
        axis.AxisLog = true;
        axis.AxisValue1 = 0.1;
        axis.AxisValue2 = 1000;
    }
    auto const drawn = page.draw();
    REQUIRE(drawn.size() == 4);
    CHECK(drawn[0] == "line 3495,3500 3495,8500 #00FF00 w1");
    CHECK(drawn[2].starts_with("line 6000,3500 6000,")); // a low of 0 leads out of the plot area
    CHECK(page.box(0).width == doctest::Approx(0.7 * 2500));
    for (document::Axis& axis : page.graph.Axes) axis.AxisReverse = true;
    CHECK(page.draw()[0] == "line 8505,8500 8505,3500 #00FF00 w1");
    CHECK(page.at({8500, 5000}) == 0);
    for (document::Axis& axis : page.graph.Axes) std::swap(axis.AxisValue1, axis.AxisValue2);
    CHECK(page.draw()[0] == "line 3495,3500 3495,8500 #00FF00 w1");
}

TEST_CASE("candles narrower than pixels are joined column by column; what is not seen costs nothing") {
    CandlePage page;
    std::vector<Prices> candles;
    double price = 50;
    unsigned seed = 1;
    for (int i = 0; i < 40000; ++i) {
        seed = seed * 1664525 + 1013904223;
        double const open = price, step = static_cast<double>(seed >> 20) / 2048 - 1;
        price = std::clamp(price + step, 10.0, 90.0);
        candles.push_back({double(i), open, std::max(open, price) + 0.3, std::min(open, price) - 0.2, price});
    }
    page.add(candles);
    page.graph.Axes[0].AxisValue2 = 40000;
    page.graph.Axes[1].AxisValue2 = 100;
    struct Column {
        double high = 0, low = 100, open = 0, close = 0;
        int count = 0;
    };
    std::map<int, Column> columns;
    for (Prices const& one : candles) {
        Column& column = columns[whole_pixel((1000 + one.x / 4) / 15)];
        if (column.count++ == 0) column.open = one.open;
        column.high = std::max(column.high, one.high);
        column.low = std::min(column.low, one.low);
        column.close = one.close;
    }
    auto const drawn = page.draw();
    REQUIRE(drawn.size() == columns.size());
    std::size_t i = 0;
    for (auto const& [number, column] : columns) {
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        REQUIRE(std::sscanf(drawn[i].c_str(), "fill %lf,%lf %lf,%lf", &x1, &y1, &x2, &y2) == 4);
        CHECK(x1 == number * 15);
        CHECK(x2 == x1);
        CHECK(std::abs(y1 - (11000 - column.high * 100)) < 0.51);
        CHECK(std::abs(y2 - (11000 - column.low * 100)) < 0.51);
        CHECK((drawn[i].find("#00FF00") != std::string::npos) == (column.close >= column.open));
        ++i;
    }
    page.graph.Axes[0].AxisValue1 = 20000;
    page.graph.Axes[0].AxisValue2 = 20010;
    CHECK(page.draw().size() <= 2 * 13); // those in sight and their neighbours
    page.graph.Axes[0].AxisValue1 = 1e9;
    page.graph.Axes[0].AxisValue2 = 2e9;
    CHECK(page.draw().empty());
    page.graph.Axes[0].AxisValue2 = 1e9; // no range
    CHECK(page.draw().empty());
}

TEST_CASE(
    "axes reach to the highest and lowest price, volumes stand in the lower third on an axis of their own") {
    CandlePage page;
    page.add({{1, 3, 8, 2.5, 5, 600}, {2, 5, 6, 1, 2, 900}, {3, 2, none, none, 3, none}});
    document::Axis& volume = page.graph.Axes.emplace_back();
    ResetAxis(page.state, volume, "volume", document::AxisKind::Y, 0, 2700);
    volume.AxisLength = 10000;
    page.set.CandleVolumeAxis = 2;
    CHECK(page.kind.third_axis(page.graph, page.set) == 2);
    auto const reaches = reaches_of_points(page.state, page.graph);
    CHECK(reaches[0].extent == document::Extent{0.5, 3.5});
    CHECK(reaches[1].extent == document::Extent{1, 8});
    CHECK(reaches[1].room_low == doctest::Approx(1.0 / 3));
    CHECK(reaches[2].extent == document::Extent{0, 900});
    CHECK(reaches[2].room_high == doctest::Approx(2.0 / 3));
    auto const drawn = page.draw();
    REQUIRE(drawn.size() == 2 + 6);
    CHECK(drawn[1].starts_with("fill 2670,11000 3330,766"));
    page.add({{3.5, 3, 20, none, 5, 1200}}); // what comes later is taken in
    auto const later = reaches_of_points(page.state, page.graph);
    CHECK(later[0].extent == document::Extent{0.75, 3.75});
    CHECK(later[1].extent == document::Extent{1, 20});
    CHECK(later[2].extent.high == 1200);
    page.set.points.drop_oldest(2); // and what went is forgotten
    CHECK(reaches_of_points(page.state, page.graph)[2].extent == document::Extent{0, 1200});
    CHECK(reaches_of_points(page.state, page.graph)[1].extent == document::Extent{2, 20});
    page.set.points.drop_oldest(1);
    page.set.CandleVolumeAxis = 3; // there is none
    CHECK(page.kind.third_axis(page.graph, page.set) == -1);
    CHECK(page.draw().size() == 2);
}
