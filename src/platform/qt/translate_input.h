// Qt's events as the control's input. All that depends on Qt's codes for buttons and keys stands here.
#pragma once

#include "host/Input.h"

#include <optional>
#include <vector>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace qv::qt {

/// Twips of a device-independent pixel, whatever the screen's density.
constexpr double twips_per_unit = twips_per_inch / 96;

/// Nothing for buttons other than the first three, and for what is no mouse event.
std::optional<host::MouseInput> mouse_input(QMouseEvent const& event);
host::WheelInput wheel_input(QWheelEvent const& event);
/// One input a UTF-16 unit; none for keys without a character: arrows, function keys, Delete, modifiers.
std::vector<host::KeyInput> key_inputs(QKeyEvent const& event);

} // namespace qv::qt
