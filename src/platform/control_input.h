// The way from input to the control, the same for every host.
#pragma once

#include "graph/qvGraph.h"
#include "host/Input.h"

#include <algorithm>
#include <cstdint>
#include <variant>

namespace qv::platform {

/// What the control does with each kind of input: true when it has used it up.
class InputReceiver {
public:
    explicit InputReceiver(qvGraph& control) : control_(control) {}

    bool operator()(host::MouseInput const& mouse) const {
        bool const taken = mouse.kind == host::MouseKind::DoubleClick && mouse.button == host::left_button;
        if (taken) control_.Picture1_DblClick();
        return taken;
    }
    /// KeyAscii is the UTF-16 unit in 16 bits, negative from 0x8000. A handler that leaves 0 has used it up.
    bool operator()(host::KeyInput const& key) const {
        auto KeyAscii = static_cast<std::int16_t>(key.character);
        control_.Picture1_KeyPress(KeyAscii);
        return KeyAscii == 0;
    }
    bool operator()(host::ScrollInput const& scroll) const {
        graph::ControlState& state = control_.state();
        host::ScrollBar& bar = scroll.bar == host::Bar::HScroll1 ? state.HScroll1 : state.VScroll1;
        bar.Value = std::clamp(scroll.value, 0, bar.Max);
        return true;
    }
    bool operator()(host::WheelInput const&) const { return false; }
    bool operator()(host::FocusInput const&) const { return false; }

private:
    qvGraph& control_;
};

/// Hands input to the control. What event handlers throw comes out, as from any untrapped member.
inline bool hand_over(qvGraph& control, host::Input const& input) {
    return std::visit(InputReceiver(control), input);
}

} // namespace qv::platform
