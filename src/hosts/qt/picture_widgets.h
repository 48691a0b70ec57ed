// Widgets of the gradient dialog that paint themselves.
#pragma once

#include "qvgraph/ChildControls.h"
#include "qvgraph/Input.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QWidget>

#include <functional>

namespace qv::qt {

/// Paints a frame over a widget's edge, in device-independent pixels.
void frame(QWidget& widget, QColor const& color, int thickness);

/// Shows a picture box and tells of presses and drags of the mouse on it.
class PictureView final : public QWidget {
public:
    using MouseHandler = std::function<void(host::MouseKind kind, std::uint8_t button, QPointF place)>;

    PictureView(QWidget* parent, host::PictureBox const& box, MouseHandler handler);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { take(event); }
    void mouseMoveEvent(QMouseEvent* event) override { take(event); }

private:
    void take(QMouseEvent* event);

    host::PictureBox const& box_;
    MouseHandler handler_;
};

/// One of several picture boxes, of which one is chosen.
class Swatch final : public QAbstractButton {
public:
    Swatch(QWidget* parent, host::PictureBox const& box);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    host::PictureBox const& box_;
};

/// A scroll bar that shows when the keys go to it.
class FocusScrollBar final : public QScrollBar {
public:
    using QScrollBar::QScrollBar;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace qv::qt
