#include "render/legend.h"

#include "TestControl.h"
#include "render/pipeline.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <functional>

using namespace qv;
using namespace qv::render;
using document::DataSet;
using qv::testing::TestControl;

namespace {

/// A graph in a frame of 8000 x 6000 twips at (2000, 1000), whose legend stands at (3000, 2000).
struct LegendPage : TestControl {
    document::Graph& graph = add_graph();

    LegendPage() {
        graph.FrameLeft = 2000;
        graph.FrameTop = 1000;
        graph.FrameWidth = 8000;
        graph.FrameHeight = 6000;
        LegendPosition(state, 0, 3000, 2000);
        graph.LegendFill.EdgeThickness = 0;
        graph.LegendFill.Transparent = true;
    }

    DataSet& add_row(std::string const& text, std::vector<Point> const& points = {}) {
        DataSet& set = add_data_set(graph, points);
        set.DataLegend = text;
        set.DataInLegendTable = true;
        return set;
    }

    /// What drawing the legend on the visible page writes to its log.
    std::vector<std::string> draw() {
        shown().log.clear();
        LegendTable(state, shown(), 0);
        return shown().log;
    }
};

std::ptrdiff_t place_of(std::vector<std::string> const& log, std::string_view start) {
    return std::ranges::find_if(log, [&](auto const& line) { return line.starts_with(start); }) - log.begin();
}

} // namespace

TEST_CASE("a row for each data set that is named, shown and listed; the widest text gives the width") {
    LegendPage page;
    page.add_row("four");
    page.add_row("");
    page.add_row("a hidden data set").DataHide = true;
    page.add_row("a data set not listed").DataInLegendTable = false;
    page.add_row("eight---");
    page.draw();
    CHECK(page.graph.LegendWidth == 800 + 1200);
    CHECK(page.graph.LegendHeight == 560);
    CHECK(page.shown().lines("text").size() == 2);
    CHECK(page.shown().has("text 4000,2080 \"four\" #000000 Arial 9"));
    CHECK(page.shown().has("text 4000,2280 \"eight---\" #000000 Arial 9"));
    CHECK(page.events.errors.empty());
}

TEST_CASE("a text of several lines takes as many rows") {
    LegendPage page;
    page.add_row("one\r\nanother");
    page.add_row("next").DataLineStyle = 1;
    page.draw();
    CHECK(page.graph.LegendWidth == 700 + 1200);
    CHECK(page.graph.LegendHeight == 760);
    CHECK(page.shown().has("text 4000,2280 \"another\" #000000 Arial 9"));
    CHECK(page.shown().has("text 4000,2480 \"next\" #000000 Arial 9"));
    CHECK(page.shown().lines("line 3450,2580 4050,2580").size() == 1);
}

TEST_CASE("a legend is moved inside the frame; one too large for it begins where the frame does") {
    struct {
        std::int32_t left, top;
        std::size_t rows, characters;
        std::int32_t drawn_left, drawn_top;
    } const table[]{
        {3000, 2000, 1, 8, 3000, 2000},
        {0, 0, 1, 8, 2000, 1000},
        {-2147483647, 2147483647, 1, 8, 2000, 7000 - 360},
        {10000, 7000, 2, 8, 10000 - 2000, 7000 - 560},
        {3000, 2000, 40, 8, 3000, 1000},
        {3000, 2000, 1, 69, 2000, 2000},
    };
    for (auto const& row : table) {
        CAPTURE(row.left);
        LegendPage page;
        for (std::size_t i = 0; i < row.rows; ++i) page.add_row(std::string(row.characters, 'x'));
        LegendPosition(page.state, 0, row.left, row.top);
        page.draw();
        CHECK(page.graph.LegendLeft == row.drawn_left);
        CHECK(page.graph.LegendTop == row.drawn_top);
        CHECK(page.events.errors.empty());
    }
}

TEST_CASE("without rows, or with texts too wide for the frame, there is no table and its size is 0") {
    LegendPage page;
    page.graph.LegendWidth = page.graph.LegendHeight = 99;
    page.graph.LegendFill.Transparent = false;
    SUBCASE("no row") {
        page.add_row("");
    }
    SUBCASE("10 millimetres beside the widest text are not enough") {
        page.add_row(std::string(70, 'x'));
    }
    page.draw();
    CHECK(page.graph.LegendWidth == 0);
    CHECK(page.graph.LegendHeight == 0);
    CHECK(page.shown().lines("clip").size() == page.shown().log.size());
}

