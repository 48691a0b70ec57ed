// The curve of a data set's function, evaluated by the control's own formula engine.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/DrawSurface.h"
#include "render/lines/data_line.h"

#include <string>
#include <string_view>
#include <vector>

namespace qv::render {

/// The control's engine for function curves, made when first asked for.
qvExpression& evaluator(document::ControlState& state);

/// Whether the engine holds an error.
bool CheckError(document::ControlState& state);

/// Hands a user function such as "f(a) = a^2" to the engine. A text that defines none is reported through
/// ErrorMsg with the engine's message.
void DefineFunction(document::ControlState& state, std::string_view text);

/// What is wrong with a formula in x, as render_error writes it, empty for nothing. A name that is neither x
/// nor known to the engine is wrong too: drawn, it would be 0.
std::string CheckFormula(document::ControlState& state, std::string_view formula);

/// Tells ErrorMsg, one by one, of formulas that did not compile when they were drawn under TellFormulaErrors.
void tell_formula_failures(document::ControlState& state);

/// Draws the function of a data set on the graph's selected axes, in the surface's pen. A formula that does
/// not compile draws nothing; the engine keeps its error. With `AdaptiveCurves` the curve is true to a pixel
/// and broken where it has gaps, else it has one sample a millimetre.
void draw_function(document::ControlState& state, DrawSurface& surface, document::DataSet const& set,
                   LineMapping const& mapping);

/// The curve of a data set's function as places on the page, one a millimetre, with gaps where they are not
/// finite; none where there is no curve in sight.
std::vector<Point> coarse_curve(document::ControlState& state, document::Graph const& graph,
                                document::DataSet const& set);

/// The values of a function in a polar graph, evenly along its own interval, which may be many turns, or a
/// whole turn; not-a-number where it fails, none where it does not compile.
std::vector<Point> function_values(document::ControlState& state, document::DataSet const& set);

/// Whether a data set shows the curve of a function.
bool has_curve(document::DataSet const& set);
/// Takes in the ends of a function that has ends of its own.
void include_interval(document::DataSet const& set, document::Extent& extent);
/// Values of a function all along the full range of its x axis, whatever is shown of it; not-a-number where
/// it fails, none where it does not compile.
std::vector<double> values_over_full_range(document::ControlState& state, document::Graph const& graph,
                                           document::DataSet const& set, document::Axis const& x_axis);

/// What the functions drawn on the graph's selected axis of a kind need to be seen: on an x axis their
/// intervals, on a y axis their values. Empty when there is no such function.
document::Extent extent_of_functions(document::ControlState& state, document::AxisKind kind);

} // namespace qv::render
