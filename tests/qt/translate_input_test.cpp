#include "hosts/qt/translate_input.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPointingDevice>
#include <QtGui/QWheelEvent>

#include <doctest/doctest.h>

namespace qv::qt {
namespace {

using host::MouseKind;

QMouseEvent mouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
                  Qt::KeyboardModifiers keys = Qt::NoModifier) {
    return {type, QPointF(10, 20.5), QPointF(), button, held, keys, QPointingDevice::primaryPointingDevice()};
}

TEST_CASE("mouse events become mouse input in twips") {
    constexpr auto press = QEvent::MouseButtonPress, move = QEvent::MouseMove;
    struct Row {
        QMouseEvent event;
        host::MouseInput input;
    };
    const Point place{150, 307.5};
    const Row rows[] = {
        {mouse(press, Qt::LeftButton, Qt::LeftButton), {MouseKind::Press, 1, 0, place}},
        {mouse(press, Qt::RightButton, Qt::LeftButton | Qt::RightButton), {MouseKind::Press, 2, 0, place}},
        {mouse(press, Qt::MiddleButton, Qt::MiddleButton), {MouseKind::Press, 4, 0, place}},
        {mouse(QEvent::MouseButtonRelease, Qt::RightButton, Qt::LeftButton),
         {MouseKind::Release, 2, 0, place}},
        {mouse(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton),
         {MouseKind::DoubleClick, 1, 0, place}},
        {mouse(move, Qt::NoButton, Qt::NoButton), {MouseKind::Move, 0, 0, place}},
        {mouse(move, Qt::NoButton, Qt::LeftButton | Qt::MiddleButton), {MouseKind::Move, 5, 0, place}},
        {mouse(move, Qt::NoButton, Qt::BackButton), {MouseKind::Move, 0, 0, place}},
        {mouse(press, Qt::LeftButton, Qt::LeftButton, Qt::ShiftModifier), {MouseKind::Press, 1, 1, place}},
        {mouse(press, Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier), {MouseKind::Press, 1, 2, place}},
        {mouse(press, Qt::LeftButton, Qt::LeftButton,
               Qt::AltModifier | Qt::ShiftModifier | Qt::KeypadModifier),
         {MouseKind::Press, 1, 5, place}},
    };
    for (Row const& row : rows) {
        INFO(row.event.type(), " ", row.event.button());
        CHECK(mouse_input(row.event) == row.input);
    }
    CHECK_FALSE(mouse_input(mouse(press, Qt::BackButton, Qt::BackButton)));
}

TEST_CASE("wheel turns come in notches, fractions included") {
    auto const turned = [](QPoint eighths) {
        return wheel_input(QWheelEvent({2, 4}, {}, {}, eighths, Qt::NoButton, Qt::ControlModifier,
                                       Qt::NoScrollPhase, false));
    };
    CHECK(turned({0, 120}) == host::WheelInput{1, 0, host::ctrl_key, {30, 60}});
    CHECK(turned({0, -30}) == host::WheelInput{-0.25, 0, host::ctrl_key, {30, 60}});
    CHECK(turned({240, 0}) == host::WheelInput{0, 2, host::ctrl_key, {30, 60}});
}

TEST_CASE("keys with a character and keys that move about become key input") {
    struct Row {
        int key;
        Qt::KeyboardModifiers keys;
        QString text;
        std::u16string characters;
    };
    const std::vector<Row> rows{
        {Qt::Key_A, Qt::NoModifier, "a", u"a"},
        {Qt::Key_A, Qt::ShiftModifier, "A", u"A"},
        {Qt::Key_C, Qt::ControlModifier, "\x03", u"\x03"},
        {Qt::Key_Return, Qt::NoModifier, "\r", u"\r"},
        {Qt::Key_Backspace, Qt::NoModifier, "\b", u"\b"},
        {Qt::Key_Escape, Qt::NoModifier, "\x1b", u"\x1b"},
        {0x20AC, Qt::NoModifier, QString::fromUtf8("€"), u"€"},
        {0, Qt::NoModifier, QString::fromUtf8("😀"), u"\xD83D\xDE00"},
        {Qt::Key_Left, Qt::NoModifier, "", std::u16string(1, 0)},
        {Qt::Key_F1, Qt::NoModifier, "", u""},
        {Qt::Key_Shift, Qt::ShiftModifier, "", u""},
        {Qt::Key_Delete, Qt::NoModifier, "\x7f", u""},
    };
    for (Row const& row : rows) {
        INFO(row.key);
        std::u16string characters;
        for (auto const& input : key_inputs(QKeyEvent(QEvent::KeyPress, row.key, row.keys, row.text)))
            characters += input.character;
        CHECK(characters == row.characters);
    }
    auto const shifted = key_inputs(QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::ShiftModifier, "A"));
    CHECK(shifted.front().shift == host::shift_key);
    auto const moving = [](int key, QString const& text) {
        return key_inputs(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text)).front();
    };
    CHECK(moving(Qt::Key_Plus, "+") == host::KeyInput{u'+', 0, host::Key::Plus});
    CHECK(moving(Qt::Key_Home, "") == host::KeyInput{0, 0, host::Key::Home});
}

} // namespace
} // namespace qv::qt
