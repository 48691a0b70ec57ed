#include "control/state_of.h"
#include "qvplot/page.h"

#include "document/selection.h"
#include "qvgraph/HeadlessHost.h"
#include "qvgraph/looks.h"
#include "qvplot/report.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

using namespace qv;
using namespace qv::plot;

namespace {

PlotData waves(std::size_t count, bool dates) {
    PlotData data{"the x column", dates, {}};
    for (std::size_t i = 0; i < count; ++i) {
        Series series{"column " + std::to_string(i), {}, {}, i % 2 == 1};
        for (int k = 0; k <= 300; ++k) {
            series.x.push_back(dates ? 1.26e9 + 86400.0 * k : 10.0 + k);
            series.y.push_back(1000 * (1.1 + std::sin(k / 20.0 + static_cast<double>(i))));
        }
        data.series.push_back(series);
    }
    return data;
}

PlotOptions sized(PixelSize size) {
    PlotOptions options;
    options.size = size;
    options.title = "A title";
    return options;
}

struct DrawnPage {
    headless::HeadlessHost host;
    FirstError errors;
    DrawnPage(PlotData const& data, PlotOptions const& options) : host(options.size) {
        host.control().set_events(&errors);
        draw_page(host.control(), data, options);
    }
    std::uint32_t pixel(int x, int y) const {
        return host.picture().pixels()[static_cast<std::size_t>(y * host.picture().stride() + x)] & 0xFFFFFF;
    }
    document::Graph const& graph() { return document::current_graph(control::state_of(host.control())); }

    /// The legend's pixels, its edge included.
    struct Pixels {
        int left, top, right, bottom;
    };
    Pixels legend() {
        auto const pixel_of = [](std::int32_t twips) { return static_cast<int>(std::lround(twips / 15.0)); };
        return {pixel_of(graph().LegendLeft), pixel_of(graph().LegendTop),
                pixel_of(graph().LegendLeft + graph().LegendWidth),
                pixel_of(graph().LegendTop + graph().LegendHeight)};
    }
};

// 0 and 1 by turns, a hundred times from 0 to 1.
double zigzag(double x) {
    return static_cast<double>(std::lround(100 * x) % 2);
}

// Two columns whose values are in 0..1, at x from 0 to 1.
PlotData columns_of(double (*value)(double x)) {
    PlotData data{"x", false, {{"a column", {}, {}, false}, {"another", {}, {}, false}}};
    for (int k = 0; k <= 100; ++k)
        for (Series& series : data.series) {
            series.x.push_back(k / 100.0);
            series.y.push_back(value(k / 100.0));
        }
    return data;
}

} // namespace

TEST_CASE("nothing touches the page's edge, and every column's colour is on the page") {
    for (const PixelSize size : {PixelSize{1200, 800}, PixelSize{400, 300}})
        for (int kind = 0; kind < 16; ++kind) {
            PlotOptions options = sized(size);
            bool const dates = (kind & 1) != 0;
            options.bars = (kind & 2) != 0;
            options.symbols = !options.bars && (kind & 4) != 0;
            options.log = {.x = !dates && kind % 4 == 0, .y = (kind & 8) != 0, .y2 = (kind & 4) != 0};
            CAPTURE(size.width);
            CAPTURE(kind);
            const PlotData data = waves(5, dates);
            const DrawnPage page(data, options);
            CHECK_NOTHROW(page.errors.raise());
            int marked = 0;
            for (int x = 0; x < size.width; ++x)
                for (int y : {0, 1, size.height - 2, size.height - 1}) marked += page.pixel(x, y) != 0xFFFFFF;
            for (int y = 0; y < size.height; ++y)
                for (int x : {0, 1, size.width - 2, size.width - 1}) marked += page.pixel(x, y) != 0xFFFFFF;
            CHECK(marked == 0);
            if (size.width < 1000) continue; // slanted lines of one pixel have paler pixels only
            for (std::size_t i = 0; i < data.series.size(); ++i) {
                const Color color = look("light").palette[i];
                auto const bgr =
                    static_cast<std::uint32_t>((color & 0xFF) << 16 | (color & 0xFF00) | color >> 16);
                bool seen = false;
                for (int y = 0; y < size.height && !seen; ++y)
                    for (int x = 0; x < size.width && !seen; ++x) seen = page.pixel(x, y) == bgr;
                CHECK(seen);
            }
        }
}

