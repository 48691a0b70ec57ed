// Smooth curves, filled areas and function curves as they arrive at the surface.
#include "TestControl.h"
#include "render/areas.h"
#include "render/axes/axes.h"
#include "render/data_sets.h"
#include "render/function_curve.h"
#include "render/pipeline.h"
#include "render/spline.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdio>
#include <random>

using namespace qv;
using namespace qv::render;
using qv::testing::TestControl;

namespace {

/// The plot area is 10000 x 10000 twips at (1000, 1000), both axes 0..10.
struct CurvePage : TestControl {
    document::Graph& graph = add_graph();

    std::vector<std::string> draw(std::string_view kind) {
        page().log.clear();
        PlotDataSets(state, page());
        return page().lines(kind);
    }
    document::DataSet& add_curve(std::int16_t style, std::vector<Point> const& points) {
        document::DataSet& set = add_data_set(graph, points);
        set.DataLineStyle = style;
        return set;
    }
    document::DataSet& add_function(std::string const& formula) {
        document::DataSet& set = add_curve(1, {});
        set.MathFunc = formula;
        return set;
    }
};

} // namespace

TEST_CASE("a natural spline satisfies its equations and is straight where it should be") {
    std::mt19937 random(5);
    std::vector<Point> points;
    double x = 0;
    for (int i = 0; i < 50; ++i)
        points.push_back(
            {x += 0.1 + static_cast<double>(random() % 100) / 50, static_cast<double>(random() % 100)});
    auto const second = SplineCoefficients(points);
    CHECK(second.front() == 0);
    CHECK(second.back() == 0);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        double const before = points[i].x - points[i - 1].x, after = points[i + 1].x - points[i].x;
        double const bend =
            (points[i + 1].y - points[i].y) / after - (points[i].y - points[i - 1].y) / before;
        double const left = before * second[i - 1] + 2 * (before + after) * second[i] + after * second[i + 1];
        CHECK(left == doctest::Approx(6 * bend));
    }
    CHECK(SplineCoefficients(std::vector<Point>{{0, 0}, {1, 5}}) == std::vector<double>{0, 0});
    // Equal x: the right-hand side is 1000, the diagonals are 2 and 2.
    auto const doubled = SplineCoefficients(std::vector<Point>{{0, 0}, {1, 0}, {1, 1}, {2, 0}});
    CHECK(doubled[1] == 500);
    CHECK(doubled[2] == 500);
    // All at one x: no diagonal is left.
    CHECK(SplineCoefficients(std::vector<Point>(5, {3, 1})) == std::vector<double>(5, 0.0));
}

TEST_CASE("a smooth curve has a step each 50 twips, at most 100 an interval, and a gap at equal x") {
    CurvePage page;
    document::DataSet& set = page.add_curve(3, {{0, 0}, {0.5, 1}, {10, 2}});
    CHECK(page.draw("line").size() == 10 + 100);
    CHECK(page.page().has("line 1500,10000 1595,9832 #000000 w1") == false);
    for (auto const& line : page.page().lines("line")) CHECK(line.find("nan") == std::string::npos);

    set.points = document::PointStore();
    CHECK(page.draw("line").empty());
    for (Point const point : {Point{1, 1}, {5, 1}, {5, 9}, {9, 9}})
        set.points.append({point.x, point.y, 0, {}});
    auto const lines = page.draw("line");
    for (auto const& line : lines) CHECK(line.find("6000,10000 6000,2000") == std::string::npos);
    CHECK(lines.size() == 160);

    // New points change the curve; the second derivatives are not those of before.
    set.points.append({10, 0, 0, {}});
    auto const longer = page.draw("line");
    CHECK(longer.size() > lines.size());
    CHECK(longer[100] != lines[100]);
    CHECK(page.draw("line") == longer);

    // Distances that overflow the equations leave straight lines.
    set.points = document::PointStore();
    for (Point const point : {Point{0, 0}, {1e-309, 5}, {5, 5}, {10, 0}})
        set.points.append({point.x, point.y, 0, {}});
    CHECK(page.draw("line").size() == 1 + 100 + 100);
}

