#include "graph/color_requests.h"

#include "gradient_picker/qvGradientForm2.h"
#include "graph/model/trap.h"

namespace qv::graph {
namespace {

gradient_picker::GradientChoice asked(ControlState const& state) {
    return gradient_picker::gradient_form().ShowModal(*state.host);
}

} // namespace

void GetGradient(ControlState& state, Color& QvColor1, Color& QvColor2, float& gAngle, float& gShift,
                 std::int16_t& gStyle) {
    trapped(state, "GetGradient", [&] {
        auto const answer = asked(state);
        QvColor1 = answer.Color1;
        QvColor2 = answer.Color2;
        gAngle = answer.Angle;
        gShift = answer.Shift;
        gStyle = answer.Style;
    });
}

void GetColor(ControlState& state, Color& QvColor1) {
    trapped(state, "GetColor", [&] { QvColor1 = asked(state).Color1; });
}

} // namespace qv::graph