TEST_CASE("columns go to their axes, with titles that say which is which") {
    DrawnPage page(waves(3, false), sized({800, 600}));
    auto const& graph = page.graph();
    REQUIRE(graph.Axes.size() == 3);
    CHECK(graph.Axes[0].AxisTitle == "the x column");
    CHECK(graph.Axes[1].AxisTitle == "column 0, column 2");
    CHECK(graph.Axes[2].AxisTitle == "column 1");
    CHECK(graph.Axes[2].AxisFarSide);
    CHECK(graph.DataSets[0].yAxisIndex == 1);
    CHECK(graph.DataSets[1].yAxisIndex == 2);
    // Five hundredths of the values are free at either end.
    CHECK(graph.Axes[1].AxisValue1 == doctest::Approx(0).epsilon(0.01).scale(2000));
    CHECK(graph.Axes[1].AxisValue2 >= 2100);
}

TEST_CASE("bars of several columns stand side by side without touching the next") {
    PlotOptions options = sized({1000, 500});
    options.bars = options.no_legend = true;
    PlotData data{"x", false, {{"a", {1, 2, 3}, {5, 5, 5}, false}, {"b", {1, 2, 3}, {5, 5, 5}, false}}};
    DrawnPage page(data, options);
    // Across the middle of the bars: three times one colour beside the other, with page between them.
    std::string runs;
    std::uint32_t before = 0;
    for (int x = 0; x < 1000; ++x) {
        std::uint32_t const color = page.pixel(x, 300);
        if (color != before && (color == 0x0B6BCB || color == 0xF57510))
            runs += color == 0x0B6BCB ? 'a' : 'b';
        if (color == 0xFFFFFF && !runs.empty() && runs.back() != ' ') runs += ' ';
        before = color;
    }
    CHECK(runs.starts_with("ab ab ab"));
    options.stacked = true;
    DrawnPage stacked(data, options);
    CHECK(stacked.host.control().BarArrangement() == 2);
    CHECK(page.graph().Axes[1].AxisValue1 == 0);
}

TEST_CASE("bars follow what is shown, and a page of another size is that of its size") {
    PlotData data{"x", false, {{"a", {}, {}, false}, {"b", {}, {}, false}}};
    for (Series& series : data.series)
        for (int k = 0; k < 20; ++k) {
            series.x.push_back(k);
            series.y.push_back(k % 7 - 2);
        }
    PlotOptions options = sized({900, 500});
    options.bars = options.no_legend = true; // a legend stays where it was while it hides nothing there
    headless::HeadlessHost host(options.size);
    qvGraph& control = host.control();
    PlotPage page(control, data, options);
    page.draw();
    document::Graph& graph = document::current_graph(control::state_of(control));
    document::Axis& x = graph.Axes[0];
    double const low = x.AxisValue1, high = x.AxisValue2;
    CHECK(low == -0.5);
    CHECK(high == 19.5);
    x.AxisValue1 = 4;
    x.AxisValue2 = 14;
    control.Refresh();
    int const shown_so_far = host.times_shown();
    page.follow();
    CHECK(host.times_shown() == shown_so_far);

    x.AxisValue1 = low;
    x.AxisValue2 = high;
    host.resize_picture({1200, 800});
    page.follow();
    PlotOptions larger = options;
    larger.size = {1200, 800};
    const DrawnPage fresh(data, larger);
    CHECK(std::ranges::equal(host.picture().pixels(), fresh.host.picture().pixels()));
}

