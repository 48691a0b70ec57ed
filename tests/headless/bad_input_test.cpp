// Values far out of range, through the public members onto real pixels: no crash, no hang, the page still
// drawn, and no complaint but the stated ones.
#include "control/state_of.h"
#include "qvgraph/HeadlessHost.h"

#include <doctest/doctest.h>

#include <cmath>
#include <ctime>
#include <functional>
#include <limits>
#include <string>
#include <vector>

using namespace qv;
using headless::HeadlessHost;

namespace {

constexpr double huge = 1e300;
constexpr double infinite = std::numeric_limits<double>::infinity();
double const no_number = std::nan("");

struct Complaints : host::EventSink {
    std::vector<std::string> sources;
    void ErrorMsg(std::string& Source, std::string&) override { sources.push_back(Source); }
};

struct BadPage {
    HeadlessHost host{{320, 240}};
    Complaints complaints;
    qvGraph& page = host.control();

    BadPage() {
        page.set_events(&complaints);
        page.NewGraph("graph");
        page.NewDataSet("data");
        page.DataLine({});
    }
};

} // namespace

TEST_CASE("ranges of zero width, enormous ones, reversed and not finite") {
    struct Range {
        double low, high;
    };
    for (auto const& [low, high] :
         {Range{5, 5}, Range{0, 0}, Range{-huge, huge}, Range{huge, huge}, Range{10, 0}, Range{1, 1 + 1e-15},
          Range{1e-300, 2e-300}, Range{-1, 1e-12}, Range{no_number, 1}, Range{0, infinite},
          Range{-infinite, infinite}, Range{1e15, 1e15 + 1}})
        for (bool const is_log : {false, true})
            for (int const mode : {0, 1, 2}) {
                CAPTURE(low);
                CAPTURE(high);
                CAPTURE(is_log);
                CAPTURE(mode);
                BadPage bad;
                for (double const x : {low, high, 0.0, 1.0, -1.0}) bad.page.AddDataPoint(x, x, x);
                for (int const axis : {0, 1}) {
                    bad.page.SetSelectedAxis(axis);
                    bad.page.AxisLog(is_log);
                    bad.page.AxisGridStyle({});
                    if (mode > 0) bad.page.AxisScaleStyle({low, high, 5, 5, mode, mode == 2 ? "a,b,c" : ""});
                }
                bad.page.Refresh();
                CHECK(bad.host.times_shown() == 1);
                for (auto const& source : bad.complaints.sources) CHECK(source.ends_with(", AutoScale"));
            }
}

TEST_CASE("points of any size, with every symbol and line style") {
    std::vector<double> const values{0,     -0.0,     1,         -1,        1e-300, huge,
                                     -huge, infinite, -infinite, no_number, 1e9};
    for (int symbol = -3; symbol <= 14; ++symbol) {
        CAPTURE(symbol);
        BadPage bad;
        bad.page.DataSymbol(symbol);
        bad.page.DataSymbolSize(100);
        bad.page.DataLineStyle(symbol % 3);
        for (double const x : values)
            for (double const y : values) bad.page.AddDataPoint(x, y, y, 0, "id");
        for (int const axis : {0, 1}) {
            bad.page.SetSelectedAxis(axis);
            bad.page.AxisScaleStyle({0, 10, 5, 5});
        }
        for (bool const option : {false, true}) {
            bad.page.Bar3D(option);
            bad.page.BarHoriz(option);
            bad.page.BarShadow(option);
            bad.page.BarStacked(option);
            bad.page.BarOffset(option ? 1e30F : 0);
            bad.page.Refresh();
        }
        CHECK(bad.complaints.sources.empty());
    }
}

TEST_CASE("sizes of zero or less, and margins that leave nothing") {
    BadPage bad;
    bad.page.AddDataPoint(1, 1);
    for (float const size : {0.0F, -50.0F, 0.001F, 10000.0F}) {
        bad.page.GraphPosition({size, size, size, size});
        bad.page.BorderWidths({size * 10, size * 10, size * 10, size * 10});
        bad.page.Refresh();
    }
    for (PixelSize const size : {PixelSize{0, 0}, PixelSize{-5, 10}, PixelSize{1, 1}, PixelSize{320, 240}})
        bad.host.resize_picture(size);
    CHECK(bad.complaints.sources == std::vector<std::string>());
    CHECK(bad.host.picture().width() == 320);
}

TEST_CASE("margins that are no number or endless are refused, and the page still draws") {
    for (float const margin : {std::numeric_limits<float>::quiet_NaN(),
                               std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max()}) {
        BadPage bad;
        bad.page.AddDataPoint(1, 1);
        CHECK_THROWS_AS(bad.page.PlotLeftMargin(margin), Fault);
        bad.page.BorderWidths({.Top = margin});
        CHECK(bad.complaints.sources
              == std::vector<std::string>{"Error 6 has occured in qvGraph.ocx, BorderWidths"});
        bad.page.GraphTitleVShift(margin);
        bad.page.Refresh();
        CHECK(bad.host.times_shown() == 1);
    }
}

