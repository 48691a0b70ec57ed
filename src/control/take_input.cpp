#include "control/take_input.h"

#include "control/lifecycle.h"
#include "interact/follow.h"
#include "interact/mouse.h"
#include "interact/navigation.h"
#include "interact/scroll_handlers.h"
#include "qvgraph/Input.h"

#include <algorithm>
#include <cstdint>
#include <variant>

namespace qv::control {
namespace {

/// What the control does with each kind of input: true when it has used it up.
class InputReceiver {
public:
    explicit InputReceiver(ControlState& state) : state_(state) {}

    bool operator()(host::MouseInput const& mouse) const {
        auto const [kind, button, shift, place] = mouse;
        switch (kind) {
        case host::MouseKind::Press: interact::Picture1_MouseDown(state_, button, shift, place); break;
        case host::MouseKind::Move: interact::Picture1_MouseMove(state_, button, shift, place); break;
        case host::MouseKind::Release: interact::Picture1_MouseUp(state_, button, shift, place); break;
        case host::MouseKind::DoubleClick:
            if (button != host::left_button) return false;
            interact::point_at(state_, place);
            Picture1_DblClick(state_);
        }
        return true;
    }
    /// KeyAscii is the UTF-16 unit in 16 bits, negative from 0x8000. A handler that leaves 0 has used it up,
    /// else the key may move about on the page.
    bool operator()(host::KeyInput const& key) const {
        if (key.character != 0) {
            auto KeyAscii = static_cast<std::int16_t>(key.character);
            Picture1_KeyPress(state_, KeyAscii);
            if (KeyAscii == 0) return true;
        }
        return interact::press_key(state_, key);
    }
    bool operator()(host::ScrollInput const& scroll) const {
        host::ScrollBar& bar = scroll.bar == host::Bar::HScroll1 ? state_.HScroll1 : state_.VScroll1;
        bar.Value = std::clamp(scroll.value, 0, bar.Max);
        if (scroll.bar == host::Bar::HScroll1)
            scroll.dragging ? interact::HScroll1_Scroll(state_) : interact::HScroll1_Change(state_);
        else
            scroll.dragging ? interact::VScroll1_Scroll(state_) : interact::VScroll1_Change(state_);
        return true;
    }
    bool operator()(host::WheelInput const& wheel) const { return interact::turn_wheel(state_, wheel); }
    bool operator()(host::PinchInput const& pinch) const { return interact::pinch(state_, pinch); }
    bool operator()(host::FocusInput const&) const { return false; }
    bool operator()(host::LeaveInput const&) const {
        interact::leave_page(state_);
        return true;
    }

private:
    ControlState& state_;
};

} // namespace

bool take_input(ControlState& state, host::Input const& input) {
    using Kinds = host::Input::variant;
    return std::visit(InputReceiver(state), static_cast<Kinds const&>(input));
}

} // namespace qv::control
