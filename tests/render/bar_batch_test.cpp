#include "render/bars/bar_batch.h"

#include "TestControl.h"
#include "render/data_sets.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <random>
#include <set>
#include <sstream>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

/// The pixels that filled boxes of one colour cover, read from the log of a recording surface.
std::set<std::pair<int, int>> covered(std::vector<std::string> const& log, Box const& plot) {
    std::set<std::pair<int, int>> pixels;
    auto const pixel = [](double twips) { return static_cast<int>(std::floor(twips / 15 + 0.5)); };
    for (std::string const& entry : log) {
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        if (std::sscanf(entry.c_str(), "fill %lf,%lf %lf,%lf", &x1, &y1, &x2, &y2) != 4) continue;
        for (int x = std::max(pixel(std::min(x1, x2)), pixel(plot.left));
             x <= std::min(pixel(std::max(x1, x2)), pixel(plot.right())); ++x)
            for (int y = std::max(pixel(std::min(y1, y2)), pixel(plot.top));
                 y <= std::min(pixel(std::max(y1, y2)), pixel(plot.bottom())); ++y)
                pixels.emplace(x, y);
    }
    return pixels;
}

} // namespace

TEST_CASE("very many bars cover the pixels that they would cover one by one") {
    std::mt19937 random(9);
    for (bool const lying : {false, true})
        for (bool const based : {false, true}) {
            CAPTURE(lying);
            CAPTURE(based);
            TestControl page;
            document::Graph& graph = page.add_graph();
            for (int set = 0; set < 2; ++set) {
                std::vector<Point> points;
                for (int i = 0; i < 3000; ++i)
                    points.push_back({static_cast<double>(random() % 1200) / 100 - 1,
                                      static_cast<double>(random() % 1200) / 100 - 1});
                document::DataSet& bars = page.add_data_set(graph, points);
                bars.DataSymbol = 1;
                bars.DataSymbolSize = 30;
                bars.BarHoriz = lying;
                bars.BarBase = based;
                bars.BarBaseValue = 4;
                bars.BarStacked = set == 1;
            }
            const Box plot{1000, 1000, 10000, 10000};
            PlotDataSets(page.state, page.page());
            auto const together = covered(page.page().log, plot);
            CHECK(together.size() > 10000);
            // An error of zero length takes a set off the way that draws bars together.
            for (document::DataSet& set : graph.DataSets) {
                set.ShowErrorBar = true;
                set.points.append({50, 50, 1e-300, {}});
            }
            page.page().log.clear();
            PlotDataSets(page.state, page.page());
            CHECK(page.page().log.size() > 6000);
            CHECK(covered(page.page().log, plot) == together);
        }
}
