#include "render/function_curve.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "qvgraph/render_error.h"
#include "render/curve_sampling.h"
#include "render/lines/column_thinner.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_map.h"
#include "scale/drawn_range.h"
#include "scale/mapping.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace qv::render {
namespace {

using document::Axis;
using document::ControlState;
using document::DataSet;
using document::Graph;
using document::trapped;

constexpr char const* variable_name = "x";
constexpr double no_place = std::numeric_limits<double>::quiet_NaN();

/// Where a function is drawn, in data values.
struct Interval {
    double from = 0;
    double to = 0;
};

/// The range of the x axis, cut to the function's own ends unless both are 0.
Interval interval_of(DataSet const& set, Axis const& axis) {
    const scale::DrawnRange range = scale::drawn_range(axis);
    Interval interval{range.first, range.last};
    if (set.MathFuncX1 == 0 && set.MathFuncX2 == 0) return interval;
    auto const [low, high] = std::minmax(set.MathFuncX1, set.MathFuncX2);
    if (range.rises()) {
        interval.from = std::max(interval.from, low);
        interval.to = std::min(interval.to, high);
    } else {
        interval.from = std::min(interval.from, low);
        interval.to = std::max(interval.to, high);
    }
    return interval;
}

/// A function whose ends lie beside the range of an upward axis cannot be seen.
bool lies_beside(Interval const& interval, Axis const& axis) {
    return scale::drawn_range(axis).rises() && interval.from > interval.to;
}

/// The x axis of a function as far as the function goes; in a polar graph that is not the axis's own range.
Axis axis_of_function(Graph const& graph, DataSet const& set, Axis const& x_axis) {
    Axis axis = x_axis;
    if (!graph.GraphPolar) return axis;
    bool const has_ends = set.MathFuncX1 != 0 || set.MathFuncX2 != 0;
    auto const [low, high] = std::minmax(set.MathFuncX1, set.MathFuncX2);
    axis.AxisValue1 = axis.ScaleMin = has_ends ? low : 0;
    axis.AxisValue2 = axis.ScaleMax = has_ends ? high : whole_turn_of(graph);
    axis.AxisLog = false;
    return axis;
}

bool compile(ControlState& state, std::string const& formula) {
    qvExpression& engine = evaluator(state);
    engine.ResetCompiledExpressions(); // or the slots would run out after 32767 drawings
    engine.ResetVariables();
    engine.Compile(formula, 0);
    return !CheckError(state);
}

/// Keeps what is wrong with the formula compiled last, once for each text.
void note_failure(ControlState& state, std::string const& formula) {
    if (state.TellFormulaErrors && state.told_formulas.insert(formula).second)
        state.formula_failures.push_back("The function is no formula:\n" + render_error(evaluator(state)));
}

/// One sample a millimetre of the plotted width.
int sample_count(ControlState const& state, scale::AxisMap const& map, Interval const& interval) {
    double const width = std::abs(map(interval.to) - map(interval.from));
    return static_cast<int>(round_half_even(std::min(width / state.UnitsPerMmX, 1e6)));
}

/// Calls `take(x)` with the first and `count` further values of x, evenly spaced on the axis's scale.
template <class Take>
void for_each_x(Interval const& interval, int count, bool is_log, Take take) {
    take(interval.from);
    if (count == 0) return;
    double const step = (interval.to - interval.from) / count;
    double const log_from = std::log(interval.from);
    double const log_step = (std::log(interval.to) - log_from) / count;
    double x = interval.from;
    for (int j = 1; j <= count; ++j) {
        x = is_log ? std::exp(j * log_step + log_from) : x + step;
        take(x);
    }
}

/// The formula's values; not-a-number where it fails. An operation that cannot be done fails too: passed
/// over, as in SQR(-4), it would leave a value that nobody computed.
void evaluate_over(ControlState& state, std::span<double const> x, std::span<double> y) {
    qvExpression& engine = evaluator(state);
    const document::RestoreScope faults_end_samples(engine.RaiseErrors, false);
    engine.ClearError(); // of a sample that has failed before
    engine.ValueOver(variable_name, x, y);
}

struct PlainSamples {
    std::vector<double> x, y;
};

PlainSamples sample(ControlState& state, Interval const& interval, scale::AxisMap const& x_map) {
    PlainSamples samples;
    for_each_x(interval, sample_count(state, x_map, interval), x_map.is_log,
               [&](double x) { samples.x.push_back(x); });
    samples.y.resize(samples.x.size());
    evaluate_over(state, samples.x, samples.y);
    return samples;
}

std::vector<Point> sample_plainly(ControlState& state, Interval const& interval, LineMapping const& mapping) {
    const PlainSamples samples = sample(state, interval, mapping.x);
    std::vector<Point> places;
    places.reserve(samples.x.size());
    for (std::size_t i = 0; i < samples.x.size(); ++i) {
        double const y = samples.y[i];
        bool const has_place = std::isfinite(y) && (!mapping.y.is_log || y > 0);
        places.push_back({mapping.x(samples.x[i]), has_place ? mapping.y(y) : no_place});
    }
    return places;
}

std::vector<Point> sample_adaptively(ControlState& state, Interval const& interval,
                                     LineMapping const& mapping, double twips_per_pixel) {
    auto const evaluate = [&](std::span<double const> x, std::span<double> y) { evaluate_over(state, x, y); };
    return sample_curve(evaluate, {mapping, interval.from, interval.to, twips_per_pixel});
}

void include_values(ControlState& state, DataSet const& set, document::Extent& extent) {
    Graph& graph = document::current_graph(state);
    const Axis x_axis = axis_of_function(graph, set, at(graph.Axes, set.xAxisIndex));
    const scale::AxisMap map = scale::x_map(graph, x_axis);
    const Interval interval = interval_of(set, x_axis);
    if (lies_beside(interval, x_axis) || !compile(state, set.MathFunc)) return;
    for (double const value : sample(state, interval, map).y)
        if (std::isfinite(value)) extent.include(value);
}

} // namespace

