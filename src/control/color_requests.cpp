#include "control/color_requests.h"

#include "document/trap.h"
#include "qvgraph/qvGradientForm2.h"

#include <utility>

namespace qv::control {
namespace {

/// While a person is asked. The control may go meanwhile, by a handler of whatever happens; it then tells the
/// innermost request, which tells the one around it.
class Asking {
public:
    explicit Asking(ControlState& state)
        : state_(state), outer_(std::exchange(state.gone_while_asking, &is_gone_)) {}
    ~Asking() {
        if (!is_gone_)
            state_.gone_while_asking = outer_;
        else if (outer_)
            *outer_ = true;
    }
    Asking(Asking const&) = delete;
    Asking& operator=(Asking const&) = delete;

    bool control_is_gone() const { return is_gone_; }

private:
    ControlState& state_;
    bool is_gone_ = false;
    bool* outer_;
};

/// Asks, and hands the answer over. Nothing of the control is touched once it has gone.
template <class HandOver>
void ask(ControlState& state, std::string_view procedure, HandOver&& hand_over) {
    const Asking asking(state);
    try {
        auto const answer = gradient_picker::gradient_form().ShowModal(*state.host);
        if (!asking.control_is_gone()) hand_over(answer);
    } catch (...) {
        if (!asking.control_is_gone()) ReportError(state, procedure, std::current_exception());
    }
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

} // namespace qv::control
