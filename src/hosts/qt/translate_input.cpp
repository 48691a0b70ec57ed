#include "hosts/qt/translate_input.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QGestureEvent>
#include <QtWidgets/QWidget>

#include <array>
#include <utility>

namespace qv::qt {
namespace {

constexpr double eighths_of_a_degree_per_notch = 120;

template <class Flag>
using CodeTable = std::array<std::pair<Flag, std::uint8_t>, 3>;

constexpr CodeTable<Qt::MouseButton> button_codes{{{Qt::LeftButton, host::left_button},
                                                   {Qt::RightButton, host::right_button},
                                                   {Qt::MiddleButton, host::middle_button}}};
constexpr CodeTable<Qt::KeyboardModifier> modifier_codes{{{Qt::ShiftModifier, host::shift_key},
                                                          {Qt::ControlModifier, host::ctrl_key},
                                                          {Qt::AltModifier, host::alt_key}}};

template <class Flag>
std::uint8_t sum_of_codes(QFlags<Flag> flags, CodeTable<Flag> const& codes) {
    int sum = 0;
    for (auto const& [flag, code] : codes)
        if (flags.testFlag(flag)) sum |= code;
    return static_cast<std::uint8_t>(sum);
}

Point in_twips(QPointF position) {
    return {position.x() * twips_per_unit, position.y() * twips_per_unit};
}

std::optional<host::MouseKind> mouse_kind(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress: return host::MouseKind::Press;
    case QEvent::MouseMove: return host::MouseKind::Move;
    case QEvent::MouseButtonRelease: return host::MouseKind::Release;
    case QEvent::MouseButtonDblClick: return host::MouseKind::DoubleClick;
    default: return std::nullopt;
    }
}

} // namespace

Qt::CursorShape cursor_shape(host::PointerShape shape) {
    switch (shape) {
    case host::PointerShape::Cross: return Qt::CrossCursor;
    case host::PointerShape::FourWay: return Qt::SizeAllCursor;
    case host::PointerShape::NorthSouth: return Qt::SizeVerCursor;
    case host::PointerShape::WestEast: return Qt::SizeHorCursor;
    case host::PointerShape::UpArrow: return Qt::UpArrowCursor;
    default: return Qt::ArrowCursor;
    }
}

host::PinchInput pinch_input(QPinchGesture const& pinch, QWidget const& page) {
    return {.scale = pinch.scaleFactor(), .place = in_twips(page.mapFromGlobal(pinch.centerPoint()))};
}

std::optional<host::MouseInput> mouse_input(QMouseEvent const& event) {
    auto const kind = mouse_kind(event.type());
    if (!kind) return std::nullopt;
    bool const move = *kind == host::MouseKind::Move;
    const Qt::MouseButtons buttons = move ? event.buttons() : Qt::MouseButtons(event.button());
    const std::uint8_t code = sum_of_codes(buttons, button_codes);
    if (!move && code == 0) return std::nullopt;
    return host::MouseInput{.kind = *kind,
                            .button = code,
                            .shift = sum_of_codes(event.modifiers(), modifier_codes),
                            .place = in_twips(event.position())};
}

host::WheelInput wheel_input(QWheelEvent const& event) {
    return {.steps = event.angleDelta().y() / eighths_of_a_degree_per_notch,
            .sideways_steps = event.angleDelta().x() / eighths_of_a_degree_per_notch,
            .shift = sum_of_codes(event.modifiers(), modifier_codes),
            .place = in_twips(event.position())};
}

namespace {

host::Key moving_key(int key) {
    switch (key) {
    case Qt::Key_Left: return host::Key::Left;
    case Qt::Key_Right: return host::Key::Right;
    case Qt::Key_Up: return host::Key::Up;
    case Qt::Key_Down: return host::Key::Down;
    case Qt::Key_Plus: return host::Key::Plus;
    case Qt::Key_Minus: return host::Key::Minus;
    case Qt::Key_Home: return host::Key::Home;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return host::Key::Tab;
    case Qt::Key_Escape: return host::Key::Escape;
    default: return host::Key::None;
    }
}

} // namespace

std::vector<host::KeyInput> key_inputs(QKeyEvent const& event) {
    // Some platforms give the Delete key the character 127, which others give to Ctrl+Backspace.
    if (event.key() == Qt::Key_Delete) return {};
    const std::uint8_t shift = sum_of_codes(event.modifiers(), modifier_codes);
    std::vector<host::KeyInput> inputs;
    const host::Key key = moving_key(event.key());
    for (const QChar unit : event.text())
        inputs.push_back({.character = unit.unicode(), .shift = shift, .key = key});
    if (inputs.empty() && key != host::Key::None) inputs.push_back({.shift = shift, .key = key});
    return inputs;
}

} // namespace qv::qt