bool has_curve(DataSet const& set) {
    return !set.DataHide && !set.MathFunc.empty() && set.DataLineStyle != 0;
}

void include_interval(DataSet const& set, document::Extent& extent) {
    if (set.MathFuncX1 == 0 && set.MathFuncX2 == 0) return;
    if (!std::isfinite(set.MathFuncX1) || !std::isfinite(set.MathFuncX2)) return;
    extent.include(set.MathFuncX1);
    extent.include(set.MathFuncX2);
}

std::vector<Point> function_values(ControlState& state, DataSet const& set) {
    constexpr double samples_a_turn = 720;
    constexpr double most_samples = 1e5;
    Graph const& graph = document::current_graph(state);
    const Axis axis = axis_of_function(graph, set, at(graph.Axes, set.xAxisIndex));
    double const turns = std::abs(axis.AxisValue2 - axis.AxisValue1) / whole_turn_of(graph);
    if (!std::isfinite(turns)) return {};
    if (!compile(state, set.MathFunc)) {
        note_failure(state, set.MathFunc);
        return {};
    }
    int const count = static_cast<int>(std::clamp(std::ceil(turns * samples_a_turn), 1.0, most_samples));
    std::vector<double> x, y(static_cast<std::size_t>(count) + 1);
    for_each_x({axis.AxisValue1, axis.AxisValue2}, count, false, [&](double value) { x.push_back(value); });
    evaluate_over(state, x, y);
    std::vector<Point> values;
    values.reserve(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) values.push_back({x[i], y[i]});
    return values;
}