TEST_CASE("names stand as the file has them, with raised and lowered text in what a person writes") {
    const PlotData data{"x_1", false, {{"a^2", {0, 1}, {1, 2}, false}, {"{b}", {0, 1}, {2, 3}, false}}};
    PlotOptions options = sized({800, 500});
    options.y_title = "CO_{2}";
    DrawnPage page(data, options);
    CHECK_NOTHROW(page.errors.raise());
    CHECK(page.graph().Axes[0].AxisTitle == "x\\_1");
    CHECK(page.graph().DataSets[0].DataLegend == "a\\^2");
    CHECK(page.graph().DataSets[1].DataLegend == "\\{b\\}");
    CHECK(page.graph().Axes[1].AxisTitle == "CO_{2}");
}

TEST_CASE("a small page shows the data before titles and labels") {
    PlotData data{"a long name of x", false, {{"a long name of y", {}, {}, false}}};
    for (int k = 0; k <= 20; ++k) {
        data.series[0].x.push_back(k);
        data.series[0].y.push_back(3 * k - 30);
    }
    for (const PixelSize size :
         {PixelSize{64, 64}, {100, 64}, {64, 200}, {100, 100}, {200, 150}, {300, 200}, {2000, 64}}) {
        CAPTURE(size.width);
        CAPTURE(size.height);
        DrawnPage page(data, sized(size));
        CHECK_NOTHROW(page.errors.raise());
        // The line runs from one corner of its range to the other, over a good part of the page.
        int left = size.width, right = 0, top = size.height, bottom = 0;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) {
                std::uint32_t const color = page.pixel(x, y);
                bool const blue = (color & 0xFF) > (color >> 16) + 60; // grey axes are not
                if (!blue) continue;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        CHECK(right - left > 0.35 * size.width);
        CHECK(bottom - top > 0.25 * size.height);
        document::Axis const& y = page.graph().Axes[1];
        CHECK(y.AxisValue2 - y.AxisValue1 <= 100);
    }
}

TEST_CASE("a line breaks where points are missing, and a point between gaps is seen") {
    double const none = std::nan("");
    const PlotData data{
        "x", false, {{"y", {0, 4, none, 5, none, 6, 10}, {1, 1, none, 1, none, 1, 1}, false}}};
    const PlotOptions options = sized({800, 300});
    DrawnPage page(data, options);
    document::Axis const& x = page.graph().Axes[0];
    auto const colored_at = [&](double value) {
        double const share = (value - x.AxisValue1) / (x.AxisValue2 - x.AxisValue1);
        double const left = page.graph().margins().left / 15.0;
        int const column = static_cast<int>(left + share * (x.AxisLength / 15.0));
        int count = 0;
        for (int row = 0; row < options.size.height; ++row) count += page.pixel(column, row) == 0x0B6BCB;
        return count;
    };
    CHECK(colored_at(2) >= 1);
    CHECK(colored_at(4.5) == 0);
    CHECK(colored_at(5) >= 4); // a dot, thicker than a line
    CHECK(colored_at(5.5) == 0);
    CHECK(colored_at(8) >= 1);
    CHECK_FALSE(page.graph().LegendShow);
}

TEST_CASE("a range of x is what the axis shows, and y fits the line within it") {
    const PlotData data{"x", false, {{"y", {0, 1, 2, 3}, {500, 0, 10, -900}, false}}};
    PlotOptions options = sized({800, 600});
    options.x_range = XRange{0.98, 2.01};
    DrawnPage page(data, options);
    document::Axis const& x = page.graph().Axes[0];
    document::Axis const& y = page.graph().Axes[1];
    CHECK(x.AxisValue1 == 0.98);
    CHECK(x.AxisValue2 == 2.01);
    // 10 at both ends of the range, where the line crosses them, and a twentieth more.
    CHECK(y.AxisValue1 == doctest::Approx(-0.5));
    CHECK(y.AxisValue2 == doctest::Approx(10.5));
    options.x_range = XRange{0.9, 2.1};
    CHECK(DrawnPage(data, options).graph().Axes[1].AxisValue1 <= -81);
    CHECK(DrawnPage(data, options).graph().Axes[1].AxisValue2 >= 50);
    options.symbols = true;
    CHECK(DrawnPage(data, options).graph().Axes[1].AxisValue2 < 50);
}