TEST_CASE("fill, edge and rows lie on one another") {
    LegendPage page;
    page.graph.LegendFill = {
        .EdgeColor = 0x112233, .EdgeThickness = 3, .Color1 = 0xABCDEF, .Color2 = 0xABCDEF};
    page.graph.LegendFont = "Font=Courier New|12";
    page.graph.LegendFontColor = 0x00AA00;
    page.add_row("four");
    auto const log = page.draw();
    CHECK(page.shown().has("box 3000,2000 4600,2360 #112233 w3"));
    CHECK(page.shown().has("text 4000,2080 \"four\" #00AA00 Courier New 12"));
    auto const fill = place_of(log, "blit"), box = place_of(log, "box"), text = place_of(log, "text");
    CHECK(fill < box);
    CHECK(box < text);
    CHECK(page.shown().state.DrawWidth == 1);

    page.graph.LegendFill.EdgeThickness = 0;
    page.graph.LegendFill.Transparent = true;
    page.draw();
    CHECK(page.shown().lines("box").empty());
    CHECK(page.shown().lines("blit").empty());
    CHECK(page.shown().lines("text").size() == 1);
}

TEST_CASE("samples show the line, the symbol or both, as the data are drawn") {
    struct {
        std::string what;
        std::int16_t line, symbol;
        bool has_points;
        std::string samples;
    } const table[]{
        {"nothing", 0, 0, true, ""},
        {"a solid line", 1, 0, true, "line 3450,2180 4050,2180 #0000FF w2"},
        {"a dotted line", 2, 0, true, "line 3450,2180 4050,2180 #0000FF w2 dotted"},
        {"a smooth curve", 3, 0, true, "line 3450,2180 4050,2180 #0000FF w2"},
        {"another line", 9, 0, true, "line 3450,2180 4050,2180 #0000FF w2"},
        {"a line that is not drawn", -1, 0, true, ""},
        {"a circle", 0, 3, true, "circle 3750,2180 r60 pen #00FF00 w1 brush #00FF00"},
        {"a bar", 0, 1, true, "fill 3696,2030 3804,2330 #00FF00 w1"},
        {"a line without points", 1, 3, false, "line 3450,2180 4050,2180 #0000FF w2"},
        {"numbers", 0, -1, true, "text 3700,2080 \"1\" #00FF00 Arial 9"},
        {"letters", 0, -2, true, "text 3700,2080 \"A\" #00FF00 Arial 9"},
        {"a character", 0, 65, true, "text 3700,2080 \"A\" #00FF00 Arial 9"},
        {"a line through a circle", 1, 3, true,
         "line 3450,2180 4050,2180 #0000FF w2; "
         "circle 3750,2180 r60 pen #00FF00 w1 brush #00FF00"},
        {"an area with a symbol", 4, 3, true, "circle 3750,2180 r60 pen #00FF00 w1 brush #00FF00"},
        {"an area", 4, 0, true, "rectangle 246,141 255,150 pen #0000FF w2 brush #00FF00"},
        {"an area without points", 5, 0, false, ""},
    };
    for (auto const& row : table) {
        CAPTURE(row.what);
        LegendPage page;
        page.state.PointCounter = 27;
        DataSet& set = page.add_row("x", row.has_points ? std::vector<Point>{{1, 1}} : std::vector<Point>{});
        set.DataLineStyle = row.line;
        set.DataLineColor = 0x0000FF;
        set.DataLineThickness = 2;
        set.DataSymbol = row.symbol;
        set.DataSymbolSize = 60;
        set.DataSymbolFill.Color1 = 0x00FF00;
        std::string samples;
        for (std::string const& line : page.draw())
            if (!line.starts_with("clip") && line.find("\"x\"") == std::string::npos)
                samples += (samples.empty() ? "" : "; ") + line;
        CHECK(samples == row.samples);
        CHECK(page.shown().state.ForeColor == 0);
        CHECK(page.shown().state.draw_style == DrawStyle::Solid);
        CHECK(page.shown().state.fill_style == FillStyle::Transparent);
    }
}

TEST_CASE("an area without a symbol keeps the edge its sample got") {
    struct {
        std::int16_t thickness;
        int edge;
    } const table[]{{0, 1}, {-5, 1}, {7, 7}, {300, 255}};
    for (auto const& row : table) {
        LegendPage page;
        DataSet& set = page.add_row("area");
        set.DataLineStyle = 5;
        set.DataLineColor = 0x123456;
        set.DataLineThickness = row.thickness;
        page.draw();
        CHECK(set.DataSymbolFill.EdgeColor == 0x123456);
        CHECK(set.DataSymbolFill.EdgeThickness == row.edge);
        CHECK(set.DataSymbol == 0);
        CHECK(page.events.errors.empty());
    }
}

TEST_CASE("a sample's symbol is neither larger than its row nor too small to be seen") {
    struct {
        std::int16_t half_size;
        char const* circle;
    } const table[]{
        {1, "circle 3750,2180 r50"}, {60, "circle 3750,2180 r60"}, {32000, "circle 3750,2180 r67"}};
    for (auto const& row : table) {
        LegendPage page;
        DataSet& set = page.add_row("x", {{1, 1}});
        set.DataSymbol = 3;
        set.DataSymbolSize = row.half_size;
        page.draw();
        CHECK(page.shown().lines(row.circle).size() == 1);
        CHECK(set.DataSymbolSize == row.half_size);
    }
}

