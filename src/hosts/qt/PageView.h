// PageView: the part of the widget that shows the page picture and takes what a person does to it.
#pragma once

#include "hosts/qt/guarded.h"
#include "qvgraph/ChildControls.h"
#include "qvgraph/Input.h"

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include <functional>
#include <optional>

namespace qv::qt {

/// Moves of the mouse are kept until the event loop has seen all that came, and only the latest is handed
/// over: a page that takes long to draw never lags behind the pointer. Everything else hands a kept move over
/// first.
class PageView final : public QWidget {
public:
    using Picture = std::function<QImage()>;
    /// Returns whether the input was used up.
    using InputHandler = std::function<bool(host::Input const&)>;

    PageView(QWidget* parent, Picture picture, InputHandler handler, FailureHandler failed);

    void show_pointer(host::PointerShape shape);

protected:
    bool event(QEvent* event) override;
    /// Tab goes through the graphs of the page first.
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { take(event); }
    void mouseMoveEvent(QMouseEvent* event) override { take(event); }
    void mouseReleaseEvent(QMouseEvent* event) override { take(event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { take(event); }
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent*) override { hand_over(host::LeaveInput{}); }
    void focusInEvent(QFocusEvent*) override { hand_over(host::FocusInput{true}); }
    void focusOutEvent(QFocusEvent*) override { hand_over(host::FocusInput{false}); }

private:
    void take(QMouseEvent* event);
    void take_move(host::MouseInput const& move);
    void hand_over_move();
    bool hand_over(host::Input const& input);

    Picture picture_;
    InputHandler handler_;
    FailureHandler failed_;
    std::optional<host::MouseInput> latest_move_;
    host::PointerShape pointer_ = host::PointerShape::Default;
};

} // namespace qv::qt