TEST_CASE("a single point is seen") {
    const PlotData data{"x", false, {{"y", {1}, {2}, false}}};
    const DrawnPage page(data, sized({300, 200}));
    CHECK_NOTHROW(page.errors.raise());
    int colored = 0;
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x) colored += page.pixel(x, y) == 0x0B6BCB;
    CHECK(colored > 10);
}

TEST_CASE("a legend names the columns, from two columns up and unless it is left out") {
    DrawnPage page(waves(2, false), sized({800, 600}));
    CHECK(page.graph().LegendShow);
    CHECK(page.graph().LegendWidth > 0);
    CHECK(page.graph().DataSets[1].DataLegend == "column 1");
    CHECK_FALSE(DrawnPage(waves(1, false), sized({800, 600})).graph().LegendShow);
    PlotOptions options = sized({800, 600});
    options.no_legend = true;
    CHECK_FALSE(DrawnPage(waves(2, false), options).graph().LegendShow);
    // A page too small for it has none.
    CHECK_FALSE(DrawnPage(waves(2, false), sized({120, 90})).graph().LegendShow);
}

TEST_CASE("the legend stands in the plot area where it hides no data") {
    struct {
        char const* what;
        double (*value)(double x);
        bool at_right, at_top; // where the room is
    } const table[]{
        {"rising", [](double x) { return x; }, false, true},
        {"falling", [](double x) { return 1 - x; }, true, true},
        {"everywhere but right below", [](double x) { return x < 0.55 ? zigzag(x) : 0.95; }, true, false},
        {"everywhere but left below", [](double x) { return x > 0.45 ? zigzag(x) : 0.95; }, false, false},
    };
    for (auto const& row : table)
        for (int const kind : {0, 1, 2}) {
            PlotOptions options = sized({800, 600});
            options.symbols = kind == 1;
            options.bars = kind == 2;
            if (options.bars && !row.at_top) continue; // there is no room among the bars
            CAPTURE(std::string(row.what));
            CAPTURE(kind);
            DrawnPage page(columns_of(row.value), options);
            auto const [left, top, right, bottom] = page.legend();
            // Symbols have an axis that is longer than their values, so with room above them.
            if (!options.symbols) {
                CHECK((left > 400) == row.at_right);
                CHECK((top < 300) == row.at_top);
            }
            document::Graph const& graph = page.graph();
            CHECK(left > graph.margins().left / 15);
            CHECK(top > graph.margins().top / 15);
            CHECK(right < 800 - graph.margins().right / 15);
            CHECK(bottom < 600 - graph.margins().bottom / 15);
            options.no_legend = true;
            DrawnPage const bare(columns_of(row.value), options);
            int hidden = 0;
            for (int y = top; y <= bottom; ++y)
                for (int x = left; x <= right; ++x)
                    hidden +=
                        bare.pixel(x, y) != 0xFFFFFF && bare.pixel(x, y) != 0xE6E9EE; // but for the grid
            CHECK(hidden == 0);
        }
}

TEST_CASE("where every place hides data the legend takes the one that hides least") {
    // Points all over the page but few in the left bottom corner.
    PlotData data{"x", false, {{"a column", {}, {}, false}, {"another", {}, {}, true}}};
    for (int k = 0; k < 1940; ++k) {
        double const x = k % 40, y = k / 40.0;
        bool const in_corner = x < 12 && y < 15;
        if (in_corner && k % 7 != 0) continue;
        for (Series& series : data.series) {
            series.x.push_back(x);
            series.y.push_back(y);
        }
    }
    PlotOptions options = sized({800, 600});
    options.symbols = true;
    DrawnPage page(data, options);
    CHECK(page.legend().right < 400);
    CHECK(page.legend().top > 300);
}