TEST_CASE("a handler may change what is being drawn") {
    // Each event does one of these things to the document that the drawing is in the middle of.
    std::vector<std::function<void(qvGraph&)>> const deeds{
        [](qvGraph& page) { page.Reset(); },
        [](qvGraph& page) { page.NewGraph("another"); },
        [](qvGraph& page) { page.AddDataPoint(2, 2, 1, 0, "late"); },
        [](qvGraph& page) { page.DropDataPoints(50); },
        [](qvGraph& page) {
            page.AxisLabelFont("Font=Liberation Serif|12, in a text too long to be kept in place");
        },
        [](qvGraph& page) { page.GraphTitleStyle({.Title = "another title, too long to be kept in place"}); },
        [](qvGraph& page) { page.NewXAxis("more", 0, 1); },
        [](qvGraph& page) { page.SetSelectedGraph(0); },
        [](qvGraph& page) { page.Refresh(); },
    };
    struct Meddler : host::EventSink {
        qvGraph* page = nullptr;
        std::function<void(qvGraph&)> deed;
        int times = 0;
        void meddle() {
            if (page && ++times < 1000) deed(*page);
        }
        void GraphScaleChanged() override { meddle(); }
        void ErrorMsg(std::string&, std::string&) override { meddle(); }
    };
    for (std::size_t i = 0; i < deeds.size(); ++i) {
        CAPTURE(i);
        Meddler meddler;
        HeadlessHost host({320, 240});
        qvGraph& page = host.control();
        for (int graph = 0; graph < 2; ++graph) {
            page.NewGraph("a title that is too long to be kept in place");
            page.GraphTitleFont("Font=Arial|99999");
            page.NewXAxis("second", 0, 5);
            page.SetSelectedAxis(1);
            page.AxisLabelFont("Font=Arial|99999|and text too long to be kept in place");
            for (int set = 0; set < 2; ++set) {
                page.NewDataSet("data");
                page.DataSymbol(set == 0 ? -1 : 1);
                page.DataTextFont("Font=Arial|99999|and text too long to be kept in place");
                for (int point = 0; point < 40; ++point)
                    page.AddDataPoint(point, point, 1, 0, "an identifying text");
            }
        }
        meddler.page = &page;
        meddler.deed = deeds[i];
        page.set_events(&meddler);
        page.Refresh();
        CHECK(meddler.times > 0);
        CHECK_FALSE(control::state_of(page).Refreshing);
        CHECK(page.GraphIndex() <= std::max(0, control::state_of(page).NumGraphs() - 1));
        page.set_events(nullptr);
        page.Refresh();
    }
}

TEST_CASE("angles, thicknesses, fonts and texts out of range") {
    BadPage bad;
    bad.page.AddDataPoint(1, 1);
    bad.page.AddDataPoint(2, 2);
    bad.page.AxisLabelsHoriz(-32768);
    bad.page.AxisTickLength(500);
    bad.page.AxisThickness(255);
    bad.page.AxisTickThickness(255);
    bad.page.AxisTitleShift(1e30F);
    bad.page.AxisLabelShift(-1e30F);
    bad.page.AxisTitleFont("Font=No Such Font|32767|Bold|Italic");
    bad.page.AxisTitle(std::string(100000, 'W') + "\xFF\xC0\x80\0tail");
    bad.page.AddText("turned", 50, 50, 255, "|||#|Font=", -1, -32768, true);
    bad.page.Refresh();
    CHECK(bad.host.times_shown() == 1);
    for (auto const& source : bad.complaints.sources) {
        CAPTURE(source);
        CHECK(source.starts_with("Error 6 has occured in "));
    }
}

TEST_CASE("as many divisions as fit draw in well under a second") {
    BadPage bad;
    bad.page.AddDataPoint(1, 1);
    for (int const axis : {0, 1}) {
        bad.page.SetSelectedAxis(axis);
        bad.page.AxisScaleStyle({0, 10, 32767, 32767});
        bad.page.AxisGridStyle({});
    }
    std::clock_t const start = std::clock();
    bad.page.Refresh();
    double const seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC; // of our own work
#ifdef NDEBUG
    CHECK(seconds < 1);
#else
    CHECK(seconds < 60); // with sanitizers
#endif
}

TEST_CASE("thousands of graphs and a million points draw") {
    BadPage bad;
    std::vector<double> x(1000000), y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<double>(i);
        y[i] = std::sin(x[i]);
    }
    bad.page.AddDataPoints(x, y);
    for (int i = 0; i < 3000; ++i) {
        bad.page.NewGraph("small");
        bad.page.GraphPosition({static_cast<float>(i % 60), static_cast<float>(i / 60), 2, 2});
        bad.page.GraphInclude(i % 100 == 0);
    }
    bad.page.Refresh();
    CHECK(bad.host.times_shown() == 1);
    CHECK(bad.complaints.sources.empty());
}
