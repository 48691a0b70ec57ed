#include "hosts/qt/picture_widgets.h"

#include "hosts/qt/guarded.h"
#include "hosts/qt/page_image.h"
#include "hosts/qt/translate_input.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <utility>

namespace qv::qt {
namespace {

void paint_box(QWidget& widget, host::PictureBox const& box) {
    guarded([&] {
        QPainter painter(&widget);
        if (box.picture) paint_pixels(painter, widget.rect(), image_of(*box.picture));
    });
}

} // namespace

// Filled, because a pen at a place between pixels would leave a part of the edge as it is.
void frame(QWidget& widget, QColor const& color, int thickness) {
    const QRect inner = widget.rect().adjusted(thickness, thickness, -thickness, -thickness);
    QPainter painter(&widget);
    painter.setClipRegion(QRegion(widget.rect()) - inner);
    painter.fillRect(widget.rect(), color);
}

PictureView::PictureView(QWidget* parent, host::PictureBox const& box, MouseHandler handler)
    : QWidget(parent), box_(box), handler_(std::move(handler)) {
    setCursor(Qt::CrossCursor);
}

void PictureView::paintEvent(QPaintEvent*) {
    paint_box(*this, box_);
    frame(*this, palette().color(QPalette::Mid), 1);
}

void PictureView::take(QMouseEvent* event) {
    if (auto const input = mouse_input(*event)) handler_(input->kind, input->button, event->position());
}

Swatch::Swatch(QWidget* parent, host::PictureBox const& box) : QAbstractButton(parent), box_(box) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
}

void Swatch::paintEvent(QPaintEvent*) {
    paint_box(*this, box_);
    if (isChecked()) {
        frame(*this, palette().color(QPalette::Base), 2); // keeps the outer frame apart from any picture
        frame(*this, palette().color(hasFocus() ? QPalette::Highlight : QPalette::Text), 1);
    } else {
        frame(*this, palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), 1);
    }
}

void FocusScrollBar::paintEvent(QPaintEvent* event) {
    QScrollBar::paintEvent(event);
    if (hasFocus()) frame(*this, palette().color(QPalette::Highlight), 1);
}

} // namespace qv::qt
