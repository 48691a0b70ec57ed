#include "platform/qt/PageView.h"

#include "platform/qt/translate_input.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>

#include <utility>

namespace qv::qt {

PageView::PageView(QWidget* parent, Picture picture, InputHandler handler)
    : QWidget(parent), picture_(std::move(picture)), handler_(std::move(handler)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void PageView::paintEvent(QPaintEvent*) {
    QImage picture = picture_();
    double const density = picture.devicePixelRatio();
    QPainter painter(this);
    // At a broken scale the view may reach part of a pixel beyond the picture.
    if (QSizeF(picture.size()) != QSizeF(size()) * density)
        painter.fillRect(rect(), picture.pixelColor(picture.width() - 1, picture.height() - 1));
    // Scaled back to the screen's pixels, so that they are copied at any density and not resampled.
    painter.scale(1 / density, 1 / density);
    picture.setDevicePixelRatio(1);
    painter.drawImage(0, 0, picture);
}

void PageView::take(QMouseEvent* event) {
    auto const input = mouse_input(*event);
    if (input) handler_(*input);
    event->setAccepted(input.has_value());
}

void PageView::wheelEvent(QWheelEvent* event) {
    event->setAccepted(handler_(wheel_input(*event)));
}

// A key that nobody used up goes on to the parents, so that Escape still closes a dialog.
void PageView::keyPressEvent(QKeyEvent* event) {
    bool used_up = false;
    for (host::KeyInput const& input : key_inputs(*event)) used_up |= handler_(input);
    event->setAccepted(used_up);
}

} // namespace qv::qt
