#include "render/data_sets.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <cmath>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

struct DataPage : TestControl {
    document::Graph& graph = add_graph();

    std::vector<std::string> draw() {
        page().log.clear();
        PlotDataSets(state, page());
        return page().log;
    }
};

} // namespace

TEST_CASE("line styles: none, solid, dotted; other positive ones are solid") {
    DataPage page;
    document::DataSet& set = page.add_data_set(page.graph, {{0, 0}, {10, 10}});
    struct Row {
        std::int16_t style;
        char const* line;
    };
    for (auto const& [style, line] :
         {Row{0, nullptr}, Row{-1, nullptr}, Row{1, "line 1000,11000 11000,1000 #0000FF w3"},
          Row{2, "line 1000,11000 11000,1000 #0000FF w3 dotted"},
          Row{9, "line 1000,11000 11000,1000 #0000FF w3"}}) {
        CAPTURE(style);
        set.DataLineStyle = style;
        set.DataLineColor = 0x0000FF;
        set.DataLineThickness = 3;
        page.draw();
        CHECK(page.page().lines("line").size() == (line ? 1 : 0));
        if (line) CHECK(page.page().has(line));
    }
}

TEST_CASE("drawing is clipped to the plot area and then to the frame; hidden sets draw nothing") {
    DataPage page;
    document::DataSet& set = page.add_data_set(page.graph, {{5, 5}});
    set.DataSymbol = 3;
    set.DataText = "note";
    auto log = page.draw();
    CHECK(log.front() == "clip 1000,1000 11000,11000");
    CHECK(log.back() == "clip 0,0 15000,12000");
    CHECK(log.size() == 4);
    set.DataHide = true;
    CHECK(page.draw().size() == 2);
}

TEST_CASE("plain symbols drawn as a batch look like symbols drawn one by one") {
    DataPage page;
    document::DataSet& set =
        page.add_data_set(page.graph, {{1, 1}, {10.02, 5}, {3.3333, 7.7777}, {std::nan(""), 1}});
    set.DataSymbolSize = 60;
    for (std::int16_t symbol = 2; symbol <= 11; ++symbol) {
        CAPTURE(symbol);
        set.DataSymbol = symbol;
        set.ShowErrorBar = false;
        auto const batch = page.draw();
        // An error of zero draws nothing but takes the set off the batch path.
        set.ShowErrorBar = true;
        document::PointStore with_error;
        for (std::size_t i = 0; i < set.points.size(); ++i) with_error.append(set.points.at(i));
        with_error.append({1e9, 0, 1, {}});
        std::swap(set.points, with_error);
        CHECK(page.draw() == batch);
        std::swap(set.points, with_error);
    }
}

TEST_CASE("points are mapped through the data set's own axes, which are put back") {
    DataPage page;
    document::Axis second = page.graph.Axes[1];
    second.AxisValue2 = 100;
    page.graph.Axes.push_back(second);
    document::DataSet& set = page.add_data_set(page.graph, {{5, 50}});
    set.yAxisIndex = 2;
    set.DataSymbol = 2;
    page.draw();
    CHECK(page.page().has("dot 6000,6000 #000000"));
    CHECK(page.graph.SelectedYAxis == 1);
    // An axis that is not there is reported, and the selection is put back all the same.
    set.yAxisIndex = 7;
    page.draw();
    CHECK(page.events.errors.size() == 1);
    CHECK(page.graph.SelectedYAxis == 1);
}

TEST_CASE("points are numbered within their data set") {
    DataPage page;
    for (int i = 0; i < 2; ++i) page.add_data_set(page.graph, {{1, 1}, {2, 2}}).DataSymbol = -1;
    page.draw();
    auto const texts = page.page().lines("text");
    REQUIRE(texts.size() == 4);
    CHECK(texts[1].find("\"2\"") != std::string::npos);
    CHECK(texts[2].find("\"1\"") != std::string::npos);
}

TEST_CASE("data texts: percent of the plot area from the bottom, or data values; also without points") {
    DataPage page;
    document::DataSet& set = page.add_data_set(page.graph, {});
    set.DataText = "T";
    set.DataTextX = 25;
    set.DataTextY = 25;
    set.DataTextPercent = true;
    page.draw();
    CHECK(page.page().has("text 3500,8500 \"T\" #000000 Arial 9"));
    set.DataTextPercent = false;
    set.DataTextX = set.DataTextY = 5;
    set.DataTextOri = 4;
    page.draw();
    CHECK(page.page().has("text 5950,5900 \"T\" #000000 Arial 9"));
    set.DataTextOri = 8;
    page.draw();
    CHECK(page.page().has("text 5900,5800 \"T\" #000000 Arial 9"));
}