TEST_CASE("areas are filled to the start of the range and skip what lies outside") {
    CurvePage page;
    document::DataSet& set = page.add_curve(4, {{-2, 5}, {-1, 5}, {1, 20}, {3, 4}, {5, -1}, {7, -1}, {9, 3}});
    set.DataSymbolFill.Color1 = 0x00FF00;
    set.DataLineThickness = 2;
    auto const polygons = page.draw("polygon");
    // The pieces left of the range and below it are left out, so two stretches remain.
    REQUIRE(polygons.size() == 2);
    CHECK(page.page().lines("line").size() == 3 + 1);
    set.DataLineStyle = 5;
    page.draw("polygon");
    // An upright at each of 4 + 2 corners and two base lines.
    CHECK(page.page().lines("line").size() == 4 + 8);
}

TEST_CASE("an area needs no point inside the plot, and a point above it bends no edge") {
    CurvePage page;
    document::DataSet& set = page.add_curve(4, {{0, 5}, {10, 5}});
    auto const polygons = page.draw("polygon");
    REQUIRE(polygons.size() == 1);
    CHECK(polygons[0].find("66.67,733.33 66.67,400 733.33,400 733.33,733.33") != std::string::npos);
    CHECK(page.page().lines("line").size() == 1);
    // Above the range on either side, and wholly above it: then all is filled.
    for (std::vector<Point> const& points :
         {std::vector<Point>{{0, 30}, {5, -20}, {10, 5}}, {{-5, 12}, {15, 40}}}) {
        set.points = document::PointStore();
        for (const Point point : points) set.points.append({point.x, point.y, 0, {}});
        CHECK(page.draw("polygon").size() == 1);
    }
    set.points = document::PointStore();
    for (const Point point : {Point{0, 30}, {5, 5}}) set.points.append({point.x, point.y, 0, {}});
    page.draw("polygon");
    CHECK(page.page().has("line 1000,-19000 6000,6000 #000000 w1"));
    // A line along the start of the range has no area, but it is there.
    set.points = document::PointStore();
    for (const Point point : {Point{0, 0}, {10, 0}}) set.points.append({point.x, point.y, 0, {}});
    page.draw("polygon");
    CHECK(page.page().has("line 1000,11000 11000,11000 #000000 w1"));
}

TEST_CASE("areas follow ranges from high to low and the data set's own axes") {
    CurvePage page;
    document::DataSet& set = page.add_curve(4, {{2, 3}, {8, 3}});
    std::swap(page.graph.Axes[0].AxisValue1, page.graph.Axes[0].AxisValue2);
    std::swap(page.graph.Axes[1].AxisValue1, page.graph.Axes[1].AxisValue2);
    auto polygons = page.draw("polygon");
    REQUIRE(polygons.size() == 1);
    CHECK(polygons[0].find("600,733.33 600,266.67 200,266.67 200,733.33") != std::string::npos);
    std::swap(page.graph.Axes[0].AxisValue1, page.graph.Axes[0].AxisValue2);
    std::swap(page.graph.Axes[1].AxisValue1, page.graph.Axes[1].AxisValue2);

    document::Axis second = page.graph.Axes[1];
    second.AxisValue1 = 1000;
    second.AxisValue2 = 2000;
    page.graph.Axes.push_back(second);
    set.yAxisIndex = 2;
    set.points = document::PointStore();
    for (const Point point : {Point{2, 1500}, {8, 1500}}) set.points.append({point.x, point.y, 0, {}});
    polygons = page.draw("polygon");
    REQUIRE(polygons.size() == 1);
    CHECK(polygons[0].find("200,733.33 200,400 600,400 600,733.33") != std::string::npos);
    // Reversed, it hangs from the top, where its range starts.
    page.graph.Axes[2].AxisReverse = true;
    CHECK(page.draw("polygon")[0].find("200,66.67 200,400 600,400 600,66.67") != std::string::npos);
}

TEST_CASE("an edge of an area to a place far away keeps its slope") {
    CurvePage page;
    page.add_curve(4, {{0, 0}, {1e12, 1e12}});
    auto const polygons = page.draw("polygon");
    REQUIRE(polygons.size() == 1);
    // Cut one width of the plot beyond it, on the way up by as much as to the right.
    CHECK(polygons[0].find("66.67,733.33 66.67,733.33 14") != std::string::npos);
    CHECK(polygons[0].find(",-6") != std::string::npos);
}

