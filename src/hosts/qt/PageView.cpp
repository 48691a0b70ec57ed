#include "hosts/qt/PageView.h"

#include "hosts/qt/page_image.h"
#include "hosts/qt/translate_input.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QGestureEvent>

#include <utility>

namespace qv::qt {

PageView::PageView(QWidget* parent, Picture picture, InputHandler handler, FailureHandler failed)
    : QWidget(parent), picture_(std::move(picture)), handler_(std::move(handler)),
      failed_(std::move(failed)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    grabGesture(Qt::PinchGesture);
}

void PageView::paintEvent(QPaintEvent*) {
    guarded(failed_, [&] {
        QPainter painter(this);
        paint_pixels(painter, rect(), picture_());
    });
}

void PageView::show_pointer(host::PointerShape shape) {
    if (shape == pointer_) return;
    pointer_ = shape;
    setCursor(cursor_shape(shape));
}

bool PageView::event(QEvent* event) {
    if (event->type() != QEvent::Gesture) return QWidget::event(event);
    auto const* const pinch =
        static_cast<QPinchGesture*>(static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture));
    if (!pinch) return false;
    // The last step comes once more when the fingers go.
    return pinch->state() != Qt::GestureUpdated || hand_over(pinch_input(*pinch, *this));
}

bool PageView::focusNextPrevChild(bool next) {
    const host::KeyInput tab{u'\t', next ? std::uint8_t{0} : host::shift_key, host::Key::Tab};
    return hand_over(tab) || QWidget::focusNextPrevChild(next);
}

void PageView::take(QMouseEvent* event) {
    auto const input = mouse_input(*event);
    event->setAccepted(input.has_value());
    if (!input) return;
    guarded(failed_, [&] {
        if (input->kind == host::MouseKind::Move)
            take_move(*input);
        else
            hand_over(*input);
    });
}

void PageView::take_move(host::MouseInput const& move) {
    bool const goes_on =
        latest_move_ && latest_move_->button == move.button && latest_move_->shift == move.shift;
    if (latest_move_ && !goes_on) hand_over_move();
    if (!latest_move_)
        QMetaObject::invokeMethod(
            this, [this] { guarded(failed_, [this] { hand_over_move(); }); }, Qt::QueuedConnection);
    latest_move_ = move;
}

void PageView::hand_over_move() {
    if (auto const move = std::exchange(latest_move_, std::nullopt)) handler_(*move);
}

bool PageView::hand_over(host::Input const& input) {
    return guarded(failed_, [&] {
        hand_over_move();
        return handler_(input);
    });
}

void PageView::wheelEvent(QWheelEvent* event) {
    event->setAccepted(hand_over(wheel_input(*event)));
}

// A key that nobody used up goes on to the parents, so that Escape still closes a dialog.
void PageView::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(guarded(failed_, [&] {
        bool used_up = false;
        for (host::KeyInput const& input : key_inputs(*event)) used_up |= hand_over(input);
        return used_up;
    }));
}

} // namespace qv::qt