TEST_CASE("nothing is drawn of a legend that is not shown") {
    LegendPage page;
    page.add_row("four");
    page.graph.LegendShow = false;
    CHECK(page.draw().empty());
}

TEST_CASE("the legend is that of the graph asked for, whichever is current") {
    LegendPage page;
    page.add_row("first", {{1, 1}}).DataSymbol = 3;
    page.add_graph();
    REQUIRE(page.state.CurrentGraph == 1);
    page.draw();
    CHECK(page.shown().lines("circle").size() == 1);
    CHECK(page.state.CurrentGraph == 1);
    CHECK(page.events.errors.empty());

    LegendTable(page.state, page.shown(), 2);
    LegendPosition(page.state, -1, 0, 0);
    REQUIRE(page.events.errors.size() == 2);
    CHECK(page.events.errors[0].find("LegendTable") != std::string::npos);
    CHECK(page.events.errors[1].find("LegendPosition") != std::string::npos);
}

TEST_CASE("in front the legend covers the data, behind it the data cover the legend") {
    LegendPage page;
    page.graph.Axes[0].AxisHide = page.graph.Axes[1].AxisHide = true;
    page.add_row("data", {{1, 1}, {9, 9}}).DataLineStyle = 1;
    auto const& shown = page.shown();
    auto const redrawn = [&] {
        page.page().log.clear();
        page.shown().log.clear();
        Refresh(page.state);
    };
    redrawn();
    CHECK(page.page().lines("text 0,0 \"data\"").empty());
    CHECK(place_of(shown.log, "line") > place_of(shown.log, "text"));
    CHECK(shown.lines("line").size() == 1); // the sample's
    page.graph.LegendInFront = false;
    redrawn();
    auto const& composed = page.page();
    CHECK(shown.lines("text").empty());
    REQUIRE(composed.lines("line").size() == 2); // the sample's, then the data's
    auto const first = place_of(composed.log, "line");
    auto const name = std::ranges::find_if(
        composed.log, [](auto const& line) { return line.find("\"data\"") != std::string::npos; });
    CHECK(name - composed.log.begin() < first);
    CHECK(composed.log[static_cast<std::size_t>(first)] != composed.lines("line")[1]);
}

TEST_CASE("a handler may take the data or the graph away while the legend is drawn") {
    struct Handler : qv::testing::EventLog {
        std::function<void()> act;
        void ErrorMsg(std::string& Source, std::string& Description) override {
            EventLog::ErrorMsg(Source, Description);
            if (errors.size() == calls_before_acting) act();
        }
        std::size_t calls_before_acting = 1;
    };
    for (std::size_t const calls : {1U, 2U, 3U})
        for (bool const whole_graph : {false, true}) {
            LegendPage page;
            Handler handler;
            handler.calls_before_acting = calls;
            handler.act = [&] {
                page.graph.DataSets.clear();
                if (!whole_graph) return;
                page.state.discarded_graphs = std::move(page.state.Graphs);
                page.state.Graphs.clear();
            };
            page.state.events = &handler;
            page.graph.LegendFont = "Font=Arial|99999"; // a size beyond its field is reported
            for (int i = 0; i < 3; ++i) page.add_row("row", {{1, 1}}).DataSymbol = 3;
            CHECK_NOTHROW(LegendTable(page.state, page.shown(), 0));
            CHECK(handler.errors.size() >= calls);
        }
}

TEST_CASE("the sample of a function is the line that the function is drawn with") {
    struct {
        std::int16_t line;
        bool has_points;
        std::string pen; // of the sample; empty: there is none
    } const table[]{{0, false, ""},           {1, false, "w2"},        {2, false, "w2 dotted"},
                    {3, false, "w2 dotted"},  {4, false, "w2 dotted"}, {5, false, "w2 dotted"},
                    {-1, false, "w2 dotted"}, {9, false, "w2 dotted"}, {3, true, "w2"},
                    {4, true, "w2 dotted"}};
    for (auto const& row : table) {
        CAPTURE(row.line);
        CAPTURE(row.has_points);
        LegendPage page;
        DataSet& set = page.add_row("x", row.has_points ? std::vector<Point>{{1, 1}} : std::vector<Point>{});
        set.MathFunc = "x";
        set.DataLineStyle = row.line;
        set.DataLineThickness = 2;
        page.draw();
        auto const lines = page.shown().lines("line 3450,2180 4050,2180");
        REQUIRE(lines.size() == (row.pen.empty() ? 0 : 1));
        if (!lines.empty()) CHECK(lines[0].ends_with("#000000 " + row.pen));
    }
}
