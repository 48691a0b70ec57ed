// PageView: the part of the widget that shows the page picture and takes what a person does to it.
#pragma once

#include "host/Input.h"

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include <functional>

namespace qv::qt {

class PageView final : public QWidget {
public:
    using Picture = std::function<QImage()>;
    /// Returns whether the input was used up.
    using InputHandler = std::function<bool(host::Input const&)>;

    PageView(QWidget* parent, Picture picture, InputHandler handler);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { take(event); }
    void mouseMoveEvent(QMouseEvent* event) override { take(event); }
    void mouseReleaseEvent(QMouseEvent* event) override { take(event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { take(event); }
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent*) override { handler_(host::FocusInput{true}); }
    void focusOutEvent(QFocusEvent*) override { handler_(host::FocusInput{false}); }

private:
    void take(QMouseEvent* event);

    Picture picture_;
    InputHandler handler_;
};

} // namespace qv::qt
