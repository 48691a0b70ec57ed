// Qt's events as the control's input. All that depends on Qt's codes for buttons and keys stands here.
#pragma once

#include "qvgraph/ChildControls.h"
#include "qvgraph/Input.h"

#include <QtCore/qnamespace.h>

#include <optional>
#include <vector>

class QKeyEvent;
class QMouseEvent;
class QPinchGesture;
class QWheelEvent;
class QWidget;

namespace qv::qt {

/// Twips of a device-independent pixel, whatever the screen's density.
constexpr double twips_per_unit = twips_per_inch / 96;

Qt::CursorShape cursor_shape(host::PointerShape shape);

/// Nothing for buttons other than the first three, and for what is no mouse event.
std::optional<host::MouseInput> mouse_input(QMouseEvent const& event);
host::WheelInput wheel_input(QWheelEvent const& event);
/// The step of a pinch since the last one, on the page that shows it.
host::PinchInput pinch_input(QPinchGesture const& pinch, QWidget const& page);
/// One input a UTF-16 unit, or one for a key that moves about without a character; none for function keys,
/// Delete and modifiers.
std::vector<host::KeyInput> key_inputs(QKeyEvent const& event);

} // namespace qv::qt