std::vector<double> values_over_full_range(ControlState& state, Graph const& graph, DataSet const& set,
                                           Axis const& x_axis) {
    constexpr int samples = 500;
    Axis whole = axis_of_function(graph, set, x_axis);
    whole.AxisValue1 = whole.ScaleMin;
    whole.AxisValue2 = whole.ScaleMax;
    const Interval interval = interval_of(set, whole);
    if (lies_beside(interval, whole) || !compile(state, set.MathFunc)) return {};
    std::vector<double> x, y;
    for_each_x(interval, samples, whole.AxisLog, [&](double value) { x.push_back(value); });
    y.resize(x.size());
    evaluate_over(state, x, y);
    return y;
}

std::vector<Point> coarse_curve(ControlState& state, Graph const& graph, DataSet const& set) {
    if (!has_curve(set)) return {};
    Axis const& x_axis = at(graph.Axes, set.xAxisIndex);
    const Interval interval = interval_of(set, x_axis);
    if (lies_beside(interval, x_axis) || !compile(state, set.MathFunc)) return {};
    return sample_plainly(
        state, interval,
        {scale::x_map(graph, x_axis), scale::y_map(graph, at(graph.Axes, set.yAxisIndex)), {}});
}

qvExpression& evaluator(ControlState& state) {
    if (!state.Evaluator) state.Evaluator = std::make_unique<qvExpression>();
    return *state.Evaluator;
}

bool CheckError(ControlState& state) {
    return evaluator(state).ErrorCode() != 0;
}

void DefineFunction(ControlState& state, std::string_view text) {
    trapped(state, "DefineFunction", [&] {
        qvExpression& engine = evaluator(state);
        engine.UserFunc(std::string(text));
        if (!CheckError(state)) return;
        raise_fault(FaultNumber::InvalidProcedureCall,
                    engine.ErrorDescription() + ". A function is defined by a text such as f(a) = a^2");
    });
}

std::string CheckFormula(ControlState& state, std::string_view formula) {
    qvExpression& engine = evaluator(state);
    const document::RestoreScope only_known_names(engine.AutoCreateVariables, false);
    engine.ResetCompiledExpressions();
    engine.ResetVariables();
    engine.Variable(variable_name, 0.0);
    engine.Compile(std::string(formula), 0);
    std::string failure = render_error(engine);
    engine.ClearError();
    return failure;
}

void tell_formula_failures(ControlState& state) {
    for (std::string const& failure : std::exchange(state.formula_failures, {}))
        trapped(state, "AddMathFunc", [&] { raise_fault(FaultNumber::InvalidProcedureCall, failure); });
}

void draw_function(ControlState& state, DrawSurface& surface, DataSet const& set,
                   LineMapping const& mapping) {
    Axis const& x_axis = selected_x_axis(document::current_graph(state));
    const Interval interval = interval_of(set, x_axis);
    if (lies_beside(interval, x_axis)) return;
    if (!compile(state, set.MathFunc)) return note_failure(state, set.MathFunc);
    if (sample_count(state, mapping.x, interval) == 0) return;
    const std::vector<Point> places =
        state.AdaptiveCurves ? sample_adaptively(state, interval, mapping, surface.TwipsPerPixelX())
                             : sample_plainly(state, interval, mapping);
    const ShapeScope one_shape(surface);
    ThinnedPolyline line(surface, mapping.visible);
    for (const Point place : places) {
        if (std::isfinite(place.x) && std::isfinite(place.y))
            line.add(place);
        else
            line.finish();
    }
    line.finish();
}

document::Extent extent_of_functions(ControlState& state, document::AxisKind kind) {
    Graph const& graph = document::current_graph(state);
    document::Extent extent;
    for (DataSet const& set : graph.DataSets) {
        if (!has_curve(set)) continue;
        if (kind == document::AxisKind::X && set.xAxisIndex == graph.SelectedXAxis)
            include_interval(set, extent);
        if (kind == document::AxisKind::Y && set.yAxisIndex == graph.SelectedYAxis)
            include_values(state, set, extent);
    }
    return extent;
}

} // namespace qv::render
