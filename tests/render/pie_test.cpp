#include "render/kinds/pie.h"

#include "TestControl.h"
#include "render/data_sets.h"
#include "render/kinds/slice_labels.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

using namespace qv;
using namespace qv::render;
using document::DataSet;
using qv::testing::TestControl;

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// A graph whose plot area, 10000 x 10000 twips about (6000, 6000), holds one pie.
struct PiePage : TestControl {
    document::Graph& graph = add_graph();
    DataSet& pie = add_data_set(graph, {});

    PiePage() {
        pie.DataKind = static_cast<std::uint8_t>(DataKind::Pie);
        pie.DataTextFont = "Arial|9";
    }
    void add(double value, std::string const& name = "") { pie.points.append({0, value, 0, name}); }
    std::vector<std::string> draw() {
        page().log.clear();
        PlotDataSets(state, page());
        return page().log;
    }
};

struct Written {
    Box box;
    std::string text;
};

/// What a line of the log writes, 100 twips a character.
std::vector<Written> texts(std::vector<std::string> const& log) {
    std::vector<Written> found;
    for (std::string const& line : log) {
        double x = 0, y = 0;
        if (std::sscanf(line.c_str(), "text %lf,%lf", &x, &y) != 2) continue;
        auto const begin = line.find('"') + 1, end = line.find('"', begin);
        std::string text = line.substr(begin, end - begin);
        found.push_back({{x, y, 100.0 * static_cast<double>(text.size()), 200}, text});
    }
    return found;
}

bool overlap(Box const& one, Box const& other) {
    constexpr double slack = 1e-6;
    return one.left < other.right() - slack && other.left < one.right() - slack
           && one.top < other.bottom() - slack && other.top < one.bottom() - slack;
}

double distance(Box const& box, Point place) {
    double const x = std::max({box.left - place.x, place.x - box.right(), 0.0});
    double const y = std::max({box.top - place.y, place.y - box.bottom(), 0.0});
    return std::hypot(x, y);
}

} // namespace

TEST_CASE("slices are shares of what is above 0; other values have none") {
    PiePage page;
    for (double const value : {1.0, missing, 2.0, -5.0, 0.0, HUGE_VAL, 5.0}) page.add(value);
    auto const slices = slices_of(page.pie);
    REQUIRE(slices.size() == 3);
    CHECK(slices[1].name == "3"); // the third point
    CHECK(slices[1].share == 0.25);
    CHECK(slices[2].before == 0.375);
    CHECK(slices[2].value == 5);
    // The sum of these is no number.
    PiePage large;
    for (int i = 0; i < 4; ++i) large.add(1.5e308, "part");
    for (Slice const& slice : slices_of(large.pie)) CHECK(slice.share == doctest::Approx(0.25));
    CHECK(slices_of(PiePage().pie).empty());
    PiePage().draw();
}

TEST_CASE("small slices are gathered into the last, but not one alone") {
    PiePage page;
    page.add(2, "a");
    page.add(60, "b");
    page.add(3, "c");
    page.add(35, "d");
    page.pie.PieGather = 5;
    page.pie.PieGatherName = "rest";
    auto slices = slices_of(page.pie);
    REQUIRE(slices.size() == 3);
    CHECK(slices[0].name == "b");
    CHECK(slices[2].name == "rest");
    CHECK(slices[2].value == 5);
    CHECK(slices[2].share == doctest::Approx(0.05));
    page.pie.PieGather = 2.5;
    CHECK(slices_of(page.pie).size() == 4);
    page.pie.PieGather = std::numeric_limits<float>::quiet_NaN();
    CHECK(slices_of(page.pie).size() == 4);
}

TEST_CASE("percent never round to nothing or to all") {
    CHECK(percent_of(0.25) == "25 %");
    CHECK(percent_of(1.0 / 3) == "33.3 %");
    CHECK(percent_of(1e-9) == "<0.1 %");
    CHECK(percent_of(1 - 1e-9) == ">99.9 %");
    CHECK(percent_of(1) == "100 %");
}

