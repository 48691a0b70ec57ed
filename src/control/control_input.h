// The way from input to the control, the same for every host.
#pragma once

#include "qvgraph/qvGraph.h"
#include "qvgraph/Input.h"
#include "interact/follow.h"
#include "interact/navigation.h"

#include <algorithm>
#include <cstdint>
#include <variant>

namespace qv::platform {

/// What the control does with each kind of input: true when it has used it up.
class InputReceiver {
public:
    explicit InputReceiver(qvGraph& control) : control_(control) {}

    bool operator()(host::MouseInput const& mouse) const {
        auto const [kind, button, shift, place] = mouse;
        switch (kind) {
        case host::MouseKind::Press: control_.Picture1_MouseDown(button, shift, place.x, place.y); break;
        case host::MouseKind::Move: control_.Picture1_MouseMove(button, shift, place.x, place.y); break;
        case host::MouseKind::Release: control_.Picture1_MouseUp(button, shift, place.x, place.y); break;
        case host::MouseKind::DoubleClick:
            if (button != host::left_button) return false;
            interact::point_at(control_.state(), place);
            control_.Picture1_DblClick();
        }
        return true;
    }
    /// KeyAscii is the UTF-16 unit in 16 bits, negative from 0x8000. A handler that leaves 0 has used it up,
    /// else the key may move about on the page.
    bool operator()(host::KeyInput const& key) const {
        if (key.character != 0) {
            auto KeyAscii = static_cast<std::int16_t>(key.character);
            control_.Picture1_KeyPress(KeyAscii);
            if (KeyAscii == 0) return true;
        }
        return interact::press_key(control_.state(), key);
    }
    bool operator()(host::ScrollInput const& scroll) const {
        document::ControlState& state = control_.state();
        host::ScrollBar& bar = scroll.bar == host::Bar::HScroll1 ? state.HScroll1 : state.VScroll1;
        bar.Value = std::clamp(scroll.value, 0, bar.Max);
        if (scroll.bar == host::Bar::HScroll1)
            scroll.dragging ? control_.HScroll1_Scroll() : control_.HScroll1_Change();
        else
            scroll.dragging ? control_.VScroll1_Scroll() : control_.VScroll1_Change();
        return true;
    }
    bool operator()(host::WheelInput const& wheel) const {
        return interact::turn_wheel(control_.state(), wheel);
    }
    bool operator()(host::PinchInput const& pinch) const { return interact::pinch(control_.state(), pinch); }
    bool operator()(host::FocusInput const&) const { return false; }

private:
    qvGraph& control_;
};

/// Hands input to the control. What event handlers throw comes out, as from any untrapped member.
inline bool hand_over(qvGraph& control, host::Input const& input) {
    return std::visit(InputReceiver(control), input);
}

} // namespace qv::platform