TEST_CASE("function curves: interval, samples, axes, failing and bad formulas") {
    CurvePage page;
    document::DataSet& set = page.add_function("x");
    CHECK(page.draw("line").size() == 100); // one a millimetre
    CHECK(page.page().has("line 1000,11000 1100,10900 #000000 w1"));
    set.DataLineStyle = -3;
    CHECK(page.draw("line")[0] == "line 1000,11000 1100,10900 #000000 w1 dotted");
    set.DataLineStyle = 0;
    CHECK(page.draw("line").empty());
    set.DataLineStyle = 1;

    set.MathFuncX1 = 5;
    set.MathFuncX2 = 1;
    CHECK(page.draw("line").size() == 40);
    CHECK(page.page().lines("line")[0].starts_with("line 2000,10000"));
    set.MathFuncX1 = 1.02; // narrower than half a millimetre
    CHECK(page.draw("line").empty());
    set.MathFuncX1 = set.MathFuncX2 = 0;

    // A sample that fails is left out, and the curve goes on behind it.
    page.state.Evaluator->DefaultValue = 4.0;
    set.MathFunc = "10/x";
    CHECK(page.draw("line").size() == 99);
    CHECK(page.page().lines("line")[98] == "line 10900,9989.9 11000,10000 #000000 w1");
    CHECK(CheckError(page.state));
    set.MathFunc = "1/(";
    CHECK(page.draw("line").empty());
    CHECK(CheckError(page.state));
    CHECK(page.events.errors.empty());
    set.MathFunc = "\"a\"";
    CHECK(page.draw("line").empty());
    set.DataHide = true;
    set.MathFunc = "x";
    CHECK(page.draw("line").empty());
}

TEST_CASE("a curve shows no value that nobody computed, and no axis reaches for one") {
    CurvePage page;
    document::Axis &x = page.graph.Axes[0], &y = page.graph.Axes[1];
    x.AxisValue1 = -5;
    x.AxisValue2 = 5;
    y.AxisValue1 = -10;
    document::DataSet& set = page.add_function("");
    DefineFunction(page.state, "inverse(a) = 1/a");
    const struct {
        char const* formula;
        double from, to; // where it has values
    } rows[] = {{"SQR(x)", 0, 5},
                {"SQR(-x)", -5, 0},
                {"LN(x)", 0, 5},
                {"EXP(200*x^2)*1E-300", -2.7, 2.7},
                {"0*inverse(FIX(x))+1", -5, 5},
                {"ASIN(x)", -1, 1}};
    for (auto const& row : rows)
        for (bool const adaptive : {false, true}) {
            CAPTURE(row.formula);
            CAPTURE(adaptive);
            set.MathFunc = row.formula;
            page.state.AdaptiveCurves = adaptive;
            auto const lines = page.draw("line");
            REQUIRE(!lines.empty());
            for (std::string const& line : lines) {
                double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
                REQUIRE(std::sscanf(line.c_str(), "line %lf,%lf %lf,%lf", &x1, &y1, &x2, &y2) == 4);
                CHECK(std::min(x1, x2) >= 1000 + (row.from + 5) * 1000 - 110);
                CHECK(std::max(x1, x2) <= 1000 + (row.to + 5) * 1000 + 110);
            }
        }
    // -1 < x < 1 is left out of the curve, and no 0 stands in for it.
    set.MathFunc = "inverse(FIX(x))";
    for (bool const adaptive : {false, true}) {
        page.state.AdaptiveCurves = adaptive;
        for (std::string const& line : page.draw("line")) {
            double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
            std::sscanf(line.c_str(), "line %lf,%lf %lf,%lf", &x1, &y1, &x2, &y2);
            CHECK((std::max(x1, x2) <= 5115 || std::min(x1, x2) >= 6885));
        }
    }

    ResetAxis(page.state, y, "", document::AxisKind::Y, 0, 0);
    y.AxisLength = 10000;
    set.MathFunc = "SQR(x)";
    GraphAxes(page.state, page.page(), AxesPass::Full);
    CHECK(y.AxisValue1 == 0);
    CHECK(y.AxisValue2 < 5);
}

