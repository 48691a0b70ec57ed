#include "render/data_reach.h"

#include "TestControl.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace qv;
using namespace qv::render;

namespace {

struct Ends {
    document::Extent x, y;
    bool operator==(Ends const&) const = default;
};

/// Point by point, as a person would say it.
Ends plainly(document::Graph const& graph) {
    Ends ends;
    bool const x_log = graph.Axes[0].AxisLog, y_log = graph.Axes[1].AxisLog;
    auto const counts = [](double value, bool is_log) {
        return std::isfinite(value) && (!is_log || value > 0);
    };
    for (document::DataSet const& set : graph.DataSets)
        for (std::size_t i = 0; i < set.points.size(); ++i) {
            auto const [x, y, e, id] = set.points.at(i);
            if (!counts(x, x_log) || !counts(y, y_log)) continue;
            ends.x.include(x);
            ends.y.include(y);
            if (!set.ShowErrorBar) continue;
            for (double const way : {-e, e}) {
                if (e > 0 && counts(y + way, y_log)) ends.y.include(y + way);
                if (e < 0 && counts(x + way, x_log)) ends.x.include(x + way);
            }
        }
    return ends;
}

} // namespace

TEST_CASE("what blocks know of their points tells the same as each point") {
    std::mt19937 random(7);
    auto const below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    for (int round = 0; round < 60; ++round) {
        testing::TestControl control;
        document::Graph& graph = control.add_graph();
        for (document::Axis& axis : graph.Axes) axis.AxisLog = below(3) == 0;
        for (int sets = below(3) + 1; sets > 0; --sets) {
            document::DataSet& set = control.add_data_set(graph, {});
            set.ShowErrorBar = below(2) == 0;
            bool const has_errors = below(2) == 0;
            double const lowest = below(2) ? 1 : -500;
            for (int i = below(3000); i > 0; --i) {
                double const gap = below(50) == 0 ? std::numeric_limits<double>::quiet_NaN() : 0;
                set.points.append({lowest + below(1000) / 1.7 + gap,
                                   lowest + below(1000) / 1.3,
                                   has_errors ? below(40) - 20.0 : 0,
                                   {}});
            }
            if (below(2)) reaches_of_points(control.state, graph); // the blocks know of points that go now
            set.points.drop_oldest(static_cast<std::size_t>(below(200)));
        }
        auto const reaches = reaches_of_points(control.state, graph);
        CHECK(Ends{reaches[0].extent, reaches[1].extent} == plainly(graph));
    }
}

TEST_CASE("bars tell where they begin and how much room their width takes") {
    testing::TestControl control;
    document::Graph& graph = control.add_graph();
    document::DataSet& below = control.add_data_set(graph, {{1, 5}, {2, 7}});
    document::DataSet& above = control.add_data_set(graph, {{1, 2}, {2, -9}});
    for (document::DataSet* set : {&below, &above}) {
        set->DataSymbol = 1;
        set->DataSymbolSize = 1000;
    }
    above.BarStacked = true;
    above.BarOffset = 2; // millimetres of 100 twips
    auto reaches = reaches_of_points(control.state, graph);
    CHECK(reaches[1].extent == document::Extent{-2, 7});
    CHECK(reaches[1].has_base_at(0));
    CHECK(reaches[0].room_low == doctest::Approx(0.1)); // 900 and 100 of 10000 twips
    CHECK(reaches[0].room_high == doctest::Approx(0.12));
    above.BarWidth = 4; // of values, and so is the offset
    reaches = reaches_of_points(control.state, graph);
    CHECK(reaches[0].extent == document::Extent{1, 6});
    CHECK(reaches[0].room_high == doctest::Approx(0.1));
    above.BarWidth = 0;
    graph.Axes[0].AxisReverse = true;
    reaches = reaches_of_points(control.state, graph);
    CHECK(reaches[0].room_low == doctest::Approx(0.12));
    below.DataHide = true; // the bars above stand on zero now
    reaches = reaches_of_points(control.state, graph);
    CHECK(reaches[1].extent == document::Extent{-9, 2});
    above.DataLineStyle = 1; // a line goes through the values themselves
    below.DataHide = false;
    below.BarBase = true;
    below.BarBaseValue = 40;
    reaches = reaches_of_points(control.state, graph);
    CHECK(reaches[1].extent == document::Extent{-9, 40});
    CHECK(reaches[1].has_base_at(40));
    CHECK_FALSE(reaches[1].has_base_at(0));
}
