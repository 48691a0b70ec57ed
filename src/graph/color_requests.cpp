#include "graph/color_requests.h"

#include "gradient_picker/qvGradientForm2.h"
#include "graph/model/trap.h"

#include <utility>

namespace qv::graph {
namespace {

/// Asks, and hands the answer over. Nothing of the control is touched once it has gone, which a handler of
/// whatever happens meanwhile may see to.
template <class HandOver>
void ask(ControlState& state, std::string_view procedure, HandOver&& hand_over) {
    bool is_gone = false;
    bool* const outer = std::exchange(state.gone_while_asking, &is_gone);
    try {
        auto const answer = gradient_picker::gradient_form().ShowModal(*state.host);
        if (!is_gone) hand_over(answer);
    } catch (...) {
        if (!is_gone) ReportError(state, "qvGraph.ocx, " + std::string(procedure), std::current_exception());
    }
    if (!is_gone) state.gone_while_asking = outer;
    if (is_gone && outer) *outer = true;
}

} // namespace

void GetGradient(ControlState& state, Color& QvColor1, Color& QvColor2, float& gAngle, float& gShift,
                 std::int16_t& gStyle) {
    ask(state, "GetGradient", [&](gradient_picker::GradientChoice const& answer) {
        QvColor1 = answer.Color1;
        QvColor2 = answer.Color2;
        gAngle = answer.Angle;
        gShift = answer.Shift;
        gStyle = answer.Style;
    });
}

void GetColor(ControlState& state, Color& QvColor1) {
    ask(state, "GetColor", [&](gradient_picker::GradientChoice const& answer) { QvColor1 = answer.Color1; });
}

void withdraw_requests(ControlState& state) {
    if (!state.gone_while_asking) return;
    *state.gone_while_asking = true;
    gradient_picker::gradient_form().withdraw(*state.host);
}

} // namespace qv::graph
