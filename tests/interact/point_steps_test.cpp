#include "interact/point_steps.h"

#include "TestControl.h"
#include "interact/nearest_point.h"
#include "interact/outline.h"

#include <doctest/doctest.h>

#include <cmath>
#include <random>

using namespace qv;
using namespace qv::interact;

namespace {

constexpr double none = NAN;

struct Reader : testing::TestControl {
    document::Graph& graph = add_graph();

    /// The index of the point that is read now, among those of its data set.
    std::size_t here() const {
        return state.read_point->arrival
               - graph.DataSets[static_cast<std::size_t>(state.read_point->data_set)].points.dropped();
    }
    std::int16_t data_set() const { return state.read_point->data_set; }
};

bool is_drawable(Point point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// Points of which whole blocks cannot be drawn.
std::vector<Point> gappy_points(std::size_t count, bool rising) {
    std::mt19937 random(11);
    std::vector<Point> points(count);
    bool drawable = true;
    for (std::size_t i = 0; i < count; ++i) {
        if (random() % 5000 == 0) drawable = !drawable;
        points[i] = {rising ? static_cast<double>(i / 3) : static_cast<double>(random() % 1000),
                     drawable ? static_cast<double>(random() % 10) : none};
    }
    return points;
}

} // namespace

TEST_CASE("steps go over the points that can be drawn, however many others lie between") {
    Reader reader;
    auto const points = gappy_points(40000, true);
    reader.add_data_set(reader.graph, points);
    std::vector<std::size_t> drawable;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (is_drawable(points[i])) drawable.push_back(i);
    REQUIRE(drawable.size() > 1000);
    REQUIRE(drawable.size() < 39000);
    std::size_t wrong = 0;
    for (std::size_t const i : drawable) wrong += !step_point(reader.state, true) || reader.here() != i;
    CHECK(wrong == 0);
    CHECK_FALSE(step_point(reader.state, true));
    for (std::size_t i = drawable.size() - 1; i-- > 0;)
        wrong += !step_point(reader.state, false) || reader.here() != drawable[i];
    CHECK(wrong == 0);
    CHECK_FALSE(step_point(reader.state, false));
}

TEST_CASE("from data set to data set the reading goes to the point nearest in x that can be drawn") {
    for (bool const rising : {true, false}) {
        CAPTURE(rising);
        Reader reader;
        auto const points = gappy_points(30000, rising);
        reader.add_data_set(reader.graph, {{-1, 1}, {0, 1}, {217.4, 1}, {500, 1}, {9999, 1}, {1e6, 1}});
        reader.add_data_set(reader.graph, points);
        step_point(reader.state, true);
        for (std::size_t i = 0; i < 6; ++i) {
            CAPTURE(i);
            double const x = reader.graph.DataSets[0].points.at(i).X;
            CHECK(reader.here() == i);
            CHECK(step_data_set(reader.state, true));
            CHECK(reader.data_set() == 1);
            double least = HUGE_VAL;
            for (const Point point : points)
                if (is_drawable(point)) least = std::min(least, std::abs(point.x - x));
            CHECK(std::abs(points[reader.here()].x - x) == least);
            CHECK(is_drawable(points[reader.here()]));
            reader.state.read_point = document::ReadPoint{0, 0, i};
            if (i < 5) CHECK(step_point(reader.state, true));
        }
    }
}

TEST_CASE(
    "what cannot be read: no points, none to draw, hidden sets, an empty page; dropped points are passed") {
    testing::TestControl empty;
    CHECK_FALSE(step_point(empty.state, true));
    CHECK_FALSE(step_data_set(empty.state, true));
    CHECK_FALSE(stop_reading(empty.state));

    Reader reader;
    reader.add_data_set(reader.graph, {});
    reader.add_data_set(reader.graph, {{none, 1}, {1, none}});
    CHECK_FALSE(step_point(reader.state, true));
    reader.graph.DataSets[1].DataHide = true;
    reader.add_data_set(reader.graph, {{1, 1}, {2, 2}, {3, 3}});
    CHECK(step_point(reader.state, false));
    CHECK(reader.data_set() == 2);
    CHECK(reader.here() == 2);
    reader.graph.DataSets[2].points.drop_oldest(1);
    CHECK(step_point(reader.state, false));
    CHECK(reader.here() == 0); // what was the second
    CHECK_FALSE(step_data_set(reader.state, false));
    CHECK(stop_reading(reader.state));
    CHECK_FALSE(reader.state.read_point);
}

TEST_CASE("what is read aloud is without markup") {
    Reader reader;
    document::DataSet& set = reader.add_data_set(reader.graph, {{1, 2}});
    set.DataLegend = "CO_{2}";
    reader.state.GraphTitles[0] = "x^{2}";
    reader.graph.Axes[0].AxisTitle = "10^{\u22123}";
    auto const told = [&] {
        const GraphOutline found = *outline(reader.state, 0);
        return found.name + "; " + found.parts[0].name + "; " + found.parts[2].name + "; "
               + point_name(reader.state, 0, {0, 0, 0}).substr(0, found.parts[2].name.size());
    };
    CHECK(told() == "x^{2}; x axis 10^{\u22123}; CO_{2}; CO_{2}");
    reader.state.RichText = true;
    CHECK(told() == "x\u00B2; x axis 10\u207B\u00B3; CO2; CO2");
}