TEST_CASE("on a logarithmic axis samples are even on its scale") {
    CurvePage page;
    page.graph.Axes[0].AxisLog = true;
    page.graph.Axes[0].AxisValue1 = 0.01;
    page.add_function("LOG(x) + 5");
    auto const lines = page.draw("line");
    CHECK(lines.size() == 100);
    double const last = std::log10(10.0) + 5;
    CHECK(lines.back().find("11000," + std::to_string(int(11000 - 1000 * last))) != std::string::npos);
}

TEST_CASE("a curve goes on being drawn after more drawings than the engine has slots") {
    CurvePage page;
    page.add_function("x").MathFuncX2 = 0.1;
    page.draw("line");
    auto const expressions = page.state.Evaluator->NumExpressions();
    for (int i = 0; i < 33000; ++i) PlotDataSets(page.state, page.page()), page.page().log.clear();
    CHECK(page.draw("line").size() == 1);
    CHECK(page.state.Evaluator->NumExpressions() == expressions);
}

TEST_CASE("user functions serve all curves; a text that defines none is reported") {
    CurvePage page;
    DefineFunction(page.state, "twice(a) = 2*a");
    page.add_function("twice(x)");
    CHECK(page.draw("line")[0] == "line 1000,11000 1100,10800 #000000 w1");
    DefineFunction(page.state, "no function");
    REQUIRE(page.events.errors.size() == 1);
    CHECK(page.events.errors[0].find("qvGraph.ocx, DefineFunction") != std::string::npos);
    CHECK(page.draw("line").size() == 100);
}

TEST_CASE("a formula is checked without drawing, by the functions that drawing knows") {
    CurvePage page;
    DefineFunction(page.state, "twice(a) = 2*a");
    for (char const* const fine : {"x", "twice(x)^2", "sin(x)/x ' a comment"})
        CHECK(CheckFormula(page.state, fine) == "");
    for (char const* const wrong : {"2*sin(x))", "x +", "thrice(x)", "y + 1"}) {
        const std::string told = CheckFormula(page.state, wrong);
        CHECK_MESSAGE(!told.empty(), wrong);
        CHECK_MESSAGE(told.starts_with(wrong), told);
    }
    CHECK(CheckFormula(page.state, "2*sin(x))").find("\n        ^\n") != std::string::npos);
    CHECK(page.page().log.empty());
    CHECK(page.events.errors.empty());
    page.add_function("y + x"); // as before, a name that is not known is 0
    CHECK(page.draw("line").size() == 100);
}

TEST_CASE("a formula that does not compile is told once, if the host asks") {
    CurvePage page;
    page.add_function("x +");
    page.draw("line");
    CHECK(page.events.errors.empty());
    page.state.TellFormulaErrors = true;
    page.draw("line");
    page.draw("line");
    REQUIRE(page.events.errors.size() == 1);
    CHECK(page.events.errors[0].starts_with("Error 5 has occured in qvGraph.ocx, AddMathFunc: "));
    CHECK(page.events.errors[0].find("x +") != std::string::npos);
    page.add_function("x * / 2");
    page.draw("line");
    CHECK(page.events.errors.size() == 2);
}

TEST_CASE("an automatic axis without points shows the functions drawn on it") {
    CurvePage page;
    for (document::Axis& axis : page.graph.Axes) ResetAxis(page.state, axis, "", axis.AxisXY, 0, 0);
    auto const ranges = [&] {
        GraphAxes(page.state, page.page(), AxesPass::Full);
        auto const& [x, y] = std::pair(page.graph.Axes[0], page.graph.Axes[1]);
        return std::vector{x.AxisValue1, x.AxisValue2, y.AxisValue1, y.AxisValue2};
    };
    CHECK(ranges() == std::vector<double>{0, 1, 0, 1});
    document::DataSet& set = page.add_function("x^2");
    set.MathFuncX1 = -2;
    set.MathFuncX2 = 10;
    page.graph.Axes[0].AxisLength = page.graph.Axes[1].AxisLength = 10000;
    CHECK(ranges() == std::vector<double>{-10, 10, 0, 100});
    set.MathFunc = "-x";
    CHECK(ranges() == std::vector<double>{-10, 10, -10, 10});
    page.graph.Axes[0].AxisValue2 = 5; // zoomed: left alone
    set.MathFuncX2 = 20;
    CHECK(ranges()[1] == 5);
}