TEST_CASE("things pushed apart keep their order and their room, and move no more than they must") {
    std::mt19937 random(7);
    auto const below = [&](double limit) { return limit * static_cast<double>(random()) / 4294967296.0; };
    for (int round = 0; round < 200; ++round) {
        std::vector<WishedPlace> wishes(1 + random() % 12);
        for (WishedPlace& wish : wishes) wish = {below(1000), 10 + below(60)};
        std::ranges::sort(wishes, {}, &WishedPlace::middle);
        auto const middles = pushed_apart(wishes, 0, 1000);
        double last_end = 0;
        for (std::size_t i = 0; i < wishes.size(); ++i) {
            CHECK(middles[i] - wishes[i].height / 2 >= last_end - 1e-9);
            last_end = middles[i] + wishes[i].height / 2;
        }
        CHECK(last_end <= 1000 + 1e-9);
        // No neighbour can be moved alone and bring the whole nearer to its wishes.
        for (std::size_t i = 0; i < wishes.size(); ++i) {
            double const wish = wishes[i].middle - middles[i];
            double const low = i == 0 ? 0 : middles[i - 1] + wishes[i - 1].height / 2;
            double const high = i + 1 == wishes.size() ? 1000 : middles[i + 1] - wishes[i + 1].height / 2;
            bool const blocked = wish > 0 ? middles[i] + wishes[i].height / 2 >= high - 1e-9
                                          : middles[i] - wishes[i].height / 2 <= low + 1e-9;
            CHECK((std::abs(wish) < 1e-9 || blocked));
        }
    }
}

TEST_CASE("labels lie beside the pie, in the plot area, and none on another") {
    std::mt19937 random(11);
    for (int count = 1; count <= 120; count = count * 3 / 2 + 1)
        for (float const start : {0.0F, 77.0F}) {
            PiePage page;
            page.pie.PieStart = start;
            page.pie.PieLeft = count % 2 == 0;
            // A few large slices and many small ones side by side.
            for (int i = 0; i < count; ++i)
                page.add(i < 3 ? 50 : 0.1 + static_cast<double>(random() % 8), "slice " + std::to_string(i));
            auto const log = page.draw();
            auto const labels = texts(log);
            CAPTURE(count);
            REQUIRE(!labels.empty());
            if (count <= 20) CHECK(labels.size() == static_cast<std::size_t>(count));
            // The rim: the point of the first slice that is furthest from the middle.
            double radius = 0;
            for (Point const corner : {Point{0, -1}, {1, 0}, {0, 1}, {-1, 0}}) {
                const SeriesScope scope(page.state, page.graph, 0, SeriesScope::Maps::BeingDrawn);
                double reach = 100;
                while (series_kind(page.pie)->item_at(scope.view(),
                                                      {6000 + corner.x * reach, 6000 + corner.y * reach}))
                    reach += 10;
                radius = std::max(radius, reach - 10);
            }
            CHECK(radius > 1000);
            for (std::size_t i = 0; i < labels.size(); ++i) {
                Box const& box = labels[i].box;
                CHECK(box.left >= 1000);
                CHECK(box.right() <= 11000);
                CHECK(box.top >= 1000 - 1e-6);
                CHECK(box.bottom() <= 11000 + 1e-6);
                CHECK(distance(box, {6000, 6000}) >= radius);
                for (std::size_t j = 0; j < i; ++j) CHECK(!overlap(box, labels[j].box));
            }
        }
}

TEST_CASE("labels say what they are asked for") {
    char const* const said[] = {"oil 75 %", "oil 3", "75 %", "3", "oil"};
    for (std::uint8_t kind = 0; kind <= 5; ++kind) {
        PiePage page;
        page.add(3, "oil");
        page.add(1, "gas");
        page.pie.PieLabels = kind;
        auto const labels = texts(page.draw());
        if (kind == 5) CHECK(labels.empty());
        if (kind < 5) {
            REQUIRE(labels.size() == 2);
            CHECK(labels[0].text == said[kind]);
        }
    }
}

TEST_CASE("slices begin at the top and follow the clock, unless they are asked to begin and go elsewhere") {
    struct Case {
        float start;
        bool left;
        Point in_first; // of four equal slices, from the middle
    };
    for (Case const& turn : {Case{0, false, {1, -1}},
                             {0, true, {-1, -1}},
                             {90, false, {1, 1}},
                             {-90, false, {-1, -1}},
                             {450, true, {1, -1}}}) {
        PiePage page;
        for (int i = 0; i < 4; ++i) page.add(1);
        page.pie.PieStart = turn.start;
        page.pie.PieLeft = turn.left;
        page.pie.PieHole = 50;
        page.draw();
        const SeriesScope scope(page.state, page.graph, 0, SeriesScope::Maps::BeingDrawn);
        auto const at = [&](double reach) {
            return series_kind(page.pie)->item_at(
                scope.view(), {6000 + turn.in_first.x * reach, 6000 + turn.in_first.y * reach});
        };
        CAPTURE(turn.start);
        CAPTURE(turn.left);
        CHECK(at(2000) == 0U);
        CHECK(!at(500)); // in the hole
        CHECK(!at(4800));
    }
}
